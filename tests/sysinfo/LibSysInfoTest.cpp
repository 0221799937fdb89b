#include "sysinfo/LibSysInfo.h"

#include <cstring>
#include <string>
#include <utility>

#include <OS.h>
#include <PlatformTest.h>
#include <Rect.h>
#include <gtest/gtest.h>

namespace {

// Builds profiles from a chosen system record and screen instead of the machine.
class LibSysInfoTest : public testing::Test
{
protected:
	void SetUp() override
	{
		memset(&fInfo, 0, sizeof(fInfo));
		fInfo.cpu_count = 2;
		fInfo.cpu_type = B_CPU_INTEL_PENTIUM_II;
		fInfo.cpu_revision = 0x0652;
		fInfo.cpu_clock_speed = 400000000;
		fInfo.bus_clock_speed = 100000000;
		fInfo.platform_type = B_AT_CLONE_PLATFORM;
		fInfo.max_pages = 32768;
		strcpy(fInfo.kernel_build_date, "Mar 12 1999");
		strcpy(fInfo.kernel_build_time, "14:26:51");
		Screen(BRect(0, 0, 1023, 767), B_CMAP8);
	}

	void TearDown() override
	{
		platform_set_system_info(nullptr);
		platform_set_screen(nullptr, B_NO_COLOR_SPACE);
		platform_set_root(nullptr);
	}

	void Screen(const BRect& frame, int32 space)
	{
		platform_set_screen(&frame, static_cast<color_space>(space));
	}

	LibSysInfo Profile()
	{
		platform_set_system_info(&fInfo);
		return LibSysInfo();
	}

	// Codes go in as raw integers, as a platform could report codes that its
	// enumerations do not list (-1 among them).
	template <typename Field> LibSysInfo With(Field& field, int64 value)
	{
		int32 narrow = static_cast<int32>(value);
		memcpy(&field, sizeof(Field) == sizeof(narrow) ? static_cast<void*>(&narrow) : &value,
		       sizeof(Field));
		return Profile();
	}

	std::string DepthName(int32 space)
	{
		Screen(BRect(0, 0, 639, 479), space);
		return Profile().ScreenDepthStr();
	}

	system_info fInfo;
};

} // namespace


// The description, kernel build and printout of a two-processor machine, kept
// whole by an assignment over another machine's profile.
TEST_F(LibSysInfoTest, DescriptionOfATwoProcessorMachineSurvivesAssignment)
{
	LibSysInfo original = Profile();
	LibString description("old text");
	original.Description(description);
	EXPECT_STREQ("AT Clone (2-Intel Pentium II@400/100MHz) 128MB RAM", description.String());

	fInfo.cpu_count = 1;
	fInfo.cpu_type = B_CPU_AMD_K6_MODEL8;
	fInfo.platform_type = B_BEBOX_PLATFORM;
	fInfo.max_pages = 16384;
	Screen(BRect(0, 0, 639, 479), B_RGB16);
	LibSysInfo other = Profile();
	other = original;
	other = other;
	testing::internal::CaptureStderr();
	other.PrintToStream();
	EXPECT_EQ("AT Clone (2-Intel Pentium II@400/100MHz) 128MB RAM\n8 bit color, 1024x768\n",
	          testing::internal::GetCapturedStderr());
	EXPECT_STREQ("Mar 12 1999, 14:26:51", other.KernelBuild());
}


TEST_F(LibSysInfoTest, ProcessorAndPlatformNamesAreExactMatches)
{
	std::pair<int32, const char*> cpus[] = {{0x1052, "Intel Pentium 75"},
	                                        {23, "SH"},
	                                        {1, "601"},
	                                        {24, "Sparc"},
	                                        {0x1059, "Intel Pentium 75-486"},
	                                        {0x1065, "Intel Pentium II m5"},
	                                        {0x1159, "AMD K6 m9"},
	                                        {0x1260, "Cyrix 6 x86MX"}};
	for (auto [code, name] : cpus)
		EXPECT_STREQ(name, With(fInfo.cpu_type, code).CpuName()) << code;
	// Between listed codes, and outside them.
	for (int32 code : {0x1055, 0x1058, 6, 0, 25, 0x1261, -1})
		EXPECT_STREQ("Unknown", With(fInfo.cpu_type, code).CpuName()) << code;
	std::pair<int32, const char*> platforms[] = {{0, "BeBox"}, {2, "AT Clone"}, {12, "MK 61"}};
	for (auto [code, name] : platforms)
		EXPECT_STREQ(name, With(fInfo.platform_type, code).PlatformName()) << code;
	EXPECT_STREQ("Unknown", With(fInfo.platform_type, 13).PlatformName());
	EXPECT_STREQ("Unknown", With(fInfo.platform_type, -1).PlatformName());
}


