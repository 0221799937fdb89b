#include "help/HelpWindow.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include <gtest/gtest.h>

#include <AppDefs.h>
#include <AppFileInfo.h>
#include <Autolock.h>
#include <File.h>
#include <Message.h>
#include <OutlineListView.h>
#include <Path.h>
#include <PlatformTest.h>
#include <Resources.h>
#include <Window.h>

#include "app/AppTestSupport.h"
#include "help/HelpFile.h"
#include "help/HelpManager.h"
#include "help/HelpTextView.h"
#include "help/MetaStringItem.h"
#include "help/xmlTag.h"
#include "lib/LibWindow.h"
#include "platform/TempDirectory.h"

using apptest::RunUntil;

namespace {

const char* const kShipped = QS_SOURCE_DIR "/data/QStp.help";

// Rows nested three deep, a row reached from two keys, a key given twice
// (the first row has it), a row whose page is missing and one without page.
const char* const kRows = "<CONTENTS>\n"
                          "<T PAGE=\"one\" VIEW=\"W/a/root\" VIEW=\"W/b/root\">One\n"
                          "  <T PAGE=\"two\" VIEW=\"W/c/root\">Two\n"
                          "    <T PAGE=\"three\" VIEW=\"W/deep/root\">Three</T>\n"
                          "  </T>\n"
                          "</T>\n"
                          "<T PAGE=\"four\" VIEW=\"W/a/root\">Four</T>\n"
                          "<T PAGE=\"missing\">Gone</T>\n"
                          "<T>No page</T>\n"
                          "</CONTENTS>\n"
                          "<PAGE NAME=\"one\">Page <B>one</B>.</PAGE>\n"
                          "<PAGE NAME=\"two\">Page two.</PAGE>\n"
                          "<PAGE NAME=\"three\">Page three. <P/>\n- an item</PAGE>\n"
                          "<PAGE NAME=\"four\">Four.</PAGE>\n";


class HelpWindowTest : public testing::Test
{
protected:
	void SetUp() override
	{
		QS_REQUIRE_DISPLAY();
		apptest::SharedApp();
		ASSERT_TRUE(fTemp.Valid());
		fTemp.UseAsDataHome();
		std::filesystem::create_directories(fTemp.Path("work"));
		std::filesystem::create_directories(fTemp.Path("tmp"));
		char* old = getcwd(nullptr, 0);
		fOldDirectory = old != nullptr ? old : "/";
		free(old);
		ASSERT_EQ(chdir(fTemp.Path("work").c_str()), 0);
		platform_set_directory(B_COMMON_TEMP_DIRECTORY, fTemp.Path("tmp").c_str());
		ASSERT_EQ(get_app_path(&fSelf), B_OK);
	}

	void TearDown() override
	{
		if (fWindow != nullptr) {
			fWindow->Lock();
			fWindow->Quit();
		}
		if (fSelf.Path() != nullptr) {
			BFile file(fSelf.Path(), B_READ_ONLY);
			BResources resources(&file);
			resources.RemoveResource(HelpFile::kResourceType, HelpFile::kResourceId);
		}
		platform_set_directory(B_COMMON_TEMP_DIRECTORY, nullptr);
		if (!fOldDirectory.empty()) {
			EXPECT_EQ(chdir(fOldDirectory.c_str()), 0);
		}
	}

	static void Write(const std::string& path, const char* text)
	{
		ASSERT_TRUE(std::ofstream(path) << text);
	}

	// A help window on "QStp.help", and what it printed while reading.
	std::string Open()
	{
		if (fWindow != nullptr) {
			fWindow->Lock();
			fWindow->Quit();
		}
		testing::internal::CaptureStderr();
		fWindow = new HelpWindow("QStp", nullptr);
		std::string printed = testing::internal::GetCapturedStderr();
		fWindow->Run();
		fList = fWindow->ContentList();
		return printed;
	}

	std::string Selected()
	{
		BAutolock lock(fWindow);
		int32 index = fList->CurrentSelection();
		BStringItem* row = index >= 0 ? dynamic_cast<BStringItem*>(fList->ItemAt(index)) : nullptr;
		return row != nullptr ? row->Text() : "";
	}

	std::string PaneText()
	{
		BAutolock lock(fWindow);
		return fWindow->HelpPane()->Page().Text().String();
	}

	std::string FirstLabel()
	{
		BAutolock lock(fWindow);
		BStringItem* row = dynamic_cast<BStringItem*>(fList->FullListItemAt(0));
		return row != nullptr ? row->Text() : "";
	}

	TempDirectory fTemp;
	std::string fOldDirectory;
	BPath fSelf;
	HelpWindow* fWindow = nullptr;
	BOutlineListView* fList = nullptr;
};

} // namespace


