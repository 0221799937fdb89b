#include "app/QuickstepApp.h"

#include <cstdio>
#include <cstring>

#include <Application.h>
#include <Bitmap.h>
#include <Message.h>

#include "app/QuickstepWin.h"
#include "lib/LibAppVersion.h"
#include "lib/LibHelp.h"
#include "results/ProcessorIcons.h"

const char* const QuickstepApp::kSignature = "application/x-vnd.Kestrelware.QStp";


QuickstepApp::QuickstepApp()
    : LibApp(kSignature, "Quickstep", "15 Feb 1999"), fMainWindow(nullptr), fAllowCompareSave(false)
{
	// The executable always carries the version it is.
	LibSetAppVersion(1, 2, 2, "BeOS benchmark",
	                 "Quickstep 1.2.2: processor, memory, disk and graphics benchmark", 5, 0);

	// The processor chip of the comparison rows stands for the program in
	// task bars and window lists.
	BBitmap icon(BRect(0, 0, 15, 15), B_CMAP8);
	icon.SetBits(Processor, kProcessorIconSize, 0, B_CMAP8);
	platform_set_window_icon(&icon);
}


QuickstepApp::~QuickstepApp()
{
}


void
QuickstepApp::ArgvReceived(int32 argc, char** argv)
{
	if (argc == 2 && strcmp(argv[1], "-scmp") == 0) {
		fprintf(stderr, "Allowed to save comparisons\n");
		fAllowCompareSave = true;
	}
	LibApp::ArgvReceived(argc, argv);
}


void
QuickstepApp::MessageReceived(BMessage* message)
{
	if (message->what == kMsgHelpDocument) {
		LibHelp::Show("Quickstep");
		return;
	}
	LibApp::MessageReceived(message);
}


bool
QuickstepApp::QuitRequested()
{
	if (fMainWindow != nullptr)
		fMainWindow->QuitRequested();
	return true;
}


BWindow*
QuickstepApp::Window()
{
	fMainWindow = new QuickstepWin(fAllowCompareSave);
	fMainWindow->Run();
	return fMainWindow;
}
