#include <OS.h>
#include <PlatformTest.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace {

const bigtime_t kPatience = 2000000;

template <typename Predicate>
bool
WaitUntil(Predicate predicate, bigtime_t timeout = kPatience)
{
	bigtime_t deadline = system_time() + timeout;
	while (!predicate()) {
		if (system_time() > deadline)
			return false;
		snooze(200);
	}
	return true;
}


thread_state
StateOf(thread_id thread)
{
	thread_info info;
	if (get_thread_info(thread, &info) != B_OK)
		return static_cast<thread_state>(0);
	return info.state;
}


struct Busy {
	std::atomic<long> counter{0};
	std::atomic<bool> stop{false};
	std::atomic<bool> throughLayer{false};
};


int32
BusyLoop(void* data)
{
	Busy* busy = static_cast<Busy*>(data);
	thread_info info;
	while (!busy->stop.load()) {
		if (busy->throughLayer.load())
			get_thread_info(find_thread(nullptr), &info);
		busy->counter++;
	}
	return 11;
}


struct Sleeper {
	std::atomic<bool> unwound{false};
	std::atomic<bool> wokeNormally{false};
};


// Marks its sleeper when destroyed: shows that a killed thread's stack unwound.
struct Sentinel {
	explicit Sentinel(Sleeper* sleeper) : fSleeper(sleeper) {}
	~Sentinel() { fSleeper->unwound = true; }
	Sleeper* fSleeper;
};


int32
SleepLong(void* data)
{
	Sleeper* sleeper = static_cast<Sleeper*>(data);
	Sentinel sentinel(sleeper);
	snooze(30000000);
	sleeper->wokeNormally = true;
	return 0;
}


std::atomic<int> ran;

int32
CountRun(void*)
{
	ran++;
	return 3;
}


std::atomic<int> niceInside{-100};

int32
RecordNice(void*)
{
	niceInside = getpriority(PRIO_PROCESS, 0);
	return 0;
}


void
ExpectCounterFrozen(const Busy& busy)
{
	long before = busy.counter.load();
	snooze(50000);
	EXPECT_EQ(before, busy.counter.load());
}


void
ExpectCounterMoves(const Busy& busy)
{
	long before = busy.counter.load();
	EXPECT_TRUE(WaitUntil([&] { return busy.counter.load() > before + 1000; }));
}

} // namespace


TEST(ThreadTest, SpawnedThreadWaitsAtGateUntilResumedOrKilled)
{
	ran = 0;
	thread_id thread = spawn_thread(CountRun, "gate test", B_NORMAL_PRIORITY, nullptr);
	ASSERT_GT(thread, 0);

	thread_info info;
	ASSERT_EQ(B_OK, get_thread_info(thread, &info));
	EXPECT_EQ(thread, info.thread);
	EXPECT_STREQ("gate test", info.name);
	EXPECT_EQ(B_THREAD_SUSPENDED, info.state);
	EXPECT_EQ(B_NORMAL_PRIORITY, info.priority);
	snooze(20000);
	EXPECT_EQ(0, ran.load());
	// Suspending a thread at its gate leaves it there.
	EXPECT_EQ(B_OK, suspend_thread(thread));
	EXPECT_EQ(B_THREAD_SUSPENDED, StateOf(thread));

	EXPECT_EQ(B_OK, resume_thread(thread));
	status_t exitValue = -1;
	EXPECT_EQ(B_OK, wait_for_thread(thread, &exitValue));
	EXPECT_EQ(3, exitValue);
	EXPECT_EQ(1, ran.load());

	// Killed at its gate, a thread never runs its body.
	thread = spawn_thread(CountRun, "killed at gate", B_NORMAL_PRIORITY, nullptr);
	EXPECT_EQ(B_OK, kill_thread(thread));
	EXPECT_EQ(B_BAD_THREAD_ID, resume_thread(thread));
	EXPECT_EQ(B_BAD_THREAD_ID, wait_for_thread(thread, nullptr));
	snooze(10000);
	EXPECT_EQ(1, ran.load());
}


TEST(ThreadTest, WaitForThreadStartsNeverResumedThreadAndReapsIt)
{
	thread_id thread = spawn_thread([](void*) -> int32 { return 42; }, "never resumed",
	                                B_URGENT_PRIORITY, nullptr);
	ASSERT_GT(thread, 0);
	status_t exitValue = 0;
	ASSERT_EQ(B_OK, wait_for_thread(thread, &exitValue));
	EXPECT_EQ(42, exitValue);

	thread_info info;
	EXPECT_EQ(B_BAD_THREAD_ID, get_thread_info(thread, &info));
	EXPECT_EQ(B_BAD_THREAD_ID, wait_for_thread(thread, &exitValue));
	EXPECT_EQ(B_BAD_THREAD_ID, resume_thread(thread));
}


