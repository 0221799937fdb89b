// The Quickstep application: its signature, version record, the "-scmp"
// option, the manual and the main window.
#ifndef QUICKSTEP_APP_H
#define QUICKSTEP_APP_H

#include "lib/LibApp.h"

class QuickstepWin;

class QuickstepApp : public LibApp
{
public:
	static const char* const kSignature;

	QuickstepApp();
	~QuickstepApp() override;

	// "-scmp" as the only argument allows the comparison store to be saved.
	void ArgvReceived(int32 argc, char** argv) override;
	void MessageReceived(BMessage* message) override;
	// Lets the main window ask the results window, then quits whatever the
	// answers.
	bool QuitRequested() override;
	// Makes the main window and starts it, hidden.
	BWindow* Window() override;

	QuickstepWin* MainWindow() const { return fMainWindow; }
	bool AllowCompareSave() const { return fAllowCompareSave; }

private:
	QuickstepWin* fMainWindow;
	bool fAllowCompareSave;
};

#endif // QUICKSTEP_APP_H
