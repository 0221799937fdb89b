#include "app/QuickstepWin.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstring>
#include <dirent.h>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <Autolock.h>
#include <Box.h>
#include <CheckBox.h>
#include <FindDirectory.h>
#include <ListView.h>
#include <Menu.h>
#include <MenuBar.h>
#include <MenuItem.h>
#include <PlatformTest.h>
#include <Screen.h>
#include <StringView.h>

#include "app/AnimateCursor.h"
#include "app/AppTestSupport.h"
#include "app/QuickstepApp.h"
#include "platform/TempDirectory.h"
#include "results/Metric.h"
#include "results/ResultItem.h"
#include "results/Results.h"
#include "results/ResultsWin.h"

using apptest::AlertAnswerer;
using apptest::RunUntil;

namespace {

const char* const kScreenText = "To properly test the graphics portion, the screen should be set "
                                "to 8 Bits/Pixel, and a resolution of 1024x768";
const char* const kWarningStart = "While the test is being conducted against one CPU";

// The main window counts the run messages it gets, then handles them as
// ever.
class CountingWin : public QuickstepWin
{
public:
	CountingWin() : QuickstepWin(false), fCompleted(0) {}

	void MessageReceived(BMessage* message) override
	{
		if (message->what == kMsgThreadCompleted)
			fCompleted++;
		if (message->what == kMsgBenchmarkStatus) {
			const char* status = nullptr;
			if (message->FindString("status", &status) == B_OK)
				fStatus.push_back(status);
		}
		QuickstepWin::MessageReceived(message);
	}

	std::atomic<int32> fCompleted;
	std::vector<std::string> fStatus;
};

class QuickstepWinTest : public testing::Test
{
protected:
	void SetUp() override
	{
		QS_REQUIRE_DISPLAY();
		get_system_info(&fInfo);
		SetCpus(2);
		fApp = apptest::SharedApp();
		fWin = new CountingWin;
		fWin->Run();
		fWin->Show();
		RunUntil([&] { return !fWin->IsHidden(); }, 5);
	}

	void TearDown() override
	{
		if (fWin != nullptr)
			apptest::CloseMainWindow(fWin);
		platform_set_system_info(nullptr);
		platform_set_screen(nullptr, B_NO_COLOR_SPACE);
		platform_set_cpu_state_hook(nullptr);
	}

	void SetCpus(int32 count)
	{
		fInfo.cpu_count = count;
		platform_set_system_info(&fInfo);
	}

	void SetScreen(int32 width, int32 height, color_space space)
	{
		BRect frame(0, 0, width - 1, height - 1);
		platform_set_screen(&frame, space);
	}

	template <class T> T* View(const char* name)
	{
		fWin->Lock();
		T* view = dynamic_cast<T*>(fWin->FindView(name));
		fWin->Unlock();
		return view;
	}

	std::string Estimate()
	{
		BAutolock lock(fWin);
		return View<BStringView>("est_time")->Text();
	}

	std::string TimeLabel()
	{
		BAutolock lock(fWin);
		return View<BBox>("timebox")->Label();
	}

	bool TestEnabled()
	{
		BAutolock lock(fWin);
		return fWin->KeyMenuBar()->FindItem(kMsgStartTest)->IsEnabled();
	}

	// Clicks a check box in its box (left of the label).
	bool Click(const char* name)
	{
		BCheckBox* box = View<BCheckBox>(name);
		return box != nullptr && apptest::ClickView(box, BPoint(7, box->Bounds().Height() / 2));
	}

	bool WaitForEstimate(const char* text)
	{
		return RunUntil([&] { return Estimate() == text; }, 5);
	}

	bool WaitForRuns(int32 runs, double seconds = 60)
	{
		return RunUntil([&] { return fWin->fCompleted >= runs; }, seconds);
	}

	void Post(uint32 what) { fWin->PostMessage(what); }

	system_info fInfo;
	QuickstepApp* fApp = nullptr;
	CountingWin* fWin = nullptr;
};

} // namespace

