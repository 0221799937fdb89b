#include "engine/Benchmark.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <unistd.h>
#include <utility>
#include <vector>

#include <FindDirectory.h>
#include <Message.h>
#include <Messenger.h>
#include <SharedFile.h>

#include "engine/Dhrystone.h"
#include "engine/FileLife.h"
#include "engine/Fourier.h"
#include "engine/MachineCheck.h"
#include "engine/Whetstone.h"
#include "engine/WhetstoneThread.h"
#include "lib/LibBuildInfo.h"
#include "lib/LibStatistics.h"
#include "results/Metric.h"

namespace {

const char* const kTestNames[Benchmark::kTestCount] = {
    "Graphics", "Strings",           "Memory",         "Savage",
    "Ackerman", "Dhrystone",         "Fourier",        "Whetstone",
    "Sieve",    "Disk Input/Output", "Disk LifeCycle",
};

const char kStringsText[] = "Quickstep tests system resources of the BeOS.";
const long kStringsLoops = 3000000;
const int32 kMemoryBlock = 512;
const long kMemoryLoops = 400000;
const long kSavageLoops = 300000;
const long kAckermanLoops = 6000;
const long kDhrystoneRuns = 1600000;
const int kFourierCycles = 100;
const long kWhetstonePasses = 1000;
const int32 kWhetstoneThreads = 10;
const size_t kDiskBlock = 4096;
const long kDiskBlocks = 10000;
const long kLifeCycleLast = 999;

// The C library's own functions, called through pointers the compiler cannot
// see through, so every iteration is a real call and never a builtin.
char* (*volatile sCopy)(char*, const char*) = strcpy;
int (*volatile sCompare)(const char*, const char*) = strcmp;

// Read before each Ackermann evaluation so it cannot be folded at compile time.
volatile int sAckermanM = 3;
volatile int sAckermanN = 3;

// Where results nobody reads go, so the kernels are not optimised away.
volatile double sDoubleSink;
volatile int32 sIntSink;

// Makes the memory at p count as read by something the compiler cannot see;
// costs no instruction.
inline void
KeepObservable(const void* p)
{
	asm volatile("" : : "r"(p) : "memory");
}

// The text's length, scanned a word at a time as far as whole words fit.
size_t
WordLength(const char* text, size_t capacity)
{
	size_t length = 0;
	for (; length + sizeof(uint32) <= capacity; length += sizeof(uint32)) {
		uint32 word;
		memcpy(&word, text + length, sizeof(word));
		if (((word - 0x01010101u) & ~word & 0x80808080u) != 0)
			break;
	}
	while (length < capacity && text[length] != '\0')
		length++;
	return length;
}

void
TempPath(const char* name, char* path, size_t size)
{
	char directory[B_PATH_NAME_LENGTH] = "";
	find_directory(B_COMMON_TEMP_DIRECTORY, 0, false, directory, sizeof(directory));
	snprintf(path, size, "%s/%s", directory, name);
}

} // namespace


Benchmark::GraphicsTest Benchmark::sGraphicsTest = nullptr;


void
Benchmark::SetGraphicsTest(GraphicsTest test)
{
	sGraphicsTest = test;
}


Benchmark::Benchmark()
    : fCurrentCpu(0), fConfigurations(0), fResults(false), fRepeat(0), fMaxCv(0), fMaxRuns(0),
      fMachineCheck(nullptr)
{
	for (bool& test : fTests)
		test = false;
}


Benchmark::~Benchmark()
{
}


void
Benchmark::SetTest(int32 position, bool run)
{
	if (position >= 0 && position < kTestCount)
		fTests[position] = run;
}


bool
Benchmark::IsTestSet(int32 position) const
{
	return position >= 0 && position < kTestCount && fTests[position];
}


const char*
Benchmark::TestName(int32 position)
{
	if (position < 0 || position >= kTestCount)
		return nullptr;
	return kTestNames[position];
}


