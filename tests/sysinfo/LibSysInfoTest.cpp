#include "sysinfo/LibSysInfo.h"

#include <cstring>
#include <string>

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
	std::string CpuName(int32 code)
	{
		memcpy(&fInfo.cpu_type, &code, sizeof(code));
		return Profile().CpuName();
	}

	std::string PlatformName(int32 code)
	{
		memcpy(&fInfo.platform_type, &code, sizeof(code));
		return Profile().PlatformName();
	}

	std::string DepthName(int32 space)
	{
		Screen(BRect(0, 0, 639, 479), space);
		return Profile().ScreenDepthStr();
	}

	int32 CpuClock(int64 hertz)
	{
		fInfo.cpu_clock_speed = hertz;
		return Profile().CpuClock();
	}

	int32 Memory(int32 pages)
	{
		fInfo.max_pages = pages;
		return Profile().Memory();
	}

	system_info fInfo;
};

} // namespace


TEST_F(LibSysInfoTest, DescriptionOfATwoProcessorMachine)
{
	LibSysInfo profile = Profile();
	LibString description("old text");
	profile.Description(description);
	EXPECT_STREQ("AT Clone (2-Intel Pentium II@400/100MHz) 128MB RAM", description.String());
	EXPECT_STREQ("Mar 12 1999, 14:26:51", profile.KernelBuild());
	EXPECT_EQ(0x0652, profile.CpuRevision());
	EXPECT_EQ(2, profile.CpuCount());
}


TEST_F(LibSysInfoTest, ProcessorNamesAreExactMatches)
{
	EXPECT_EQ("Intel Pentium 75", CpuName(0x1052));
	EXPECT_EQ("SH", CpuName(23));
	EXPECT_EQ("601", CpuName(1));
	EXPECT_EQ("Sparc", CpuName(24));
	EXPECT_EQ("Intel Pentium 75-486", CpuName(0x1059));
	EXPECT_EQ("Intel Pentium II m5", CpuName(0x1065));
	EXPECT_EQ("AMD K6 m9", CpuName(0x1159));
	EXPECT_EQ("Cyrix 6 x86MX", CpuName(0x1260));
	// Between listed codes, and outside them.
	EXPECT_EQ("Unknown", CpuName(0x1055));
	EXPECT_EQ("Unknown", CpuName(0x1058));
	EXPECT_EQ("Unknown", CpuName(6));
	EXPECT_EQ("Unknown", CpuName(0));
	EXPECT_EQ("Unknown", CpuName(25));
	EXPECT_EQ("Unknown", CpuName(0x1261));
	EXPECT_EQ("Unknown", CpuName(-1));
}


TEST_F(LibSysInfoTest, PlatformNamesByPosition)
{
	EXPECT_EQ("BeBox", PlatformName(0));
	EXPECT_EQ("AT Clone", PlatformName(2));
	EXPECT_EQ("MK 61", PlatformName(12));
	EXPECT_EQ("Unknown", PlatformName(13));
	EXPECT_EQ("Unknown", PlatformName(-1));
}


TEST_F(LibSysInfoTest, DepthNamesLeaveTheGapsUnknown)
{
	EXPECT_EQ("No color", DepthName(0));
	EXPECT_EQ("1 bit gray", DepthName(1));
	EXPECT_EQ("8 bit gray", DepthName(2));
	EXPECT_EQ("24 bit color", DepthName(3));
	EXPECT_EQ("8 bit color", DepthName(4));
	EXPECT_EQ("16 bit color", DepthName(5));
	EXPECT_EQ("32 bit color", DepthName(8));
	EXPECT_EQ("15 bit color", DepthName(16));
	for (int32 space : {6, 7, 9, 10, 11, 12, 13, 14, 15, 17, 0x1008})
		EXPECT_EQ("Unknown", DepthName(space)) << space;
	// Alpha variants of the named spaces are not named.
	EXPECT_EQ("Unknown", DepthName(B_RGBA32));
	EXPECT_EQ("Unknown", DepthName(B_RGBA15));
}


TEST_F(LibSysInfoTest, ClocksRoundUpOnlyAboveOneHalf)
{
	EXPECT_EQ(400, CpuClock(400500000));
	EXPECT_EQ(401, CpuClock(400500001));
	EXPECT_EQ(400, CpuClock(400499999));
	EXPECT_EQ(100, CpuClock(99999999));
	EXPECT_EQ(100, CpuClock(100000000));
	EXPECT_EQ(0, CpuClock(0));
	EXPECT_EQ(3000, CpuClock(3000000000LL));

	fInfo.bus_clock_speed = 66666666;
	EXPECT_EQ(67, Profile().BusClock());
	fInfo.bus_clock_speed = 66500000;
	EXPECT_EQ(66, Profile().BusClock());
}