TEST_F(QuickstepWinTest, WindowHasItsMenusBoxesAndNames)
{
	fWin->Lock();
	EXPECT_EQ(fWin->Flags() & (B_NOT_RESIZABLE | B_NOT_CLOSABLE | B_NOT_ZOOMABLE),
	          static_cast<uint32>(B_NOT_RESIZABLE | B_NOT_CLOSABLE | B_NOT_ZOOMABLE));

	BMenuBar* bar = fWin->KeyMenuBar();
	ASSERT_EQ(bar->CountItems(), 2);
	BMenu* appMenu = bar->SubmenuAt(0);
	BMenu* quickstep = bar->SubmenuAt(1);
	ASSERT_NE(appMenu, nullptr);
	ASSERT_NE(quickstep, nullptr);
	EXPECT_STREQ(quickstep->Name(), "Quickstep");

	struct Expected {
		BMenu* menu;
		int32 index;
		const char* label;
		uint32 what;
		char shortcut;
		bool toApp;
	};
	const Expected items[] = {
	    {appMenu, 0, "About Quickstep...", 'sabt', 0, true},
	    {appMenu, 1, "Help...", 'Help', 0, true},
	    {appMenu, 2, "System...", 'ssys', 0, true},
	    {appMenu, 4, "Quit", B_QUIT_REQUESTED, 'Q', true},
	    {quickstep, 0, "Test", 100, 'T', false},
	    {quickstep, 1, "All", 200, 'A', false},
	};
	ASSERT_EQ(appMenu->CountItems(), 5);
	EXPECT_TRUE(appMenu->ItemAt(3)->IsSeparator());
	ASSERT_EQ(quickstep->CountItems(), 2);
	for (const Expected& expected : items) {
		BMenuItem* item = expected.menu->ItemAt(expected.index);
		ASSERT_NE(item, nullptr) << expected.label;
		EXPECT_STREQ(item->Label(), expected.label);
		EXPECT_EQ(item->Command(), expected.what) << expected.label;
		EXPECT_EQ(item->Shortcut(), expected.shortcut) << expected.label;
		EXPECT_EQ(item->Target() == be_app, expected.toApp) << expected.label;
	}
	EXPECT_FALSE(quickstep->ItemAt(0)->IsEnabled());

	// Boxes by name, label, what-code and group (the group's own label).
	struct Check {
		const char* name;
		const char* label;
		uint32 what;
		const char* group;
	};
	const Check checks[] = {
	    {"cpugraphics", "Graphics", 2000, "Architecture"},
	    {"cpustring", "Strings", 2001, "Architecture"},
	    {"cpumemory", "Memory", 2002, "Architecture"},
	    {"cpusavage", "Savage", 2003, "Architecture"},
	    {"cpuackerman", "Ackerman", 2004, "Architecture"},
	    {"cpufourier", "Fourier", 2008, "Architecture"},
	    {"cpuwhetstone", "Whetstone", 2006, "Architecture"},
	    {"cpusieve", "Sieve", 2007, "Architecture"},
	    {"disklifecycle", "LifeCycle", 3001, "Disk"},
	    {"disio", "Input/Output", 3000, "Disk"},
	};
	for (const Check& check : checks) {
		BCheckBox* box = dynamic_cast<BCheckBox*>(fWin->FindView(check.name));
		ASSERT_NE(box, nullptr) << check.name;
		EXPECT_STREQ(box->Label(), check.label);
		EXPECT_EQ(box->Command(), check.what) << check.name;
		EXPECT_EQ(box->Value(), B_CONTROL_OFF);
		BBox* group = dynamic_cast<BBox*>(box->Parent());
		ASSERT_NE(group, nullptr) << check.name;
		EXPECT_STREQ(group->Label(), check.group);
	}
	// No box for Dhrystone.
	EXPECT_EQ(fWin->FindView("cpudhrystone"), nullptr);

	EXPECT_STREQ(View<BStringView>("est_time")->Text(), "0:00");
	EXPECT_STREQ(View<BStringView>("tip_help")->Text(), "Select <Shift><F1> for on-line help");

	// The window hands its busy pointer's frames to the animator.
	AnimateCursor* cursor = fWin->Cursor();
	EXPECT_EQ(cursor->Frames(), 4);
	for (int32 i = 0; i < 4; i++)
		EXPECT_EQ(memcmp(cursor->Frame(i), QuickstepWin::kBusyCursors[i], 68), 0);
	fWin->Unlock();

	// The results window waits, hidden, for the first run.
	EXPECT_TRUE(fWin->ResultsWindow()->IsHidden());
	apptest::Screenshot("main-window");
}

