// quickstep-cli without the window libraries. Built with
// QUICKSTEP_CLI_GRAPHICS_PATH, a run with the graphics test becomes
// quickstep-cli-graphics, the same commands with windows; without it (a build
// with no windows at all) the graphics test is never available.
#include "cli/GraphicsHost.h"

#ifdef QUICKSTEP_CLI_GRAPHICS_PATH

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unistd.h>

namespace {

int sArgc = 0;
char** sArgv = nullptr;

// Where the program with windows lives, relative to this program's directory:
// the same in the build tree as in an install.
std::string
CompanionPath()
{
	char self[PATH_MAX];
	const ssize_t length = readlink("/proc/self/exe", self, sizeof self - 1);
	if (length <= 0)
		return std::string();
	std::string path(self, static_cast<size_t>(length));
	path.erase(path.rfind('/') + 1);
	return path + QUICKSTEP_CLI_GRAPHICS_PATH;
}

} // namespace


void
GraphicsSetCommandLine(int argc, char** argv)
{
	sArgc = argc;
	sArgv = argv;
}


void
GraphicsHandOver()
{
	const char* display = getenv("DISPLAY");
	if (display == nullptr || display[0] == '\0' || sArgv == nullptr || sArgc < 1)
		return;
	const std::string companion = CompanionPath();
	if (companion.empty()) {
		fprintf(stderr, "quickstep-cli run: cannot tell where this program is: %s\n",
		        strerror(errno));
		return;
	}
	execv(companion.c_str(), sArgv);
	fprintf(stderr, "quickstep-cli run: cannot start %s: %s\n", companion.c_str(),
	        strerror(errno));
}


const char*
GraphicsUnavailableReason()
{
	const char* display = getenv("DISPLAY");
	if (display == nullptr || display[0] == '\0')
		return "needs an X display (DISPLAY is not set or does not answer)";
	return "needs quickstep-cli-graphics, which could not be started";
}

#else

void
GraphicsSetCommandLine(int, char**)
{
}


void
GraphicsHandOver()
{
}


const char*
GraphicsUnavailableReason()
{
	return "needs a build with windows (this one was built without)";
}

#endif // QUICKSTEP_CLI_GRAPHICS_PATH


// Reached only where no hand-over happened.
bool
GraphicsTestAvailable()
{
	return false;
}


// Nothing to host: this program draws no window.
GraphicsHost::GraphicsHost()
{
}


GraphicsHost::~GraphicsHost()
{
}


void
GraphicsHost::Run()
{
}


void
GraphicsHost::Stop()
{
}
