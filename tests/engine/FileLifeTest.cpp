#include "engine/FileLife.h"

#include <cstdio>
#include <cstdlib>
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
		fPrefix = fDirectory + "/quickstep_lc_test";
	}

	void TearDown() override
	{
		for (int index = -2; index <= 12; index++)
			unlink(Name(index).c_str());
		unlink((fDirectory + "/other").c_str());
		EXPECT_EQ(rmdir(fDirectory.c_str()), 0) << "files left behind in " << fDirectory;
	}

	std::string Name(int index) const { return fPrefix + "." + std::to_string(index); }

	bool Exists(int index) const
	{
		struct stat st;
		return stat(Name(index).c_str(), &st) == 0;
	}

	void Touch(int index) const
	{
		FILE* file = fopen(Name(index).c_str(), "w");
		ASSERT_NE(file, nullptr);
		fclose(file);
	}

	// Spawns the thread of the mode and runs it to its end, as the benchmark
	// does; answers its exit value.
	status_t RunThread(FileLife& life, int mode)
	{
		thread_id thread = life.Go(mode);
		EXPECT_GT(thread, 0);
		status_t exitValue = -1;
		EXPECT_EQ(wait_for_thread(thread, &exitValue), B_OK);
		return exitValue;
	}

	std::string fDirectory;
	std::string fPrefix;
};

} // namespace


TEST_F(FileLifeTest, ThreadsCreateThenDeleteTheWholeInclusiveRange)
{
	FileLife life;
	life.SetPathPrefix(fPrefix.c_str());
	life.SetIndexRange(0, 9);
	Touch(10);

	EXPECT_EQ(RunThread(life, 1), 0);
	for (int index = 0; index <= 9; index++)
		EXPECT_TRUE(Exists(index)) << index;
	EXPECT_FALSE(Exists(-1));

	struct stat st;
	ASSERT_EQ(stat(Name(0).c_str(), &st), 0);
	EXPECT_EQ(st.st_size, 0);

	EXPECT_EQ(RunThread(life, 2), 0);
	for (int index = 0; index <= 9; index++)
		EXPECT_FALSE(Exists(index)) << index;
	// Outside the range: left alone.
	EXPECT_TRUE(Exists(10));
}


TEST_F(FileLifeTest, GoSpawnsTheThreadOfTheModeAndLeavesItSuspended)
{
	FileLife life;
	life.SetPathPrefix(fPrefix.c_str());
	life.SetIndexRange(3, 4);

	const struct {
		int mode;
		const char* name;
	} cases[] = {{1, "CreateThread"}, {2, "RemoveThread"}, {0, "RemoveThread"}};
	for (const auto& testCase : cases) {
		Touch(3);
		thread_id thread = life.Go(testCase.mode);
		ASSERT_GT(thread, 0);
		thread_info info;
		ASSERT_EQ(get_thread_info(thread, &info), B_OK);
		EXPECT_STREQ(info.name, testCase.name);
		EXPECT_EQ(info.priority, 100);
		EXPECT_EQ(info.state, B_THREAD_SUSPENDED);

		// Nothing happens until the caller waits for it.
		snooze(20000);
		EXPECT_TRUE(Exists(3));
		EXPECT_FALSE(Exists(4));

		status_t exitValue = -1;
		ASSERT_EQ(wait_for_thread(thread, &exitValue), B_OK);
		EXPECT_EQ(exitValue, 0);
		EXPECT_EQ(Exists(3), testCase.mode == 1);
		EXPECT_EQ(Exists(4), testCase.mode == 1);
		unlink(Name(4).c_str());
	}
}


TEST_F(FileLifeTest, FirstAboveLastTouchesNoFile)
{
	FileLife life;
	life.SetPathPrefix(fPrefix.c_str());
	life.SetIndexRange(6, 5);
	Touch(5);
	Touch(6);

	EXPECT_EQ(RunThread(life, 2), 0);
	life.Remove();
	EXPECT_TRUE(Exists(5));
	EXPECT_TRUE(Exists(6));

	unlink(Name(5).c_str());
	unlink(Name(6).c_str());
	EXPECT_EQ(RunThread(life, 1), 0);
	life.Create();
	EXPECT_FALSE(Exists(5));
	EXPECT_FALSE(Exists(6));
}


TEST_F(FileLifeTest, DefaultRangeIsTheSingleIndexZero)
{
	FileLife life;
	life.SetPathPrefix(fPrefix.c_str());
	life.Create();
	EXPECT_TRUE(Exists(0));
	EXPECT_FALSE(Exists(1));
	life.Remove();
	EXPECT_FALSE(Exists(0));
}


TEST_F(FileLifeTest, MissingDirectoryIsSkippedSilently)
{
	FileLife life;
	std::string missing = fDirectory + "/missing/quickstep_lc_test";
	life.SetPathPrefix(missing.c_str());
	life.SetIndexRange(0, 4);

	testing::internal::CaptureStderr();
	EXPECT_EQ(RunThread(life, 1), 0);
	EXPECT_EQ(RunThread(life, 2), 0);
	life.Create();
	life.Remove();
	EXPECT_EQ(testing::internal::GetCapturedStderr(), "");

	struct stat st;
	EXPECT_NE(stat((fDirectory + "/missing").c_str(), &st), 0);
}
