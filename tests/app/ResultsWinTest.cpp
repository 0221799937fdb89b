#include "results/ResultsWin.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

#include <Application.h>
#include <Button.h>
#include <FilePanel.h>
#include <InterfaceTest.h>
#include <ListView.h>
#include <PlatformTest.h>
#include <ScrollView.h>
#include <StringView.h>
#include <TextControl.h>

#include "CommandOutput.h"
#include "app/AppTestSupport.h"
#include "lib/ActionView.h"
#include "lib/LibFile.h"
#include "platform/TempDirectory.h"
#include "results/CompareWin.h"
#include "results/Metric.h"
#include "results/ResultItem.h"
#include "results/Results.h"
#include "results/ResultsFile.h"
#include "sysinfo/GetSysDeviceWin.h"

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
		BView* main = window->FindView("view");
		ASSERT_NE(main, nullptr);
		BStringView* test = dynamic_cast<BStringView*>(main->FindView("banner1"));
		BStringView* units = dynamic_cast<BStringView*>(main->FindView("banner2"));
		ASSERT_NE(test, nullptr);
		ASSERT_NE(units, nullptr);
		// Over the name and units of the rows.
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
	struct Expected {
		const char* name;
		const char* label;
		uint32 what;
	};
	const Expected buttons[] = {
	    {"cancel", "Cancel", 500}, {"compare", "Compare...", 501}, {"save", "Save...", 502}};
	for (const Expected& expected : buttons) {
		BButton* button = dynamic_cast<BButton*>(window->FindView(expected.name));
		ASSERT_NE(button, nullptr) << expected.name;
		EXPECT_STREQ(button->Label(), expected.label);
		EXPECT_EQ(button->Command(), expected.what);
	}
	EXPECT_EQ(window->DefaultButton(), window->FindView("save"));
	window->Unlock();

	window->Pop();
	ASSERT_TRUE(RunUntil([&] { return !window->IsHidden(); }));
	// Compare opens the comparison window once. The window stays.
	window->PostMessage(kMsgResultsCompare);
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

namespace {

// Saving from the window: the question, the unknown-devices window, the save
// panel answered with its message 503, the packed files and the notice. The
// fixed temporary names live in a fixture directory; the chooser never runs.
class ResultsWinSaveTest : public ResultsWinTest
{
protected:
	void SetUp() override
	{
		ResultsWinTest::SetUp();
		if (IsSkipped())
			return;
		ASSERT_TRUE(fTmp.Valid());
		ASSERT_TRUE(fHome.Valid());
		platform_set_tmp_directory(fTmp.Path().c_str());
		platform_set_file_chooser_disabled(true);
		platform_set_mail_tool_path(fHome.Path().c_str());
		UseBus("pci-catalog-known");
		char cwd[4096];
		fOldCwd = getcwd(cwd, sizeof(cwd)) != nullptr ? cwd : "/";
		fOldPath = getenv("PATH") != nullptr ? getenv("PATH") : "";
	}

	void TearDown() override
	{
		ResultsWinTest::TearDown();
		platform_set_tmp_directory(nullptr);
		platform_set_file_chooser_disabled(false);
		platform_set_mail_tool_path(nullptr);
		platform_set_root(nullptr);
		setenv("PATH", fOldPath.c_str(), 1);
		EXPECT_EQ(chdir(fOldCwd.c_str()), 0);
	}

	static void UseBus(const char* bus)
	{
		platform_set_root((std::string(QS_FIXTURES_DIR) + "/" + bus).c_str());
	}

	// A window showing a run of that many metrics, read back from a results
	// file as a stored run would be.
	ResultsWin* WindowWithRun(int metrics)
	{
		Results run(false);
		for (int i = 0; i < metrics; i++) {
			Metric* metric = run.NewTest(Metric::NameOf(apptest::kEveryMetricIndex[i]), 1000);
			metric->Index(apptest::kEveryMetricIndex[i]);
			metric->Units("ops/s");
			// One time each: the description names one CPU.
			metric->Time(1.0f);
		}
		std::string file = fHome.Path("stored.results");
		EXPECT_EQ(ResultsFile::Write(file.c_str(), run), kResultsFileOK);
		Results stored(false);
		EXPECT_EQ(ResultsFile::Read(file.c_str(), stored), kResultsFileOK);
		unlink(file.c_str());
		ResultsWin* window = Make(2);
		window->Update(stored, false);
		window->Pop();
		RunUntil([&] { return !window->IsHidden(); });
		return window;
	}

	// The save panel's answer for a file in the user's directory.
	static void Answer(ResultsWin* window, const std::string& directory, const char* name)
	{
		BMessage reply(kMsgResultsSavePanel);
		entry_ref ref(directory.c_str());
		reply.AddRef("directory", &ref);
		reply.AddString("name", name);
		window->PostMessage(&reply);
	}

	static bool HavePackers()
	{
		return access("/bin/tar", X_OK) == 0 && system("command -v zip unzip > /dev/null") == 0;
	}

