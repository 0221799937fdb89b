// quickstep: the desktop program.

#include <cstdio>
#include <cstring>
#include <new>

#include <Application.h>

#include "app/QuickstepApp.h"
#include "lib/LibBuildInfo.h"

namespace {

const char* const kUsage =
    "usage: quickstep [-scmp | -help FILE]\n"
    "  -scmp       allow saving the comparison store from the comparison window\n"
    "  -help FILE  store FILE as the program's help file, then end without a window\n"
    "  --version   print the version and end\n"
    "  -h, --help  print this text and end\n"
    "Without a display, quickstep-cli runs the same tests.\n";


bool
IsOption(int argc, char** argv, const char* first, const char* second = nullptr)
{
	if (argc != 2)
		return false;
	return strcmp(argv[1], first) == 0 || (second != nullptr && strcmp(argv[1], second) == 0);
}

} // namespace


int
main(int argc, char** argv)
{
	if (IsOption(argc, argv, "--version")) {
		printf("%s\n", LibBuildLine("quickstep"));
		return 0;
	}
	if (IsOption(argc, argv, "--help", "-h")) {
		fputs(kUsage, stdout);
		return 0;
	}
	// Storing a help file opens no window, so it needs no display; the
	// application ends the process itself once the file is stored.
	bool storingHelp = argc == 3 && strcmp(argv[1], "-help") == 0;
	if (!platform_display_available() && !storingHelp) {
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
