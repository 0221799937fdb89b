// quickstep-cli store: the comparison store of the desktop program "quickstep"
// next to this executable, kept whether or not that program is installed.
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <Errors.h>
#include <Path.h>

#include "cli/Commands.h"
#include "results/CompareStore.h"
#include "results/ResultList.h"
#include "results/ResultsFile.h"

namespace {

const char* kPrefix = "quickstep-cli store";

// The store's path, or an error line and false.
bool
StorePath(BPath& path)
{
	const status_t status = DesktopExecutablePath(path);
	if (status != B_OK) {
		fprintf(stderr, "%s: cannot find this program's own path: %s\n", kPrefix,
		        strerror_status(status));
		return false;
	}
	return true;
}


bool
ReadStore(CompareStore& store, ResultList& rows)
{
	const status_t status = store.Read(rows);
	if (status != B_OK) {
		fprintf(stderr, "%s: cannot read the comparison store of %s: %s\n", kPrefix, store.Path(),
		        strerror_status(status));
		return false;
	}
	return true;
}


// On failure the store keeps what it held: say so, as the change is lost.
bool
WriteStore(CompareStore& store, ResultList& rows)
{
	const status_t status = store.Write(rows);
	if (status != B_OK) {
		fprintf(stderr, "%s: cannot write the comparison store of %s: %s; the store is unchanged\n",
		        kPrefix, store.Path(), strerror_status(status));
		return false;
	}
	if (store.LastWriteInFallback())
		printf("Kept in the per-user store for %s (%s).\n", store.Path(),
		       store.LastRefusal() == B_ENTRY_NOT_FOUND ? "the program is not there yet"
		                                                : strerror_status(store.LastRefusal()));
	return true;
}


int
List()
{
	BPath path;
	if (!StorePath(path))
		return 1;
	CompareStore store(path.Path());
	ResultList rows;
	if (!ReadStore(store, rows))
		return 1;

	printf("Comparison store of %s\n", store.Path());
	if (rows.Size() == 0) {
		printf("The store is empty.\n");
		return 0;
	}
	WarnMixedPrograms(kPrefix, rows);
	printf("%4s  %4s  %7s  %s\n", "Row", "CPUs", "Metrics", "Machine");
	int row = 1;
	for (Results* results = rows.First(); results != nullptr; results = rows.Next(), row++)
		printf("%4d  %4d  %7d  %s\n", row, static_cast<int>(results->NbrCpus()),
		       static_cast<int>(results->Size()), results->Description());
	return 0;
}


int
Add(const std::vector<std::string>& files)
{
	BPath path;
	if (!StorePath(path))
		return 1;
	CompareStore store(path.Path());
	ResultList rows;
	if (!ReadStore(store, rows))
		return 1;

	int failed = 0;
	int added = 0;
	for (const std::string& file : files) {
		const int32 before = rows.Size();
		const ResultsFileStatus status = ResultsFile::Read(file.c_str(), rows);
		if (status == kResultsFileCannotOpen) {
			fprintf(stderr, "%s: %s %s: %s\n", kPrefix, file.c_str(),
			        ResultsFile::StatusText(status), strerror(errno));
			failed++;
		} else if (status != kResultsFileOK) {
			fprintf(stderr, "%s: %s %s\n", kPrefix, file.c_str(), ResultsFile::StatusText(status));
			failed++;
		} else {
			const int count = rows.Size() - before;
			printf("%s: %d run%s\n", file.c_str(), count, count == 1 ? "" : "s");
			added += count;
		}
	}
	if (added > 0) {
		if (!WriteStore(store, rows))
			return 1;
		printf("Added %d run%s; the store holds %d.\n", added, added == 1 ? "" : "s",
		       static_cast<int>(rows.Size()));
		WarnMixedPrograms(kPrefix, rows);
	}
	return failed > 0 ? 1 : 0;
}


int
Remove(int row)
{
	BPath path;
	if (!StorePath(path))
		return 1;
	CompareStore store(path.Path());
	ResultList rows;
	if (!ReadStore(store, rows))
		return 1;

	if (row < 1 || row > rows.Size()) {
		fprintf(stderr, "%s: there is no row %d; the store holds %d run%s\n", kPrefix, row,
		        static_cast<int>(rows.Size()), rows.Size() == 1 ? "" : "s");
		return 1;
	}
	const LibString machine = rows.Get(row - 1)->Description();
	rows.Remove(row - 1, row - 1);
	if (!WriteStore(store, rows))
		return 1;
	printf("Removed row %d: %s\n", row, machine.String());
	return 0;
}


int
Export(const std::string& directory)
{
	BPath path;
	if (!StorePath(path))
		return 1;
	CompareStore store(path.Path());
	ResultList rows;
	if (!ReadStore(store, rows))
		return 1;
	if (rows.Size() == 0) {
		fprintf(stderr, "%s: the comparison store is empty: nothing to export\n", kPrefix);
		return 1;
	}

	std::string table = (directory.empty() ? std::string(".") : directory) + "/";
	table += kCompareTableName;
	const status_t status = CompareStore::ExportTable(rows, table.c_str());
	if (status != B_OK) {
		fprintf(stderr, "%s: cannot write %s: %s\n", kPrefix, table.c_str(),
		        strerror_status(status));
		return 1;
	}
	char absolute[PATH_MAX];
	printf("Wrote %d run%s to %s\n", static_cast<int>(rows.Size()), rows.Size() == 1 ? "" : "s",
	       realpath(table.c_str(), absolute) != nullptr ? absolute : table.c_str());
	return 0;
}

} // namespace

void
AddStoreCommand(CLI::App& app, CommandTable& commands)
{
	CLI::App* store = app.add_subcommand(
	    "store", "The comparison store of the desktop program 'quickstep' next to this program");
	store->require_subcommand(1);

	CLI::App* list = store->add_subcommand("list", "List the stored machines");
	commands.Add(list, [] { return List(); });

	CLI::App* add = store->add_subcommand("add", "Add the runs of results files to the store");
	auto files = std::make_shared<std::vector<std::string>>();
	add->add_option("FILE", *files, "Results file written by a run")->required();
	commands.Add(add, [files] { return Add(*files); });

	CLI::App* remove = store->add_subcommand("remove", "Remove one stored machine");
	auto row = std::make_shared<int>(0);
	remove->add_option("ROW", *row, "Row number as 'store list' shows it")->required();
	commands.Add(remove, [row] { return Remove(*row); });

	CLI::App* exportTable = store->add_subcommand(
	    "export", "Write the store as the tab-separated table Quickstep.compare");
	auto directory = std::make_shared<std::string>();
	exportTable->add_option("DIR", *directory, "Directory to write into (default: here)");
	commands.Add(exportTable, [directory] { return Export(*directory); });
}
