#include "sysinfo/LibSysInfo.h"

#include <cmath>
#include <cstdio>
#include <cstring>

#include <OS.h>
#include <PlatformTest.h>
#include <Screen.h>

namespace {

const char* const kUnknown = "Unknown";

struct CodeName {
	int32 code;
	const char* name;
};

const CodeName kCpuNames[] = {
    {B_CPU_PPC_601, "601"},
    {B_CPU_PPC_603, "603"},
    {B_CPU_PPC_603e, "603e"},
    {B_CPU_PPC_604, "604"},
    {B_CPU_PPC_604e, "604e"},
    {B_CPU_PPC_686, "686"},
    {B_CPU_AMD_29K, "AMD 29K"},
    {B_CPU_X86, "x86"},
    {B_CPU_MC6502, "MC6502"},
    {B_CPU_Z80, "Z80"},
    {B_CPU_ALPHA, "Alpha"},
    {B_CPU_MIPS, "Mips"},
    {B_CPU_HPPA, "Hppa"},
    {B_CPU_M68K, "M68K"},
    {B_CPU_ARM, "Arm"},
    {B_CPU_SH, "SH"},
    {B_CPU_SPARC, "Sparc"},
    {B_CPU_INTEL_X86, "Intel x86"},
    {B_CPU_INTEL_PENTIUM, "Intel Pentium"},
    {B_CPU_INTEL_PENTIUM75, "Intel Pentium 75"},
    {B_CPU_INTEL_PENTIUM_486_OVERDRIVE, "Intel Pentium 486"},
    {B_CPU_INTEL_PENTIUM_MMX, "Intel Pentium MMX"},
    {B_CPU_INTEL_PENTIUM75_486_OVERDRIVE, "Intel Pentium 75-486"},
    {B_CPU_INTEL_PENTIUM_PRO, "Intel Pentium Pro"},
    {B_CPU_INTEL_PENTIUM_II, "Intel Pentium II"},
    {B_CPU_INTEL_PENTIUM_II_MODEL_5, "Intel Pentium II m5"},
    {B_CPU_AMD_X86, "AMD x86"},
    {B_CPU_AMD_K5_MODEL0, "AMD K5 m0"},
    {B_CPU_AMD_K5_MODEL1, "AMD K5 m1"},
    {B_CPU_AMD_K5_MODEL2, "AMD K5 m2"},
    {B_CPU_AMD_K5_MODEL3, "AMD K5 m3"},
    {B_CPU_AMD_K6_MODEL6, "AMD K6 m6"},
    {B_CPU_AMD_K6_MODEL7, "AMD K6 m7"},
    {B_CPU_AMD_K6_MODEL8, "AMD K6 m8"},
    {B_CPU_AMD_K6_MODEL9, "AMD K6 m9"},
    {B_CPU_CYRIX_X86, "Cyrix x86"},
    {B_CPU_CYRIX_GXm, "Cyrix GXm"},
    {B_CPU_CYRIX_6x86MX, "Cyrix 6 x86MX"},
};

// By position, from B_BEBOX_PLATFORM on.
const char* const kPlatformNames[] = {"BeBox", "Mac",    "AT Clone", "Eniac",          "Apple II",
                                      "Cray",  "Lisa",   "TI 994A",  "Timex Sinclair", "Orac 1",
                                      "Hal",   "BeSM 6", "MK 61"};

// Only the plain codes have names; the gaps and the alpha variants (high bits
// set) are "Unknown".
const CodeName kDepthNames[] = {
    {0, "No color"},    {1, "1 bit gray"},   {2, "8 bit gray"},   {3, "24 bit color"},
    {4, "8 bit color"}, {5, "16 bit color"}, {8, "32 bit color"}, {16, "15 bit color"},
};

template <size_t N>
const char*
LookUp(const CodeName (&table)[N], int32 code)
{
	for (const CodeName& row : table) {
		if (row.code == code)
			return row.name;
	}
	return kUnknown;
}

const char*
CpuTypeName(int32 cpuType)
{
	return LookUp(kCpuNames, cpuType);
}


const char*
PlatformTypeName(int32 platformType)
{
	const int32 count = static_cast<int32>(sizeof(kPlatformNames) / sizeof(kPlatformNames[0]));
	if (platformType < 0 || platformType >= count)
		return kUnknown;
	return kPlatformNames[platformType];
}


const char*
ColorSpaceName(int32 colorSpace)
{
	return LookUp(kDepthNames, colorSpace);
}


int32
ClockMHz(int64 hertz)
{
	int64 megahertz = hertz / 1000000;
	// Exactly one half rounds down, on purpose.
	if (hertz % 1000000 > 500000)
		megahertz++;
	return static_cast<int32>(megahertz);
}


int32
MemoryMB(int32 maxPages)
{
	// Bytes in a signed 32-bit value, as the profile has always counted them:
	// from 2048 MB on the product wraps and the wrapped value is shown.
	const int32 bytes = static_cast<int32>(static_cast<uint32>(maxPages) << 12);
	return static_cast<int32>(bytes * pow(2.0, -20));
}

} // namespace


