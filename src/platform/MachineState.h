// What the machine is doing that makes measurements less trustworthy: the
// processors' frequency governors and clocks, the load, the power source and
// the thermal zones, read from /proc and /sys under the platform root (see
// PlatformTest.h), and the kernel release. A reading the machine does not
// offer (no cpufreq in a virtual machine, no battery) is simply absent.
#ifndef MACHINE_STATE_H
#define MACHINE_STATE_H

#include <string>
#include <vector>

#include "SupportDefs.h"

struct cpu_frequency_state {
	int32 cpu;            // the kernel's processor id
	std::string governor; // "" when the processor has no cpufreq governor
	int64 current_khz;    // 0 when unknown
};

struct thermal_zone_state {
	std::string name;   // "thermal_zone0"
	std::string type;   // "x86_pkg_temp", "acpitz" ...
	int64 millicelsius; // current temperature
	// The lowest trip point at which the kernel slows the processors down
	// (passive, hot or critical); -1 when the zone has none.
	int64 trip_millicelsius;
};

struct machine_state {
	std::vector<cpu_frequency_state> cpus; // the online processors, ascending
	double load_average;                   // one minute; negative when unknown
	bool has_battery;
	bool on_battery; // a battery discharges, or no mains adapter is online
	std::vector<thermal_zone_state> thermal_zones;
	std::string kernel_release; // "6.1.0-18-amd64"; "" when unknown
};

// Bounds on what is read from a tree that may be large or hostile.
const int32 kMaxStateCpus = 1024;
const int32 kMaxThermalZones = 64;
const int32 kMaxTripPoints = 16;
const int32 kMaxPowerSupplies = 32;

// Fills state with everything readable; never fails.
void get_machine_state(machine_state* state);
// Only the parts that change during a run: clocks and temperatures.
void get_machine_clocks(machine_state* state);

#endif // MACHINE_STATE_H
