// Fuzz entries of the results readers: a record line, a results file and the
// comparison store's message.
#include <cmath>
#include <string>
#include <vector>

#include <Message.h>

#include "FuzzEntries.h"
#include "FuzzSupport.h"
#include "cli/CompareText.h"
#include "results/CompareStore.h"
#include "results/ResultList.h"
#include "results/Results.h"
#include "results/ResultsFile.h"

namespace {

// What the results and comparison views do with a run read from outside:
// write it back, print its table, scale and order its rates.
void
Use(Results& results)
{
	std::vector<char> line(kRecordSize, '\0');
	results.Write(line.data(), line.size());
	FILE* sink = fuzz::Sink();
	results.SaveHeader(sink, 8);
	results.SaveUnits(sink, 8);
	results.Save(sink, 8);
	for (Metric* metric = results.First(); metric != nullptr; metric = results.Next()) {
		int which = 0;
		const double best = metric->MaxRate(which);
		for (int i = 0; i < metric->Count(); i++)
			TextBar(metric->Rate(i), best, 40);
		metric->SetDrawn(false);
		float rate = HUGE_VALF;
		while (metric->NextSmallestRate(rate) >= 0) {
		}
	}
}

} // namespace

int
FuzzRecord(const uint8_t* data, size_t size)
{
	fuzz::Substitute(true);
	const std::string text(reinterpret_cast<const char*>(data), size);
	Results results(false);
	results.Read(text.c_str());
	Use(results);
	return 0;
}

int
FuzzResultsFile(const uint8_t* data, size_t size)
{
	fuzz::Substitute(true);
	const std::string text(reinterpret_cast<const char*>(data), size);
	fuzz::PutFile("input.results", &text);
	ResultList list;
	ResultsFile::Read((fuzz::ScratchDirectory() + "/input.results").c_str(), list);
	for (Results* results = list.First(); results != nullptr; results = list.Next())
		Use(*results);
	list.MaxRate();
	list.MaxNbrCpus();
	return 0;
}

int
FuzzStoreMessage(const uint8_t* data, size_t size)
{
	fuzz::Substitute(true);
	BMessage store;
	if (store.Unflatten(reinterpret_cast<const char*>(data), static_cast<ssize_t>(size)) != B_OK)
		return 0;
	ResultList list;
	CompareStore::AddRecords(store, list);
	for (Results* results = list.First(); results != nullptr; results = list.Next())
		Use(*results);
	list.MaxRate();
	return 0;
}
