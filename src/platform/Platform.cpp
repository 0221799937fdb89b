#include "Platform.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>

#include <sys/xattr.h>
#include <unistd.h>

#include "PlatformTest.h"

namespace {

std::mutex sOverrideLock;
std::string sTmpDirectory;
int64 sUserId = -1;

} // namespace


status_t
platform_probe_attributes(const char* directory)
{
	if (directory == nullptr || directory[0] == '\0')
		return B_BAD_VALUE;
	std::string pattern = std::string(directory) + "/.quickstep-probe-XXXXXX";
	int fd = mkstemp(&pattern[0]);
	if (fd < 0)
		return StatusFromErrno(errno);
	const char value[] = "1";
	status_t status = B_OK;
	if (fsetxattr(fd, "user.quickstep.probe", value, sizeof(value) - 1, 0) != 0)
		status = StatusFromErrno(errno);
	close(fd);
	unlink(pattern.c_str());
	return status;
}

status_t
platform_executable_path(char* path, int32 length)
{
	if (path == nullptr || length <= 0)
		return B_BAD_VALUE;
	char buffer[4096];
	ssize_t size = readlink("/proc/self/exe", buffer, sizeof(buffer) - 1);
	if (size < 0)
		return StatusFromErrno(errno);
	if (size + 1 > length)
		return B_BUFFER_OVERFLOW;
	memcpy(path, buffer, size);
	path[size] = '\0';
	return B_OK;
}


status_t
platform_tmp_directory(char* path, int32 length)
{
	if (path == nullptr || length <= 0)
		return B_BAD_VALUE;
	std::string directory;
	{
		std::lock_guard<std::mutex> lock(sOverrideLock);
		directory = sTmpDirectory.empty() ? "/tmp" : sTmpDirectory;
	}
	if (directory.size() + 1 > static_cast<size_t>(length))
		return B_BUFFER_OVERFLOW;
	memcpy(path, directory.c_str(), directory.size() + 1);
	return B_OK;
}

uint32
platform_user_id()
{
	std::lock_guard<std::mutex> lock(sOverrideLock);
	return sUserId >= 0 ? static_cast<uint32>(sUserId) : static_cast<uint32>(geteuid());
}

void
platform_set_tmp_directory(const char* path)
{
	std::lock_guard<std::mutex> lock(sOverrideLock);
	sTmpDirectory = path != nullptr ? path : "";
}

void
platform_set_user_id(int64 uid)
{
	std::lock_guard<std::mutex> lock(sOverrideLock);
	sUserId = uid;
}
