#include "cli/RunReport.h"

#include <cstdio>

#include "engine/MachineCheck.h"
#include "lib/LibBuildInfo.h"
#include "lib/LibStatistics.h"
#include "results/Metric.h"
#include "results/MetricSamples.h"
#include "results/Results.h"

namespace {

// Position 0 is the run with every processor on, one fewer at each next.
int32
CpusAt(int32 configurations, int32 position)
{
	return configurations - position;
}


double
SpeedupAt(const Metric& metric, int32 position, int32 configurations)
{
	if (metric.Count() < configurations)
		return 0;
	return LibSpeedup(metric.Rate(position), metric.Rate(configurations - 1),
	                  metric.NbrCycles() == 0);
}

} // namespace


std::string
SpreadText(const MetricSamples& samples, const Metric& metric, int32 position)
{
	const LibSpread spread = samples.RateSpread(metric.Description(), position);
	if (spread.count == 0)
		return "";
	// A rate near zero (a timed region shorter than its calibration) can
	// vary by any multiple of itself.
	if (spread.cv >= 1000)
		return " ±  >999 %";
	char text[32];
	snprintf(text, sizeof(text), " ± %5.1f %%", spread.cv);
	return text;
}


size_t
PrintMachineWarnings(const MachineCheck& check, size_t from)
{
	const auto& warnings = check.Warnings();
	for (size_t i = from; i < warnings.size(); i++)
		fprintf(stderr, "quickstep-cli run: warning: %s\n", warnings[i].text.c_str());
	return warnings.size();
}


void
PrintScaling(Results& results, int32 configurations)
{
	printf("\nScaling: speed-up over 1 CPU (for times in seconds, 1 CPU's time over each)\n");
	printf("%-28s %-14s", "Test", "Units");
	for (int32 position = 0; position < configurations; position++) {
		char heading[16];
		snprintf(heading, sizeof(heading), "%d CPU",
		         static_cast<int>(CpusAt(configurations, position)));
		printf(" %10s", heading);
	}
	printf("\n");
	for (Metric* metric = results.First(); metric != nullptr; metric = results.Next()) {
		printf("%-28s %-14s", metric->Description(), metric->Units());
		for (int32 position = 0; position < configurations; position++) {
			const double speedup = SpeedupAt(*metric, position, configurations);
			if (speedup > 0)
				printf(" %9.2fx", speedup);
			else
				printf(" %10s", "-");
		}
		printf("\n");
	}
}


nlohmann::ordered_json
ProgramJson(const RunSettings& settings, const MachineCheck& check)
{
	nlohmann::ordered_json program = {
	    {"name", "Quickstep"},        {"version", LibBuildVersion()},
	    {"commit", LibBuildCommit()}, {"compiler", LibBuildCompiler()},
	    {"flags", LibBuildFlags()},   {"kernel", check.StartState().kernel_release}};
	program["settings"] = {{"repeat", settings.repeat > 0 ? settings.repeat : 1},
	                       {"max_cv_percent", settings.maxCv},
	                       {"max_runs", settings.repeat > 0 ? settings.maxRuns : 1},
	                       {"record", settings.repeat > 0 ? "median time" : "single time"}};
	return program;
}


nlohmann::ordered_json
MachineJson(const MachineCheck& check)
{
	const machine_state& state = check.StartState();
	nlohmann::ordered_json governors = nlohmann::ordered_json::object();
	for (const cpu_frequency_state& cpu : state.cpus) {
		if (!cpu.governor.empty())
			governors[cpu.governor] = governors.value(cpu.governor, 0) + 1;
	}
	nlohmann::ordered_json machine;
	machine["online_cpus"] = state.cpus.size();
	machine["governors"] = governors;
	if (state.load_average >= 0)
		machine["load_average"] = state.load_average;
	else
		machine["load_average"] = nullptr;
	machine["on_battery"] = state.on_battery;
	nlohmann::ordered_json warnings = nlohmann::ordered_json::array();
	for (const MachineCheck::Warning& warning : check.Warnings())
		warnings.push_back({{"kind", warning.kind}, {"text", warning.text}});
	machine["warnings"] = warnings;
	return machine;
}


nlohmann::ordered_json
SpreadJson(const MetricSamples& samples, const Metric& metric, int32 configurations)
{
	nlohmann::ordered_json spread = nlohmann::ordered_json::array();
	for (int32 position = 0; position < configurations; position++) {
		const auto& taken = samples.Of(metric.Description(), position);
		if (taken.empty())
			continue;
		nlohmann::ordered_json seconds = nlohmann::ordered_json::array();
		nlohmann::ordered_json rates = nlohmann::ordered_json::array();
		for (const MetricSamples::Sample& sample : taken) {
			seconds.push_back(sample.seconds);
			rates.push_back(sample.Rate());
		}
		const LibSpread rate = samples.RateSpread(metric.Description(), position);
		spread.push_back({{"cpus", CpusAt(configurations, position)},
		                  {"seconds", seconds},
		                  {"rates", rates},
		                  {"median", rate.median},
		                  {"min", rate.min},
		                  {"max", rate.max},
		                  {"cv_percent", rate.cv}});
	}
	if (spread.empty())
		return nullptr;
	return spread;
}


nlohmann::ordered_json
ScalingJson(const Metric& metric, int32 configurations)
{
	nlohmann::ordered_json scaling = nlohmann::ordered_json::array();
	for (int32 position = 0; position < configurations; position++) {
		const double speedup = SpeedupAt(metric, position, configurations);
		if (speedup > 0)
			scaling.push_back(speedup);
		else
			scaling.push_back(nullptr);
	}
	return scaling;
}
