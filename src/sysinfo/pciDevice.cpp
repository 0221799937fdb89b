#include "sysinfo/pciDevice.h"

#include <cstring>

const char* const kPciUnknown = "Unknown";


pciDevice::pciDevice()
    : fVendorId(0xFFFF), fDeviceId(0xFFFF), fVendorShort(kPciUnknown), fVendorLong(kPciUnknown),
      fDescription(kPciUnknown)
{
}


pciDevice::pciDevice(const pciDevice& other)
    : fVendorId(other.fVendorId), fDeviceId(other.fDeviceId), fVendorShort(other.fVendorShort),
      fVendorLong(other.fVendorLong), fDescription(other.fDescription)
{
}


pciDevice::~pciDevice()
{
}


pciDevice&
pciDevice::operator=(const pciDevice& other)
{
	if (this == &other)
		return *this;
	fVendorId = other.fVendorId;
	fDeviceId = other.fDeviceId;
	fVendorShort = other.fVendorShort;
	fVendorLong = other.fVendorLong;
	fDescription = other.fDescription;
	return *this;
}


bool
pciDevice::operator==(const pciDevice&) const
{
	return false;
}


void
pciDevice::VendorId(const uint16& vendorId)
{
	fVendorId = vendorId;
}


void
pciDevice::DeviceId(const uint16& deviceId)
{
	fDeviceId = deviceId;
}


void
pciDevice::VendorShort(const char* name)
{
	fVendorShort = name;
}


void
pciDevice::VendorLong(const char* name)
{
	fVendorLong = name;
}


void
pciDevice::Description(const char* description)
{
	fDescription = description;
}


bool
pciDevice::IsVendorMatched() const
{
	return strcmp(fVendorShort, kPciUnknown) != 0 && strcmp(fVendorLong, kPciUnknown) != 0;
}


bool
pciDevice::IsDeviceMatched() const
{
	return strcmp(fDescription, kPciUnknown) != 0;
}


void
pciDevice::Write(FILE* file) const
{
	fprintf(file, "Vendor id <0x%4.4X>, Device id <0x%4.4X>, Vendor <%s,%s>, Device <%s>\n",
	        fVendorId, fDeviceId, fVendorShort.String(), fVendorLong.String(),
	        fDescription.String());
}


void
pciDevice::PrintToStream() const
{
	fprintf(stderr, "\tvendor <%s>, desc <%s>\n", fVendorLong.String(), fDescription.String());
}
