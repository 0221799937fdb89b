// Application resources: named byte blocks filed under a type and an id in an
// executable. On Linux each resource is an attribute of the file (see Node.h),
// named "kw:res:<type>:<id>", so resources of a file that cannot be written, or
// has not been built yet, live in the per-user fallback store. A type is a
// type code (shown as its four characters when they are printable) or a text
// such as "kw:help". The attribute's value is the name's length (4 bytes,
// big-endian), the name, then the resource's bytes.
#ifndef RESOURCES_H
#define RESOURCES_H

#include <map>
#include <string>

#include "SupportDefs.h"

class BFile;

class BResources
{
public:
	BResources();
	// The file is not owned. It needs only to name a path: one that could not
	// be opened still keeps resources (see BFile).
	explicit BResources(BFile* file);

	BResources(const BResources&) = delete;
	BResources& operator=(const BResources&) = delete;

	status_t SetTo(BFile* file);
	status_t InitCheck() const { return fStatus; }

	// Replaces a resource of the same type and id. name may be null.
	status_t AddResource(type_code type, int32 id, const void* data, size_t length,
	                     const char* name = nullptr);
	status_t AddResource(const char* type, int32 id, const void* data, size_t length,
	                     const char* name = nullptr);
	bool HasResource(type_code type, int32 id);
	bool HasResource(const char* type, int32 id);
	// The bytes stay valid until the resource is added or removed again through
	// this object, or the object is destroyed. Null when there is none.
	const void* LoadResource(type_code type, int32 id, size_t* length);
	const void* LoadResource(const char* type, int32 id, size_t* length);
	// name (owned by this object, as for LoadResource) and length may be null.
	status_t GetResourceInfo(const char* type, int32 id, const char** name, size_t* length);
	status_t RemoveResource(type_code type, int32 id);
	status_t RemoveResource(const char* type, int32 id);

	// Whether the last call that succeeded used the per-user fallback store.
	bool LastInFallback() const;

private:
	struct Resource {
		std::string name;
		std::string data;
	};
	status_t Load(const std::string& type, int32 id, Resource** resource);
	status_t Add(const std::string& type, type_code attrType, int32 id, const void* data,
	             size_t length, const char* name);
	status_t Remove(const std::string& type, int32 id);

	BFile* fFile;
	status_t fStatus;
	std::map<std::string, Resource> fCache;
};

#endif // RESOURCES_H