TEST(ThreadTest, FinishedThreadStaysKnownAndNotRunningUntilReaped)
{
	thread_id thread =
	    spawn_thread([](void*) -> int32 { return 9; }, "finishes early", 100, nullptr);
	ASSERT_GT(thread, 0);
	ASSERT_EQ(B_OK, resume_thread(thread));

	// The polling rule of the threaded benchmark: wait until the call
	// succeeds and the thread is not running.
	thread_info info;
	ASSERT_TRUE(WaitUntil(
	    [&] { return get_thread_info(thread, &info) == B_OK && info.state != B_THREAD_RUNNING; }));
	EXPECT_EQ(B_THREAD_WAITING, info.state);
	EXPECT_STREQ("finishes early", info.name);
	snooze(5000);
	ASSERT_EQ(B_OK, get_thread_info(thread, &info));
	EXPECT_EQ(B_THREAD_WAITING, info.state);

	// Finished: not live for the name search, nothing to resume, suspend or
	// kill, yet its exit value waits for the reaper.
	EXPECT_EQ(B_NAME_NOT_FOUND, find_thread("finishes early"));
	EXPECT_EQ(B_BAD_THREAD_STATE, resume_thread(thread));
	EXPECT_EQ(B_BAD_THREAD_STATE, suspend_thread(thread));
	EXPECT_EQ(B_BAD_THREAD_ID, kill_thread(thread));
	status_t exitValue = 0;
	EXPECT_EQ(B_OK, wait_for_thread(thread, &exitValue));
	EXPECT_EQ(9, exitValue);
	EXPECT_EQ(B_BAD_THREAD_ID, get_thread_info(thread, &info));
}


TEST(ThreadTest, StatesFollowBlockingCalls)
{
	static Sleeper sleeping; // outlives the test if it stops early
	thread_id sleeper = spawn_thread(SleepLong, "sleeper", B_NORMAL_PRIORITY, &sleeping);
	thread_id waiter = spawn_thread(
	    [](void* data) -> int32 {
		    status_t value = 0;
		    return wait_for_thread(*static_cast<thread_id*>(data), &value);
	    },
	    "waiter", B_NORMAL_PRIORITY, &sleeper);
	ASSERT_GT(sleeper, 0);
	ASSERT_GT(waiter, 0);
	ASSERT_EQ(B_OK, resume_thread(sleeper));
	ASSERT_EQ(B_OK, resume_thread(waiter));

	EXPECT_TRUE(WaitUntil([&] { return StateOf(sleeper) == B_THREAD_ASLEEP; }));
	EXPECT_TRUE(WaitUntil([&] { return StateOf(waiter) == B_THREAD_WAITING; }));
	thread_info self;
	ASSERT_EQ(B_OK, get_thread_info(find_thread(nullptr), &self));
	EXPECT_EQ(B_THREAD_RUNNING, self.state);

	// The waiter learns that its thread went away.
	EXPECT_EQ(B_OK, kill_thread(sleeper));
	status_t waiterResult = 0;
	EXPECT_EQ(B_OK, wait_for_thread(waiter, &waiterResult));
	EXPECT_EQ(B_BAD_THREAD_ID, waiterResult);
	EXPECT_TRUE(WaitUntil([&] { return sleeping.unwound.load(); }));
}


TEST(ThreadTest, SuspendStopsBusyThreadUntilResumed)
{
	for (bool throughLayer : {false, true}) {
		SCOPED_TRACE(throughLayer ? "busy in layer calls" : "busy in own code");
		Busy busy;
		busy.throughLayer = throughLayer;
		thread_id thread = spawn_thread(BusyLoop, "busy", B_NORMAL_PRIORITY, &busy);
		ASSERT_GT(thread, 0);
		ASSERT_EQ(B_OK, resume_thread(thread));
		ExpectCounterMoves(busy);

		ASSERT_EQ(B_OK, suspend_thread(thread));
		EXPECT_EQ(B_THREAD_SUSPENDED, StateOf(thread));
		ExpectCounterFrozen(busy);
		// A second suspension changes nothing; one resume lifts it.
		EXPECT_EQ(B_OK, suspend_thread(thread));
		EXPECT_EQ(B_OK, resume_thread(thread));
		ExpectCounterMoves(busy);
		EXPECT_EQ(B_BAD_THREAD_STATE, resume_thread(thread));

		// Again, to catch a stale wake-up left from the first round.
		ASSERT_EQ(B_OK, suspend_thread(thread));
		ExpectCounterFrozen(busy);
		ASSERT_EQ(B_OK, resume_thread(thread));
		ExpectCounterMoves(busy);

		busy.stop = true;
		status_t exitValue = 0;
		EXPECT_EQ(B_OK, wait_for_thread(thread, &exitValue));
		EXPECT_EQ(11, exitValue);
	}
}


