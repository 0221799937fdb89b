#include "engine/WhetstoneThread.h"

#include <string>

#include <gtest/gtest.h>


TEST(WhetstoneThreadTest, GoLeavesNamedThreadsSuspendedUntilResumed)
{
	WhetstoneThread whetstones[10];
	thread_id threads[10];
	for (int i = 0; i < 10; i++) {
		threads[i] = whetstones[i].Go(3, i);
		ASSERT_GT(threads[i], 0);
	}
	// Nothing starts them behind the caller's back.
	snooze(20000);
	for (int i = 0; i < 10; i++) {
		thread_info info;
		ASSERT_EQ(get_thread_info(threads[i], &info), B_OK);
		EXPECT_EQ(info.name, "WhetstoneThread_" + std::to_string(i));
		EXPECT_EQ(info.priority, 100);
		EXPECT_EQ(info.state, B_THREAD_SUSPENDED);
		ASSERT_EQ(resume_thread(threads[i]), B_OK);
	}
	for (int i = 0; i < 10; i++) {
		status_t exitValue = -1;
		ASSERT_EQ(wait_for_thread(threads[i], &exitValue), B_OK) << i;
		EXPECT_EQ(exitValue, 0) << i;
	}
}
