#include "sysinfo/LibDeviceInfo.h"

#include <cstdio>

#include <PCI.h>

#include "sysinfo/PciTables.h"

namespace {

struct pciClassRow {
	int32 classId;
	const char* name;
};

// Examined in this order, which is alphabetical by name; the null name ends
// the table.
const pciClassRow kPciClasses[] = {
    {8, "Base Peripheral"},
    {6, "Bridge"},
    {3, "Display"},
    {10, "Docking Station"},
    {0, "Early"},
    {9, "Input"},
    {1, "Mass Storage"},
    {5, "Memory"},
    {4, "Multimedia"},
    {2, "Network"},
    {11, "Processor"},
    {12, "Serial Bus"},
    {7, "Simple Communications"},
    {255, "Undefined"},
    {0, nullptr},
};

} // namespace


LibDeviceInfo::LibDeviceInfo()
{
	pciDevices();
}


LibDeviceInfo::~LibDeviceInfo()
{
	Clear();
}


void
LibDeviceInfo::pciDevices()
{
	for (const pciClassRow* row = kPciClasses; row->name != nullptr; row++) {
		const int classId = row->classId;
		if (NumberPciDecices(classId) <= 0)
			continue;
		pciItem* item = new pciItem(classId);
		item->Type(row->name);
		ObtainPciDevices(classId, item);
		Insert(item);
	}
}


status_t
LibDeviceInfo::ObtainPciDevices(const int& classId, pciItem* item)
{
	pci_info info;
	long status = B_OK;
	for (long index = 0; (status = get_nth_pci_info(index, &info)) == B_OK; index++) {
		if (static_cast<int>(info.class_base) != classId)
			continue;
		pciDevice* device = new pciDevice;
		device->VendorId(info.vendor_id);
		device->DeviceId(info.device_id);
		GetDevice(device);
		item->Devices().Insert(device);
	}
	return static_cast<status_t>(status);
}


void
LibDeviceInfo::GetDevice(pciDevice* device)
{
	// Linear scans from the first row: where an id occurs twice the first row
	// wins, and the sentinel row is never matched.
	for (const pciVendorRow* row = kPciVendors; row->vendorId < kPciSentinelVendor; row++) {
		if (row->vendorId == device->VendorId()) {
			device->VendorShort(row->shortName);
			device->VendorLong(row->longName);
			break;
		}
	}
	for (const pciDeviceRow* row = kPciDevices; row->vendorId < kPciSentinelVendor; row++) {
		if (row->vendorId == device->VendorId() && row->deviceId == device->DeviceId()) {
			// An empty description gives way to the chip name, even an empty one.
			device->Description(row->description[0] != '\0' ? row->description : row->chipName);
			break;
		}
	}
}


bool
LibDeviceInfo::FindDevice(const int& classId, LibString& text)
{
	pciItem wanted(classId);
	pciItem* item = Get(&wanted);
	if (item == nullptr)
		return false;
	pciDevice* device = item->Devices().First();
	if (device == nullptr)
		return false;
	text.Format("%s, %s", device->VendorLong(), device->Description());
	return true;
}


bool
LibDeviceInfo::NextClassId(int& index, int& classId, LibString& name)
{
	const int rows = static_cast<int>(sizeof(kPciClasses) / sizeof(kPciClasses[0]));
	if (index < 0 || index >= rows)
		return false;
	const pciClassRow& row = kPciClasses[index];
	if (row.name == nullptr)
		return false;
	classId = row.classId;
	name = row.name;
	index++;
	return true;
}


int
LibDeviceInfo::NumberPciDecices(const int& classId)
{
	pci_info info;
	int count = 0;
	for (long index = 0; get_nth_pci_info(index, &info) == B_OK; index++) {
		if (static_cast<int>(info.class_base) == classId)
			count++;
	}
	return count;
}


bool
LibDeviceInfo::AllDevicesKnown()
{
	for (pciItem* item = First(); item != nullptr; item = Next()) {
		if (!item->AllDevicesKnown())
			return false;
	}
	return true;
}


void
LibDeviceInfo::PrintToStream()
{
	for (pciItem* item = First(); item != nullptr; item = Next())
		item->PrintToStream();
}