LibSysInfo::LibSysInfo()
    : fColorSpace(0), fCpuCount(0), fScreenWidth(0), fScreenHeight(0), fCpuRevision(0),
      fCpuClock(0), fBusClock(0), fMemory(0)
{
	BScreen* screen = new BScreen(B_MAIN_SCREEN_ID);
	system_info info;
	memset(&info, 0, sizeof(info));
	get_system_info(&info);

	fColorSpace = screen->ColorSpace();
	// Rounded up before the conversion; the frame's edges are inclusive.
	fScreenWidth = static_cast<int32>(ceil(screen->Frame().right - screen->Frame().left)) + 1;
	fScreenHeight = static_cast<int32>(ceil(screen->Frame().bottom - screen->Frame().top)) + 1;
	fCpuCount = info.cpu_count;
	// The codes are read as plain integers: a platform may answer a code that
	// its enumeration does not list, and that must still come out "Unknown".
	static_assert(sizeof(info.cpu_type) == sizeof(int32), "32-bit processor code");
	static_assert(sizeof(info.platform_type) == sizeof(int32), "32-bit platform code");
	int32 cpuType;
	int32 platformType;
	memcpy(&cpuType, &info.cpu_type, sizeof(cpuType));
	memcpy(&platformType, &info.platform_type, sizeof(platformType));
	fCpuName = CpuTypeName(cpuType);
	fPlatformName = PlatformTypeName(platformType);
	fCpuRevision = info.cpu_revision;
	fCpuClock = ClockMHz(info.cpu_clock_speed);
	fBusClock = ClockMHz(info.bus_clock_speed);
	fKernelBuild.Format("%s, %s", info.kernel_build_date, info.kernel_build_time);
	fMemory = MemoryMB(info.max_pages);

	delete screen;
}


LibSysInfo::LibSysInfo(const LibSysInfo& other)
    : fColorSpace(other.fColorSpace), fCpuCount(other.fCpuCount), fCpuName(other.fCpuName),
      fPlatformName(other.fPlatformName), fScreenWidth(other.fScreenWidth),
      fScreenHeight(other.fScreenHeight), fCpuRevision(other.fCpuRevision),
      fCpuClock(other.fCpuClock), fBusClock(other.fBusClock), fKernelBuild(other.fKernelBuild),
      fMemory(other.fMemory)
{
}


LibSysInfo::~LibSysInfo()
{
}


LibSysInfo&
LibSysInfo::operator=(const LibSysInfo& other)
{
	if (this == &other)
		return *this;
	fColorSpace = other.fColorSpace;
	fCpuCount = other.fCpuCount;
	fCpuName = other.fCpuName;
	fPlatformName = other.fPlatformName;
	fScreenWidth = other.fScreenWidth;
	fScreenHeight = other.fScreenHeight;
	fCpuRevision = other.fCpuRevision;
	fCpuClock = other.fCpuClock;
	fBusClock = other.fBusClock;
	fKernelBuild = other.fKernelBuild;
	fMemory = other.fMemory;
	return *this;
}


const char*
LibSysInfo::ScreenDepthStr() const
{
	// One holder for all profiles: every call rewrites it in place, so a
	// pointer handed out earlier now reads the latest name.
	static char sDepth[32];
	snprintf(sDepth, sizeof(sDepth), "%s", ColorSpaceName(fColorSpace));
	return sDepth;
}


void
LibSysInfo::Description(LibString& out)
{
	out.Format("%s (%d-%s@%d/%dMHz) %dMB RAM", fPlatformName.String(), fCpuCount, fCpuName.String(),
	           fCpuClock, fBusClock, fMemory);
}


void
LibSysInfo::PrintToStream()
{
	LibString description;
	Description(description);
	fprintf(stderr, "%s\n", description.String());
	fprintf(stderr, "%s, %dx%d\n", ScreenDepthStr(), fScreenWidth, fScreenHeight);
}


void
LibGetOSVersion(LibString& out)
{
	const char* root = platform_root();
	const char* const files[] = {"/etc/os-release", "/usr/lib/os-release"};
	for (const char* name : files) {
		LibString path(root != nullptr ? root : "");
		path += name;
		FILE* file = fopen(path.String(), "r");
		if (file == nullptr)
			continue;
		char line[512];
		while (fgets(line, sizeof(line), file) != nullptr) {
			if (strncmp(line, "PRETTY_NAME=", 12) != 0)
				continue;
			char* value = line + 12;
			value[strcspn(value, "\r\n")] = '\0';
			const size_t length = strlen(value);
			if (length >= 2 && (value[0] == '"' || value[0] == '\'') &&
			    value[length - 1] == value[0]) {
				value[length - 1] = '\0';
				value++;
			}
			out = value;
			break;
		}
		fclose(file);
		return;
	}
}
