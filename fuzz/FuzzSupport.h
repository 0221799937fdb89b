// Helpers shared by the fuzz entries: a private scratch directory for the
// process, and inputs cut into sections.
#ifndef FUZZ_SUPPORT_H
#define FUZZ_SUPPORT_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace fuzz {

// A directory of this process, made on first use and removed at exit.
const std::string& ScratchDirectory();

// Writes bytes to path (made with its directories under the scratch
// directory); an absent section (null) removes the file instead.
void PutFile(const std::string& relative, const std::string* contents);

// The input cut at every NUL byte, at most limit sections.
std::vector<std::string> Sections(const uint8_t* data, size_t size, size_t limit);

// The screen substituted (no display is opened), and with machine set the
// machine profile too, so that results records are made without reading the
// machine on every input; without it the profile is read under the root.
void Substitute(bool machine);

// A stream that swallows what is written to it.
FILE* Sink();

} // namespace fuzz

#endif // FUZZ_SUPPORT_H
