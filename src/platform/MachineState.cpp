#include "MachineState.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dirent.h>
#include <sys/utsname.h>

#include "PlatformFiles.h"

namespace {

// The first line of a small kernel file, without surrounding blanks. Kernel
// attribute files are short; more than this is not one of them.
bool
ReadShortLine(const std::string& path, std::string& line)
{
	FILE* file = fopen(path.c_str(), "r");
	if (file == nullptr)
		return false;
	char buffer[256];
	const bool read = fgets(buffer, sizeof(buffer), file) != nullptr;
	fclose(file);
	if (!read)
		return false;
	line = platform::Trim(buffer);
	return true;
}


bool
ReadInteger(const std::string& path, int64& value)
{
	std::string line;
	if (!ReadShortLine(path, line) || line.empty())
		return false;
	char* end = nullptr;
	errno = 0;
	const long long parsed = strtoll(line.c_str(), &end, 10);
	if (end == line.c_str() || errno != 0)
		return false;
	value = parsed;
	return true;
}


// Entries of a directory under the root whose names start with prefix, sorted,
// at most limit of them.
std::vector<std::string>
Entries(const char* directory, const char* prefix, int32 limit)
{
	std::vector<std::string> names;
	DIR* listing = opendir(platform::RootedPath(directory).c_str());
	if (listing == nullptr)
		return names;
	const size_t prefixLength = strlen(prefix);
	while (dirent* entry = readdir(listing)) {
		if (entry->d_name[0] == '.' || strncmp(entry->d_name, prefix, prefixLength) != 0)
			continue;
		names.push_back(entry->d_name);
		// Enough to sort and keep the first ones of a huge directory.
		if (names.size() >= static_cast<size_t>(limit) * 4)
			break;
	}
	closedir(listing);
	// thermal_zone10 after thermal_zone9: by length, then by name.
	std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
		return a.size() != b.size() ? a.size() < b.size() : a < b;
	});
	if (names.size() > static_cast<size_t>(limit))
		names.resize(limit);
	return names;
}


std::string
CpuFile(int32 cpu, const char* name)
{
	char path[96];
	snprintf(path, sizeof(path), "/sys/devices/system/cpu/cpu%d/cpufreq/%s", static_cast<int>(cpu),
	         name);
	return platform::RootedPath(path);
}


void
ReadClocks(machine_state* state)
{
	for (cpu_frequency_state& cpu : state->cpus) {
		int64 khz = 0;
		cpu.current_khz =
		    ReadInteger(CpuFile(cpu.cpu, "scaling_cur_freq"), khz) && khz > 0 ? khz : 0;
	}
}


void
ReadTemperatures(machine_state* state)
{
	for (thermal_zone_state& zone : state->thermal_zones) {
		int64 value = 0;
		const std::string base = "/sys/class/thermal/" + zone.name + "/";
		zone.millicelsius =
		    ReadInteger(platform::RootedPath((base + "temp").c_str()), value) ? value : 0;
	}
}


void
ReadThermalZones(machine_state* state)
{
	for (const std::string& name :
	     Entries("/sys/class/thermal", "thermal_zone", kMaxThermalZones)) {
		thermal_zone_state zone;
		zone.name = name;
		zone.millicelsius = 0;
		zone.trip_millicelsius = -1;
		const std::string base = "/sys/class/thermal/" + name + "/";
		int64 value = 0;
		if (!ReadInteger(platform::RootedPath((base + "temp").c_str()), value))
			continue;
		ReadShortLine(platform::RootedPath((base + "type").c_str()), zone.type);
		for (int32 trip = 0; trip < kMaxTripPoints; trip++) {
			const std::string point = base + "trip_point_" + std::to_string(trip);
			std::string type;
			int64 limit = 0;
			if (!ReadShortLine(platform::RootedPath((point + "_type").c_str()), type))
				break;
			// Active trip points start fans; the others slow the processors.
			if (type == "active" ||
			    !ReadInteger(platform::RootedPath((point + "_temp").c_str()), limit) || limit <= 0)
				continue;
			if (zone.trip_millicelsius < 0 || limit < zone.trip_millicelsius)
				zone.trip_millicelsius = limit;
		}
		state->thermal_zones.push_back(zone);
	}
	ReadTemperatures(state);
}


void
ReadPowerSupplies(machine_state* state)
{
	bool mainsSeen = false;
	bool mainsOnline = false;
	bool discharging = false;
	for (const std::string& name : Entries("/sys/class/power_supply", "", kMaxPowerSupplies)) {
		const std::string base = "/sys/class/power_supply/" + name + "/";
		std::string type;
		if (!ReadShortLine(platform::RootedPath((base + "type").c_str()), type))
			continue;
		if (type == "Mains") {
			mainsSeen = true;
			int64 online = 0;
			if (ReadInteger(platform::RootedPath((base + "online").c_str()), online) && online != 0)
				mainsOnline = true;
		} else if (type == "Battery") {
			// Peripherals (a mouse's battery) carry scope "Device".
			std::string scope;
			if (ReadShortLine(platform::RootedPath((base + "scope").c_str()), scope) &&
			    scope == "Device")
				continue;
			state->has_battery = true;
			std::string status;
			if (ReadShortLine(platform::RootedPath((base + "status").c_str()), status) &&
			    status == "Discharging")
				discharging = true;
		}
	}
	state->on_battery = discharging || (state->has_battery && mainsSeen && !mainsOnline);
}

} // namespace


void
get_machine_state(machine_state* state)
{
	state->cpus.clear();
	state->thermal_zones.clear();
	state->load_average = -1;
	state->has_battery = false;
	state->on_battery = false;
	state->kernel_release.clear();

	std::vector<int> online = platform::OnlineCpus(true);
	if (online.size() > static_cast<size_t>(kMaxStateCpus))
		online.resize(kMaxStateCpus);
	for (int id : online) {
		cpu_frequency_state cpu;
		cpu.cpu = id;
		cpu.current_khz = 0;
		ReadShortLine(CpuFile(id, "scaling_governor"), cpu.governor);
		state->cpus.push_back(cpu);
	}
	ReadClocks(state);

	std::string load;
	if (ReadShortLine(platform::RootedPath("/proc/loadavg"), load)) {
		char* end = nullptr;
		const double value = strtod(load.c_str(), &end);
		if (end != load.c_str() && value >= 0)
			state->load_average = value;
	}

	ReadPowerSupplies(state);
	ReadThermalZones(state);

	if (!ReadShortLine(platform::RootedPath("/proc/sys/kernel/osrelease"), state->kernel_release) &&
	    platform::AtRealRoot()) {
		struct utsname names;
		if (uname(&names) == 0)
			state->kernel_release = names.release;
	}
}


void
get_machine_clocks(machine_state* state)
{
	ReadClocks(state);
	ReadTemperatures(state);
}
