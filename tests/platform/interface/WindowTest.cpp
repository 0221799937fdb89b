// Windows on the interface thread: delivery of messages from other threads,
// the window lock, and the view tree.
#include "InterfaceSupport.h"

#include <atomic>
#include <thread>

#include <Messenger.h>
#include <OS.h>
#include <View.h>
#include <Window.h>

namespace {

const uint32 kMsgNumbered = 'numb';

// Records the numbers of the messages it handles and the threads they came on.
class NumberingWindow : public BWindow
{
public:
	NumberingWindow()
	    : BWindow(BRect(100, 100, 299, 199), "Recording", B_TITLED_WINDOW_LOOK,
	              B_NORMAL_WINDOW_FEEL, 0),
	      outOfOrder(0), wrongThread(0), handled(0), mainThread(std::this_thread::get_id())
	{
	}

	void MessageReceived(BMessage* message) override
	{
		if (message->what != kMsgNumbered) {
			BWindow::MessageReceived(message);
			return;
		}
		int32 number = -1;
		message->FindInt32("n", &number);
		if (number != handled)
			outOfOrder++;
		if (std::this_thread::get_id() != mainThread)
			wrongThread++;
		if (lockHeld != nullptr && lockHeld->load())
			handledWhileLocked = true;
		handledAt = system_time();
		handled++;
	}

	std::atomic<int32> outOfOrder;
	std::atomic<int32> wrongThread;
	std::atomic<int32> handled;
	std::atomic<bool>* lockHeld = nullptr;
	std::atomic<bool> handledWhileLocked{false};
	std::atomic<bigtime_t> handledAt{0};
	std::thread::id mainThread;
};


BView*
MakeView(const char* name, BRect frame, uint32 mode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
         uint32 flags = B_WILL_DRAW)
{
	return new BView(frame, name, mode, flags);
}

} // namespace


TEST(WindowTest, BurstFromAnotherThreadArrivesCompleteInOrderOnTheInterfaceThread)
{
	REQUIRE_DISPLAY();
	NumberingWindow* window = new NumberingWindow;
	window->Run();
	const int32 kCount = 10000;

	std::thread sender([window] {
		BMessenger messenger(window);
		for (int32 i = 0; i < kCount; i++) {
			BMessage message(kMsgNumbered);
			message.AddInt32("n", i);
			messenger.SendMessage(&message);
		}
	});
	bool done =
	    platform_ui_run_until([window] { return window->handled.load() == kCount; }, 30000000);
	sender.join();

	EXPECT_TRUE(done);
	EXPECT_EQ(kCount, window->handled.load());
	EXPECT_EQ(0, window->outOfOrder.load());
	EXPECT_EQ(0, window->wrongThread.load());
	QuitWindow(window);
}


TEST(WindowTest, LockHeldByAnotherThreadKeepsMessagesWaiting)
{
	REQUIRE_DISPLAY();
	NumberingWindow* window = new NumberingWindow;
	window->Run();
	std::atomic<bool> lockHeld(false);
	std::atomic<bigtime_t> unlockedAt(0);
	window->lockHeld = &lockHeld;

	std::thread worker([&] {
		ASSERT_TRUE(window->Lock());
		EXPECT_TRUE(window->IsLocked());
		lockHeld = true;
		BMessage message(kMsgNumbered);
		message.AddInt32("n", 0);
		window->PostMessage(&message);
		// Time for the interface thread to try (and fail) to dispatch.
		snooze(300000);
		lockHeld = false;
		unlockedAt = system_time();
		window->Unlock();
		EXPECT_FALSE(window->IsLocked());
	});
	bool done = platform_ui_run_until([&] { return window->handled.load() == 1; }, 10000000);
	worker.join();

	EXPECT_TRUE(done);
	EXPECT_FALSE(window->handledWhileLocked.load());
	EXPECT_GE(window->handledAt.load(), unlockedAt.load());
	QuitWindow(window);
}


TEST(WindowTest, QuitFromAnotherThreadDeletesTheWindowOnTheInterfaceThread)
{
	REQUIRE_DISPLAY();
	NumberingWindow* window = new NumberingWindow;
	window->Run();
	window->Show();
	platform_ui_run_for(100000);
	BMessenger messenger(window);
	int32 before = TestApp()->CountWindows();

	std::atomic<bool> quit(false);
	std::thread worker([&] {
		QuitWindow(window);
		quit = true;
	});
	EXPECT_TRUE(platform_ui_run_until([&] { return quit.load(); }, 5000000));
	worker.join();

	EXPECT_FALSE(messenger.IsValid());
	EXPECT_EQ(before - 1, TestApp()->CountWindows());
}