int32
Benchmark::Action()
{
	fResults.Reset();
	fResults.SetProgram(LibBuildIdentity());
	const int32 cpus = fResults.NbrCpus();
	fConfigurations = cpus < kMaxConfigurations ? cpus : kMaxConfigurations;

	// Beyond what a metric can hold: those CPUs stay off for the whole run.
	for (int32 cpu = cpus - 1; cpu >= fConfigurations; cpu--)
		_kset_cpu_state_(cpu, false);

	fSamples.Clear();

	// The disk tests run LifeCycle before Input/Output, against their flag
	// positions; kept in this order.
	struct Step {
		int32 test;
		RunMethod run;
	};
	static const Step kRunOrder[] = {
	    {kGraphics, &Benchmark::RunGraphics}, {kStrings, &Benchmark::RunStrings},
	    {kMemory, &Benchmark::RunMemory},     {kSavage, &Benchmark::RunSavage},
	    {kAckerman, &Benchmark::RunAckerman}, {kDhrystone, &Benchmark::RunDhrystone},
	    {kFourier, &Benchmark::RunFourier},   {kWhetstone, &Benchmark::RunWhetstone},
	    {kSieve, &Benchmark::RunSieve},       {kFileLifeCycle, &Benchmark::RunFileLifeCycle},
	    {kFileIO, &Benchmark::RunFileIO},
	};

	fCurrentCpu = fConfigurations - 1;
	for (int32 pass = 0; pass < fConfigurations && fResults.CycleCpu(); pass++) {
		for (const Step& step : kRunOrder) {
			if (!fTests[step.test])
				continue;
			if (fMachineCheck != nullptr)
				fMachineCheck->Sample();
			UpdateStatus(kTestNames[step.test]);
			if (fRepeat > 0)
				RunRepeated(step.run, pass);
			else
				(this->*step.run)();
		}
		if (fCurrentCpu != 0) {
			_kset_cpu_state_(fCurrentCpu, false);
			fCurrentCpu--;
			// Lets the machine settle on one processor fewer; outside every
			// timed region.
			sleep(1);
		}
	}

	// CPU 0 is never switched off and so never switched on.
	for (fCurrentCpu = cpus - 1; fCurrentCpu > 0; fCurrentCpu--)
		_kset_cpu_state_(fCurrentCpu, true);

	fResults.FillTheseDevices();
	return 0;
}


void
Benchmark::UpdateStatus(const char* name)
{
	if (fMessenger == nullptr)
		return;
	char text[256];
	snprintf(text, sizeof(text), "Testing %s (cpu %d/%d)", name, static_cast<int>(fCurrentCpu + 1),
	         static_cast<int>(fConfigurations));
	BMessage message(kMsgBenchmarkStatus);
	message.AddString("status", text);
	fMessenger->SendMessage(&message, nullptr, B_INFINITE_TIMEOUT);
}


void
Benchmark::SetRepeats(int32 repeat, double maxCv, int32 maxRuns)
{
	fRepeat = repeat > 0 ? repeat : 0;
	fMaxCv = maxCv > 0 ? maxCv : 0;
	fMaxRuns = maxRuns > fRepeat ? maxRuns : fRepeat;
	// A plain run calibrates with one timing of the empty loop, as it always
	// has; repeated tests take the shortest of several, so that a time slice
	// lost to another program is not subtracted from the next measurement.
	fResults.SetCalibrationRuns(fRepeat > 0 ? kRepeatedCalibrationRuns : 1);
}


void
Benchmark::RunRepeated(RunMethod run, int32 position)
{
	// The metrics this test makes are those that gain a time at this position.
	std::vector<Metric*> made;
	for (int32 runs = 0;;) {
		std::vector<std::pair<Metric*, int32>> before;
		for (Metric* metric = fResults.First(); metric != nullptr; metric = fResults.Next())
			before.push_back({metric, metric->Count()});
		(this->*run)();
		runs++;

		double worst = 0;
		for (Metric* metric = fResults.First(); metric != nullptr; metric = fResults.Next()) {
			int32 countBefore = 0;
			for (const auto& entry : before) {
				if (entry.first == metric)
					countBefore = entry.second;
			}
			if (metric->Count() <= countBefore)
				continue;
			// Only the sample is kept: the median goes in once the test is done.
			fSamples.Add(metric->Description(), position, metric->TimeAt(metric->Count() - 1),
			             metric->NbrCycles());
			metric->DropTime();
			bool listed = false;
			for (Metric* other : made)
				listed = listed || other == metric;
			if (!listed)
				made.push_back(metric);
			const double cv = fSamples.RateSpread(metric->Description(), position).cv;
			if (cv > worst)
				worst = cv;
		}
		if (!LibWantsAnotherRun(runs, fRepeat, worst, fMaxCv, fMaxRuns))
			break;
		if (fMachineCheck != nullptr)
			fMachineCheck->Sample();
	}

	for (Metric* metric : made) {
		// The sieve's work differs from run to run; the others' never does.
		metric->NbrCycles(fSamples.MedianCycles(metric->Description(), position));
		metric->Time(fSamples.MedianSeconds(metric->Description(), position));
	}
}


