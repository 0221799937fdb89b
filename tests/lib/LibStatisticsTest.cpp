#include "lib/LibStatistics.h"

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace {

TEST(LibStatisticsTest, SpreadOfFewAndManySamples)
{
	const struct {
		std::vector<double> samples;
		double median;
		double min;
		double max;
		double cv;
	} cases[] = {
	    {{}, 0, 0, 0, 0},
	    {{7}, 7, 7, 7, 0},
	    // Two samples: the median is their mean; sd = |a - b| / sqrt(2).
	    {{10, 12}, 11, 10, 12, 100.0 * std::sqrt(2.0) / 11},
	    {{3, 1, 2}, 2, 1, 3, 50},
	    {{4, 1, 3, 2}, 2.5, 1, 4, 100.0 * std::sqrt(5.0 / 3) / 2.5},
	    {{5, 5, 5, 5, 5}, 5, 5, 5, 0},
	    // A negative mean (a time below the calibrated overhead) still gives
	    // a spread that is not negative.
	    {{-2, -4}, -3, -4, -2, 100.0 * std::sqrt(2.0) / 3},
	    // Zero mean: no meaningful ratio.
	    {{-1, 1}, 0, -1, 1, 0},
	};
	for (const auto& testCase : cases) {
		SCOPED_TRACE(testCase.samples.size());
		const LibSpread spread = LibSpreadOf(testCase.samples);
		EXPECT_EQ(spread.count, static_cast<int32>(testCase.samples.size()));
		EXPECT_DOUBLE_EQ(spread.median, testCase.median);
		EXPECT_DOUBLE_EQ(spread.min, testCase.min);
		EXPECT_DOUBLE_EQ(spread.max, testCase.max);
		EXPECT_NEAR(spread.cv, testCase.cv, 1e-9);
		EXPECT_DOUBLE_EQ(LibMedian(testCase.samples), testCase.median);
	}
}


TEST(LibStatisticsTest, ExtraRunsStopAtTheirBound)
{
	const struct {
		int32 runs;
		int32 repeat;
		double cv;
		double maxCv;
		int32 maxRuns;
		bool again;
	} cases[] = {
	    {1, 3, 0, 0, 3, true},     // below the repeat count, whatever the spread
	    {3, 3, 50, 0, 3, false},   // no spread rule: exactly the repeat count
	    {3, 3, 3.1, 3, 10, true},  // spread above the limit: one more
	    {3, 3, 3.0, 3, 10, false}, // at the limit is good enough
	    {9, 3, 40, 3, 10, true},   {10, 3, 40, 3, 10, false}, // the bound wins over the spread
	};
	for (const auto& c : cases) {
		SCOPED_TRACE(testing::Message() << c.runs << " runs, cv " << c.cv);
		EXPECT_EQ(LibWantsAnotherRun(c.runs, c.repeat, c.cv, c.maxCv, c.maxRuns), c.again);
	}
}


TEST(LibStatisticsTest, SpeedupIsInverseForSeconds)
{
	EXPECT_DOUBLE_EQ(LibSpeedup(200, 100, false), 2.0);
	// Ten threads took 1 s on two CPUs and 2 s on one: twice as fast.
	EXPECT_DOUBLE_EQ(LibSpeedup(1.0, 2.0, true), 2.0);
	EXPECT_EQ(LibSpeedup(0, 100, false), 0);
	EXPECT_EQ(LibSpeedup(100, 0, false), 0);
	EXPECT_EQ(LibSpeedup(-5, 100, false), 0);
	EXPECT_EQ(LibSpeedup(std::nan(""), 1, true), 0);
}

} // namespace
