// The support library's window: numbered positions, fitting into the screen,
// and Shift+F1 help requests.
#include "InterfaceSupport.h"

#include <cmath>
#include <cstring>

#include <Box.h>
#include <Button.h>
#include <CheckBox.h>
#include <PlatformTest.h>
#include <Screen.h>
#include <View.h>

#include "lib/LibWindow.h"

namespace {

// Restores the real screen when a test ends.
class ScreenSubstitute
{
public:
	explicit ScreenSubstitute(BRect frame) { platform_set_screen(&frame, B_RGB32); }
	~ScreenSubstitute() { platform_set_screen(nullptr, B_NO_COLOR_SPACE); }
};

bool
Inside(BRect inner, BRect outer)
{
	return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
	       inner.bottom <= outer.bottom;
}

} // namespace


TEST(LibWindowTest, PositionsFollowTheKeypad)
{
	BRect area(0, 0, 1023, 767);
	BRect frame(500, 500, 699, 599);
	const float left = kLibScreenMargin;
	const float top = kLibScreenMargin + kLibTitleAllowance;
	const float right = 1023 - kLibScreenMargin - 199;
	const float bottom = 767 - kLibScreenMargin - 99;
	const float centreX = left + std::floor((1023 - 2 * kLibScreenMargin - 199) / 2);
	const float middleY = top + std::floor((767 - top - kLibScreenMargin - 99) / 2);
	const BPoint expected[10] = {frame.LeftTop(),         BPoint(left, bottom),
	                             BPoint(centreX, bottom), BPoint(right, bottom),
	                             BPoint(left, middleY),   BPoint(centreX, middleY),
	                             BPoint(right, middleY),  BPoint(left, top),
	                             BPoint(centreX, top),    BPoint(right, top)};
	for (int32 position = 0; position <= 9; position++) {
		BRect placed = LibPositionRect(frame, position, area);
		EXPECT_EQ(expected[position], placed.LeftTop()) << position;
		EXPECT_EQ(199, placed.Width()) << position;
		EXPECT_EQ(99, placed.Height()) << position;
	}
	EXPECT_EQ(frame, LibPositionRect(frame, 10, area));
	EXPECT_EQ(frame, LibPositionRect(frame, -1, area));

	// A reference window's frame is the area.
	BRect reference(100, 100, 499, 399);
	EXPECT_EQ(BPoint(100 + kLibScreenMargin, 100 + top),
	          LibPositionRect(frame, kLibPositionTopLeft, reference).LeftTop());
}


TEST(LibWindowTest, FitInScreenMovesAndCutsToTheScreen)
{
	ScreenSubstitute screen(BRect(0, 0, 799, 599));
	const float top = kLibTitleAllowance;

	BRect inside(100, 100, 299, 199);
	BRect unchanged = inside;
	LibFitInScreen(inside);
	EXPECT_EQ(unchanged, inside);

	BRect offRightBottom(700, 550, 899, 649);
	LibFitInScreen(offRightBottom);
	EXPECT_EQ(BRect(600, 500, 799, 599), offRightBottom);

	BRect offLeftTop(-50, -20, 149, 79);
	LibFitInScreen(offLeftTop);
	EXPECT_EQ(BRect(0, top, 199, top + 99), offLeftTop);

	BRect larger(-100, 10, 1299, 2009);
	LibFitInScreen(larger);
	EXPECT_EQ(BRect(0, top, 799, 599), larger);
}


TEST(LibWindowTest, EveryPositionKeepsRealWindowsInsideTheScreen)
{
	REQUIRE_DISPLAY();
	BScreen screen;
	ASSERT_TRUE(screen.IsValid());
	BRect area = screen.Frame();
	area.top += kLibTitleAllowance;

	LibWindow* small = new LibWindow(BRect(0, 0, 199, 99), "Small", B_TITLED_WINDOW_LOOK,
	                                 B_NORMAL_WINDOW_FEEL, B_NOT_RESIZABLE);
	LibWindow* reference = new LibWindow(BRect(300, 200, 699, 499), "Reference",
	                                     B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0);
	for (int32 position = 1; position <= 9; position++) {
		small->SetPosition(position);
		EXPECT_TRUE(Inside(small->Frame(), area)) << position;
		EXPECT_EQ(199, small->Frame().Width()) << position;
		small->SetPosition(position, reference);
		EXPECT_TRUE(Inside(small->Frame(), reference->Frame())) << position;
	}
	small->SetPosition(kLibPositionCentre);
	EXPECT_NEAR((area.left + area.right) / 2, (small->Frame().left + small->Frame().right) / 2, 1);

	BRect huge(0, 0, screen.Frame().Width() + 300, screen.Frame().Height() + 200);
	LibWindow* large = new LibWindow(huge, "Large", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0);
	for (int32 position = 1; position <= 9; position++) {
		large->SetPosition(position);
		EXPECT_TRUE(Inside(large->Frame(), area)) << position;
	}
	// Once shown too.
	large->Show();
	platform_ui_run_for(100000);
	large->SetPosition(kLibPositionBottomRight);
	EXPECT_TRUE(Inside(large->Frame(), area));

	QuitWindow(small);
	QuitWindow(reference);
	QuitWindow(large);
}