TEST_F(QuickstepWinTest, TickingBoxesEnablesTestAndEstimatesPerCpu)
{
	SetCpus(1);
	ASSERT_TRUE(Click("disklifecycle"));
	EXPECT_TRUE(WaitForEstimate("0:11")) << Estimate();
	EXPECT_TRUE(TestEnabled());

	// Unticking the last box disables "Test" again.
	ASSERT_TRUE(Click("disklifecycle"));
	EXPECT_TRUE(WaitForEstimate("0:00")) << Estimate();
	EXPECT_FALSE(TestEnabled());

	SetCpus(4);
	ASSERT_TRUE(Click("cpugraphics"));
	EXPECT_TRUE(WaitForEstimate("5:20")) << Estimate();
	EXPECT_TRUE(TestEnabled());

	// Seconds below ten keep their leading zero.
	ASSERT_TRUE(Click("cpugraphics"));
	SetCpus(1);
	ASSERT_TRUE(Click("disio"));
	EXPECT_TRUE(WaitForEstimate("0:08")) << Estimate();
}

TEST_F(QuickstepWinTest, AllTicksEveryBoxFromItsShortcut)
{
	SetCpus(2);
	ASSERT_TRUE(apptest::PressKeys(fWin, "ctrl+a"));
	EXPECT_TRUE(WaitForEstimate("3:58")) << Estimate();
	EXPECT_TRUE(TestEnabled());
	EXPECT_EQ(fWin->CountSelected(), 10);

	// Choosing it again on another machine size recomputes.
	SetCpus(1);
	Post(kMsgSelectAll);
	EXPECT_TRUE(WaitForEstimate("1:59")) << Estimate();
	apptest::Screenshot("main-window-all");
}

TEST_F(QuickstepWinTest, ScreenModeAlertAbortStartsNothingAndWarningComesOnce)
{
	// About the alerts only: the runs need not draw.
	Benchmark::SetGraphicsTest(nullptr);
	SetScreen(1024, 768, B_RGB32);
	ASSERT_TRUE(Click("cpugraphics"));
	ASSERT_TRUE(WaitForEstimate("2:40"));

	{
		// Abort: no warning, no worker, no busy pointer.
		AlertAnswerer answerer({0});
		Post(kMsgStartTest);
		ASSERT_TRUE(RunUntil([&] { return answerer.Answered() == 1; }));
		apptest::RunFor(0.5);
		std::vector<std::string> texts = answerer.Texts();
		ASSERT_EQ(texts.size(), 1u);
		EXPECT_EQ(texts[0], kScreenText);
	}
	EXPECT_EQ(TimeLabel(), "Estimated Test Time");
	EXPECT_EQ(Estimate(), "2:40");
	EXPECT_LT(find_thread("benchmark"), 0);
	EXPECT_LT(find_thread("LoadCursor"), 0);
	EXPECT_EQ(fWin->fCompleted, 0);

	{
		// Continue: the processor warning follows on this first real start.
		AlertAnswerer answerer({1, 0});
		Post(kMsgStartTest);
		ASSERT_TRUE(WaitForRuns(1));
		std::vector<std::string> texts = answerer.Texts();
		ASSERT_EQ(texts.size(), 2u);
		EXPECT_EQ(texts[0], kScreenText);
		EXPECT_EQ(texts[1].rfind(kWarningStart, 0), 0u) << texts[1];
	}

	{
		// A screen of the right mode asks nothing, and the warning is not
		// shown again.
		SetScreen(1024, 768, B_CMAP8);
		AlertAnswerer answerer({0, 0});
		Post(kMsgStartTest);
		ASSERT_TRUE(WaitForRuns(2));
		apptest::RunFor(0.3);
		EXPECT_EQ(answerer.Answered(), 0);
	}
}

