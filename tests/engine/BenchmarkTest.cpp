#include "engine/Benchmark.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <dirent.h>
#include <mutex>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include <Looper.h>
#include <Message.h>
#include <Messenger.h>
#include <PlatformTest.h>
#include <Rect.h>

#include "results/Metric.h"
#include "results/Results.h"


namespace {

// What the worker sent, kept outside the looper, which Quit deletes.
struct Received {
	std::mutex lock;
	std::condition_variable changed;
	std::vector<std::string> statuses;
	bool completed = false;
	int32 status = -1;
};

class Collector : public BLooper
{
public:
	explicit Collector(Received* received) : BLooper("collector"), fReceived(received) {}

	void MessageReceived(BMessage* message) override
	{
		std::lock_guard<std::mutex> guard(fReceived->lock);
		if (message->what == kMsgBenchmarkStatus) {
			const char* text = nullptr;
			if (message->FindString("status", &text) == B_OK)
				fReceived->statuses.push_back(text);
		} else if (message->what == kMsgThreadCompleted) {
			message->FindInt32("status", &fReceived->status);
			fReceived->completed = true;
		} else {
			BLooper::MessageReceived(message);
		}
		fReceived->changed.notify_all();
	}

private:
	Received* fReceived;
};

struct CpuCall {
	int32 cpu;
	bool enabled;
	bool operator==(const CpuCall& other) const
	{
		return cpu == other.cpu && enabled == other.enabled;
	}
};

std::mutex sCallsLock;
std::vector<CpuCall> sCalls;

status_t
RecordCpuState(int32 cpu, bool enabled)
{
	std::lock_guard<std::mutex> guard(sCallsLock);
	sCalls.push_back({cpu, enabled});
	return B_OK;
}

std::vector<std::string>
DirectoryEntries(const std::string& path)
{
	std::vector<std::string> names;
	DIR* directory = opendir(path.c_str());
	if (directory == nullptr)
		return names;
	while (dirent* entry = readdir(directory)) {
		std::string name = entry->d_name;
		if (name != "." && name != "..")
			names.push_back(name);
	}
	closedir(directory);
	return names;
}

class BenchmarkTest : public testing::Test
{
protected:
	void SetUp() override
	{
		BRect screen(0, 0, 1023, 767);
		platform_set_screen(&screen, B_CMAP8);
		platform_set_cpu_state_hook(&RecordCpuState);
		{
			std::lock_guard<std::mutex> guard(sCallsLock);
			sCalls.clear();
		}
		char pattern[] = "/tmp/quickstep_benchmark_XXXXXX";
		ASSERT_NE(mkdtemp(pattern), nullptr);
		fTemp = pattern;
		platform_set_directory(B_COMMON_TEMP_DIRECTORY, fTemp.c_str());
	}

	void TearDown() override
	{
		platform_set_directory(B_COMMON_TEMP_DIRECTORY, nullptr);
		platform_set_cpu_state_hook(nullptr);
		platform_set_system_info(nullptr);
		platform_set_screen(nullptr, B_NO_COLOR_SPACE);
		EXPECT_TRUE(DirectoryEntries(fTemp).empty()) << "files left behind in " << fTemp;
		rmdir(fTemp.c_str());
	}

	void SetCpuCount(int32 count)
	{
		system_info info;
		ASSERT_EQ(get_system_info(&info), B_OK);
		info.cpu_count = count;
		platform_set_system_info(&info);
	}

	// Runs the worker on its thread as the main window does and collects its
	// messages until 'LThC'.
	void RunWorker(Benchmark& benchmark, Received& received)
	{
		Collector* collector = new Collector(&received);
		collector->Run();
		benchmark.Go("benchmark", new BMessenger(collector), 20);
		{
			std::unique_lock<std::mutex> guard(received.lock);
			EXPECT_TRUE(received.changed.wait_for(guard, std::chrono::seconds(120),
			                                      [&] { return received.completed; }));
		}
		ASSERT_TRUE(collector->Lock());
		collector->Quit();
	}

	std::vector<CpuCall> Calls()
	{
		std::lock_guard<std::mutex> guard(sCallsLock);
		return sCalls;
	}

