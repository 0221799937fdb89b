// The comparison window under a display: opened from the results window,
// its menu, ratio box, drops, table export and "Save" button.
#include "results/CompareWin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

#include <AppFileInfo.h>
#include <Autolock.h>
#include <Button.h>
#include <CheckBox.h>
#include <DrawingRecorder.h>
#include <Menu.h>
#include <MenuItem.h>
#include <Node.h>
#include <Path.h>
#include <PlatformTest.h>
#include <TypeConstants.h>

#include "app/AppTestSupport.h"
#include "lib/LibColorChooser.h"
#include "lib/LibMenuButton.h"
#include "platform/TempDirectory.h"
#include "results/CompareResultsView.h"
#include "results/CompareStore.h"
#include "results/ResultList.h"
#include "results/Results.h"
#include "results/ResultsFile.h"
#include "results/ResultsWin.h"

using apptest::RunUntil;

namespace {

// A stored machine: n CPUs, Savage (300) and Memory (200) times that shrink
// with speed.
std::string
MachineRecord(const char* name, int cpus, double speed)
{
	std::ostringstream record;
	record << name << " (" << cpus << "-x86@" << static_cast<int>(300 * speed)
	       << "/66MHz) 128MB RAM\t-1:8 bit color, 1024x768 resolution\t1:IDE controller\t";
	for (int index : {300, 200}) {
		record << index << ":" << (index == 300 ? 10000 : 100) << "/";
		for (int c = 0; c < cpus; c++)
			record << (c > 0 ? "," : "")
			       << std::to_string((index == 300 ? 1.0 : 0.5) * (c + 1) / speed);
		record << ";";
	}
	return record.str();
}


bool
SameColor(const rgb_color& a, const rgb_color& b)
{
	return a.red == b.red && a.green == b.green && a.blue == b.blue;
}


void
WriteResultsFile(const std::string& path, const std::vector<std::string>& records)
{
	std::ofstream file(path);
	file << "1.0\n";
	for (const std::string& record : records)
		file << record.size() << "\n" << record << "\n";
}


class CompareWinTest : public testing::Test
{
protected:
	void SetUp() override
	{
		QS_REQUIRE_DISPLAY();
		apptest::SharedApp();
		fDirectory.UseAsDataHome();
		platform_set_xattr_disabled(true);
		ASSERT_EQ(get_app_path(&fAppPath), B_OK);
	}

	void TearDown() override
	{
		for (BWindow* window : fWindows) {
			window->Lock();
			window->Quit();
		}
		platform_set_xattr_disabled(false);
	}

	// The store as the program finds it at start.
	void Store(const std::vector<std::string>& records)
	{
		ResultList rows;
		for (const std::string& record : records) {
			Results* results = new Results(false);
			results->Read(record.c_str());
			rows.Insert(results);
		}
		CompareStore store(fAppPath.Path());
		ASSERT_EQ(store.Write(rows), B_OK);
	}

	CompareWin* Open(bool allowSave)
	{
		CompareWin* window = new CompareWin(nullptr, allowSave);
		window->Run();
		// Placed as the results window places it.
		window->SetPosition(kLibPositionMiddleLeft);
		fWindows.push_back(window);
		return window;
	}

	// Opened as "Compare..." opens it after a run of this machine, and shown.
	CompareWin* OpenWithRun(bool allowSave)
	{
		CompareWin* window = Open(allowSave);
		Results run(false);
		MakeRun(run);
		window->SetResults(run);
		window->Show();
		EXPECT_TRUE(RunUntil([&] { return !window->IsHidden(); }));
		return window;
	}

	// This machine's run: Savage and Memory on 2 CPUs.
	static void MakeRun(Results& run)
	{
		Metric* savage = run.NewTest("Savage", 10000);
		savage->Units("KIPS");
		savage->Time(0.4f);
		savage->Time(0.8f);
		Metric* memory = run.NewTest("Memory", 100);
		memory->Units("MB/sec");
		memory->Time(0.1f);
		memory->Time(0.2f);
	}

	static std::vector<std::string> Descriptions(CompareWin* window)
	{
		std::vector<std::string> names;
		window->Lock();
		ResultList& list = window->ResultsView()->List();
		for (int32 i = 0; i < list.Size(); i++)
			names.push_back(list.Get(i)->Description());
		window->Unlock();
		return names;
	}

