#include <cstdlib>
#include <cstring>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <FindDirectory.h>
#include <PlatformTest.h>

#include "platform/TempTree.h"

namespace {

class FindDirectoryTest : public testing::Test
{
protected:
	void SetUp() override
	{
		const char* tmpdir = getenv("TMPDIR");
		fHadTmpdir = tmpdir != nullptr;
		if (fHadTmpdir)
			fTmpdir = tmpdir;
	}
	void TearDown() override
	{
		if (fHadTmpdir)
			setenv("TMPDIR", fTmpdir.c_str(), 1);
		else
			unsetenv("TMPDIR");
		platform_set_directory(B_COMMON_TEMP_DIRECTORY, nullptr);
		platform_set_directory(B_BEOS_BIN_DIRECTORY, nullptr);
	}

	std::string Find(directory_which which, bool create = false)
	{
		char path[B_PATH_NAME];
		status_t status = find_directory(which, 0, create, path, sizeof(path));
		return status == B_OK ? std::string(path) : "error " + std::to_string(status);
	}

	static const int B_PATH_NAME = 1024;
	bool fHadTmpdir = false;
	std::string fTmpdir;
};

TEST_F(FindDirectoryTest, TemporaryDirectoryFollowsTmpdir)
{
	setenv("TMPDIR", "/var/tmp/quickstep", 1);
	EXPECT_EQ("/var/tmp/quickstep", Find(B_COMMON_TEMP_DIRECTORY));
	setenv("TMPDIR", "/var/tmp/", 1);
	EXPECT_EQ("/var/tmp", Find(B_COMMON_TEMP_DIRECTORY));
	setenv("TMPDIR", "", 1);
	EXPECT_EQ("/tmp", Find(B_COMMON_TEMP_DIRECTORY));
	unsetenv("TMPDIR");
	EXPECT_EQ("/tmp", Find(B_COMMON_TEMP_DIRECTORY));
	EXPECT_EQ("/bin", Find(B_BEOS_BIN_DIRECTORY));
}

TEST_F(FindDirectoryTest, OverrideWinsUntilRemoved)
{
	platform_set_directory(B_BEOS_BIN_DIRECTORY, "/opt/fake-tools");
	EXPECT_EQ("/opt/fake-tools", Find(B_BEOS_BIN_DIRECTORY));
	unsetenv("TMPDIR");
	EXPECT_EQ("/tmp", Find(B_COMMON_TEMP_DIRECTORY)); // other codes are untouched
	platform_set_directory(B_BEOS_BIN_DIRECTORY, nullptr);
	EXPECT_EQ("/bin", Find(B_BEOS_BIN_DIRECTORY));
}

TEST_F(FindDirectoryTest, DocumentationLiesBesideTheExecutablesDirectory)
{
	// The tests run from <build>/tests, the tools from <build>/bin: both have
	// <build>/share/doc.
	std::string bin = QS_BIN_DIR;
	std::string build = bin.substr(0, bin.find_last_of('/'));
	EXPECT_EQ(build + "/share/doc", Find(B_COMMON_DOCUMENTATION_DIRECTORY));
}

TEST_F(FindDirectoryTest, ShortBufferOverflowsAndExactFitSucceeds)
{
	platform_set_directory(B_COMMON_TEMP_DIRECTORY, "/tmp/abc");
	char path[16];
	memset(path, 'x', sizeof(path));
	EXPECT_EQ(B_BUFFER_OVERFLOW, find_directory(B_COMMON_TEMP_DIRECTORY, 0, false, path, 8));
	EXPECT_EQ('x', path[0]);
	ASSERT_EQ(B_OK, find_directory(B_COMMON_TEMP_DIRECTORY, 0, false, path, 9));
	EXPECT_STREQ("/tmp/abc", path);
	EXPECT_EQ('x', path[9]);
	EXPECT_EQ(B_BAD_VALUE, find_directory(B_COMMON_TEMP_DIRECTORY, 0, false, nullptr, 9));
}

TEST_F(FindDirectoryTest, CreateMakesEveryMissingLevel)
{
	TempTree tree;
	std::string nested = tree.Path() + "/a/b/c";
	platform_set_directory(B_COMMON_TEMP_DIRECTORY, nested.c_str());
	EXPECT_EQ(nested, Find(B_COMMON_TEMP_DIRECTORY, false));
	struct stat status;
	EXPECT_NE(0, stat(nested.c_str(), &status));

	EXPECT_EQ(nested, Find(B_COMMON_TEMP_DIRECTORY, true));
	ASSERT_EQ(0, stat(nested.c_str(), &status));
	EXPECT_TRUE(S_ISDIR(status.st_mode));
	// Already there: still fine.
	EXPECT_EQ(nested, Find(B_COMMON_TEMP_DIRECTORY, true));

	tree.Write("file", "x");
	std::string overFile = tree.Path() + "/file";
	platform_set_directory(B_COMMON_TEMP_DIRECTORY, overFile.c_str());
	char path[1024];
	EXPECT_EQ(B_NOT_A_DIRECTORY,
	          find_directory(B_COMMON_TEMP_DIRECTORY, 0, true, path, sizeof(path)));
	std::string belowFile = overFile + "/sub";
	platform_set_directory(B_COMMON_TEMP_DIRECTORY, belowFile.c_str());
	EXPECT_NE(B_OK, find_directory(B_COMMON_TEMP_DIRECTORY, 0, true, path, sizeof(path)));
}

TEST_F(FindDirectoryTest, UnknownCodeIsRefused)
{
	char path[64];
	EXPECT_EQ(B_BAD_VALUE,
	          find_directory(static_cast<directory_which>(4242), 0, false, path, sizeof(path)));
}

} // namespace