TEST(ThreadTest, ThreadSuspendingItselfContinuesWhenResumed)
{
	static std::atomic<bool> passed;
	passed = false;
	thread_id thread = spawn_thread(
	    [](void*) -> int32 {
		    suspend_thread(find_thread(nullptr));
		    passed = true;
		    return 7;
	    },
	    "self suspender", B_NORMAL_PRIORITY, nullptr);
	ASSERT_EQ(B_OK, resume_thread(thread));
	// Started, then suspended by its own hand.
	ASSERT_TRUE(WaitUntil([&] { return StateOf(thread) == B_THREAD_SUSPENDED; }));
	snooze(10000);
	EXPECT_FALSE(passed.load());
	EXPECT_EQ(B_OK, resume_thread(thread));
	status_t exitValue = 0;
	EXPECT_EQ(B_OK, wait_for_thread(thread, &exitValue));
	EXPECT_EQ(7, exitValue);
	EXPECT_TRUE(passed.load());
}


TEST(ThreadTest, KillEndsSleepingThreadAndUnwindsItsStack)
{
	Sleeper sleeper;
	thread_id thread = spawn_thread(SleepLong, "killed sleeper", B_NORMAL_PRIORITY, &sleeper);
	ASSERT_EQ(B_OK, resume_thread(thread));
	ASSERT_TRUE(WaitUntil([&] { return StateOf(thread) == B_THREAD_ASLEEP; }));

	EXPECT_EQ(B_OK, kill_thread(thread));
	EXPECT_TRUE(WaitUntil([&] { return sleeper.unwound.load(); }));
	EXPECT_FALSE(sleeper.wokeNormally.load());
	thread_info info;
	EXPECT_EQ(B_BAD_THREAD_ID, get_thread_info(thread, &info));
	EXPECT_EQ(B_BAD_THREAD_ID, wait_for_thread(thread, nullptr));
	EXPECT_EQ(B_BAD_THREAD_ID, kill_thread(thread));
}


TEST(ThreadTest, KilledThreadThatNeverBlocksIsUnreachable)
{
	Busy busy;
	thread_id thread = spawn_thread(BusyLoop, "unstoppable", B_NORMAL_PRIORITY, &busy);
	ASSERT_EQ(B_OK, resume_thread(thread));
	ExpectCounterMoves(busy);
	EXPECT_EQ(B_OK, kill_thread(thread));

	thread_info info;
	EXPECT_EQ(B_BAD_THREAD_ID, get_thread_info(thread, &info));
	EXPECT_EQ(B_BAD_THREAD_ID, suspend_thread(thread));
	EXPECT_EQ(B_BAD_THREAD_ID, set_thread_priority(thread, 5));
	EXPECT_EQ(B_NAME_NOT_FOUND, find_thread("unstoppable"));
	// Its body still runs; when it returns it must not come back as finished.
	ExpectCounterMoves(busy);
	busy.stop = true;
	snooze(10000);
	EXPECT_EQ(B_BAD_THREAD_ID, get_thread_info(thread, &info));
}


TEST(ThreadTest, KilledSuspendedThreadStaysStopped)
{
	// Leaked: the thread stays parked after this test.
	Busy& busy = *new Busy;
	thread_id thread = spawn_thread(BusyLoop, "parked for good", B_NORMAL_PRIORITY, &busy);
	ASSERT_EQ(B_OK, resume_thread(thread));
	ExpectCounterMoves(busy);
	ASSERT_EQ(B_OK, suspend_thread(thread));
	EXPECT_EQ(B_OK, kill_thread(thread));
	EXPECT_EQ(B_BAD_THREAD_ID, resume_thread(thread));
	ExpectCounterFrozen(busy);
}


TEST(ThreadTest, BadIdsAndArgumentsAreRefused)
{
	thread_info info;
	for (thread_id bad : {0, -1, -5, 0x7ffffff0}) {
		EXPECT_EQ(B_BAD_THREAD_ID, resume_thread(bad));
		EXPECT_EQ(B_BAD_THREAD_ID, suspend_thread(bad));
		EXPECT_EQ(B_BAD_THREAD_ID, kill_thread(bad));
		EXPECT_EQ(B_BAD_THREAD_ID, wait_for_thread(bad, nullptr));
		EXPECT_EQ(B_BAD_THREAD_ID, get_thread_info(bad, &info));
		EXPECT_EQ(B_BAD_THREAD_ID, set_thread_priority(bad, 10));
	}
	EXPECT_EQ(B_BAD_VALUE, spawn_thread(nullptr, "no body", 10, nullptr));
	EXPECT_EQ(B_BAD_VALUE, get_thread_info(find_thread(nullptr), nullptr));
	EXPECT_EQ(B_NAME_NOT_FOUND, find_thread("no thread has this name"));

	// The main thread is known but belongs to nobody who could reap it.
	thread_id self = find_thread(nullptr);
	EXPECT_EQ(B_NOT_ALLOWED, kill_thread(self));
	EXPECT_EQ(B_NOT_ALLOWED, wait_for_thread(self, nullptr));
}