void
Benchmark::RunGraphics()
{
	if (sGraphicsTest != nullptr)
		sGraphicsTest(fResults);
}


__attribute__((noinline)) void
Benchmark::CopyStrings(char* buffer, const char* text, long loops)
{
	char* (*copy)(char*, const char*) = sCopy;
	for (long i = 0; i < loops; i++)
		copy(buffer, text);
}


__attribute__((noinline)) void
Benchmark::CompareStrings(const char* buffer, const char* text, long loops)
{
	int (*compare)(const char*, const char*) = sCompare;
	for (long i = 0; i < loops; i++)
		compare(buffer, text);
}


void
Benchmark::RunStrings()
{
	StringsArea area;
	memcpy(area.text, kStringsText, sizeof(area.text));
	const long cycles = 3 * static_cast<long>(WordLength(area.text, sizeof(area.text)));

	Metric* metric = fResults.NewTest("Strings Copy", cycles);
	fResults.Calibrate(kStringsLoops, 0);
	fResults.StartTimer();
	CopyStrings(area.buffer, area.text, kStringsLoops);
	metric->Time(fResults.EndTimer());
	metric->Index(100);
	metric->Units("MegaChars/sec");

	metric = fResults.NewTest("Strings Compare", cycles);
	fResults.Calibrate(kStringsLoops, 0);
	fResults.StartTimer();
	CompareStrings(area.buffer, area.text, kStringsLoops);
	metric->Time(fResults.EndTimer());
	metric->Index(101);
	metric->Units("MegaChars/sec");
}


__attribute__((noinline)) void
Benchmark::AllocateBlocks(long loops)
{
	for (long i = 0; i < loops; i++) {
		char* block = new (std::nothrow) char[kMemoryBlock];
		memset(block, 0, kMemoryBlock);
		// The block's contents must be written although nobody reads them.
		KeepObservable(block);
		if (block != nullptr)
			delete[] block;
	}
}


void
Benchmark::RunMemory()
{
	Metric* metric = fResults.NewTest("Memory", 195);
	fResults.Calibrate(kMemoryLoops, 0);
	fResults.StartTimer();
	AllocateBlocks(kMemoryLoops);
	metric->Time(fResults.EndTimer());
	metric->Index(200);
	metric->Units("MB/sec");
}


__attribute__((noinline)) double
Benchmark::Savage(const long& iterations)
{
	double a = 1.0;
	for (long i = 0; i < iterations; i++) {
		// Each step rounded to double: the chain is computed in doubles.
		const double grown = exp(log(sqrt(a * a)));
		const double turned = tan(atan(grown));
		a = turned + 1.0;
	}
	return a;
}


void
Benchmark::RunSavage()
{
	Metric* metric = fResults.NewTest("Savage", 300);
	fResults.Calibrate(kSavageLoops, 0);
	fResults.StartTimer();
	sDoubleSink = Savage(kSavageLoops);
	metric->Time(fResults.EndTimer());
	metric->Index(300);
	metric->Units("KIPS");
}


// Every evaluation is a real call: the compiler may not unroll the recursion
// into itself.
__attribute__((noinline)) int32
Benchmark::Ackerman(const int& m, const int& n)
{
	int mm = m;
	int nn = n;
	// The tail call is this loop; only the inner call recurses.
	while (mm != 0) {
		if (nn != 0)
			nn = Ackerman(mm, nn - 1);
		else
			nn = 1;
		mm--;
	}
	return nn + 1;
}


__attribute__((noinline)) void
Benchmark::AckermanLoops(long loops)
{
	for (long i = 0; i < loops; i++) {
		// The outermost level of A(3, 3), evaluated here by the same rule.
		int m = sAckermanM;
		int n = sAckermanN;
		while (m != 0) {
			if (n != 0)
				n = Ackerman(m, n - 1);
			else
				n = 1;
			m--;
		}
		sIntSink = n + 1;
	}
}


