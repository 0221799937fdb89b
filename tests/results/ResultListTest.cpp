#include "results/ResultList.h"

#include <string>

#include <gtest/gtest.h>

#include "MachineFixture.h"

namespace {

class ResultListTest : public MachineFixture
{
protected:
	ResultList fList;
};

} // namespace


TEST_F(ResultListTest, MaxRateAndCpuCountOverTheCurrentMetrics)
{
	EXPECT_FLOAT_EQ(0.0f, fList.MaxRate());
	EXPECT_EQ(0, fList.MaxNbrCpus());

	Results* first = Add(fList, "A (2-x) 1MB RAM\t500:100/1.0,0.5;550:1000/1.0,1.0;");
	Results* second = Add(fList, "B (1-x) 1MB RAM\t500:100/0.25;");
	Add(fList, "C (3-x) 1MB RAM\t");
	EXPECT_EQ(3, fList.MaxNbrCpus());
	// No record has a current metric yet.
	EXPECT_FLOAT_EQ(0.0f, fList.MaxRate());

	fList.FirstCurrent();
	EXPECT_FLOAT_EQ(400.0f, fList.MaxRate());
	second->Get(0L)->NbrCycles(10);
	EXPECT_FLOAT_EQ(200.0f, fList.MaxRate());
	first->Next();
	EXPECT_FLOAT_EQ(1000.0f, fList.MaxRate());
}


TEST_F(ResultListTest, MakeCurrentAndFirstCurrentNameTheRecordsThatCannot)
{
	Results* both = Add(fList, "A (2-x) 1MB RAM\t500:1/1.0,1.0;550:1/1.0,1.0;");
	Results* fourierOnly = Add(fList, "B (1-x) 1MB RAM\t550:1/2.0;");
	Add(fList, "Empty (1-x) 1MB RAM\t");

	Metric probe;
	probe.Description("Dhrystone");
	testing::internal::CaptureStderr();
	fList.MakeCurrent(probe);
	EXPECT_EQ("Unable to make given metric <Dhrystone> current\n"
	          "Unable to make given metric <Dhrystone> current\n",
	          testing::internal::GetCapturedStderr());
	EXPECT_EQ(both->Get(0L), both->CurrentMetric());
	EXPECT_EQ(nullptr, fourierOnly->CurrentMetric());

	probe.Description("Fourier");
	fList.MakeCurrent(probe);
	EXPECT_EQ(both->Get(1L), both->CurrentMetric());

	testing::internal::CaptureStderr();
	fList.FirstCurrent();
	EXPECT_EQ("Unable to make first current <Empty (1-x) 1MB RAM>\n",
	          testing::internal::GetCapturedStderr());
	EXPECT_STREQ("Dhrystone", both->CurrentMetric()->Description());
	EXPECT_STREQ("Fourier", fourierOnly->CurrentMetric()->Description());
}


TEST_F(ResultListTest, ContainsAnswersTheRowWhoseIconWasHitAndCopiesAreDeep)
{
	Results* top = Add(fList, "A (1-x) 1MB RAM\t1:disk\t500:1/1.0;");
	Results* below = Add(fList, "B (1-x) 1MB RAM\t");
	top->SetIconRect(BRect(2, 19, 17, 34));
	below->SetIconRect(BRect(2, 36, 17, 51));
	EXPECT_EQ(below, fList.Contains(BPoint(10, 40)));
	EXPECT_TRUE(below->Expanded());
	EXPECT_FALSE(top->Expanded());
	EXPECT_EQ(nullptr, fList.Contains(BPoint(30, 20)));

	ResultList copy;
	copy = fList;
	ASSERT_EQ(2, copy.Size());
	top->Get(0L)->Time(5.0f);
	EXPECT_EQ("A (1-x) 1MB RAM\t1:disk\t500:1/1.000000;", Record(*copy.First()));
}
