// quickstep-cli platform: everything the platform layer reads on this machine,
// so a user can check it against lscpu, lspci -n and /proc/meminfo.
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <string>

#include <CLI/CLI.hpp>

#include <FindDirectory.h>
#include <OS.h>
#include <PCI.h>
#include <Platform.h>
#include <Screen.h>

#include "cli/Commands.h"

namespace {

const int kLabelWidth = 20;

void
PrintLabel(const char* label)
{
	printf("  %-*s ", kLabelWidth, label);
}

void
PrintInt(const char* label, long long value)
{
	PrintLabel(label);
	printf("%lld\n", value);
}

void
PrintText(const char* label, const char* text)
{
	PrintLabel(label);
	printf("%s\n", text);
}

void
PrintSystemInfo(const system_info& info)
{
	printf("System\n");
	char text[256];
	snprintf(text, sizeof(text), "%08" PRIx32 "%08" PRIx32, static_cast<uint32>(info.id[0]),
	         static_cast<uint32>(info.id[1]));
	PrintText("id", text);
	PrintInt("boot_time", info.boot_time);
	PrintInt("cpu_count", info.cpu_count);
	snprintf(text, sizeof(text), "0x%" PRIx32, static_cast<uint32>(info.cpu_type));
	PrintText("cpu_type", text);
	PrintInt("cpu_revision", info.cpu_revision);
	for (int32 cpu = 0; cpu < info.cpu_count && cpu < B_MAX_CPU_COUNT; cpu++) {
		char label[32];
		snprintf(label, sizeof(label), "cpu_infos[%" PRId32 "]", cpu);
		snprintf(text, sizeof(text), "active_time %" PRId64 " us", info.cpu_infos[cpu].active_time);
		PrintText(label, text);
	}
	snprintf(text, sizeof(text), "%" PRId64 " Hz", info.cpu_clock_speed);
	PrintText("cpu_clock_speed", text);
	snprintf(text, sizeof(text), "%" PRId64 " Hz", info.bus_clock_speed);
	PrintText("bus_clock_speed", text);
	PrintInt("platform_type", info.platform_type);
	snprintf(text, sizeof(text), "%" PRId32 " (%" PRId64 " MB)", info.max_pages,
	         static_cast<int64>(info.max_pages) * 4096 / (1024 * 1024));
	PrintText("max_pages", text);
	PrintInt("used_pages", info.used_pages);
	PrintInt("page_faults", info.page_faults);
	PrintInt("max_sems", info.max_sems);
	PrintInt("used_sems", info.used_sems);
	PrintInt("max_ports", info.max_ports);
	PrintInt("used_ports", info.used_ports);
	PrintInt("max_threads", info.max_threads);
	PrintInt("used_threads", info.used_threads);
	PrintInt("max_teams", info.max_teams);
	PrintInt("used_teams", info.used_teams);
	PrintText("kernel_name", info.kernel_name);
	PrintText("kernel_build_date", info.kernel_build_date);
	PrintText("kernel_build_time", info.kernel_build_time);
	snprintf(text, sizeof(text), "0x%" PRIx64, info.kernel_version);
	PrintText("kernel_version", text);
}

void
PrintCpus(const system_info& info)
{
	std::string allowed;
	for (int32 cpu = 0; cpu < info.cpu_count; cpu++) {
		if (_kget_cpu_state_(cpu))
			allowed += (allowed.empty() ? "" : " ") + std::to_string(cpu);
	}
	PrintText("cpus this process", allowed.empty() ? "(none)" : allowed.c_str());
}

void
PrintPci()
{
	printf("PCI\n");
	pci_info pci;
	long index = 0;
	for (; get_nth_pci_info(index, &pci) == B_OK; index++) {
		char label[32];
		snprintf(label, sizeof(label), "%02x:%02x.%x", pci.bus, pci.device, pci.function);
		char text[128];
		snprintf(text, sizeof(text), "class %02x/%02x/%02x  %04x:%04x  rev %02x", pci.class_base,
		         pci.class_sub, pci.class_api, pci.vendor_id, pci.device_id, pci.revision);
		PrintText(label, text);
	}
	if (index == 0)
		PrintText("(none)", "no PCI functions readable");
}

void
PrintScreen()
{
	printf("Screen\n");
	BScreen screen(B_MAIN_SCREEN_ID);
	BRect frame = screen.Frame();
	char text[128];
	snprintf(text, sizeof(text), "(%g, %g, %g, %g)%s", frame.left, frame.top, frame.right,
	         frame.bottom, screen.IsValid() ? "" : "  no display");
	PrintText("frame", text);
	snprintf(text, sizeof(text), "0x%x", static_cast<unsigned>(screen.ColorSpace()));
	PrintText("color_space", text);
}

void
PrintFiles()
{
	printf("Files\n");
	char path[B_PATH_NAME_LENGTH];
	status_t status = find_directory(B_COMMON_TEMP_DIRECTORY, 0, false, path, sizeof(path));
	PrintText("temporary directory", status == B_OK ? path : strerror_status(status));
	status = find_directory(B_COMMON_DOCUMENTATION_DIRECTORY, 0, false, path, sizeof(path));
	PrintText("documentation", status == B_OK ? path : strerror_status(status));

	char executable[B_PATH_NAME_LENGTH];
	status = platform_executable_path(executable, sizeof(executable));
	if (status != B_OK) {
		PrintText("executable", strerror_status(status));
		return;
	}
	PrintText("executable", executable);
	char* slash = strrchr(executable, '/');
	if (slash != nullptr)
		*slash = '\0';
	status = platform_probe_attributes(executable[0] != '\0' ? executable : "/");
	char text[B_PATH_NAME_LENGTH + 64];
	snprintf(text, sizeof(text), "%s in %s", status == B_OK ? "work" : strerror_status(status),
	         executable);
	PrintText("extended attributes", text);
}

int
RunPlatform()
{
	system_info info;
	status_t status = get_system_info(&info);
	if (status != B_OK) {
		fprintf(stderr, "quickstep-cli: cannot read the system profile: %s\n",
		        strerror_status(status));
		return 1;
	}
	PrintSystemInfo(info);
	PrintCpus(info);
	PrintPci();
	PrintScreen();
	PrintFiles();
	return 0;
}

} // namespace

void
AddPlatformCommand(CLI::App& app, CommandTable& commands)
{
	CLI::App* command =
	    app.add_subcommand("platform", "Print what the platform layer reads on this machine");
	commands.Add(command, RunPlatform);
}
