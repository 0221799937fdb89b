// The entry functions of the fuzz targets: one per reader of outside input.
// Each takes one input and answers 0; libFuzzer calls them through
// LibFuzzerMain.cpp, and the test suite replays the seed corpus and the
// regression inputs through the same functions.
#ifndef FUZZ_ENTRIES_H
#define FUZZ_ENTRIES_H

#include <cstddef>
#include <cstdint>

typedef int (*FuzzEntry)(const uint8_t* data, size_t size);

// A results record line, read and written back.
int FuzzRecord(const uint8_t* data, size_t size);
// A results file ("1.0", a length, a record, any number of times).
int FuzzResultsFile(const uint8_t* data, size_t size);
// A flattened comparison store message.
int FuzzStoreMessage(const uint8_t* data, size_t size);
// A help file: its contents, page names and every page's text.
int FuzzHelpFile(const uint8_t* data, size_t size);
// The /proc and /sys files of the machine profile, in NUL-separated sections.
int FuzzSystemInfo(const uint8_t* data, size_t size);
// The sysfs files of up to eight PCI functions, in NUL-separated sections.
int FuzzPciDevices(const uint8_t* data, size_t size);
// An os-release file.
int FuzzOsRelease(const uint8_t* data, size_t size);
// Command-line words that are read as numbers: a test index and bar values.
int FuzzCliNumbers(const uint8_t* data, size_t size);

struct FuzzTarget {
	const char* name;
	FuzzEntry entry;
};

// Every target, by the name of its corpus folder.
extern const FuzzTarget kFuzzTargets[];
extern const size_t kFuzzTargetCount;

#endif // FUZZ_ENTRIES_H
