#include "lib/LibAboutWindow.h"

#include <AppDefs.h>
#include <Button.h>
#include <Font.h>
#include <InterfaceDefs.h>
#include <Looper.h>
#include <Message.h>
#include <StringView.h>
#include <View.h>

#include "lib/LibApp.h"
#include "lib/LibAppVersion.h"
#include "lib/LibRect.h"
#include "lib/LibString.h"

namespace {

const float kWidth = 280;
const float kHeight = 150;

} // namespace


LibAboutWindow::LibAboutWindow(BLooper* owner, const char* name, const char* buildDate)
    : LibWindow(LibRect(0, 0, kWidth, kHeight), "AboutWindow", B_TITLED_WINDOW_LOOK,
                B_NORMAL_WINDOW_FEEL, B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE),
      fOwner(owner)
{
	Lock();
	LibString title;
	title.Format("About %s", name);
	SetTitle(title);

	BView* background = new BView(Bounds(), "about_view", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
	background->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
	AddChild(background);

	BStringView* nameView = new BStringView(LibRect(15, 12, kWidth - 30, 24), "about_name", name);
	BFont bold(B_BOLD_FONT_KIND, 18);
	nameView->SetFont(&bold);
	background->AddChild(nameView);

	LibString version = LibGetAppVersion();
	LibString line;
	line.Format("Version %s", version.IsEmpty() ? "unknown" : version.String());
	background->AddChild(new BStringView(LibRect(15, 44, kWidth - 30, 16), "about_version", line));
	line.Format("Built %s", buildDate);
	background->AddChild(new BStringView(LibRect(15, 62, kWidth - 30, 16), "about_built", line));
	background->AddChild(new BStringView(LibRect(15, 84, kWidth - 30, 16), "about_purpose",
	                                     "Tells how fast this machine is."));

	BButton* ok = new BButton(LibRect(kWidth - 90, kHeight - 36, 75, 24), "about_ok", "OK",
	                          new BMessage(B_QUIT_REQUESTED));
	background->AddChild(ok);
	SetDefaultButton(ok);
	Unlock();
	SetPosition(kLibPositionCentre);
}


LibAboutWindow::~LibAboutWindow()
{
}


bool
LibAboutWindow::QuitRequested()
{
	if (fOwner != nullptr)
		fOwner->PostMessage(kMsgAboutClosed);
	return true;
}
