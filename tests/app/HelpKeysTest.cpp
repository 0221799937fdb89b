// The shipped help file against the windows the program builds: every view a
// user can point at leads to an entry (its own or a parent's, as Shift+F1
// finds it), and every key of the file is one that a view produces.

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <View.h>
#include <PlatformTest.h>
#include <Window.h>

#include "app/AppTestSupport.h"
#include "app/QuickstepWin.h"
#include "engine/GraphicsWin.h"
#include "help/HelpFile.h"
#include "help/HelpWindow.h"
#include "results/CompareWin.h"
#include "lib/LibAboutWindow.h"
#include "results/ResultsWin.h"
#include "sysinfo/GetSysDeviceWin.h"
#include "sysinfo/LibDeviceInfo.h"
#include "sysinfo/AboutSysWindow.h"

namespace {

const char* const kShipped = QS_SOURCE_DIR "/data/QStp.help";

// The most processor columns the help names ("16 CPU").
const int kMostCpus = 16;

struct WindowBuilder {
	const char* what;
	std::function<BWindow*()> build;
	// Quits the window and whatever it made.
	std::function<void(BWindow*)> close;
};


void
QuitWindow(BWindow* window)
{
	window->Lock();
	window->Quit();
}


// Add a row here for each window the program builds.
const std::vector<WindowBuilder>&
Builders()
{
	static const std::vector<WindowBuilder> builders = {
	    {"main", [] { return new QuickstepWin(false); },
	     [](BWindow* window) { apptest::CloseMainWindow(static_cast<QuickstepWin*>(window)); }},
	    {"results", [] { return new ResultsWin(kMostCpus); }, QuitWindow},
	    {"System", [] { return new AboutSysWindow(nullptr); }, QuitWindow},
	    {"About", [] { return new LibAboutWindow(nullptr, "Quickstep", "15 Feb 1999"); },
	     QuitWindow},
	    {"help", [] { return new HelpWindow("QStp", nullptr); }, QuitWindow},
	    {"graphics", [] { return new GraphicsWin; }, QuitWindow},
	    // With its "Save" button, as "-scmp" makes it.
	    {"comparison", [] { return new CompareWin(nullptr, true); }, QuitWindow},
	    // A bridge of an unknown vendor and unknown displays: every kind of box.
	    {"unknown devices",
	     [] {
		     platform_set_root(QS_FIXTURES_DIR "/pci-catalog-unknown");
		     LibDeviceInfo catalogue;
		     platform_set_root(nullptr);
		     return new GetSysDeviceWin(catalogue, nullptr);
	     },
	     QuitWindow},
	};
	return builders;
}


// The key LibWindow::DispatchMessage builds for view: the window's name, then
// the view and each of its parents.
std::string
ContextKey(BView* view)
{
	std::string key = view->Window()->Name();
	for (BView* part = view; part != nullptr; part = part->Parent())
		key += std::string("/") + part->Name();
	return key;
}


void
CollectViews(BView* view, std::vector<BView*>& views)
{
	views.push_back(view);
	for (int32 i = 0; i < view->CountChildren(); i++)
		CollectViews(view->ChildAt(i), views);
}

} // namespace


TEST(HelpKeysTest, EveryViewLeadsToAnEntryAndEveryKeyToAView)
{
	QS_REQUIRE_DISPLAY();
	apptest::SharedApp();
	LinkList<HelpRow> rows;
	ASSERT_EQ(HelpFile::ReadContents(kShipped, rows), B_OK);
	std::set<std::string> fileKeys;
	for (HelpRow* row = rows.First(); row != nullptr; row = rows.Next()) {
		for (LibString* view = row->views.First(); view != nullptr; view = row->views.Next())
			fileKeys.insert(view->String());
	}

	std::set<std::string> windows, produced;
	for (const WindowBuilder& builder : Builders()) {
		BWindow* window = builder.build();
		window->Lock();
		windows.insert(window->Name());
		std::vector<BView*> views;
		for (int32 i = 0; i < window->CountChildren(); i++)
			CollectViews(window->ChildAt(i), views);
		EXPECT_FALSE(views.empty()) << builder.what;
		for (BView* view : views) {
			std::string key = ContextKey(view);
			produced.insert(key);
			bool resolved = false;
			for (BView* part = view; part != nullptr && !resolved; part = part->Parent())
				resolved = fileKeys.count(ContextKey(part)) != 0;
			EXPECT_TRUE(resolved) << builder.what << " window: no entry for " << key;
		}
		window->Unlock();
		builder.close(window);
	}

	for (const std::string& key : fileKeys) {
		std::string window = key.substr(0, key.find('/'));
		EXPECT_EQ(windows.count(window), 1u)
		    << "key of a window the program does not make: " << key;
		EXPECT_EQ(produced.count(key), 1u) << "key that no view produces: " << key;
	}
}