void
Benchmark::RunAckerman()
{
	Metric* metric = fResults.NewTest("Ackerman", 6000);
	fResults.Calibrate(kAckermanLoops, 0);
	fResults.StartTimer();
	AckermanLoops(kAckermanLoops);
	metric->Time(fResults.EndTimer());
	metric->Index(400);
	metric->Units("IPS");
}


void
Benchmark::RunDhrystone()
{
	Dhrystone dhrystone;
	Metric* metric = fResults.NewTest("Dhrystone", kDhrystoneRuns);
	fResults.Calibrate(kDhrystoneRuns, 0);
	fResults.StartTimer();
	dhrystone.Run(kDhrystoneRuns);
	metric->Time(fResults.EndTimer());
	metric->Index(500);
	metric->Units("IPS");
}


void
Benchmark::RunFourier()
{
	Fourier fourier;
	Metric* metric = fResults.NewTest("Fourier", kFourierCycles);
	fResults.Calibrate(kFourierCycles, 0);
	fResults.StartTimer();
	fourier.Run(kFourierCycles);
	metric->Time(fResults.EndTimer());
	metric->Index(550);
	metric->Units("FLOPS");
}


void
Benchmark::WaitForThreads(const thread_id* threads, int32 count)
{
	for (int32 i = 0; i < count; i++) {
		// Passed once seen alive and off the processor: not necessarily ended.
		for (;;) {
			thread_info info;
			if (get_thread_info(threads[i], &info) == B_OK && info.state != B_THREAD_RUNNING)
				break;
		}
	}
}


void
Benchmark::RunWhetstone()
{
	Whetstone single;
	Metric* metric = fResults.NewTest("Whetstone", 100);
	fResults.Calibrate(0, 0);
	fResults.StartTimer();
	single.Run(kWhetstonePasses);
	metric->Time(fResults.EndTimer());
	metric->Index(600);
	metric->Units("MWIPS");

	Whetstone sequential;
	metric = fResults.NewTest("Ten Sequential Whetstones", 0);
	fResults.Calibrate(0, 0);
	fResults.StartTimer();
	for (int32 i = 0; i < kWhetstoneThreads; i++)
		sequential.Run(kWhetstonePasses);
	metric->Time(fResults.EndTimer());
	metric->Index(601);
	metric->Units("seconds");

	// Created suspended before the clock starts: creation is not measured.
	WhetstoneThread* workers = new WhetstoneThread[kWhetstoneThreads];
	thread_id threads[kWhetstoneThreads];
	for (int32 i = 0; i < kWhetstoneThreads; i++)
		threads[i] = workers[i].Go(kWhetstonePasses, i);

	metric = fResults.NewTest("Ten Threaded Whetstones", 0);
	fResults.Calibrate(0, 0);
	fResults.StartTimer();
	for (int32 i = 0; i < kWhetstoneThreads; i++)
		resume_thread(threads[i]);
	WaitForThreads(threads, kWhetstoneThreads);
	metric->Time(fResults.EndTimer());
	metric->Index(602);
	metric->Units("seconds");

	// A passed thread may not have ended yet: reap all ten, after the clock,
	// before their objects go.
	for (int32 i = 0; i < kWhetstoneThreads; i++) {
		status_t exitValue;
		wait_for_thread(threads[i], &exitValue);
	}
	delete[] workers;
}


bool
Benchmark::SieveGoesOn(bigtime_t elapsed)
{
	// A clock that went backwards also goes on.
	return elapsed < kSieveDuration;
}


void
Benchmark::SievePass(uint8* flags)
{
	for (int32 i = 0; i < kSieveFlags; i++)
		flags[i] = 1;
	for (int32 i = 0; i < kSieveFlags; i++) {
		if (flags[i] == 0)
			continue;
		const int32 prime = 2 * i + 3;
		// Clears the flag of i itself, never of k: this is the benchmark's
		// defined workload, so no multiple is ever struck out. One store per
		// step, which a compiler would otherwise fold into one store per i.
		volatile uint8* flag = flags + i;
		for (int32 k = i + prime; k <= kSieveFlags; k += prime)
			*flag = 0;
	}
}