	// The texts the rows view draws next, from a recorder.
	static std::vector<std::string> DrawnTexts(CompareWin* window)
	{
		BDrawingRecorder recorder;
		CompareResultsView* view = window->ResultsView();
		window->Lock();
		view->SetDrawingRecorder(&recorder);
		view->Draw(view->Bounds());
		view->SetDrawingRecorder(nullptr);
		window->Unlock();
		std::vector<std::string> texts;
		for (const drawing_call& call : recorder.CallsOf(B_CALL_DRAW_STRING))
			texts.push_back(call.text);
		return texts;
	}

	static bool Has(const std::vector<std::string>& texts, const std::string& text)
	{
		return std::find(texts.begin(), texts.end(), text) != texts.end();
	}

	TempDirectory fDirectory;
	BPath fAppPath;
	std::vector<BWindow*> fWindows;
};

} // namespace


TEST_F(CompareWinTest, CompareOpensWithTheRunFirstAndTheStoreUnderIt)
{
	Store({MachineRecord("Alpha", 1, 0.5), MachineRecord("Beta", 2, 1.5),
	       MachineRecord("Gamma", 4, 3), MachineRecord("Delta", 8, 6)});
	ResultsWin* results = new ResultsWin(2);
	results->Run();
	Results run(false);
	MakeRun(run);
	results->Update(run, false);
	results->Pop();

	results->PostMessage(kMsgResultsCompare);
	ASSERT_TRUE(RunUntil([&] {
		return results->CompareWindow() != nullptr && !results->CompareWindow()->IsHidden();
	}));
	CompareWin* window = results->CompareWindow();
	window->Lock();
	EXPECT_STREQ(window->Title(), "Quickstep Comparisons");
	EXPECT_EQ(window->FindView("save"), nullptr);
	ResultList& list = window->ResultsView()->List();
	ASSERT_EQ(list.Size(), 5);
	EXPECT_TRUE(list.Get(0L)->IsCurrent());
	EXPECT_EQ(window->ResultsView()->Selected(), list.Get(0L));
	// The menu lists the run's tests; the first is shown in every row.
	BMenu* menu = window->Choices()->Menu();
	ASSERT_EQ(menu->CountItems(), 2);
	EXPECT_STREQ(menu->ItemAt(0)->Label(), "Savage");
	EXPECT_STREQ(menu->ItemAt(1)->Label(), "Memory");
	EXPECT_STREQ(window->Choices()->Text(), "Savage");
	for (int32 i = 0; i < list.Size(); i++) {
		ASSERT_NE(list.Get(i)->CurrentMetric(), nullptr) << i;
		EXPECT_STREQ(list.Get(i)->CurrentMetric()->Description(), "Savage");
	}
	// Delta, the fastest, sets the scale: 10000 / 0.166667 s is just under
	// 60000, so 60000.
	EXPECT_FLOAT_EQ(window->ResultsView()->MaxScale(), 60000);
	window->Unlock();
	std::vector<std::string> names = Descriptions(window);
	EXPECT_EQ(names[1].rfind("Alpha", 0), 0u);
	EXPECT_EQ(names[4].rfind("Delta", 0), 0u);
	EXPECT_TRUE(apptest::Screenshot("compare-window"));

	// A click on a row's icon shows its devices and selects it.
	CompareResultsView* view = window->ResultsView();
	ASSERT_TRUE(apptest::ClickView(view, BPoint(9, kCompareFirstRow + 2 * 17 + 8)));
	ASSERT_TRUE(RunUntil([&] {
		BAutolock lock(window);
		return view->Selected() == view->List().Get(2L);
	}));
	window->Lock();
	EXPECT_TRUE(view->List().Get(2L)->Expanded());
	EXPECT_FALSE(view->List().Get(1L)->Expanded());
	window->Unlock();
	std::vector<std::string> texts = DrawnTexts(window);
	EXPECT_TRUE(Has(texts, "Storage"));
	EXPECT_TRUE(Has(texts, "IDE controller"));
	EXPECT_TRUE(apptest::Screenshot("compare-expanded"));

	// A second "Compare..." brings the same window back with the run still
	// first and only once.
	results->PostMessage(kMsgResultsCompare);
	apptest::RunFor(0.3);
	EXPECT_EQ(results->CompareWindow(), window);
	EXPECT_EQ(Descriptions(window).size(), 5u);

	// Closing it tells the results window, which forgets it.
	window->PostMessage(B_QUIT_REQUESTED);
	ASSERT_TRUE(RunUntil([&] { return results->CompareWindow() == nullptr; }));
	results->Lock();
	results->Quit();
}

