#include "AppFileInfo.h"

#include <cerrno>
#include <cstring>
#include <string>
#include <unistd.h>

#include "File.h"
#include "Path.h"

namespace {

const type_code kVersionInfoType = 0x41505056; // 'APPV'
const size_t kNumberCount = 5;
const size_t kShortSize = sizeof(version_info::short_info);
const size_t kLongSize = sizeof(version_info::long_info);
const size_t kRecordSize = kNumberCount * 4 + kShortSize + kLongSize;


const char*
AttrName(version_kind kind)
{
	return kind == B_SYSTEM_VERSION_KIND ? "BEOS:SYSTEM_VERSION" : "BEOS:APP_VERSION";
}


void
PutText(unsigned char* out, const char* text, size_t size)
{
	memset(out, 0, size);
	memcpy(out, text, strnlen(text, size - 1));
}

} // namespace


BAppFileInfo::BAppFileInfo() : fFile(nullptr), fStatus(B_NO_INIT)
{
}


BAppFileInfo::BAppFileInfo(BFile* file) : BAppFileInfo()
{
	SetTo(file);
}


status_t
BAppFileInfo::SetTo(BFile* file)
{
	fFile = nullptr;
	if (file == nullptr || file->NodePath()[0] == '\0')
		return fStatus = B_BAD_VALUE;
	fFile = file;
	return fStatus = B_OK;
}


status_t
BAppFileInfo::GetVersionInfo(version_info* info, version_kind kind) const
{
	if (fStatus != B_OK)
		return fStatus;
	if (info == nullptr || (kind != B_APP_VERSION_KIND && kind != B_SYSTEM_VERSION_KIND))
		return B_BAD_VALUE;

	attr_info attr;
	status_t status = fFile->GetAttrInfo(AttrName(kind), &attr);
	if (status != B_OK)
		return status;
	if (attr.type != kVersionInfoType || attr.size != static_cast<off_t>(kRecordSize))
		return B_BAD_DATA;
	unsigned char record[kRecordSize];
	ssize_t count = fFile->ReadAttr(AttrName(kind), kVersionInfoType, 0, record, kRecordSize);
	if (count < 0)
		return count;
	if (count != static_cast<ssize_t>(kRecordSize))
		return B_BAD_DATA;

	uint32 numbers[kNumberCount];
	for (size_t i = 0; i < kNumberCount; i++) {
		const unsigned char* at = record + 4 * i;
		numbers[i] = (uint32(at[0]) << 24) | (uint32(at[1]) << 16) | (uint32(at[2]) << 8) | at[3];
	}
	info->major = numbers[0];
	info->middle = numbers[1];
	info->minor = numbers[2];
	info->variety = numbers[3];
	info->internal = numbers[4];
	memcpy(info->short_info, record + kNumberCount * 4, kShortSize);
	info->short_info[kShortSize - 1] = '\0';
	memcpy(info->long_info, record + kNumberCount * 4 + kShortSize, kLongSize);
	info->long_info[kLongSize - 1] = '\0';
	return B_OK;
}


status_t
BAppFileInfo::SetVersionInfo(const version_info* info, version_kind kind)
{
	if (fStatus != B_OK)
		return fStatus;
	if (info == nullptr || (kind != B_APP_VERSION_KIND && kind != B_SYSTEM_VERSION_KIND))
		return B_BAD_VALUE;

	unsigned char record[kRecordSize];
	const uint32 numbers[kNumberCount] = {info->major, info->middle, info->minor, info->variety,
	                                      info->internal};
	for (size_t i = 0; i < kNumberCount; i++) {
		unsigned char* at = record + 4 * i;
		at[0] = numbers[i] >> 24;
		at[1] = numbers[i] >> 16;
		at[2] = numbers[i] >> 8;
		at[3] = numbers[i];
	}
	// The descriptions may arrive without a terminating NUL; store them cut
	// to fit with one.
	char shortText[kShortSize + 1] = {};
	char longText[kLongSize + 1] = {};
	memcpy(shortText, info->short_info, kShortSize);
	memcpy(longText, info->long_info, kLongSize);
	PutText(record + kNumberCount * 4, shortText, kShortSize);
	PutText(record + kNumberCount * 4 + kShortSize, longText, kLongSize);

	ssize_t written = fFile->WriteAttr(AttrName(kind), kVersionInfoType, 0, record, kRecordSize);
	return written < 0 ? static_cast<status_t>(written) : B_OK;
}


bool
BAppFileInfo::LastInFallback() const
{
	return fFile != nullptr && fFile->LastAttrInFallback();
}


status_t
get_app_path(BPath* path)
{
	if (path == nullptr)
		return B_BAD_VALUE;
	std::string buffer(256, '\0');
	while (true) {
		ssize_t length = readlink("/proc/self/exe", &buffer[0], buffer.size());
		if (length < 0)
			return StatusFromErrno(errno);
		if (static_cast<size_t>(length) < buffer.size()) {
			buffer.resize(length);
			break;
		}
		buffer.resize(buffer.size() * 2);
	}
	// An executable rebuilt while it runs shows as "<path> (deleted)"; its
	// attributes belong to whatever file is at the path now.
	const std::string kDeleted = " (deleted)";
	if (buffer.size() > kDeleted.size() &&
	    buffer.compare(buffer.size() - kDeleted.size(), kDeleted.size(), kDeleted) == 0)
		buffer.resize(buffer.size() - kDeleted.size());
	return path->SetTo(buffer.c_str());
}
