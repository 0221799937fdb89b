// A stopwatch on the microsecond system clock that answers elapsed seconds.
#ifndef LIB_TIMER_H
#define LIB_TIMER_H

#include <SupportDefs.h>

class LibTimer
{
public:
	LibTimer();
	~LibTimer();

	void Start();
	// Seconds since the last Start; may be asked again, always from that Start.
	float Stop();

private:
	bigtime_t fStart;
	bigtime_t fStop;
};

#endif // LIB_TIMER_H
