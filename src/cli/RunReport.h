// What quickstep-cli run reports beyond the record: the spread of repeated
// tests, the machine check's warnings, the build and settings that made the
// run, and the scaling over processor configurations.
#ifndef CLI_RUN_REPORT_H
#define CLI_RUN_REPORT_H

#include <string>

#include <nlohmann/json.hpp>

#include <SupportDefs.h>

class MachineCheck;
class Metric;
class MetricSamples;
class Results;

struct RunSettings {
	int32 repeat = 0; // 0: every test once, as always
	double maxCv = 0; // per cent; 0: no extra runs for spread
	int32 maxRuns = 0;
	bool scaling = false;
};

// " ±  1.2 %" for one value of the table, kSpreadColumns wide on a terminal;
// "" without samples for it.
const int kSpreadColumns = 10;
std::string SpreadText(const MetricSamples& samples, const Metric& metric, int32 position);

// The machine check's warnings from index from on, one line each on
// standard error; answers how many there are in all.
size_t PrintMachineWarnings(const MachineCheck& check, size_t from);

// Per metric, each configuration's speed-up over one CPU.
void PrintScaling(Results& results, int32 configurations);

nlohmann::ordered_json ProgramJson(const RunSettings& settings, const MachineCheck& check);
nlohmann::ordered_json MachineJson(const MachineCheck& check);
// Every sample of the metric per configuration with its spread; null when
// the run did not repeat.
nlohmann::ordered_json SpreadJson(const MetricSamples& samples, const Metric& metric,
                                  int32 configurations);
nlohmann::ordered_json ScalingJson(const Metric& metric, int32 configurations);

#endif // CLI_RUN_REPORT_H
