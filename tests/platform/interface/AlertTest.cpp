// Alerts answer the index of the button chosen, from any thread.
#include "InterfaceSupport.h"

#include <atomic>
#include <thread>

#include <unistd.h>

#include <Alert.h>
#include <Button.h>
#include <Messenger.h>
#include <OS.h>
#include <TextView.h>
#include <Window.h>

namespace {

const uint32 kMsgTick = 'tick';

class CountingWindow : public BWindow
{
public:
	CountingWindow()
	    : BWindow(BRect(400, 100, 499, 149), "Counting", B_TITLED_WINDOW, 0), ticks(0),
	      ticksInsideAlert(0)
	{
	}

	void MessageReceived(BMessage* message) override
	{
		if (message->what != kMsgTick) {
			BWindow::MessageReceived(message);
			return;
		}
		ticks++;
		if (alertOpen)
			ticksInsideAlert++;
	}

	std::atomic<int32> ticks;
	std::atomic<int32> ticksInsideAlert;
	std::atomic<bool> alertOpen{false};
};

} // namespace


TEST(AlertTest, GoFromAWorkerAnswersTheButtonOfTheShortcutPressed)
{
	REQUIRE_XDOTOOL();
	std::atomic<int32> answer(-2);
	std::thread worker([&] {
		BAlert* alert =
		    new BAlert("QuestionFromWorker",
		               "Not all the tests were run.  Do you still wish to save the results?", "No",
		               "Yes", nullptr, B_WIDTH_AS_USUAL, B_INFO_ALERT);
		alert->SetShortcut(0, 'n');
		alert->SetShortcut(1, 'y');
		answer = alert->Go();
	});
	// The helper finds the alert on screen, points at it and answers "No"
	// by its shortcut, while this thread runs the interface loop.
	// (xdotool's own status is not looked at: the alert may be gone before
	// it has finished with the window.)
	// A key sent while the new window is still being set up can be lost, so
	// the helper presses again until the alert answers.
	std::thread presser([&] {
		for (int32 tries = 0; tries < 50 && answer.load() == -2; tries++) {
			Xdotool("search --onlyvisible --name QuestionFromWorker "
			        "mousemove --sync --window %1 20 20 key n");
			usleep(300000);
		}
	});
	bool answered = platform_ui_run_until([&] { return answer.load() != -2; }, 15000000);
	presser.join();
	worker.join();

	EXPECT_TRUE(answered);
	EXPECT_EQ(0, answer.load());
}


TEST(AlertTest, GoOnTheInterfaceThreadKeepsOtherWindowsServed)
{
	REQUIRE_XDOTOOL();
	CountingWindow* window = new CountingWindow;
	window->Run();
	BAlert* alert = new BAlert("QuestionOnInterface", "Continue the test?", "Abort", "Continue");
	BButton* continueButton = alert->ButtonAt(1);
	ASSERT_NE(nullptr, continueButton);
	EXPECT_STREQ("Continue", continueButton->Label());
	BPoint click = continueButton->ConvertToScreen(BPoint(10, 10));
	BPoint origin = alert->ChildAt(0)->ConvertToScreen(BPoint(0, 0));

	// While the alert waits, messages from another thread still reach the
	// other window; then the helper clicks "Continue".
	std::atomic<bool> clicked(false);
	std::thread helper([&] {
		if (!Xdotool("search --sync --onlyvisible --name QuestionOnInterface"))
			return;
		BMessenger messenger(window);
		for (int32 i = 0; i < 100; i++)
			messenger.SendMessage(kMsgTick);
		for (int32 i = 0; i < 500 && window->ticks.load() < 100; i++)
			snooze(10000);
		char arguments[96];
		snprintf(arguments, sizeof(arguments), "mousemove --sync %d %d click 1",
		         static_cast<int>(click.x), static_cast<int>(click.y));
		clicked = Xdotool(arguments);
	});
	window->alertOpen = true;
	int32 answer = alert->Go();
	window->alertOpen = false;
	helper.join();

	EXPECT_TRUE(clicked.load());
	EXPECT_EQ(1, answer);
	EXPECT_EQ(100, window->ticks.load());
	EXPECT_EQ(100, window->ticksInsideAlert.load());
	EXPECT_GE(origin.x, 0);
	QuitWindow(window);
}


namespace {

const uint32 kMsgAsk = 'ask ';

// Asks its question from inside a message handler, with itself locked once
// more, as windows do before starting work.
class AskingWindow : public BWindow
{
public:
	AskingWindow() : BWindow(BRect(400, 300, 499, 349), "Asking", B_TITLED_WINDOW, 0) {}

	void MessageReceived(BMessage* message) override
	{
		if (message->what != kMsgAsk) {
			BWindow::MessageReceived(message);
			return;
		}
		Lock();
		BAlert* alert = new BAlert("QuestionInHandler", "Go on?", "Stop", "Go");
		alert->SetShortcut(1, 'g');
		answer = alert->Go();
		Unlock();
	}

