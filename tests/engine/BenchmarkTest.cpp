#include "engine/Benchmark.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <mutex>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <Looper.h>
#include <Message.h>
#include <Messenger.h>
#include <PlatformTest.h>
#include <Rect.h>

#include "CommandOutput.h"
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
		const char* text = nullptr;
		if (message->what == kMsgBenchmarkStatus && message->FindString("status", &text) == B_OK) {
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

// The processors switched on and off, in order.
typedef std::vector<std::pair<int32, bool>> CpuCalls;
std::mutex sCallsLock;
CpuCalls sCalls;

status_t
RecordCpuState(int32 cpu, bool enabled)
{
	std::lock_guard<std::mutex> guard(sCallsLock);
	sCalls.push_back({cpu, enabled});
	return B_OK;
}

class BenchmarkTest : public testing::Test
{
protected:
	void SetUp() override
	{
		BRect screen(0, 0, 1023, 767);
		platform_set_screen(&screen, B_CMAP8);
		platform_set_cpu_state_hook(&RecordCpuState);
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
		EXPECT_EQ(rmdir(fTemp.c_str()), 0) << "files left behind in " << fTemp;
	}

	// Runs the worker on its thread, as the main window does, on a machine of
	// cpus processors; answers the processor switches it made.
	CpuCalls RunWorker(Benchmark& benchmark, Received& received, int32 cpus = 1)
	{
		system_info info;
		EXPECT_EQ(get_system_info(&info), B_OK);
		info.cpu_count = cpus;
		platform_set_system_info(&info);
		{
			std::lock_guard<std::mutex> guard(sCallsLock);
			sCalls.clear();
		}

		Collector* collector = new Collector(&received);
		collector->Run();
		benchmark.Go("benchmark", new BMessenger(collector), 20);
		{
			std::unique_lock<std::mutex> wait(received.lock);
			EXPECT_TRUE(received.changed.wait_for(wait, std::chrono::seconds(120),
			                                      [&] { return received.completed; }));
		}
		EXPECT_TRUE(collector->Lock());
		collector->Quit();
		std::lock_guard<std::mutex> guard(sCallsLock);
		return sCalls;
	}

	std::string fTemp;
};


TEST(BenchmarkKernelTest, KernelsDoTheirFixedWork)
{
	EXPECT_EQ(Benchmark::Ackerman(0, 0), 1);
	EXPECT_EQ(Benchmark::Ackerman(1, 0), 2);
	EXPECT_EQ(Benchmark::Ackerman(2, 3), 9);
	EXPECT_EQ(Benchmark::Ackerman(3, 3), 61);

	EXPECT_DOUBLE_EQ(Benchmark::Savage(0), 1.0);
	EXPECT_NEAR(Benchmark::Savage(1), 2.0, 1e-12);
	EXPECT_NEAR(Benchmark::Savage(300000), 300001.0, 300001.0 * 1e-6);

	// The sieve stops at the first check at five seconds or more.
	EXPECT_TRUE(Benchmark::SieveGoesOn(-1));
	EXPECT_TRUE(Benchmark::SieveGoesOn(4999999));
	EXPECT_FALSE(Benchmark::SieveGoesOn(5000000));

	// One sieve pass: 3i + 3 <= 8190 up to i = 2729; the flag of i itself is
	// cleared, never a multiple, and every flag is set again before the pass.
	std::vector<uint8> flags(Benchmark::kSieveFlags, 7);
	flags[4000] = 0;
	Benchmark::SievePass(flags.data());
	for (int32 i = 0; i < Benchmark::kSieveFlags; i++)
		ASSERT_EQ(flags[i], i <= 2729 ? 0 : 1) << "flag " << i;
}


// Where a kernel's loop sits against the cache lines moves its time by a
// third on some processors; every program that links the kernels must place
// them alike.
TEST(BenchmarkKernelTest, KernelsStartOnACacheLine)
{
	const std::pair<const char*, uintptr_t> kernels[] = {
	    {"Ackerman", reinterpret_cast<uintptr_t>(&Benchmark::Ackerman)},
	    {"AckermanLoops", reinterpret_cast<uintptr_t>(&Benchmark::AckermanLoops)},
	    {"CopyStrings", reinterpret_cast<uintptr_t>(&Benchmark::CopyStrings)},
	    {"CompareStrings", reinterpret_cast<uintptr_t>(&Benchmark::CompareStrings)},
	    {"AllocateBlocks", reinterpret_cast<uintptr_t>(&Benchmark::AllocateBlocks)},
	    {"Savage", reinterpret_cast<uintptr_t>(&Benchmark::Savage)},
	    {"SievePass", reinterpret_cast<uintptr_t>(&Benchmark::SievePass)},
	};
	for (const auto& [name, address] : kernels)
		EXPECT_EQ(address % 64, 0u) << name;
}


int32
SpinUntilCleared(void* data)
{
	while (static_cast<std::atomic<bool>*>(data)->load())
		;
	return 0;
}


// A thread is passed once seen alive and off the processor: finished, or
// suspended and never resumed; the wait holds while one runs.
TEST(BenchmarkKernelTest, WhetstoneWaitPassesThreadsOffTheProcessorOnly)
{
	std::atomic<bool> spinning(true);
	thread_id all[5];
	for (int i = 0; i < 3; i++) {
		all[i] = spawn_thread([](void*) -> int32 { return 0; }, "finisher", 100, nullptr);
		resume_thread(all[i]);
	}
	all[3] = spawn_thread([](void*) -> int32 { return 0; }, "sleeper", 100, nullptr);
	all[4] = spawn_thread(&SpinUntilCleared, "spinner", 100, &spinning);
	resume_thread(all[4]);

	std::atomic<bool> done(false);
	std::thread waiter([&] {
		Benchmark::WaitForThreads(all, 5);
		done = true;
	});
	std::this_thread::sleep_for(std::chrono::milliseconds(200));
	EXPECT_FALSE(done.load());
	spinning = false;
	for (int i = 0; i < 500 && !done; i++)
		std::this_thread::sleep_for(std::chrono::milliseconds(10));
	EXPECT_TRUE(done.load());
	resume_thread(all[3]);
	waiter.join();
	status_t exitValue;
	for (thread_id thread : all)
		wait_for_thread(thread, &exitValue);
}


// Each configuration from the most processors down to one is measured, at
// most eight; every processor but the first is switched off highest first and
// on again at the end.
TEST_F(BenchmarkTest, EveryProcessorConfigurationIsMeasuredOnce)
{
	const struct {
		int32 cpus;
		int32 test;
		const char* name;
	} cases[] = {{1, Benchmark::kAckerman, "Ackerman"},
	             {4, Benchmark::kAckerman, "Ackerman"},
	             {10, Benchmark::kSavage, "Savage"},
	             {2, -1, nullptr}};
	for (const auto& testCase : cases) {
		SCOPED_TRACE(testCase.cpus);
		Benchmark benchmark;
		if (testCase.name != nullptr)
			benchmark.SetTest(testCase.test, true);
		Received received;
		const CpuCalls calls = RunWorker(benchmark, received, testCase.cpus);

		const int32 measured = std::min(testCase.cpus, 8);
		std::vector<std::string> statuses;
		for (int32 cpu = measured; cpu >= 1 && testCase.name != nullptr; cpu--) {
			statuses.push_back(std::string("Testing ") + testCase.name + " (cpu " +
			                   std::to_string(cpu) + "/" + std::to_string(measured) + ")");
		}
		EXPECT_EQ(received.statuses, statuses);
		EXPECT_EQ(received.status, 0);
		CpuCalls expected;
		for (int32 cpu = testCase.cpus - 1; cpu >= 1; cpu--)
			expected.push_back({cpu, false});
		for (int32 cpu = testCase.cpus - 1; cpu >= 1; cpu--)
			expected.push_back({cpu, true});
		EXPECT_EQ(calls, expected);

		Results& results = benchmark.RunResults();
		EXPECT_GE(results.Devices().Size(), 1) << "the screen line is always there";
		ASSERT_EQ(results.Size(), testCase.name != nullptr ? 1 : 0);
		if (testCase.name != nullptr) {
			EXPECT_EQ(results.Get(0L)->Index(), testCase.test == Benchmark::kSavage ? 300 : 400);
			EXPECT_EQ(results.Get(0L)->Count(), measured);
		}
	}
}


TEST_F(BenchmarkTest, LifeCycleRunsBeforeInputOutputAndLeavesNothing)
{
	Benchmark benchmark;
	benchmark.SetTest(Benchmark::kFileIO, true);
	benchmark.SetTest(Benchmark::kFileLifeCycle, true);
	Received received;
	RunWorker(benchmark, received);

	EXPECT_EQ(received.statuses, (std::vector<std::string>{"Testing Disk LifeCycle (cpu 1/1)",
	                                                       "Testing Disk Input/Output (cpu 1/1)"}));
	Results& results = benchmark.RunResults();
	ASSERT_EQ(results.Size(), 4);
	const int32 indices[4] = {900, 901, 800, 801};
	for (int32 i = 0; i < 4; i++) {
		EXPECT_EQ(results.Get(i)->Index(), indices[i]);
		EXPECT_STREQ(results.Get(i)->Units(), i < 2 ? "files/second" : "KB/sec");
		EXPECT_EQ(results.Get(i)->NbrCycles(), i < 2 ? 1000 : 40000);
	}
}


TEST_F(BenchmarkTest, DiskTestsInAMissingDirectoryReportAndGoOn)
{
	// A plain file where the directory should be: no one can create in it,
	// not even root.
	const std::string notADirectory = fTemp + "/plain";
	fclose(fopen(notADirectory.c_str(), "w"));

	for (const std::string& directory : {fTemp + "/missing", notADirectory}) {
		platform_set_directory(B_COMMON_TEMP_DIRECTORY, directory.c_str());
		Benchmark benchmark;
		testing::internal::CaptureStderr();
		benchmark.RunFileIO();
		const std::string path = directory + "/quickstep_io_test";
		EXPECT_EQ(testing::internal::GetCapturedStderr(),
		          "Error writing <" + path + ">\nError reading <" + path + ">\n");
		EXPECT_EQ(benchmark.RunResults().Size(), 0);

		// The life-cycle metrics are made whatever happened to the files.
		benchmark.RunFileLifeCycle();
		ASSERT_EQ(benchmark.RunResults().Size(), 2);
		EXPECT_EQ(benchmark.RunResults().Get(0L)->Index(), 900);
		EXPECT_EQ(benchmark.RunResults().Get(1L)->Index(), 901);
	}
	unlink(notADirectory.c_str());
}


TEST_F(BenchmarkTest, GraphicsRunsOnlyThroughTheInstalledTest)
{
	static std::atomic<int> calls;
	calls = 0;
	for (bool installed : {false, true}) {
		SCOPED_TRACE(installed);
		Benchmark::SetGraphicsTest(installed ? [](Results& results) {
			calls++;
			results.NewTest("Graphics Lines Flushed", 10000)->Time(1.0f);
		} : Benchmark::GraphicsTest(nullptr));
		Benchmark benchmark;
		benchmark.SetTest(Benchmark::kGraphics, true);
		Received received;
		RunWorker(benchmark, received);
		EXPECT_EQ(received.statuses, std::vector<std::string>{"Testing Graphics (cpu 1/1)"});
		EXPECT_EQ(calls.load(), installed ? 1 : 0);
		ASSERT_EQ(benchmark.RunResults().Size(), installed ? 1 : 0);
	}
	Benchmark::SetGraphicsTest(nullptr);
}

} // namespace


