#include "Node.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <ctime>
#include <sys/stat.h>

#include "AttributeStore.h"
#include "Entry.h"
#include "Path.h"

using namespace attribute_store;

namespace {

const size_t kHeaderSize = 12;
// "user." and the name must fit the kernel's limit for attribute names.
const size_t kMaxNameLength = 255 - 5;


void
PutBigEndian(std::string* out, uint64 value, int bytes)
{
	for (int i = bytes - 1; i >= 0; i--)
		out->push_back(static_cast<char>((value >> (8 * i)) & 0xff));
}


uint64
GetBigEndian(const std::string& in, size_t offset, int bytes)
{
	uint64 value = 0;
	for (int i = 0; i < bytes; i++)
		value = (value << 8) | static_cast<unsigned char>(in[offset + i]);
	return value;
}


uint64
WriteStamp()
{
	struct timespec now;
	clock_gettime(CLOCK_REALTIME, &now);
	return static_cast<uint64>(now.tv_sec) * 1000000000ULL + now.tv_nsec;
}


status_t
CheckName(const char* name)
{
	if (name == nullptr || name[0] == '\0')
		return B_BAD_VALUE;
	if (strlen(name) > kMaxNameLength)
		return B_NAME_TOO_LONG;
	return B_OK;
}

} // namespace


struct BNode::Value {
	type_code type = 0;
	uint64 stamp = 0;
	std::string data;
	bool inFallback = false;

	bool Decode(const std::string& stored)
	{
		if (stored.size() < kHeaderSize)
			return false;
		type = static_cast<type_code>(GetBigEndian(stored, 0, 4));
		stamp = GetBigEndian(stored, 4, 8);
		data = stored.substr(kHeaderSize);
		return true;
	}

	std::string Encode() const
	{
		std::string stored;
		PutBigEndian(&stored, type, 4);
		PutBigEndian(&stored, stamp, 8);
		return stored + data;
	}
};


BNode::BNode() : fStatus(B_NO_INIT), fLastInFallback(false), fLastRefusal(B_OK)
{
}


BNode::BNode(const char* path) : BNode()
{
	SetTo(path);
}


BNode::BNode(const entry_ref* ref) : BNode()
{
	SetTo(ref);
}


BNode::BNode(const BEntry* entry) : BNode()
{
	SetTo(entry);
}


BNode::~BNode()
{
}


status_t
BNode::SetTo(const char* path)
{
	Unset();
	BPath absolute(path);
	if (absolute.InitCheck() != B_OK)
		return fStatus = absolute.InitCheck();
	struct stat info;
	status_t status = stat(absolute.Path(), &info) == 0 ? B_OK : StatusFromErrno(errno);
	SetNodePath(absolute.Path(), status);
	return fStatus;
}


status_t
BNode::SetTo(const entry_ref* ref)
{
	if (ref == nullptr) {
		Unset();
		return fStatus = B_BAD_VALUE;
	}
	return SetTo(ref->path.c_str());
}


status_t
BNode::SetTo(const BEntry* entry)
{
	BPath path;
	if (entry == nullptr || entry->GetPath(&path) != B_OK) {
		Unset();
		return fStatus = B_BAD_VALUE;
	}
	return SetTo(path.Path());
}


void
BNode::Unset()
{
	fPath.clear();
	fStatus = B_NO_INIT;
	fLastInFallback = false;
	fLastRefusal = B_OK;
}


void
BNode::SetNodePath(const std::string& path, status_t status)
{
	// A node whose file is missing or cannot be opened keeps its path: its
	// attributes are still reachable through the fallback store.
	fPath = path;
	fStatus = status;
}


// Looks in both places; when both hold the attribute the later write wins.
status_t
BNode::FindValue(const char* name, Value* value)
{
	std::string stored;
	Value fromXattr;
	status_t xattrStatus = XattrGet(fPath, name, &stored);
	if (xattrStatus == B_OK && !fromXattr.Decode(stored))
		xattrStatus = B_BAD_DATA;

	Value fromFallback;
	status_t fallbackStatus = FallbackGet(KeyPath(fPath), name, &stored);
	if (fallbackStatus == B_OK && !fromFallback.Decode(stored))
		fallbackStatus = B_BAD_DATA;
	fromFallback.inFallback = true;

	if (xattrStatus == B_OK && (fallbackStatus != B_OK || fromXattr.stamp >= fromFallback.stamp)) {
		*value = fromXattr;
		return B_OK;
	}
	if (fallbackStatus == B_OK) {
		*value = fromFallback;
		return B_OK;
	}
	// A refused or missing extended attribute is no error of its own; report
	// whatever else went wrong.
	if (xattrStatus != B_ENTRY_NOT_FOUND && !IsRefusal(xattrStatus))
		return xattrStatus;
	return fallbackStatus;
}


