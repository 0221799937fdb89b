#include "InterfaceTest.h"

#include <FL/Fl.H>

#include "OS.h"
#include "interface/UIThread.h"


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
