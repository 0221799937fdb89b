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

#endif // PLATFORM_H