namespace {

class HelpWindow : public LibWindow
{
public:
	HelpWindow()
	    : LibWindow(BRect(200, 200, 399, 349), "QuickstepWin", B_TITLED_WINDOW_LOOK,
	                B_NORMAL_WINDOW_FEEL, B_NOT_RESIZABLE)
	{
	}

	bool InsertHelpRequest(BView* view, BMessage* message) override
	{
		if (strcmp(view->Name(), "disio") != 0)
			return false;
		message->AddString("extra", "disk");
		return true;
	}
};


std::vector<std::string>
ViewChain(const BMessage& message)
{
	std::vector<std::string> chain;
	const char* name = nullptr;
	for (int32 i = 0; message.FindString("view", i, &name) == B_OK; i++)
		chain.push_back(name);
	return chain;
}


std::vector<BMessage>
HelpRequests()
{
	std::vector<BMessage> requests;
	for (const BMessage& message : TestApp()->Received()) {
		if (message.what == kLibHelpRequest)
			requests.push_back(message);
	}
	return requests;
}

} // namespace


TEST(LibWindowTest, ShiftF1OverAViewPostsItsNameAndParentsToTheApplication)
{
	REQUIRE_XDOTOOL();
	TestApp()->Forget();
	HelpWindow* window = new HelpWindow;
	BView* background = new BView(window->Bounds(), "bgview", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
	BBox* box = new BBox(BRect(10, 10, 189, 69), "cpubox");
	box->SetLabel("Architecture");
	BCheckBox* check =
	    new BCheckBox(BRect(10, 20, 99, 39), "cpugraphics", "Graphics", new BMessage(2000));
	BView* disk = new BView(BRect(10, 80, 189, 109), "disio", B_FOLLOW_NONE, B_WILL_DRAW);
	box->AddChild(check);
	background->AddChild(box);
	background->AddChild(disk);
	window->AddChild(background);
	window->Show();
	platform_ui_run_for(300000);

	// F1 alone, and Shift with another key, are ordinary keys.
	ASSERT_TRUE(MovePointerTo(check->ConvertToScreen(BPoint(20, 10))));
	ASSERT_TRUE(Xdotool("key F1 shift+F2"));
	ASSERT_TRUE(Xdotool("key shift+F1"));
	ASSERT_TRUE(platform_ui_run_until([] { return HelpRequests().size() >= 1; }, 5000000));
	platform_ui_run_for(200000);
	std::vector<BMessage> requests = HelpRequests();
	ASSERT_EQ(1u, requests.size());
	const char* windowName = nullptr;
	EXPECT_EQ(B_OK, requests[0].FindString("window", &windowName));
	EXPECT_STREQ("QuickstepWin", windowName);
	EXPECT_EQ((std::vector<std::string>{"cpugraphics", "cpubox", "bgview"}),
	          ViewChain(requests[0]));
	EXPECT_FALSE(requests[0].HasMessage("inserts"));

	// Over a view whose window adds to the request.
	ASSERT_TRUE(MovePointerTo(disk->ConvertToScreen(BPoint(5, 5))));
	ASSERT_TRUE(Xdotool("key shift+F1"));
	ASSERT_TRUE(platform_ui_run_until([] { return HelpRequests().size() >= 2; }, 5000000));
	requests = HelpRequests();
	EXPECT_EQ((std::vector<std::string>{"disio", "bgview"}), ViewChain(requests[1]));
	BMessage inserts;
	ASSERT_EQ(B_OK, requests[1].FindMessage("inserts", &inserts));
	const char* extra = nullptr;
	EXPECT_EQ(B_OK, inserts.FindString("extra", &extra));
	EXPECT_STREQ("disk", extra);

	// With the pointer outside the window nothing is asked.
	ASSERT_TRUE(MovePointerTo(BPoint(5, 5)));
	platform_ui_run_for(100000);
	window->Activate();
	ASSERT_TRUE(Xdotool("key shift+F1"));
	platform_ui_run_for(300000);
	EXPECT_EQ(2u, HelpRequests().size());

	QuitWindow(window);
}


TEST(LibWindowTest, PopShowsAHiddenWindowOnceAndShowsNestAsHides)
{
	REQUIRE_DISPLAY();
	LibWindow* window = new LibWindow(BRect(100, 100, 299, 199), "Popped", B_TITLED_WINDOW_LOOK,
	                                  B_NORMAL_WINDOW_FEEL, 0);
	window->Run();
	EXPECT_TRUE(window->IsHidden());
	window->Pop();
	EXPECT_FALSE(window->IsHidden());
	// A second Pop must not show it "twice": one Hide hides it again.
	window->Pop();
	window->Hide();
	EXPECT_TRUE(window->IsHidden());
	window->Hide();
	window->Show();
	EXPECT_TRUE(window->IsHidden()) << "two hides need two shows";
	window->Show();
	EXPECT_FALSE(window->IsHidden());
	platform_ui_run_for(100000);
	QuitWindow(window);
}


// Wherever a window of the program is placed, it opens beside the main window
// when the screen has room, and inside the screen.
TEST(LibWindowTest, OtherWindowsOpenBesideTheMainWindow)
{
	REQUIRE_DISPLAY();
	ScreenSubstitute screen(BRect(0, 0, 1279, 1023));
	LibWindow* main = new LibWindow(BRect(50, 50, 295, 285), "Main", B_TITLED_WINDOW_LOOK,
	                                B_NORMAL_WINDOW_FEEL, 0);
	LibWindow::SetMainWindow(main);
	struct Size {
		float width;
		float height;
	};
	for (Size size : {Size{419, 300}, Size{220, 265}, Size{1200, 200}}) {
		LibWindow* other = new LibWindow(BRect(0, 0, size.width, size.height), "Other",
		                                 B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0);
		for (int32 position = 1; position <= 9; position++) {
			SCOPED_TRACE(testing::Message() << size.width << " wide, position " << position);
			other->SetPosition(position);
			BRect placed = other->Frame();
			BRect mainFrame = main->Frame();
			bool overlap = placed.left <= mainFrame.right + kLibScreenMargin &&
			               mainFrame.left - kLibScreenMargin <= placed.right &&
			               placed.top - kLibTitleAllowance <= mainFrame.bottom &&
			               mainFrame.top - kLibTitleAllowance <= placed.bottom;
			EXPECT_FALSE(overlap) << placed.left << "," << placed.top;
			EXPECT_TRUE(Inside(placed, BRect(0, kLibTitleAllowance, 1279, 1023)));
		}
		QuitWindow(other);
	}
	// The main window itself goes where it is told.
	main->SetPosition(kLibPositionTopLeft);
	EXPECT_EQ(BPoint(kLibScreenMargin, kLibScreenMargin + kLibTitleAllowance),
	          main->Frame().LeftTop());
	QuitWindow(main);
	EXPECT_EQ(LibWindow::MainWindow(), nullptr);
}


namespace {

// Counts the closing requests it gets; quits on them like any window.
class ClosingWindow : public LibWindow
{
public:
	ClosingWindow(uint32 flags)
	    : LibWindow(BRect(300, 300, 499, 399), "Closing", B_TITLED_WINDOW_LOOK,
	                B_NORMAL_WINDOW_FEEL, flags)
	{
	}

	bool QuitRequested() override
	{
		fQuitRequests++;
		return false;
	}

	void MessageReceived(BMessage* message) override
	{
		if (message->what == 'cncl')
			fCancels++;
		LibWindow::MessageReceived(message);
	}

	std::atomic<int32> fQuitRequests{0};
	std::atomic<int32> fCancels{0};
};

} // namespace


// Escape and the window manager's close: a closable window is asked to quit;
// one that is not takes its "cancel" button; without one nothing happens.
TEST(LibWindowTest, EscapeAndWindowManagerCloseTakeTheWindowsWayOut)
{
	REQUIRE_XDOTOOL();
	struct Case {
		uint32 flags;
		bool cancelButton;
		int32 quits;
		int32 cancels;
	};
	float pointer = 440;
	for (Case test : {Case{0, false, 2, 0}, Case{B_NOT_CLOSABLE, true, 0, 2},
	                  Case{B_NOT_CLOSABLE, false, 0, 0}}) {
		SCOPED_TRACE(testing::Message() << test.flags << " " << test.cancelButton);
		ClosingWindow* window = new ClosingWindow(test.flags);
		if (test.cancelButton) {
			window->AddChild(
			    new BButton(BRect(10, 10, 90, 40), "cancel", "Cancel", new BMessage('cncl')));
		}
		window->Run();
		window->Show();
		platform_ui_run_until([&] { return !window->IsHidden(); }, 2000000);
		platform_ui_run_for(200000);
		EXPECT_TRUE(platform_ui_close_window(window));
		// A new place each time: a move to where the pointer is never ends.
		ASSERT_TRUE(MovePointerTo(BPoint(pointer, 380)));
		pointer += 10;
		EXPECT_TRUE(Xdotool("key Escape"));
		platform_ui_run_until(
		    [&] { return window->fQuitRequests + window->fCancels >= test.quits + test.cancels; },
		    2000000);
		platform_ui_run_for(200000);
		EXPECT_EQ(window->fQuitRequests, test.quits);
		EXPECT_EQ(window->fCancels, test.cancels);
		QuitWindow(window);
	}
}
