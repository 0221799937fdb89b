#include "results/CompareStore.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include <Errors.h>
#include <Message.h>
#include <Node.h>

#include "lib/LibNode.h"
#include "results/ResultList.h"

const char* kCompareStoreAttribute = "kw:benchmark";
const char* kCompareTableName = "Quickstep.compare";

static const char* kRecordField = "results";
// The build that measured each record, in the same order ("" unknown); a
// store written before has none, and its records stay unknown.
static const char* kProgramField = "programs";


CompareStore::CompareStore(const char* executablePath)
    : fPath(executablePath), fInFallback(false), fRefusal(B_OK)
{
}


status_t
CompareStore::Read(ResultList& list) const
{
	BMessage store;
	const status_t status = LibNode::ReadMessageAttr(fPath, kCompareStoreAttribute, &store);
	if (status == B_ENTRY_NOT_FOUND)
		return B_OK;
	if (status != B_OK)
		return status;
	AddRecords(store, list);
	return B_OK;
}


void
CompareStore::AddRecords(const BMessage& store, ResultList& list)
{
	const char* record = nullptr;
	for (int32 i = 0; store.FindString(kRecordField, i, &record) == B_OK; i++) {
		if (strchr(record, '\t') == nullptr)
			continue;
		Results* results = Results::FromRecord(record);
		const char* program = nullptr;
		if (store.FindString(kProgramField, i, &program) == B_OK)
			results->SetProgram(program);
		if (!list.Insert(results))
			delete results;
	}
}


status_t
CompareStore::Write(ResultList& list)
{
	BMessage store;
	std::vector<char> record(kRecordSize);
	for (Results* results = list.First(); results != nullptr; results = list.Next()) {
		if (results->IsCurrent())
			continue;
		// A record longer than the buffer keeps the fields that fit.
		results->Write(record.data(), record.size());
		status_t status = store.AddString(kRecordField, record.data());
		if (status == B_OK)
			status = store.AddString(kProgramField, results->Program());
		if (status != B_OK)
			return status;
	}

	BNode node(fPath);
	const status_t status = LibNode::WriteMessageAttr(&node, kCompareStoreAttribute, &store);
	fInFallback = node.LastAttrInFallback();
	fRefusal = node.LastXattrRefusal();
	return status;
}


bool
CompareStore::MixedPrograms(ResultList& list, LibString& one, LibString& other)
{
	one = "";
	for (Results* results = list.First(); results != nullptr; results = list.Next()) {
		const char* program = results->Program();
		if (program[0] == '\0')
			continue;
		if (one.IsEmpty()) {
			one = program;
		} else if (one != program) {
			other = program;
			return true;
		}
	}
	return false;
}


status_t
CompareStore::ExportTable(ResultList& list, const char* path)
{
	Results* first = list.First();
	if (first == nullptr)
		return B_BAD_VALUE;

	FILE* file = fopen(path, "w");
	if (file == nullptr)
		return StatusFromErrno(errno);
	const int columns = list.MaxNbrCpus();
	first->SaveHeader(file, columns);
	first->SaveUnits(file, columns);
	first->Save(file, columns);
	list.Save(file, columns);
	return fclose(file) == 0 ? B_OK : StatusFromErrno(errno);
}
