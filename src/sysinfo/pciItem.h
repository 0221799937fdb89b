// One PCI base class present in the machine, with its functions.
#ifndef PCI_ITEM_H
#define PCI_ITEM_H

#include <cstdio>

#include <SupportDefs.h>

#include "lib/LibString.h"
#include "lib/LinkList.h"
#include "sysinfo/pciDevice.h"

class pciItem
{
public:
	pciItem();
	explicit pciItem(const int32& classId);
	pciItem(const pciItem& other);
	virtual ~pciItem();

	// Copies the class, its name and deep copies of all its devices.
	pciItem& operator=(const pciItem& other);
	// Items are the same class when their class ids are equal; the catalogue
	// finds an item by class this way.
	bool operator==(const pciItem& other) const;

	void ClassId(const int& classId);
	void Type(const char* type);

	int32 ClassId() const { return fClassId; }
	const char* Type() const { return fType; }
	// The item's functions; iterating moves the list's own cursor.
	LinkList<pciDevice>& Devices() { return fDevices; }

	// Devices whose vendor (short or long name) or description is "Unknown".
	int NumberDevicesUnknown();
	bool AllDevicesKnown();

	void PrintToStream();
	// The item's part of the unknown-devices report.
	void Write(FILE* file);

private:
	int32 fClassId;
	LibString fType;
	LinkList<pciDevice> fDevices;
};

#endif // PCI_ITEM_H
