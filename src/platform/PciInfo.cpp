// get_nth_pci_info over sysfs. The list of functions and their id files are
// read afresh on every call: callers walk the bus from index 0 until an
// error, a few dozen functions at most. Configuration space is another
// matter: on virtual machines every read of it traps to the hypervisor and
// costs milliseconds, and the catalogue walks the bus some twenty times, so
// its first bytes are read once per function and kept for the process.
#include "PCI.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <map>
#include <mutex>

#include <dirent.h>

#include "PlatformFiles.h"

using platform::ReadFile;
using platform::ReadNumber;
using platform::RootedPath;

namespace {

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
		PciAddress address;
		if (ParseAddress(entry->d_name, address))
			functions.push_back(address);
	}
	closedir(directory);
	std::sort(functions.begin(), functions.end());
	return functions;
}

// The first 64 bytes of configuration space of the function at path.
std::string
ConfigHeader(const std::string& path)
{
	static std::mutex sLock;
	static std::map<std::string, std::string> sHeaders;

	std::lock_guard<std::mutex> lock(sLock);
	auto found = sHeaders.find(path);
	if (found != sHeaders.end())
		return found->second;
	std::string config;
	ReadFile(path, config, 64);
	sHeaders[path] = config;
	return config;
}

} // namespace

long
get_nth_pci_info(long index, pci_info* info)
{
	if (info == nullptr)
		return B_BAD_VALUE;
	if (index < 0)
		return B_BAD_INDEX;
	std::string devices = RootedPath("/sys/bus/pci/devices");
	std::vector<PciAddress> functions = ListFunctions(devices);
	if (static_cast<size_t>(index) >= functions.size())
		return B_BAD_INDEX;

	const PciAddress& address = functions[index];
	std::string base = devices + "/" + address.name + "/";
	*info = pci_info();
	info->bus = static_cast<uint8>(address.bus);
	info->device = static_cast<uint8>(address.device);
	info->function = static_cast<uint8>(address.function);

	// The first 64 bytes of configuration space are readable by everyone; they
	// hold what the separate files do not (header type, latency ...).
	std::string config = ConfigHeader(base + "config");
	auto configByte = [&config](size_t offset) {
		return offset < config.size() ? static_cast<uint8>(config[offset]) : uint8(0);
	};

	long long value = 0;
	if (ReadNumber(base + "vendor", value))
		info->vendor_id = static_cast<uint16>(value);
	else
		info->vendor_id = static_cast<uint16>(configByte(0) | (configByte(1) << 8));
	if (ReadNumber(base + "device", value))
		info->device_id = static_cast<uint16>(value);
	else
		info->device_id = static_cast<uint16>(configByte(2) | (configByte(3) << 8));
	if (ReadNumber(base + "revision", value))
		info->revision = static_cast<uint8>(value);
	else
		info->revision = configByte(8);
	if (ReadNumber(base + "class", value)) {
		// 0xBBSSII: base class, sub-class, programming interface.
		info->class_base = static_cast<uint8>(value >> 16);
		info->class_sub = static_cast<uint8>(value >> 8);
		info->class_api = static_cast<uint8>(value);
	} else {
		info->class_api = configByte(9);
		info->class_sub = configByte(10);
		info->class_base = configByte(11);
	}
	info->line_size = configByte(12);
	info->latency = configByte(13);
	info->header_type = configByte(14);
	info->bist = configByte(15);
	return B_OK;
}