	std::string fTemp;
};


TEST(BenchmarkKernelTest, AckermanAnswersTheFunctionsValues)
{
	EXPECT_EQ(Benchmark::Ackerman(0, 0), 1);
	EXPECT_EQ(Benchmark::Ackerman(1, 0), 2);
	EXPECT_EQ(Benchmark::Ackerman(2, 3), 9);
	EXPECT_EQ(Benchmark::Ackerman(3, 3), 61);
}


TEST(BenchmarkKernelTest, OneSievePassClearsOnlyTheFlagsWhoseInnerLoopRuns)
{
	std::vector<uint8> flags(Benchmark::kSieveFlags, 7);
	flags[4000] = 0;
	Benchmark::SievePass(flags.data());
	// 3i + 3 <= 8190 up to i = 2729: the flag of i itself is cleared, never a
	// multiple, and every flag is set again before the pass.
	for (int32 i = 0; i < Benchmark::kSieveFlags; i++)
		ASSERT_EQ(flags[i], i <= 2729 ? 0 : 1) << "flag " << i;
}


TEST(BenchmarkKernelTest, SieveStopsAtTheFirstCheckAtFiveSecondsOrMore)
{
	EXPECT_TRUE(Benchmark::SieveGoesOn(0));
	EXPECT_TRUE(Benchmark::SieveGoesOn(4999999));
	EXPECT_FALSE(Benchmark::SieveGoesOn(5000000));
	EXPECT_FALSE(Benchmark::SieveGoesOn(7000000));
	EXPECT_TRUE(Benchmark::SieveGoesOn(-1));
}


TEST(BenchmarkKernelTest, SavageChainAddsOneEachIteration)
{
	EXPECT_DOUBLE_EQ(Benchmark::Savage(0), 1.0);
	EXPECT_NEAR(Benchmark::Savage(1), 2.0, 1e-12);
	EXPECT_NEAR(Benchmark::Savage(300000), 300001.0, 300001.0 * 1e-6);
}


int32
ReturnAtOnce(void*)
{
	return 0;
}


int32
SpinUntilCleared(void* data)
{
	std::atomic<bool>* spinning = static_cast<std::atomic<bool>*>(data);
	while (spinning->load())
		;
	return 0;
}


TEST(BenchmarkKernelTest, WhetstoneWaitPassesFinishedAndSuspendedThreads)
{
	thread_id threads[3];
	for (thread_id& thread : threads) {
		thread = spawn_thread(&ReturnAtOnce, "finisher", 100, nullptr);
		resume_thread(thread);
	}
	// Never resumed: alive and off the processor, so it is passed too.
	thread_id suspended = spawn_thread(&ReturnAtOnce, "sleeper", 100, nullptr);
	thread_id all[4] = {threads[0], threads[1], threads[2], suspended};

	std::atomic<bool> done(false);
	std::thread waiter([&] {
		Benchmark::WaitForThreads(all, 4);
		done = true;
	});
	for (int i = 0; i < 500 && !done; i++)
		std::this_thread::sleep_for(std::chrono::milliseconds(10));
	EXPECT_TRUE(done.load());
	if (!done) {
		// Let the waiter go so the test ends.
		resume_thread(suspended);
	}
	waiter.join();
	status_t exitValue;
	resume_thread(suspended);
	for (thread_id thread : all)
		wait_for_thread(thread, &exitValue);
}


TEST(BenchmarkKernelTest, WhetstoneWaitHoldsWhileAThreadRuns)
{
	std::atomic<bool> spinning(true);
	thread_id spinner = spawn_thread(&SpinUntilCleared, "spinner", 100, &spinning);
	resume_thread(spinner);

	std::atomic<bool> done(false);
	std::thread waiter([&] {
		Benchmark::WaitForThreads(&spinner, 1);
		done = true;
	});
	std::this_thread::sleep_for(std::chrono::milliseconds(200));
	EXPECT_FALSE(done.load());
	spinning = false;
	waiter.join();
	status_t exitValue;
	wait_for_thread(spinner, &exitValue);
}


TEST_F(BenchmarkTest, StringsMetricsCountCharactersOfTheText)
{
	Benchmark benchmark;
	benchmark.RunStrings();
	Results& results = benchmark.RunResults();
	ASSERT_EQ(results.Size(), 2);
	const int32 indices[2] = {100, 101};
	const char* names[2] = {"Strings Copy", "Strings Compare"};
	for (int32 i = 0; i < 2; i++) {
		Metric* metric = results.Get(i);
		ASSERT_NE(metric, nullptr);
		EXPECT_STREQ(metric->Description(), names[i]);
		EXPECT_EQ(metric->Index(), indices[i]);
		EXPECT_EQ(metric->NbrCycles(), 135);
		EXPECT_STREQ(metric->Units(), "MegaChars/sec");
		EXPECT_EQ(metric->Count(), 1);
		EXPECT_GT(metric->TimeAt(0), 0.0f);
	}
}


TEST_F(BenchmarkTest, OneProcessorRunsOnePassWithoutSwitchingOrPause)
{
	SetCpuCount(1);
	Benchmark benchmark;
	benchmark.SetTest(Benchmark::kAckerman, true);
	Received received;
	RunWorker(benchmark, received);

	EXPECT_EQ(received.statuses, std::vector<std::string>{"Testing Ackerman (cpu 1/1)"});
	EXPECT_EQ(received.status, 0);
	EXPECT_TRUE(Calls().empty());

	Results& results = benchmark.RunResults();
	ASSERT_EQ(results.Size(), 1);
	EXPECT_EQ(results.Get(0L)->Index(), 400);
	EXPECT_EQ(results.Get(0L)->Count(), 1);
	EXPECT_GE(results.Devices().Size(), 1) << "the screen line is always there";
}


TEST_F(BenchmarkTest, FourProcessorsRunFourPassesSwitchingTheHighestOff)
{
	SetCpuCount(4);
	Benchmark benchmark;
	benchmark.SetTest(Benchmark::kAckerman, true);
	Received received;
	RunWorker(benchmark, received);

	const std::vector<std::string> statuses = {
	    "Testing Ackerman (cpu 4/4)", "Testing Ackerman (cpu 3/4)", "Testing Ackerman (cpu 2/4)",
	    "Testing Ackerman (cpu 1/4)"};
	EXPECT_EQ(received.statuses, statuses);
	const std::vector<CpuCall> calls = {{3, false}, {2, false}, {1, false},
	                                    {3, true},  {2, true},  {1, true}};
	EXPECT_EQ(Calls(), calls);

	Results& results = benchmark.RunResults();
	ASSERT_EQ(results.Size(), 1);
	EXPECT_EQ(results.Get(0L)->Count(), 4);
	EXPECT_GE(results.Devices().Size(), 1);
}


TEST_F(BenchmarkTest, NoTestSelectedStillStepsThroughTheProcessors)
{
	SetCpuCount(2);
	Benchmark benchmark;
	Received received;
	RunWorker(benchmark, received);

	EXPECT_TRUE(received.statuses.empty());
	EXPECT_TRUE(received.completed);
	const std::vector<CpuCall> calls = {{1, false}, {1, true}};
	EXPECT_EQ(Calls(), calls);
	EXPECT_EQ(benchmark.RunResults().Size(), 0);
	EXPECT_GE(benchmark.RunResults().Devices().Size(), 1);
}


TEST_F(BenchmarkTest, MoreThanEightProcessorsMeasureEightConfigurations)
{
	SetCpuCount(10);
	Benchmark benchmark;
	Received received;
	benchmark.SetTest(Benchmark::kSavage, true);
	RunWorker(benchmark, received);

	ASSERT_EQ(received.statuses.size(), 8u);
	EXPECT_EQ(received.statuses.front(), "Testing Savage (cpu 8/8)");
	EXPECT_EQ(received.statuses.back(), "Testing Savage (cpu 1/8)");
	std::vector<CpuCall> calls = {{9, false}, {8, false}};
	for (int32 cpu = 7; cpu >= 1; cpu--)
		calls.push_back({cpu, false});
	for (int32 cpu = 9; cpu >= 1; cpu--)
		calls.push_back({cpu, true});
	EXPECT_EQ(Calls(), calls);
	ASSERT_EQ(benchmark.RunResults().Size(), 1);
	EXPECT_EQ(benchmark.RunResults().Get(0L)->Count(), 8);
}


TEST_F(BenchmarkTest, LifeCycleRunsBeforeInputOutputAndLeavesNothing)
{
	SetCpuCount(1);
	Benchmark benchmark;
	benchmark.SetTest(Benchmark::kFileIO, true);
	benchmark.SetTest(Benchmark::kFileLifeCycle, true);
	Received received;
	RunWorker(benchmark, received);

	const std::vector<std::string> statuses = {"Testing Disk LifeCycle (cpu 1/1)",
	                                           "Testing Disk Input/Output (cpu 1/1)"};
	EXPECT_EQ(received.statuses, statuses);
	Results& results = benchmark.RunResults();
	ASSERT_EQ(results.Size(), 4);
	const int32 indices[4] = {900, 901, 800, 801};
	const char* units[4] = {"files/second", "files/second", "KB/sec", "KB/sec"};
	for (int32 i = 0; i < 4; i++) {
		EXPECT_EQ(results.Get(i)->Index(), indices[i]);
		EXPECT_STREQ(results.Get(i)->Units(), units[i]);
		EXPECT_EQ(results.Get(i)->NbrCycles(), i < 2 ? 1000 : 40000);
	}
}


TEST_F(BenchmarkTest, DiskTestsInAMissingDirectoryReportAndGoOn)
{
	// A plain file where the directory should be: no one can create in it,
	// not even root.
	const std::string notADirectory = fTemp + "/plain";
	FILE* plain = fopen(notADirectory.c_str(), "w");
	ASSERT_NE(plain, nullptr);
	fclose(plain);
	const std::string missing = fTemp + "/missing";

	for (const std::string& directory : {missing, notADirectory}) {
		platform_set_directory(B_COMMON_TEMP_DIRECTORY, directory.c_str());
		Benchmark benchmark;
		testing::internal::CaptureStderr();
		benchmark.RunFileIO();
		const std::string errors = testing::internal::GetCapturedStderr();
		const std::string path = directory + "/quickstep_io_test";
		EXPECT_EQ(errors, "Error writing <" + path + ">\nError reading <" + path + ">\n");
		EXPECT_EQ(benchmark.RunResults().Size(), 0);

		// The life-cycle metrics are made whatever happened to the files.
		benchmark.RunFileLifeCycle();
		ASSERT_EQ(benchmark.RunResults().Size(), 2);
		EXPECT_EQ(benchmark.RunResults().Get(0L)->Index(), 900);
		EXPECT_EQ(benchmark.RunResults().Get(1L)->Index(), 901);
	}
	unlink(notADirectory.c_str());
	platform_set_directory(B_COMMON_TEMP_DIRECTORY, fTemp.c_str());
}


TEST_F(BenchmarkTest, GraphicsRunsOnlyThroughTheInstalledTest)
{
	SetCpuCount(1);
	Benchmark benchmark;
	benchmark.SetTest(Benchmark::kGraphics, true);
	Received received;
	RunWorker(benchmark, received);
	EXPECT_EQ(received.statuses, std::vector<std::string>{"Testing Graphics (cpu 1/1)"});
	EXPECT_EQ(benchmark.RunResults().Size(), 0);

	static std::atomic<int> calls;
	calls = 0;
	Benchmark::SetGraphicsTest([](Results& results) {
		calls++;
		results.NewTest("Graphics Lines Flushed", 10000)->Time(1.0f);
	});
	Benchmark withWindow;
	withWindow.SetTest(Benchmark::kGraphics, true);
	Received again;
	RunWorker(withWindow, again);
	Benchmark::SetGraphicsTest(nullptr);
	EXPECT_EQ(calls.load(), 1);
	ASSERT_EQ(withWindow.RunResults().Size(), 1);
	EXPECT_STREQ(withWindow.RunResults().Get(0L)->Description(), "Graphics Lines Flushed");
}

} // namespace
