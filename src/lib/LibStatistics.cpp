#include "lib/LibStatistics.h"

#include <algorithm>
#include <cmath>


double
LibMedian(std::vector<double> samples)
{
	if (samples.empty())
		return 0;
	const size_t middle = samples.size() / 2;
	std::nth_element(samples.begin(), samples.begin() + middle, samples.end());
	const double upper = samples[middle];
	if (samples.size() % 2 != 0)
		return upper;
	// The lower middle is the largest of the samples before the upper one.
	const double lower = *std::max_element(samples.begin(), samples.begin() + middle);
	return lower + (upper - lower) / 2;
}


double
LibCoefficientOfVariation(const std::vector<double>& samples)
{
	if (samples.size() < 2)
		return 0;
	double mean = 0;
	for (double sample : samples)
		mean += sample;
	mean /= samples.size();
	if (mean == 0 || !std::isfinite(mean))
		return 0;
	double squares = 0;
	for (double sample : samples)
		squares += (sample - mean) * (sample - mean);
	return 100.0 * std::sqrt(squares / (samples.size() - 1)) / std::fabs(mean);
}


LibSpread
LibSpreadOf(const std::vector<double>& samples)
{
	LibSpread spread;
	if (samples.empty())
		return spread;
	spread.count = static_cast<int32>(samples.size());
	spread.median = LibMedian(samples);
	const auto extremes = std::minmax_element(samples.begin(), samples.end());
	spread.min = *extremes.first;
	spread.max = *extremes.second;
	double sum = 0;
	for (double sample : samples)
		sum += sample;
	spread.mean = sum / samples.size();
	spread.cv = LibCoefficientOfVariation(samples);
	return spread;
}


bool
LibWantsAnotherRun(int32 runs, int32 repeat, double cv, double maxCv, int32 maxRuns)
{
	if (runs < repeat)
		return true;
	if (runs >= maxRuns)
		return false;
	return maxCv > 0 && cv > maxCv;
}


double
LibSpeedup(double rate, double oneCpuRate, bool inSeconds)
{
	if (!(rate > 0) || !(oneCpuRate > 0))
		return 0;
	return inSeconds ? oneCpuRate / rate : rate / oneCpuRate;
}
