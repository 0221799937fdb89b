#include "Resources.h"

#include <cstdio>

#include "File.h"

namespace {

const type_code kRawType = 0x52415754; // 'RAWT'
const size_t kNameLengthSize = 4;


std::string
TypeName(type_code type)
{
	char name[16];
	bool printable = true;
	for (int shift = 24; shift >= 0; shift -= 8) {
		int c = (type >> shift) & 0xff;
		if (c < 0x20 || c > 0x7e)
			printable = false;
	}
	if (printable)
		snprintf(name, sizeof(name), "%c%c%c%c", (type >> 24) & 0xff, (type >> 16) & 0xff,
		         (type >> 8) & 0xff, type & 0xff);
	else
		snprintf(name, sizeof(name), "0x%08x", static_cast<unsigned>(type));
	return name;
}


std::string
AttrName(const std::string& type, int32 id)
{
	return "kw:res:" + type + ":" + std::to_string(id);
}

} // namespace


BResources::BResources() : fFile(nullptr), fStatus(B_NO_INIT)
{
}


BResources::BResources(BFile* file) : BResources()
{
	SetTo(file);
}


status_t
BResources::SetTo(BFile* file)
{
	fCache.clear();
	fFile = nullptr;
	if (file == nullptr || file->NodePath()[0] == '\0')
		return fStatus = B_BAD_VALUE;
	fFile = file;
	return fStatus = B_OK;
}


bool
BResources::LastInFallback() const
{
	return fFile != nullptr && fFile->LastAttrInFallback();
}


status_t
BResources::Load(const std::string& type, int32 id, Resource** resource)
{
	if (fStatus != B_OK)
		return fStatus;
	std::string name = AttrName(type, id);
	// Bytes handed out earlier stay where they are.
	auto found = fCache.find(name);
	if (found != fCache.end()) {
		*resource = &found->second;
		return B_OK;
	}
	attr_info info;
	status_t status = fFile->GetAttrInfo(name.c_str(), &info);
	if (status != B_OK)
		return status;
	std::string stored(info.size, '\0');
	ssize_t count = fFile->ReadAttr(name.c_str(), info.type, 0, &stored[0], stored.size());
	if (count < 0)
		return count;
	stored.resize(count);
	if (stored.size() < kNameLengthSize)
		return B_BAD_DATA;
	size_t nameLength = 0;
	for (size_t i = 0; i < kNameLengthSize; i++)
		nameLength = (nameLength << 8) | static_cast<unsigned char>(stored[i]);
	if (nameLength > stored.size() - kNameLengthSize)
		return B_BAD_DATA;

	Resource& cached = fCache[name];
	cached.name = stored.substr(kNameLengthSize, nameLength);
	cached.data = stored.substr(kNameLengthSize + nameLength);
	*resource = &cached;
	return B_OK;
}


status_t
BResources::Add(const std::string& type, type_code attrType, int32 id, const void* data,
                size_t length, const char* name)
{
	if (fStatus != B_OK)
		return fStatus;
	if (data == nullptr && length > 0)
		return B_BAD_VALUE;
	std::string nameText = name != nullptr ? name : "";
	std::string stored;
	for (int shift = 24; shift >= 0; shift -= 8)
		stored.push_back(static_cast<char>((nameText.size() >> shift) & 0xff));
	stored += nameText;
	stored.append(static_cast<const char*>(data), length);

	std::string attr = AttrName(type, id);
	fCache.erase(attr);
	ssize_t written = fFile->WriteAttr(attr.c_str(), attrType, 0, stored.data(), stored.size());
	if (written < 0)
		return written;
	return B_OK;
}


status_t
BResources::Remove(const std::string& type, int32 id)
{
	if (fStatus != B_OK)
		return fStatus;
	std::string attr = AttrName(type, id);
	fCache.erase(attr);
	return fFile->RemoveAttr(attr.c_str());
}


status_t
BResources::AddResource(type_code type, int32 id, const void* data, size_t length, const char* name)
{
	return Add(TypeName(type), type, id, data, length, name);
}


status_t
BResources::AddResource(const char* type, int32 id, const void* data, size_t length,
                        const char* name)
{
	if (type == nullptr || type[0] == '\0')
		return B_BAD_VALUE;
	return Add(type, kRawType, id, data, length, name);
}


bool
BResources::HasResource(type_code type, int32 id)
{
	return HasResource(TypeName(type).c_str(), id);
}


bool
BResources::HasResource(const char* type, int32 id)
{
	if (fStatus != B_OK || type == nullptr)
		return false;
	attr_info info;
	return fFile->GetAttrInfo(AttrName(type, id).c_str(), &info) == B_OK;
}


const void*
BResources::LoadResource(type_code type, int32 id, size_t* length)
{
	return LoadResource(TypeName(type).c_str(), id, length);
}


const void*
BResources::LoadResource(const char* type, int32 id, size_t* length)
{
	Resource* resource;
	if (type == nullptr || Load(type, id, &resource) != B_OK)
		return nullptr;
	if (length != nullptr)
		*length = resource->data.size();
	return resource->data.data();
}


status_t
BResources::GetResourceInfo(const char* type, int32 id, const char** name, size_t* length)
{
	if (type == nullptr)
		return B_BAD_VALUE;
	Resource* resource;
	status_t status = Load(type, id, &resource);
	if (status != B_OK)
		return status;
	if (name != nullptr)
		*name = resource->name.c_str();
	if (length != nullptr)
		*length = resource->data.size();
	return B_OK;
}


status_t
BResources::RemoveResource(type_code type, int32 id)
{
	return Remove(TypeName(type), id);
}


status_t
BResources::RemoveResource(const char* type, int32 id)
{
	if (type == nullptr)
		return B_BAD_VALUE;
	return Remove(type, id);
}
