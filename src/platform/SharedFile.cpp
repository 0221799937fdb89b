#include "SharedFile.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// EPERM for another user's file, EINVAL for anything not a regular file.
int
OwnershipError(const struct stat& status)
{
	if (!S_ISREG(status.st_mode))
		return EINVAL;
	if (status.st_uid != geteuid())
		return EPERM;
	return 0;
}

FILE*
Stream(int fd, const char* mode)
{
	FILE* file = fdopen(fd, mode);
	if (file == nullptr) {
		const int error = errno;
		close(fd);
		errno = error;
	}
	return file;
}

} // namespace

FILE*
platform_create_shared(const char* path, const char* mode, mode_t permissions)
{
	if (path == nullptr || mode == nullptr) {
		errno = EINVAL;
		return nullptr;
	}
	struct stat status;
	if (lstat(path, &status) == 0) {
		// unlink never follows a link; only a plain file of our own goes.
		if (S_ISLNK(status.st_mode) || OwnershipError(status) != 0) {
			errno = EEXIST;
			return nullptr;
		}
		if (unlink(path) != 0 && errno != ENOENT)
			return nullptr;
	}
	// O_EXCL with O_CREAT fails on any name that exists, links included, so
	// what another user puts there in the meantime is never opened.
	const int fd = open(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, permissions);
	if (fd < 0)
		return nullptr;
	return Stream(fd, mode);
}

FILE*
platform_open_owned(const char* path, const char* mode)
{
	if (path == nullptr || mode == nullptr) {
		errno = EINVAL;
		return nullptr;
	}
	// O_NONBLOCK: a planted named pipe must not hang the open.
	const int fd = open(path, O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK);
	if (fd < 0)
		return nullptr;
	struct stat status;
	int error = fstat(fd, &status) == 0 ? OwnershipError(status) : errno;
	if (error == 0 && fcntl(fd, F_SETFL, 0) != 0)
		error = errno;
	if (error != 0) {
		close(fd);
		errno = error;
		return nullptr;
	}
	return Stream(fd, mode);
}

bool
platform_is_owned_file(const char* path)
{
	struct stat status;
	return path != nullptr && lstat(path, &status) == 0 && OwnershipError(status) == 0;
}