	TempDirectory fTmp;
	TempDirectory fHome;
	std::string fOldCwd, fOldPath;
};

} // namespace

TEST_F(ResultsWinSaveTest, OnlyAnIncompleteRunAsksBeforeTheSavePanel)
{
	struct Case {
		int metrics;
		std::vector<int32> answers;
		bool asked;
		bool panel;
	};
	const Case cases[] = {
	    {26, {0}, true, false},
	    {26, {1}, true, true},
	    {27, {}, false, true},
	};
	for (const Case& c : cases) {
		ResultsWin* window = WindowWithRun(c.metrics);
		apptest::AlertAnswerer answerer(c.answers);
		window->PostMessage(kMsgResultsSave);
		if (c.asked) {
			ASSERT_TRUE(RunUntil([&] { return answerer.Answered() == 1; }));
		}
		RunUntil([&] { return window->SavePanel()->IsShowing(); }, 1);
		EXPECT_EQ(window->SavePanel()->IsShowing(), c.panel) << c.metrics;
		EXPECT_EQ(answerer.Answered(), c.asked ? 1 : 0);
		if (c.asked) {
			EXPECT_EQ(answerer.Texts()[0],
			          "Not all the tests were run.  Do you still wish to save the results?");
		}
		if (c.panel) {
			EXPECT_STREQ(window->SavePanel()->SaveText(), "Quickstep.results");
		}
		// Without unknown devices there is nothing to name.
		EXPECT_EQ(window->DevicesWindow(), nullptr);
	}
}

TEST_F(ResultsWinSaveTest, UnknownDevicesAreNamedThenTheRunIsPackedAndOfferedForMail)
{
	if (!HavePackers())
		GTEST_SKIP() << "tar, zip and unzip are needed";
	UseBus("pci-catalog-unknown");
	ResultsWin* window = WindowWithRun(27);
	window->PostMessage(kMsgResultsSave);
	ASSERT_TRUE(RunUntil([&] {
		return window->DevicesWindow() != nullptr && !window->DevicesWindow()->IsHidden();
	}));
	GetSysDeviceWin* devices = window->DevicesWindow();
	EXPECT_FALSE(window->SavePanel()->IsShowing());
	devices->Lock();
	dynamic_cast<BTextControl*>(devices->FindView("vendor_2-2_0x1E49"))->SetText("Matrox");
	devices->Unlock();

	// Closing it brings the save panel; the window waits hidden.
	int32 windows = be_app->CountWindows();
	devices->PostMessage(B_QUIT_REQUESTED);
	ASSERT_TRUE(RunUntil([&] { return window->SavePanel()->IsShowing(); }));
	EXPECT_TRUE(devices->IsHidden());

	apptest::AlertAnswerer answerer({0});
	Answer(window, fHome.Path(), "Quickstep.results");
	ASSERT_TRUE(RunUntil([&] { return answerer.Answered() == 1; }));
	apptest::Screenshot("results-mail-notice");
	EXPECT_NE(answerer.Texts()[0].find("You may send the file yourself, or you can e-mail it now."),
	          std::string::npos);

	std::string zip = fHome.Path("Quickstep.results.zip");
	EXPECT_EQ(std::string(window->SavePath().Path()), zip);
	EXPECT_FALSE(window->SavePanel()->IsShowing());
	EXPECT_EQ(window->DevicesWindow(), nullptr);
	EXPECT_TRUE(RunUntil([&] { return be_app->CountWindows() < windows; }));
	EXPECT_FALSE(LibExists(fTmp.Path("results").c_str()));
	EXPECT_FALSE(LibExists(fTmp.Path("Quickstep.tar").c_str()));
	EXPECT_FALSE(LibExists(fHome.Path("Quickstep.results").c_str()));
	EXPECT_EQ(CommandOutput("unzip -l '" + zip + "' | grep -c ' Quickstep.results$'"), "1\n");
	EXPECT_EQ(CommandOutput("unzip -p '" + zip + "' | tar -tf - | LC_ALL=C sort"),
	          "results/\nresults/Quickstep.results\nresults/unknown_devices\n");
	EXPECT_NE(CommandOutput("unzip -p '" + zip + "' | tar -xOf - results/unknown_devices")
	              .find("Vendor <Unknown,Matrox>"),
	          std::string::npos);
	// The run inside is the one shown.
	std::string saved =
	    CommandOutput("unzip -p '" + zip + "' | tar -xOf - results/Quickstep.results");
	EXPECT_EQ(saved.compare(0, 4, "1.0\n"), 0);
	EXPECT_NE(saved.find("1050:"), std::string::npos);
}

