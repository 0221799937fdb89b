#include "results/ResultsFile.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <Node.h>
#include <TypeConstants.h>

#include "results/ResultList.h"
#include "results/Results.h"

static const char* kVersion = "1.0";
// The build that measured the run, beside the file's fixed three lines.
const char* kResultsProgramAttribute = "quickstep:program";
static const size_t kMaxProgramLength = 256;


ResultsFileStatus
ResultsFile::Write(const char* path, const Results& results)
{
	std::vector<char> record(kRecordSize);
	if (results.Write(record.data(), record.size()) != B_OK)
		return kResultsFileTooLong;

	FILE* file = fopen(path, "w");
	if (file == nullptr)
		return kResultsFileCannotOpen;
	const int length = static_cast<int>(strlen(record.data()));
	const bool written = fprintf(file, "%s\n%d\n%s\n", kVersion, length, record.data()) > 0;
	const bool closed = fclose(file) == 0;
	if (!written || !closed)
		return kResultsFileWriteError;
	// Where no attribute can be kept, the run only loses the name of its build.
	const size_t program = strlen(results.Program());
	if (program > 0 && program < kMaxProgramLength) {
		BNode node(path);
		node.WriteAttr(kResultsProgramAttribute, B_STRING_TYPE, 0, results.Program(), program + 1);
	}
	return kResultsFileOK;
}


// One line without its newline; false at the end of the file.
static bool
ReadLine(FILE* file, std::string& line)
{
	char* buffer = nullptr;
	size_t capacity = 0;
	const ssize_t length = getline(&buffer, &capacity, file);
	if (length < 0) {
		free(buffer);
		return false;
	}
	line.assign(buffer, length);
	free(buffer);
	if (!line.empty() && line.back() == '\n')
		line.pop_back();
	return true;
}


static bool
ParseLength(const std::string& text, long& length)
{
	if (text.empty())
		return false;
	char* end = nullptr;
	errno = 0;
	length = strtol(text.c_str(), &end, 10);
	return *end == '\0' && errno == 0 && length >= 0;
}


static ResultsFileStatus
ReadRecords(FILE* file, ResultList& records)
{
	std::string line;
	if (!ReadLine(file, line) || line != kVersion)
		return kResultsFileBadVersion;

	bool any = false;
	while (ReadLine(file, line)) {
		// Blank lines between records are allowed, as the comparison window
		// has always skipped them.
		if (line.empty())
			continue;
		long length = 0;
		if (!ParseLength(line, length))
			return kResultsFileBadLength;
		std::string record;
		if (!ReadLine(file, record) || record.size() != static_cast<size_t>(length))
			return kResultsFileLengthMismatch;
		if (record.find('\t') == std::string::npos)
			return kResultsFileMalformed;

		Results* results = Results::FromRecord(record.c_str());
		const bool hasMetrics = results->Size() > 0;
		if (!hasMetrics || !records.Insert(results)) {
			delete results;
			return kResultsFileMalformed;
		}
		any = true;
	}
	return any ? kResultsFileOK : kResultsFileBadLength;
}


ResultsFileStatus
ResultsFile::Read(const char* path, ResultList& list)
{
	FILE* file = fopen(path, "r");
	if (file == nullptr)
		return kResultsFileCannotOpen;

	// Records go straight into the list; a file that fails half-way takes its
	// records out again, so it adds all or nothing.
	const int32 before = list.Size();
	const ResultsFileStatus status = ReadRecords(file, list);
	fclose(file);
	if (status != kResultsFileOK && list.Size() > before)
		list.Remove(before, list.Size() - 1);
	if (status != kResultsFileOK)
		return status;

	char program[kMaxProgramLength] = "";
	BNode node(path);
	const ssize_t length =
	    node.ReadAttr(kResultsProgramAttribute, B_STRING_TYPE, 0, program, sizeof(program) - 1);
	if (length > 0) {
		program[length] = '\0';
		for (int32 i = before; i < list.Size(); i++)
			list.Get(i)->SetProgram(program);
	}
	return status;
}


ResultsFileStatus
ResultsFile::Read(const char* path, Results& results)
{
	ResultList records;
	const ResultsFileStatus status = Read(path, records);
	if (status == kResultsFileOK)
		results = *records.First();
	return status;
}


const char*
ResultsFile::StatusText(ResultsFileStatus status)
{
	switch (status) {
		case kResultsFileOK:
			return "read";
		case kResultsFileCannotOpen:
			return "cannot be opened";
		case kResultsFileBadVersion:
			return "is not a results file (its first line is not \"1.0\")";
		case kResultsFileBadLength:
			return "has no record length where one belongs";
		case kResultsFileLengthMismatch:
			return "holds a record whose length does not match the length line";
		case kResultsFileMalformed:
			return "holds a record without fields or without measurements";
		case kResultsFileTooLong:
			return "cannot take a record that long";
		case kResultsFileWriteError:
			return "could not be written completely";
	}
	return "is not usable";
}
