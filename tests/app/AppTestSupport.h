// Helpers for the desktop program's window tests: a display check, running
// the interface loop until something happens, answering alerts the way a
// user would, xdotool, and screenshots kept under build/screenshots.
#ifndef APP_TEST_SUPPORT_H
#define APP_TEST_SUPPORT_H

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <Alert.h>
#include <AppDefs.h>
#include <Application.h>
#include <InterfaceTest.h>
#include <Message.h>
#include <Messenger.h>
#include <OS.h>
#include <TextView.h>
#include <View.h>
#include <Window.h>

#include "CommandOutput.h"
#include "app/QuickstepApp.h"
#include "app/QuickstepWin.h"
#include "results/ResultsWin.h"

namespace apptest {

inline bool
HaveDisplay()
{
	const char* display = getenv("DISPLAY");
	return display != nullptr && display[0] != '\0' && platform_display_available();
}

#define QS_REQUIRE_DISPLAY()                                                                       \
	do {                                                                                           \
		if (!apptest::HaveDisplay())                                                               \
			GTEST_SKIP() << "no display (run under xvfb-run -a)";                                  \
	} while (false)

// The process's one application, made on first use on the calling thread,
// which becomes the interface thread, and kept to the end of the process.
// Tests close the windows they open; the application's own state (such as
// the "-scmp" flag) carries over to the tests that follow in the process.
inline QuickstepApp*
SharedApp()
{
	static QuickstepApp* app = new QuickstepApp;
	return app;
}

// Runs the interface loop until done answers true or seconds pass.
inline bool RunUntil(const std::function<bool()>& done, double seconds = 10);

// The measurements of a run of every test, in the order they run.
constexpr int32 kEveryMetricIndex[] = {100,  101,  200,  300,  400,  500,  550,  600,  601,
                                       602,  700,  800,  801,  900,  901,  1010, 1011, 1020,
                                       1021, 1022, 1030, 1031, 1032, 1040, 1041, 1042, 1050};

// Quits a main window and the results window it made (which outlives it in
// the program, as it is quit with the application).
inline void
CloseMainWindow(QuickstepWin* window)
{
	ResultsWin* results = window->ResultsWindow();
	if (results != nullptr) {
		results->Lock();
		results->Quit();
	}
	window->Lock();
	window->Quit();
}

// Whether two windows' frames, grown by a title bar above, overlap.
inline bool
FramesOverlap(BWindow* one, BWindow* other)
{
	const float kTitle = 24;
	BRect a = one->Frame();
	BRect b = other->Frame();
	return a.left <= b.right && b.left <= a.right && a.top - kTitle <= b.bottom &&
	       b.top - kTitle <= a.bottom;
}

// Runs the interface loop until done answers true or seconds pass.
inline bool
RunUntil(const std::function<bool()>& done, double seconds)
{
	return platform_ui_run_until(done, static_cast<bigtime_t>(seconds * 1000000));
}

inline void
RunFor(double seconds)
{
	platform_ui_run_for(static_cast<bigtime_t>(seconds * 1000000));
}

// Runs a shell command on a thread of its own while the caller keeps the
// interface loop running (xdotool and import need the windows to answer).
class Command
{
public:
	explicit Command(const std::string& command) : fDone(false), fStatus(-1)
	{
		fThread = std::thread([this, command] {
			fStatus = system(command.c_str());
			fDone = true;
		});
	}

	~Command()
	{
		if (fThread.joinable())
			fThread.join();
	}

