// Storage kit basics shared by messages and files.
#ifndef STORAGE_DEFS_H
#define STORAGE_DEFS_H

#include <string>

#include "SupportDefs.h"

// A reference to a file system entry. On Linux it carries the entry's path.
struct entry_ref {
	entry_ref() = default;
	explicit entry_ref(const char* entryPath) : path(entryPath != nullptr ? entryPath : "") {}

	bool operator==(const entry_ref& other) const { return path == other.path; }
	bool operator!=(const entry_ref& other) const { return path != other.path; }

	std::string path;
};

#endif // STORAGE_DEFS_H
