// The machine's PCI functions grouped by base class and named from the
// catalogue's tables. Built once, by the constructor: a snapshot of the bus.
#ifndef LIB_DEVICE_INFO_H
#define LIB_DEVICE_INFO_H

#include <SupportDefs.h>

#include "lib/LibString.h"
#include "lib/LinkList.h"
#include "sysinfo/pciItem.h"

class LibDeviceInfo : public LinkList<pciItem>
{
public:
	LibDeviceInfo();
	~LibDeviceInfo() override;

	void pciDevices();
	// Adds to item one device per function of base class classId; answers the
	// status that ended the walk over the bus.
	status_t ObtainPciDevices(const int& classId, pciItem* item);
	// Fills in the device's names from its vendor and device ids.
	void GetDevice(pciDevice* device);
	// "<vendor long name>, <description>" of the first device of the class;
	// false, with text untouched, when the machine has no such device.
	bool FindDevice(const int& classId, LibString& text);
	// Steps through the class table: index is the cursor, starting at 0.
	bool NextClassId(int& index, int& classId, LibString& name);
	int NumberPciDecices(const int& classId);
	bool AllDevicesKnown();
	void PrintToStream();
};

#endif // LIB_DEVICE_INFO_H
