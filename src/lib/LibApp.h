// The support library's application: signature, name and build date, the
// help and tip managers, the About and System windows, the "-help" option,
// and a main window made and shown when the application is ready to run.
#ifndef LIB_APP_H
#define LIB_APP_H

#include <Application.h>

#include "help/HelpManager.h"
#include "lib/LibAppVersion.h"
#include "lib/LibString.h"
#include "lib/LibTipManager.h"

class BWindow;
class LibWindow;

const uint32 kMsgShowAbout = 'sabt';
const uint32 kMsgAboutClosed = 'ABTQ';
const uint32 kMsgShowSystem = 'ssys';
const uint32 kMsgSystemClosed = 'SYSQ';
const uint32 kMsgShowMainWindow = 'swmw';

class LibApp : public BApplication
{
public:
	LibApp(const char* signature, const char* name, const char* buildDate);
	~LibApp() override;

	// "-help <file>" stores the help file in the executable and ends the
	// program; "-help" alone is reported and ignored.
	void ArgvReceived(int32 argc, char** argv) override;
	void ReadyToRun() override;
	void MessageReceived(BMessage* message) override;
	bool QuitRequested() override;

	// The main window, made by the program's application; null here.
	virtual BWindow* Window();
	virtual void ShowMainWindow();

	const char* Name() const { return fName; }
	const char* BuildDate() const { return fBuildDate; }
	bool Quitting() const { return fQuitting; }
	LibWindow* AboutWindow() const { return fAboutWindow; }
	LibWindow* SystemWindow() const { return fSystemWindow; }
	HelpManager& Help() { return fHelp; }
	LibTipManager& Tips() { return fTips; }

protected:
	bool fQuitting;
	LibString fName;
	LibString fBuildDate;
	LibWindow* fAboutWindow;
	LibWindow* fSystemWindow;
	HelpManager fHelp;
	LibTipManager fTips;
};

#endif // LIB_APP_H
