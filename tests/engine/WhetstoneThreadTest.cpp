#include "engine/WhetstoneThread.h"

#include <cstring>

#include <gtest/gtest.h>


TEST(WhetstoneThreadTest, GoLeavesANamedThreadSuspendedUntilResumed)
{
	WhetstoneThread whetstone;
	thread_id thread = whetstone.Go(2, 7);
	ASSERT_GT(thread, 0);

	thread_info info;
	ASSERT_EQ(get_thread_info(thread, &info), B_OK);
	EXPECT_STREQ(info.name, "WhetstoneThread_7");
	EXPECT_EQ(info.priority, 100);
	EXPECT_EQ(info.state, B_THREAD_SUSPENDED);

	// Nothing starts it behind the caller's back.
	snooze(20000);
	ASSERT_EQ(get_thread_info(thread, &info), B_OK);
	EXPECT_EQ(info.state, B_THREAD_SUSPENDED);

	ASSERT_EQ(resume_thread(thread), B_OK);
	status_t exitValue = -1;
	ASSERT_EQ(wait_for_thread(thread, &exitValue), B_OK);
	EXPECT_EQ(exitValue, 0);
}


TEST(WhetstoneThreadTest, TenThreadsPassTheDriversPollingAndExitWithZero)
{
	WhetstoneThread threads[10];
	thread_id ids[10];
	for (int i = 0; i < 10; i++) {
		ids[i] = threads[i].Go(3, i);
		ASSERT_GT(ids[i], 0);
	}
	for (int i = 0; i < 10; i++)
		ASSERT_EQ(resume_thread(ids[i]), B_OK);

	// The benchmark's wait: move on once a thread is seen alive and not on a
	// processor. A thread that has ended stays known until it is reaped, so
	// this loop ends.
	for (int i = 0; i < 10; i++) {
		thread_info info;
		while (get_thread_info(ids[i], &info) != B_OK || info.state == B_THREAD_RUNNING) {
		}
	}

	for (int i = 0; i < 10; i++) {
		status_t exitValue = -1;
		ASSERT_EQ(wait_for_thread(ids[i], &exitValue), B_OK) << i;
		EXPECT_EQ(exitValue, 0) << i;
	}
}