TEST_F(CompareWinTest, ChoosingATestOrPercentRedrawsTheRows)
{
	Store({MachineRecord("Alpha", 1, 0.5), MachineRecord("Beta", 2, 1.5)});
	CompareWin* window = OpenWithRun(false);
	EXPECT_TRUE(Has(DrawnTexts(window), "( KIPS )"));

	window->Lock();
	window->Choices()->Menu()->ItemAt(1)->Invoke();
	window->Unlock();
	ASSERT_TRUE(RunUntil([&] {
		BAutolock lock(window);
		const Metric* shown = window->ResultsView()->List().Get(2)->CurrentMetric();
		return shown != nullptr && strcmp(shown->Description(), "Memory") == 0;
	}));
	EXPECT_STREQ(window->Choices()->Text(), "Memory");
	EXPECT_TRUE(Has(DrawnTexts(window), "( MB/sec )"));
	// The run's 1000 MB/sec is the largest: 1100.
	EXPECT_FLOAT_EQ(window->ResultsView()->MaxScale(), 1100);

	window->Lock();
	BCheckBox* ratio = dynamic_cast<BCheckBox*>(window->FindView("ratio"));
	window->Unlock();
	ASSERT_NE(ratio, nullptr);
	ASSERT_TRUE(apptest::ClickView(ratio, BPoint(7, 7)));
	ASSERT_TRUE(RunUntil([&] { return window->ResultsView()->ByRatio(); }));
	std::vector<std::string> texts = DrawnTexts(window);
	EXPECT_TRUE(Has(texts, "( Percent )"));
	EXPECT_FALSE(Has(texts, "( MB/sec )"));
	// Percent of the run, the fastest: 100 -> 110.
	EXPECT_FLOAT_EQ(window->ResultsView()->Reference(), 1000);
	EXPECT_FLOAT_EQ(window->ResultsView()->MaxScale(), 110);
	EXPECT_TRUE(apptest::Screenshot("compare-percent"));
}

TEST_F(CompareWinTest, DroppedResultsFilesJoinTheStoreAndOthersAreIgnored)
{
	Store({MachineRecord("Alpha", 1, 0.5)});
	const std::string good = fDirectory.Path("two.results");
	WriteResultsFile(good, {MachineRecord("Epsilon", 2, 2), MachineRecord("Zeta", 1, 1)});
	const std::string bad = fDirectory.Path("bad.results");
	WriteResultsFile(bad, {MachineRecord("Eta", 2, 2)});
	{
		// The length line no longer matches.
		std::ofstream append(bad, std::ios::app);
		append << "12\nshort\n";
	}
	const std::string picture = fDirectory.Path("picture.png");
	{
		std::ofstream png(picture, std::ios::binary);
		png << std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16) << std::string(64, '\0');
	}

	CompareWin* window = OpenWithRun(false);
	ASSERT_EQ(Descriptions(window).size(), 2u);

	// Dropped as the platform posts a drop: to the rows view.
	BMessage drop(B_SIMPLE_DATA);
	for (const std::string& path : {picture, bad, fDirectory.Path("missing.results"), good}) {
		entry_ref ref(path.c_str());
		drop.AddRef("refs", &ref);
	}
	window->PostMessage(&drop, window->ResultsView());
	ASSERT_TRUE(RunUntil([&] { return Descriptions(window).size() == 4u; }));
	apptest::RunFor(0.2);
	std::vector<std::string> names = Descriptions(window);
	ASSERT_EQ(names.size(), 4u);
	EXPECT_EQ(names[2].rfind("Epsilon", 0), 0u);
	EXPECT_EQ(names[3].rfind("Zeta", 0), 0u);
	EXPECT_TRUE(apptest::Screenshot("compare-after-drop"));
	window->Lock();
	window->Quit();
	fWindows.clear();

	// The next start finds them in the store; the run is not stored.
	CompareWin* again = Open(false);
	names = Descriptions(again);
	ASSERT_EQ(names.size(), 3u);
	EXPECT_EQ(names[0].rfind("Alpha", 0), 0u);
	EXPECT_EQ(names[1].rfind("Epsilon", 0), 0u);
	EXPECT_EQ(names[2].rfind("Zeta", 0), 0u);
}