void
Benchmark::RunSieve()
{
	uint8* flags = new uint8[kSieveFlags];
	long passes = 0;
	Metric* metric = fResults.NewTest("Sieve", 0);
	fResults.Calibrate(0, 0);
	const bigtime_t start = system_time();
	fResults.StartTimer();
	// Time-bound: the clock is read once per pass, never inside one.
	do {
		SievePass(flags);
		KeepObservable(flags);
		passes++;
	} while (SieveGoesOn(system_time() - start));
	metric->Time(fResults.EndTimer());
	metric->NbrCycles(passes);
	metric->Index(700);
	metric->Units("IPS");
	delete[] flags;
}


void
Benchmark::Abandon()
{
	// The worker first, so it starts no further helper; then the helpers,
	// which make and remove the files.
	Suspend();
	for (const char* name : {"CreateThread", "RemoveThread"}) {
		thread_id helper = find_thread(name);
		if (helper >= 0)
			suspend_thread(helper);
	}
	RemoveDiskFiles();
}


void
Benchmark::RemoveDiskFiles()
{
	char prefix[B_PATH_NAME_LENGTH + 32];
	TempPath("quickstep_lc_test", prefix, sizeof(prefix));
	// Room for the prefix, a dot and the index.
	char path[sizeof(prefix) + 16];
	TempPath("quickstep_io_test", path, sizeof(path));
	unlink(path);
	for (long index = 0; index <= kLifeCycleLast; index++) {
		snprintf(path, sizeof(path), "%s.%ld", prefix, index);
		unlink(path);
	}
}


void
Benchmark::RunFileIO()
{
	char* block = new char[kDiskBlock];
	memset(block, 0, kDiskBlock);
	char path[B_PATH_NAME_LENGTH + 32];
	TempPath("quickstep_io_test", path, sizeof(path));

	// The streams are handed this area, not the zeroed block: it starts with
	// the block's address and holds whatever the worker's stack held, is
	// written from and read back into the same place, so every block of the
	// file is the same image. The measured work is the count and size of the
	// transfers; the zeroed block stays allocated and unused.
	char transfer[kDiskBlock];
	memcpy(transfer, &block, sizeof(block));

	// The temporary directory is shared with other users: the file is made
	// anew, never through a link someone put there, and read back only while
	// it is still our own.
	FILE* file = platform_create_shared(path, "wb", 0600);
	if (file == nullptr) {
		fprintf(stderr, "Error writing <%s>\n", path);
	} else {
		Metric* metric = fResults.NewTest("Disk File Output", 40000);
		fResults.Calibrate(kDiskBlocks, 0);
		fResults.StartTimer();
		for (long i = 0; i < kDiskBlocks; i++)
			fwrite(transfer, kDiskBlock, 1, file);
		metric->Time(fResults.EndTimer());
		metric->Units("KB/sec");
		metric->Index(800);
		// The close, with the flush of the last buffer, is not timed.
		fclose(file);
	}

	file = platform_open_owned(path, "rb");
	if (file == nullptr) {
		fprintf(stderr, "Error reading <%s>\n", path);
	} else {
		Metric* metric = fResults.NewTest("Disk File Input", 40000);
		fResults.Calibrate(kDiskBlocks, 0);
		fResults.StartTimer();
		for (long i = 0; i < kDiskBlocks; i++)
			fread(transfer, kDiskBlock, 1, file);
		metric->Time(fResults.EndTimer());
		metric->Units("KB/sec");
		metric->Index(801);
		fclose(file);
	}

	delete[] block;
	if (platform_is_owned_file(path))
		unlink(path);
}


void
Benchmark::RunFileLifeCycle()
{
	char prefix[B_PATH_NAME_LENGTH + 32];
	TempPath("quickstep_lc_test", prefix, sizeof(prefix));
	FileLife life;
	life.SetPathPrefix(prefix);
	life.SetIndexRange(0, kLifeCycleLast);

	// Spawning and waiting are inside the timed region: thread start-up is
	// part of what these metrics measure. wait_for_thread starts the thread.
	Metric* metric = fResults.NewTest("Disk File Creation", 1000);
	fResults.Calibrate(1000, 0);
	fResults.StartTimer();
	status_t exitValue;
	wait_for_thread(life.Go(1), &exitValue);
	metric->Time(fResults.EndTimer());
	metric->Index(900);
	metric->Units("files/second");

	metric = fResults.NewTest("Disk File Deletion", 1000);
	fResults.Calibrate(1000, 0);
	fResults.StartTimer();
	wait_for_thread(life.Go(2), &exitValue);
	metric->Time(fResults.EndTimer());
	metric->Index(901);
	metric->Units("files/second");
}
