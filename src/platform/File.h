// A regular file opened for reading and/or writing, with the attributes of its
// node.
#ifndef FILE_H
#define FILE_H

#include <sys/types.h>

#include "Node.h"

class BEntry;

// Open modes: one of the access modes, or-ed with any of the flags.
enum {
	B_READ_ONLY = 0x0000,
	B_WRITE_ONLY = 0x0001,
	B_READ_WRITE = 0x0002,
	B_ACCESS_MODE = 0x0003,

	B_ERASE_FILE = 0x0200,     // truncate an existing file to zero length
	B_FAIL_IF_EXISTS = 0x0400, // create the file; fail when it exists already
	B_CREATE_FILE = 0x0800,    // create the file when it does not exist
	B_OPEN_AT_END = 0x1000,    // every write appends
};

class BFile : public BNode
{
public:
	BFile();
	BFile(const char* path, uint32 openMode);
	BFile(const entry_ref* ref, uint32 openMode);
	BFile(const BEntry* entry, uint32 openMode);
	~BFile() override;

	// Files are created with permissions 0666 less the umask. A directory
	// answers B_IS_A_DIRECTORY. When opening fails the file still names its
	// path, so its attributes stay reachable (see BNode).
	status_t SetTo(const char* path, uint32 openMode);
	status_t SetTo(const entry_ref* ref, uint32 openMode);
	status_t SetTo(const BEntry* entry, uint32 openMode);
	void Unset() override;

	bool IsReadable() const;
	bool IsWritable() const;

	ssize_t Read(void* buffer, size_t size);
	ssize_t Write(const void* buffer, size_t size);
	ssize_t ReadAt(off_t position, void* buffer, size_t size);
	ssize_t WriteAt(off_t position, const void* buffer, size_t size);
	// seekMode is SEEK_SET, SEEK_CUR or SEEK_END; answers the new position or
	// a negative status.
	off_t Seek(off_t offset, uint32 seekMode);
	off_t Position() const;
	status_t GetSize(off_t* size) const;
	status_t SetSize(off_t size);

private:
	int fFd;
	uint32 fMode;
};

#endif // FILE_H
