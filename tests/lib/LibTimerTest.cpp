#include "lib/LibTimer.h"

#include <OS.h>

#include <gtest/gtest.h>

TEST(LibTimerTest, StopWithoutStartAnswersClockInSeconds)
{
	LibTimer timer;
	double before = system_time() / 1000000.0;
	double stopped = timer.Stop();
	double after = system_time() / 1000000.0;
	// A float holds the clock only to a few parts in ten million.
	EXPECT_GE(stopped, before * (1 - 1e-6));
	EXPECT_LE(stopped, after * (1 + 1e-6));
}


TEST(LibTimerTest, EveryStopMeasuresFromTheSameStart)
{
	LibTimer timer;
	timer.Start();
	snooze(10000);
	float first = timer.Stop();
	snooze(10000);
	float second = timer.Stop();
	EXPECT_GE(first, 0.010f);
	EXPECT_LT(first, 5.0f);
	EXPECT_GE(second, first + 0.010f);

	// A new Start begins again from zero.
	timer.Start();
	EXPECT_LT(timer.Stop(), second);
}
