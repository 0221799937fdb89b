#include "Path.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>
#include <vector>

namespace {

// Joins the components of an absolute path, resolving "." and ".." lexically
// (".." at the root stays at the root, as the kernel does).
std::string
Normalize(const std::string& path)
{
	std::vector<std::string> parts;
	size_t start = 0;
	while (start <= path.size()) {
		size_t end = path.find('/', start);
		if (end == std::string::npos)
			end = path.size();
		std::string part = path.substr(start, end - start);
		if (part == "..") {
			if (!parts.empty())
				parts.pop_back();
		} else if (!part.empty() && part != ".")
			parts.push_back(part);
		start = end + 1;
	}
	if (parts.empty())
		return "/";
	std::string result;
	for (const std::string& part : parts)
		result += "/" + part;
	return result;
}

status_t
CurrentDirectory(std::string* out)
{
	std::vector<char> buffer(256);
	while (getcwd(buffer.data(), buffer.size()) == nullptr) {
		if (errno != ERANGE)
			return StatusFromErrno(errno);
		buffer.resize(buffer.size() * 2);
	}
	*out = buffer.data();
	return B_OK;
}

} // namespace


BPath::BPath() : fStatus(B_NO_INIT)
{
}


BPath::BPath(const char* dir, const char* leaf, bool normalize) : fStatus(B_NO_INIT)
{
	SetTo(dir, leaf, normalize);
}


BPath::BPath(const BPath& dir, const char* leaf, bool normalize) : fStatus(B_NO_INIT)
{
	SetTo(dir.Path(), leaf, normalize);
}


BPath::BPath(const entry_ref* ref) : fStatus(B_NO_INIT)
{
	SetTo(ref);
}


BPath&
BPath::operator=(const char* path)
{
	SetTo(path);
	return *this;
}


status_t
BPath::SetTo(const char* dir, const char* leaf, bool)
{
	// dir or leaf may point into this path: build the new one before clearing.
	if (dir == nullptr || dir[0] == '\0' || (leaf != nullptr && leaf[0] == '/')) {
		Unset();
		return fStatus = B_BAD_VALUE;
	}

	std::string path;
	if (dir[0] != '/') {
		status_t status = CurrentDirectory(&path);
		if (status != B_OK) {
			Unset();
			return fStatus = status;
		}
		path += "/";
	}
	path += dir;
	if (leaf != nullptr) {
		path += "/";
		path += leaf;
	}
	fPath = Normalize(path);
	return fStatus = B_OK;
}


status_t
BPath::SetTo(const entry_ref* ref)
{
	if (ref == nullptr) {
		Unset();
		return fStatus = B_BAD_VALUE;
	}
	return SetTo(ref->path.c_str());
}


status_t
BPath::Append(const char* leaf, bool normalize)
{
	if (fStatus != B_OK)
		return fStatus;
	if (leaf == nullptr || leaf[0] == '/')
		return B_BAD_VALUE;
	return SetTo(fPath.c_str(), leaf, normalize);
}


void
BPath::Unset()
{
	fPath.clear();
	fStatus = B_NO_INIT;
}


const char*
BPath::Path() const
{
	return fStatus == B_OK ? fPath.c_str() : nullptr;
}


const char*
BPath::Leaf() const
{
	if (fStatus != B_OK)
		return nullptr;
	return fPath.c_str() + fPath.rfind('/') + 1;
}


status_t
BPath::GetParent(BPath* parent) const
{
	if (parent == nullptr)
		return B_BAD_VALUE;
	if (fStatus != B_OK) {
		parent->Unset();
		return fStatus;
	}
	if (fPath == "/") {
		parent->Unset();
		return B_ENTRY_NOT_FOUND;
	}
	size_t slash = fPath.rfind('/');
	std::string dir = slash == 0 ? std::string("/") : fPath.substr(0, slash);
	return parent->SetTo(dir.c_str());
}


bool
BPath::operator==(const BPath& other) const
{
	if (fStatus != B_OK || other.fStatus != B_OK)
		return fStatus != B_OK && other.fStatus != B_OK;
	return fPath == other.fPath;
}


bool
BPath::operator==(const char* path) const
{
	if (fStatus != B_OK || path == nullptr)
		return fStatus != B_OK && path == nullptr;
	return fPath == path;
}
