// quickstep: the desktop program.

#include <cstdio>
#include <new>

#include <Application.h>

#include "app/QuickstepApp.h"


int
main()
{
	if (!platform_display_available()) {
		fprintf(stderr, "quickstep: no X display to open windows on (DISPLAY is not set or does "
		                "not answer); without windows use quickstep-cli, e.g. "
		                "quickstep-cli run all\n");
		return 1;
	}

	QuickstepApp* app = new (std::nothrow) QuickstepApp;
	if (app == nullptr)
		return 0;
	app->Run();
	delete app;
	return 0;
}