TEST(ThreadTest, OwnIdsForThreadsNotSpawnedHere)
{
	thread_id self = find_thread(nullptr);
	ASSERT_GT(self, 0);
	EXPECT_EQ(self, find_thread(nullptr));

	thread_id other = 0;
	std::thread plain([&] { other = find_thread(nullptr); });
	plain.join();
	ASSERT_GT(other, 0);
	EXPECT_NE(self, other);
	// Gone with its thread.
	thread_info info;
	EXPECT_EQ(B_BAD_THREAD_ID, get_thread_info(other, &info));

	static std::atomic<thread_id> seen{0};
	thread_id spawned = spawn_thread(
	    [](void*) -> int32 {
		    seen = find_thread(nullptr);
		    return 0;
	    },
	    "asks its id", B_NORMAL_PRIORITY, nullptr);
	EXPECT_EQ(spawned, find_thread("asks its id"));
	ASSERT_EQ(B_OK, wait_for_thread(spawned, nullptr));
	EXPECT_EQ(spawned, seen.load());
}


TEST(ThreadTest, ManySpawnsKeepIdsFreshAndRegistryBounded)
{
	thread_id last = find_thread(nullptr);
	for (int i = 0; i < 300; i++) {
		thread_id thread = spawn_thread(
		    [](void* data) -> int32 {
			    return static_cast<int32>(reinterpret_cast<intptr_t>(data));
		    },
		    "many", B_NORMAL_PRIORITY, reinterpret_cast<void*>(static_cast<intptr_t>(i)));
		ASSERT_GT(thread, last);
		last = thread;
		status_t exitValue = -1;
		ASSERT_EQ(B_OK, wait_for_thread(thread, &exitValue));
		ASSERT_EQ(i, exitValue);
	}

	// Finished threads nobody waits for: the oldest are forgotten first.
	platform_set_finished_thread_limit(4);
	std::vector<thread_id> threads;
	for (int i = 0; i < 7; i++) {
		thread_id thread =
		    spawn_thread([](void*) -> int32 { return 1; }, "unreaped", B_NORMAL_PRIORITY, nullptr);
		ASSERT_GT(thread, 0);
		ASSERT_EQ(B_OK, resume_thread(thread));
		ASSERT_TRUE(WaitUntil([&] { return StateOf(thread) == B_THREAD_WAITING; }));
		threads.push_back(thread);
	}
	platform_set_finished_thread_limit(0);
	thread_info info;
	for (int i = 0; i < 7; i++)
		EXPECT_EQ(i < 3 ? status_t(B_BAD_THREAD_ID) : status_t(B_OK),
		          get_thread_info(threads[i], &info))
		    << i;
	for (int i = 3; i < 7; i++)
		EXPECT_EQ(B_OK, wait_for_thread(threads[i], nullptr));
}


TEST(ThreadTest, LowPriorityRaisesNiceValue)
{
	errno = 0;
	int baseNice = getpriority(PRIO_PROCESS, 0);
	ASSERT_EQ(0, errno);

	thread_id thread = spawn_thread(RecordNice, "low", B_NORMAL_PRIORITY, nullptr);
	EXPECT_EQ(B_NORMAL_PRIORITY, set_thread_priority(thread, B_LOW_PRIORITY));
	thread_info info;
	ASSERT_EQ(B_OK, get_thread_info(thread, &info));
	EXPECT_EQ(B_LOW_PRIORITY, info.priority);
	ASSERT_EQ(B_OK, wait_for_thread(thread, nullptr));
	if (baseNice < 19) {
		EXPECT_GT(niceInside.load(), baseNice);
	}
	// The caller's own nice value is untouched.
	EXPECT_EQ(baseNice, getpriority(PRIO_PROCESS, 0));

	thread = spawn_thread(RecordNice, "high", B_REAL_TIME_PRIORITY, nullptr);
	ASSERT_EQ(B_OK, wait_for_thread(thread, nullptr));
	EXPECT_EQ(baseNice, niceInside.load());
}


TEST(ThreadTest, SnoozeSleepsAtLeastItsTimeOnMonotonicClock)
{
	bigtime_t start = system_time();
	EXPECT_EQ(B_OK, snooze(20000));
	bigtime_t end = system_time();
	EXPECT_GE(end - start, 20000);
	EXPECT_EQ(B_OK, snooze(0));
	EXPECT_GE(system_time(), end);
}
