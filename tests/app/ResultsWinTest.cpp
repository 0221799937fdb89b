#include "results/ResultsWin.h"

#include <gtest/gtest.h>
#include <string>

#include <Application.h>
#include <Button.h>
#include <ListView.h>
#include <ScrollView.h>
#include <StringView.h>

#include "app/AppTestSupport.h"
#include "lib/ActionView.h"
#include "results/CompareWin.h"
#include "results/Metric.h"
#include "results/ResultItem.h"
#include "results/Results.h"

using apptest::RunUntil;

namespace {

class ResultsWinTest : public testing::Test
{
protected:
	void SetUp() override
	{
		QS_REQUIRE_DISPLAY();
		fApp = apptest::SharedApp();
	}

	void TearDown() override
	{
		for (ResultsWin* window : fWindows) {
			window->Lock();
			window->Quit();
		}
	}

	ResultsWin* Make(int cpus)
	{
		ResultsWin* window = new ResultsWin(cpus);
		window->Run();
		fWindows.push_back(window);
		return window;
	}

	static void AddMetric(Results& results, const char* name, const char* units, long cycles,
	                      std::vector<float> times)
	{
		Metric* metric = results.NewTest(name, cycles);
		metric->Units(units);
		for (float seconds : times)
			metric->Time(seconds);
	}

	BApplication* fApp = nullptr;
	std::vector<ResultsWin*> fWindows;
};

} // namespace

TEST_F(ResultsWinTest, WidthAndHeadingsFollowTheCpuCount)
{
	struct Case {
		int cpus;
		float width;
	};
	for (Case c : {Case{0, 320}, Case{1, 365}, Case{3, 475}}) {
		ResultsWin* window = Make(c.cpus);
		window->Lock();
		EXPECT_EQ(window->Bounds().Width(), c.width) << c.cpus;
		EXPECT_EQ(window->Bounds().Height(), 300);
		BView* main = window->FindView("view");
		ASSERT_NE(main, nullptr);
		EXPECT_EQ(main->Frame().bottom, 300 - 46);
		BView* bar = window->FindView("action_view");
		ASSERT_NE(bar, nullptr);
		EXPECT_EQ(bar->Frame().top, 300 - 45);

		BStringView* test = dynamic_cast<BStringView*>(main->FindView("banner1"));
		BStringView* units = dynamic_cast<BStringView*>(main->FindView("banner2"));
		ASSERT_NE(test, nullptr);
		ASSERT_NE(units, nullptr);
		EXPECT_STREQ(test->Text(), "Test");
		EXPECT_EQ(test->Frame().left, 15);
		EXPECT_STREQ(units->Text(), "Units");
		EXPECT_EQ(units->Frame().left, 198);

		// One heading per CPU count, all CPUs first.
		int headings = 0;
		for (int32 i = 0; i < main->CountChildren(); i++) {
			BStringView* heading = dynamic_cast<BStringView*>(main->ChildAt(i));
			if (heading == nullptr ||
			    std::string(heading->Text()).find(" CPU") == std::string::npos)
				continue;
			std::string expected = std::to_string(c.cpus - headings) + " CPU";
			EXPECT_STREQ(heading->Text(), expected.c_str());
			EXPECT_STREQ(heading->Name(), expected.c_str());
			EXPECT_EQ(heading->Frame().left, 300 + 55 * headings);
			headings++;
		}
		EXPECT_EQ(headings, c.cpus);
		window->Unlock();
	}
}

TEST_F(ResultsWinTest, ButtonsPostTheirCodesAndCancelHides)
{
	ResultsWin* window = Make(2);
	window->Lock();
	EXPECT_STREQ(window->Title(), "Results");
	EXPECT_STREQ(window->Name(), "ResultsWin");
	struct Expected {
		const char* name;
		const char* label;
		uint32 what;
	};
	const Expected buttons[] = {
	    {"cancel", "Cancel", 500}, {"compare", "Compare...", 501}, {"save", "Save...", 502}};
	float lastLeft = -1;
	for (const Expected& expected : buttons) {
		BButton* button = dynamic_cast<BButton*>(window->FindView(expected.name));
		ASSERT_NE(button, nullptr) << expected.name;
		EXPECT_STREQ(button->Label(), expected.label);
		EXPECT_EQ(button->Command(), expected.what);
		EXPECT_EQ(button->Frame().Width(), 75);
		EXPECT_GT(button->Frame().left, lastLeft);
		lastLeft = button->Frame().left;
	}
	EXPECT_EQ(window->DefaultButton(), window->FindView("save"));
	BListView* list = window->List();
	EXPECT_STREQ(list->Name(), "list");
	EXPECT_STREQ(list->Parent()->Name(), "scroll");
	window->Unlock();

	window->Pop();
	ASSERT_TRUE(RunUntil([&] { return !window->IsHidden(); }));
	// Save is taken without effect for now; Compare opens the comparison
	// window once. The window stays.
	window->PostMessage(kMsgResultsCompare);
	window->PostMessage(kMsgResultsSave);
	ASSERT_TRUE(RunUntil([&] { return window->CompareWindow() != nullptr; }));
	CompareWin* compare = window->CompareWindow();
	window->PostMessage(kMsgResultsCompare);
	apptest::RunFor(0.3);
	EXPECT_EQ(window->CompareWindow(), compare);
	EXPECT_FALSE(window->IsHidden());

	window->Lock();
	BButton* cancel = dynamic_cast<BButton*>(window->FindView("cancel"));
	window->Unlock();
	ASSERT_TRUE(apptest::ClickView(cancel, BPoint(20, 10)));
	EXPECT_TRUE(RunUntil([&] { return window->IsHidden(); }));
}

TEST_F(ResultsWinTest, UpdateCopiesTheRunAndListsEveryMetric)
{
	ResultsWin* window = Make(2);
	Results run(false);
	AddMetric(run, "Savage", "KIPS", 10000, {0.5f, 1.0f});
	AddMetric(run, "Memory", "MB/s", 300, {2.0f, 3.0f});

	window->Update(run, true);
	// The window keeps its own copy.
	run.Clear();

	window->Lock();
	EXPECT_TRUE(window->CompareFlag());
	ASSERT_EQ(window->Record()->Size(), 2);
	BListView* list = window->List();
	ASSERT_EQ(list->CountItems(), 2);
	ResultItem* savage = dynamic_cast<ResultItem*>(list->ItemAt(0));
	ResultItem* memory = dynamic_cast<ResultItem*>(list->ItemAt(1));
	ASSERT_NE(savage, nullptr);
	ASSERT_NE(memory, nullptr);
	EXPECT_STREQ(savage->Name(), "Savage");
	EXPECT_STREQ(savage->UnitsText(), "KIPS");
	EXPECT_EQ(savage->QuantityValue(), 2);
	EXPECT_FLOAT_EQ(savage->RateAt(0), 20000);
	EXPECT_FLOAT_EQ(savage->RateAt(1), 10000);
	EXPECT_STREQ(memory->Name(), "Memory");
	EXPECT_FLOAT_EQ(memory->RateAt(0), 150);
	EXPECT_FLOAT_EQ(memory->RateAt(1), 100);
	window->Unlock();

	// A later run replaces the rows.
	Results second(false);
	AddMetric(second, "Sieve", "Passes/s", 50, {1.0f});
	window->Update(second, false);
	window->Lock();
	EXPECT_FALSE(window->CompareFlag());
	ASSERT_EQ(list->CountItems(), 1);
	EXPECT_STREQ(dynamic_cast<ResultItem*>(list->ItemAt(0))->Name(), "Sieve");
	window->Unlock();
}
