// The PCI catalogue's name tables, compiled into the program (rows generated
// from a public PCI id list by tools/gen_pci_tables.py). Each table ends with
// a row whose vendor id is 0xFFFF; look-ups stop there without matching it.
#ifndef PCI_TABLES_H
#define PCI_TABLES_H

#include <SupportDefs.h>

struct pciVendorRow {
	uint16 vendorId;
	const char* shortName;
	const char* longName;
};

struct pciDeviceRow {
	uint16 vendorId;
	uint16 deviceId;
	const char* chipName;    // may be empty
	const char* description; // may be empty; the chip name stands in for it
};

const uint16 kPciSentinelVendor = 0xFFFF;

// Rows before the sentinel; the sentinel follows at index kPci*Rows.
extern const pciVendorRow kPciVendors[];
extern const int32 kPciVendorRows;
extern const pciDeviceRow kPciDevices[];
extern const int32 kPciDeviceRows;

#endif // PCI_TABLES_H
