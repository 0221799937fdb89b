#include "results/CompareStore.h"

#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>

#include <Message.h>
#include <Node.h>
#include <PlatformTest.h>
#include <gtest/gtest.h>

#include "MachineFixture.h"
#include "lib/LibNode.h"
#include "platform/TempDirectory.h"
#include "results/ResultList.h"

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

	Results* Add(ResultList& list, const char* record, bool isCurrent = false)
	{
		Results* results = new Results(isCurrent);
		results->Read(record);
		list.Insert(results);
		return results;
	}

	static std::string Record(Results* results)
	{
		char buffer[kRecordSize];
		return results->Write(buffer);
	}

	TempDirectory fDirectory;
};

} // namespace


// The desktop program need not exist: its store lives in the per-user place
// under its path. The current run is never stored.
TEST_F(CompareStoreTest, RoundTripForAnExecutableThatDoesNotExist)
{
	CompareStore store(fDirectory.Path("bin/quickstep").c_str());
	ResultList empty;
	EXPECT_EQ(B_OK, store.Read(empty));
	EXPECT_EQ(0, empty.Size());

	ResultList rows;
	Add(rows, "Here (2-x86@300/66MHz) 64MB RAM\t500:1/1.0,1.0;", true);
	Add(rows, kOne);
	Add(rows, kTwo);
	ASSERT_EQ(B_OK, store.Write(rows));
	EXPECT_TRUE(store.LastWriteInFallback());
	EXPECT_EQ(B_ENTRY_NOT_FOUND, store.LastRefusal());

	ResultList back;
	ASSERT_EQ(B_OK, store.Read(back));
	ASSERT_EQ(2, back.Size());
	EXPECT_EQ(kOne, Record(back.Get(0L)));
	EXPECT_EQ(kTwo, Record(back.Get(1L)));
	EXPECT_FALSE(back.Get(0L)->IsCurrent());

	// Writing again replaces the store.
	back.Remove(0, 0);
	ASSERT_EQ(B_OK, store.Write(back));
	ResultList again;
	ASSERT_EQ(B_OK, store.Read(again));
	ASSERT_EQ(1, again.Size());
	EXPECT_STREQ("Two (2-x86@300/66MHz) 64MB RAM", again.First()->Description());
}


TEST_F(CompareStoreTest, RefusedAttributesGoToThePerUserStore)
{
	const std::string path = fDirectory.Path("quickstep");
	std::ofstream(path) << "program";
	platform_set_xattr_disabled(true);

	CompareStore store(path.c_str());
	ResultList rows;
	Add(rows, kTwo);
	ASSERT_EQ(B_OK, store.Write(rows));
	EXPECT_TRUE(store.LastWriteInFallback());
	EXPECT_EQ(B_NOT_SUPPORTED, store.LastRefusal());

	ResultList back;
	ASSERT_EQ(B_OK, store.Read(back));
	ASSERT_EQ(1, back.Size());
	EXPECT_EQ(kTwo, Record(back.First()));
}


TEST_F(CompareStoreTest, StoredRecordsWithoutFieldsAreSkippedAndDamageIsReported)
{
	const std::string path = fDirectory.Path("quickstep");
	BMessage message;
	message.AddString("results", "no tab here");
	message.AddString("results", kOne);
	ASSERT_EQ(B_OK, LibNode::WriteMessageAttr(path.c_str(), kCompareStoreAttribute, &message));

	CompareStore store(path.c_str());
	ResultList back;
	testing::internal::CaptureStderr();
	ASSERT_EQ(B_OK, store.Read(back));
	EXPECT_EQ("", testing::internal::GetCapturedStderr());
	ASSERT_EQ(1, back.Size());
	EXPECT_EQ(kOne, Record(back.First()));

	// An attribute of the name that holds no message leaves the list alone.
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

	ResultList back;
	ASSERT_EQ(B_OK, store.Read(back));
	ASSERT_EQ(1, back.Size());
	EXPECT_EQ(kOne, Record(back.First()));
}


// The first row's line appears right under the headings and again in the list.
TEST_F(CompareStoreTest, TableExportRepeatsTheFirstRow)
{
	ResultList rows;
	const std::string path = fDirectory.Path(kCompareTableName);
	EXPECT_EQ(B_BAD_VALUE, CompareStore::ExportTable(rows, path.c_str()));
	EXPECT_NE(0, access(path.c_str(), F_OK));

	Add(rows, kOne);
	Add(rows, kTwo);
	ASSERT_EQ(B_OK, CompareStore::ExportTable(rows, path.c_str()));
	std::ifstream file(path);
	std::stringstream text;
	text << file.rdbuf();
	EXPECT_EQ("\tDhrystone\t\t\n"
	          "\t()\t\t\n"
	          "\t2 cpu\t1 cpu\t\n"
	          "One (1-x86@300/66MHz) 32MB RAM\t\t200.0\t\n"
	          "One (1-x86@300/66MHz) 32MB RAM\t\t200.0\t\n"
	          "Two (2-x86@300/66MHz) 64MB RAM\t100.0\t50.0\t2.0\t4.0\t\n",
	          text.str());

	EXPECT_NE(B_OK, CompareStore::ExportTable(rows, fDirectory.Path("no/dir/x").c_str()));
}