TEST_F(QuickstepWinTest, RunFromTheWindowReportsStatusAndListsItsResults)
{
	ASSERT_TRUE(Click("cpusavage"));
	ASSERT_TRUE(WaitForEstimate("0:04"));

	AlertAnswerer answerer({0});
	ASSERT_TRUE(apptest::PressKeys(fWin, "ctrl+t"));
	ASSERT_TRUE(RunUntil([&] { return TimeLabel() == "Status"; }));
	ASSERT_TRUE(RunUntil([&] { return Estimate().rfind("Testing", 0) == 0; }));
	EXPECT_GT(find_thread("LoadCursor"), 0);
	EXPECT_TRUE(TestEnabled());
	apptest::Screenshot("run-in-progress");

	ASSERT_TRUE(WaitForRuns(1));
	EXPECT_EQ(answerer.Answered(), 1);
	std::vector<std::string> expected = {"Testing Savage (cpu 2/2)", "Testing Savage (cpu 1/2)"};
	EXPECT_EQ(fWin->fStatus, expected);

	// Back to idle: label restored, time text empty, pointer no longer busy.
	EXPECT_EQ(TimeLabel(), "Estimated Test Time");
	EXPECT_EQ(Estimate(), "");
	EXPECT_TRUE(RunUntil([&] { return find_thread("LoadCursor") < 0; }, 2));

	ResultsWin* results = fWin->ResultsWindow();
	ASSERT_TRUE(RunUntil([&] { return !results->IsHidden(); }));
	results->Lock();
	BListView* list = results->List();
	ASSERT_EQ(list->CountItems(), 1);
	ResultItem* row = dynamic_cast<ResultItem*>(list->ItemAt(0));
	ASSERT_NE(row, nullptr);
	EXPECT_STREQ(row->Name(), "Savage");
	EXPECT_STRNE(row->UnitsText(), "");
	EXPECT_EQ(row->QuantityValue(), 2);
	EXPECT_GT(row->RateAt(0), 0);
	EXPECT_GT(row->RateAt(1), 0);
	results->Unlock();
	// The results open beside the main window, title bars included.
	EXPECT_FALSE(apptest::FramesOverlap(results, fWin))
	    << "results " << results->Frame().left << "," << results->Frame().top << " main "
	    << fWin->Frame().left << "," << fWin->Frame().top;
	apptest::Screenshot("results-window");

	// "Cancel" puts the results away (they cover the main window).
	results->PostMessage(kMsgResultsCancel);
	EXPECT_TRUE(RunUntil([&] { return results->IsHidden(); }));

	// The estimate comes back with the next change of a box.
	EXPECT_EQ(Estimate(), "");
	ASSERT_TRUE(Click("cpumemory"));
	EXPECT_TRUE(WaitForEstimate("0:08")) << Estimate();
}

namespace {

// Holds the first worker between its passes, where it touches no shared
// state, until released; later calls pass.
// Static, so that a worker still held when a test fails never outlives it.
struct PassGate {
	std::mutex mutex;
	std::condition_variable changed;
	bool held = false;
	bool released = false;
	int32 calls = 0;

	void Release()
	{
		std::lock_guard<std::mutex> lock(mutex);
		released = true;
		changed.notify_all();
	}
};
PassGate sGateStore;
PassGate* sGate = &sGateStore;

// Lets a held worker go at the end of the test, whatever happened.
struct GateRelease {
	~GateRelease() { sGate->Release(); }
};

status_t
GateCpuState(int32, bool)
{
	std::unique_lock<std::mutex> lock(sGate->mutex);
	if (sGate->calls++ == 0) {
		sGate->held = true;
		sGate->changed.notify_all();
		sGate->changed.wait(lock, [] { return sGate->released; });
	}
	return B_OK;
}

} // namespace

