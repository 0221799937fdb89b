#include "File.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Entry.h"
#include "Path.h"

BFile::BFile() : fFd(-1), fMode(0)
{
}


BFile::BFile(const char* path, uint32 openMode) : BFile()
{
	SetTo(path, openMode);
}


BFile::BFile(const entry_ref* ref, uint32 openMode) : BFile()
{
	SetTo(ref, openMode);
}


BFile::BFile(const BEntry* entry, uint32 openMode) : BFile()
{
	SetTo(entry, openMode);
}


BFile::~BFile()
{
	Unset();
}


status_t
BFile::SetTo(const char* path, uint32 openMode)
{
	Unset();
	BPath absolute(path);
	if (absolute.InitCheck() != B_OK) {
		SetNodePath("", absolute.InitCheck());
		return InitCheck();
	}

	int flags = O_CLOEXEC;
	switch (openMode & B_ACCESS_MODE) {
		case B_READ_ONLY:
			flags |= O_RDONLY;
			break;
		case B_WRITE_ONLY:
			flags |= O_WRONLY;
			break;
		case B_READ_WRITE:
			flags |= O_RDWR;
			break;
		default:
			SetNodePath("", B_BAD_VALUE);
			return InitCheck();
	}
	if ((openMode & B_CREATE_FILE) != 0)
		flags |= O_CREAT;
	if ((openMode & B_FAIL_IF_EXISTS) != 0)
		flags |= O_CREAT | O_EXCL;
	if ((openMode & B_ERASE_FILE) != 0)
		flags |= O_TRUNC;
	if ((openMode & B_OPEN_AT_END) != 0)
		flags |= O_APPEND;

	int fd = open(absolute.Path(), flags, 0666);
	if (fd < 0) {
		SetNodePath(absolute.Path(), StatusFromErrno(errno));
		return InitCheck();
	}
	struct stat info;
	if (fstat(fd, &info) == 0 && S_ISDIR(info.st_mode)) {
		close(fd);
		SetNodePath(absolute.Path(), B_IS_A_DIRECTORY);
		return InitCheck();
	}
	fFd = fd;
	fMode = openMode;
	SetNodePath(absolute.Path(), B_OK);
	return B_OK;
}


status_t
BFile::SetTo(const entry_ref* ref, uint32 openMode)
{
	if (ref == nullptr) {
		Unset();
		SetNodePath("", B_BAD_VALUE);
		return InitCheck();
	}
	return SetTo(ref->path.c_str(), openMode);
}


status_t
BFile::SetTo(const BEntry* entry, uint32 openMode)
{
	BPath path;
	if (entry == nullptr || entry->GetPath(&path) != B_OK) {
		Unset();
		SetNodePath("", B_BAD_VALUE);
		return InitCheck();
	}
	return SetTo(path.Path(), openMode);
}


void
BFile::Unset()
{
	if (fFd >= 0)
		close(fFd);
	fFd = -1;
	fMode = 0;
	BNode::Unset();
}


bool
BFile::IsReadable() const
{
	uint32 access = fMode & B_ACCESS_MODE;
	return fFd >= 0 && (access == B_READ_ONLY || access == B_READ_WRITE);
}


bool
BFile::IsWritable() const
{
	uint32 access = fMode & B_ACCESS_MODE;
	return fFd >= 0 && (access == B_WRITE_ONLY || access == B_READ_WRITE);
}


ssize_t
BFile::Read(void* buffer, size_t size)
{
	if (fFd < 0)
		return B_FILE_ERROR;
	ssize_t count;
	do
		count = read(fFd, buffer, size);
	while (count < 0 && errno == EINTR);
	return count < 0 ? StatusFromErrno(errno) : count;
}


ssize_t
BFile::Write(const void* buffer, size_t size)
{
	if (fFd < 0)
		return B_FILE_ERROR;
	ssize_t count;
	do
		count = write(fFd, buffer, size);
	while (count < 0 && errno == EINTR);
	return count < 0 ? StatusFromErrno(errno) : count;
}


ssize_t
BFile::ReadAt(off_t position, void* buffer, size_t size)
{
	if (fFd < 0)
		return B_FILE_ERROR;
	if (position < 0)
		return B_BAD_VALUE;
	ssize_t count;
	do
		count = pread(fFd, buffer, size, position);
	while (count < 0 && errno == EINTR);
	return count < 0 ? StatusFromErrno(errno) : count;
}


ssize_t
BFile::WriteAt(off_t position, const void* buffer, size_t size)
{
	if (fFd < 0)
		return B_FILE_ERROR;
	if (position < 0)
		return B_BAD_VALUE;
	ssize_t count;
	do
		count = pwrite(fFd, buffer, size, position);
	while (count < 0 && errno == EINTR);
	return count < 0 ? StatusFromErrno(errno) : count;
}


off_t
BFile::Seek(off_t offset, uint32 seekMode)
{
	if (fFd < 0)
		return B_FILE_ERROR;
	off_t position = lseek(fFd, offset, static_cast<int>(seekMode));
	return position < 0 ? StatusFromErrno(errno) : position;
}


off_t
BFile::Position() const
{
	if (fFd < 0)
		return B_FILE_ERROR;
	off_t position = lseek(fFd, 0, SEEK_CUR);
	return position < 0 ? StatusFromErrno(errno) : position;
}


status_t
BFile::GetSize(off_t* size) const
{
	if (size == nullptr)
		return B_BAD_VALUE;
	if (fFd < 0)
		return B_FILE_ERROR;
	struct stat info;
	if (fstat(fFd, &info) != 0)
		return StatusFromErrno(errno);
	*size = info.st_size;
	return B_OK;
}


status_t
BFile::SetSize(off_t size)
{
	if (fFd < 0)
		return B_FILE_ERROR;
	if (size < 0)
		return B_BAD_VALUE;
	if (ftruncate(fFd, size) != 0)
		return StatusFromErrno(errno);
	return B_OK;
}
