#include "AttributeStore.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "Directory.h"
#include "Path.h"
#include "PlatformTest.h"

namespace {

// Set by tests to make every extended-attribute call fail as on a file system
// without them.
std::atomic<bool> sXattrDisabled(false);

const char* const kXattrPrefix = "user.";
const int kMaxKeySlots = 10;


std::string
XattrName(const char* name)
{
	return std::string(kXattrPrefix) + name;
}


// The base directory of the fallback store, read anew on every call so that
// tests can move it with XDG_DATA_HOME.
status_t
StoreRoot(std::string* root)
{
	const char* data = getenv("XDG_DATA_HOME");
	if (data != nullptr && data[0] == '/') {
		*root = data;
	} else {
		const char* home = getenv("HOME");
		if (home == nullptr || home[0] != '/') {
			struct passwd* entry = getpwuid(getuid());
			if (entry == nullptr || entry->pw_dir == nullptr)
				return B_ENTRY_NOT_FOUND;
			home = entry->pw_dir;
		}
		*root = std::string(home) + "/.local/share";
	}
	*root += "/quickstep/attributes";
	return B_OK;
}


// FNV-1a, 64 bits: spreads the keys over fixed-length directory names. The
// directory also records the full path, so a collision is detected and the
// next slot used.
std::string
HashName(const std::string& key, int slot)
{
	uint64 hash = 14695981039346656037ULL;
	for (unsigned char c : key) {
		hash ^= c;
		hash *= 1099511628211ULL;
	}
	char name[40];
	if (slot == 0)
		snprintf(name, sizeof(name), "%016llx", static_cast<unsigned long long>(hash));
	else
		snprintf(name, sizeof(name), "%016llx-%d", static_cast<unsigned long long>(hash), slot);
	return name;
}


// Attribute names may hold any byte but '\0'; file names get the safe ones as
// they are and the others as %XX.
status_t
AttrFileName(const char* name, std::string* fileName)
{
	static const char kHex[] = "0123456789ABCDEF";
	std::string result = "attr-";
	for (const char* c = name; *c != '\0'; c++) {
		unsigned char byte = static_cast<unsigned char>(*c);
		if ((byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
		    (byte >= '0' && byte <= '9') || byte == '.' || byte == '_' || byte == '-') {
			result += static_cast<char>(byte);
		} else {
			result += '%';
			result += kHex[byte >> 4];
			result += kHex[byte & 0xf];
		}
	}
	if (result.size() > NAME_MAX)
		return B_NAME_TOO_LONG;
	*fileName = result;
	return B_OK;
}


status_t
ReadWholeFile(const std::string& path, std::string* contents)
{
	int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
	if (fd < 0)
		return StatusFromErrno(errno);
	contents->clear();
	char buffer[8192];
	while (true) {
		ssize_t count = read(fd, buffer, sizeof(buffer));
		if (count < 0) {
			if (errno == EINTR)
				continue;
			int error = errno;
			close(fd);
			return StatusFromErrno(error);
		}
		if (count == 0)
			break;
		contents->append(buffer, count);
	}
	close(fd);
	return B_OK;
}


// Writes contents next to path under a temporary name, flushes it and renames it
// into place, so that a reader sees the old or the new file, never a part.
status_t
WriteFileAtomically(const std::string& path, const std::string& contents)
{
	std::string dir = path.substr(0, path.rfind('/'));
	std::string temp = dir + "/tmp-XXXXXX";
	int fd = mkostemp(&temp[0], O_CLOEXEC);
	if (fd < 0)
		return StatusFromErrno(errno);
	size_t written = 0;
	status_t status = B_OK;
	while (written < contents.size()) {
		ssize_t count = write(fd, contents.data() + written, contents.size() - written);
		if (count < 0) {
			if (errno == EINTR)
				continue;
			status = StatusFromErrno(errno);
			break;
		}
		written += count;
	}
	if (status == B_OK && fsync(fd) != 0)
		status = StatusFromErrno(errno);
	if (close(fd) != 0 && status == B_OK)
		status = StatusFromErrno(errno);
	if (status == B_OK && rename(temp.c_str(), path.c_str()) != 0)
		status = StatusFromErrno(errno);
	if (status != B_OK)
		unlink(temp.c_str());
	return status;
}


// Finds the store directory of key; with create, makes it (and its record of
// the key) when there is none yet.
status_t
KeyDirectory(const std::string& key, bool create, std::string* dir)
{
	std::string root;
	status_t status = StoreRoot(&root);
	if (status != B_OK)
		return status;
	for (int slot = 0; slot < kMaxKeySlots; slot++) {
		std::string candidate = root + "/" + HashName(key, slot);
		std::string recorded;
		status = ReadWholeFile(candidate + "/path", &recorded);
		if (status == B_OK) {
			if (recorded == key) {
				*dir = candidate;
				return B_OK;
			}
			continue;
		}
		if (status != B_ENTRY_NOT_FOUND)
			return status;
		if (!create)
			return B_ENTRY_NOT_FOUND;
		status = create_directory(candidate.c_str(), 0700);
		if (status != B_OK)
			return status;
		status = WriteFileAtomically(candidate + "/path", key);
		if (status != B_OK)
			return status;
		*dir = candidate;
		return B_OK;
	}
	return B_NAME_IN_USE;
}

} // namespace


void
platform_set_xattr_disabled(bool disabled)
{
	sXattrDisabled = disabled;
}


namespace attribute_store {

std::string
KeyPath(const std::string& path)
{
	char resolved[PATH_MAX];
	if (realpath(path.c_str(), resolved) != nullptr)
		return resolved;
	BPath lexical(path.c_str());
	BPath parent;
	if (lexical.GetParent(&parent) == B_OK && realpath(parent.Path(), resolved) != nullptr) {
		std::string result = resolved;
		if (result != "/")
			result += "/";
		return result + lexical.Leaf();
	}
	return lexical.InitCheck() == B_OK ? std::string(lexical.Path()) : path;
}


bool
IsRefusal(status_t status)
{
	switch (status) {
		case B_NOT_SUPPORTED:
		case B_PERMISSION_DENIED:
		case B_BUFFER_OVERFLOW:
		case B_DEVICE_FULL:
		case B_READ_ONLY_DEVICE:
		case B_ENTRY_NOT_FOUND:
			return true;
		default:
			return false;
	}
}


status_t
XattrGet(const std::string& path, const char* name, std::string* value)
{
	if (sXattrDisabled)
		return B_NOT_SUPPORTED;
	std::string xattr = XattrName(name);
	while (true) {
		ssize_t size = getxattr(path.c_str(), xattr.c_str(), nullptr, 0);
		if (size < 0)
			return StatusFromErrno(errno);
		value->resize(size);
		ssize_t count = getxattr(path.c_str(), xattr.c_str(), &(*value)[0], value->size());
		if (count >= 0) {
			value->resize(count);
			return B_OK;
		}
		// The value grew between the two calls: ask again.
		if (errno != ERANGE)
			return StatusFromErrno(errno);
	}
}


status_t
XattrSet(const std::string& path, const char* name, const std::string& value)
{
	if (sXattrDisabled)
		return B_NOT_SUPPORTED;
	std::string xattr = XattrName(name);
	if (setxattr(path.c_str(), xattr.c_str(), value.data(), value.size(), 0) != 0)
		return StatusFromErrno(errno);
	return B_OK;
}


status_t
XattrRemove(const std::string& path, const char* name)
{
	if (sXattrDisabled)
		return B_NOT_SUPPORTED;
	std::string xattr = XattrName(name);
	if (removexattr(path.c_str(), xattr.c_str()) != 0)
		return StatusFromErrno(errno);
	return B_OK;
}


// The file that holds attribute name of the file keyed by key; create makes
// the key's directory when it is missing.
static status_t
FallbackFile(const std::string& key, const char* name, bool create, std::string* path)
{
	std::string fileName;
	status_t status = AttrFileName(name, &fileName);
	if (status != B_OK)
		return status;
	std::string dir;
	status = KeyDirectory(key, create, &dir);
	if (status != B_OK)
		return status;
	*path = dir + "/" + fileName;
	return B_OK;
}


status_t
FallbackGet(const std::string& key, const char* name, std::string* value)
{
	std::string path;
	status_t status = FallbackFile(key, name, false, &path);
	return status == B_OK ? ReadWholeFile(path, value) : status;
}


status_t
FallbackSet(const std::string& key, const char* name, const std::string& value)
{
	std::string path;
	status_t status = FallbackFile(key, name, true, &path);
	return status == B_OK ? WriteFileAtomically(path, value) : status;
}


status_t
FallbackRemove(const std::string& key, const char* name)
{
	std::string path;
	status_t status = FallbackFile(key, name, false, &path);
	if (status != B_OK)
		return status;
	if (unlink(path.c_str()) != 0)
		return StatusFromErrno(errno);
	return B_OK;
}

} // namespace attribute_store
