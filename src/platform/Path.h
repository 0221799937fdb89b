// An absolute path to a file system entry. Relative paths are taken from the
// working directory at the time they are set; "." and ".." components, repeated
// and trailing slashes are removed without looking at the file system, so a path
// to an entry that does not exist yet is as good as any other.
#ifndef PATH_H
#define PATH_H

#include <string>

#include "StorageDefs.h"
#include "SupportDefs.h"

class BPath
{
public:
	BPath();
	BPath(const char* dir, const char* leaf = nullptr, bool normalize = false);
	BPath(const BPath& dir, const char* leaf, bool normalize = false);
	explicit BPath(const entry_ref* ref);
	BPath(const BPath& other) = default;
	BPath& operator=(const BPath& other) = default;
	BPath& operator=(const char* path);

	status_t InitCheck() const { return fStatus; }

	// leaf, when given, is one or more components appended to dir and may not be
	// absolute. normalize is accepted for compatibility: paths are always
	// normalised.
	status_t SetTo(const char* dir, const char* leaf = nullptr, bool normalize = false);
	status_t SetTo(const entry_ref* ref);
	status_t Append(const char* leaf, bool normalize = false);
	void Unset();

	// Null while the path is not initialised, as on BeOS.
	const char* Path() const;
	// The last component; "" for the root directory, null when not initialised.
	const char* Leaf() const;
	// B_ENTRY_NOT_FOUND for the root directory, which has no parent.
	status_t GetParent(BPath* parent) const;

	bool operator==(const BPath& other) const;
	bool operator!=(const BPath& other) const { return !(*this == other); }
	bool operator==(const char* path) const;
	bool operator!=(const char* path) const { return !(*this == path); }

private:
	std::string fPath;
	status_t fStatus;
};

#endif // PATH_H