TEST_F(CompareWinTest, DamagedOrUnwritableStoreLosesNoRowAndTheWindowWorks)
{
	// A store whose bytes are not a message: nothing is read from it.
	BNode node(fAppPath.Path());
	const char garbage[] = "not a flattened message";
	ASSERT_GT(node.WriteAttr(kCompareStoreAttribute, B_MESSAGE_TYPE, 0, garbage, sizeof(garbage)),
	          0);
	CompareWin* window = OpenWithRun(false);
	EXPECT_EQ(Descriptions(window).size(), 1u);

	// Neither the executable nor the per-user place takes the store: the
	// user is told, and the dropped rows stay in the window.
	setenv("XDG_DATA_HOME", "/dev/null/quickstep", 1);
	const std::string good = fDirectory.Path("one.results");
	WriteResultsFile(good, {MachineRecord("Theta", 2, 2)});
	apptest::AlertAnswerer answerer({0});
	BMessage drop(B_SIMPLE_DATA);
	entry_ref ref(good.c_str());
	drop.AddRef("refs", &ref);
	window->PostMessage(&drop, window->ResultsView());
	ASSERT_TRUE(RunUntil([&] { return answerer.Answered() == 1; }));
	ASSERT_EQ(answerer.Texts().size(), 1u);
	EXPECT_EQ(answerer.Texts()[0].rfind("The comparison store could not be written", 0), 0u);
	EXPECT_EQ(Descriptions(window).size(), 2u);
}

TEST_F(CompareWinTest, KeySWritesTheTableAndSaveShowsWhenWidened)
{
	Store({MachineRecord("Alpha", 1, 0.5), MachineRecord("Beta", 2, 1.5)});
	char previous[4096];
	ASSERT_NE(getcwd(previous, sizeof(previous)), nullptr);
	ASSERT_EQ(chdir(fDirectory.Path().c_str()), 0);

	CompareWin* window = OpenWithRun(true);
	window->Lock();
	BButton* save = dynamic_cast<BButton*>(window->FindView("save"));
	ASSERT_NE(save, nullptr);
	EXPECT_STREQ(save->Label(), "Save");
	EXPECT_EQ(save->Frame().left, 600);
	// Beyond the first frame: hidden until the window is widened.
	EXPECT_GT(save->Frame().right, window->Bounds().right);
	window->ResizeTo(700, 300);
	EXPECT_LE(save->Frame().right, window->Bounds().right);
	window->Unlock();
	EXPECT_TRUE(apptest::Screenshot("compare-widened-save"));

	{
		apptest::AlertAnswerer answerer({0});
		ASSERT_TRUE(apptest::PressKeys(window, "shift+s"));
		ASSERT_TRUE(RunUntil([&] { return answerer.Answered() == 1; }));
		ASSERT_EQ(answerer.Texts().size(), 1u);
		EXPECT_EQ(answerer.Texts()[0], "Quickstep.compare has been created.");
	}
	ASSERT_EQ(chdir(previous), 0);

	std::ifstream table(fDirectory.Path("Quickstep.compare"));
	std::vector<std::string> lines;
	for (std::string line; std::getline(table, line);)
		lines.push_back(line);
	// Headings, units, CPU headings, the run twice, then the two machines.
	ASSERT_EQ(lines.size(), 7u);
	EXPECT_EQ(lines[0], "\tSavage\t\tMemory\t\t");
	EXPECT_EQ(lines[2], "\t2 cpu\t1 cpu\t2 cpu\t1 cpu\t");
	EXPECT_EQ(lines[3], lines[4]);
	EXPECT_EQ(lines[5].rfind("Alpha", 0), 0u);
	EXPECT_EQ(lines[6].rfind("Beta", 0), 0u);
}

TEST_F(CompareWinTest, ClickingABarOpensTheChooserAndItsColourIsUsed)
{
	CompareWin* window = OpenWithRun(false);

	// The run's row: the 2-CPU bar (25000 of 26000) is the longer, so its
	// far end shows the 2-CPU colour (index 1).
	CompareResultsView* view = window->ResultsView();
	window->Lock();
	const float end = kCompareBarLeft + (view->Frame().Width() - kCompareBarLeft) * 0.8f;
	window->Unlock();
	ASSERT_TRUE(apptest::ClickView(view, BPoint(end, kCompareFirstRow + 8)));
	ASSERT_TRUE(RunUntil([&] { return window->ColorChooser() != nullptr; }));
	LibColorChooser* chooser = window->ColorChooser();
	EXPECT_EQ(chooser->Index(), 1);
	ASSERT_TRUE(RunUntil([&] { return !chooser->IsHidden(); }));
	EXPECT_TRUE(apptest::Screenshot("compare-colour-chooser"));

	chooser->Lock();
	chooser->ChooseSwatch(LibColorChooser::CountSwatches() - 1);
	const rgb_color chosen = chooser->Color();
	chooser->Unlock();
	ASSERT_TRUE(RunUntil([&] {
		BAutolock lock(window);
		return SameColor(view->Colors()[1], chosen);
	}));

	chooser->PostMessage(B_QUIT_REQUESTED);
	EXPECT_TRUE(RunUntil([&] { return window->ColorChooser() == nullptr; }));
}
