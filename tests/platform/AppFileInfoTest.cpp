#include <AppFileInfo.h>

#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <File.h>
#include <Path.h>
#include <PlatformTest.h>
#include <Resources.h>

#include "platform/TempDirectory.h"

namespace {

class AppFileInfoTest : public testing::Test
{
protected:
	void SetUp() override
	{
		ASSERT_TRUE(fTemp.Valid());
		fTemp.UseAsDataHome();
		fApp = fTemp.Path("app");
		std::ofstream{fApp};
	}

	void TearDown() override { platform_set_xattr_disabled(false); }

	static version_info MakeVersion()
	{
		version_info info = {};
		info.major = 1;
		info.middle = 2;
		info.minor = 2;
		info.variety = B_FINAL_VERSION;
		info.internal = 7;
		strcpy(info.short_info, "BeOS benchmark");
		strcpy(info.long_info, "Quickstep 1.2.2");
		return info;
	}

	TempDirectory fTemp;
	std::string fApp;
};

} // namespace

TEST_F(AppFileInfoTest, VersionRecordsRoundTripByKind)
{
	BFile file(fApp.c_str(), B_READ_WRITE);
	BAppFileInfo info(&file);
	ASSERT_EQ(info.InitCheck(), B_OK);
	version_info written = MakeVersion();
	ASSERT_EQ(info.SetVersionInfo(&written, B_APP_VERSION_KIND), B_OK);

	BFile reader(fApp.c_str(), B_READ_ONLY);
	BAppFileInfo readBack(&reader);
	version_info read;
	memset(&read, 0x55, sizeof(read));
	ASSERT_EQ(readBack.GetVersionInfo(&read, B_APP_VERSION_KIND), B_OK);
	EXPECT_EQ(read.major, 1u);
	EXPECT_EQ(read.middle, 2u);
	EXPECT_EQ(read.minor, 2u);
	EXPECT_EQ(read.variety, static_cast<uint32>(B_FINAL_VERSION));
	EXPECT_EQ(read.internal, 7u);
	EXPECT_STREQ(read.short_info, "BeOS benchmark");
	EXPECT_STREQ(read.long_info, "Quickstep 1.2.2");

	// The other kind is a record of its own.
	EXPECT_EQ(readBack.GetVersionInfo(&read, B_SYSTEM_VERSION_KIND), B_ENTRY_NOT_FOUND);
}

TEST_F(AppFileInfoTest, TextsWithoutTerminatorAreCutToFit)
{
	BFile file(fApp.c_str(), B_READ_WRITE);
	BAppFileInfo info(&file);
	version_info written = MakeVersion();
	memset(written.short_info, 'S', sizeof(written.short_info));
	ASSERT_EQ(info.SetVersionInfo(&written, B_APP_VERSION_KIND), B_OK);
	version_info read;
	ASSERT_EQ(info.GetVersionInfo(&read, B_APP_VERSION_KIND), B_OK);
	EXPECT_EQ(std::string(read.short_info), std::string(63, 'S'));
}

TEST_F(AppFileInfoTest, ForeignAttributeIsNotAVersion)
{
	BFile file(fApp.c_str(), B_READ_WRITE);
	ASSERT_EQ(file.WriteAttr("BEOS:APP_VERSION", 0x41505056, 0, "short", 5), 5);
	BAppFileInfo info(&file);
	version_info read;
	EXPECT_EQ(info.GetVersionInfo(&read, B_APP_VERSION_KIND), B_BAD_DATA);
}

