#include "results/MetricSamples.h"

#include <gtest/gtest.h>

namespace {

// The record keeps the median time, and for a test whose work varies (the
// sieve counts its passes) the median work, per metric and configuration.
TEST(MetricSamplesTest, MediansAndRatesPerMetricAndPosition)
{
	MetricSamples samples;
	samples.Add("Sieve", 0, 5.0f, 100);
	samples.Add("Sieve", 0, 5.2f, 130);
	samples.Add("Sieve", 0, 5.1f, 120);
	samples.Add("Sieve", 1, 5.0f, 60);
	samples.Add("Ten Threaded Whetstones", 0, 2.0f, 0);
	samples.Add("Ten Threaded Whetstones", 0, 0.0f, 0);

	EXPECT_FLOAT_EQ(samples.MedianSeconds("Sieve", 0), 5.1f);
	EXPECT_EQ(samples.MedianCycles("Sieve", 0), 120);
	EXPECT_EQ(samples.MedianCycles("Sieve", 1), 60);
	EXPECT_EQ(samples.Of("Sieve", 1).size(), 1u);
	EXPECT_TRUE(samples.Of("Sieve", 2).empty());
	EXPECT_TRUE(samples.Of("Savage", 0).empty());
	EXPECT_EQ(samples.RateSpread("Savage", 0).count, 0);

	// Rates as the record shows them: work per second, the time itself for
	// work 0, and 0 for a zero time.
	const std::vector<double> sieve = samples.Rates("Sieve", 0);
	ASSERT_EQ(sieve.size(), 3u);
	EXPECT_NEAR(sieve[1], 130 / 5.2, 1e-5);
	EXPECT_EQ(samples.Rates("Ten Threaded Whetstones", 0), (std::vector<double>{2.0, 0.0}));
	EXPECT_NEAR(samples.RateSpread("Sieve", 0).median, 120 / 5.1, 1e-5);

	samples.Clear();
	EXPECT_TRUE(samples.IsEmpty());
}

} // namespace
