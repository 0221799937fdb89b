// The two places a node's attributes live in: the file's extended attributes and
// the per-user fallback store. Used by BNode only; values are passed whole, in
// their stored form (header and bytes, see Node.h).
#ifndef ATTRIBUTE_STORE_H
#define ATTRIBUTE_STORE_H

#include <string>

#include "SupportDefs.h"

namespace attribute_store {

// The key under which the fallback store files a node: the canonical absolute
// path (symbolic links resolved as far as the path exists).
std::string KeyPath(const std::string& path);

// Whether a status from an extended-attribute write means the file system
// refused it (so the value belongs in the fallback store).
bool IsRefusal(status_t status);

// B_ENTRY_NOT_FOUND when the attribute (or the file) is missing.
status_t XattrGet(const std::string& path, const char* name, std::string* value);
status_t XattrSet(const std::string& path, const char* name, const std::string& value);
status_t XattrRemove(const std::string& path, const char* name);

status_t FallbackGet(const std::string& key, const char* name, std::string* value);
// Written to a temporary file, then renamed over the old value.
status_t FallbackSet(const std::string& key, const char* name, const std::string& value);
status_t FallbackRemove(const std::string& key, const char* name);

} // namespace attribute_store

#endif // ATTRIBUTE_STORE_H