// Repeated: each configuration runs the test as often as asked, every sample
// is kept, and the record holds one time per configuration, the median.
TEST_F(BenchmarkTest, RepeatedTestsRecordTheMedianOfTheirSamples)
{
	Benchmark benchmark;
	benchmark.SetTest(Benchmark::kStrings, true);
	benchmark.SetRepeats(3, 0, 3);
	Received received;
	RunWorker(benchmark, received, 2);

	// One status line per test and configuration, as in a plain run.
	EXPECT_EQ(received.statuses.size(), 2u);
	Results& results = benchmark.RunResults();
	ASSERT_EQ(results.Size(), 2);
	// The strings metrics count characters of the text.
	const char* names[2] = {"Strings Copy", "Strings Compare"};
	for (int32 i = 0; i < 2; i++) {
		Metric* metric = results.Get(i);
		EXPECT_STREQ(metric->Description(), names[i]);
		EXPECT_EQ(metric->Index(), 100 + i);
		EXPECT_STREQ(metric->Units(), "MegaChars/sec");
		ASSERT_EQ(metric->Count(), 2);
		EXPECT_EQ(metric->NbrCycles(), 135);
		for (int32 position = 0; position < 2; position++) {
			const auto& samples = benchmark.Samples().Of(metric->Description(), position);
			ASSERT_EQ(samples.size(), 3u);
			std::vector<float> seconds;
			for (const auto& sample : samples)
				seconds.push_back(sample.seconds);
			std::sort(seconds.begin(), seconds.end());
			EXPECT_EQ(metric->TimeAt(position), seconds[1]);
			EXPECT_GT(seconds[0], 0.0f);
		}
	}

	// A spread limit no run can meet ends at the bound, in every
	// configuration.
	Benchmark bounded;
	bounded.SetTest(Benchmark::kAckerman, true);
	bounded.SetRepeats(2, 1e-9, 4);
	Received again;
	RunWorker(bounded, again, 2);
	for (int32 position = 0; position < 2; position++) {
		const size_t taken = bounded.Samples().Of("Ackerman", position).size();
		// Two equal times in a row would settle it early: rare, and allowed.
		if (taken < 4)
			EXPECT_LE(bounded.Samples().RateSpread("Ackerman", position).cv, 1e-9);
		else
			EXPECT_EQ(taken, 4u);
	}
	EXPECT_EQ(bounded.RunResults().Get(0L)->Count(), 2);
}


