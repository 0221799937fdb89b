#include "FindDirectory.h"

#include <climits>

#include "Path.h"

status_t
find_directory(directory_which which, BPath* path, bool create, BVolume*)
{
	if (path == nullptr)
		return B_BAD_VALUE;
	char buffer[PATH_MAX];
	status_t status = find_directory(which, 0, create, buffer, sizeof(buffer));
	if (status != B_OK) {
		path->Unset();
		return status;
	}
	return path->SetTo(buffer);
}
