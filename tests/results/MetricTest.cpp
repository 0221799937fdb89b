#include "results/Metric.h"

#include <string>

#include <gtest/gtest.h>

namespace {

Metric
MetricWith(long cycles, std::initializer_list<float> times)
{
	Metric metric;
	metric.Description("Dhrystone");
	metric.NbrCycles(cycles);
	for (float time : times)
		metric.Time(time);
	return metric;
}

} // namespace


TEST(MetricTest, RateOfZeroTimeAndOfZeroCyclesAndTimesBeyondEightSlots)
{
	Metric work = MetricWith(1000, {2.0f, 0.0f, 4.0f});
	EXPECT_DOUBLE_EQ(500.0, work.Rate(0));
	EXPECT_DOUBLE_EQ(0.0, work.Rate(1));
	EXPECT_DOUBLE_EQ(250.0, work.Rate(2));
	// Positions past the times, and outside the slots, have no rate.
	EXPECT_DOUBLE_EQ(0.0, work.Rate(3));
	EXPECT_DOUBLE_EQ(0.0, work.Rate(8));
	EXPECT_DOUBLE_EQ(0.0, work.Rate(-1));

	// Measured in seconds: the time itself is the value.
	Metric seconds = MetricWith(0, {1.5f, 0.0f, 3, 4, 5, 6, 7, 8, 9, 10});
	EXPECT_DOUBLE_EQ(1.5, seconds.Rate(0));
	EXPECT_DOUBLE_EQ(0.0, seconds.Rate(1));
	EXPECT_EQ(8, seconds.Count());
	EXPECT_FLOAT_EQ(8.0f, seconds.TimeAt(7));
	EXPECT_FLOAT_EQ(0.0f, seconds.TimeAt(8));
}


// The bars are drawn longest first, each shorter one once; equal and zero rates
// are never taken again. The first of equal rates is the longest.
TEST(MetricTest, NextSmallestRateStepsDownSkippingEqualAndZeroRates)
{
	Metric metric = MetricWith(100, {1.0f, 4.0f, 0.0f, 1.0f, 2.0f});
	int which = -1;
	float rate = metric.MaxRate(which);
	ASSERT_EQ(0, which);
	metric.SetDrawn(which, true);

	EXPECT_EQ(4, metric.NextSmallestRate(rate));
	EXPECT_FLOAT_EQ(50.0f, rate);
	EXPECT_TRUE(metric.Drawn(4));
	EXPECT_EQ(1, metric.NextSmallestRate(rate));
	EXPECT_FLOAT_EQ(25.0f, rate);
	EXPECT_EQ(-1, metric.NextSmallestRate(rate));
	EXPECT_FLOAT_EQ(25.0f, rate);
	EXPECT_FALSE(metric.Drawn(3));
	EXPECT_FALSE(metric.Drawn(2));

	// With the marks cleared, an undrawn position below the limit is found again.
	metric.SetDrawn(false);
	rate = 60.0f;
	EXPECT_EQ(4, metric.NextSmallestRate(rate));

	// Without rates, which is left alone.
	Metric zero = MetricWith(100, {0.0f, 0.0f});
	which = -7;
	EXPECT_FLOAT_EQ(0.0f, zero.MaxRate(which));
	EXPECT_EQ(-7, which);
}


TEST(MetricTest, AssignmentCopiesEverythingButTheDrawnMarksAndEqualityComparesNames)
{
	Metric source = MetricWith(1000, {1.25f, 2.5f});
	source.Index(500);
	source.Units("IPS");
	source.SetDrawn(1, true);

	Metric copy;
	copy.SetDrawn(0, true);
	copy = source;
	char record[64] = "";
	EXPECT_STREQ("500:1000/1.250000,2.500000;", copy.Write(record));
	EXPECT_STREQ("Dhrystone", copy.Description());
	EXPECT_TRUE(copy.Drawn(0));
	EXPECT_FALSE(copy.Drawn(1));
	// The copy owns its own text.
	source.Units("changed");
	EXPECT_STREQ("IPS", copy.Units());
	Metric& alias = copy;
	copy = alias;
	EXPECT_STREQ("Dhrystone", copy.Description());
	EXPECT_EQ(2, copy.Count());

	EXPECT_TRUE(MetricWith(5, {}) == copy);
	copy.Description("Whetstone");
	EXPECT_FALSE(source == copy);
	EXPECT_FALSE(copy.HasSubs());
	copy.Description("Ten Threaded Whetstones");
	EXPECT_TRUE(copy.HasSubs());
}


TEST(MetricTest, WriteAppendsTheRecordTextAndTheBoundedFormRefusesWhatDoesNotFit)
{
	Metric metric = MetricWith(1000000, {1.25f, 1.24f});
	metric.Index(500);
	char buffer[64] = "head;";
	EXPECT_STREQ("head;500:1000000/1.250000,1.240000;", metric.Write(buffer));

	// "550:1/;" is 7 characters: 8 bytes needed with the NUL.
	Metric empty;
	empty.Index(550);
	char exact[8] = "";
	EXPECT_EQ(B_OK, empty.Write(exact, sizeof(exact)));
	EXPECT_STREQ("550:1/;", exact);
	char tight[7] = "";
	EXPECT_EQ(B_BUFFER_OVERFLOW, empty.Write(tight, sizeof(tight)));
	EXPECT_STREQ("", tight);
}