	bool Done() const { return fDone; }
	int Status() const { return fStatus; }

private:
	std::atomic<bool> fDone;
	std::atomic<int> fStatus;
	std::thread fThread;
};

// Runs command to its end with the interface loop running; true on status 0.
inline bool
RunCommand(const std::string& command, double seconds = 20)
{
	Command running(command);
	RunUntil([&] { return running.Done(); }, seconds);
	return running.Done() && running.Status() == 0;
}

// Moves the pointer to a view's point (view coordinates), then runs the
// xdotool commands then (such as "click 1").
inline bool
PointAt(BView* view, BPoint where, const std::string& then = "sleep 0.2")
{
	view->Window()->Lock();
	BPoint screen = view->ConvertToScreen(where);
	view->Window()->Unlock();
	return RunCommand("xdotool mousemove " + std::to_string(static_cast<int>(screen.x)) + " " +
	                  std::to_string(static_cast<int>(screen.y)) + " " + then);
}

inline bool
ClickView(BView* view, BPoint where)
{
	return PointAt(view, where, "sleep 0.1 click 1");
}

// Moves the pointer into a window (focus follows it without a window
// manager) and presses keys, e.g. "ctrl+a".
inline bool
PressKeys(BWindow* window, const char* keys)
{
	window->Lock();
	BRect frame = window->Frame();
	window->Unlock();
	char command[200];
	snprintf(command, sizeof(command), "xdotool mousemove %d %d sleep 0.1 key %s",
	         static_cast<int>(frame.left + frame.Width() / 2),
	         static_cast<int>(frame.top + frame.Height() / 2), keys);
	return RunCommand(command);
}

// Saves the whole screen as build/screenshots/<name>.png for people to look
// at; true when the file was written.
inline bool
Screenshot(const char* name)
{
	std::string directory = std::string(QS_BIN_DIR) + "/../screenshots";
	mkdir(directory.c_str(), 0755);
	RunFor(0.3);
	std::string command = "import -window root " + directory + "/" + name + ".png";
	return RunCommand(command);
}

// Answers the program's modal alerts as a user clicking a button would (the
// button's message to the alert), in the order of the answers given, and
// keeps every alert's text. A modal alert keeps the interface lock held, so
// the looking is done on the interface thread, by a handler of the
// application that a thread of this class pokes every 20 ms; the alert's
// loop dispatches the application's messages meanwhile.
class AlertAnswerer
{
public:
	explicit AlertAnswerer(std::vector<int32> answers) : fClicker(std::move(answers)), fStop(false)
	{
		be_app->AddHandler(&fClicker);
		fThread = std::thread([this] {
			BMessenger clicker(&fClicker, be_app);
			while (!fStop) {
				snooze(20000);
				clicker.SendMessage(kTick);
			}
		});
	}

	~AlertAnswerer()
	{
		fStop = true;
		fThread.join();
		// Ticks still queued find no handler and are dropped.
		be_app->RemoveHandler(&fClicker);
	}

	int32 Answered() const { return fClicker.fAnswered; }
	std::vector<std::string> Texts() const { return fClicker.fTexts; }

private:
	static const uint32 kTick = 'tick';
	static constexpr const char* kAnswered = "answered by the test";

	class Clicker : public BHandler
	{
	public:
		explicit Clicker(std::vector<int32> answers)
		    : BHandler("alert answerer"), fAnswers(std::move(answers)), fAnswered(0)
		{
		}

		void MessageReceived(BMessage* message) override
		{
			if (message->what != kTick) {
				BHandler::MessageReceived(message);
				return;
			}
			if (static_cast<size_t>(fAnswered) >= fAnswers.size())
				return;
			for (int32 i = 0; i < be_app->CountWindows(); i++) {
				BAlert* alert = dynamic_cast<BAlert*>(be_app->WindowAt(i));
				// An answered alert is marked by its title until it is gone.
				if (alert == nullptr || alert->IsHidden() || strcmp(alert->Title(), kAnswered) == 0)
					continue;
				fTexts.push_back(alert->TextView()->Text());
				alert->SetTitle(kAnswered);
				BMessage click(B_ALERT_BUTTON_MESSAGE);
				click.AddInt32("which", fAnswers[fAnswered]);
				alert->PostMessage(&click);
				fAnswered++;
				return;
			}
		}

