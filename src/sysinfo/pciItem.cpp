#include "sysinfo/pciItem.h"

#include <cstring>


pciItem::pciItem() : fClassId(0)
{
}


pciItem::pciItem(const int32& classId) : fClassId(classId)
{
}


pciItem::pciItem(const pciItem& other)
    : fClassId(other.fClassId), fType(other.fType), fDevices(other.fDevices)
{
}


pciItem::~pciItem()
{
	fDevices.Clear();
}


pciItem&
pciItem::operator=(const pciItem& other)
{
	if (this == &other)
		return *this;
	fClassId = other.fClassId;
	fType = other.fType;
	fDevices = other.fDevices;
	return *this;
}


bool
pciItem::operator==(const pciItem& other) const
{
	return fClassId == other.fClassId;
}


void
pciItem::ClassId(const int& classId)
{
	fClassId = classId;
}


void
pciItem::Type(const char* type)
{
	fType = type;
}


int
pciItem::NumberDevicesUnknown()
{
	int unknown = 0;
	for (pciDevice* device = fDevices.First(); device != nullptr; device = fDevices.Next()) {
		if (strcmp(device->VendorShort(), kPciUnknown) == 0 ||
		    strcmp(device->VendorLong(), kPciUnknown) == 0 ||
		    strcmp(device->Description(), kPciUnknown) == 0)
			unknown++;
	}
	return unknown;
}


bool
pciItem::AllDevicesKnown()
{
	return NumberDevicesUnknown() == 0;
}


void
pciItem::PrintToStream()
{
	fprintf(stderr, "pci %x, type %s\n", fClassId, fType.String());
	for (pciDevice* device = fDevices.First(); device != nullptr; device = fDevices.Next())
		device->PrintToStream();
}


void
pciItem::Write(FILE* file)
{
	fprintf(file, "pci class = <%d>, type = <%s>\n", fClassId, fType.String());
	for (pciDevice* device = fDevices.First(); device != nullptr; device = fDevices.Next())
		device->Write(file);
	fprintf(file, "\n");
}
