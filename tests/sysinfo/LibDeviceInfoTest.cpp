#include "sysinfo/LibDeviceInfo.h"

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include <PlatformTest.h>
#include <gtest/gtest.h>

#include "CommandOutput.h"

namespace {

// Points the PCI bus at a fixture tree for the life of a test, the mixed
// bus unless the test picks another.
class LibDeviceInfoTest : public testing::Test
{
protected:
	void SetUp() override { UseBus("pci-catalog-mixed"); }
	void TearDown() override { platform_set_root(nullptr); }

	static void UseBus(const char* name)
	{
		platform_set_root((std::string(QS_FIXTURES_DIR) + "/" + name).c_str());
	}

	static pciItem* ItemOf(LibDeviceInfo& catalogue, int classId)
	{
		pciItem wanted(classId);
		return catalogue.Get(&wanted);
	}

	static pciDevice* DeviceOf(LibDeviceInfo& catalogue, int classId, int position)
	{
		pciItem* item = ItemOf(catalogue, classId);
		return item != nullptr ? item->Devices().Get(position) : nullptr;
	}

	// Null texts are not checked.
	static void ExpectNames(pciDevice* device, const char* vendorShort, const char* vendorLong,
	                        const char* description)
	{
		ASSERT_NE(nullptr, device);
		EXPECT_STREQ(vendorShort ? vendorShort : device->VendorShort(), device->VendorShort());
		EXPECT_STREQ(vendorLong ? vendorLong : device->VendorLong(), device->VendorLong());
		EXPECT_STREQ(description ? description : device->Description(), device->Description());
	}
};

} // namespace


TEST_F(LibDeviceInfoTest, ItemsFollowTheClassTableOrderAndSkipAbsentClasses)
{
	LibDeviceInfo catalogue;

	// Alphabetical by name: Bridge, Display, Mass Storage, Network, Serial Bus,
	// Undefined. Class 0x13 is on the bus but not in the table.
	std::string items;
	for (pciItem* item = catalogue.First(); item != nullptr; item = catalogue.Next()) {
		items += std::to_string(item->ClassId()) + " " + item->Type() + " " +
		         std::to_string(item->Devices().Size()) + ", ";
	}
	EXPECT_EQ("6 Bridge 2, 3 Display 2, 1 Mass Storage 1, 2 Network 1, 12 Serial Bus 1, "
	          "255 Undefined 1, ",
	          items);
	EXPECT_EQ(2, catalogue.NumberPciDecices(6));
	EXPECT_EQ(1, catalogue.NumberPciDecices(0x13));
	EXPECT_EQ(0, catalogue.NumberPciDecices(4));
}


TEST_F(LibDeviceInfoTest, NamesComeFromTheFirstMatchingRows)
{
	LibDeviceInfo catalogue;
	// Intel 0x7110, ATI 0x4758 and the vendors 0x10AF and 0x1097 each have two
	// rows; the first, older one names them.
	ExpectNames(DeviceOf(catalogue, 6, 0), "Intel", nullptr, "PIIX4 ISA Bridge");
	// The chip name stands in for an empty description.
	ExpectNames(DeviceOf(catalogue, 6, 1), nullptr, "Compaq", "EISA Bridge");
	ExpectNames(DeviceOf(catalogue, 1, 0), nullptr, nullptr, "ATI PCP");
	ExpectNames(DeviceOf(catalogue, 12, 0), "MCS", "Micro Computer Systems, Inc.", nullptr);
	ExpectNames(DeviceOf(catalogue, 255, 0), nullptr, nullptr, "Multiple SCSI channels");

	// A known vendor with an unknown device counts as unknown.
	pciDevice* appian = DeviceOf(catalogue, 3, 1);
	ASSERT_NE(nullptr, appian);
	ExpectNames(appian, "Appian", "Appian Technology", "Unknown");
	EXPECT_TRUE(appian->IsVendorMatched());
	EXPECT_FALSE(appian->IsDeviceMatched());
	EXPECT_EQ(1, ItemOf(catalogue, 3)->NumberDevicesUnknown());
	EXPECT_FALSE(ItemOf(catalogue, 3)->AllDevicesKnown());
	EXPECT_TRUE(ItemOf(catalogue, 6)->AllDevicesKnown());
	EXPECT_FALSE(catalogue.AllDevicesKnown());

	// The tables end with 0xFFFF rows (even 0xFFFF/0x0140); they are not names.
	pciDevice* bad = DeviceOf(catalogue, 2, 0);
	ASSERT_NE(nullptr, bad);
	EXPECT_EQ(0xFFFF, bad->VendorId());
	ExpectNames(bad, "Unknown", "Unknown", "Unknown");
	EXPECT_FALSE(bad->IsVendorMatched() || bad->IsDeviceMatched());
}


