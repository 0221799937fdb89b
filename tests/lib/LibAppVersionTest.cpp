#include "lib/LibAppVersion.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include <AppFileInfo.h>
#include <File.h>
#include <Path.h>
#include <PlatformTest.h>

#include "platform/TempDirectory.h"

namespace {

class LibAppVersionTest : public testing::Test
{
protected:
	void SetUp() override
	{
		ASSERT_TRUE(fTemp.Valid());
		fTemp.UseAsDataHome();
		fFile = fTemp.Path("program");
		ASSERT_TRUE(std::ofstream(fFile).good());
	}

	void WriteVersion(uint32 major, uint32 variety, version_kind kind = B_APP_VERSION_KIND)
	{
		version_info info = {};
		info.major = major;
		info.middle = 10;
		info.variety = variety;
		BFile file(fFile.c_str(), B_READ_WRITE);
		ASSERT_EQ(BAppFileInfo(&file).SetVersionInfo(&info, kind), B_OK);
	}

	TempDirectory fTemp;
	std::string fFile;
};

} // namespace

TEST_F(LibAppVersionTest, VarietyNamesFollowTheNumbers)
{
	const char* expected[] = {"3.10.0 Dev",  "3.10.0 Alpha", "3.10.0 Beta", "3.10.0 Gamma",
	                          "3.10.0 Gold", "3.10.0",       "3.10.0"};
	for (uint32 variety = 0; variety < 7; variety++) {
		WriteVersion(3, variety);
		EXPECT_STREQ(LibGetAppVersion(fFile.c_str()).String(), expected[variety]) << variety;
	}
}

TEST_F(LibAppVersionTest, NoRecordOrNoFileGivesEmptyText)
{
	EXPECT_TRUE(LibGetAppVersion(fFile.c_str()).IsEmpty());
	EXPECT_TRUE(LibGetAppVersion(fTemp.Path("missing").c_str()).IsEmpty());

	// A version record of the system kind is not the application's.
	WriteVersion(9, 0, B_SYSTEM_VERSION_KIND);
	EXPECT_TRUE(LibGetAppVersion(fFile.c_str()).IsEmpty());
}

TEST_F(LibAppVersionTest, SetWritesTheRunningProgramsRecord)
{
	std::string longText(300, 'x');
	LibSetAppVersion(1, 2, 2, "BeOS benchmark", longText.c_str(), 5, 0);
	EXPECT_STREQ(LibGetAppVersion().String(), "1.2.2");

	BPath self;
	ASSERT_EQ(get_app_path(&self), B_OK);
	BFile file(self.Path(), B_READ_ONLY);
	BAppFileInfo fileInfo(&file);
	version_info info;
	ASSERT_EQ(fileInfo.GetVersionInfo(&info, B_APP_VERSION_KIND), B_OK);
	EXPECT_STREQ(info.short_info, "BeOS benchmark");
	EXPECT_EQ(std::string(info.long_info), std::string(255, 'x'));

	// Null texts are written empty, not left from the last record.
	LibSetAppVersion(1, 2, 3, nullptr, nullptr, 2, 0);
	EXPECT_STREQ(LibGetAppVersion().String(), "1.2.3 Beta");
	ASSERT_EQ(fileInfo.GetVersionInfo(&info, B_APP_VERSION_KIND), B_OK);
	EXPECT_STREQ(info.short_info, "");
	EXPECT_STREQ(info.long_info, "");
}
