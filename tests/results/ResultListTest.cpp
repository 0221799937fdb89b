#include "results/ResultList.h"

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "MachineFixture.h"

namespace {

class ResultListTest : public MachineFixture
{
protected:
	Results* Add(const char* record)
	{
		Results* results = new Results;
		results->Read(record);
		fList.Insert(results);
		return results;
	}

	std::string Table()
	{
		char* text = nullptr;
		size_t length = 0;
		FILE* file = open_memstream(&text, &length);
		const int columns = fList.MaxNbrCpus();
		Results* first = fList.First();
		first->SaveHeader(file, columns);
		first->SaveUnits(file, columns);
		fList.Save(file, columns);
		fclose(file);
		std::string table(text, length);
		free(text);
		return table;
	}

	ResultList fList;
};

} // namespace


// Columns follow the largest CPU count; a one-CPU machine's value stands under
// the right-hand "1 cpu" column.
TEST_F(ResultListTest, TableExportPadsFewerTimesOnTheLeft)
{
	Results* two = Add("Two (2-x86@300/66MHz) 1MB RAM\t-1:screen\t500:100/1.0,2.0;0:0/4.0,8.0;");
	two->Get(0L)->Units("IPS");
	two->Get(1L)->Units("seconds");
	Add("One (1-x86@300/66MHz) 1MB RAM\t500:100/0.5;0:0/3.0;");

	EXPECT_EQ("\tDhrystone\t\t\t\t\n"
	          "\t(IPS)\t\t(seconds)\t\t\n"
	          "\t2 cpu\t1 cpu\t2 cpu\t1 cpu\t\n"
	          "Two (2-x86@300/66MHz) 1MB RAM\t100.0\t50.0\t4.0\t8.0\t\n"
	          "One (1-x86@300/66MHz) 1MB RAM\t\t200.0\t\t3.0\t\n",
	          Table());
}


TEST_F(ResultListTest, MaxRateAndCpuCountOverTheCurrentMetrics)
{
	EXPECT_FLOAT_EQ(0.0f, fList.MaxRate());
	EXPECT_EQ(0, fList.MaxNbrCpus());

	Results* first = Add("A (2-x) 1MB RAM\t500:100/1.0,0.5;550:1000/1.0,1.0;");
	Results* second = Add("B (1-x) 1MB RAM\t500:100/0.25;");
	Add("C (3-x) 1MB RAM\t");
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
	Results* both = Add("A (2-x) 1MB RAM\t500:1/1.0,1.0;550:1/1.0,1.0;");
	Results* fourierOnly = Add("B (1-x) 1MB RAM\t550:1/2.0;");
	Add("Empty (1-x) 1MB RAM\t");

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


TEST_F(ResultListTest, ContainsAnswersTheRowWhoseIconWasHit)
{
	Results* top = Add("A (1-x) 1MB RAM\t");
	Results* below = Add("B (1-x) 1MB RAM\t");
	top->SetIconRect(BRect(2, 19, 17, 34));
	below->SetIconRect(BRect(2, 36, 17, 51));

	EXPECT_EQ(below, fList.Contains(BPoint(10, 40)));
	EXPECT_TRUE(below->Expanded());
	EXPECT_FALSE(top->Expanded());
	EXPECT_EQ(nullptr, fList.Contains(BPoint(30, 20)));
}


TEST_F(ResultListTest, DeepCopyOfTheListCopiesEveryRecord)
{
	Add("A (1-x) 1MB RAM\t1:disk\t500:1/1.0;");
	ResultList copy;
	copy = fList;
	ASSERT_EQ(1, copy.Size());
	fList.First()->Get(0L)->Time(5.0f);
	EXPECT_EQ(1, copy.First()->Get(0L)->Count());
	EXPECT_EQ(1, copy.First()->Devices().Size());
	EXPECT_STREQ("A (1-x) 1MB RAM", copy.First()->Description());
}
