#include "results/ResultsFile.h"

#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "MachineFixture.h"
#include "platform/TempDirectory.h"
#include "results/ResultList.h"

namespace {

const char* kRecord = "Generic (2-x86@300/66MHz) 128MB RAM\t1:disk\t500:1000/1.500000,1.250000;";

class ResultsFileTest : public MachineFixture
{
protected:
	std::string Put(const std::string& text, const char* leaf = "run.results")
	{
		const std::string path = fDirectory.Path(leaf);
		std::ofstream(path) << text;
		return path;
	}

	static std::string Contents(const std::string& path)
	{
		std::ifstream file(path);
		std::stringstream text;
		text << file.rdbuf();
		return text.str();
	}

	static std::string File(const std::string& record)
	{
		return "1.0\n" + std::to_string(record.size()) + "\n" + record + "\n";
	}

	ResultsFileStatus ReadInto(const std::string& text)
	{
		return ResultsFile::Read(Put(text).c_str(), fList);
	}

	TempDirectory fDirectory;
	ResultList fList;
};

} // namespace


TEST_F(ResultsFileTest, WrittenFileHoldsVersionLengthAndRecordAndReadsBack)
{
	Results run(true);
	run.Read(kRecord);
	const std::string path = fDirectory.Path("Quickstep.results");
	ASSERT_EQ(kResultsFileOK, ResultsFile::Write(path.c_str(), run));
	EXPECT_EQ(File(kRecord), Contents(path));

	Results back(true);
	ASSERT_EQ(kResultsFileOK, ResultsFile::Read(path.c_str(), back));
	EXPECT_STREQ("Generic (2-x86@300/66MHz) 128MB RAM", back.Description());
	ASSERT_EQ(1, back.Size());
	EXPECT_EQ(2, back.First()->Count());
	EXPECT_EQ(1, back.Devices().Size());

	EXPECT_EQ(kResultsFileCannotOpen,
	          ResultsFile::Write(fDirectory.Path("missing/x.results").c_str(), run));
}


TEST_F(ResultsFileTest, EachBrokenLineHasItsOwnStatusAndAddsNothing)
{
	EXPECT_EQ(kResultsFileCannotOpen, ResultsFile::Read(fDirectory.Path("absent").c_str(), fList));
	EXPECT_EQ(kResultsFileBadVersion, ReadInto(""));
	EXPECT_EQ(kResultsFileBadVersion, ReadInto("2.0\n5\nabcde\n"));
	EXPECT_EQ(kResultsFileBadLength, ReadInto("1.0\n"));
	EXPECT_EQ(kResultsFileBadLength, ReadInto("1.0\nlong\n" + std::string(kRecord) + "\n"));
	EXPECT_EQ(kResultsFileBadLength, ReadInto("1.0\n-3\nabc\n"));
	EXPECT_EQ(kResultsFileLengthMismatch, ReadInto("1.0\n10\n" + std::string(kRecord) + "\n"));
	EXPECT_EQ(kResultsFileLengthMismatch, ReadInto("1.0\n10\n"));
	EXPECT_EQ(kResultsFileMalformed, ReadInto(File("no fields at all")));
	EXPECT_EQ(kResultsFileMalformed, ReadInto(File("Bare (1-x) 1MB RAM\t1:disk\t")));
	EXPECT_EQ(0, fList.Size());
}


TEST_F(ResultsFileTest, FileWithTwoRecordsAddsBothOrNothing)
{
	const std::string second = "Other (1-x86@100/66MHz) 32MB RAM\t550:1/2.0;";
	EXPECT_EQ(kResultsFileOK, ReadInto(File(kRecord) + "\n" + std::to_string(second.size()) + "\n" +
	                                   second + "\n"));
	ASSERT_EQ(2, fList.Size());
	EXPECT_STREQ("Other (1-x86@100/66MHz) 32MB RAM", fList.Get(1L)->Description());
	EXPECT_FALSE(fList.Get(1L)->IsCurrent());

	// A good first record and a bad second one: the good one is taken out again.
	EXPECT_EQ(kResultsFileLengthMismatch, ReadInto(File(kRecord) + "99\n" + second + "\n"));
	EXPECT_EQ(2, fList.Size());
}
