// PCI functions of the machine, read from sysfs in address order.
#ifndef PCI_H
#define PCI_H

#include "SupportDefs.h"

typedef struct pci_info {
	uint16 vendor_id;
	uint16 device_id;
	uint8 bus;
	uint8 device;
	uint8 function;
	uint8 revision;
	uint8 class_api;
	uint8 class_sub;
	uint8 class_base;
	uint8 line_size;
	uint8 latency;
	uint8 header_type;
	uint8 bist;
	uint8 reserved;
} pci_info;

// B_OK and the index-th function, or an error past the last one (a machine
// without PCI answers an error for index 0).
long get_nth_pci_info(long index, pci_info* info);

#endif // PCI_H