TEST_F(ResultsWinSaveTest, WithoutZipTheTarKeepsTheChosenNameAndTheUserIsTold)
{
	if (!HavePackers())
		GTEST_SKIP() << "tar is needed";
	ResultsWin* window = WindowWithRun(27);
	setenv("PATH", fHome.Path().c_str(), 1);
	apptest::AlertAnswerer answerer({0, 0});
	Answer(window, fHome.Path(), "  run 1.results ");
	ASSERT_TRUE(RunUntil([&] { return answerer.Answered() == 2; }));
	setenv("PATH", fOldPath.c_str(), 1);
	EXPECT_EQ(answerer.Texts()[0],
	          "Quickstep was unable to ZIP your results because the utility 'zip' was not found. "
	          "You may have trouble emailing the results. It would be best if you obtained 'zip' "
	          "from the BeWare web site, and re-run your test.");
	std::string tar = fHome.Path("run 1.results");
	EXPECT_EQ(std::string(window->SavePath().Path()), tar);
	EXPECT_EQ(CommandOutput("tar -tf '" + tar + "'"), "results/\nresults/run 1.results\n");
	EXPECT_FALSE(LibExists(fTmp.Path("results").c_str()));
}

TEST_F(ResultsWinSaveTest, ALinkAtTheFixedFolderIsNeverFollowed)
{
	std::string victim = fHome.Path("victim");
	ASSERT_EQ(mkdir(victim.c_str(), 0755), 0);
	ASSERT_EQ(symlink(victim.c_str(), fTmp.Path("results").c_str()), 0);
	ResultsWin* window = WindowWithRun(27);
	apptest::AlertAnswerer answerer({0});
	Answer(window, fHome.Path(), "Quickstep.results");
	ASSERT_TRUE(RunUntil([&] { return answerer.Answered() == 1; }));
	apptest::RunFor(0.3);
	// One alert, the warning: no notice follows.
	EXPECT_EQ(answerer.Texts().size(), 1u);
	EXPECT_NE(answerer.Texts()[0].find("is a symbolic link"), std::string::npos);
	EXPECT_EQ(CommandOutput("ls -A '" + victim + "'"), "");
	// The results file is kept as written.
	std::ifstream kept(fHome.Path("Quickstep.results"));
	std::string version;
	kept >> version;
	EXPECT_EQ(version, "1.0");
}

TEST_F(ResultsWinSaveTest, MailCarriesTheArchiveOrSaysWhyItCannot)
{
	ResultsWin* window = WindowWithRun(27);
	// A broken archive of the name zip wants: zip fails, and the results stay
	// in the tar under the chosen name, which is what gets mailed.
	std::string archive = fHome.Path("Quickstep.results.zip");
	std::ofstream(archive) << "PK";
	{
		apptest::AlertAnswerer answerer({0});
		Answer(window, fHome.Path(), "Quickstep.results");
		ASSERT_TRUE(RunUntil([&] { return answerer.Answered() == 1; }));
	}

	// No mail tool: told so, nothing else happens.
	{
		apptest::AlertAnswerer answerer({0});
		BMessage mail(kMsgResultsEmail);
		mail.AddString("config", "Dual PII 400 BX");
		window->PostMessage(&mail);
		ASSERT_TRUE(RunUntil([&] { return answerer.Answered() == 1; }));
		EXPECT_NE(answerer.Texts()[0].find("neither 'sendmail' nor 'xdg-email'"),
		          std::string::npos);
	}

	std::string message = fHome.Path("message");
	std::string sendmail = fHome.Path("sendmail");
	std::ofstream(sendmail) << "#!/bin/sh\ncat > '" << message << "'\n";
	ASSERT_EQ(chmod(sendmail.c_str(), 0755), 0);
	BMessage mail(kMsgResultsEmail);
	mail.AddString("config", "Dual PII 400 BX");
	window->PostMessage(&mail);
	ASSERT_TRUE(RunUntil([&] { return LibExists(message.c_str()); }));
	apptest::RunFor(0.2);
	std::string text = CommandOutput("cat '" + message + "'");
	EXPECT_NE(text.find("\nTo: quickstep-results@"), std::string::npos);
	EXPECT_NE(text.find("\nSubject: Quickstep results\n"), std::string::npos);
	EXPECT_NE(text.find("\n\nResults for : Dual PII 400 BX.\n"), std::string::npos);
	EXPECT_EQ(std::string(window->SavePath().Path()), fHome.Path("Quickstep.results"));
	EXPECT_NE(text.find("filename=\"Quickstep.results\""), std::string::npos);
}

TEST_F(ResultsWinSaveTest, QuittingTheWindowQuitsTheUnknownDevicesWindow)
{
	UseBus("pci-catalog-unknown");
	ResultsWin* window = WindowWithRun(27);
	window->PostMessage(kMsgResultsSave);
	ASSERT_TRUE(RunUntil([&] { return window->DevicesWindow() != nullptr; }));
	int32 windows = be_app->CountWindows();
	// As the application asks when it quits: the devices window must not
	// hold it up.
	window->Lock();
	EXPECT_TRUE(window->QuitRequested());
	window->Unlock();
	EXPECT_EQ(window->DevicesWindow(), nullptr);
	EXPECT_TRUE(RunUntil([&] { return be_app->CountWindows() == windows - 1; }));
}
