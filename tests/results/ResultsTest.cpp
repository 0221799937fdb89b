#include "results/Results.h"

#include <cmath>
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

typedef MachineFixture ResultsTest;

std::string
ReadCapturingStderr(Results& results, const char* record)
{
	testing::internal::CaptureStderr();
	results.Read(record);
	return testing::internal::GetCapturedStderr();
}

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
	EXPECT_NE(first, results.NewTest("Whetstone", 10));
	EXPECT_EQ(nullptr, results.CurrentMetric());

	EXPECT_EQ(first, results.NewTest("Dhrystone", 5));
	EXPECT_EQ(1000, first->NbrCycles());
	EXPECT_EQ(1, first->Count());
	EXPECT_EQ(2, results.Size());
	// The search leaves the cursor on the metric it found.
	EXPECT_EQ(first, results.CurrentMetric());
}


TEST_F(ResultsTest, RecordRoundTripKeepsDevicesMetricsAndTimes)
{
	UseBus("pci-catalog-mixed");
	Results run(true);
	run.FillTheseDevices();
	ASSERT_GE(run.Devices().Size(), 2);
	EXPECT_EQ(kScreenClassId, run.Devices().First()->ClassId());
	EXPECT_STREQ("8 bit color, 1024x768 resolution", run.Devices().First()->Description());

	for (float time = 1.25f; run.CycleCpu(); time += 0.25f) {
		Metric* dhrystone = run.NewTest("Dhrystone", 1000000);
		dhrystone->Index(500);
		dhrystone->Units("IPS");
		dhrystone->Time(time);
		Metric* creation = run.NewTest("Disk File Creation", 0);
		creation->Index(900);
		creation->Time(0.125f);
	}
	const std::string record = Record(run);
	EXPECT_EQ(std::string::npos, record.find('\n'));
	EXPECT_NE(std::string::npos,
	          record.find("\t500:1000000/1.250000,1.500000;900:0/0.125000,0.125000;"));

	Results back;
	EXPECT_EQ("", ReadCapturingStderr(back, record.c_str()));
	EXPECT_EQ(record, Record(back));
	EXPECT_EQ(2, back.NbrCpus());
	EXPECT_EQ(3, back.CpuCountdown());
	ASSERT_EQ(2, back.Size());
	// Units are not part of the record; names come from the index.
	EXPECT_STREQ("", back.Get(0L)->Units());
	EXPECT_STREQ("Disk File Creation", back.Get(1L)->Description());
}


TEST_F(ResultsTest, ReaderTakesTheFieldsOfTheRecordFormAndTimeSumsAConfiguration)
{
	Results back;
	back.Read(kTwoCpuRecord);
	EXPECT_EQ(kTwoCpuRecord, Record(back));
	EXPECT_STREQ("Generic (2-x86@300/66MHz) 128MB RAM", back.Description());
	EXPECT_EQ(-1, back.Devices().Get(0L)->ClassId());
	EXPECT_STREQ("Fourier", back.Get(1L)->Description());

	back.First();
	EXPECT_FLOAT_EQ(3.5f, back.Time(0));
	EXPECT_FLOAT_EQ(3.47f, back.Time(1));
	EXPECT_FLOAT_EQ(0.0f, back.Time(2));
	// Summing does not move the current metric.
	EXPECT_EQ(back.Get(0L), back.CurrentMetric());

	// Without a tab nothing is read.
	Results bare;
	const std::string before = Record(bare);
	bare.Read("Generic (2-x86) 500:1/1.0,1.0;");
	EXPECT_EQ(before, Record(bare));
}


// Each bad field is named on standard error and the rest is kept: 77 has no
// name, cycles 1 and its one good time; each bad time still counts as one of
// the reads; "zz" is dropped.
TEST_F(ResultsTest, ReaderNamesBadFieldsOnStandardErrorAndKeepsTheRest)
{
	Results back;
	EXPECT_EQ("Unable to get class id for <nocolon>\n"
	          "Error extracting number of iterations\n"
	          "Error extracting time for metric <> (77)\n"
	          "Error extracting time for metric <Whetstone> (600)\n"
	          "Error extracting time for metric <Whetstone> (600)\n"
	          "Error extracting metric type for <zz>. <Box (2-x86@300/66MHz) 64MB RAM>\n",
	          ReadCapturingStderr(back, "Box (2-x86@300/66MHz) 64MB RAM\tnocolon\t3:VGA\t"
	                                    "77:x/3.0,bad;600:5/;;zz:1/2.0;"));
	const std::string record = Record(back);
	EXPECT_EQ("\t3:VGA\t77:1/3.000000;600:5/;", record.substr(record.find("\t3:")));
	ASSERT_EQ(2, back.Devices().Size());
	EXPECT_STREQ("nocolon", back.Devices().Get(0L)->Description());
	EXPECT_STREQ("", back.Get(0L)->Description());
}


