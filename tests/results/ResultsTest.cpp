#include "results/Results.h"

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <Bitmap.h>
#include <gtest/gtest.h>

#include "MachineFixture.h"
#include "results/ProcessorIcons.h"

// Counts the kernels' random-number calls: this definition takes the place of
// the C library's for the whole test program.
static long sRandCalls = 0;

extern "C" int
rand(void) noexcept
{
	return static_cast<int>(++sRandCalls & 0x7fff);
}

namespace {

class ResultsTest : public MachineFixture
{
protected:
	static std::string Record(const Results& results)
	{
		char buffer[kRecordSize];
		results.Write(buffer);
		return buffer;
	}

	static std::string ReadCapturingStderr(Results& results, const char* record)
	{
		testing::internal::CaptureStderr();
		results.Read(record);
		return testing::internal::GetCapturedStderr();
	}

	static std::vector<float> Times(const Metric* metric)
	{
		std::vector<float> times;
		for (int i = 0; i < metric->Count(); i++)
			times.push_back(metric->TimeAt(i));
		return times;
	}
};

const char* kTwoCpuRecord = "Generic (2-x86@300/66MHz) 128MB RAM\t-1:8 bits/pixel, 1024x768 "
                            "resolution\t1:Acme, IDE controller\t"
                            "500:1000000/1.250000,1.240000;550:1/2.250000,2.230000;";

} // namespace


TEST_F(ResultsTest, ResetDescribesThisMachineAndCycleCpuCountsItsProcessors)
{
	UseMachine(3);
	Results results(true);
	EXPECT_STREQ("AT Clone (3-Intel Pentium II@400/100MHz) 128MB RAM", results.Description());
	EXPECT_EQ(3, results.NbrCpus());
	EXPECT_TRUE(results.IsCurrent());

	for (int pass = 0; pass < 2; pass++) {
		int yes = 0;
		while (results.CycleCpu())
			yes++;
		EXPECT_EQ(3, yes);
		EXPECT_FALSE(results.CycleCpu());
		results.NewTest("Sieve", 10);
		results.Reset();
		EXPECT_EQ(0, results.Size());
	}
}


TEST_F(ResultsTest, NewTestReturnsTheExistingMetricWithItsCycles)
{
	Results results;
	Metric* first = results.NewTest("Dhrystone", 1000);
	first->Time(1.0f);
	Metric* second = results.NewTest("Whetstone", 10);
	EXPECT_NE(first, second);
	EXPECT_EQ(nullptr, results.CurrentMetric());

	Metric* again = results.NewTest("Dhrystone", 5);
	EXPECT_EQ(first, again);
	EXPECT_EQ(1000, again->NbrCycles());
	EXPECT_EQ(1, again->Count());
	EXPECT_EQ(2, results.Size());
	// The search leaves the cursor on the metric it found.
	EXPECT_EQ(first, results.CurrentMetric());
}


TEST_F(ResultsTest, RecordRoundTripKeepsDevicesMetricsAndTimes)
{
	UseMachine(2);
	UseBus("pci-catalog-mixed");
	Results run(true);
	run.FillTheseDevices();
	ASSERT_GE(run.Devices().Size(), 2);
	EXPECT_EQ(kScreenClassId, run.Devices().First()->ClassId());
	EXPECT_STREQ("8 bit color, 1024x768 resolution", run.Devices().First()->Description());

	while (run.CycleCpu()) {
		Metric* dhrystone = run.NewTest("Dhrystone", 1000000);
		dhrystone->Index(500);
		dhrystone->Units("IPS");
		dhrystone->Time(run.NbrCpus() == 2 && dhrystone->Count() == 0 ? 1.25f : 1.5f);
		Metric* creation = run.NewTest("Disk File Creation", 0);
		creation->Index(900);
		creation->Time(0.125f);
	}
	const std::string record = Record(run);
	EXPECT_EQ(std::string::npos, record.find('\n'));

	Results back;
	testing::internal::CaptureStderr();
	back.Read(record.c_str());
	EXPECT_EQ("", testing::internal::GetCapturedStderr());
	EXPECT_STREQ(run.Description(), back.Description());
	EXPECT_EQ(2, back.NbrCpus());
	EXPECT_EQ(3, back.CpuCountdown());
	ASSERT_EQ(run.Devices().Size(), back.Devices().Size());
	for (int i = 0; i < run.Devices().Size(); i++) {
		EXPECT_EQ(run.Devices().Get(i)->ClassId(), back.Devices().Get(i)->ClassId());
		EXPECT_STREQ(run.Devices().Get(i)->Description(), back.Devices().Get(i)->Description());
	}
	ASSERT_EQ(2, back.Size());
	Metric* dhrystone = back.Get(0L);
	EXPECT_STREQ("Dhrystone", dhrystone->Description());
	EXPECT_EQ(1000000, dhrystone->NbrCycles());
	EXPECT_EQ((std::vector<float>{1.25f, 1.5f}), Times(dhrystone));
	EXPECT_STREQ("", dhrystone->Units());
	Metric* creation = back.Get(1L);
	EXPECT_STREQ("Disk File Creation", creation->Description());
	EXPECT_EQ(0, creation->NbrCycles());
	EXPECT_EQ((std::vector<float>{0.125f, 0.125f}), Times(creation));
	EXPECT_EQ(record, Record(back));
}


