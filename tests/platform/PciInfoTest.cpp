#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include <PCI.h>
#include <PlatformTest.h>

#include "platform/TempTree.h"

namespace {

class PciInfoTest : public testing::Test
{
protected:
	void SetUp() override
	{
		platform_set_root((std::string(QS_FIXTURES_DIR) + "/sysroot-intel").c_str());
	}
	void TearDown() override { platform_set_root(nullptr); }
};

TEST_F(PciInfoTest, FunctionsComeInAddressOrderWithTheirFields)
{
	// bus, device, function, vendor, device id, class base, sub and api, revision
	using Fields = std::tuple<int, int, int, int, int, int, int, int, int>;
	const Fields expected[] = {
	    {0, 0, 0, 0x8086, 0x7190, 0x06, 0x00, 0x00, 0x03},
	    {0, 2, 0, 0x8086, 0x7111, 0x01, 0x01, 0x85, 0x01},
	    {0, 0x0c, 1, 0x1274, 0x1371, 0x04, 0x01, 0x00, 0x06},
	    {0, 0x1f, 3, 0x8086, 0x7113, 0x04, 0x03, 0x00, 0x01},
	    {1, 0, 0, 0x5333, 0x8811, 0x03, 0x00, 0x00, 0x42},
	    // Domain 1 sorts after every function of domain 0.
	    {0, 0, 0, 0x10ec, 0x8139, 0x02, 0x00, 0x00, 0x10},
	};
	long index = 0;
	for (const Fields& fields : expected) {
		pci_info info;
		ASSERT_EQ(B_OK, get_nth_pci_info(index, &info)) << index;
		EXPECT_EQ(fields,
		          Fields(info.bus, info.device, info.function, info.vendor_id, info.device_id,
		                 info.class_base, info.class_sub, info.class_api, info.revision))
		    << index;
		index++;
	}
	// The entry that is no PCI address is not a function.
	pci_info info;
	EXPECT_NE(B_OK, get_nth_pci_info(index, &info));
	EXPECT_NE(B_OK, get_nth_pci_info(index + 100, &info));
	EXPECT_NE(B_OK, get_nth_pci_info(-1, &info));
}

TEST_F(PciInfoTest, ConfigurationSpaceFillsTheHeaderFields)
{
	pci_info info;
	ASSERT_EQ(B_OK, get_nth_pci_info(2, &info));
	EXPECT_EQ(8, info.line_size);
	EXPECT_EQ(0x40, info.latency);
	EXPECT_EQ(0x80, info.header_type);
	// Without a configuration space those stay zero.
	ASSERT_EQ(B_OK, get_nth_pci_info(0, &info));
	EXPECT_EQ(0, info.header_type);
}

TEST_F(PciInfoTest, MachineWithoutPciAnswersAnErrorForIndexZero)
{
	TempTree noBus;
	platform_set_root(noBus.c_str());
	pci_info info;
	EXPECT_NE(B_OK, get_nth_pci_info(0, &info));

	TempTree emptyBus;
	emptyBus.MakeDirectory("sys/bus/pci/devices");
	platform_set_root(emptyBus.c_str());
	EXPECT_NE(B_OK, get_nth_pci_info(0, &info));
}

// The bus is read once per root: the catalogue walks it some twenty times in
// one listing. Setting the root again, even to the same tree, reads it anew.
TEST_F(PciInfoTest, BusIsReadOncePerRoot)
{
	TempTree tree;
	const std::string function = "sys/bus/pci/devices/0000:00:00.0/";
	tree.Write(function + "vendor", "0x8086\n");
	tree.Write(function + "class", "0x030000\n");
	platform_set_root(tree.c_str());
	pci_info info;
	ASSERT_EQ(B_OK, get_nth_pci_info(0, &info));
	EXPECT_EQ(0x8086, info.vendor_id);

	tree.Write(function + "vendor", "0x5333\n");
	tree.Write("sys/bus/pci/devices/0000:00:01.0/class", "0x020000\n");
	ASSERT_EQ(B_OK, get_nth_pci_info(0, &info));
	EXPECT_EQ(0x8086, info.vendor_id);
	EXPECT_NE(B_OK, get_nth_pci_info(1, &info));

	platform_set_root(tree.c_str());
	ASSERT_EQ(B_OK, get_nth_pci_info(0, &info));
	EXPECT_EQ(0x5333, info.vendor_id);
	ASSERT_EQ(B_OK, get_nth_pci_info(1, &info));
	EXPECT_EQ(2, info.class_base);
}

TEST_F(PciInfoTest, WalkingTheRealBusEndsWithAnError)
{
	platform_set_root(nullptr);
	pci_info info;
	long count = 0;
	while (get_nth_pci_info(count, &info) == B_OK && count < 100000)
		count++;
	EXPECT_LT(count, 100000);
	EXPECT_NE(B_OK, get_nth_pci_info(count, &info));
}

} // namespace
