// find_directory: the BeOS well-known directories on a Linux file system.
#include "FindDirectory.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

#include "PlatformTest.h"

namespace {

std::mutex sOverrideLock;
std::map<int, std::string> sOverrides;

std::string
Environment(const char* name, const char* fallback)
{
	const char* value = getenv(name);
	if (value != nullptr && value[0] != '\0')
		return value;
	return fallback != nullptr ? fallback : "";
}

std::string
HomeDirectory()
{
	return Environment("HOME", "/");
}

std::string
ConfigDirectory()
{
	const char* config = getenv("XDG_CONFIG_HOME");
	if (config != nullptr && config[0] == '/')
		return config;
	return HomeDirectory() + "/.config";
}

// The directory that holds the running executable ("/usr/bin" after an
// install, "<build>/bin" in a build tree).
std::string
ExecutableDirectory()
{
	char path[4096];
	ssize_t length = readlink("/proc/self/exe", path, sizeof(path) - 1);
	if (length <= 0)
		return std::string();
	path[length] = '\0';
	char* slash = strrchr(path, '/');
	if (slash == nullptr)
		return std::string();
	*slash = '\0';
	return path;
}

// The prefix the executable was installed under: the parent of its directory.
// A build tree stages its data the same way (bin/ next to share/).
std::string
Prefix()
{
	std::string directory = ExecutableDirectory();
	if (directory.empty())
		return "/usr";
	size_t slash = directory.find_last_of('/');
	if (slash == std::string::npos || slash == 0)
		return "/";
	return directory.substr(0, slash);
}

// The documentation root: the install's doc directory without the package's
// own folder ("share/doc/quickstep" gives "<prefix>/share/doc").
std::string
DocumentationDirectory()
{
	std::string docDir = QUICKSTEP_INSTALL_DOCDIR;
	size_t slash = docDir.find_last_of('/');
	std::string root =
	    slash == std::string::npos ? std::string("share/doc") : docDir.substr(0, slash);
	if (!root.empty() && root[0] == '/')
		return root;
	std::string prefix = Prefix();
	return (prefix == "/" ? std::string() : prefix) + "/" + root;
}

bool
Resolve(directory_which which, std::string& path)
{
	{
		std::lock_guard<std::mutex> lock(sOverrideLock);
		std::map<int, std::string>::const_iterator found = sOverrides.find(which);
		if (found != sOverrides.end()) {
			path = found->second;
			return true;
		}
	}
	switch (which) {
		case B_BEOS_DIRECTORY:
		case B_BEOS_BOOT_DIRECTORY:
		case B_COMMON_BOOT_DIRECTORY:
		case B_USER_BOOT_DIRECTORY:
			path = "/";
			return true;
		case B_BEOS_SYSTEM_DIRECTORY:
			path = "/usr";
			return true;
		case B_BEOS_BIN_DIRECTORY:
			path = "/bin";
			return true;
		case B_BEOS_ETC_DIRECTORY:
		case B_COMMON_ETC_DIRECTORY:
		case B_COMMON_SETTINGS_DIRECTORY:
			path = "/etc";
			return true;
		case B_BEOS_LIB_DIRECTORY:
			path = "/lib";
			return true;
		case B_BEOS_FONTS_DIRECTORY:
		case B_COMMON_FONTS_DIRECTORY:
			path = "/usr/share/fonts";
			return true;
		case B_BEOS_DOCUMENTATION_DIRECTORY:
			path = "/usr/share/doc";
			return true;
		case B_COMMON_DIRECTORY:
			path = Prefix();
			return true;
		case B_COMMON_BIN_DIRECTORY:
			path = Prefix() + "/bin";
			return true;
		case B_COMMON_LIB_DIRECTORY:
			path = Prefix() + "/lib";
			return true;
		case B_COMMON_DOCUMENTATION_DIRECTORY:
			path = DocumentationDirectory();
			return true;
		case B_COMMON_LOG_DIRECTORY:
			path = "/var/log";
			return true;
		case B_COMMON_SPOOL_DIRECTORY:
			path = "/var/spool";
			return true;
		case B_COMMON_TEMP_DIRECTORY:
			path = Environment("TMPDIR", "/tmp");
			return true;
		case B_USER_DIRECTORY:
			path = HomeDirectory();
			return true;
		case B_USER_CONFIG_DIRECTORY:
		case B_USER_SETTINGS_DIRECTORY:
			path = ConfigDirectory();
			return true;
		case B_USER_FONTS_DIRECTORY:
			path = HomeDirectory() + "/.local/share/fonts";
			return true;
		case B_USER_LIB_DIRECTORY:
			path = HomeDirectory() + "/.local/lib";
			return true;
		default:
			return false;
	}
}

// mkdir -p: every missing level, leaving existing ones alone.
status_t
CreateDirectory(const std::string& path)
{
	struct stat status;
	if (stat(path.c_str(), &status) == 0)
		return S_ISDIR(status.st_mode) ? status_t(B_OK) : status_t(B_NOT_A_DIRECTORY);
	for (size_t slash = path.find('/', 1);; slash = path.find('/', slash + 1)) {
		std::string level = path.substr(0, slash);
		if (mkdir(level.c_str(), 0755) != 0 && errno != EEXIST)
			return StatusFromErrno(errno);
		if (slash == std::string::npos)
			break;
	}
	if (stat(path.c_str(), &status) != 0)
		return StatusFromErrno(errno);
	return S_ISDIR(status.st_mode) ? status_t(B_OK) : status_t(B_NOT_A_DIRECTORY);
}

} // namespace

void
platform_set_directory(directory_which which, const char* path)
{
	std::lock_guard<std::mutex> lock(sOverrideLock);
	if (path == nullptr)
		sOverrides.erase(which);
	else
		sOverrides[which] = path;
}

status_t
find_directory(directory_which which, dev_t_be, bool create, char* path, int32 length)
{
	if (path == nullptr || length <= 0)
		return B_BAD_VALUE;
	std::string directory;
	if (!Resolve(which, directory))
		return B_BAD_VALUE;
	while (directory.size() > 1 && directory.back() == '/')
		directory.pop_back();
	if (directory.size() + 1 > static_cast<size_t>(length))
		return B_BUFFER_OVERFLOW;
	if (create) {
		status_t status = CreateDirectory(directory);
		if (status != B_OK)
			return status;
	}
	memcpy(path, directory.c_str(), directory.size() + 1);
	return B_OK;
}
