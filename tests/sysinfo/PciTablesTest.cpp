#include "sysinfo/PciTables.h"

#include <cstring>
#include <map>
#include <set>
#include <utility>

#include <gtest/gtest.h>

namespace {

int
VendorRow(uint16 vendorId, const char* shortName, const char* longName)
{
	for (int32 i = 0; i < kPciVendorRows; i++) {
		const pciVendorRow& row = kPciVendors[i];
		if (row.vendorId == vendorId && strcmp(row.shortName, shortName) == 0 &&
		    strcmp(row.longName, longName) == 0)
			return i;
	}
	return -1;
}

int
DeviceRow(uint16 vendorId, uint16 deviceId, const char* chip, const char* description)
{
	for (int32 i = 0; i < kPciDeviceRows; i++) {
		const pciDeviceRow& row = kPciDevices[i];
		if (row.vendorId == vendorId && row.deviceId == deviceId &&
		    strcmp(row.chipName, chip) == 0 && strcmp(row.description, description) == 0)
			return i;
	}
	return -1;
}

} // namespace


TEST(PciTablesTest, VendorTableShape)
{
	// The row after the last ends every look-up.
	ASSERT_EQ(578, kPciVendorRows);
	EXPECT_EQ(0xFFFF, kPciVendors[kPciVendorRows].vendorId);

	std::map<uint16, int> seen;
	for (int32 i = 0; i < kPciVendorRows; i++) {
		const pciVendorRow& row = kPciVendors[i];
		EXPECT_NE(0xFFFF, row.vendorId) << i;
		EXPECT_TRUE(row.shortName[0] != '\0' && row.longName[0] != '\0') << i;
		EXPECT_TRUE(i == 0 || kPciVendors[i - 1].vendorId <= row.vendorId) << "row " << i;
		seen[row.vendorId]++;
	}
	std::set<uint16> repeated;
	for (const auto& entry : seen)
		if (entry.second > 1)
			repeated.insert(entry.first);
	EXPECT_EQ((std::set<uint16>{0x1097, 0x10AF}), repeated);
}


TEST(PciTablesTest, DeviceTableShape)
{
	ASSERT_EQ(521, kPciDeviceRows);
	EXPECT_EQ(0xFFFF, kPciDevices[kPciDeviceRows].vendorId);

	std::set<uint16> vendors;
	for (int32 i = 0; i < kPciVendorRows; i++)
		vendors.insert(kPciVendors[i].vendorId);

	std::map<std::pair<uint16, uint16>, int> seen;
	std::set<uint16> finishedVendors;
	for (int32 i = 0; i < kPciDeviceRows; i++) {
		const pciDeviceRow& row = kPciDevices[i];
		EXPECT_EQ(1u, vendors.count(row.vendorId)) << "device row " << i;
		// Grouped by vendor: once a vendor's rows end, it does not come back.
		if (i > 0 && kPciDevices[i - 1].vendorId != row.vendorId) {
			EXPECT_LT(kPciDevices[i - 1].vendorId, row.vendorId) << i;
			finishedVendors.insert(kPciDevices[i - 1].vendorId);
		}
		EXPECT_EQ(0u, finishedVendors.count(row.vendorId)) << i;
		seen[std::make_pair(row.vendorId, row.deviceId)]++;
	}
	int repeated = 0;
	for (const auto& entry : seen)
		repeated += entry.second == 2;
	EXPECT_EQ(8, repeated);
	EXPECT_EQ(seen.size() + 8, static_cast<size_t>(kPciDeviceRows));
}


TEST(PciTablesTest, RepeatedIdsKeepTheirOlderNameFirst)
{
	EXPECT_EQ(VendorRow(0x1097, "Appian", "Appian Technology") + 1,
	          VendorRow(0x1097, "Appian", "Appian Graphics"));
	EXPECT_EQ(VendorRow(0x10AF, "MCS", "Micro Computer Systems, Inc.") + 1,
	          VendorRow(0x10AF, "MS", "Microcomputer Sysytems"));
	EXPECT_GE(VendorRow(0x5333, "S3", "S3 Incorporated"), 0);

	int piix = DeviceRow(0x8086, 0x7110, "82371AB", "PIIX4 ISA Bridge");
	ASSERT_GE(piix, 0);
	EXPECT_GT(DeviceRow(0x8086, 0x7110, "Fireball", "Fireball"), piix);
	int pcp = DeviceRow(0x1002, 0x4758, "ATI PCP", "ATI PCP");
	ASSERT_GE(pcp, 0);
	EXPECT_GT(DeviceRow(0x1002, 0x4758, "210888GX", "Mach 64 (WinTurbo)"), pcp);
	EXPECT_GE(DeviceRow(0x0E11, 0x0001, "EISA Bridge", ""), 0);
	EXPECT_GE(DeviceRow(0x9004, 0x8278, "AHA-3940U/UW", "Multiple SCSI channels"), 0);
	EXPECT_GE(DeviceRow(0x5333, 0x5631, "86C325", "Virge 3D GUI Accelerator"), 0);
}