// The working directory wins over the temporary directory, which wins over
// the copy stored in the executable; each miss is said on standard error.
TEST_F(HelpWindowTest, ContentsComeFromTheFirstHelpFileFound)
{
	std::string working = fTemp.Path("work/QStp.help");
	std::string temp = fTemp.Path("tmp/QStp.help");
	Write(working, "<CONTENTS><T PAGE=\"w\">Working</T></CONTENTS>");
	Write(temp, "<CONTENTS><T PAGE=\"t\">Temporary</T></CONTENTS>");
	std::string stored = fTemp.Path("stored.help");
	Write(stored, "<CONTENTS><T PAGE=\"s\">Stored</T><T>Second</T></CONTENTS>");
	ASSERT_EQ(HelpFile::Store(fSelf.Path(), stored.c_str()), B_OK);

	std::string notWorking = "Help not in working directory <" + working + ">\n";
	std::string notTemp = "Help not in tmp directory <" + temp + ">\n";
	EXPECT_EQ(Open(), "parser 1\n");
	EXPECT_EQ(FirstLabel(), "Working");
	EXPECT_STREQ(fWindow->HelpPath(), working.c_str());

	std::filesystem::remove(working);
	EXPECT_EQ(Open(), notWorking + "parser 1\n");
	EXPECT_EQ(FirstLabel(), "Temporary");

	// The stored copy is extracted to the temporary directory.
	std::filesystem::remove(temp);
	EXPECT_EQ(Open(), notWorking + notTemp + "parser 1\n");
	EXPECT_EQ(FirstLabel(), "Stored");
	EXPECT_EQ(fList->FullListCountItems(), 2);
	EXPECT_TRUE(std::filesystem::exists(temp));

	// Nothing stored: the copy that comes with the program, if any.
	std::filesystem::remove(temp);
	{
		BFile file(fSelf.Path(), B_READ_ONLY);
		BResources resources(&file);
		ASSERT_EQ(resources.RemoveResource(HelpFile::kResourceType, HelpFile::kResourceId), B_OK);
	}
	std::string printed = Open();
	std::string noAttrs = "HelpWindow::ReadInContents: No help in attrs\n";
	EXPECT_EQ(printed.substr(0, notWorking.size() + notTemp.size() + noAttrs.size()),
	          notWorking + notTemp + noAttrs);
	if (fWindow->HelpPath() == nullptr)
		EXPECT_EQ(fList->FullListCountItems(), 0);
	else
		EXPECT_GT(fList->FullListCountItems(), 10);
}


TEST_F(HelpWindowTest, KeysSelectTheirRowOpeningTheRowsAbove)
{
	Write(fTemp.Path("work/QStp.help"), kRows);
	Open();
	// Sub-rows start collapsed.
	EXPECT_EQ(fList->FullListCountItems(), 6);
	EXPECT_EQ(fList->CountItems(), 4);

	fWindow->HelpForInterface("W/deep/root");
	EXPECT_EQ(fList->CountItems(), 6);
	EXPECT_EQ(Selected(), "Three");
	ASSERT_TRUE(RunUntil([&] { return !PaneText().empty(); }));
	EXPECT_EQ(PaneText(), "Three\n\nPage three.\n\n- an item");

	// Both keys of a row lead to it; a key given twice leads to the first.
	fWindow->HelpForInterface("W/b/root");
	EXPECT_EQ(Selected(), "One");
	ASSERT_TRUE(RunUntil([&] { return PaneText() == "One\n\nPage one."; }));
	fWindow->HelpForInterface("W/c/root");
	EXPECT_EQ(Selected(), "Two");
	fWindow->HelpForInterface("W/a/root");
	EXPECT_EQ(Selected(), "One");

	testing::internal::CaptureStderr();
	fWindow->HelpForInterface("W/nothing/root");
	EXPECT_EQ(testing::internal::GetCapturedStderr(), "No help for W/nothing/root\n");
	EXPECT_EQ(Selected(), "One");
	EXPECT_TRUE(fWindow->HasHelpFor("W/deep/root"));
	EXPECT_FALSE(fWindow->HasHelpFor("W/root"));
}


TEST_F(HelpWindowTest, PagesShowByNameAndAnUnknownPageEmptiesThePane)
{
	Write(fTemp.Path("work/QStp.help"), kRows);
	Open();
	fWindow->HelpForContent("four");
	EXPECT_EQ(PaneText(), "Four\n\nFour.");
	fWindow->HelpForContent(nullptr);
	EXPECT_EQ(PaneText(), "Four\n\nFour.");
	fWindow->HelpForContent("missing");
	EXPECT_EQ(PaneText(), "");

	// Choosing rows: one whose page is missing empties the pane, one without
	// a page leaves it as it is.
	fWindow->HelpForContent("two");
	BAutolock lock(fWindow);
	int32 gone = -1, noPage = -1;
	for (int32 i = 0; i < fList->CountItems(); i++) {
		std::string label = dynamic_cast<BStringItem*>(fList->ItemAt(i))->Text();
		if (label == "Gone")
			gone = i;
		if (label == "No page")
			noPage = i;
	}
	fList->Select(noPage);
	RunUntil([] { return false; }, 0.2);
	EXPECT_EQ(PaneText(), "Two\n\nPage two.");
	fList->Select(gone);
	EXPECT_TRUE(RunUntil([&] { return PaneText().empty(); }));
}


