#include "results/MetricSamples.h"

#include <cmath>


double
MetricSamples::Sample::Rate() const
{
	if (seconds == 0)
		return 0;
	if (cycles != 0)
		return cycles / static_cast<double>(seconds);
	return seconds;
}


void
MetricSamples::Add(const char* metric, int32 position, float seconds, int32 cycles)
{
	fSamples[{metric, position}].push_back({seconds, cycles});
}


const std::vector<MetricSamples::Sample>&
MetricSamples::Of(const char* metric, int32 position) const
{
	static const std::vector<Sample> kNone;
	const auto found = fSamples.find({metric, position});
	return found != fSamples.end() ? found->second : kNone;
}


std::vector<double>
MetricSamples::Rates(const char* metric, int32 position) const
{
	std::vector<double> rates;
	for (const Sample& sample : Of(metric, position))
		rates.push_back(sample.Rate());
	return rates;
}


LibSpread
MetricSamples::RateSpread(const char* metric, int32 position) const
{
	return LibSpreadOf(Rates(metric, position));
}


float
MetricSamples::MedianSeconds(const char* metric, int32 position) const
{
	std::vector<double> seconds;
	for (const Sample& sample : Of(metric, position))
		seconds.push_back(sample.seconds);
	return static_cast<float>(LibMedian(seconds));
}


int32
MetricSamples::MedianCycles(const char* metric, int32 position) const
{
	std::vector<double> cycles;
	for (const Sample& sample : Of(metric, position))
		cycles.push_back(sample.cycles);
	return static_cast<int32>(std::lround(LibMedian(cycles)));
}
