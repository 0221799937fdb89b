#include "lib/LibBuildInfo.h"

#include <cstdio>

#include "QuickstepBuildInfo.h"


const char*
LibBuildVersion()
{
	return QUICKSTEP_BUILD_VERSION;
}


const char*
LibBuildCommit()
{
	return QUICKSTEP_BUILD_COMMIT;
}


const char*
LibBuildCompiler()
{
	return QUICKSTEP_BUILD_COMPILER;
}


const char*
LibBuildFlags()
{
	return QUICKSTEP_BUILD_FLAGS;
}


const char*
LibBuildIdentity()
{
	return QUICKSTEP_BUILD_VERSION " (commit " QUICKSTEP_BUILD_COMMIT ")";
}


const char*
LibBuildLine(const char* program)
{
	// Called from main before any other thread exists.
	static char line[256];
	snprintf(line, sizeof(line), "%s %s (commit %s, %s)", program, QUICKSTEP_BUILD_VERSION,
	         QUICKSTEP_BUILD_COMMIT, QUICKSTEP_BUILD_COMPILER);
	return line;
}
