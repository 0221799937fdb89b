// quickstep-cli system: the machine's profile as the program shows it: the
// one-line description of every results record, the "System..." window's
// groups, and the device lines a results record gets.
#include <cstdio>

#include <unistd.h>

#include <CLI/CLI.hpp>

#include "cli/Commands.h"
#include "lib/LibString.h"
#include "sysinfo/LibDeviceInfo.h"
#include "sysinfo/LibSysInfo.h"

namespace {

void
PrintLine(const char* text)
{
	// An empty line of the window prints as an empty line.
	printf(text[0] != '\0' ? "  %s\n" : "%s\n", text);
}

void
PrintProfile(LibSysInfo& profile)
{
	LibString line;

	printf("Machine\n");
	// The window fills its host-name line only when gethostname answers
	// non-zero, so on a working system the line stays empty; shown the same.
	char hostName[1024];
	line = "";
	if (gethostname(hostName, sizeof(hostName)) != 0)
		line.Format("%s : %s", "Host Name", hostName);
	PrintLine(line);
	line.Format("%s : %s", "Platform", profile.PlatformName());
	PrintLine(line);
	line.Format("%s : %s", "OS Built", profile.KernelBuild());
	PrintLine(line);
	LibString version;
	LibGetOSVersion(version);
	line.Format("%s : %s", "OS Version", version.String());
	PrintLine(line);

	printf("Monitor\n");
	line.Format("%s : %s", "Color", profile.ScreenDepthStr());
	PrintLine(line);
	line.Format("%s : %d x %d", "Size", profile.ScreenWidth(), profile.ScreenHeight());
	PrintLine(line);

	printf("CPU\n");
	line.Format("%s : %d", "Quantity", profile.CpuCount());
	PrintLine(line);
	line.Format("%s : %s", "Type", profile.CpuName());
	PrintLine(line);
	line.Format("%s : %d", "Revision", profile.CpuRevision());
	PrintLine(line);
	line.Format("%s : %d MHz", "Clock Speed", profile.CpuClock());
	PrintLine(line);
}

// The lines a results record collects for this machine: the screen, then the
// first device of each class present, in the catalogue's class order.
void
PrintDeviceLines(LibSysInfo& profile)
{
	printf("Devices\n");
	LibString text;
	text.Format("%s, %dx%d resolution", profile.ScreenDepthStr(), profile.ScreenWidth(),
	            profile.ScreenHeight());
	printf("  %-22s %s\n", "Screen", text.String());

	LibDeviceInfo catalogue;
	int index = 0;
	int classId = 0;
	LibString className;
	while (catalogue.NextClassId(index, classId, className)) {
		if (catalogue.FindDevice(classId, text))
			printf("  %-22s %s\n", className.String(), text.String());
	}
}

int
RunSystem()
{
	LibSysInfo profile;
	LibString description;
	profile.Description(description);
	printf("%s\n", description.String());
	PrintProfile(profile);
	PrintDeviceLines(profile);
	return 0;
}

} // namespace

void
AddSystemCommand(CLI::App& app, CommandTable& commands)
{
	CLI::App* command = app.add_subcommand(
	    "system", "Print this machine's profile: its one-line description, the System window's "
	              "lines and the device lines of a results record");
	commands.Add(command, RunSystem);
}
