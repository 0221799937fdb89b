// Fuzz entries of the machine readers: the profile's /proc and /sys files,
// the PCI functions in sysfs and os-release, all read through the platform's
// root directory pointed at a scratch tree.
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include <OS.h>
#include <PCI.h>
#include <PlatformTest.h>

#include "FuzzEntries.h"
#include "FuzzSupport.h"
#include "sysinfo/LibDeviceInfo.h"
#include "sysinfo/LibSysInfo.h"
#include "sysinfo/pciItem.h"

namespace {

// The files of the profile, in the order of the input's sections.
const char* const kProfileFiles[] = {
    "proc/cpuinfo",
    "proc/meminfo",
    "proc/stat",
    "proc/sys/kernel/version",
    "proc/sys/kernel/osrelease",
    "proc/sys/kernel/ostype",
    "sys/devices/system/cpu/online",
    "sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq",
    "sys/devices/system/cpu/cpu1/cpufreq/cpuinfo_max_freq",
    "sys/firmware/dmi/entries/4-0/raw",
    "proc/loadavg",
    "proc/sys/kernel/sem",
    "proc/vmstat",
    "etc/machine-id",
};
const size_t kProfileFileCount = sizeof(kProfileFiles) / sizeof(kProfileFiles[0]);

// The files of one PCI function, in the order of the input's sections.
const char* const kPciFiles[] = {"class", "vendor", "device", "revision", "config"};
const size_t kPciFileCount = sizeof(kPciFiles) / sizeof(kPciFiles[0]);
const size_t kMaxPciFunctions = 8;

// Writes the sections under root, one file each; files without a section go.
void
PutSections(const std::string& root, const char* const* files, size_t count,
            const std::vector<std::string>& sections)
{
	for (size_t i = 0; i < count; i++)
		fuzz::PutFile(root + "/" + files[i], i < sections.size() ? &sections[i] : nullptr);
}

} // namespace

int
FuzzSystemInfo(const uint8_t* data, size_t size)
{
	fuzz::Substitute(false);
	PutSections("machine", kProfileFiles, kProfileFileCount,
	            fuzz::Sections(data, size, kProfileFileCount));
	platform_set_root((fuzz::ScratchDirectory() + "/machine").c_str());
	system_info info;
	get_system_info(&info);
	LibSysInfo profile;
	LibString description;
	profile.Description(description);
	profile.ScreenDepthStr();
	platform_set_root(nullptr);
	return 0;
}

int
FuzzPciDevices(const uint8_t* data, size_t size)
{
	fuzz::Substitute(false);
	const std::string root = fuzz::ScratchDirectory() + "/pci";
	std::error_code ignored;
	std::filesystem::remove_all(root + "/sys/bus/pci/devices", ignored);
	std::filesystem::create_directories(root + "/sys/bus/pci/devices", ignored);
	std::vector<std::string> sections =
	    fuzz::Sections(data, size, kPciFileCount * kMaxPciFunctions);
	for (size_t function = 0; function * kPciFileCount < sections.size(); function++) {
		char name[64];
		snprintf(name, sizeof(name), "pci/sys/bus/pci/devices/0000:00:%02zx.0", function);
		std::vector<std::string> files(sections.begin() + function * kPciFileCount, sections.end());
		PutSections(name, kPciFiles, kPciFileCount, files);
	}
	platform_set_root(root.c_str());

	pci_info info;
	for (long index = 0; get_nth_pci_info(index, &info) == B_OK; index++) {
	}
	LibDeviceInfo catalogue;
	int cursor = 0;
	int classId = 0;
	LibString className;
	while (catalogue.NextClassId(cursor, classId, className)) {
		LibString text;
		catalogue.FindDevice(classId, text);
	}
	catalogue.AllDevicesKnown();
	for (pciItem* item = catalogue.First(); item != nullptr; item = catalogue.Next())
		item->Write(fuzz::Sink());
	platform_set_root(nullptr);
	return 0;
}

int
FuzzOsRelease(const uint8_t* data, size_t size)
{
	const std::string text(reinterpret_cast<const char*>(data), size);
	fuzz::PutFile("os/etc/os-release", &text);
	platform_set_root((fuzz::ScratchDirectory() + "/os").c_str());
	LibString version("unchanged");
	LibGetOSVersion(version);
	platform_set_root(nullptr);
	return 0;
}