TEST(WindowTest, ViewTreeKeepsNamesParentsAndWindow)
{
	REQUIRE_DISPLAY();
	BWindow* window = new BWindow(BRect(50, 50, 249, 199), "QuickstepWin", B_TITLED_WINDOW, 0);
	BView* background = MakeView("bgview", BRect(0, 0, 199, 149), B_FOLLOW_ALL_SIDES);
	BView* box = MakeView("cpubox", BRect(10, 10, 109, 109));
	BView* check = MakeView("cpugraphics", BRect(5, 20, 94, 34));
	box->AddChild(check);
	background->AddChild(box);
	window->AddChild(background);
	window->Lock();

	EXPECT_EQ(check, window->FindView("cpugraphics"));
	EXPECT_EQ(nullptr, window->FindView("nothing"));
	EXPECT_EQ(box, check->Parent());
	EXPECT_EQ(background, box->Parent());
	EXPECT_EQ(nullptr, background->Parent());
	EXPECT_EQ(window, check->Window());
	EXPECT_EQ(background, window->ChildAt(0));
	EXPECT_EQ(check, box->ChildAt(0));

	// Screen coordinates add the frames of every parent and the window's.
	BPoint screen = check->ConvertToScreen(BPoint(0, 0));
	EXPECT_EQ(BPoint(50 + 10 + 5, 50 + 10 + 20), screen);
	EXPECT_EQ(BPoint(0, 0), check->ConvertFromScreen(screen));

	// Taken out, the box and its child leave the window together.
	EXPECT_TRUE(box->RemoveSelf());
	EXPECT_EQ(nullptr, box->Window());
	EXPECT_EQ(nullptr, check->Window());
	EXPECT_EQ(nullptr, check->Looper());
	EXPECT_EQ(nullptr, window->FindView("cpugraphics"));
	EXPECT_EQ(box, check->Parent());
	EXPECT_EQ(0, background->CountChildren());
	background->AddChild(box);
	EXPECT_EQ(window, check->Window());
	window->Quit();
}


namespace {

class SizeView : public BView
{
public:
	SizeView(BRect frame, const char* name, uint32 mode)
	    : BView(frame, name, mode, B_WILL_DRAW | B_FRAME_EVENTS)
	{
	}

	void FrameResized(float width, float height) override
	{
		resized++;
		lastSize = BPoint(width, height);
	}

	int32 resized = 0;
	BPoint lastSize;
};

} // namespace


TEST(WindowTest, ViewsFollowTheWindowsSizeByTheirResizingModes)
{
	REQUIRE_DISPLAY();
	BWindow* window = new BWindow(BRect(50, 50, 249, 149), "Sizes", B_TITLED_WINDOW, 0);
	SizeView* all = new SizeView(BRect(0, 0, 199, 99), "all", B_FOLLOW_ALL_SIDES);
	BView* right = MakeView("right", BRect(150, 10, 189, 29), B_FOLLOW_RIGHT | B_FOLLOW_TOP);
	BView* bottom =
	    MakeView("bottom", BRect(10, 70, 189, 89), B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM);
	BView* fixed = MakeView("fixed", BRect(10, 10, 49, 29));
	all->AddChild(right);
	all->AddChild(bottom);
	all->AddChild(fixed);
	window->AddChild(all);
	window->Lock();

	window->ResizeBy(40, 20);

	EXPECT_EQ(BRect(0, 0, 239, 119), window->Bounds());
	EXPECT_EQ(BRect(0, 0, 239, 119), all->Frame());
	EXPECT_EQ(1, all->resized);
	EXPECT_EQ(BPoint(239, 119), all->lastSize);
	EXPECT_EQ(BRect(190, 10, 229, 29), right->Frame());
	EXPECT_EQ(BRect(10, 90, 229, 109), bottom->Frame());
	EXPECT_EQ(BRect(10, 10, 49, 29), fixed->Frame());
	window->Quit();
}


TEST(WindowTest, MessagesAViewLeavesGoOnToItsParentsAndTheWindow)
{
	REQUIRE_DISPLAY();
	NumberingWindow* window = new NumberingWindow;
	BView* background = MakeView("bgview", BRect(0, 0, 199, 99), B_FOLLOW_ALL_SIDES);
	BView* inner = MakeView("inner", BRect(10, 10, 49, 29));
	background->AddChild(inner);
	window->AddChild(background);
	window->Run();

	BMessage message(kMsgNumbered);
	message.AddInt32("n", 0);
	EXPECT_EQ(B_OK, BMessenger(inner).SendMessage(&message));
	EXPECT_TRUE(platform_ui_run_until([window] { return window->handled.load() == 1; }, 5000000));

	// Once out of the window the view is no target any more.
	window->Lock();
	inner->RemoveSelf();
	EXPECT_EQ(B_BAD_HANDLER, BMessenger(inner).SendMessage(&message));
	delete inner;
	window->Quit();
}
