#include "sysinfo/AboutSysWindow.h"

#include <Looper.h>

#include "lib/LibApp.h"
#include "lib/LibRect.h"
#include "sysinfo/AboutSysView.h"

namespace {

BRect
SystemWindowFrame()
{
	BRect frame = LibRect(100, 50, 220, 265);
	LibFitInScreen(frame);
	return frame;
}

} // namespace


AboutSysWindow::AboutSysWindow(BLooper* owner)
    : LibWindow(SystemWindowFrame(), "AboutSysWindow", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL,
                B_NOT_RESIZABLE | B_NOT_ZOOMABLE, B_CURRENT_WORKSPACE),
      fOwner(owner)
{
	Lock();
	SetTitle("About BeOS System");
	AddChild(new AboutSysView(Bounds()));
	Unlock();
}


AboutSysWindow::~AboutSysWindow()
{
}


bool
AboutSysWindow::QuitRequested()
{
	if (fOwner != nullptr)
		fOwner->PostMessage(kMsgSystemClosed);
	return true;
}