TEST_F(LibDeviceInfoTest, FullyNamedAndEmptyBusesAreAllKnown)
{
	for (auto [bus, size] : {std::pair<const char*, int>{"pci-catalog-known", 3},
	                         std::pair<const char*, int>{"pci-catalog-empty", 0}}) {
		SCOPED_TRACE(bus);
		UseBus(bus);
		LibDeviceInfo catalogue;
		EXPECT_EQ(size, catalogue.Size());
		EXPECT_TRUE(catalogue.AllDevicesKnown());
	}
}


TEST_F(LibDeviceInfoTest, ItemsCompareByClassDevicesNeverCompareEqual)
{
	pciItem display(3);
	display.Type("Display");
	pciItem other(3);
	other.Type("Something else");
	pciItem bridge(6);
	bridge.Type("Display");
	EXPECT_TRUE(display == other);
	EXPECT_FALSE(display == bridge);

	pciDevice device;
	pciDevice copy(device);
	EXPECT_FALSE(device == device);
	EXPECT_FALSE(device == copy);
	LinkList<pciDevice> list;
	pciDevice* stored = new pciDevice;
	list.Insert(stored);
	EXPECT_EQ(nullptr, list.Get(stored));
}


TEST_F(LibDeviceInfoTest, FindDeviceWriteAndPrintDescribeTheDevices)
{
	LibDeviceInfo catalogue;
	LibString text("untouched");
	EXPECT_TRUE(catalogue.FindDevice(3, text));
	EXPECT_STREQ("S3 Incorporated, Virge 3D GUI Accelerator", text.String());

	// A class with no item leaves the text alone.
	text = "untouched";
	EXPECT_FALSE(catalogue.FindDevice(4, text));
	EXPECT_STREQ("untouched", text.String());

	pciItem* display = ItemOf(catalogue, 3);
	ASSERT_NE(nullptr, display);
	EXPECT_EQ("pci class = <3>, type = <Display>\n"
	          "Vendor id <0x5333>, Device id <0x5631>, Vendor <S3,S3 Incorporated>, "
	          "Device <Virge 3D GUI Accelerator>\n"
	          "Vendor id <0x1097>, Device id <0x1234>, Vendor <Appian,Appian Technology>, "
	          "Device <Unknown>\n"
	          "\n",
	          Printed([&](FILE* file) { display->Write(file); }));

	// The standard error listing gives classes in hexadecimal.
	testing::internal::CaptureStderr();
	catalogue.PrintToStream();
	std::string printed = testing::internal::GetCapturedStderr();
	EXPECT_EQ(0u, printed.find("pci 6, type Bridge\n"
	                           "\tvendor <Intel Corporation>, desc <PIIX4 ISA Bridge>\n"));
	EXPECT_NE(std::string::npos, printed.find("pci c, type Serial Bus\n"));
	EXPECT_NE(std::string::npos, printed.find("pci ff, type Undefined\n"
	                                          "\tvendor <Adaptec>, desc <Multiple SCSI "
	                                          "channels>\n"));
}


TEST_F(LibDeviceInfoTest, NextClassIdWalksFourteenRowsThenStops)
{
	UseBus("pci-catalog-empty");
	LibDeviceInfo catalogue;
	int index = 0;
	int classId = -1;
	LibString name;
	std::vector<int> ids;
	std::vector<std::string> names;
	while (catalogue.NextClassId(index, classId, name)) {
		ids.push_back(classId);
		names.push_back(name.String());
	}
	EXPECT_EQ((std::vector<int>{8, 6, 3, 10, 0, 9, 1, 5, 4, 2, 11, 12, 7, 255}), ids);
	EXPECT_EQ("Base Peripheral", names.front());
	EXPECT_EQ("Undefined", names.back());
	EXPECT_EQ(14, index);
	// At the end nothing moves.
	EXPECT_FALSE(catalogue.NextClassId(index, classId, name));
	EXPECT_EQ(14, index);
	EXPECT_EQ(255, classId);
}


TEST_F(LibDeviceInfoTest, ItemAssignmentCopiesTheDevicesDeeply)
{
	LibDeviceInfo catalogue;
	pciItem* display = ItemOf(catalogue, 3);
	ASSERT_NE(nullptr, display);

	pciItem copy;
	copy = *display;
	EXPECT_EQ(3, copy.ClassId());
	EXPECT_STREQ("Display", copy.Type());
	ASSERT_EQ(2, copy.Devices().Size());
	copy.Devices().Get(1)->Description("Typed in");
	EXPECT_STREQ("Unknown", display->Devices().Get(1)->Description());
	EXPECT_EQ(0, copy.NumberDevicesUnknown());

	copy = copy;
	EXPECT_EQ(2, copy.Devices().Size());
	EXPECT_STREQ("Typed in", copy.Devices().Get(1)->Description());
}
