// A build without windows: the graphics test is never available.
#include "cli/GraphicsHost.h"


void
GraphicsSetCommandLine(int, char**)
{
}


void
GraphicsHandOver()
{
}


bool
GraphicsTestAvailable()
{
	return false;
}


const char*
GraphicsUnavailableReason()
{
	return "needs a build with windows (this one was built without)";
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
