// The processor kernels timed on their own: the same object code as the
// program's (linked from its core library, built with the same flags), the
// same loop counts and the same clock, but on the main thread, without the
// worker, its messages, the processor switching or the loop calibration.
// bench/standalone.py alternates it with quickstep-cli.
//
//   quickstep-standalone KERNEL [RUNS]     one JSON line per metric
//   quickstep-standalone calibration [RUNS]   the empty-loop overhead
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <OS.h>

#include "engine/Benchmark.h"
#include "engine/Fourier.h"
#include "engine/Whetstone.h"
#include "results/Results.h"

namespace {

const char kText[] = "Quickstep tests system resources of the BeOS.";

struct Timed {
	const char* name;
	long cycles;
	std::vector<double> seconds;
};

volatile double sSink;

template <typename Work>
double
Seconds(Work work)
{
	const bigtime_t start = system_time();
	work();
	return (system_time() - start) / 1000000.0;
}


void
Print(const Timed& timed)
{
	printf("{\"name\": \"%s\", \"cycles\": %ld, \"seconds\": [", timed.name, timed.cycles);
	for (size_t i = 0; i < timed.seconds.size(); i++)
		printf("%s%.6f", i == 0 ? "" : ", ", timed.seconds[i]);
	printf("]}\n");
}


bool
RunKernel(const std::string& kernel, int runs)
{
	std::vector<Timed> metrics;
	if (kernel == "Strings") {
		Timed copy{"Strings Copy", 135, {}};
		Timed compare{"Strings Compare", 135, {}};
		for (int run = 0; run < runs; run++) {
			Benchmark::StringsArea area;
			memcpy(area.text, kText, sizeof(area.text));
			copy.seconds.push_back(
			    Seconds([&] { Benchmark::CopyStrings(area.buffer, area.text, 3000000); }));
			compare.seconds.push_back(
			    Seconds([&] { Benchmark::CompareStrings(area.buffer, area.text, 3000000); }));
		}
		metrics = {copy, compare};
	} else if (kernel == "Memory") {
		Timed memory{"Memory", 195, {}};
		for (int run = 0; run < runs; run++)
			memory.seconds.push_back(Seconds([] { Benchmark::AllocateBlocks(400000); }));
		metrics = {memory};
	} else if (kernel == "Savage") {
		Timed savage{"Savage", 300, {}};
		for (int run = 0; run < runs; run++)
			savage.seconds.push_back(Seconds([] { sSink = Benchmark::Savage(300000); }));
		metrics = {savage};
	} else if (kernel == "Ackerman") {
		Timed ackerman{"Ackerman", 6000, {}};
		for (int run = 0; run < runs; run++)
			ackerman.seconds.push_back(Seconds([] { Benchmark::AckermanLoops(6000); }));
		metrics = {ackerman};
	} else if (kernel == "Fourier") {
		Timed fourier{"Fourier", 100, {}};
		for (int run = 0; run < runs; run++) {
			Fourier kernelObject;
			fourier.seconds.push_back(Seconds([&] { kernelObject.Run(100); }));
		}
		metrics = {fourier};
	} else if (kernel == "Whetstone") {
		Timed single{"Whetstone", 100, {}};
		Timed sequential{"Ten Sequential Whetstones", 0, {}};
		for (int run = 0; run < runs; run++) {
			Whetstone one;
			single.seconds.push_back(Seconds([&] { one.Run(1000); }));
			Whetstone ten;
			sequential.seconds.push_back(Seconds([&] {
				for (int i = 0; i < 10; i++)
					ten.Run(1000);
			}));
		}
		metrics = {single, sequential};
	} else if (kernel == "calibration") {
		// What the program subtracts from a strings measurement.
		Timed overhead{"Calibration 3000000", 0, {}};
		Results results(false);
		for (int run = 0; run < runs; run++) {
			results.Calibrate(3000000, 0);
			overhead.seconds.push_back(results.Overhead() / 1000000.0);
		}
		metrics = {overhead};
	} else {
		return false;
	}
	for (const Timed& timed : metrics)
		Print(timed);
	return true;
}

} // namespace


int
main(int argc, char** argv)
{
	const int runs = argc > 2 ? atoi(argv[2]) : 1;
	if (argc < 2 || runs < 1 || runs > 1000 || !RunKernel(argv[1], runs)) {
		fprintf(stderr, "usage: quickstep-standalone Strings|Memory|Savage|Ackerman|Fourier|"
		                "Whetstone|calibration [RUNS]\n");
		return 2;
	}
	return 0;
}
