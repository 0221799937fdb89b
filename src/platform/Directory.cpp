#include "Directory.h"

#include <cerrno>
#include <string>
#include <sys/stat.h>

#include "Path.h"

status_t
create_directory(const char* path, mode_t mode)
{
	BPath target(path);
	if (target.InitCheck() != B_OK)
		return target.InitCheck();

	std::string full = target.Path();
	// Each prefix ending before a slash, then the whole path.
	for (size_t slash = full.find('/', 1);; slash = full.find('/', slash + 1)) {
		std::string prefix = full.substr(0, slash);
		if (mkdir(prefix.c_str(), mode) != 0 && errno != EEXIST)
			return StatusFromErrno(errno);
		if (slash == std::string::npos)
			break;
	}
	struct stat info;
	if (stat(full.c_str(), &info) != 0)
		return StatusFromErrno(errno);
	return S_ISDIR(info.st_mode) ? static_cast<status_t>(B_OK) : B_NOT_A_DIRECTORY;
}
