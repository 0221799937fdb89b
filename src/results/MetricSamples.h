// Every time measured for each metric and processor configuration when a run
// repeats its tests; the run's record keeps only their median.
#ifndef METRIC_SAMPLES_H
#define METRIC_SAMPLES_H

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <SupportDefs.h>

#include "lib/LibStatistics.h"

class MetricSamples
{
public:
	struct Sample {
		float seconds;
		int32 cycles;
		// What the run reports for it, as Metric::Rate does.
		double Rate() const;
	};

	void Clear() { fSamples.clear(); }
	bool IsEmpty() const { return fSamples.empty(); }
	void Add(const char* metric, int32 position, float seconds, int32 cycles);
	// The samples of one metric and position, in the order measured (empty
	// when there are none).
	const std::vector<Sample>& Of(const char* metric, int32 position) const;
	std::vector<double> Rates(const char* metric, int32 position) const;
	LibSpread RateSpread(const char* metric, int32 position) const;
	// The median time and the median amount of work, to be recorded.
	float MedianSeconds(const char* metric, int32 position) const;
	int32 MedianCycles(const char* metric, int32 position) const;

private:
	std::map<std::pair<std::string, int32>, std::vector<Sample>> fSamples;
};

#endif // METRIC_SAMPLES_H
