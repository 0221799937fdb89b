#include <SharedFile.h>

#include <cerrno>
#include <fstream>
#include <sstream>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "platform/TempDirectory.h"

namespace {

std::string
Contents(const std::string& path)
{
	std::ifstream file(path);
	std::stringstream text;
	text << file.rdbuf();
	return text.str();
}

// What another user (or an earlier run) can leave under the name in a shared
// directory, and what creating and opening do with it. The link's target
// stands for a file of the user that must never be written.
enum Planted { kNothing, kOwnFile, kLinkToFile, kDanglingLink, kDirectory, kOtherUsersFile };

class SharedFileTest : public testing::TestWithParam<Planted>
{
protected:
	void SetUp() override
	{
		ASSERT_TRUE(fDirectory.Valid());
		fName = fDirectory.Path("shared");
		fTarget = fDirectory.Path("target");
		std::ofstream(fTarget) << "precious";
		switch (GetParam()) {
			case kNothing:
				break;
			case kOwnFile:
				std::ofstream(fName) << "stale";
				break;
			case kLinkToFile:
				ASSERT_EQ(0, symlink(fTarget.c_str(), fName.c_str()));
				break;
			case kDanglingLink:
				ASSERT_EQ(0, symlink(fDirectory.Path("nowhere").c_str(), fName.c_str()));
				break;
			case kDirectory:
				ASSERT_EQ(0, mkdir(fName.c_str(), 0700));
				break;
			case kOtherUsersFile:
				// Only root can give a file away.
				if (geteuid() != 0)
					GTEST_SKIP() << "needs root to make a file of another user";
				std::ofstream(fName) << "theirs";
				ASSERT_EQ(0, chown(fName.c_str(), 65534, 65534));
				break;
		}
	}

	TempDirectory fDirectory;
	std::string fName;
	std::string fTarget;
};

TEST_P(SharedFileTest, OnlyOurOwnPlainFileIsReplacedOrRead)
{
	const Planted planted = GetParam();
	const bool ours = planted == kNothing || planted == kOwnFile;

	FILE* created = platform_create_shared(fName.c_str(), "w", 0600);
	EXPECT_EQ(ours, created != nullptr);
	if (created != nullptr) {
		fputs("fresh", created);
		fclose(created);
		EXPECT_EQ("fresh", Contents(fName));
		struct stat status;
		ASSERT_EQ(0, stat(fName.c_str(), &status));
		EXPECT_EQ(0600u, status.st_mode & 0777);
	} else {
		EXPECT_EQ(EEXIST, errno);
	}
	EXPECT_EQ("precious", Contents(fTarget));
	EXPECT_FALSE(access(fDirectory.Path("nowhere").c_str(), F_OK) == 0);

	FILE* opened = platform_open_owned(fName.c_str(), "r");
	EXPECT_EQ(ours, opened != nullptr);
	EXPECT_EQ(ours, platform_is_owned_file(fName.c_str()));
	if (opened != nullptr) {
		fclose(opened);
	} else if (planted == kLinkToFile || planted == kDanglingLink) {
		EXPECT_EQ(ELOOP, errno);
	} else if (planted == kOtherUsersFile) {
		EXPECT_EQ(EPERM, errno);
	}
}

INSTANTIATE_TEST_SUITE_P(Planted, SharedFileTest,
                         testing::Values(kNothing, kOwnFile, kLinkToFile, kDanglingLink, kDirectory,
                                         kOtherUsersFile));

} // namespace