ssize_t
BNode::ReadAttr(const char* name, type_code, off_t offset, void* buffer, size_t length)
{
	if (fPath.empty())
		return B_NO_INIT;
	status_t status = CheckName(name);
	if (status != B_OK)
		return status;
	if (offset < 0 || (buffer == nullptr && length > 0))
		return B_BAD_VALUE;

	Value value;
	status = FindValue(name, &value);
	if (status != B_OK)
		return status;
	fLastInFallback = value.inFallback;
	if (static_cast<uint64>(offset) >= value.data.size())
		return 0;
	size_t count = std::min(length, value.data.size() - static_cast<size_t>(offset));
	if (count > 0)
		memcpy(buffer, value.data.data() + offset, count);
	return count;
}


ssize_t
BNode::WriteAttr(const char* name, type_code type, off_t offset, const void* buffer, size_t length)
{
	if (fPath.empty())
		return B_NO_INIT;
	status_t status = CheckName(name);
	if (status != B_OK)
		return status;
	if (offset < 0 || (buffer == nullptr && length > 0) || length > SSIZE_MAX)
		return B_BAD_VALUE;

	Value value;
	if (offset > 0) {
		status = FindValue(name, &value);
		if (status != B_OK && status != B_ENTRY_NOT_FOUND)
			return status;
		if (value.data.size() < static_cast<size_t>(offset) + length)
			value.data.resize(offset + length, '\0');
	}
	value.type = type;
	value.stamp = WriteStamp();
	if (offset > 0)
		value.data.replace(offset, length, static_cast<const char*>(buffer), length);
	else
		value.data.assign(static_cast<const char*>(buffer), length);
	std::string stored = value.Encode();

	status_t xattrStatus = XattrSet(fPath, name, stored);
	std::string key = KeyPath(fPath);
	if (xattrStatus == B_OK) {
		// An older copy in the fallback store would lose on its stamp anyway;
		// removing it keeps the store from growing stale.
		FallbackRemove(key, name);
		fLastInFallback = false;
		fLastRefusal = B_OK;
		return length;
	}
	if (!IsRefusal(xattrStatus))
		return xattrStatus;
	status = FallbackSet(key, name, stored);
	if (status != B_OK)
		return status;
	fLastInFallback = true;
	fLastRefusal = xattrStatus;
	return length;
}


status_t
BNode::RemoveAttr(const char* name)
{
	if (fPath.empty())
		return B_NO_INIT;
	status_t status = CheckName(name);
	if (status != B_OK)
		return status;

	std::string stored;
	status_t xattrStatus = XattrGet(fPath, name, &stored);
	if (xattrStatus == B_OK)
		xattrStatus = XattrRemove(fPath, name);
	else if (xattrStatus == B_ENTRY_NOT_FOUND || IsRefusal(xattrStatus))
		xattrStatus = B_ENTRY_NOT_FOUND;
	status_t fallbackStatus = FallbackRemove(KeyPath(fPath), name);

	// A copy left behind in either place is an error: it would read back.
	if (xattrStatus != B_OK && xattrStatus != B_ENTRY_NOT_FOUND)
		return xattrStatus;
	if (fallbackStatus != B_OK && fallbackStatus != B_ENTRY_NOT_FOUND)
		return fallbackStatus;
	if (xattrStatus == B_ENTRY_NOT_FOUND && fallbackStatus == B_ENTRY_NOT_FOUND)
		return B_ENTRY_NOT_FOUND;
	return B_OK;
}


status_t
BNode::GetAttrInfo(const char* name, attr_info* info)
{
	if (fPath.empty())
		return B_NO_INIT;
	status_t status = CheckName(name);
	if (status != B_OK)
		return status;
	if (info == nullptr)
		return B_BAD_VALUE;
	Value value;
	status = FindValue(name, &value);
	if (status != B_OK)
		return status;
	fLastInFallback = value.inFallback;
	info->type = value.type;
	info->size = value.data.size();
	return B_OK;
}