TEST_F(HelpWindowTest, ThePageWrapsAgainWhenTheWindowGrowsAndClosingOnlyHides)
{
	Write(fTemp.Path("work/QStp.help"), kRows);
	Open();
	BAutolock lock(fWindow);
	EXPECT_STREQ(fWindow->Title(), "Help");
	xmlTag page;
	ASSERT_EQ(HelpFile::ReadPage(kShipped, "saving", page), B_OK);
	HelpTextView* pane = fWindow->HelpPane();
	pane->ShowTag(page, "Saving");
	size_t narrow = pane->Lines().size();
	float narrowHeight = pane->TextHeight();
	fWindow->Show();
	fWindow->ResizeTo(800, 500);
	RunUntil([] { return false; }, 0.2);
	EXPECT_LT(pane->Lines().size(), narrow);
	EXPECT_LT(pane->TextHeight(), narrowHeight);
	for (const HelpLine& line : pane->Lines()) {
		for (const HelpFragment& fragment : line.fragments) {
			BFont font = HelpTextView::FontFor(line.kind, fragment.style);
			EXPECT_LE(fragment.x + font.StringWidth(fragment.text.c_str()),
			          pane->Bounds().Width() - 2 * HelpTextView::kMargin + 2)
			    << fragment.text;
		}
	}

	// The close box hides the window while the program runs.
	fWindow->PostMessage(B_QUIT_REQUESTED);
	EXPECT_TRUE(RunUntil([&] { return fWindow->IsHidden(); }));
	fWindow->Pop();
	EXPECT_FALSE(fWindow->IsHidden());
}


namespace {

// A view that keeps the key codes it is handed.
class KeyView : public BView
{
public:
	KeyView(BRect frame) : BView(frame, "keys", B_FOLLOW_ALL_SIDES, B_WILL_DRAW) {}

	void KeyDown(const char* bytes, int32 numBytes) override
	{
		int32 key = 0;
		Window()->CurrentMessage()->FindInt32("key", &key);
		fKeys.push_back(key);
		BView::KeyDown(bytes, numBytes);
	}

	std::vector<int32> fKeys;
};

} // namespace


TEST_F(HelpWindowTest, ShiftF1OverACheckBoxOpensTheHelpAtItsEntry)
{
	std::filesystem::copy_file(kShipped, fTemp.Path("work/QStp.help"));
	QuickstepApp* app = apptest::SharedApp();
	HelpManager& help = app->Help();
	help.CloseWindow();
	app->ReadyToRun();
	QuickstepWin* main = app->MainWindow();
	ASSERT_TRUE(RunUntil([&] { return !main->IsHidden(); }));
	main->Lock();
	BView* strings = main->FindView("cpustring");
	BView* memory = main->FindView("cpumemory");
	main->Unlock();
	ASSERT_NE(strings, nullptr);

	// F1 alone and Shift with another key are ordinary keys.
	ASSERT_TRUE(apptest::PointAt(strings, BPoint(30, 8)));
	ASSERT_TRUE(apptest::RunCommand("xdotool key F1 shift+F2"));
	apptest::RunFor(0.3);
	EXPECT_EQ(help.Window(), nullptr);

	ASSERT_TRUE(apptest::RunCommand("xdotool key shift+F1"));
	ASSERT_TRUE(RunUntil([&] { return help.Window() != nullptr && !help.Window()->IsHidden(); }));
	fWindow = help.Window();
	fList = fWindow->ContentList();
	EXPECT_EQ(Selected(), "Strings");
	ASSERT_TRUE(RunUntil([&] { return PaneText().rfind("Strings\n\nStrings measures", 0) == 0; }))
	    << PaneText();
	// The rows above the entry were opened on the way.
	EXPECT_TRUE(fList->IsExpanded(
	    fList->FullListIndexOf(fList->Superitem(fList->ItemAt(fList->CurrentSelection())))));

	// Closed, it only hides; the next request brings the same window back.
	fWindow->PostMessage(B_QUIT_REQUESTED);
	ASSERT_TRUE(RunUntil([&] { return fWindow->IsHidden(); }));
	ASSERT_TRUE(apptest::PointAt(memory, BPoint(30, 8)));
	ASSERT_TRUE(apptest::RunCommand("xdotool key shift+F1"));
	ASSERT_TRUE(RunUntil([&] { return !fWindow->IsHidden(); }));
	EXPECT_EQ(help.Window(), fWindow);
	EXPECT_TRUE(RunUntil([&] { return Selected() == "Memory"; }));

	// A view without an entry of its own leads to its nearest parent's.
	BMessage request(kMsgHelpRequest);
	request.AddString("window", "HelpWindow");
	for (const char* view : {"_VSB_", "content_scroll", "view"})
		request.AddString("view", view);
	be_app->PostMessage(&request);
	EXPECT_TRUE(RunUntil([&] { return Selected() == "Using the help"; }));

	fWindow = nullptr;
	help.CloseWindow();
	EXPECT_EQ(help.Window(), nullptr);
	apptest::CloseMainWindow(main);
}