TEST_F(QuickstepWinTest, SecondTestDuringARunStartsAnotherWorker)
{
	PassGate& gate = *sGate;
	GateRelease releaseAtEnd;
	platform_set_cpu_state_hook(GateCpuState);
	SetScreen(1024, 768, B_CMAP8);
	// Without its window the graphics test's passes are empty and the run
	// goes straight to switching processors.
	Benchmark::SetGraphicsTest(nullptr);
	ASSERT_TRUE(Click("cpugraphics"));
	ASSERT_TRUE(WaitForEstimate("2:40"));

	AlertAnswerer answerer({0});
	Post(kMsgStartTest);
	ASSERT_TRUE(RunUntil([&] {
		std::lock_guard<std::mutex> lock(gate.mutex);
		return gate.held;
	}));
	EXPECT_EQ(TimeLabel(), "Status");
	EXPECT_TRUE(TestEnabled());

	// Nothing refuses a second start while the first worker runs.
	Post(kMsgStartTest);
	EXPECT_TRUE(WaitForRuns(1, 30));
	gate.Release();
	EXPECT_TRUE(WaitForRuns(2, 30));
	// The warning came once, for the first start; the busy pointer stops
	// with the run.
	EXPECT_EQ(answerer.Answered(), 1);
	EXPECT_TRUE(RunUntil([&] { return find_thread("LoadCursor") < 0; }, 2));
}


namespace {

// The names in directory that the disk tests make.
std::vector<std::string>
DiskTestFiles(const std::string& directory)
{
	std::vector<std::string> names;
	DIR* dir = opendir(directory.c_str());
	if (dir == nullptr)
		return names;
	while (dirent* entry = readdir(dir)) {
		if (strncmp(entry->d_name, "quickstep_", 10) == 0)
			names.push_back(entry->d_name);
	}
	closedir(dir);
	return names;
}

} // namespace

// Quitting while a disk test writes leaves nothing behind: the window is
// closed from another thread the moment the test's first file appears.
TEST_F(QuickstepWinTest, QuittingDuringADiskTestRemovesItsFiles)
{
	struct Case {
		const char* box;
		const char* file;
	};
	for (const Case& test :
	     {Case{"disklifecycle", "quickstep_lc_test.0"}, Case{"disio", "quickstep_io_test"}}) {
		SCOPED_TRACE(test.box);
		TempDirectory temp;
		ASSERT_TRUE(temp.Valid());
		platform_set_directory(B_COMMON_TEMP_DIRECTORY, temp.Path("").c_str());
		if (fWin == nullptr) {
			fWin = new CountingWin;
			fWin->Run();
			fWin->Show();
		}
		fWin->Lock();
		View<BCheckBox>(test.box)->SetValue(B_CONTROL_ON);
		fWin->Unlock();

		std::string watched = temp.Path(test.file);
		std::atomic<bool> closed(false);
		CountingWin* window = fWin;
		std::thread watcher([&] {
			struct stat info;
			for (int i = 0; i < 200000 && stat(watched.c_str(), &info) != 0; i++)
				usleep(100);
			apptest::CloseMainWindow(window);
			closed = true;
		});
		AlertAnswerer answerer({0});
		Post(kMsgStartTest);
		bool ended = RunUntil([&] { return closed.load(); }, 30);
		if (!ended)
			apptest::CloseMainWindow(window);
		watcher.join();
		fWin = nullptr;
		ASSERT_TRUE(ended);
		EXPECT_EQ(answerer.Answered(), 1);
		// Nothing is made after the window has gone either.
		apptest::RunFor(0.3);
		EXPECT_EQ(DiskTestFiles(temp.Path("")), std::vector<std::string>());
		platform_set_directory(B_COMMON_TEMP_DIRECTORY, nullptr);
	}
}


