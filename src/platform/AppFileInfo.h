// The version records of an application file, and where the running
// application's file is. Each record is an attribute of the file (see Node.h):
// "BEOS:APP_VERSION" or "BEOS:SYSTEM_VERSION", type 'APPV', 340 bytes: major,
// middle, minor, variety and internal as 4-byte big-endian numbers, then the
// short (64 bytes) and long (256 bytes) descriptions, NUL-padded.
#ifndef APP_FILE_INFO_H
#define APP_FILE_INFO_H

#include "SupportDefs.h"

class BFile;
class BPath;

enum version_kind {
	B_APP_VERSION_KIND = 0,
	B_SYSTEM_VERSION_KIND = 1,
};

// The variety of a version.
enum {
	B_DEVELOPMENT_VERSION = 0,
	B_ALPHA_VERSION,
	B_BETA_VERSION,
	B_GAMMA_VERSION,
	B_GOLDEN_MASTER_VERSION,
	B_FINAL_VERSION,
};

struct version_info {
	uint32 major;
	uint32 middle;
	uint32 minor;
	uint32 variety;
	uint32 internal;
	char short_info[64];
	char long_info[256];
};

class BAppFileInfo
{
public:
	BAppFileInfo();
	// The file is not owned. It needs only to name a path: a file that could not
	// be opened (not writable, or not built yet) keeps its records in the
	// per-user fallback store.
	explicit BAppFileInfo(BFile* file);

	status_t SetTo(BFile* file);
	status_t InitCheck() const { return fStatus; }

	// B_ENTRY_NOT_FOUND when the file has no record of that kind, B_BAD_DATA
	// when the record is not one. The descriptions read back NUL-terminated.
	status_t GetVersionInfo(version_info* info, version_kind kind) const;
	status_t SetVersionInfo(const version_info* info, version_kind kind);

	// Whether the last record call that succeeded used the fallback store.
	bool LastInFallback() const;

private:
	BFile* fFile;
	status_t fStatus;
};

// The absolute path of the running program's executable (/proc/self/exe).
status_t get_app_path(BPath* path);

#endif // APP_FILE_INFO_H
