#include "sysinfo/PciTables.h"

#include <map>
#include <set>
#include <utility>

#include <gtest/gtest.h>

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
