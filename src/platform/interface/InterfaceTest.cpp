#include "InterfaceTest.h"

#include <FL/Fl.H>
#include <FL/x.H>

#include "OS.h"
#include "Window.h"
#include "interface/UIThread.h"
#include "interface/Widgets.h"


bool
platform_ui_run_until(const std::function<bool()>& done, bigtime_t timeout)
{
	platform_interface::StartBackupTimer();
	platform_interface::DrainNow();
	bigtime_t deadline = system_time() + timeout;
	while (!done()) {
		if (system_time() >= deadline)
			return false;
		Fl::wait(0.01);
	}
	return true;
}


void
platform_ui_run_for(bigtime_t duration)
{
	platform_ui_run_until([] { return false; }, duration);
}


bool
platform_ui_close_window(BWindow* window)
{
	platform_interface::WindowWidget* widget = nullptr;
	for (Fl_Window* shown = Fl::first_window(); shown != nullptr; shown = Fl::next_window(shown)) {
		auto* candidate = dynamic_cast<platform_interface::WindowWidget*>(shown);
		if (candidate != nullptr && candidate->Window() == window)
			widget = candidate;
	}
	if (widget == nullptr || fl_display == nullptr)
		return false;
	XEvent event = {};
	event.xclient.type = ClientMessage;
	event.xclient.window = fl_xid(widget);
	event.xclient.message_type = XInternAtom(fl_display, "WM_PROTOCOLS", False);
	event.xclient.format = 32;
	event.xclient.data.l[0] = static_cast<long>(XInternAtom(fl_display, "WM_DELETE_WINDOW", False));
	event.xclient.data.l[1] = CurrentTime;
	XSendEvent(fl_display, fl_xid(widget), False, NoEventMask, &event);
	XFlush(fl_display);
	return true;
}


void
platform_ui_keyboard_follows_pointer()
{
	if (fl_display == nullptr)
		return;
	XSetInputFocus(fl_display, PointerRoot, RevertToPointerRoot, CurrentTime);
	XFlush(fl_display);
}
