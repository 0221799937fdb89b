#include "NodeInfo.h"

#include <cerrno>
#include <cstring>
#include <magic.h>
#include <unistd.h>

#include "Errors.h"
#include "Node.h"


BNodeInfo::BNodeInfo() : fNode(nullptr), fStatus(B_NO_INIT)
{
}


BNodeInfo::BNodeInfo(BNode* node) : BNodeInfo()
{
	SetTo(node);
}


BNodeInfo::~BNodeInfo()
{
}


status_t
BNodeInfo::SetTo(BNode* node)
{
	fNode = node;
	fStatus = node != nullptr && node->InitCheck() == B_OK ? B_OK : B_BAD_VALUE;
	return fStatus;
}


// A magic cookie per call: libmagic's cookies are not shared between
// threads, and a type is asked for rarely (a file dropped on a window).
status_t
BNodeInfo::GetType(char* type) const
{
	if (type == nullptr)
		return B_BAD_VALUE;
	if (fStatus != B_OK)
		return B_NO_INIT;
	const char* path = fNode->NodePath();
	if (access(path, R_OK) != 0)
		return StatusFromErrno(errno);

	magic_t cookie = magic_open(MAGIC_MIME_TYPE | MAGIC_ERROR);
	if (cookie == nullptr)
		return B_NO_MEMORY;
	status_t status = B_ERROR;
	if (magic_load(cookie, nullptr) == 0) {
		const char* found = magic_file(cookie, path);
		if (found != nullptr) {
			strncpy(type, found, B_MIME_TYPE_LENGTH - 1);
			type[B_MIME_TYPE_LENGTH - 1] = '\0';
			status = B_OK;
		}
	}
	magic_close(cookie);
	return status;
}
