#include "PlatformFiles.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include <unistd.h>

#include "PlatformTest.h"

namespace {

std::mutex sRootLock;
std::string sRoot;
// platform_root hands out a pointer; this copy stays valid until the next change.
char sRootCopy[4096] = "";

} // namespace

void
platform_set_root(const char* root)
{
	std::lock_guard<std::mutex> lock(sRootLock);
	sRoot = root != nullptr ? root : "";
	while (sRoot.size() > 1 && sRoot.back() == '/')
		sRoot.pop_back();
	if (sRoot == "/")
		sRoot.clear();
	snprintf(sRootCopy, sizeof(sRootCopy), "%s", sRoot.c_str());
}

const char*
platform_root()
{
	std::lock_guard<std::mutex> lock(sRootLock);
	return sRootCopy;
}

namespace platform {

std::string
RootedPath(const char* path)
{
	std::lock_guard<std::mutex> lock(sRootLock);
	return sRoot + path;
}

bool
AtRealRoot()
{
	std::lock_guard<std::mutex> lock(sRootLock);
	return sRoot.empty();
}

bool
ReadFile(const std::string& path, std::string& contents, size_t maxBytes)
{
	contents.clear();
	FILE* file = fopen(path.c_str(), "rb");
	if (file == nullptr)
		return false;
	char buffer[4096];
	bool ok = true;
	while (contents.size() < maxBytes) {
		size_t count = fread(buffer, 1, sizeof(buffer), file);
		contents.append(buffer, count);
		if (count < sizeof(buffer)) {
			ok = ferror(file) == 0;
			break;
		}
	}
	fclose(file);
	if (contents.size() > maxBytes)
		contents.resize(maxBytes);
	return ok;
}

std::string
Trim(const std::string& text)
{
	size_t start = text.find_first_not_of(" \t\r\n");
	if (start == std::string::npos)
		return std::string();
	size_t end = text.find_last_not_of(" \t\r\n");
	return text.substr(start, end - start + 1);
}

bool
ReadLine(const std::string& path, std::string& line)
{
	std::string contents;
	if (!ReadFile(path, contents, 64 * 1024))
		return false;
	line = Trim(contents.substr(0, contents.find('\n')));
	return true;
}

bool
ReadNumber(const std::string& path, long long& value)
{
	std::string line;
	if (!ReadLine(path, line) || line.empty())
		return false;
	char* end = nullptr;
	errno = 0;
	long long parsed = strtoll(line.c_str(), &end, 0);
	if (end == line.c_str() || errno != 0)
		return false;
	value = parsed;
	return true;
}

bool
ParseCpuList(const std::string& text, std::vector<int>& ids)
{
	ids.clear();
	std::string list = Trim(text);
	const char* cursor = list.c_str();
	while (*cursor != '\0') {
		char* end = nullptr;
		long first = strtol(cursor, &end, 10);
		if (end == cursor || first < 0)
			return false;
		long last = first;
		cursor = end;
		if (*cursor == '-') {
			last = strtol(cursor + 1, &end, 10);
			if (end == cursor + 1 || last < first)
				return false;
			cursor = end;
		}
		// A corrupt list must not make us allocate without bound.
		if (last >= 65536)
			return false;
		for (long id = first; id <= last; id++)
			ids.push_back(static_cast<int>(id));
		if (*cursor == ',')
			cursor++;
		else if (*cursor != '\0')
			return false;
	}
	return !ids.empty();
}

std::vector<int>
OnlineCpus(bool useRoot)
{
	const char* onlinePath = "/sys/devices/system/cpu/online";
	std::string path = useRoot ? RootedPath(onlinePath) : std::string(onlinePath);
	std::string text;
	std::vector<int> ids;
	if (ReadLine(path, text) && ParseCpuList(text, ids))
		return ids;

	// Without sysfs, count the processor entries of cpuinfo.
	std::string cpuinfo;
	path = useRoot ? RootedPath("/proc/cpuinfo") : std::string("/proc/cpuinfo");
	if (ReadFile(path, cpuinfo)) {
		size_t position = 0;
		int count = 0;
		while ((position = cpuinfo.find("processor", position)) != std::string::npos) {
			if (position == 0 || cpuinfo[position - 1] == '\n') {
				size_t colon = cpuinfo.find(':', position);
				size_t newline = cpuinfo.find('\n', position);
				if (colon != std::string::npos && colon < newline)
					ids.push_back(count++);
			}
			position += 9;
		}
		if (!ids.empty())
			return ids;
	}

	if (!useRoot || AtRealRoot()) {
		long count = sysconf(_SC_NPROCESSORS_ONLN);
		for (long id = 0; id < count; id++)
			ids.push_back(static_cast<int>(id));
	}
	if (ids.empty())
		ids.push_back(0);
	return ids;
}

} // namespace platform