// Numbers keep the C library's reading: a sign, blanks, hexadecimal and a
// float beyond range are numbers; trailing text is not.
TEST_F(ResultsTest, ReaderTakesNumbersAsTheCLibraryReadsThem)
{
	Results back;
	EXPECT_EQ("Error extracting time for metric <Whetstone> (600)\n",
	          ReadCapturingStderr(back, "Box (4-x86@300/66MHz) 64MB RAM\t"
	                                    "+500: 7/+1.5, 2,0x1p-1,1e39;600:2/1.5x,1,1,1;"));
	back.First();
	EXPECT_EQ(500, back.Get(0L)->Index());
	EXPECT_EQ(7, back.Get(0L)->NbrCycles());
	EXPECT_FLOAT_EQ(1.5f, back.Get(0L)->TimeAt(0));
	EXPECT_FLOAT_EQ(2.0f, back.Get(0L)->TimeAt(1));
	EXPECT_FLOAT_EQ(0.5f, back.Get(0L)->TimeAt(2));
	EXPECT_TRUE(std::isinf(back.Get(0L)->TimeAt(3)));
	// The bad time is left out; the three good ones are kept.
	EXPECT_FLOAT_EQ(1.0f, back.Get(1L)->TimeAt(0));
}


// A metric short of times takes the next fields as its times. The CPU count is
// the one character after the first "(": ten or more CPUs, or a letter there,
// read a wrong count; that reading is kept, and the times left over (or, with
// no count, all of them) lead into the next index field.
TEST_F(ResultsTest, ReaderTakesOneCharacterAsTheCpuCount)
{
	const struct {
		const char* record;
		const char* errors;
		const char* back;
		int32 cpus;
	} cases[] = {
	    {"Pair (2-x86@300/66MHz) 1MB RAM\t500:10/1.0;550:1/2.0,3.0;",
	     "Error extracting time for metric <Dhrystone> (500)\n",
	     "Pair (2-x86@300/66MHz) 1MB RAM\t500:10/1.000000;", 2},
	    {"Big (12-x86@300/66MHz) 1MB RAM\t500:10/1.0,2.0,3.0;550:1/4.0;",
	     "Error extracting metric type for <2.0,3.0;550>. <Big (12-x86@300/66MHz) 1MB RAM>\n",
	     "Big (12-x86@300/66MHz) 1MB RAM\t500:10/1.000000;", 1},
	    {"Odd (x-y) 1MB RAM\t500:10/1.0,2.0;550:1/;",
	     "Error extracting metric type for <1.0,2.0;550>. <Odd (x-y) 1MB RAM>\n",
	     "Odd (x-y) 1MB RAM\t500:10/;", 0},
	};
	for (const auto& testCase : cases) {
		SCOPED_TRACE(testCase.record);
		Results back;
		EXPECT_EQ(testCase.errors, ReadCapturingStderr(back, testCase.record));
		EXPECT_EQ(testCase.back, Record(back));
		EXPECT_EQ(testCase.cpus, back.NbrCpus());
		EXPECT_EQ(testCase.cpus + 1, back.CpuCountdown());
	}
}


TEST_F(ResultsTest, BoundedWriteLeavesOutWholeFieldsThatDoNotFit)
{
	Results back;
	back.Read(kTwoCpuRecord);
	const std::string full = kTwoCpuRecord;

	// Room for everything but the last metric.
	const size_t withoutLast = full.size() - strlen("550:1/2.250000,2.230000;") + 1;
	std::vector<char> buffer(full.size() + 1, 'x');
	EXPECT_EQ(B_BUFFER_OVERFLOW, back.Write(buffer.data(), withoutLast + 5));
	EXPECT_EQ(full.substr(0, withoutLast - 1), std::string(buffer.data()));
	EXPECT_EQ(B_BUFFER_OVERFLOW, back.Write(buffer.data(), 0));
	EXPECT_EQ(B_OK, back.Write(buffer.data(), full.size() + 1));
	EXPECT_EQ(full, std::string(buffer.data()));

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
	EXPECT_EQ(2, copy.NbrCpus());
	EXPECT_EQ(kTwoCpuRecord, Record(copy));
	// The copy's icon is its own closed picture.
	EXPECT_EQ(0, memcmp(copy.Icon()->Bits(), Processor, kProcessorIconSize));

	source.Get(0L)->Time(9.0f);
	source.Devices().Get(1L)->Description(1, "changed");
	EXPECT_EQ(kTwoCpuRecord, Record(copy));

	Results& alias = copy;
	copy = alias;
	EXPECT_EQ(kTwoCpuRecord, Record(copy));
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


TEST_F(ResultsTest, CalibrateCallsRandAsOftenAsEachPassAsksAndNoPassesClearTheOverhead)
{
	Results results;
	for (int calls = 0; calls <= 7; calls++) {
		sRandCalls = 0;
		results.Calibrate(1000, calls);
		EXPECT_EQ(calls >= 1 && calls <= 6 ? 1000L * calls : 0L, sRandCalls) << calls;
		EXPECT_GE(results.Overhead(), 0);
	}

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