TEST_F(LibSysInfoTest, DepthNamesLeaveTheGapsUnknown)
{
	std::pair<int32, const char*> named[] = {
	    {0, "No color"},    {1, "1 bit gray"},   {2, "8 bit gray"},   {3, "24 bit color"},
	    {4, "8 bit color"}, {5, "16 bit color"}, {8, "32 bit color"}, {16, "15 bit color"}};
	for (auto [space, name] : named)
		EXPECT_EQ(name, DepthName(space)) << space;
	// Alpha variants of the named spaces are not named.
	for (int32 space :
	     {6, 7, 9, 10, 11, 12, 13, 14, 15, 17, 0x1008, int32(B_RGBA32), int32(B_RGBA15)})
		EXPECT_EQ("Unknown", DepthName(space)) << space;
}


TEST_F(LibSysInfoTest, ClocksRoundUpOnlyAboveOneHalf)
{
	std::pair<int64, int32> clocks[] = {{400500000, 400},    {400500001, 401}, {400499999, 400},
	                                    {99999999, 100},     {100000000, 100}, {0, 0},
	                                    {3000000000LL, 3000}};
	for (auto [hertz, megahertz] : clocks)
		EXPECT_EQ(megahertz, With(fInfo.cpu_clock_speed, hertz).CpuClock()) << hertz;

	fInfo.bus_clock_speed = 66666666;
	EXPECT_EQ(67, Profile().BusClock());
	fInfo.bus_clock_speed = 66500000;
	EXPECT_EQ(66, Profile().BusClock());
}


TEST_F(LibSysInfoTest, MemoryIsCountedIn32Bits)
{
	// 2 GB and beyond wrap, and the wrapped value is what the profile shows.
	std::pair<int32, int32> memory[] = {{32768, 128},    {524287, 2047}, {524288, -2048},
	                                    {786432, -1024}, {1048576, 0},   {1048576 + 256, 1},
	                                    {255, 0}};
	for (auto [pages, megabytes] : memory)
		EXPECT_EQ(megabytes, With(fInfo.max_pages, pages).Memory()) << pages;
}


TEST_F(LibSysInfoTest, ScreenSizeFromTheInclusiveFrameDepthTextShared)
{
	// Fractions are rounded up before the conversion.
	Screen(BRect(10, 20, 809.25f, 619.5f), B_RGB32);
	LibSysInfo profile = Profile();
	EXPECT_EQ(801, profile.ScreenWidth());
	EXPECT_EQ(601, profile.ScreenHeight());

	// No display: the empty frame gives a zero-sized screen.
	Screen(BRect(0, 0, -1, -1), B_NO_COLOR_SPACE);
	profile = Profile();
	EXPECT_EQ(0, profile.ScreenWidth());
	EXPECT_EQ(0, profile.ScreenHeight());
	EXPECT_STREQ("No color", profile.ScreenDepthStr());

	// The depth text has one holder shared by every profile.
	Screen(BRect(0, 0, 1023, 767), B_CMAP8);
	LibSysInfo palette = Profile();
	Screen(BRect(0, 0, 1023, 767), B_RGB32);
	LibSysInfo trueColour = Profile();

	const char* first = palette.ScreenDepthStr();
	EXPECT_STREQ("8 bit color", first);
	const char* second = trueColour.ScreenDepthStr();
	EXPECT_EQ(first, second);
	EXPECT_STREQ("32 bit color", first);
}


TEST_F(LibSysInfoTest, OsVersionIsThePrettyNameOrLeftAlone)
{
	// The vendor's copy under /usr/lib serves when /etc has none.
	std::pair<const char*, const char*> roots[] = {
	    {"/os-release-debian", "Debian GNU/Linux 12 (bookworm)"},
	    {"/os-release-usrlib", "Example Linux 1.0"},
	    {"/os-release-none", "before"},
	    {"/os-release-unnamed", "before"}};
	for (auto [root, expected] : roots) {
		LibString version("before");
		platform_set_root((std::string(QS_FIXTURES_DIR) + root).c_str());
		LibGetOSVersion(version);
		EXPECT_STREQ(expected, version.String()) << root;
	}
}
