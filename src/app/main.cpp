// quickstep: the desktop program.

#include <cstdio>
#include <cstring>
#include <new>

#include <Application.h>

#include "app/QuickstepApp.h"
#include "lib/LibBuildInfo.h"


int
main(int argc, char** argv)
{
	if (argc == 2 && strcmp(argv[1], "--version") == 0) {
		printf("%s\n", LibBuildLine("quickstep"));
		return 0;
	}
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
