// quickstep-cli devices: the machine's PCI functions as the catalogue names
// them, class by class, and the report of the ones it does not know.
#include <cstdio>
#include <string>

#include <CLI/CLI.hpp>

#include "cli/Commands.h"
#include "sysinfo/LibDeviceInfo.h"

namespace {

void
PrintCatalogue(LibDeviceInfo& catalogue)
{
	int total = 0;
	int unknown = 0;
	for (pciItem* item = catalogue.First(); item != nullptr; item = catalogue.Next()) {
		LinkList<pciDevice>& devices = item->Devices();
		printf("%s (class %d)\n", item->Type(), static_cast<int>(item->ClassId()));
		for (pciDevice* device = devices.First(); device != nullptr; device = devices.Next()) {
			const char* mark = "";
			if (!device->IsVendorMatched())
				mark = device->IsDeviceMatched() ? "  [unknown vendor]"
				                                 : "  [unknown vendor and device]";
			else if (!device->IsDeviceMatched())
				mark = "  [unknown device]";
			printf("  %04x:%04x  %s (%s): %s%s\n", device->VendorId(), device->DeviceId(),
			       device->VendorLong(), device->VendorShort(), device->Description(), mark);
			total++;
		}
		unknown += item->NumberDevicesUnknown();
	}
	if (total == 0)
		printf("No PCI devices found.\n");
	else
		printf("%d device%s, %d unknown\n", total, total == 1 ? "" : "s", unknown);
}

// Writes the items that hold unknown devices, as the unknown-devices window
// saves them.
int
WriteUnknownReport(LibDeviceInfo& catalogue, const std::string& path)
{
	FILE* file = fopen(path.c_str(), "w");
	if (file == nullptr) {
		fprintf(stderr, "quickstep-cli devices: cannot write %s\n", path.c_str());
		return 1;
	}
	int unknown = 0;
	for (pciItem* item = catalogue.First(); item != nullptr; item = catalogue.Next()) {
		int count = item->NumberDevicesUnknown();
		if (count > 0) {
			item->Write(file);
			unknown += count;
		}
	}
	if (fclose(file) != 0) {
		fprintf(stderr, "quickstep-cli devices: cannot write %s\n", path.c_str());
		return 1;
	}
	printf("Wrote %d unknown device%s to %s\n", unknown, unknown == 1 ? "" : "s", path.c_str());
	return 0;
}

} // namespace

void
AddDevicesCommand(CLI::App& app, CommandTable& commands)
{
	CLI::App* command = app.add_subcommand(
	    "devices", "List this machine's PCI devices by class, named from the built-in catalogue");
	auto reportPath = std::make_shared<std::string>();
	command
	    ->add_option(
	        "--unknown-report", *reportPath,
	        "Write the devices the catalogue does not know to FILE, in the unknown-devices "
	        "report format")
	    ->type_name("FILE");
	commands.Add(command, [reportPath] {
		LibDeviceInfo catalogue;
		PrintCatalogue(catalogue);
		if (reportPath->empty())
			return 0;
		return WriteUnknownReport(catalogue, *reportPath);
	});
}
