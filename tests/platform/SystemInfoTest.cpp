#include <algorithm>
#include <climits>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include <OS.h>
#include <PlatformTest.h>

#include "platform/TempTree.h"

namespace {

class SystemInfoTest : public testing::Test
{
protected:
	void TearDown() override
	{
		platform_set_root(nullptr);
		platform_set_system_info(nullptr);
	}

	system_info Read(const char* root)
	{
		platform_set_root(root);
		system_info info;
		memset(&info, 0x5a, sizeof(info));
		EXPECT_EQ(B_OK, get_system_info(&info));
		return info;
	}

	// A tree whose cpuinfo holds one processor block with these lines.
	system_info ReadCpu(const std::string& lines)
	{
		TempTree tree;
		tree.Write("proc/cpuinfo", "processor\t: 0\n" + lines + "\n\n");
		tree.Write("sys/devices/system/cpu/online", "0\n");
		return Read(tree.c_str());
	}

	std::string Fixture(const char* name) { return std::string(QS_FIXTURES_DIR) + "/" + name; }
};

TEST_F(SystemInfoTest, IntelFixtureGivesTheOldPentiumCodeAndEveryField)
{
	system_info info = Read(Fixture("sysroot-intel").c_str());
	EXPECT_EQ(4, info.cpu_count);
	EXPECT_EQ(B_CPU_INTEL_PENTIUM_II_MODEL_5, info.cpu_type);
	EXPECT_EQ(2, info.cpu_revision);
	EXPECT_EQ(B_AT_CLONE_PLATFORM, info.platform_type);
	// cpufreq's ceiling (450 MHz) wins over what cpuinfo saw (400.913 MHz).
	EXPECT_EQ(450000000LL, info.cpu_clock_speed);
	EXPECT_EQ(100000000LL, info.bus_clock_speed);
	EXPECT_EQ(32768, info.max_pages);
	EXPECT_EQ((131072 - 65536) / 4, info.used_pages);
	EXPECT_EQ(1700000000LL * 1000000, info.boot_time);
	// cpu1: user 50 + nice 5 + system 25 + irq 3 + softirq 4 + steal 1 ticks.
	long ticks = sysconf(_SC_CLK_TCK);
	EXPECT_EQ(88LL * 1000000 / ticks, info.cpu_infos[1].active_time);
	EXPECT_EQ(0, info.cpu_infos[2].active_time);
	EXPECT_STREQ("Linux 6.1.0-18-amd64", info.kernel_name);
	EXPECT_STREQ("Feb 01 2024", info.kernel_build_date);
	EXPECT_STREQ("", info.kernel_build_time);
	EXPECT_EQ(0x060100, info.kernel_version);
}

TEST_F(SystemInfoTest, X86CodesFollowVendorFamilyAndModel)
{
	struct {
		const char* vendor;
		int family;
		int model;
		int32 expected;
	} cases[] = {
	    {"GenuineIntel", 5, 1, B_CPU_INTEL_PENTIUM},
	    {"GenuineIntel", 6, 3, B_CPU_INTEL_PENTIUM_II},
	    {"GenuineIntel", 15, 15, 0x10ff},
	    // Family or model beyond one nibble: the vendor alone.
	    {"GenuineIntel", 6, 16, B_CPU_INTEL_X86},
	    {"AuthenticAMD", 5, 8, B_CPU_AMD_K6_MODEL8},
	    {"AuthenticAMD", 0x17, 1, B_CPU_AMD_X86},
	    {"CyrixInstead", 6, 0, B_CPU_CYRIX_6x86MX},
	    {"CyrixInstead", 5, 4, B_CPU_CYRIX_GXm},
	    // Other x86 makers have no vendor code of their own.
	    {"CentaurHauls", 6, 9, B_CPU_X86},
	};
	for (const auto& c : cases) {
		char lines[256];
		snprintf(lines, sizeof(lines),
		         "vendor_id\t: %s\ncpu family\t: %d\nmodel\t\t: %d\nstepping\t: 7\n", c.vendor,
		         c.family, c.model);
		system_info info = ReadCpu(lines);
		EXPECT_EQ(c.expected, info.cpu_type) << c.vendor << " " << c.family << "/" << c.model;
		EXPECT_EQ(7, info.cpu_revision);
		EXPECT_EQ(B_AT_CLONE_PLATFORM, info.platform_type);
	}
}

TEST_F(SystemInfoTest, ClockFallsBackToCpuinfoMegahertzWithoutCpufreq)
{
	system_info info = ReadCpu("vendor_id\t: AuthenticAMD\ncpu family\t: 23\nmodel\t: 49\n"
	                           "cpu MHz\t\t: 2994.375\n");
	EXPECT_EQ(2994375000LL, info.cpu_clock_speed);
	EXPECT_EQ(0, info.bus_clock_speed);

	info = ReadCpu("vendor_id\t: GenuineIntel\n");
	EXPECT_EQ(0, info.cpu_clock_speed);
}

TEST_F(SystemInfoTest, ArmFixtureReportsArmAndTheFastestCore)
{
	system_info info = Read(Fixture("sysroot-arm").c_str());
	EXPECT_EQ(4, info.cpu_count);
	EXPECT_EQ(B_CPU_ARM, info.cpu_type);
	// r1p3: variant 1, revision 3.
	EXPECT_EQ(0x13, info.cpu_revision);
	EXPECT_EQ(1800000000LL, info.cpu_clock_speed);
	EXPECT_NE(B_AT_CLONE_PLATFORM, info.platform_type);
	EXPECT_EQ(3884700 / 4, info.max_pages);
	// No MemAvailable: what is not free is used.
	EXPECT_EQ((3884700 - 100000) / 4, info.used_pages);
	EXPECT_STREQ("Jul 29 2024", info.kernel_build_date);
	EXPECT_EQ(0x060600 + 31, info.kernel_version);
}

TEST_F(SystemInfoTest, EmptyOrUnreadableTreeGivesZerosAndEmptyTexts)
{
	TempTree empty;
	system_info info = Read(empty.c_str());
	EXPECT_EQ(1, info.cpu_count);
	EXPECT_EQ(0, info.cpu_type);
	EXPECT_EQ(0, info.cpu_clock_speed);
	EXPECT_EQ(0, info.max_pages);
	EXPECT_EQ(0, info.boot_time);
	EXPECT_STREQ("", info.kernel_name);
	EXPECT_STREQ("", info.kernel_build_date);
	EXPECT_STREQ("", info.kernel_build_time);

	// Directories where files should be, and files full of nonsense.
	TempTree broken;
	broken.MakeDirectory("proc/cpuinfo");
	broken.MakeDirectory("proc/meminfo");
	broken.Write("proc/stat", "cpu0\nbtime\ncpu99999999999999999999 1 2\n");
	broken.Write("sys/devices/system/cpu/online", "3-1,x\n");
	broken.Write("sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq", "fast\n");
	broken.Write("sys/firmware/dmi/entries/4-0/raw", std::string("\x04\x08", 2));
	broken.Write("proc/sys/kernel/version", std::string(5000, 'x'));
	info = Read(broken.c_str());
	EXPECT_EQ(1, info.cpu_count);
	EXPECT_EQ(0, info.cpu_clock_speed);
	EXPECT_EQ(0, info.bus_clock_speed);
	EXPECT_EQ(0, info.max_pages);
	EXPECT_STREQ("", info.kernel_build_date);
}

TEST_F(SystemInfoTest, CpuCountIsEveryOnlineProcessor)
{
	TempTree tree;
	tree.Write("sys/devices/system/cpu/online", "0-3,8-9,12\n");
	EXPECT_EQ(7, Read(tree.c_str()).cpu_count);

	// Without sysfs, cpuinfo's processor entries count.
	TempTree old;
	old.Write("proc/cpuinfo", "processor\t: 0\nmodel\t: 1\n\nprocessor\t: 1\nmodel\t: 1\n\n");
	EXPECT_EQ(2, Read(old.c_str()).cpu_count);
}

TEST_F(SystemInfoTest, HugeMemoryClampsThePageCount)
{
	TempTree tree;
	// 16 TB: 2^32 pages of 4 KB.
	tree.Write("proc/meminfo", "MemTotal: 17179869184 kB\nMemAvailable: 17179869184 kB\n");
	system_info info = Read(tree.c_str());
	EXPECT_EQ(INT32_MAX, info.max_pages);
	EXPECT_EQ(0, info.used_pages);

	tree.Write("proc/meminfo", "MemTotal: 8589934588 kB\n");
	EXPECT_EQ(INT32_MAX, Read(tree.c_str()).max_pages);
}

TEST_F(SystemInfoTest, SubstituteRecordIsAnsweredUntilCleared)
{
	system_info chosen;
	memset(&chosen, 0, sizeof(chosen));
	chosen.cpu_count = 4;
	chosen.cpu_type = B_CPU_INTEL_PENTIUM_II;
	chosen.max_pages = 524288;
	strcpy(chosen.kernel_build_date, "Jul 14 1999");
	platform_set_system_info(&chosen);
	chosen.cpu_count = 9; // the layer keeps its own copy

	system_info info = Read(Fixture("sysroot-arm").c_str());
	EXPECT_EQ(4, info.cpu_count);
	EXPECT_EQ(B_CPU_INTEL_PENTIUM_II, info.cpu_type);
	EXPECT_EQ(524288, info.max_pages);
	EXPECT_STREQ("Jul 14 1999", info.kernel_build_date);

	platform_set_system_info(nullptr);
	EXPECT_EQ(B_CPU_ARM, Read(Fixture("sysroot-arm").c_str()).cpu_type);
	EXPECT_EQ(B_BAD_VALUE, get_system_info(nullptr));
}

TEST_F(SystemInfoTest, RealMachineAgreesWithTheKernel)
{
	system_info info = Read(nullptr);
	EXPECT_EQ(sysconf(_SC_NPROCESSORS_ONLN), info.cpu_count);
	EXPECT_GT(info.max_pages, 0);
	EXPECT_GT(info.boot_time, 0);
	EXPECT_STRNE("", info.kernel_name);
}

// The build date and time as the kernels of real distributions print them.
TEST_F(SystemInfoTest, KernelBuildDateOfRealDistributions)
{
	const struct {
		const char* version;
		const char* date;
		const char* time;
	} cases[] = {
	    {"#1 SMP PREEMPT_DYNAMIC Debian 6.1.123-1 (2025-01-02)", "Jan 02 2025", ""},
	    {"#57-Ubuntu SMP PREEMPT_DYNAMIC Tue Jan 14 15:18:28 UTC 2025", "Jan 14 2025", "15:18:28"},
	    {"#1 SMP PREEMPT_DYNAMIC Thu, 01 Feb 2024 10:30:35 +0000", "Feb 01 2024", "10:30:35"},
	    {"#1 SMP Wed Mar  6 09:01:02 CET 2024", "Mar 06 2024", "09:01:02"},
	    // A reproducible build stamps seconds since 1970.
	    {"#1 SMP PREEMPT_DYNAMIC @0", "Jan 01 1970", "00:00:00"},
	    {"#1 SMP PREEMPT_DYNAMIC @1736000000", "Jan 04 2025", "14:13:20"},
	    // Beyond four-digit years and beyond the clock: no date.
	    {"#1 SMP @99999999999999999", "", ""},
	    {"#1 SMP @99999999999999999999999", "", ""},
	    // Version numbers and a month-like word without a day are no date.
	    {"#1 SMP Debian 6.1.76-1 May", "", ""},
	    {"#2 SMP 2024-13-45", "", ""},
	    {"", "", ""},
	};
	for (const auto& c : cases) {
		SCOPED_TRACE(c.version);
		TempTree tree;
		tree.Write("proc/sys/kernel/version", std::string(c.version) + "\n");
		system_info info = Read(tree.c_str());
		EXPECT_STREQ(c.date, info.kernel_build_date);
		EXPECT_STREQ(c.time, info.kernel_build_time);
	}
}

// Numbers the kernel would never write saturate or are refused; none wraps
// (the sanitizer build checks that no step overflows on the way).
TEST_F(SystemInfoTest, OutOfRangeNumbersSaturateOrAreRefused)
{
	const std::string huge = "9223372036854775807";
	TempTree tree;
	tree.Write("proc/cpuinfo", "processor\t: 0\nCPU implementer\t: 0x41\nCPU variant\t: -1\n"
	                           "CPU revision\t: 3\n\n");
	tree.Write("sys/devices/system/cpu/online", "0-1\n");
	tree.Write("sys/devices/system/cpu/cpu1/cpufreq/cpuinfo_max_freq", huge + "\n");
	tree.Write("proc/stat", "cpu0 " + huge + " " + huge + " " + huge + " 0 0 " + huge + " " + huge +
	                            " " + huge + "\ncpu1 -5 -5 3 0 0 0 0 0\nbtime " + huge + "\n");
	tree.Write("proc/sys/kernel/osrelease", "99999999999999999999.300.7-huge\n");
	system_info info = Read(tree.c_str());
	EXPECT_EQ(3, info.cpu_revision); // a variant that is no core's is left out
	EXPECT_EQ(INT64_MAX, info.cpu_clock_speed);
	EXPECT_EQ(INT64_MAX, info.boot_time);
	EXPECT_EQ(INT64_MAX / sysconf(_SC_CLK_TCK), info.cpu_infos[0].active_time);
	EXPECT_EQ(3LL * 1000000 / sysconf(_SC_CLK_TCK), info.cpu_infos[1].active_time);
	EXPECT_EQ((255 << 16) + (255 << 8) + 7, info.kernel_version);

	tree.Write("proc/cpuinfo", "processor\t: 0\ncpu\t: 604e\nrevision\t: 99999999999\n\n");
	EXPECT_EQ(INT32_MAX, Read(tree.c_str()).cpu_revision);
	tree.Write("proc/cpuinfo", "processor\t: 0\nCPU implementer\t: 0x41\nCPU variant\t: 0x2\n"
	                           "CPU revision\t: 1\n\n");
	EXPECT_EQ(0x21, Read(tree.c_str()).cpu_revision);
}

// The online list is the kernel's: ascending ranges without overlap, ids
// below 8192. A list that asks for more (the reproducer repeats 0-65535
// over 64 KB) is refused as a whole, and cpuinfo's count is taken instead.
TEST_F(SystemInfoTest, OnlineListsBeyondTheKernelsAreRefused)
{
	std::string repeated;
	while (repeated.size() < 64 * 1024)
		repeated += "0-65535,";
	const struct {
		std::string list;
		int32 count;
	} cases[] = {
	    {"0-8191", 8192}, {"0-8192", 2},  {"0-3,2-5", 2},
	    {"4,0", 2},       {"0-1,0-1", 2}, {"99999999999999999999", 2},
	    {repeated, 2},
	};
	for (const auto& c : cases) {
		SCOPED_TRACE(c.list.substr(0, 40));
		TempTree tree;
		tree.Write("proc/cpuinfo", "processor\t: 0\n\nprocessor\t: 1\n\n");
		tree.Write("sys/devices/system/cpu/online", c.list + "\n");
		EXPECT_EQ(std::min<int32>(c.count, B_MAX_CPU_COUNT), Read(tree.c_str()).cpu_count);
	}
}

} // namespace