TEST_F(HelpWindowTest, ShiftF1WithNoViewUnderThePointerOnlyDispatchesTheKey)
{
	HelpManager& help = apptest::SharedApp()->Help();
	help.CloseWindow();
	ASSERT_TRUE(apptest::RunCommand("xdotool mousemove 2 2"));
	LibWindow* window = new LibWindow(BRect(600, 400, 799, 549), "KeyWindow", B_TITLED_WINDOW_LOOK,
	                                  B_NORMAL_WINDOW_FEEL, 0);
	KeyView* view = new KeyView(window->Bounds());
	window->Lock();
	window->AddChild(view);
	view->MakeFocus();
	window->Unlock();
	window->Show();
	apptest::RunFor(0.2);
	ASSERT_EQ(window->LastMouseMovedView(), nullptr);

	BMessage key(B_KEY_DOWN);
	key.AddInt32("key", B_F1_KEY);
	key.AddInt32("modifiers", B_SHIFT_KEY);
	key.AddInt32("raw_char", B_FUNCTION_KEY);
	key.AddString("bytes", "\x10");
	window->PostMessage(&key, view);
	EXPECT_TRUE(RunUntil([&] { return !view->fKeys.empty(); }));
	apptest::RunFor(0.2);
	EXPECT_EQ(view->fKeys, std::vector<int32>{B_F1_KEY});
	EXPECT_EQ(help.Window(), nullptr);
	window->Lock();
	window->Quit();
}


// The shipped help as a reader meets it. Screenshots are kept under
// build/screenshots for people to look at: a page at the window's first size,
// and another in a window made larger.
TEST_F(HelpWindowTest, ShippedPagesReadWell)
{
	std::filesystem::copy_file(kShipped, fTemp.Path("work/QStp.help"));
	Open();
	fWindow->MoveTo(40, 60);
	fWindow->Show();

	// The contents list keeps its width when the window grows: each label
	// must fit it, indentation included.
	fWindow->Lock();
	ASSERT_GT(fList->FullListCountItems(), 10);
	float width = fList->Bounds().Width() + 1;
	for (int32 i = 0; i < fList->FullListCountItems(); i++) {
		BStringItem* row = dynamic_cast<BStringItem*>(fList->FullListItemAt(i));
		float indent = BOutlineListView::kLatchWidth + 4 + 10.0f * row->OutlineLevel();
		EXPECT_LE(indent + fList->StringWidth(row->Text()), width) << row->Text();
	}
	fWindow->Unlock();

	fWindow->HelpForInterface("QuickstepWin/cpubox/bgview");
	ASSERT_TRUE(RunUntil([&] { return PaneText().rfind("Choosing tests\n\n", 0) == 0; }));
	EXPECT_TRUE(apptest::Screenshot("help-choosing-tests"));

	// The page is longer than the pane: the mouse wheel scrolls it.
	HelpTextView* pane = fWindow->HelpPane();
	auto top = [&] {
		BAutolock lock(fWindow);
		return pane->Bounds().top;
	};
	ASSERT_TRUE(apptest::PointAt(pane, BPoint(60, 60)));
	ASSERT_TRUE(apptest::RunCommand("xdotool click 5 click 5"));
	EXPECT_TRUE(RunUntil([&] { return top() > 0; }));
	ASSERT_TRUE(apptest::RunCommand("xdotool click 4 click 4 click 4"));
	EXPECT_TRUE(RunUntil([&] { return top() == 0; }));

	fWindow->ResizeTo(720, 560);
	fWindow->Lock();
	for (int32 i = 0; i < fList->CountItems(); i++) {
		if (strcmp(dynamic_cast<BStringItem*>(fList->ItemAt(i))->Text(), "Running the tests") == 0)
			fList->Select(i);
	}
	fWindow->Unlock();
	ASSERT_TRUE(RunUntil([&] { return PaneText().rfind("Running the tests\n\n1. Tick", 0) == 0; }));
	EXPECT_TRUE(apptest::Screenshot("help-running"));
}
