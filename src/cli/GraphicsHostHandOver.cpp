// quickstep-cli without windows: a run with the graphics test becomes
// quickstep-cli-graphics, the same command with windows.
#include "cli/GraphicsHost.h"

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


// Reached only when the hand-over did not happen.
bool
GraphicsTestAvailable()
{
	return false;
}


const char*
GraphicsUnavailableReason()
{
	const char* display = getenv("DISPLAY");
	if (display == nullptr || display[0] == '\0')
		return "needs an X display (DISPLAY is not set or does not answer)";
	return "needs quickstep-cli-graphics, which could not be started";
}


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
