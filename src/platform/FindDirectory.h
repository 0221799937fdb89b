// Well-known directories under their BeOS codes, mapped onto Linux.
#ifndef FIND_DIRECTORY_H
#define FIND_DIRECTORY_H

#include "SupportDefs.h"

class BPath;
class BVolume;

typedef enum {
	B_BEOS_DIRECTORY = 1000,
	B_BEOS_SYSTEM_DIRECTORY,
	B_BEOS_ADDONS_DIRECTORY,
	B_BEOS_BOOT_DIRECTORY,
	B_BEOS_FONTS_DIRECTORY,
	B_BEOS_LIB_DIRECTORY,
	B_BEOS_SERVERS_DIRECTORY,
	B_BEOS_APPS_DIRECTORY,
	B_BEOS_BIN_DIRECTORY, // 1008: the system's command directory, /bin
	B_BEOS_ETC_DIRECTORY,
	B_BEOS_DOCUMENTATION_DIRECTORY,
	B_BEOS_PREFERENCES_DIRECTORY,

	B_COMMON_DIRECTORY = 2000,
	B_COMMON_SYSTEM_DIRECTORY,
	B_COMMON_ADDONS_DIRECTORY,
	B_COMMON_BOOT_DIRECTORY,
	B_COMMON_FONTS_DIRECTORY,
	B_COMMON_LIB_DIRECTORY,
	B_COMMON_SERVERS_DIRECTORY,
	B_COMMON_BIN_DIRECTORY,
	B_COMMON_ETC_DIRECTORY,
	B_COMMON_DOCUMENTATION_DIRECTORY, // 2009: <prefix>/share/doc
	B_COMMON_SETTINGS_DIRECTORY,
	B_COMMON_DEVELOP_DIRECTORY,
	B_COMMON_LOG_DIRECTORY,
	B_COMMON_SPOOL_DIRECTORY,
	B_COMMON_TEMP_DIRECTORY, // 2014: $TMPDIR, else /tmp

	B_USER_DIRECTORY = 3000,
	B_USER_CONFIG_DIRECTORY,
	B_USER_ADDONS_DIRECTORY,
	B_USER_BOOT_DIRECTORY,
	B_USER_FONTS_DIRECTORY,
	B_USER_LIB_DIRECTORY,
	B_USER_SETTINGS_DIRECTORY,
} directory_which;

typedef int dev_t_be;

// Fills path (at most length bytes with the NUL) with the directory; creates
// it first when create is set.
status_t find_directory(directory_which which, dev_t_be volume, bool create, char* path,
                        int32 length);
status_t find_directory(directory_which which, BPath* path, bool create = false,
                        BVolume* volume = nullptr);

#endif // FIND_DIRECTORY_H
