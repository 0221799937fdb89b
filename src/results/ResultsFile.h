// The results file: "1.0", the record's length in bytes and the record, one
// line each. Reading checks each line and says which one is wrong; a file may
// hold further length and record pairs after the first.
#ifndef RESULTS_FILE_H
#define RESULTS_FILE_H

class ResultList;
class Results;

// The attribute of a results file that names the build that measured it.
extern const char* kResultsProgramAttribute;

enum ResultsFileStatus {
	kResultsFileOK = 0,
	kResultsFileCannotOpen,     // the file cannot be opened (errno tells why)
	kResultsFileBadVersion,     // the first line is not "1.0"
	kResultsFileBadLength,      // a length line is missing or not a number
	kResultsFileLengthMismatch, // the record line is not as long as announced
	kResultsFileMalformed,      // a record without fields or without metrics
	kResultsFileTooLong,        // writing: the record does not fit kRecordSize
	kResultsFileWriteError,     // writing: the bytes did not all reach the file
};

class ResultsFile
{
public:
	// Writes "1.0\n%d\n%s\n" with the run's record (mode "w").
	static ResultsFileStatus Write(const char* path, const Results& results);
	// Appends every record of the file to list as stored runs (isCurrent
	// false); on any error nothing is appended. The record reader's own
	// messages about bad fields go to standard error as always.
	static ResultsFileStatus Read(const char* path, ResultList& list);
	// The first record of the file only.
	static ResultsFileStatus Read(const char* path, Results& results);
	// What went wrong, for messages of the form "<path>: <text>".
	static const char* StatusText(ResultsFileStatus status);
};

#endif // RESULTS_FILE_H
