// get_system_info on Linux: the profile is read afresh from procfs and sysfs
// under the platform root on every call.
#include "OS.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <dirent.h>
#include <sys/sysinfo.h>
#include <sys/utsname.h>
#include <unistd.h>

#include "PlatformFiles.h"
#include "PlatformTest.h"

using platform::ReadFile;
using platform::ReadLine;
using platform::ReadNumber;
using platform::RootedPath;
using platform::Trim;

namespace {

std::mutex sSubstituteLock;
std::unique_ptr<system_info> sSubstitute;

typedef std::map<std::string, std::string> CpuFields;

// The kernel's files are trusted for their format, not for their numbers: a
// fixture, a container's substitute or a corrupt file can hold any digits.
// Products and sums of them saturate instead of wrapping.
long long
SaturatingProduct(long long a, long long b)
{
	long long product;
	if (!__builtin_mul_overflow(a, b, &product))
		return product;
	return (a < 0) != (b < 0) ? LLONG_MIN : LLONG_MAX;
}

long long
SaturatingSum(long long a, long long b)
{
	long long sum;
	if (!__builtin_add_overflow(a, b, &sum))
		return sum;
	return a < 0 ? LLONG_MIN : LLONG_MAX;
}

int32
SaturateToInt32(long long value)
{
	if (value > INT32_MAX)
		return INT32_MAX;
	if (value < INT32_MIN)
		return INT32_MIN;
	return static_cast<int32>(value);
}

// The fields of the first processor block of cpuinfo ("key : value" lines up to
// the first blank line), plus the machine-wide lines that ARM kernels print
// after the blocks ("Hardware", "Revision").
CpuFields
ReadCpuFields(const std::string& cpuinfo)
{
	CpuFields fields;
	bool firstBlock = true;
	size_t start = 0;
	while (start < cpuinfo.size()) {
		size_t end = cpuinfo.find('\n', start);
		if (end == std::string::npos)
			end = cpuinfo.size();
		std::string line = cpuinfo.substr(start, end - start);
		start = end + 1;
		if (Trim(line).empty()) {
			if (!fields.empty())
				firstBlock = false;
			continue;
		}
		size_t colon = line.find(':');
		if (colon == std::string::npos)
			continue;
		std::string key = Trim(line.substr(0, colon));
		std::string value = Trim(line.substr(colon + 1));
		if (firstBlock || fields.find(key) == fields.end())
			fields.emplace(key, value);
	}
	return fields;
}

bool
FieldNumber(const CpuFields& fields, const char* key, long long& value, int base = 10)
{
	CpuFields::const_iterator found = fields.find(key);
	if (found == fields.end() || found->second.empty())
		return false;
	char* end = nullptr;
	long long parsed = strtoll(found->second.c_str(), &end, base);
	if (end == found->second.c_str())
		return false;
	value = parsed;
	return true;
}

const char* const kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                               "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

bool
AllDigits(const std::string& text, size_t count)
{
	if (text.size() != count)
		return false;
	for (char c : text) {
		if (!isdigit(static_cast<uint8>(c)))
			return false;
	}
	return true;
}

void
FormatDate(int year, int month, int day, std::string& date)
{
	char buffer[32];
	snprintf(buffer, sizeof(buffer), "%s %02d %04d", kMonths[month - 1], day, year);
	date = buffer;
}

// The build date ("Feb 01 2024") and time ("13:30:08", or "" when the string
// has none) of the kernel's version string. Kernels write the date in many
// ways: "#1 SMP PREEMPT_DYNAMIC Debian 6.1.76-1 (2024-02-01)", "... Tue Nov 14
// 13:30:08 UTC 2023", "... Thu, 01 Feb 2024 10:30:35 +0000", or a reproducible
// build's "@1700000000" (seconds since 1970). Anything else leaves both empty.
void
ParseKernelBuild(const std::string& version, std::string& date, std::string& time)
{
	date.clear();
	time.clear();
	std::vector<std::string> words;
	std::string word;
	for (char c : version + " ") {
		if (isspace(static_cast<uint8>(c)) || c == ',' || c == '(' || c == ')') {
			if (!word.empty())
				words.push_back(word);
			word.clear();
		} else {
			word += c;
		}
	}

	for (const std::string& candidate : words) {
		if (candidate.size() == 8 && candidate[2] == ':' && candidate[5] == ':' &&
		    AllDigits(candidate.substr(0, 2), 2) && AllDigits(candidate.substr(3, 2), 2) &&
		    AllDigits(candidate.substr(6, 2), 2)) {
			time = candidate;
			break;
		}
	}

	for (size_t index = 0; index < words.size() && date.empty(); index++) {
		const std::string& candidate = words[index];
		// 2024-02-01
		if (candidate.size() == 10 && candidate[4] == '-' && candidate[7] == '-' &&
		    AllDigits(candidate.substr(0, 4), 4) && AllDigits(candidate.substr(5, 2), 2) &&
		    AllDigits(candidate.substr(8, 2), 2)) {
			int month = atoi(candidate.c_str() + 5);
			int day = atoi(candidate.c_str() + 8);
			if (month >= 1 && month <= 12 && day >= 1 && day <= 31)
				FormatDate(atoi(candidate.c_str()), month, day, date);
			continue;
		}
		// Nov 14 ... 2023, or 01 Feb 2024
		int month = 0;
		for (int m = 0; m < 12; m++) {
			if (candidate == kMonths[m])
				month = m + 1;
		}
		if (month == 0)
			continue;
		int day = 0;
		auto isDay = [](const std::string& text) {
			return (AllDigits(text, 1) || AllDigits(text, 2)) && atoi(text.c_str()) >= 1 &&
			       atoi(text.c_str()) <= 31;
		};
		if (index + 1 < words.size() && isDay(words[index + 1]))
			day = atoi(words[index + 1].c_str());
		else if (index > 0 && isDay(words[index - 1]))
			day = atoi(words[index - 1].c_str());
		if (day == 0)
			continue;
		for (size_t next = index + 1; next < words.size() && next <= index + 4; next++) {
			if (AllDigits(words[next], 4)) {
				FormatDate(atoi(words[next].c_str()), month, day, date);
				break;
			}
		}
	}
	if (!date.empty())
		return;

	for (const std::string& candidate : words) {
		if (candidate.size() < 2 || candidate[0] != '@' ||
		    !AllDigits(candidate.substr(1), candidate.size() - 1))
			continue;
		time_t seconds = static_cast<time_t>(strtoll(candidate.c_str() + 1, nullptr, 10));
		struct tm parts;
		// Four-digit years only: the date is shown as "%04d".
		if (gmtime_r(&seconds, &parts) == nullptr || parts.tm_year > 9999 - 1900)
			return;
		FormatDate(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, date);
		char buffer[16];
		snprintf(buffer, sizeof(buffer), "%02d:%02d:%02d", parts.tm_hour, parts.tm_min,
		         parts.tm_sec);
		time = buffer;
		return;
	}
}

// "6.1.0-18-amd64" as 0x060100: major, minor and patch level one byte each
// (each stops at 255), the way the kernel numbers its own versions.
int64
KernelVersionCode(const std::string& release)
{
	long parts[3] = {};
	const char* cursor = release.c_str();
	for (int index = 0; index < 3; index++) {
		char* end = nullptr;
		parts[index] = strtol(cursor, &end, 10);
		if (end == cursor || parts[index] < 0)
			parts[index] = 0;
		if (*end != '.')
			break;
		cursor = end + 1;
	}
	return (static_cast<int64>(std::min(parts[0], 255L)) << 16) + (std::min(parts[1], 255L) << 8) +
	       std::min(parts[2], 255L);
}

cpu_type
X86CpuType(const std::string& vendor, long long family, long long model)
{
	int32 base;
	if (vendor == "GenuineIntel")
		base = B_CPU_INTEL_X86;
	else if (vendor == "AuthenticAMD")
		base = B_CPU_AMD_X86;
	else if (vendor == "CyrixInstead")
		base = B_CPU_CYRIX_X86;
	else
		return B_CPU_X86;
	// The code holds family and model in one nibble each; later processors
	// (family 6 model 158, AMD family 0x17 ...) do not fit and report their
	// vendor only.
	if (family < 0 || family > 15 || model < 0 || model > 15)
		return static_cast<cpu_type>(base);
	return static_cast<cpu_type>(base + (family << 4) + model);
}

cpu_type
PowerPcCpuType(const std::string& name)
{
	// "cpu : 604e" on the old chips; newer ones have no code of their own.
	static const struct {
		const char* prefix;
		cpu_type type;
	} kChips[] = {{"601", B_CPU_PPC_601},
	              {"603e", B_CPU_PPC_603e},
	              {"603", B_CPU_PPC_603},
	              {"604e", B_CPU_PPC_604e},
	              {"604", B_CPU_PPC_604}};
	for (const auto& chip : kChips) {
		if (name.compare(0, strlen(chip.prefix), chip.prefix) == 0)
			return chip.type;
	}
	return static_cast<cpu_type>(0);
}

cpu_type
MachineCpuType(const std::string& machine)
{
	static const struct {
		const char* prefix;
		cpu_type type;
	} kMachines[] = {{"x86", B_CPU_X86},     {"i386", B_CPU_X86},    {"i486", B_CPU_X86},
	                 {"i586", B_CPU_X86},    {"i686", B_CPU_X86},    {"aarch64", B_CPU_ARM},
	                 {"arm", B_CPU_ARM},     {"alpha", B_CPU_ALPHA}, {"mips", B_CPU_MIPS},
	                 {"parisc", B_CPU_HPPA}, {"m68k", B_CPU_M68K},   {"sh", B_CPU_SH},
	                 {"sparc", B_CPU_SPARC}};
	for (const auto& entry : kMachines) {
		if (machine.compare(0, strlen(entry.prefix), entry.prefix) == 0)
			return entry.type;
	}
	return static_cast<cpu_type>(0);
}

void
ReadProcessor(system_info* info, const std::vector<int>& cpus)
{
	std::string cpuinfo;
	ReadFile(RootedPath("/proc/cpuinfo"), cpuinfo);
	CpuFields fields = ReadCpuFields(cpuinfo);

	long long value = 0;
	CpuFields::const_iterator vendor = fields.find("vendor_id");
	if (vendor != fields.end()) {
		long long family = -1;
		long long model = -1;
		FieldNumber(fields, "cpu family", family);
		FieldNumber(fields, "model", model);
		info->cpu_type = X86CpuType(vendor->second, family, model);
		if (FieldNumber(fields, "stepping", value))
			info->cpu_revision = SaturateToInt32(value);
		info->platform_type = B_AT_CLONE_PLATFORM;
	} else if (fields.count("CPU implementer") != 0 || fields.count("CPU architecture") != 0) {
		info->cpu_type = B_CPU_ARM;
		// The variant and revision of the core: r<variant>p<revision>, four
		// bits each in the processor's id register. Other values are not a
		// core's: the variant is then left out, the revision saturated.
		long long variant = 0;
		FieldNumber(fields, "CPU variant", variant, 0);
		if (variant < 0 || variant > 0xf)
			variant = 0;
		if (FieldNumber(fields, "CPU revision", value)) {
			if (value >= 0 && value <= 0xf)
				info->cpu_revision = static_cast<int32>((variant << 4) | value);
			else
				info->cpu_revision = SaturateToInt32(value);
		}
	} else if (fields.count("cpu") != 0 && fields.count("revision") != 0) {
		// PowerPC: "cpu : 604e", "revision : 3.2 (pvr 0009 0302)".
		info->cpu_type = PowerPcCpuType(fields["cpu"]);
		info->cpu_revision = SaturateToInt32(strtoll(fields["revision"].c_str(), nullptr, 10));
	} else if (platform::AtRealRoot()) {
		struct utsname names;
		if (uname(&names) == 0) {
			info->cpu_type = MachineCpuType(names.machine);
			if (info->cpu_type == B_CPU_X86)
				info->platform_type = B_AT_CLONE_PLATFORM;
		}
	}

	// The fastest processor's cpufreq ceiling (kHz), else what cpuinfo saw (MHz).
	long long maxKHz = 0;
	for (int id : cpus) {
		char path[128];
		snprintf(path, sizeof(path), "/sys/devices/system/cpu/cpu%d/cpufreq/cpuinfo_max_freq", id);
		if (ReadNumber(RootedPath(path), value) && value > maxKHz)
			maxKHz = value;
	}
	if (maxKHz > 0) {
		info->cpu_clock_speed = SaturatingProduct(maxKHz, 1000);
	} else {
		CpuFields::const_iterator mhz = fields.find("cpu MHz");
		if (mhz == fields.end())
			mhz = fields.find("clock"); // PowerPC: "clock : 333.000000MHz"
		if (mhz != fields.end()) {
			double megahertz = strtod(mhz->second.c_str(), nullptr);
			if (megahertz > 0 && megahertz < 1e6)
				info->cpu_clock_speed = llround(megahertz * 1e6);
		}
	}
}

// The SMBIOS processor record keeps the external (bus) clock in MHz at offset
// 0x12. Reading it needs root on most systems; without it the bus clock is 0.
void
ReadBusClock(system_info* info)
{
	std::string record;
	if (!ReadFile(RootedPath("/sys/firmware/dmi/entries/4-0/raw"), record, 4096))
		return;
	if (record.size() < 0x14 || static_cast<uint8>(record[0]) != 4 ||
	    static_cast<uint8>(record[1]) < 0x14)
		return;
	int64 megahertz = static_cast<uint8>(record[0x12]) | (static_cast<uint8>(record[0x13]) << 8);
	info->bus_clock_speed = megahertz * 1000000;
}

int32
ClampToInt32(long long value)
{
	if (value > INT32_MAX)
		return INT32_MAX;
	if (value < 0)
		return 0;
	return static_cast<int32>(value);
}

void
ReadMemory(system_info* info)
{
	std::string meminfo;
	if (!ReadFile(RootedPath("/proc/meminfo"), meminfo))
		return;
	long long totalKB = -1;
	long long availableKB = -1;
	long long freeKB = -1;
	size_t start = 0;
	while (start < meminfo.size()) {
		size_t end = meminfo.find('\n', start);
		if (end == std::string::npos)
			end = meminfo.size();
		std::string line = meminfo.substr(start, end - start);
		start = end + 1;
		long long* target = nullptr;
		if (line.compare(0, 9, "MemTotal:") == 0)
			target = &totalKB;
		else if (line.compare(0, 13, "MemAvailable:") == 0)
			target = &availableKB;
		else if (line.compare(0, 8, "MemFree:") == 0)
			target = &freeKB;
		if (target != nullptr)
			*target = strtoll(line.c_str() + line.find(':') + 1, nullptr, 10);
	}
	if (totalKB <= 0)
		return;
	// Pages of 4096 bytes. A machine with 8 TB or more has more than INT32_MAX
	// of them; the count is then clamped there.
	info->max_pages = ClampToInt32(totalKB / 4);
	long long unusedKB = availableKB >= 0 ? availableKB : freeKB;
	if (unusedKB >= 0 && unusedKB <= totalKB)
		info->used_pages = ClampToInt32((totalKB - unusedKB) / 4);
}

// Microseconds since 1970 at which the machine booted, and each processor's
// busy time in microseconds.
void
ReadTimes(system_info* info, const std::vector<int>& cpus)
{
	std::string stat;
	if (!ReadFile(RootedPath("/proc/stat"), stat))
		return;
	long ticksPerSecond = sysconf(_SC_CLK_TCK);
	if (ticksPerSecond <= 0)
		ticksPerSecond = 100;
	size_t start = 0;
	while (start < stat.size()) {
		size_t end = stat.find('\n', start);
		if (end == std::string::npos)
			end = stat.size();
		std::string line = stat.substr(start, end - start);
		start = end + 1;
		if (line.compare(0, 6, "btime ") == 0) {
			info->boot_time = SaturatingProduct(strtoll(line.c_str() + 6, nullptr, 10), 1000000);
		} else if (line.compare(0, 3, "cpu") == 0 && isdigit(static_cast<uint8>(line[3]))) {
			char* cursor = nullptr;
			long id = strtol(line.c_str() + 3, &cursor, 10);
			// user nice system idle iowait irq softirq steal: all but idle and iowait.
			long long fields[8] = {};
			for (long long& field : fields)
				field = std::max(0LL, strtoll(cursor, &cursor, 10));
			long long busy = 0;
			for (int index : {0, 1, 2, 5, 6, 7})
				busy = SaturatingSum(busy, fields[index]);
			const bigtime_t activeTime = SaturatingProduct(busy, 1000000) / ticksPerSecond;
			for (size_t index = 0; index < cpus.size() && index < B_MAX_CPU_COUNT; index++) {
				if (cpus[index] == id)
					info->cpu_infos[index].active_time = activeTime;
			}
		}
	}
}

void
ReadLimits(system_info* info)
{
	long long value = 0;
	std::string sem;
	// SEMMSL SEMMNS SEMOPM SEMMNI: the second is the system-wide semaphore limit.
	if (ReadLine(RootedPath("/proc/sys/kernel/sem"), sem)) {
		char* cursor = nullptr;
		strtoll(sem.c_str(), &cursor, 10);
		info->max_sems = ClampToInt32(strtoll(cursor, nullptr, 10));
	}
	if (ReadNumber(RootedPath("/proc/sys/kernel/threads-max"), value))
		info->max_threads = ClampToInt32(value);
	if (ReadNumber(RootedPath("/proc/sys/kernel/pid_max"), value))
		info->max_teams = ClampToInt32(value);
	if (ReadNumber(RootedPath("/proc/sys/fs/mqueue/queues_max"), value))
		info->max_ports = ClampToInt32(value);
	// The machine's id: the first 16 hex digits of the systemd machine id.
	std::string line;
	if (ReadLine(RootedPath("/etc/machine-id"), line) && line.size() >= 16) {
		info->id[0] = static_cast<int32>(strtoul(line.substr(0, 8).c_str(), nullptr, 16));
		info->id[1] = static_cast<int32>(strtoul(line.substr(8, 8).c_str(), nullptr, 16));
	}
}

// What changes while the program runs: tasks, processes, page faults.
void
ReadUsage(system_info* info)
{
	std::string line;
	// "0.00 0.01 0.05 2/345 6789": 345 kernel tasks (threads) exist.
	if (ReadLine(RootedPath("/proc/loadavg"), line)) {
		size_t slash = line.find('/');
		if (slash != std::string::npos)
			info->used_threads = ClampToInt32(strtoll(line.c_str() + slash + 1, nullptr, 10));
	}
	// Processes: the numbered entries of /proc.
	if (DIR* processes = opendir(RootedPath("/proc").c_str())) {
		int32 count = 0;
		while (struct dirent* entry = readdir(processes)) {
			if (isdigit(static_cast<uint8>(entry->d_name[0])))
				count++;
		}
		closedir(processes);
		info->used_teams = count;
	}
	std::string vmstat;
	if (ReadFile(RootedPath("/proc/vmstat"), vmstat)) {
		size_t found = vmstat.find("\npgfault ");
		if (found != std::string::npos)
			info->page_faults = ClampToInt32(strtoll(vmstat.c_str() + found + 9, nullptr, 10));
	}
}

void
ReadKernel(system_info* info)
{
	std::string osType;
	std::string release;
	std::string version;
	bool haveVersion = ReadLine(RootedPath("/proc/sys/kernel/version"), version);
	ReadLine(RootedPath("/proc/sys/kernel/ostype"), osType);
	ReadLine(RootedPath("/proc/sys/kernel/osrelease"), release);
	if (platform::AtRealRoot() && (!haveVersion || osType.empty() || release.empty())) {
		struct utsname names;
		if (uname(&names) == 0) {
			if (!haveVersion)
				version = names.version;
			if (osType.empty())
				osType = names.sysname;
			if (release.empty())
				release = names.release;
		}
	}

	std::string name = osType;
	if (!release.empty())
		name += (name.empty() ? "" : " ") + release;
	snprintf(info->kernel_name, sizeof(info->kernel_name), "%s", name.c_str());

	std::string date;
	std::string time;
	ParseKernelBuild(version, date, time);
	snprintf(info->kernel_build_date, sizeof(info->kernel_build_date), "%s", date.c_str());
	snprintf(info->kernel_build_time, sizeof(info->kernel_build_time), "%s", time.c_str());
	info->kernel_version = KernelVersionCode(release);
}

// What cannot change while the program runs (the processors, their clocks,
// the kernel, the limits, the machine's id) is read once per process, or once
// again after the root is set anew: the profile is asked for at every start
// and end of a run, and each reading would otherwise cost the run time.
void
StaticProfile(system_info& info, std::vector<int>& cpus)
{
	static std::mutex sLock;
	static bool sRead = false;
	static unsigned long sGeneration = 0;
	static system_info sInfo;
	static std::vector<int> sCpus;

	std::lock_guard<std::mutex> lock(sLock);
	const unsigned long generation = platform::RootGeneration();
	if (!sRead || generation != sGeneration) {
		memset(&sInfo, 0, sizeof(sInfo));
		sCpus = platform::OnlineCpus(true);
		sInfo.cpu_count = static_cast<int32>(std::min<size_t>(sCpus.size(), B_MAX_CPU_COUNT));
		sInfo.platform_type = B_UNKNOWN_PLATFORM;
		ReadProcessor(&sInfo, sCpus);
		ReadBusClock(&sInfo);
		ReadLimits(&sInfo);
		ReadKernel(&sInfo);
		sRead = true;
		sGeneration = generation;
	}
	info = sInfo;
	cpus = sCpus;
}

} // namespace

void
platform_set_system_info(const system_info* info)
{
	std::lock_guard<std::mutex> lock(sSubstituteLock);
	if (info == nullptr)
		sSubstitute.reset();
	else
		sSubstitute.reset(new system_info(*info));
}

status_t
get_system_info(system_info* info)
{
	if (info == nullptr)
		return B_BAD_VALUE;
	{
		std::lock_guard<std::mutex> lock(sSubstituteLock);
		if (sSubstitute) {
			*info = *sSubstitute;
			return B_OK;
		}
	}

	std::vector<int> cpus;
	StaticProfile(*info, cpus);
	ReadMemory(info);
	ReadTimes(info, cpus);
	ReadUsage(info);
	if (info->boot_time == 0 && platform::AtRealRoot()) {
		struct sysinfo machine;
		if (sysinfo(&machine) == 0)
			info->boot_time =
			    (static_cast<bigtime_t>(::time(nullptr)) - machine.uptime) * 1000000LL;
	}
	return B_OK;
}
