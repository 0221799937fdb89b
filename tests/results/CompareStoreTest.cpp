#include "results/CompareStore.h"

#include <fstream>
#include <string>
#include <unistd.h>

#include <Message.h>
#include <Node.h>
#include <PlatformTest.h>
#include <gtest/gtest.h>

#include "MachineFixture.h"
#include "lib/LibNode.h"
#include "platform/TempDirectory.h"
#include "results/ResultsFile.h"

namespace {

const char* kOne = "One (1-x86@300/66MHz) 32MB RAM\t-1:8 bit color\t500:100/0.500000;";
const char* kTwo =
    "Two (2-x86@300/66MHz) 64MB RAM\t1:disk\t500:100/1.000000,2.000000;550:1/0.500000,0.250000;";

class CompareStoreTest : public MachineFixture
{
protected:
	void SetUp() override
	{
		MachineFixture::SetUp();
		fDirectory.UseAsDataHome();
	}

	void TearDown() override
	{
		platform_set_xattr_disabled(false);
		MachineFixture::TearDown();
	}

	// The records the store reads back, one a line.
	static std::string Stored(CompareStore& store)
	{
		ResultList back;
		EXPECT_EQ(B_OK, store.Read(back));
		std::string records;
		for (int32 i = 0; i < back.Size(); i++) {
			EXPECT_FALSE(back.Get(i)->IsCurrent());
			records += Record(*back.Get(i)) + "\n";
		}
		return records;
	}

	TempDirectory fDirectory;
};

} // namespace


// The desktop program need not exist, nor take attributes: its store then
// lives in the per-user place under its path. The current run is never stored.
TEST_F(CompareStoreTest, RoundTripInThePerUserStore)
{
	const std::string refusing = fDirectory.Path("quickstep");
	std::ofstream(refusing) << "program";
	const struct {
		std::string path;
		bool xattrDisabled;
		status_t refusal;
	} cases[] = {{fDirectory.Path("bin/quickstep"), false, B_ENTRY_NOT_FOUND},
	             {refusing, true, B_NOT_SUPPORTED}};
	for (const auto& testCase : cases) {
		SCOPED_TRACE(testCase.path);
		platform_set_xattr_disabled(testCase.xattrDisabled);
		CompareStore store(testCase.path.c_str());
		EXPECT_EQ("", Stored(store));

		ResultList rows;
		Add(rows, "Here (2-x86@300/66MHz) 64MB RAM\t500:1/1.0,1.0;", true);
		Add(rows, kOne);
		Add(rows, kTwo);
		ASSERT_EQ(B_OK, store.Write(rows));
		EXPECT_TRUE(store.LastWriteInFallback());
		EXPECT_EQ(testCase.refusal, store.LastRefusal());
		EXPECT_EQ(std::string(kOne) + "\n" + kTwo + "\n", Stored(store));

		// Writing again replaces the store.
		rows.Remove(0, 1);
		ASSERT_EQ(B_OK, store.Write(rows));
		EXPECT_EQ(std::string(kTwo) + "\n", Stored(store));
	}
}


TEST_F(CompareStoreTest, StoredRecordsWithoutFieldsAreSkippedAndDamageIsReported)
{
	const std::string path = fDirectory.Path("quickstep");
	BMessage message;
	message.AddString("results", "no tab here");
	message.AddString("results", kOne);
	ASSERT_EQ(B_OK, LibNode::WriteMessageAttr(path.c_str(), kCompareStoreAttribute, &message));

	CompareStore store(path.c_str());
	testing::internal::CaptureStderr();
	EXPECT_EQ(std::string(kOne) + "\n", Stored(store));
	EXPECT_EQ("", testing::internal::GetCapturedStderr());

	// An attribute of the name that holds no message leaves the list alone.
	ResultList back;
	Add(back, kTwo);
	BNode node(path.c_str());
	node.WriteAttr(kCompareStoreAttribute, B_STRING_TYPE, 0, "text", 5);
	EXPECT_NE(B_OK, store.Read(back));
	EXPECT_EQ(1, back.Size());
}


