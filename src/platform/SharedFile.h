// Files in directories that other users can write to, such as the common
// temporary directory. Another user can plant a file or a symbolic link under
// the name the program is about to use; these calls never follow a link at
// the name and never open a file that belongs to someone else.
#ifndef SHARED_FILE_H
#define SHARED_FILE_H

#include <cstdio>

#include <sys/types.h>

// Creates path anew and opens it with mode ("w", "wb" ...). A regular file of
// this user already there (left by an interrupted run) is removed first;
// anything else under the name (a link, a directory, another user's file)
// stays as it is and the call fails with errno EEXIST. Null on failure, with
// errno set.
FILE* platform_create_shared(const char* path, const char* mode, mode_t permissions);

// Opens path for reading ("r", "rb") only when it is a regular file of this
// user reached without a link: null with errno ELOOP for a link, EPERM for
// another user's file, EINVAL for anything not a regular file.
FILE* platform_open_owned(const char* path, const char* mode);

// Whether path names, without a link, a regular file of this user.
bool platform_is_owned_file(const char* path);

#endif // SHARED_FILE_H
