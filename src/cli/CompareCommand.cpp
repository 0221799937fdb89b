// quickstep-cli compare: one test across the stored machines and, when given,
// the run of a results file, as values and text bars on a common scale.
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>
#include <Errors.h>
#include <Path.h>

#include "cli/Commands.h"
#include "cli/CompareText.h"
#include "results/CompareStore.h"
#include "results/ResultList.h"
#include "results/ResultsFile.h"

namespace {

const char* kPrefix = "quickstep-cli compare";
const int kBarWidth = 40;

// A test is named by its measurement index or by its name, in any case.
struct TestChoice {
	bool byIndex;
	int32 index;
	std::string name;

	bool Matches(const Metric& metric) const
	{
		if (byIndex)
			return metric.Index() == index;
		return strcasecmp(metric.Description(), name.c_str()) == 0;
	}
};


TestChoice
ParseChoice(const std::string& text)
{
	TestChoice choice{false, 0, text};
	choice.byIndex = ParseTestIndex(text.c_str(), choice.index);
	return choice;
}


Metric*
FindMetric(Results& results, const TestChoice& choice)
{
	for (Metric* metric = results.First(); metric != nullptr; metric = results.Next()) {
		if (choice.Matches(*metric))
			return metric;
	}
	return nullptr;
}


int
Compare(const std::string& test, const std::string& resultsPath)
{
	ResultList rows;
	if (!resultsPath.empty()) {
		Results* current = new Results(true);
		const ResultsFileStatus status = ResultsFile::Read(resultsPath.c_str(), *current);
		if (status != kResultsFileOK) {
			fprintf(stderr, "%s: %s %s%s%s\n", kPrefix, resultsPath.c_str(),
			        ResultsFile::StatusText(status), status == kResultsFileCannotOpen ? ": " : "",
			        status == kResultsFileCannotOpen ? strerror(errno) : "");
			delete current;
			return 1;
		}
		rows.Insert(current);
	}

	BPath storePath;
	status_t status = DesktopExecutablePath(storePath);
	if (status != B_OK) {
		fprintf(stderr, "%s: cannot find this program's own path: %s\n", kPrefix,
		        strerror_status(status));
		return 1;
	}
	CompareStore store(storePath.Path());
	status = store.Read(rows);
	if (status != B_OK) {
		fprintf(stderr, "%s: cannot read the comparison store of %s: %s\n", kPrefix,
		        storePath.Path(), strerror_status(status));
		return 1;
	}
	if (rows.Size() == 0) {
		fprintf(stderr,
		        "%s: nothing to compare: the store of %s is empty and no --results file "
		        "was given\n",
		        kPrefix, storePath.Path());
		return 1;
	}

	WarnMixedPrograms(kPrefix, rows);
	const TestChoice choice = ParseChoice(test);
	Metric* found = nullptr;
	for (Results* results = rows.First(); results != nullptr && found == nullptr;
	     results = rows.Next())
		found = FindMetric(*results, choice);
	if (found == nullptr) {
		fprintf(stderr, "%s: no run measures '%s'\n", kPrefix, test.c_str());
		return 1;
	}
	const LibString name = found->Description();
	const bool inSeconds = found->NbrCycles() == 0;

	// One scale for all rows: the largest rate of the test in any of them.
	double scale = 0;
	double reference = 0;
	for (Results* results = rows.First(); results != nullptr; results = rows.Next()) {
		Metric* metric = FindMetric(*results, choice);
		if (metric == nullptr)
			continue;
		int which = 0;
		const double best = metric->MaxRate(which);
		// An infinite rate would scale every other bar down to nothing.
		if (!std::isfinite(best))
			continue;
		if (best > scale)
			scale = best;
		if (results->IsCurrent())
			reference = best;
	}

	printf("%s (index %d): %s; bars scaled to %.2f\n", name.String(),
	       static_cast<int>(found->Index()), inSeconds ? "seconds" : "work per second", scale);
	for (Results* results = rows.First(); results != nullptr; results = rows.Next()) {
		printf("\n%s%s\n", results->IsCurrent() ? "This run: " : "", results->Description());
		Metric* metric = FindMetric(*results, choice);
		if (metric == nullptr || metric->Count() == 0) {
			printf("  not measured\n");
			continue;
		}
		// The first time is the run with every processor on, one fewer each after.
		for (int i = 0; i < metric->Count(); i++) {
			const double rate = metric->Rate(i);
			printf("  %2d cpu %14.2f |%s|", static_cast<int>(results->NbrCpus() - i), rate,
			       TextBar(rate, scale, kBarWidth).c_str());
			if (reference > 0 && !results->IsCurrent())
				printf(" %5.0f%% of this run", 100.0 * rate / reference);
			printf("\n");
		}
	}
	return 0;
}

} // namespace


void
WarnMixedPrograms(const char* prefix, ResultList& rows)
{
	LibString one;
	LibString other;
	if (CompareStore::MixedPrograms(rows, one, other)) {
		fprintf(stderr,
		        "%s: warning: these runs were measured by different builds of Quickstep (%s and "
		        "%s); their numbers may differ because of the program, not only the machines\n",
		        prefix, one.String(), other.String());
	}
}


void
AddCompareCommand(CLI::App& app, CommandTable& commands)
{
	CLI::App* command = app.add_subcommand(
	    "compare", "Compare one test across the stored machines and a results file");
	auto test = std::make_shared<std::string>();
	auto resultsPath = std::make_shared<std::string>();
	command->add_option("TEST", *test, "Test name (any case) or measurement index")->required();
	command->add_option("--results", *resultsPath, "Results file of the run to compare")
	    ->type_name("FILE");
	commands.Add(command, [test, resultsPath] { return Compare(*test, *resultsPath); });
}
