#include "engine/FileLife.h"

#include <cstdio>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>


namespace {

class FileLifeTest : public testing::Test
{
protected:
	void SetUp() override
	{
		char pattern[] = "/tmp/quickstep_filelife_XXXXXX";
		ASSERT_NE(mkdtemp(pattern), nullptr);
		fDirectory = pattern;
		fLife.SetPathPrefix((fDirectory + "/quickstep_lc_test").c_str());
	}

	void TearDown() override
	{
		for (int index = -1; index <= 10; index++)
			unlink(Name(index).c_str());
		EXPECT_EQ(rmdir(fDirectory.c_str()), 0) << "files left behind in " << fDirectory;
	}

	std::string Name(int index) const
	{
		return fDirectory + "/quickstep_lc_test." + std::to_string(index);
	}

	bool Exists(int index) const
	{
		struct stat st;
		return stat(Name(index).c_str(), &st) == 0 && st.st_size == 0;
	}

	void Touch(int index) const { fclose(fopen(Name(index).c_str(), "w")); }

	std::string fDirectory;
	FileLife fLife;
};

} // namespace


// Mode 1 creates, any other mode deletes, the whole inclusive range, on a
// thread left suspended until the caller waits for it.
TEST_F(FileLifeTest, GoSpawnsTheThreadOfTheModeForTheWholeRange)
{
	fLife.SetIndexRange(0, 9);
	Touch(10);
	const struct {
		int mode;
		const char* name;
	} cases[] = {
	    {1, "CreateThread"}, {2, "RemoveThread"}, {1, "CreateThread"}, {0, "RemoveThread"}};
	for (const auto& testCase : cases) {
		SCOPED_TRACE(testCase.mode);
		thread_id thread = fLife.Go(testCase.mode);
		ASSERT_GT(thread, 0);
		thread_info info;
		ASSERT_EQ(get_thread_info(thread, &info), B_OK);
		EXPECT_STREQ(info.name, testCase.name);
		EXPECT_EQ(info.priority, 100);
		EXPECT_EQ(info.state, B_THREAD_SUSPENDED);
		snooze(20000);
		EXPECT_EQ(Exists(0), testCase.mode != 1);

		status_t exitValue = -1;
		ASSERT_EQ(wait_for_thread(thread, &exitValue), B_OK);
		EXPECT_EQ(exitValue, 0);
		for (int index = 0; index <= 9; index++)
			EXPECT_EQ(Exists(index), testCase.mode == 1) << index;
		// Outside the range: left alone.
		EXPECT_FALSE(Exists(-1));
		EXPECT_TRUE(Exists(10));
	}
}


TEST_F(FileLifeTest, DefaultRangeIsIndexZeroAndFirstAboveLastTouchesNoFile)
{
	fLife.Create();
	EXPECT_TRUE(Exists(0));
	EXPECT_FALSE(Exists(1));
	fLife.Remove();
	EXPECT_FALSE(Exists(0));

	fLife.SetIndexRange(6, 5);
	Touch(5);
	Touch(6);
	fLife.Remove();
	EXPECT_TRUE(Exists(5));
	EXPECT_TRUE(Exists(6));
	fLife.SetIndexRange(8, 7);
	fLife.Create();
	EXPECT_FALSE(Exists(7));
	EXPECT_FALSE(Exists(8));
}


TEST_F(FileLifeTest, MissingDirectoryIsSkippedSilently)
{
	const std::string missing = fDirectory + "/missing";
	fLife.SetPathPrefix((missing + "/quickstep_lc_test").c_str());
	fLife.SetIndexRange(0, 4);

	testing::internal::CaptureStderr();
	fLife.Create();
	fLife.Remove();
	EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
	EXPECT_NE(access(missing.c_str(), F_OK), 0);
}