TEST_F(AppFileInfoTest, ExecutableNotBuiltYetKeepsItsVersion)
{
	std::string missing = fTemp.Path("quickstep");
	BFile file(missing.c_str(), B_READ_WRITE);
	EXPECT_NE(file.InitCheck(), B_OK);
	BAppFileInfo info(&file);
	ASSERT_EQ(info.InitCheck(), B_OK);
	version_info written = MakeVersion();
	ASSERT_EQ(info.SetVersionInfo(&written, B_APP_VERSION_KIND), B_OK);
	EXPECT_TRUE(info.LastInFallback());
	version_info read;
	ASSERT_EQ(info.GetVersionInfo(&read, B_APP_VERSION_KIND), B_OK);
	EXPECT_STREQ(read.short_info, "BeOS benchmark");

	BAppFileInfo none(nullptr);
	EXPECT_EQ(none.GetVersionInfo(&read, B_APP_VERSION_KIND), B_BAD_VALUE);
}

TEST_F(AppFileInfoTest, ResourcesAddFindReplaceAndRemove)
{
	BFile file(fApp.c_str(), B_READ_WRITE);
	BResources resources(&file);
	ASSERT_EQ(resources.InitCheck(), B_OK);
	const char help[] = "<HELP>text</HELP>";
	ASSERT_EQ(resources.AddResource("kw:help", 2002, help, strlen(help), "QStp.help"), B_OK);
	ASSERT_EQ(resources.AddResource(0x52415754, 5, "raw", 3), B_OK);

	BFile other(fApp.c_str(), B_READ_ONLY);
	BResources reader(&other);
	EXPECT_TRUE(reader.HasResource("kw:help", 2002));
	EXPECT_FALSE(reader.HasResource("kw:help", 2003));
	EXPECT_FALSE(reader.HasResource(0x52415754, 2002));
	size_t length = 0;
	const void* data = reader.LoadResource("kw:help", 2002, &length);
	ASSERT_NE(data, nullptr);
	EXPECT_EQ(std::string(static_cast<const char*>(data), length), help);
	const char* name = nullptr;
	ASSERT_EQ(reader.GetResourceInfo("kw:help", 2002, &name, &length), B_OK);
	EXPECT_STREQ(name, "QStp.help");
	// A type code and its four characters name the same type.
	data = reader.LoadResource("RAWT", 5, &length);
	ASSERT_NE(data, nullptr);
	EXPECT_EQ(std::string(static_cast<const char*>(data), length), "raw");

	ASSERT_EQ(resources.AddResource("kw:help", 2002, "new", 3), B_OK);
	BResources fresh(&other);
	data = fresh.LoadResource("kw:help", 2002, &length);
	ASSERT_NE(data, nullptr);
	EXPECT_EQ(std::string(static_cast<const char*>(data), length), "new");
	ASSERT_EQ(fresh.GetResourceInfo("kw:help", 2002, &name, nullptr), B_OK);
	EXPECT_STREQ(name, "");

	EXPECT_EQ(resources.RemoveResource("kw:help", 2002), B_OK);
	EXPECT_FALSE(resources.HasResource("kw:help", 2002));
	EXPECT_EQ(resources.LoadResource("kw:help", 2002, &length), nullptr);
	EXPECT_EQ(resources.RemoveResource("kw:help", 2002), B_ENTRY_NOT_FOUND);
}

TEST_F(AppFileInfoTest, LargeResourceOnRefusingFileSystem)
{
	platform_set_xattr_disabled(true);
	BFile file(fApp.c_str(), B_READ_ONLY);
	BResources resources(&file);
	std::string big(100000, 'h');
	ASSERT_EQ(resources.AddResource("kw:help", 2002, big.data(), big.size(), "big"), B_OK);
	EXPECT_TRUE(resources.LastInFallback());
	size_t length = 0;
	const void* data = resources.LoadResource("kw:help", 2002, &length);
	ASSERT_NE(data, nullptr);
	EXPECT_EQ(length, big.size());
}

TEST(AppPathTest, RunningProgramIsThisTest)
{
	BPath path;
	ASSERT_EQ(get_app_path(&path), B_OK);
	EXPECT_STREQ(path.Leaf(), "test_platform");
	EXPECT_EQ(access(path.Path(), X_OK), 0);
}
