#include "PlatformFiles.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include <fcntl.h>
#include <unistd.h>

#include "PlatformTest.h"

namespace {

std::mutex sRootLock;
std::string sRoot;
// Changes with every platform_set_root, so that what was read under one root
// (or one state of a fixture tree) is not answered for the next.
unsigned long sRootGeneration = 0;
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
	sRootGeneration++;
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

unsigned long
RootGeneration()
{
	std::lock_guard<std::mutex> lock(sRootLock);
	return sRootGeneration;
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
	// Plain reads of no more than asked for: a kernel attribute may cost per
	// byte (a device's configuration space traps to the hypervisor on virtual
	// machines), and a stream would fetch a whole page of it. O_NONBLOCK: a
	// named pipe under a substituted root must not hang the reader.
	const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
	if (fd < 0)
		return false;
	char buffer[4096];
	bool ok = true;
	while (contents.size() < maxBytes) {
		const size_t wanted = std::min(sizeof(buffer), maxBytes - contents.size());
		const ssize_t count = read(fd, buffer, wanted);
		if (count < 0 && errno == EINTR)
			continue;
		if (count < 0) {
			ok = false;
			break;
		}
		if (count == 0)
			break;
		contents.append(buffer, static_cast<size_t>(count));
	}
	close(fd);
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

namespace {

bool
ParseCpuRanges(const std::string& text, std::vector<int>& ids)
{
	std::string list = Trim(text);
	const char* cursor = list.c_str();
	// The lowest id the next range may start at.
	long next = 0;
	while (*cursor != '\0') {
		char* end = nullptr;
		errno = 0;
		long first = strtol(cursor, &end, 10);
		if (end == cursor || errno != 0 || first < next)
			return false;
		long last = first;
		cursor = end;
		if (*cursor == '-') {
			last = strtol(cursor + 1, &end, 10);
			if (end == cursor + 1 || errno != 0 || last < first)
				return false;
			cursor = end;
		}
		if (last >= kMaxCpuIds)
			return false;
		for (long id = first; id <= last; id++)
			ids.push_back(static_cast<int>(id));
		next = last + 1;
		if (*cursor == ',')
			cursor++;
		else if (*cursor != '\0')
			return false;
	}
	return !ids.empty();
}

} // namespace

bool
ParseCpuList(const std::string& text, std::vector<int>& ids)
{
	ids.clear();
	if (ParseCpuRanges(text, ids))
		return true;
	ids.clear();
	return false;
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
				if (colon != std::string::npos && colon < newline && count < kMaxCpuIds)
					ids.push_back(count++);
			}
			position += 9;
		}
		if (!ids.empty())
			return ids;
	}

	if (!useRoot || AtRealRoot()) {
		long count = sysconf(_SC_NPROCESSORS_ONLN);
		for (long id = 0; id < count && id < kMaxCpuIds; id++)
			ids.push_back(static_cast<int>(id));
	}
	if (ids.empty())
		ids.push_back(0);
	return ids;
}

} // namespace platform
