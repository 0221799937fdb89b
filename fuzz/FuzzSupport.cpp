#include "FuzzSupport.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include <OS.h>
#include <PlatformTest.h>
#include <Rect.h>

namespace fuzz {

namespace {

std::string sScratch;

void
RemoveScratch()
{
	std::error_code ignored;
	if (!sScratch.empty())
		std::filesystem::remove_all(sScratch, ignored);
}

} // namespace

const std::string&
ScratchDirectory()
{
	if (sScratch.empty()) {
		const char* base = getenv("TMPDIR");
		std::string pattern = std::string(base != nullptr && *base != '\0' ? base : "/tmp") +
		                      "/quickstep-fuzz-XXXXXX";
		if (mkdtemp(&pattern[0]) == nullptr)
			abort();
		sScratch = pattern;
		atexit(RemoveScratch);
	}
	return sScratch;
}

void
PutFile(const std::string& relative, const std::string* contents)
{
	const std::filesystem::path path = ScratchDirectory() + "/" + relative;
	std::error_code ignored;
	if (contents == nullptr) {
		std::filesystem::remove(path, ignored);
		return;
	}
	std::filesystem::create_directories(path.parent_path(), ignored);
	std::ofstream(path, std::ios::binary | std::ios::trunc) << *contents;
}

std::vector<std::string>
Sections(const uint8_t* data, size_t size, size_t limit)
{
	std::vector<std::string> sections;
	const char* text = reinterpret_cast<const char*>(data);
	size_t start = 0;
	while (sections.size() < limit && start <= size) {
		const void* nul = size > start ? memchr(text + start, '\0', size - start) : nullptr;
		const size_t end = nul != nullptr ? static_cast<const char*>(nul) - text : size;
		sections.emplace_back(text + start, end - start);
		start = end + 1;
	}
	return sections;
}

void
Substitute(bool machine)
{
	const BRect frame(0, 0, 1023, 767);
	platform_set_screen(&frame, B_CMAP8);
	if (!machine) {
		platform_set_system_info(nullptr);
		return;
	}
	system_info info;
	memset(&info, 0, sizeof(info));
	info.cpu_count = 2;
	info.cpu_type = B_CPU_INTEL_PENTIUM_II;
	info.platform_type = B_AT_CLONE_PLATFORM;
	info.cpu_clock_speed = 400000000;
	info.max_pages = 32768;
	platform_set_system_info(&info);
}

FILE*
Sink()
{
	static FILE* sink = fopen("/dev/null", "w");
	return sink;
}

} // namespace fuzz
