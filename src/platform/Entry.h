// A named entry in a directory, which may or may not exist yet: an entry can be
// set to a path whose directory exists but whose leaf does not (an "abstract"
// entry, as for a file about to be created).
#ifndef ENTRY_H
#define ENTRY_H

#include <sys/stat.h>

#include "Path.h"
#include "StorageDefs.h"
#include "SupportDefs.h"

class BEntry
{
public:
	BEntry();
	explicit BEntry(const char* path, bool traverse = false);
	explicit BEntry(const entry_ref* ref, bool traverse = false);

	// B_ENTRY_NOT_FOUND when the entry's directory does not exist. traverse
	// follows a symbolic link at the leaf to the entry it names.
	status_t SetTo(const char* path, bool traverse = false);
	status_t SetTo(const entry_ref* ref, bool traverse = false);
	void Unset();
	status_t InitCheck() const { return fPath.InitCheck(); }

	bool Exists() const;
	bool IsFile() const;
	bool IsDirectory() const;
	bool IsSymLink() const;
	status_t GetStat(struct stat* info) const;

	status_t GetPath(BPath* path) const;
	status_t GetRef(entry_ref* ref) const;
	status_t GetParent(BEntry* parent) const;
	// buffer holds at least B_FILE_NAME_LENGTH bytes.
	status_t GetName(char* buffer) const;

	// Removes the file, or the directory when it is empty. The entry stays set
	// to its (now abstract) path.
	status_t Remove();
	// A relative path is taken from the entry's directory. Without clobber an
	// existing entry at the target is B_FILE_EXISTS. The entry follows the move.
	status_t Rename(const char* path, bool clobber = false);

private:
	BPath fPath;
};

#endif // ENTRY_H
