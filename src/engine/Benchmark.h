// The worker of one benchmark run: every selected test once per processor
// configuration, all processors first, then one fewer each pass down to CPU 0.
#ifndef BENCHMARK_H
#define BENCHMARK_H

#include <OS.h>
#include <SupportDefs.h>

#include "lib/LibThread.h"
#include "results/MetricSamples.h"
#include "results/Results.h"

class MachineCheck;

// Sent before each test with the string "status" ("Testing %s (cpu %d/%d)").
const uint32 kMsgBenchmarkStatus = 'BmkS';

class Benchmark : public LibThread
{
public:
	// Positions of the test flags: the contract between the main window and the
	// worker. The disk tests run LifeCycle first, against their positions.
	enum {
		kGraphics = 0,
		kStrings,
		kMemory,
		kSavage,
		kAckerman,
		kDhrystone,
		kFourier,
		kWhetstone,
		kSieve,
		kFileIO,
		kFileLifeCycle,
		kTestCount
	};

	// A metric holds one time per processor configuration and has room for
	// eight: on a machine with more CPUs, CPUs 8 and up are switched off before
	// the first pass and the run measures eight configurations, labelled as if
	// the machine had eight.
	static constexpr int32 kMaxConfigurations = 8;

	// The sieve stops at its first clock check at or after this many
	// microseconds.
	static constexpr bigtime_t kSieveDuration = 5000000;
	static constexpr int32 kSieveFlags = 8190;

	// The graphics test needs a window, which only the desktop program has: it
	// installs its test here before the first run. Without one, RunGraphics
	// does nothing and the flag is ignored. Called on the worker thread.
	typedef void (*GraphicsTest)(Results& results);
	static void SetGraphicsTest(GraphicsTest test);

	Benchmark();
	~Benchmark() override;

	int32 Action() override;

	// Written by the owner before Go, read by the worker.
	void SetTest(int32 position, bool run);
	bool IsTestSet(int32 position) const;
	// The run's record; the owner reads it only after 'LThC'.
	Results& RunResults() { return fResults; }
	// The display name used in the status text ("Disk LifeCycle"), or null.
	static const char* TestName(int32 position);

	void UpdateStatus(const char* name);

	// Gives up a run in progress for good, as the program ends: the worker and
	// the disk tests' helper threads are stopped where they are, so nothing
	// more is written, and the disk tests' files are removed. Safe when no
	// run is going. Any thread but the worker's.
	void Abandon();
	// Removes the disk tests' files from the temporary directory, whichever
	// of them exist. Only unlink and formatting: safe on a signal thread.
	static void RemoveDiskFiles();

	// Repeated measurement, off unless set before Go: every test of every
	// pass runs repeat times, then again while one of its metrics' rates
	// varies by more than maxCv per cent (0: no such rule), maxRuns times at
	// most; each configuration records the median time. repeat 0 is the
	// plain run, one measurement each.
	void SetRepeats(int32 repeat, double maxCv, int32 maxRuns);
	// Every time measured in the last run with repeats.
	const MetricSamples& Samples() const { return fSamples; }
	// Sampled between tests when set (owned by the caller).
	void SetMachineCheck(MachineCheck* check) { fMachineCheck = check; }

	void RunGraphics();
	void RunStrings();
	void RunMemory();
	void RunSavage();
	void RunAckerman();
	void RunDhrystone();
	void RunFourier();
	void RunWhetstone();
	void RunSieve();
	void RunFileIO();
	void RunFileLifeCycle();

	static int32 Ackerman(const int& m, const int& n);

	// The timed loops of the inline kernels, never inlined into their callers,
	// so that a run and bench/'s standalone build execute the same code.
	static void CopyStrings(char* buffer, const char* text, long loops);
	static void CompareStrings(const char* buffer, const char* text, long loops);
	static void AllocateBlocks(long loops);
	static void AckermanLoops(long loops);

	// The strings kernel's text and destination, placed the same way in
	// every run: the library's string functions take different paths for
	// different alignments and near a page's end, and the stack's position
	// differs from process to process.
	struct alignas(128) StringsArea {
		char text[46];
		char padding[128 - 46];
		char buffer[80];
	};

	// One pass of the sieve over kSieveFlags flags.
	static void SievePass(uint8* flags);
	// Whether the sieve runs another pass after elapsed microseconds.
	static bool SieveGoesOn(bigtime_t elapsed);
	// The Savage chain, iterations times from 1.0; answers the accumulator.
	static double Savage(const long& iterations);
	// Polls each thread in turn, without pausing, until it is once seen alive
	// and not on a processor; a thread whose id is unknown is polled again.
	static void WaitForThreads(const thread_id* threads, int32 count);

private:
	Benchmark(const Benchmark&) = delete;
	Benchmark& operator=(const Benchmark&) = delete;

	typedef void (Benchmark::*RunMethod)();
	// Runs one test as often as the repeat settings ask, recording the
	// median time of each metric it makes.
	void RunRepeated(RunMethod run, int32 position);

	int32 fCurrentCpu;
	// Configurations this run measures: the CPU count, at most
	// kMaxConfigurations; the second number of the status text.
	int32 fConfigurations;
	Results fResults;
	bool fTests[kTestCount];
	int32 fRepeat;
	double fMaxCv;
	int32 fMaxRuns;
	MetricSamples fSamples;
	MachineCheck* fMachineCheck;

	static GraphicsTest sGraphicsTest;
};

#endif // BENCHMARK_H
