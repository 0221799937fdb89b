// Reading the kernel's text files under the platform root (a fixture tree in
// tests, "/" otherwise). Internal to the platform layer.
#ifndef PLATFORM_FILES_H
#define PLATFORM_FILES_H

#include <string>
#include <vector>

namespace platform {

// path ("/proc/cpuinfo") under the platform root.
std::string RootedPath(const char* path);
bool AtRealRoot();
// A number that changes whenever the root is set (even to the same tree):
// readers that keep what they read for the process keep it for one
// generation.
unsigned long RootGeneration();

// The whole file (at most maxBytes), false when it cannot be read.
bool ReadFile(const std::string& path, std::string& contents, size_t maxBytes = 1 << 20);
// The first line without its newline and surrounding blanks.
bool ReadLine(const std::string& path, std::string& line);
// An integer in the file's first line (base 0: "0x8086" and "42" both read).
bool ReadNumber(const std::string& path, long long& value);

// Linux numbers at most this many processors (its largest NR_CPUS): a list
// that names more, or higher ids, is not the kernel's and is refused.
const int kMaxCpuIds = 8192;

// A kernel CPU list such as "0-3,8,10-11" into ascending ids. The kernel
// writes its ranges in ascending order without overlap; other lists are
// refused, which also bounds the ids to kMaxCpuIds in all.
bool ParseCpuList(const std::string& text, std::vector<int>& ids);

// Ids of the machine's online processors, in ascending order, read under the
// root; the real machine's when useRoot is false. Never empty: a machine that
// tells nothing has processor 0.
std::vector<int> OnlineCpus(bool useRoot);

std::string Trim(const std::string& text);

} // namespace platform

#endif // PLATFORM_FILES_H