		std::vector<int32> fAnswers;
		std::atomic<int32> fAnswered;
		std::vector<std::string> fTexts;
	};

	Clicker fClicker;
	std::atomic<bool> fStop;
	std::thread fThread;
};

// A window manager (Debian's openbox) on the test's display for the life of
// the object, or none when it is not installed: Running() tells.
class WindowManager
{
public:
	WindowManager() : fPid(-1)
	{
		if (system("command -v openbox >/dev/null 2>&1") != 0)
			return;
		fPid = fork();
		if (fPid == 0) {
			execlp("openbox", "openbox", "--sm-disable", static_cast<char*>(nullptr));
			_exit(127);
		}
		// Ready once it has claimed the screen: the root names its check
		// window, and that window exists (one that ended before leaves the
		// name of a window that is gone).
		RunUntil(
		    [] {
			    return system("id=$(xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | "
			                  "sed -n 's/.*window id # //p'); [ -n \"$id\" ] && "
			                  "xprop -id \"$id\" _NET_WM_NAME 2>/dev/null | grep -q Openbox") == 0;
		    },
		    10);
	}

	~WindowManager()
	{
		if (fPid <= 0)
			return;
		kill(fPid, SIGTERM);
		int status = 0;
		waitpid(fPid, &status, 0);
		platform_ui_keyboard_follows_pointer();
		RunFor(0.3);
	}

	bool Running() const { return fPid > 0; }

private:
	pid_t fPid;
};

// An xdg-open first on PATH for the object's life, in directory/bin, that
// writes its arguments to directory/opened instead of starting a browser.
class FakeBrowser
{
public:
	explicit FakeBrowser(const std::string& directory)
	    : fBin(directory + "/bin"), fLog(directory + "/opened"),
	      fOldPath(getenv("PATH") != nullptr ? getenv("PATH") : "")
	{
		mkdir(fBin.c_str(), 0755);
		Script("echo \"$@\" > " + fLog + ".part && mv " + fLog + ".part " + fLog);
		setenv("PATH", (fBin + ":" + fOldPath).c_str(), 1);
	}

	~FakeBrowser() { setenv("PATH", fOldPath.c_str(), 1); }

	// Gives the launcher another body.
	void Script(const std::string& body)
	{
		const std::string launcher = fBin + "/xdg-open";
		FILE* out = fopen(launcher.c_str(), "w");
		if (out == nullptr)
			return;
		fprintf(out, "#!/bin/sh\n%s\n", body.c_str());
		fclose(out);
		chmod(launcher.c_str(), 0700);
	}

	// A PATH on which no launcher is found.
	void Remove() { setenv("PATH", (fBin + "/none").c_str(), 1); }

	// What the launcher was handed, waiting up to seconds; "" if it never ran.
	std::string Opened(double seconds = 5) const
	{
		for (int i = 0; i <= seconds * 50; i++) {
			if (access(fLog.c_str(), F_OK) == 0)
				return CommandOutput("cat '" + fLog + "'");
			snooze(20000);
		}
		return "";
	}

	const std::string& Log() const { return fLog; }

private:
	std::string fBin;
	std::string fLog;
	std::string fOldPath;
};

// The X window id of the newest window titled title, or "" (xdotool).
inline std::string
WindowIdNow(const char* title)
{
	std::string id =
	    CommandOutput(std::string("xdotool search --name '^") + title + "$' 2>/dev/null | tail -1");
	while (!id.empty() && (id.back() == '\n' || id.back() == ' '))
		id.pop_back();
	return id;
}

inline std::string
WindowId(const char* title)
{
	// A window just shown may not be on the display yet: a few tries.
	for (int attempt = 0; attempt < 10; attempt++) {
		std::string id = WindowIdNow(title);
		if (!id.empty())
			return id;
		RunFor(0.2);
	}
	return "";
}

} // namespace apptest

#endif // APP_TEST_SUPPORT_H
