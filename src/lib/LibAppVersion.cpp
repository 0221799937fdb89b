#include "lib/LibAppVersion.h"

#include <cstring>

#include <AppFileInfo.h>
#include <File.h>
#include <Path.h>
#include <StorageDefs.h>

namespace {

const char* const kVarietySuffix[] = {" Dev", " Alpha", " Beta", " Gamma", " Gold"};


void
CopyInfo(char* dst, size_t size, const char* text)
{
	memset(dst, 0, size);
	if (text != nullptr)
		strncpy(dst, text, size - 1);
}

} // namespace


LibString
LibGetAppVersion(const char* path)
{
	LibString version;
	BPath appPath;
	if (path == nullptr) {
		if (get_app_path(&appPath) != B_OK)
			return version;
		path = appPath.Path();
	}

	BFile file(path, B_READ_ONLY);
	BAppFileInfo info(&file);
	if (info.InitCheck() != B_OK)
		return version;
	version_info record;
	if (info.GetVersionInfo(&record, B_APP_VERSION_KIND) != B_OK)
		return version;

	version.Format("%d.%d.%d", static_cast<int>(record.major), static_cast<int>(record.middle),
	               static_cast<int>(record.minor));
	if (record.variety < sizeof(kVarietySuffix) / sizeof(kVarietySuffix[0]))
		version += kVarietySuffix[record.variety];
	return version;
}


void
LibSetAppVersion(const unsigned long& major, const unsigned long& middle,
                 const unsigned long& minor, const char* shortInfo, const char* longInfo,
                 const unsigned long& variety, const unsigned long& internal)
{
	BPath appPath;
	if (get_app_path(&appPath) != B_OK)
		return;

	version_info record;
	record.major = static_cast<uint32>(major);
	record.middle = static_cast<uint32>(middle);
	record.minor = static_cast<uint32>(minor);
	record.variety = static_cast<uint32>(variety);
	record.internal = static_cast<uint32>(internal);
	CopyInfo(record.short_info, sizeof(record.short_info), shortInfo);
	CopyInfo(record.long_info, sizeof(record.long_info), longInfo);

	BFile file(appPath.Path(), B_READ_WRITE);
	BAppFileInfo info(&file);
	if (info.InitCheck() == B_OK)
		info.SetVersionInfo(&record, B_APP_VERSION_KIND);
}