// With and without a window manager: Tab and Space tick a box and enable
// "Test"; closing the results window through the window manager hides it,
// as its "Cancel" does.
TEST_F(QuickstepWinTest, KeyboardTicksABoxAndWindowManagerCloseHidesTheResults)
{
	for (bool managed : {false, true}) {
		SCOPED_TRACE(managed ? "openbox" : "no window manager");
		std::unique_ptr<apptest::WindowManager> manager;
		if (managed) {
			manager = std::make_unique<apptest::WindowManager>();
			if (!manager->Running())
				continue;
		}
		// Away from any main window other tests of the process left open.
		fWin->MoveTo(500, 450);
		fWin->Activate();
		fWin->Lock();
		for (const char* name : {"cpugraphics", "cpustring"})
			View<BCheckBox>(name)->SetValue(B_CONTROL_OFF);
		fWin->SetDescription();
		fWin->Unlock();
		ASSERT_FALSE(TestEnabled());

		// The window gets the keyboard (from openbox when the test asks it
		// to activate the window, else from a click on its background); the
		// first box has the focus, Tab moves it on, Space ticks.
		if (managed) {
			const std::string id = apptest::WindowId("Quickstep");
			ASSERT_FALSE(id.empty());
			ASSERT_TRUE(apptest::RunCommand(("xdotool windowactivate --sync " + id).c_str()));
		} else {
			BView* background = View<BView>("bgview");
			ASSERT_TRUE(apptest::ClickView(background, BPoint(230, 5)));
		}
		ASSERT_TRUE(apptest::RunCommand("xdotool key Tab sleep 0.1 key space"));
		EXPECT_TRUE(RunUntil([&] { return TestEnabled(); }, 3));
		EXPECT_EQ(fWin->CountSelected(), 1);

		ResultsWin* results = fWin->ResultsWindow();
		results->Pop();
		ASSERT_TRUE(RunUntil([&] { return !results->IsHidden(); }));
		apptest::RunFor(0.5);
		EXPECT_FALSE(apptest::FramesOverlap(results, fWin));
		EXPECT_TRUE(platform_ui_close_window(results));
		EXPECT_TRUE(RunUntil([&] { return results->IsHidden(); }, 3));
	}
}


// Screenshots for people to look at, under a window manager: the results of
// every test with large values and the System window, neither over the main
// window.
TEST_F(QuickstepWinTest, ScreenshotsUnderAWindowManager)
{
	apptest::WindowManager manager;
	if (!manager.Running())
		GTEST_SKIP() << "openbox is not installed";
	// A row for each kind of test, with the largest values a fast machine
	// gives.
	Results record(false);
	record.Reset();
	while (record.CycleCpu()) {
		for (int32 index : apptest::kEveryMetricIndex) {
			Metric* metric = record.NewTest(Metric::NameOf(index), 99999999);
			metric->Units("MegaChars/sec");
			metric->Time(1.0f);
		}
	}
	ResultsWin* results = fWin->ResultsWindow();
	results->Update(record, false);
	results->Pop();
	ASSERT_TRUE(RunUntil([&] { return !results->IsHidden(); }));
	EXPECT_FALSE(apptest::FramesOverlap(results, fWin));
	apptest::Screenshot("openbox-results-every-test");
	// The pointer resting on a value cut short shows it whole in a tip.
	results->Lock();
	BListView* list = results->List();
	const BRect row = list->ItemFrame(0);
	const BPoint cell = list->ConvertToScreen(BPoint(row.left + 290 + 55 + 20, row.top + 5));
	results->Unlock();
	ASSERT_TRUE(apptest::RunCommand("xdotool mousemove " + std::to_string(int(cell.x)) + " " +
	                                std::to_string(int(cell.y)) +
	                                " sleep 0.2 mousemove_relative 1 0"));
	apptest::RunFor(1.5);
	apptest::Screenshot("openbox-results-value-tip");
	results->PostMessage(kMsgResultsCancel);
	RunUntil([&] { return results->IsHidden(); });

	fApp->PostMessage(kMsgShowSystem);
	ASSERT_TRUE(RunUntil([&] { return fApp->SystemWindow() != nullptr; }));
	BWindow* system = fApp->SystemWindow();
	ASSERT_TRUE(RunUntil([&] { return !system->IsHidden(); }));
	EXPECT_FALSE(apptest::FramesOverlap(system, fWin));
	apptest::Screenshot("openbox-system-window");
	system->PostMessage(B_QUIT_REQUESTED);
	RunUntil([&] { return fApp->SystemWindow() == nullptr; });
}


