#include "lib/LibApp.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <Application.h>
#include <Errors.h>
#include <Message.h>
#include <Window.h>

#include "help/HelpFile.h"
#include "lib/LibAboutWindow.h"
#include "lib/LibWindow.h"
#include "sysinfo/AboutSysWindow.h"


LibApp::LibApp(const char* signature, const char* name, const char* buildDate)
    : BApplication(signature), fQuitting(false), fName(name), fBuildDate(buildDate),
      fAboutWindow(nullptr), fSystemWindow(nullptr)
{
	fHelp.SetSignature(signature);
	AddHandler(&fHelp);
	// Desktops group the windows, and match them to the desktop entry, by
	// the program's name in lower case.
	LibString windowClass(name);
	windowClass.ToLower();
	platform_set_window_class(windowClass.String());
	AddHandler(&fTips);
}


LibApp::~LibApp()
{
	RemoveHandler(&fTips);
	RemoveHandler(&fHelp);
}


void
LibApp::ArgvReceived(int32 argc, char** argv)
{
	if (argc <= 1 || strcmp(argv[1], "-help") != 0)
		return;
	if (argc == 3) {
		status_t status = fHelp.AddHelpFile(argv[2]);
		// A missing file has been named already; any other failure gets its
		// reason, and scripts see the outcome in the exit status.
		if (status == B_BAD_VALUE)
			fprintf(stderr, "%s: not a regular file\n", argv[2]);
		else if (status == B_BUFFER_OVERFLOW)
			fprintf(stderr, "%s: larger than a help file may be (%lld bytes at most)\n", argv[2],
			        static_cast<long long>(HelpFile::kMaxStoredBytes));
		else if (status != B_OK && status != B_ENTRY_NOT_FOUND)
			fprintf(stderr, "%s: %s\n", argv[2], strerror_status(status));
		// Adding a help file is all this start was for: no window opens.
		exit(status == B_OK ? 0 : 1);
	}
	fprintf(stderr, "Help file requred\n");
}


void
LibApp::ReadyToRun()
{
	ShowMainWindow();
}


BWindow*
LibApp::Window()
{
	return nullptr;
}


void
LibApp::ShowMainWindow()
{
	BWindow* window = Window();
	if (window != nullptr)
		window->Show();
}


void
LibApp::MessageReceived(BMessage* message)
{
	switch (message->what) {
		case kMsgShowAbout:
			if (fAboutWindow == nullptr) {
				fAboutWindow = new LibAboutWindow(this, fName, fBuildDate);
				fAboutWindow->Run();
			}
			fAboutWindow->Pop();
			break;
		case kMsgAboutClosed:
			fAboutWindow = nullptr;
			break;
		case kMsgShowSystem:
			if (fSystemWindow == nullptr) {
				fSystemWindow = new AboutSysWindow(this);
				fSystemWindow->Run();
			}
			fSystemWindow->Pop();
			break;
		case kMsgSystemClosed:
			fSystemWindow = nullptr;
			break;
		case kMsgHelpRequest:
			fHelp.MessageReceived(message);
			break;
		case kMsgShowTip:
			fTips.MessageReceived(message);
			break;
		case kMsgToggleTips:
			fTips.ToggleTips();
			break;
		case kMsgShowMainWindow:
			ShowMainWindow();
			break;
		default:
			BApplication::MessageReceived(message);
	}
}


bool
LibApp::QuitRequested()
{
	fQuitting = true;
	fQuitting = BApplication::QuitRequested();
	return fQuitting;
}
