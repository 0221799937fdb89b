// The spread of repeated measurements of one quantity: median, extremes and
// coefficient of variation, as pure functions of the samples.
#ifndef LIB_STATISTICS_H
#define LIB_STATISTICS_H

#include <vector>

#include <SupportDefs.h>

struct LibSpread {
	int32 count = 0;
	double median = 0;
	double min = 0;
	double max = 0;
	double mean = 0;
	// Sample standard deviation over the magnitude of the mean, in per cent;
	// 0 for fewer than two samples or a zero mean.
	double cv = 0;
};

// The middle sample, or the mean of the two middle ones; 0 for no samples.
double LibMedian(std::vector<double> samples);
// Per cent, as in LibSpread::cv.
double LibCoefficientOfVariation(const std::vector<double>& samples);
LibSpread LibSpreadOf(const std::vector<double>& samples);

// Whether a test that has run runs times should run again: always below
// repeat, never at maxRuns or beyond, and in between while the largest
// coefficient of variation of its metrics (per cent) is above maxCv (0: no
// such rule).
bool LibWantsAnotherRun(int32 runs, int32 repeat, double cv, double maxCv, int32 maxRuns);

// How many times faster a configuration is than one CPU: its rate over the
// one-CPU rate, or the inverse for a quantity in seconds (less is faster);
// 0 when either value is not above 0.
double LibSpeedup(double rate, double oneCpuRate, bool inSeconds);

#endif // LIB_STATISTICS_H