// The temporary directory is shared: a link planted under a disk test's file
// name is never written through, for the large file and the small ones alike.
TEST_F(BenchmarkTest, DiskTestsNeverWriteThroughAPlantedLink)
{
	const std::string target = fTemp + "/target";
	std::ofstream(target) << "precious";
	const std::string io = fTemp + "/quickstep_io_test";
	const std::string small = fTemp + "/quickstep_lc_test.7";
	ASSERT_EQ(0, symlink(target.c_str(), io.c_str()));
	ASSERT_EQ(0, symlink(target.c_str(), small.c_str()));

	Benchmark benchmark;
	testing::internal::CaptureStderr();
	benchmark.RunFileIO();
	EXPECT_EQ(testing::internal::GetCapturedStderr(),
	          "Error writing <" + io + ">\nError reading <" + io + ">\n");
	benchmark.RunFileLifeCycle();
	EXPECT_EQ(benchmark.RunResults().Size(), 2);

	EXPECT_EQ(FileText(target), "precious");
	// The deletion pass removes the planted small link (never its target);
	// the large file's link is not the test's to remove.
	struct stat status;
	EXPECT_NE(lstat(small.c_str(), &status), 0);
	EXPECT_EQ(unlink(io.c_str()), 0);
	EXPECT_EQ(unlink(target.c_str()), 0);
}