namespace {

// The names of the rows of the results window.
std::vector<std::string>
RowNames(ResultsWin* results)
{
	std::vector<std::string> names;
	results->Lock();
	BListView* list = results->List();
	for (int32 i = 0; i < list->CountItems(); i++) {
		ResultItem* row = dynamic_cast<ResultItem*>(list->ItemAt(i));
		if (row != nullptr)
			names.push_back(row->Name());
	}
	results->Unlock();
	return names;
}

// The graphics test's window while it is there, or null.
BWindow*
GraphicsWindow()
{
	for (int32 i = 0; i < be_app->CountWindows(); i++) {
		BWindow* window = be_app->WindowAt(i);
		if (strcmp(window->Name(), "GraphicsWin") == 0)
			return window;
	}
	return nullptr;
}

} // namespace

// The graphics test draws in a window of its own that goes with it; its
// thirteen rows come in their order among the twenty-seven of a run of all
// boxes, without Dhrystone.
TEST_F(QuickstepWinTest, AllBoxesGiveTheTwentySevenMetricsOfACompleteRun)
{
	SetCpus(1);
	SetScreen(1024, 768, B_CMAP8);
	AlertAnswerer answerer({0});
	Post(kMsgSelectAll);
	ASSERT_TRUE(WaitForEstimate("1:59"));
	Post(kMsgStartTest);
	// The picture is kept for people to look at.
	ASSERT_TRUE(RunUntil(
	    [] {
		    BWindow* window = GraphicsWindow();
		    return window != nullptr && !window->IsHidden();
	    },
	    30));
	apptest::Screenshot("graphics-drawing");

	ASSERT_TRUE(WaitForRuns(1, 110));
	EXPECT_TRUE(RunUntil([] { return GraphicsWindow() == nullptr; }, 5))
	    << "the window goes with the test";
	std::vector<std::string> names = RowNames(fWin->ResultsWindow());
	EXPECT_EQ(names.size(), 27u);
	EXPECT_EQ(std::count(names.begin(), names.end(), "Dhrystone"), 0);
	EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
	const std::vector<std::string> graphics = {
	    "Graphics Lines Flushed",
	    "Graphics Lines Unflushed",
	    "Graphics Strings Flushed",
	    "Graphics Strings Unflushed",
	    "Graphics Ellipses Flushed",
	    "Graphics Ellipses Unflushed",
	    "Graphics Ellipses Unflushed Filled",
	    "Graphics Rectangles Flushed",
	    "Graphics Rectangles Unflushed",
	    "Graphics Rectangles Unflushed Filled",
	    "Graphics Polygons Flushed",
	    "Graphics Polygons Unflushed",
	    "Graphics Polygons Unflushed Filled",
	};
	EXPECT_NE(std::search(names.begin(), names.end(), graphics.begin(), graphics.end()),
	          names.end());
	ResultsWin* results = fWin->ResultsWindow();
	results->Lock();
	for (int32 i = 0; i < results->List()->CountItems(); i++) {
		ResultItem* row = dynamic_cast<ResultItem*>(results->List()->ItemAt(i));
		if (strncmp(row->Name(), "Graphics", 8) == 0) {
			EXPECT_GT(row->RateAt(0), 0) << row->Name();
		}
	}
	results->Unlock();
	apptest::Screenshot("graphics-results");
}
