// A build without windows: the graphics test is never available.
#include "cli/GraphicsHost.h"


bool
GraphicsTestAvailable()
{
	return false;
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