TEST_F(ResultsTest, ReaderTakesTheFieldsOfTheRecordForm)
{
	Results back;
	back.Read(kTwoCpuRecord);
	EXPECT_STREQ("Generic (2-x86@300/66MHz) 128MB RAM", back.Description());
	ASSERT_EQ(2, back.Devices().Size());
	EXPECT_EQ(-1, back.Devices().Get(0L)->ClassId());
	EXPECT_STREQ("Acme, IDE controller", back.Devices().Get(1L)->Description());
	ASSERT_EQ(2, back.Size());
	EXPECT_EQ((std::vector<float>{2.25f, 2.23f}), Times(back.Get(1L)));
	EXPECT_STREQ("Fourier", back.Get(1L)->Description());
	EXPECT_EQ(kTwoCpuRecord, Record(back));
}


TEST_F(ResultsTest, ReaderNamesBadFieldsOnStandardErrorAndKeepsTheRest)
{
	Results back;
	const std::string messages = ReadCapturingStderr(
	    back, "Box (2-x86@300/66MHz) 64MB RAM\tnocolon\t3:VGA\t77:x/3.0,bad;600:5/;;zz:1/2.0;");
	EXPECT_EQ("Unable to get class id for <nocolon>\n"
	          "Error extracting number of iterations\n"
	          "Error extracting time for metric <> (77)\n"
	          "Error extracting time for metric <Whetstone> (600)\n"
	          "Error extracting time for metric <Whetstone> (600)\n"
	          "Error extracting metric type for <zz>. <Box (2-x86@300/66MHz) 64MB RAM>\n",
	          messages);

	ASSERT_EQ(2, back.Devices().Size());
	EXPECT_STREQ("nocolon", back.Devices().Get(0L)->Description());
	EXPECT_EQ(3, back.Devices().Get(1L)->ClassId());
	EXPECT_STREQ("VGA", back.Devices().Get(1L)->Description());

	// 77 has no name, cycles 1 and its one good time; each bad time still
	// counts as one of the two reads; "zz" is dropped.
	ASSERT_EQ(2, back.Size());
	Metric* unknown = back.Get(0L);
	EXPECT_EQ(77, unknown->Index());
	EXPECT_STREQ("", unknown->Description());
	EXPECT_EQ(1, unknown->NbrCycles());
	EXPECT_EQ((std::vector<float>{3.0f}), Times(unknown));
	Metric* whetstone = back.Get(1L);
	EXPECT_EQ(5, whetstone->NbrCycles());
	EXPECT_EQ(0, whetstone->Count());
}


// The CPU count is the one character after the first "(": ten or more CPUs,
// or a letter there, read a wrong count; that reading is kept.
TEST_F(ResultsTest, ReaderTakesOneCharacterAsTheCpuCount)
{
	Results twelve;
	const std::string messages = ReadCapturingStderr(
	    twelve, "Big (12-x86@300/66MHz) 1MB RAM\t500:10/1.0,2.0,3.0;550:1/4.0;");
	// The rest of the first metric's times lead into the next index field,
	// which is then not a number.
	EXPECT_EQ("Error extracting metric type for <2.0,3.0;550>. <Big (12-x86@300/66MHz) 1MB "
	          "RAM>\n",
	          messages);
	EXPECT_EQ(1, twelve.NbrCpus());
	EXPECT_EQ(2, twelve.CpuCountdown());
	ASSERT_EQ(1, twelve.Size());
	EXPECT_EQ((std::vector<float>{1.0f}), Times(twelve.Get(0L)));

	// No count: no times are read, so the first metric's times become part of
	// the next index field.
	Results letter;
	EXPECT_EQ("Error extracting metric type for <1.0,2.0;550>. <Odd (x-y) 1MB RAM>\n",
	          ReadCapturingStderr(letter, "Odd (x-y) 1MB RAM\t500:10/1.0,2.0;550:1/;"));
	EXPECT_EQ(0, letter.NbrCpus());
	EXPECT_EQ(1, letter.CpuCountdown());
	ASSERT_EQ(1, letter.Size());
	EXPECT_EQ(0, letter.Get(0L)->Count());
	EXPECT_EQ(10, letter.Get(0L)->NbrCycles());
}


TEST_F(ResultsTest, MetricWithMissingTimesTakesTheNextFieldsAsTimes)
{
	Results back;
	const std::string messages =
	    ReadCapturingStderr(back, "Pair (2-x86@300/66MHz) 1MB RAM\t500:10/1.0;550:1/2.0,3.0;");
	EXPECT_EQ("Error extracting time for metric <Dhrystone> (500)\n", messages);
	ASSERT_EQ(1, back.Size());
	EXPECT_EQ((std::vector<float>{1.0f}), Times(back.Get(0L)));
}