TEST_F(CompareStoreTest, StoreThatCannotBeWrittenKeepsWhatItHeld)
{
	CompareStore store(fDirectory.Path("gone/quickstep").c_str());
	ResultList rows;
	Add(rows, kOne);
	ASSERT_EQ(B_OK, store.Write(rows));

	// Neither the missing file nor a per-user store under a plain file can take
	// the write now.
	const std::string blocker = fDirectory.Path("blocker");
	std::ofstream(blocker) << "not a directory";
	setenv("XDG_DATA_HOME", blocker.c_str(), 1);
	Add(rows, kTwo);
	EXPECT_NE(B_OK, store.Write(rows));
	fDirectory.UseAsDataHome();
	EXPECT_EQ(std::string(kOne) + "\n", Stored(store));
}


// The first row's line appears right under the headings and again in the
// list. Columns follow the largest CPU count; a one-CPU machine's value stands
// under the right-hand "1 cpu" column.
TEST_F(CompareStoreTest, TableExportRepeatsTheFirstRowAndPadsFewerTimesOnTheLeft)
{
	ResultList rows;
	const std::string path = fDirectory.Path(kCompareTableName);
	EXPECT_EQ(B_BAD_VALUE, CompareStore::ExportTable(rows, path.c_str()));
	EXPECT_NE(0, access(path.c_str(), F_OK));

	Results* two =
	    Add(rows, "Two (2-x86@300/66MHz) 1MB RAM\t-1:screen\t500:100/1.0,2.0;0:0/4.0,8.0;");
	two->Get(0L)->Units("IPS");
	two->Get(1L)->Units("seconds");
	Add(rows, "One (1-x86@300/66MHz) 1MB RAM\t500:100/0.5;0:0/3.0;");
	ASSERT_EQ(B_OK, CompareStore::ExportTable(rows, path.c_str()));
	EXPECT_EQ("\tDhrystone\t\t\t\t\n"
	          "\t(IPS)\t\t(seconds)\t\t\n"
	          "\t2 cpu\t1 cpu\t2 cpu\t1 cpu\t\n"
	          "Two (2-x86@300/66MHz) 1MB RAM\t100.0\t50.0\t4.0\t8.0\t\n"
	          "Two (2-x86@300/66MHz) 1MB RAM\t100.0\t50.0\t4.0\t8.0\t\n"
	          "One (1-x86@300/66MHz) 1MB RAM\t\t200.0\t\t3.0\t\n",
	          FileText(path));

	EXPECT_NE(B_OK, CompareStore::ExportTable(rows, fDirectory.Path("no/dir/x").c_str()));
}


// Which build measured each run travels beside the records, which keep their
// form, through the store and results files; rows of two builds are told.
TEST_F(CompareStoreTest, BuildsOfTheRowsTravelBesideTheirRecords)
{
	CompareStore store(fDirectory.Path("bin/quickstep").c_str());
	ResultList rows;
	Add(rows, kOne);
	Add(rows, kTwo);
	rows.Get(0L)->SetProgram("1.2.2 (commit aaaa)");
	LibString one;
	LibString other;
	EXPECT_FALSE(CompareStore::MixedPrograms(rows, one, other)) << "an unknown build is no other";

	ASSERT_EQ(B_OK, store.Write(rows));
	EXPECT_EQ(std::string(kOne) + "\n" + kTwo + "\n", Stored(store));
	ResultList back;
	ASSERT_EQ(B_OK, store.Read(back));
	ASSERT_EQ(2, back.Size());
	EXPECT_STREQ("1.2.2 (commit aaaa)", back.Get(0L)->Program());
	EXPECT_STREQ("", back.Get(1)->Program());

	Results run(true);
	run.Read(kTwo);
	run.SetProgram("1.2.2 (commit bbbb)");
	const std::string path = fDirectory.Path("two.results");
	ASSERT_EQ(kResultsFileOK, ResultsFile::Write(path.c_str(), run));
	ASSERT_EQ(kResultsFileOK, ResultsFile::Read(path.c_str(), back));
	ASSERT_EQ(3, back.Size());
	EXPECT_STREQ("1.2.2 (commit bbbb)", back.Get(2)->Program());
	EXPECT_TRUE(CompareStore::MixedPrograms(back, one, other));
	EXPECT_STREQ("1.2.2 (commit aaaa)", one.String());
	EXPECT_STREQ("1.2.2 (commit bbbb)", other.String());
}