TEST_F(LibSysInfoTest, MemoryIsCountedIn32Bits)
{
	EXPECT_EQ(128, Memory(32768));
	EXPECT_EQ(2047, Memory(524287));
	// 2 GB and beyond wrap, and the wrapped value is what the profile shows.
	EXPECT_EQ(-2048, Memory(524288));
	EXPECT_EQ(-1024, Memory(786432));
	EXPECT_EQ(0, Memory(1048576));
	EXPECT_EQ(1, Memory(1048576 + 256));
	EXPECT_EQ(0, Memory(255));
}


TEST_F(LibSysInfoTest, ScreenSizeFromTheInclusiveFrame)
{
	LibSysInfo profile = Profile();
	EXPECT_EQ(1024, profile.ScreenWidth());
	EXPECT_EQ(768, profile.ScreenHeight());
	EXPECT_EQ(B_CMAP8, profile.ColorSpace());

	// Fractions are rounded up before the conversion.
	Screen(BRect(10, 20, 809.25f, 619.5f), B_RGB32);
	profile = Profile();
	EXPECT_EQ(801, profile.ScreenWidth());
	EXPECT_EQ(601, profile.ScreenHeight());

	// No display: the empty frame gives a zero-sized screen.
	Screen(BRect(0, 0, -1, -1), B_NO_COLOR_SPACE);
	profile = Profile();
	EXPECT_EQ(0, profile.ScreenWidth());
	EXPECT_EQ(0, profile.ScreenHeight());
	EXPECT_STREQ("No color", profile.ScreenDepthStr());
}


TEST_F(LibSysInfoTest, ScreenDepthTextHasOneSharedHolder)
{
	LibSysInfo palette = Profile();
	Screen(BRect(0, 0, 1023, 767), B_RGB32);
	LibSysInfo trueColour = Profile();

	const char* first = palette.ScreenDepthStr();
	EXPECT_STREQ("8 bit color", first);
	const char* second = trueColour.ScreenDepthStr();
	EXPECT_EQ(first, second);
	EXPECT_STREQ("32 bit color", first);
}


TEST_F(LibSysInfoTest, AssignmentCopiesTheWholeSnapshot)
{
	LibSysInfo original = Profile();
	fInfo.cpu_count = 1;
	fInfo.cpu_type = B_CPU_AMD_K6_MODEL8;
	fInfo.platform_type = B_BEBOX_PLATFORM;
	fInfo.max_pages = 16384;
	Screen(BRect(0, 0, 639, 479), B_RGB16);
	LibSysInfo other = Profile();

	other = original;
	LibString a;
	LibString b;
	original.Description(a);
	other.Description(b);
	EXPECT_STREQ(a.String(), b.String());
	EXPECT_EQ(1024, other.ScreenWidth());
	EXPECT_STREQ("8 bit color", other.ScreenDepthStr());
	EXPECT_STREQ("Mar 12 1999, 14:26:51", other.KernelBuild());

	other = other;
	other.Description(b);
	EXPECT_STREQ(a.String(), b.String());
}


TEST_F(LibSysInfoTest, PrintToStreamWritesDescriptionAndScreen)
{
	LibSysInfo profile = Profile();
	testing::internal::CaptureStderr();
	profile.PrintToStream();
	EXPECT_EQ("AT Clone (2-Intel Pentium II@400/100MHz) 128MB RAM\n"
	          "8 bit color, 1024x768\n",
	          testing::internal::GetCapturedStderr());
}


TEST_F(LibSysInfoTest, OsVersionIsThePrettyName)
{
	LibString version("before");
	platform_set_root((std::string(QS_FIXTURES_DIR) + "/os-release-debian").c_str());
	LibGetOSVersion(version);
	EXPECT_STREQ("Debian GNU/Linux 12 (bookworm)", version.String());

	// The vendor's copy under /usr/lib serves when /etc has none.
	platform_set_root((std::string(QS_FIXTURES_DIR) + "/os-release-usrlib").c_str());
	LibGetOSVersion(version);
	EXPECT_STREQ("Example Linux 1.0", version.String());
}


TEST_F(LibSysInfoTest, OsVersionLeftAloneWithoutAPrettyName)
{
	for (const char* root : {"/os-release-none", "/os-release-unnamed"}) {
		LibString version("before");
		platform_set_root((std::string(QS_FIXTURES_DIR) + root).c_str());
		LibGetOSVersion(version);
		EXPECT_STREQ("before", version.String()) << root;
	}
}
