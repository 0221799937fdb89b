// get_nth_pci_info over sysfs: the functions of /sys/bus/pci/devices in
// address order, each read from its attribute files once per process.
#include "PCI.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <mutex>

#include <dirent.h>

#include "PlatformFiles.h"

using platform::ReadFile;
using platform::ReadNumber;
using platform::RootedPath;

namespace {

// One PCI segment holds at most 256 buses of 32 devices of 8 functions; a
// directory listing more is not the kernel's.
const size_t kMaxFunctions = 65536;

struct PciAddress {
	unsigned domain;
	unsigned bus;
	unsigned device;
	unsigned function;
	std::string name;

	bool operator<(const PciAddress& other) const
	{
		if (domain != other.domain)
			return domain < other.domain;
		if (bus != other.bus)
			return bus < other.bus;
		if (device != other.device)
			return device < other.device;
		return function < other.function;
	}
};

// "0000:00:1f.3": domain, bus, device and function in hexadecimal.
bool
ParseAddress(const char* name, PciAddress& address)
{
	int consumed = 0;
	if (sscanf(name, "%x:%x:%x.%x%n", &address.domain, &address.bus, &address.device,
	           &address.function, &consumed) != 4 ||
	    name[consumed] != '\0')
		return false;
	if (address.bus > 0xff || address.device > 0x1f || address.function > 7)
		return false;
	address.name = name;
	return true;
}

std::vector<PciAddress>
ListFunctions(const std::string& directoryPath)
{
	std::vector<PciAddress> functions;
	DIR* directory = opendir(directoryPath.c_str());
	if (directory == nullptr)
		return functions;
	while (struct dirent* entry = readdir(directory)) {
		if (functions.size() >= kMaxFunctions)
			break;
		PciAddress address;
		if (ParseAddress(entry->d_name, address))
			functions.push_back(address);
	}
	closedir(directory);
	std::sort(functions.begin(), functions.end());
	return functions;
}

// One function as get_nth_pci_info answers it, read from its sysfs files.
pci_info
ReadFunction(const std::string& devices, const PciAddress& address)
{
	const std::string base = devices + "/" + address.name + "/";
	pci_info info = pci_info();
	info.bus = static_cast<uint8>(address.bus);
	info.device = static_cast<uint8>(address.device);
	info.function = static_cast<uint8>(address.function);

	// The header's first 16 bytes hold what the attribute files do not (line
	// size, latency, header type, BIST) and stand in for any attribute file
	// that is missing. Configuration space is read per byte asked for, and
	// on virtual machines each of its words traps to the hypervisor: only
	// these 16 bytes are read, once.
	std::string config;
	ReadFile(base + "config", config, 16);
	auto configByte = [&config](size_t offset) {
		return offset < config.size() ? static_cast<uint8>(config[offset]) : uint8(0);
	};

	long long value = 0;
	if (ReadNumber(base + "vendor", value))
		info.vendor_id = static_cast<uint16>(value);
	else
		info.vendor_id = static_cast<uint16>(configByte(0) | (configByte(1) << 8));
	if (ReadNumber(base + "device", value))
		info.device_id = static_cast<uint16>(value);
	else
		info.device_id = static_cast<uint16>(configByte(2) | (configByte(3) << 8));
	if (ReadNumber(base + "revision", value))
		info.revision = static_cast<uint8>(value);
	else
		info.revision = configByte(8);
	if (ReadNumber(base + "class", value)) {
		// 0xBBSSII: base class, sub-class, programming interface.
		info.class_base = static_cast<uint8>(value >> 16);
		info.class_sub = static_cast<uint8>(value >> 8);
		info.class_api = static_cast<uint8>(value);
	} else {
		info.class_api = configByte(9);
		info.class_sub = configByte(10);
		info.class_base = configByte(11);
	}
	info.line_size = configByte(12);
	info.latency = configByte(13);
	info.header_type = configByte(14);
	info.bist = configByte(15);
	return info;
}

// Every function under the current root, in address order. The catalogue
// walks the bus once per class and twice per class present, some twenty
// times: the bus is read once per process (and once again after the root
// is set anew), not on every call.
bool
FunctionAt(long index, pci_info& info)
{
	static std::mutex sLock;
	static bool sRead = false;
	static unsigned long sGeneration = 0;
	static std::vector<pci_info> sFunctions;

	std::lock_guard<std::mutex> lock(sLock);
	const unsigned long generation = platform::RootGeneration();
	if (!sRead || generation != sGeneration) {
		sFunctions.clear();
		const std::string devices = RootedPath("/sys/bus/pci/devices");
		for (const PciAddress& address : ListFunctions(devices))
			sFunctions.push_back(ReadFunction(devices, address));
		sRead = true;
		sGeneration = generation;
	}
	if (static_cast<size_t>(index) >= sFunctions.size())
		return false;
	info = sFunctions[static_cast<size_t>(index)];
	return true;
}

} // namespace

long
get_nth_pci_info(long index, pci_info* info)
{
	if (info == nullptr)
		return B_BAD_VALUE;
	if (index < 0)
		return B_BAD_INDEX;
	return FunctionAt(index, *info) ? B_OK : B_BAD_INDEX;
}
