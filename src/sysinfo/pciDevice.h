// One PCI function as the catalogue names it: its two ids and the vendor and
// device names found for them ("Unknown" when the tables do not know them).
#ifndef PCI_DEVICE_H
#define PCI_DEVICE_H

#include <cstdio>

#include <SupportDefs.h>

#include "lib/LibString.h"

class pciDevice
{
public:
	pciDevice();
	pciDevice(const pciDevice& other);
	virtual ~pciDevice();

	pciDevice& operator=(const pciDevice& other);
	// Two devices never compare equal, not even a device with itself: a list
	// search for a device by equality finds nothing. Kept so on purpose.
	bool operator==(const pciDevice& other) const;

	void VendorId(const uint16& vendorId);
	void DeviceId(const uint16& deviceId);
	void VendorShort(const char* name);
	void VendorLong(const char* name);
	void Description(const char* description);

	uint16 VendorId() const { return fVendorId; }
	uint16 DeviceId() const { return fDeviceId; }
	const char* VendorShort() const { return fVendorShort; }
	const char* VendorLong() const { return fVendorLong; }
	const char* Description() const { return fDescription; }

	bool IsVendorMatched() const;
	bool IsDeviceMatched() const;

	// One line of the unknown-devices report.
	void Write(FILE* file) const;
	void PrintToStream() const;

private:
	uint16 fVendorId;
	uint16 fDeviceId;
	LibString fVendorShort;
	LibString fVendorLong;
	LibString fDescription;
};

// The name every field holds until the catalogue finds a better one.
extern const char* const kPciUnknown;

#endif // PCI_DEVICE_H
