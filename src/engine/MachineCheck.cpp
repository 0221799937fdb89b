#include "engine/MachineCheck.h"

#include <cstdarg>
#include <cstdio>
#include <map>


namespace {

std::string Formatted(const char* format, ...) __attribute__((format(printf, 1, 2)));

std::string
Formatted(const char* format, ...)
{
	char text[512];
	va_list arguments;
	va_start(arguments, format);
	vsnprintf(text, sizeof(text), format, arguments);
	va_end(arguments);
	return text;
}

} // namespace


MachineCheck::MachineCheck() : fStartWarnings(0)
{
	fStart.load_average = -1;
	fStart.has_battery = false;
	fStart.on_battery = false;
}


void
MachineCheck::Start()
{
	fWarnings.clear();
	get_machine_state(&fStart);
	fNow = fStart;
	fClockWarned.assign(fStart.cpus.size(), false);
	fZoneWarned.assign(fStart.thermal_zones.size(), false);

	// Governors other than "performance", with how many processors run each.
	std::map<std::string, int32> governors;
	for (const cpu_frequency_state& cpu : fStart.cpus) {
		if (!cpu.governor.empty() && cpu.governor != "performance")
			governors[cpu.governor]++;
	}
	for (const auto& governor : governors) {
		fWarnings.push_back(
		    {"governor", Formatted("the CPU frequency governor is \"%s\" on %d of %d CPUs, not "
		                           "\"performance\": clocks may change during a test",
		                           governor.first.c_str(), static_cast<int>(governor.second),
		                           static_cast<int>(fStart.cpus.size()))});
	}

	const size_t cpus = fStart.cpus.empty() ? 1 : fStart.cpus.size();
	if (fStart.load_average > kMaxLoadPerCpu * cpus) {
		fWarnings.push_back(
		    {"load", Formatted("the load average is %.2f on %d CPUs (above %.1f per CPU): other "
		                       "programs compete with the tests",
		                       fStart.load_average, static_cast<int>(cpus), kMaxLoadPerCpu)});
	}

	if (fStart.on_battery) {
		fWarnings.push_back(
		    {"battery", "the machine runs on battery: it may slow its processors to save power"});
	}

	// A zone already over its trip point is throttling before the first test.
	Sample();
	fStartWarnings = fWarnings.size();
}


void
MachineCheck::Sample()
{
	get_machine_clocks(&fNow);
	for (size_t i = 0; i < fNow.cpus.size() && i < fStart.cpus.size(); i++) {
		const int64 before = fStart.cpus[i].current_khz;
		const int64 now = fNow.cpus[i].current_khz;
		if (fClockWarned[i] || before <= 0 || now <= 0 || now >= before)
			continue;
		fClockWarned[i] = true;
		fWarnings.push_back(
		    {"clock",
		     Formatted("CPU %d ran at %lld MHz during the run, below its %lld MHz at the "
		               "start: the processor may be throttled",
		               static_cast<int>(fNow.cpus[i].cpu), static_cast<long long>(now / 1000),
		               static_cast<long long>(before / 1000))});
	}
	for (size_t i = 0; i < fNow.thermal_zones.size(); i++) {
		const thermal_zone_state& zone = fNow.thermal_zones[i];
		if (fZoneWarned[i] || zone.trip_millicelsius < 0 ||
		    zone.millicelsius < zone.trip_millicelsius)
			continue;
		fZoneWarned[i] = true;
		fWarnings.push_back(
		    {"thermal", Formatted("thermal zone %s (%s) reached %.1f °C, at or over its trip point "
		                          "of %.1f °C: the processors may be throttled",
		                          zone.name.c_str(), zone.type.empty() ? "?" : zone.type.c_str(),
		                          zone.millicelsius / 1000.0, zone.trip_millicelsius / 1000.0)});
	}
}


std::string
MachineCheck::StartText() const
{
	std::string text;
	for (size_t i = 0; i < fStartWarnings && i < fWarnings.size(); i++) {
		if (!text.empty())
			text += "\n";
		text += fWarnings[i].text;
	}
	return text;
}
