#include "sysinfo/LibDeviceInfo.h"

#include <cstdio>
#include <string>
#include <vector>

#include <PlatformTest.h>
#include <gtest/gtest.h>

namespace {

// Points the PCI bus at a fixture tree for the life of a test.
class LibDeviceInfoTest : public testing::Test
{
protected:
	void TearDown() override { platform_set_root(nullptr); }

	static void UseBus(const char* name)
	{
		std::string root = std::string(QS_FIXTURES_DIR) + "/" + name;
		platform_set_root(root.c_str());
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

	static std::string Written(pciItem& item)
	{
		FILE* file = tmpfile();
		item.Write(file);
		std::string text(static_cast<size_t>(ftell(file)), '\0');
		rewind(file);
		size_t got = fread(&text[0], 1, text.size(), file);
		fclose(file);
		text.resize(got);
		return text;
	}
};

} // namespace


TEST_F(LibDeviceInfoTest, ItemsFollowTheClassTableOrderAndSkipAbsentClasses)
{
	UseBus("pci-catalog-mixed");
	LibDeviceInfo catalogue;

	// Alphabetical by name: Bridge, Display, Mass Storage, Network, Serial Bus,
	// Undefined. Class 0x13 is on the bus but not in the table.
	std::vector<int> classes;
	std::vector<std::string> types;
	std::vector<int> sizes;
	for (pciItem* item = catalogue.First(); item != nullptr; item = catalogue.Next()) {
		classes.push_back(item->ClassId());
		types.push_back(item->Type());
		sizes.push_back(item->Devices().Size());
	}
	EXPECT_EQ((std::vector<int>{6, 3, 1, 2, 12, 255}), classes);
	EXPECT_EQ((std::vector<std::string>{"Bridge", "Display", "Mass Storage", "Network",
	                                    "Serial Bus", "Undefined"}),
	          types);
	EXPECT_EQ((std::vector<int>{2, 2, 1, 1, 1, 1}), sizes);
	EXPECT_EQ(2, catalogue.NumberPciDecices(6));
	EXPECT_EQ(1, catalogue.NumberPciDecices(0x13));
	EXPECT_EQ(0, catalogue.NumberPciDecices(4));
}


TEST_F(LibDeviceInfoTest, NamesComeFromTheFirstMatchingRows)
{
	UseBus("pci-catalog-mixed");
	LibDeviceInfo catalogue;

	pciDevice* piix = DeviceOf(catalogue, 6, 0);
	ASSERT_NE(nullptr, piix);
	EXPECT_STREQ("PIIX4 ISA Bridge", piix->Description());
	EXPECT_STREQ("Intel", piix->VendorShort());

	pciDevice* ati = DeviceOf(catalogue, 1, 0);
	ASSERT_NE(nullptr, ati);
	EXPECT_STREQ("ATI PCP", ati->Description());

	pciDevice* appian = DeviceOf(catalogue, 3, 1);
	ASSERT_NE(nullptr, appian);
	EXPECT_STREQ("Appian", appian->VendorShort());
	EXPECT_STREQ("Appian Technology", appian->VendorLong());

	pciDevice* mcs = DeviceOf(catalogue, 12, 0);
	ASSERT_NE(nullptr, mcs);
	EXPECT_STREQ("MCS", mcs->VendorShort());
	EXPECT_STREQ("Micro Computer Systems, Inc.", mcs->VendorLong());

	pciDevice* adaptec = DeviceOf(catalogue, 255, 0);
	ASSERT_NE(nullptr, adaptec);
	EXPECT_STREQ("Multiple SCSI channels", adaptec->Description());
}


TEST_F(LibDeviceInfoTest, ChipNameStandsInForAnEmptyDescription)
{
	UseBus("pci-catalog-mixed");
	LibDeviceInfo catalogue;
	pciDevice* eisa = DeviceOf(catalogue, 6, 1);
	ASSERT_NE(nullptr, eisa);
	EXPECT_EQ(0x0E11, eisa->VendorId());
	EXPECT_STREQ("EISA Bridge", eisa->Description());
	EXPECT_STREQ("Compaq", eisa->VendorLong());
}


TEST_F(LibDeviceInfoTest, SentinelVendorIsNeverMatched)
{
	UseBus("pci-catalog-mixed");
	LibDeviceInfo catalogue;
	// The tables end with 0xFFFF rows (even 0xFFFF/0x0140); they are not names.
	pciDevice* bad = DeviceOf(catalogue, 2, 0);
	ASSERT_NE(nullptr, bad);
	EXPECT_EQ(0xFFFF, bad->VendorId());
	EXPECT_STREQ("Unknown", bad->VendorShort());
	EXPECT_STREQ("Unknown", bad->VendorLong());
	EXPECT_STREQ("Unknown", bad->Description());
	EXPECT_FALSE(bad->IsVendorMatched());
	EXPECT_FALSE(bad->IsDeviceMatched());
}


TEST_F(LibDeviceInfoTest, KnownVendorWithUnknownDeviceCountsAsUnknown)
{
	UseBus("pci-catalog-mixed");
	LibDeviceInfo catalogue;
	pciItem* display = ItemOf(catalogue, 3);
	ASSERT_NE(nullptr, display);
	pciDevice* appian = display->Devices().Get(1);
	ASSERT_NE(nullptr, appian);
	EXPECT_TRUE(appian->IsVendorMatched());
	EXPECT_FALSE(appian->IsDeviceMatched());
	EXPECT_STREQ("Unknown", appian->Description());
	EXPECT_EQ(1, display->NumberDevicesUnknown());
	EXPECT_FALSE(display->AllDevicesKnown());

	pciItem* bridge = ItemOf(catalogue, 6);
	ASSERT_NE(nullptr, bridge);
	EXPECT_TRUE(bridge->AllDevicesKnown());
	EXPECT_FALSE(catalogue.AllDevicesKnown());
}


TEST_F(LibDeviceInfoTest, AllDevicesKnownOnAFullyNamedBus)
{
	UseBus("pci-catalog-known");
	LibDeviceInfo catalogue;
	EXPECT_EQ(3, catalogue.Size());
	EXPECT_TRUE(catalogue.AllDevicesKnown());
}


TEST_F(LibDeviceInfoTest, FindDeviceDescribesTheFirstDeviceOfAClass)
{
	UseBus("pci-catalog-mixed");
	LibDeviceInfo catalogue;
	LibString text("untouched");
	EXPECT_TRUE(catalogue.FindDevice(3, text));
	EXPECT_STREQ("S3 Incorporated, Virge 3D GUI Accelerator", text.String());

	// Absent class, and a class on the bus that the table does not list.
	text = "untouched";
	EXPECT_FALSE(catalogue.FindDevice(4, text));
	EXPECT_STREQ("untouched", text.String());
	EXPECT_FALSE(catalogue.FindDevice(0x13, text));
	EXPECT_STREQ("untouched", text.String());
}


TEST_F(LibDeviceInfoTest, BusWithoutFunctionsGivesAnEmptyCatalogue)
{
	UseBus("pci-catalog-empty");
	LibDeviceInfo catalogue;
	EXPECT_EQ(0, catalogue.Size());
	EXPECT_TRUE(catalogue.AllDevicesKnown());
	LibString text("kept");
	EXPECT_FALSE(catalogue.FindDevice(6, text));
	EXPECT_STREQ("kept", text.String());
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
	EXPECT_EQ("Simple Communications", names[12]);
	EXPECT_EQ("Undefined", names.back());
	EXPECT_EQ(14, index);
	// At the end nothing moves.
	EXPECT_FALSE(catalogue.NextClassId(index, classId, name));
	EXPECT_EQ(14, index);
	EXPECT_EQ(255, classId);
}


TEST_F(LibDeviceInfoTest, DevicesNeverCompareEqual)
{
	pciDevice device;
	pciDevice copy(device);
	EXPECT_FALSE(device == device);
	EXPECT_FALSE(device == copy);

	LinkList<pciDevice> list;
	pciDevice* stored = new pciDevice;
	list.Insert(stored);
	EXPECT_EQ(nullptr, list.Get(stored));
}


TEST_F(LibDeviceInfoTest, ItemsCompareByClassOnly)
{
	pciItem display(3);
	display.Type("Display");
	pciItem other(3);
	other.Type("Something else");
	pciItem bridge(6);
	bridge.Type("Display");
	EXPECT_TRUE(display == other);
	EXPECT_FALSE(display == bridge);
}


TEST_F(LibDeviceInfoTest, ItemAssignmentCopiesTheDevicesDeeply)
{
	UseBus("pci-catalog-mixed");
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


TEST_F(LibDeviceInfoTest, ItemWritesTheReportFormat)
{
	UseBus("pci-catalog-mixed");
	LibDeviceInfo catalogue;
	pciItem* display = ItemOf(catalogue, 3);
	ASSERT_NE(nullptr, display);
	EXPECT_EQ("pci class = <3>, type = <Display>\n"
	          "Vendor id <0x5333>, Device id <0x5631>, Vendor <S3,S3 Incorporated>, "
	          "Device <Virge 3D GUI Accelerator>\n"
	          "Vendor id <0x1097>, Device id <0x1234>, Vendor <Appian,Appian Technology>, "
	          "Device <Unknown>\n"
	          "\n",
	          Written(*display));
}


TEST_F(LibDeviceInfoTest, PrintToStreamListsClassesInHexadecimal)
{
	UseBus("pci-catalog-mixed");
	LibDeviceInfo catalogue;
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
