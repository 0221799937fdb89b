// Shared pieces of the window tests: one application per test process (made
// on the main thread, which becomes the interface thread), a record of the
// messages it receives, and xdotool for real key presses and clicks.
#ifndef TESTS_PLATFORM_INTERFACE_SUPPORT_H
#define TESTS_PLATFORM_INTERFACE_SUPPORT_H

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <vector>

#include <Application.h>
#include <InterfaceTest.h>
#include <Looper.h>
#include <Message.h>
#include <Point.h>
#include <Window.h>

class TestApplication : public BApplication
{
public:
	TestApplication() : BApplication("application/x-vnd.Quickstep-test") {}

	void MessageReceived(BMessage* message) override
	{
		std::lock_guard<std::mutex> guard(fMutex);
		fReceived.push_back(*message);
	}

	void ArgvReceived(int32 argc, char** argv) override
	{
		std::lock_guard<std::mutex> guard(fMutex);
		fArguments.assign(argv, argv + argc);
	}

	void ReadyToRun() override { fReadyCount++; }

	std::vector<std::string> Arguments()
	{
		std::lock_guard<std::mutex> guard(fMutex);
		return fArguments;
	}

	int32 ReadyCount() const { return fReadyCount; }

	std::vector<BMessage> Received()
	{
		std::lock_guard<std::mutex> guard(fMutex);
		return fReceived;
	}

	void Forget()
	{
		std::lock_guard<std::mutex> guard(fMutex);
		fReceived.clear();
	}

private:
	std::mutex fMutex;
	std::vector<BMessage> fReceived;
	std::vector<std::string> fArguments;
	std::atomic<int32> fReadyCount{0};
};

// Copies of the messages a window or handler received, safe to read from the
// test's thread.
class MessageLog
{
public:
	void Add(const BMessage* message)
	{
		std::lock_guard<std::mutex> guard(fMutex);
		fMessages.push_back(*message);
	}

	std::vector<BMessage> Messages()
	{
		std::lock_guard<std::mutex> guard(fMutex);
		return fMessages;
	}

	size_t Count()
	{
		std::lock_guard<std::mutex> guard(fMutex);
		return fMessages.size();
	}

private:
	std::mutex fMutex;
	std::vector<BMessage> fMessages;
};

// Logs the messages with the given what-codes; the window handles the rest.
class RecordingWindow : public BWindow
{
public:
	RecordingWindow(BRect frame, const char* title, std::vector<uint32> whats)
	    : BWindow(frame, title, B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0),
	      fWhats(std::move(whats))
	{
	}

	void MessageReceived(BMessage* message) override
	{
		if (std::find(fWhats.begin(), fWhats.end(), message->what) == fWhats.end())
			BWindow::MessageReceived(message);
		else
			record.Add(message);
	}

	MessageLog record;

private:
	std::vector<uint32> fWhats;
};

inline bool
HaveDisplay()
{
	const char* display = getenv("DISPLAY");
	return display != nullptr && display[0] != '\0' && platform_display_available();
}

// The application of this process, made on first use.
inline TestApplication*
TestApp()
{
	static TestApplication* sApplication = new TestApplication;
	return sApplication;
}

inline bool
HaveXdotool()
{
	return system("command -v xdotool >/dev/null 2>&1") == 0;
}

// Runs xdotool, giving up after 20 seconds (a "search --sync" for a window
// that never appears would otherwise wait forever).
inline bool
Xdotool(const std::string& arguments)
{
	std::string command = "timeout 20 xdotool " + arguments + " >/dev/null 2>&1";
	return system(command.c_str()) == 0;
}

// Moves the pointer to a point of the screen; under Xvfb without a window
// manager the keyboard follows the pointer.
inline bool
MovePointerTo(BPoint where)
{
	char arguments[64];
	snprintf(arguments, sizeof(arguments), "mousemove --sync %d %d", static_cast<int>(where.x),
	         static_cast<int>(where.y));
	return Xdotool(arguments);
}

// Ends a window (or any looper) the way its owner would: Quit wants the lock.
inline void
QuitWindow(BLooper* looper)
{
	looper->Lock();
	looper->Quit();
}

#define REQUIRE_DISPLAY()                                                                          \
	do {                                                                                           \
		if (!HaveDisplay())                                                                        \
			GTEST_SKIP() << "no display";                                                          \
		TestApp();                                                                                 \
	} while (false)

#define REQUIRE_XDOTOOL()                                                                          \
	do {                                                                                           \
		REQUIRE_DISPLAY();                                                                         \
		if (!HaveXdotool())                                                                        \
			GTEST_SKIP() << "xdotool is not installed";                                            \
	} while (false)

#endif // TESTS_PLATFORM_INTERFACE_SUPPORT_H
