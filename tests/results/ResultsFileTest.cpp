#include "results/ResultsFile.h"

#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "MachineFixture.h"
#include "platform/TempDirectory.h"

namespace {

const std::string kRecord =
    "Generic (2-x86@300/66MHz) 128MB RAM\t1:disk\t500:1000/1.500000,1.250000;";

// A file of one record: version, length and record lines.
std::string
File(const std::string& record)
{
	return "1.0\n" + std::to_string(record.size()) + "\n" + record + "\n";
}

class ResultsFileTest : public MachineFixture
{
protected:
	ResultsFileStatus ReadInto(const std::string& text)
	{
		const std::string path = fDirectory.Path("run.results");
		std::ofstream(path) << text;
		return ResultsFile::Read(path.c_str(), fList);
	}

	TempDirectory fDirectory;
	ResultList fList;
};

} // namespace


TEST_F(ResultsFileTest, WrittenFileHoldsVersionLengthAndRecordAndReadsBack)
{
	Results run(true);
	run.Read(kRecord.c_str());
	const std::string path = fDirectory.Path("Quickstep.results");
	ASSERT_EQ(kResultsFileOK, ResultsFile::Write(path.c_str(), run));
	EXPECT_EQ(File(kRecord), FileText(path));

	Results back(true);
	ASSERT_EQ(kResultsFileOK, ResultsFile::Read(path.c_str(), back));
	EXPECT_EQ(kRecord, Record(back));

	EXPECT_EQ(kResultsFileCannotOpen,
	          ResultsFile::Write(fDirectory.Path("missing/x.results").c_str(), run));
}


TEST_F(ResultsFileTest, EachBrokenLineHasItsOwnStatusAndAddsNothing)
{
	EXPECT_EQ(kResultsFileCannotOpen, ResultsFile::Read(fDirectory.Path("absent").c_str(), fList));
	EXPECT_EQ(kResultsFileBadVersion, ReadInto(""));
	EXPECT_EQ(kResultsFileBadVersion, ReadInto("2.0\n5\nabcde\n"));
	EXPECT_EQ(kResultsFileBadLength, ReadInto("1.0\n"));
	EXPECT_EQ(kResultsFileBadLength, ReadInto("1.0\nlong\n" + kRecord + "\n"));
	EXPECT_EQ(kResultsFileBadLength, ReadInto("1.0\n-3\nabc\n"));
	EXPECT_EQ(kResultsFileLengthMismatch, ReadInto("1.0\n10\n" + kRecord + "\n"));
	EXPECT_EQ(kResultsFileLengthMismatch, ReadInto("1.0\n10\n"));
	EXPECT_EQ(kResultsFileMalformed, ReadInto(File("no fields at all")));
	EXPECT_EQ(kResultsFileMalformed, ReadInto(File("Bare (1-x) 1MB RAM\t1:disk\t")));
	EXPECT_EQ(0, fList.Size());
}


TEST_F(ResultsFileTest, FileWithTwoRecordsAddsBothOrNothing)
{
	const std::string second = "Other (1-x86@100/66MHz) 32MB RAM\t550:1/2.0;";
	EXPECT_EQ(kResultsFileOK, ReadInto(File(kRecord) + "\n" + File(second).substr(4)));
	ASSERT_EQ(2, fList.Size());
	EXPECT_STREQ("Other (1-x86@100/66MHz) 32MB RAM", fList.Get(1L)->Description());
	EXPECT_FALSE(fList.Get(1L)->IsCurrent());

	// A good first record and a bad second one: the good one is taken out again.
	EXPECT_EQ(kResultsFileLengthMismatch, ReadInto(File(kRecord) + "99\n" + second + "\n"));
	EXPECT_EQ(2, fList.Size());
}
