#include "cli/GraphicsHost.h"

#include <AppDefs.h>
#include <Application.h>

#include "engine/Benchmark.h"
#include "engine/GraphicsWin.h"

namespace {

const char* const kSignature = "application/x-vnd.quickstep-cli";

} // namespace


void
GraphicsSetCommandLine(int, char**)
{
}


// This is the program with windows: nothing to hand over to.
void
GraphicsHandOver()
{
}


bool
GraphicsTestAvailable()
{
	return platform_display_available();
}


const char*
GraphicsUnavailableReason()
{
	return "needs an X display (DISPLAY is not set or does not answer)";
}


GraphicsHost::GraphicsHost()
{
	new BApplication(kSignature);
	Benchmark::SetGraphicsTest(GraphicsWin::RunTests);
}


GraphicsHost::~GraphicsHost()
{
	Benchmark::SetGraphicsTest(nullptr);
	delete be_app;
}


void
GraphicsHost::Run()
{
	be_app->Run();
}


// A message, not Quit: it waits in the queue if Run has not started yet.
void
GraphicsHost::Stop()
{
	be_app->PostMessage(B_QUIT_REQUESTED);
}
