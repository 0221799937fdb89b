#include "Entry.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "OS.h"

BEntry::BEntry()
{
}


BEntry::BEntry(const char* path, bool traverse)
{
	SetTo(path, traverse);
}


BEntry::BEntry(const entry_ref* ref, bool traverse)
{
	SetTo(ref, traverse);
}


status_t
BEntry::SetTo(const char* path, bool traverse)
{
	BPath target(path);
	if (target.InitCheck() != B_OK) {
		Unset();
		return target.InitCheck();
	}
	if (traverse) {
		char resolved[PATH_MAX];
		if (realpath(target.Path(), resolved) != nullptr)
			target.SetTo(resolved);
	}

	BPath parent;
	if (target.GetParent(&parent) == B_OK) {
		struct stat info;
		if (stat(parent.Path(), &info) != 0) {
			Unset();
			return StatusFromErrno(errno);
		}
		if (!S_ISDIR(info.st_mode)) {
			Unset();
			return B_NOT_A_DIRECTORY;
		}
	}
	fPath = target;
	return B_OK;
}


status_t
BEntry::SetTo(const entry_ref* ref, bool traverse)
{
	if (ref == nullptr) {
		Unset();
		return B_BAD_VALUE;
	}
	return SetTo(ref->path.c_str(), traverse);
}


void
BEntry::Unset()
{
	fPath.Unset();
}


status_t
BEntry::GetStat(struct stat* info) const
{
	if (InitCheck() != B_OK)
		return InitCheck();
	if (info == nullptr)
		return B_BAD_VALUE;
	if (lstat(fPath.Path(), info) != 0)
		return StatusFromErrno(errno);
	return B_OK;
}


bool
BEntry::Exists() const
{
	struct stat info;
	return GetStat(&info) == B_OK;
}


bool
BEntry::IsFile() const
{
	struct stat info;
	return GetStat(&info) == B_OK && S_ISREG(info.st_mode);
}


bool
BEntry::IsDirectory() const
{
	struct stat info;
	return GetStat(&info) == B_OK && S_ISDIR(info.st_mode);
}


bool
BEntry::IsSymLink() const
{
	struct stat info;
	return GetStat(&info) == B_OK && S_ISLNK(info.st_mode);
}


status_t
BEntry::GetPath(BPath* path) const
{
	if (path == nullptr)
		return B_BAD_VALUE;
	if (InitCheck() != B_OK) {
		path->Unset();
		return InitCheck();
	}
	*path = fPath;
	return B_OK;
}


status_t
BEntry::GetRef(entry_ref* ref) const
{
	if (ref == nullptr)
		return B_BAD_VALUE;
	if (InitCheck() != B_OK)
		return InitCheck();
	ref->path = fPath.Path();
	return B_OK;
}


status_t
BEntry::GetParent(BEntry* parent) const
{
	if (parent == nullptr)
		return B_BAD_VALUE;
	if (InitCheck() != B_OK) {
		parent->Unset();
		return InitCheck();
	}
	BPath parentPath;
	status_t status = fPath.GetParent(&parentPath);
	if (status != B_OK) {
		parent->Unset();
		return status;
	}
	return parent->SetTo(parentPath.Path());
}


status_t
BEntry::GetName(char* buffer) const
{
	if (buffer == nullptr)
		return B_BAD_VALUE;
	if (InitCheck() != B_OK)
		return InitCheck();
	const char* leaf = fPath.Leaf();
	if (strlen(leaf) >= B_FILE_NAME_LENGTH)
		return B_NAME_TOO_LONG;
	strcpy(buffer, leaf);
	return B_OK;
}


status_t
BEntry::Remove()
{
	if (InitCheck() != B_OK)
		return InitCheck();
	int result = IsDirectory() ? rmdir(fPath.Path()) : unlink(fPath.Path());
	if (result != 0)
		return StatusFromErrno(errno);
	return B_OK;
}


status_t
BEntry::Rename(const char* path, bool clobber)
{
	if (InitCheck() != B_OK)
		return InitCheck();
	if (path == nullptr || path[0] == '\0')
		return B_BAD_VALUE;

	BPath target;
	if (path[0] == '/') {
		target.SetTo(path);
	} else {
		BPath dir;
		status_t status = fPath.GetParent(&dir);
		if (status != B_OK)
			return status;
		target.SetTo(dir.Path(), path);
	}
	if (target.InitCheck() != B_OK)
		return target.InitCheck();

	int result;
	if (clobber) {
		result = rename(fPath.Path(), target.Path());
	} else {
		result = renameat2(AT_FDCWD, fPath.Path(), AT_FDCWD, target.Path(), RENAME_NOREPLACE);
		if (result != 0 && (errno == EINVAL || errno == ENOSYS)) {
			// A file system without no-replace renames: check, then rename.
			struct stat info;
			if (lstat(target.Path(), &info) == 0)
				return B_FILE_EXISTS;
			result = rename(fPath.Path(), target.Path());
		}
	}
	if (result != 0)
		return StatusFromErrno(errno);
	fPath = target;
	return B_OK;
}