	std::atomic<int32> answer{-2};
};

} // namespace


TEST(AlertTest, OtherThreadsMayLockWindowsWhileAHandlerWaitsForAnAlert)
{
	REQUIRE_XDOTOOL();
	AskingWindow* asking = new AskingWindow;
	CountingWindow* other = new CountingWindow;
	asking->Run();
	asking->PostMessage(kMsgAsk);

	std::atomic<bool> lockedDuringAlert(false);
	std::atomic<bool> lockerDone(false);
	std::atomic<bool> helperDone(false);
	std::thread helper([&] {
		if (!Xdotool("search --sync --onlyvisible --name QuestionInHandler")) {
			helperDone = true;
			return;
		}
		std::thread locker([&] {
			if (other->Lock()) {
				other->Unlock();
				lockedDuringAlert = asking->answer.load() == -2;
			}
			lockerDone = true;
		});
		for (int i = 0; i < 300 && !lockerDone.load(); i++)
			snooze(10000);
		Xdotool("search --onlyvisible --name QuestionInHandler "
		        "mousemove --sync --window %1 20 20 key g");
		locker.join();
		helperDone = true;
	});
	// Runs the loop until the helper is done too: a locker still waiting
	// needs this thread to give the lock up.
	bool answered = platform_ui_run_until(
	    [&] { return asking->answer.load() != -2 && helperDone.load(); }, 15000000);
	helper.join();

	EXPECT_TRUE(answered);
	EXPECT_EQ(1, asking->answer.load());
	EXPECT_TRUE(lockedDuringAlert.load());
	QuitWindow(asking);
	QuitWindow(other);
}


TEST(AlertTest, ButtonsStayInsideAnAlertWithLongText)
{
	REQUIRE_DISPLAY();
	BAlert* alert = new BAlert(
	    "LongAlert",
	    "Processors will be switched off one by one while the tests run, and switched on "
	    "again at the end. Programs that are running meanwhile slow down. Close them "
	    "first, and do not use the machine until the run has ended. This warning is "
	    "shown once each time the program runs.",
	    "Cancel", "Continue", nullptr, B_WIDTH_AS_USUAL, B_WARNING_ALERT);
	ASSERT_TRUE(alert->Lock());
	BRect bounds = alert->Bounds();
	for (int32 i = 0; i < alert->CountButtons(); i++) {
		BRect frame = alert->ButtonAt(i)->Frame();
		EXPECT_GE(frame.top, bounds.top) << "button " << i;
		EXPECT_LE(frame.bottom, bounds.bottom) << "button " << i;
		EXPECT_GT(frame.top, alert->TextView()->Frame().bottom) << "button " << i;
	}
	alert->Quit();
}


// Escape and a window manager's close choose the first button; the alert
// opens centred over the window the user last worked in.
TEST(AlertTest, EscapeChoosesTheFirstButtonOverTheWindowInUse)
{
	REQUIRE_XDOTOOL();
	BWindow* owner = new BWindow(BRect(600, 500, 999, 799), "Owner", B_TITLED_WINDOW, 0);
	owner->Run();
	owner->Show();
	platform_ui_run_until([&] { return !owner->IsHidden(); }, 2000000);
	ASSERT_TRUE(MovePointerTo(BPoint(700, 600)));
	platform_ui_run_for(200000);

	for (bool escape : {true, false}) {
		SCOPED_TRACE(escape ? "Escape" : "window manager's close");
		std::atomic<int32> answer(-2);
		std::atomic<BAlert*> shown(nullptr);
		std::thread worker([&] {
			BAlert* alert = new BAlert("EscapeQuestion", "Start anyway?", "Abort", "Continue",
			                           nullptr, B_WIDTH_AS_USUAL, B_WARNING_ALERT);
			shown = alert;
			answer = alert->Go();
		});
		ASSERT_TRUE(platform_ui_run_until(
		    [&] { return shown.load() != nullptr && !shown.load()->IsHidden(); }, 5000000));
		platform_ui_run_for(200000);
		BRect frame = shown.load()->Frame();
		EXPECT_NEAR((frame.left + frame.right) / 2, 799.5, 1);
		EXPECT_NEAR((frame.top + frame.bottom) / 2, 649.5, 1);
		std::thread presser([&] {
			for (int32 tries = 0; escape && tries < 20 && answer.load() == -2; tries++) {
				Xdotool("search --onlyvisible --name EscapeQuestion "
				        "mousemove --sync --window %1 20 20 key Escape");
				usleep(300000);
			}
		});
		if (!escape) {
			EXPECT_TRUE(platform_ui_close_window(shown.load()));
		}
		bool answered = platform_ui_run_until([&] { return answer.load() != -2; }, 10000000);
		presser.join();
		worker.join();
		EXPECT_TRUE(answered);
		EXPECT_EQ(0, answer.load());
	}
	QuitWindow(owner);
}
