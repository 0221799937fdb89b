// Facts about the platform that the command-line tool reports and that have no
// BeOS name.
#ifndef PLATFORM_H
#define PLATFORM_H

#include "SupportDefs.h"

// Whether files in directory can carry extended attributes: creates a
// temporary file there, sets "user.quickstep.probe" on it and removes it.
// B_OK, or what the file system answered (B_NOT_SUPPORTED, B_PERMISSION_DENIED
// ...), or the error that kept the file from being made.
status_t platform_probe_attributes(const char* directory);

// The running executable's absolute path.
status_t platform_executable_path(char* path, int32 length);

// The directory the program's fixed temporary names stand in ("/tmp/results",
// "/tmp/Quickstep.tar"): "/tmp", or the one a test named with
// platform_set_tmp_directory.
status_t platform_tmp_directory(char* path, int32 length);

// The user the program acts for when it asks who owns a file: the effective
// user, or the one a test named with platform_set_user_id.
uint32 platform_user_id();

#endif // PLATFORM_H
