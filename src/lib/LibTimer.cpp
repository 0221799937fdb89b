#include "lib/LibTimer.h"

#include <OS.h>

LibTimer::LibTimer() : fStart(0), fStop(0)
{
}


LibTimer::~LibTimer()
{
}


void
LibTimer::Start()
{
	fStart = system_time();
}


// Without a Start the start time is 0, so this answers the clock itself, in
// seconds.
float
LibTimer::Stop()
{
	fStop = system_time();
	return (fStop - fStart) / 1000000.0;
}
