// Directory services of the storage kit.
#ifndef DIRECTORY_H
#define DIRECTORY_H

#include <sys/types.h>

#include "SupportDefs.h"

// Creates the directory and every missing directory above it with the given
// permission bits (less the umask). B_OK also when it exists already;
// B_NOT_A_DIRECTORY when something else is in the way.
status_t create_directory(const char* path, mode_t mode);

#endif // DIRECTORY_H
