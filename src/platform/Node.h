// A file system node and its typed attributes.
//
// Attributes are Linux user extended attributes named "user." + the attribute's
// name. Each value starts with a 12-byte header, big-endian: the type code
// (4 bytes) and the time of the write in nanoseconds since the epoch (8 bytes);
// the attribute's bytes follow. Where the file system refuses an extended
// attribute (no support, no permission, a value too large, a read-only file or
// volume, or no file at the path yet) the attribute is written, in the same
// form, to the per-user store under $XDG_DATA_HOME/quickstep/attributes/
// (default ~/.local/share/quickstep/attributes/), keyed by the file's absolute
// path. Reads look in both places; should both hold the attribute, the later
// write wins. Nothing is dropped quietly: a write answers its size only once
// the bytes are stored somewhere, and LastAttrInFallback() tells which place
// the last attribute call used.
#ifndef NODE_H
#define NODE_H

#include <string>
#include <sys/types.h>

#include "StorageDefs.h"
#include "SupportDefs.h"

class BEntry;

struct attr_info {
	uint32 type;
	off_t size;
};

class BNode
{
public:
	BNode();
	explicit BNode(const char* path);
	explicit BNode(const entry_ref* ref);
	explicit BNode(const BEntry* entry);
	virtual ~BNode();

	BNode(const BNode&) = delete;
	BNode& operator=(const BNode&) = delete;

	// B_ENTRY_NOT_FOUND when nothing exists at the path. Such a node still keeps
	// attributes, in the per-user store under its path, so that a program's
	// data can be kept for a file that has not been built yet.
	status_t SetTo(const char* path);
	status_t SetTo(const entry_ref* ref);
	status_t SetTo(const BEntry* entry);
	virtual void Unset();
	status_t InitCheck() const { return fStatus; }

	// The type argument of ReadAttr is not checked, as on BeOS; GetAttrInfo
	// tells the stored type. A write at offset 0 replaces the value, a write at
	// a later offset keeps the bytes before it (a gap reads as zeros).
	// Both answer the byte count or a negative status; B_NO_INIT for a node
	// without a path, B_ENTRY_NOT_FOUND for an attribute that does not exist.
	ssize_t ReadAttr(const char* name, type_code type, off_t offset, void* buffer, size_t length);
	ssize_t WriteAttr(const char* name, type_code type, off_t offset, const void* buffer,
	                  size_t length);
	// Removes the attribute from both places. B_ENTRY_NOT_FOUND when neither
	// held it; an error when a copy that exists could not be removed.
	status_t RemoveAttr(const char* name);
	status_t GetAttrInfo(const char* name, attr_info* info);

	// Whether the last successful attribute call read or wrote the per-user
	// store instead of the file's extended attributes.
	bool LastAttrInFallback() const { return fLastInFallback; }
	// Why the file refused the extended attribute of the last fallback write
	// (B_NOT_SUPPORTED, B_PERMISSION_DENIED, B_BUFFER_OVERFLOW, B_DEVICE_FULL,
	// B_READ_ONLY_DEVICE, B_ENTRY_NOT_FOUND); B_OK when nothing was refused.
	status_t LastXattrRefusal() const { return fLastRefusal; }

	// The absolute path the node was set to; empty when unset.
	const char* NodePath() const { return fPath.c_str(); }

protected:
	// For BFile: records the path (kept even when opening failed, so attributes
	// stay reachable) and the status of the opening.
	void SetNodePath(const std::string& path, status_t status);

private:
	struct Value;
	status_t FindValue(const char* name, Value* value);

	std::string fPath;
	status_t fStatus;
	bool fLastInFallback;
	status_t fLastRefusal;
};

#endif // NODE_H
