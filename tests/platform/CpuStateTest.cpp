#include <cstring>
#include <future>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <pthread.h>
#include <sched.h>

#include <OS.h>
#include <PlatformTest.h>

namespace {

class CpuStateTest : public testing::Test
{
protected:
	void SetUp() override
	{
		ASSERT_EQ(0, sched_getaffinity(0, sizeof(fSaved), &fSaved));
		system_info info;
		ASSERT_EQ(B_OK, get_system_info(&info));
		fCount = info.cpu_count;
	}
	void TearDown() override
	{
		platform_set_cpu_state_hook(nullptr);
		platform_set_system_info(nullptr);
		sched_setaffinity(0, sizeof(fSaved), &fSaved);
	}

	cpu_set_t fSaved;
	int32 fCount = 0;
};

bool
ThreadHas(pthread_t thread, int id)
{
	cpu_set_t mask;
	EXPECT_EQ(0, pthread_getaffinity_np(thread, sizeof(mask), &mask));
	return CPU_ISSET(id, &mask);
}

TEST_F(CpuStateTest, OffRestrictsEveryThreadAndOnRestoresThem)
{
	if (fCount < 2)
		GTEST_SKIP() << "one processor: nothing to switch";
	int32 last = fCount - 1;
	ASSERT_TRUE(_kget_cpu_state_(last));

	// A thread that exists before the switch and waits until told to go.
	std::promise<void> go;
	std::thread older([started = go.get_future()] { started.wait(); });

	// Find the kernel id of the last processor through the layer itself.
	cpu_set_t before;
	sched_getaffinity(0, sizeof(before), &before);
	ASSERT_EQ(B_OK, _kset_cpu_state_(last, false));
	cpu_set_t after;
	sched_getaffinity(0, sizeof(after), &after);
	EXPECT_EQ(CPU_COUNT(&before) - 1, CPU_COUNT(&after));
	int id = -1;
	for (int candidate = 0; candidate < CPU_SETSIZE; candidate++) {
		if (CPU_ISSET(candidate, &before) && !CPU_ISSET(candidate, &after))
			id = candidate;
	}
	ASSERT_GE(id, 0);
	EXPECT_FALSE(_kget_cpu_state_(last));
	EXPECT_TRUE(_kget_cpu_state_(0));
	EXPECT_FALSE(ThreadHas(older.native_handle(), id));

	bool youngerHad = true;
	std::thread younger([&] { youngerHad = ThreadHas(pthread_self(), id); });
	younger.join();
	EXPECT_FALSE(youngerHad);

	// Switching off twice changes nothing more.
	EXPECT_EQ(B_OK, _kset_cpu_state_(last, false));
	sched_getaffinity(0, sizeof(after), &after);
	EXPECT_EQ(CPU_COUNT(&before) - 1, CPU_COUNT(&after));

	ASSERT_EQ(B_OK, _kset_cpu_state_(last, true));
	EXPECT_TRUE(_kget_cpu_state_(last));
	EXPECT_TRUE(ThreadHas(pthread_self(), id));
	EXPECT_TRUE(ThreadHas(older.native_handle(), id));

	go.set_value();
	older.join();
}

TEST_F(CpuStateTest, ProcessorsOutsideTheMachineAreRefused)
{
	EXPECT_EQ(B_BAD_VALUE, _kset_cpu_state_(-1, false));
	EXPECT_EQ(B_BAD_VALUE, _kset_cpu_state_(fCount, false));
	EXPECT_EQ(B_BAD_VALUE, _kset_cpu_state_(fCount, true));
	EXPECT_FALSE(_kget_cpu_state_(fCount));
	EXPECT_FALSE(_kget_cpu_state_(-1));
	cpu_set_t now;
	sched_getaffinity(0, sizeof(now), &now);
	EXPECT_TRUE(CPU_EQUAL(&now, &fSaved));
}

TEST_F(CpuStateTest, TheLastProcessorIsNeverSwitchedOff)
{
	// Leave the process only the highest processor, then try to take it away.
	int32 last = fCount - 1;
	ASSERT_EQ(B_OK, _kset_cpu_state_(last, true));
	for (int32 cpu = 0; cpu < last; cpu++)
		ASSERT_EQ(B_OK, _kset_cpu_state_(cpu, false));
	cpu_set_t alone;
	sched_getaffinity(0, sizeof(alone), &alone);
	ASSERT_EQ(1, CPU_COUNT(&alone));

	EXPECT_EQ(B_NOT_ALLOWED, _kset_cpu_state_(last, false));
	cpu_set_t now;
	sched_getaffinity(0, sizeof(now), &now);
	EXPECT_TRUE(CPU_EQUAL(&now, &alone));
	EXPECT_TRUE(_kget_cpu_state_(last));

	for (int32 cpu = 0; cpu < last; cpu++)
		EXPECT_EQ(B_OK, _kset_cpu_state_(cpu, true));
	sched_getaffinity(0, sizeof(now), &now);
	EXPECT_EQ(fCount, CPU_COUNT(&now));
}

std::vector<std::pair<int32, bool>> sCalls;

status_t
RecordCall(int32 cpu, bool enabled)
{
	sCalls.emplace_back(cpu, enabled);
	return B_OK;
}

TEST_F(CpuStateTest, HookTakesTheChangeAndTheChosenProfileSetsTheLimit)
{
	system_info fourCpus;
	memset(&fourCpus, 0, sizeof(fourCpus));
	fourCpus.cpu_count = 4;
	platform_set_system_info(&fourCpus);
	platform_set_cpu_state_hook(RecordCall);
	sCalls.clear();

	EXPECT_EQ(B_OK, _kset_cpu_state_(3, false));
	EXPECT_EQ(B_OK, _kset_cpu_state_(3, true));
	EXPECT_EQ(B_BAD_VALUE, _kset_cpu_state_(4, false));
	ASSERT_EQ(2u, sCalls.size());
	EXPECT_EQ(std::make_pair(3, false), sCalls[0]);
	EXPECT_EQ(std::make_pair(3, true), sCalls[1]);

	cpu_set_t now;
	sched_getaffinity(0, sizeof(now), &now);
	EXPECT_TRUE(CPU_EQUAL(&now, &fSaved));
}

} // namespace