TEST_F(ResultsTest, RecordWithoutTabReadsNothing)
{
	Results back;
	const std::string before = back.Description();
	back.Read("Generic (2-x86) 500:1/1.0,1.0;");
	EXPECT_EQ(before, back.Description());
	EXPECT_EQ(0, back.Size());
	EXPECT_EQ(0, back.Devices().Size());
}


TEST_F(ResultsTest, BoundedWriteLeavesOutWholeFieldsThatDoNotFit)
{
	Results back;
	back.Read(kTwoCpuRecord);
	const std::string full = Record(back);

	// Room for everything but the last metric.
	const size_t withoutLast = full.size() - strlen("550:1/2.250000,2.230000;") + 1;
	std::vector<char> buffer(withoutLast + 5, 'x');
	EXPECT_EQ(B_BUFFER_OVERFLOW, back.Write(buffer.data(), withoutLast + 5));
	EXPECT_EQ(full.substr(0, withoutLast - 1), std::string(buffer.data()));
	EXPECT_EQ(B_BUFFER_OVERFLOW, back.Write(buffer.data(), 0));

	std::vector<char> exact(full.size() + 1);
	EXPECT_EQ(B_OK, back.Write(exact.data(), exact.size()));
	EXPECT_EQ(full, std::string(exact.data()));

	char tiny[8];
	EXPECT_EQ(B_BUFFER_OVERFLOW, back.Write(tiny, sizeof(tiny)));
	EXPECT_STREQ("", tiny);
}


TEST_F(ResultsTest, AssignmentMakesDeepCopiesAndLeavesOverheadIconAndCurrentFlag)
{
	Results source(true);
	source.Read(kTwoCpuRecord);
	source.Calibrate(1000, 0);
	source.SetIconRect(BRect(2, 19, 17, 34));
	ASSERT_TRUE(source.Contains(BPoint(5, 20)));

	Results copy;
	copy.NewTest("Sieve", 1);
	copy = source;
	EXPECT_FALSE(copy.IsCurrent());
	EXPECT_EQ(0, copy.Overhead());
	EXPECT_TRUE(copy.Expanded());
	EXPECT_EQ(19, copy.IconRect().top);
	EXPECT_EQ(source.NbrCpus(), copy.NbrCpus());
	EXPECT_EQ(Record(source), Record(copy));
	// The copy's icon is its own closed picture.
	EXPECT_EQ(0, memcmp(copy.Icon()->Bits(), Processor, kProcessorIconSize));

	source.Get(0L)->Time(9.0f);
	source.Devices().Get(1L)->Description(1, "changed");
	EXPECT_EQ(2, copy.Get(0L)->Count());
	EXPECT_STREQ("Acme, IDE controller", copy.Devices().Get(1L)->Description());

	Results& alias = copy;
	copy = alias;
	EXPECT_EQ(2, copy.Size());
	EXPECT_EQ(2, copy.Devices().Size());
}


TEST_F(ResultsTest, ContainsTogglesTheIconOnlyInsideItsRectangle)
{
	Results results;
	EXPECT_FALSE(results.Contains(BPoint(0, 0)));
	results.SetIconRect(BRect(2, 10, 17, 25));
	EXPECT_FALSE(results.Contains(BPoint(18, 12)));
	EXPECT_FALSE(results.Expanded());

	EXPECT_TRUE(results.Contains(BPoint(17, 25)));
	EXPECT_TRUE(results.Expanded());
	EXPECT_EQ(0, memcmp(results.Icon()->Bits(), ProcessorOpen, kProcessorIconSize));
	EXPECT_TRUE(results.Contains(BPoint(2, 10)));
	EXPECT_FALSE(results.Expanded());
	EXPECT_EQ(0, memcmp(results.Icon()->Bits(), Processor, kProcessorIconSize));
}


TEST_F(ResultsTest, CalibrateCallsRandAsOftenAsEachPassAsks)
{
	Results results;
	for (int calls = 0; calls <= 7; calls++) {
		sRandCalls = 0;
		results.Calibrate(1000, calls);
		EXPECT_EQ(calls >= 1 && calls <= 6 ? 1000L * calls : 0L, sRandCalls) << calls;
		EXPECT_GE(results.Overhead(), 0);
	}
}


TEST_F(ResultsTest, CalibrateWithNoPassesClearsTheOverhead)
{
	Results results;
	// Enough passes to take measurable time.
	while (results.Overhead() < 2000)
		results.Calibrate(2000000, 6);
	results.StartTimer();
	EXPECT_LT(results.EndTimer(), 0.0f);

	results.Calibrate(0, 6);
	EXPECT_EQ(0, results.Overhead());
	results.StartTimer();
	EXPECT_GE(results.EndTimer(), 0.0f);
}


TEST_F(ResultsTest, TimeSumsOneConfigurationOverAllMetrics)
{
	Results back;
	back.Read(kTwoCpuRecord);
	back.First();
	EXPECT_FLOAT_EQ(3.5f, back.Time(0));
	EXPECT_FLOAT_EQ(3.47f, back.Time(1));
	EXPECT_FLOAT_EQ(0.0f, back.Time(2));
	// Summing does not move the current metric.
	EXPECT_EQ(back.Get(0L), back.CurrentMetric());
}
