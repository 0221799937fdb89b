// Looks at the machine before and during a run for what makes its numbers
// less trustworthy: a frequency governor other than "performance", a busy
// machine, a battery, clocks that fall and thermal zones over their trip
// points. It only warns; the run is the same either way.
#ifndef MACHINE_CHECK_H
#define MACHINE_CHECK_H

#include <string>
#include <vector>

#include <MachineState.h>
#include <SupportDefs.h>

class MachineCheck
{
public:
	struct Warning {
		std::string kind; // "governor", "load", "battery", "clock", "thermal"
		std::string text;
	};

	// Load per online processor above which the machine counts as busy.
	static constexpr double kMaxLoadPerCpu = 0.5;

	MachineCheck();

	// Reads the machine before a run; the warnings about it are ready at once.
	void Start();
	// Reads clocks and temperatures again: called by the worker between
	// tests, never inside a timed region. Warns once per processor or zone.
	void Sample();

	// Read by the worker's owner before the run and after its completion.
	const std::vector<Warning>& Warnings() const { return fWarnings; }
	const machine_state& StartState() const { return fStart; }
	// The warnings found by Start, one line each, for an alert.
	std::string StartText() const;

private:
	machine_state fStart;
	machine_state fNow;
	std::vector<Warning> fWarnings;
	size_t fStartWarnings;
	std::vector<bool> fClockWarned;
	std::vector<bool> fZoneWarned;
};

#endif // MACHINE_CHECK_H
