#include "sysinfo/GetSysDeviceWin.h"

#include <fstream>
#include <gtest/gtest.h>
#include <mutex>
#include <sstream>
#include <string>
#include <vector>

#include <Box.h>
#include <Looper.h>
#include <PlatformTest.h>
#include <StringView.h>
#include <TextControl.h>

#include "app/AppTestSupport.h"
#include "platform/TempDirectory.h"
#include "sysinfo/LibDeviceInfo.h"

using apptest::RunUntil;

namespace {

// Counts the 'gsdq' it is sent.
class Owner : public BLooper
{
public:
	Owner() : BLooper("devices owner") {}

	void MessageReceived(BMessage* message) override
	{
		if (message->what == kMsgGetSysDeviceDone)
			fDone++;
		else
			BLooper::MessageReceived(message);
	}

	std::atomic<int> fDone{0};
};

class GetSysDeviceWinTest : public testing::Test
{
protected:
	void SetUp() override
	{
		QS_REQUIRE_DISPLAY();
		apptest::SharedApp();
		fOwner = new Owner;
		fOwner->Run();
	}

	void TearDown() override
	{
		platform_set_root(nullptr);
		if (fWindow != nullptr) {
			fWindow->Lock();
			fWindow->Quit();
		}
		if (fOwner != nullptr) {
			fOwner->Lock();
			fOwner->Quit();
		}
	}

	GetSysDeviceWin* Open(const char* bus)
	{
		platform_set_root((std::string(QS_FIXTURES_DIR) + "/" + bus).c_str());
		LibDeviceInfo catalogue;
		fWindow = new GetSysDeviceWin(catalogue, fOwner);
		fWindow->Show();
		RunUntil([&] { return !fWindow->IsHidden(); }, 5);
		return fWindow;
	}

	// The names of the views of a kind (entries, boxes, known lines) in order.
	template <typename T> std::vector<std::string> Names()
	{
		std::vector<std::string> names;
		std::vector<BView*> pending = {fWindow->ChildAt(0)};
		while (!pending.empty()) {
			BView* view = pending.front();
			pending.erase(pending.begin());
			if (dynamic_cast<T*>(view) != nullptr)
				names.push_back(dynamic_cast<BBox*>(view) != nullptr
				                    ? dynamic_cast<BBox*>(view)->Label()
				                    : view->Name());
			for (int32 i = 0; i < view->CountChildren(); i++)
				pending.push_back(view->ChildAt(i));
		}
		return names;
	}

	Owner* fOwner = nullptr;
	GetSysDeviceWin* fWindow = nullptr;
};

} // namespace

TEST_F(GetSysDeviceWinTest, UnknownDevicesGetNamedEntriesInBoxesPerClass)
{
	// A bridge of an unknown vendor, then a display of a known vendor with an
	// unknown device and one of an unknown vendor; storage is all known.
	GetSysDeviceWin* window = Open("pci-catalog-unknown");
	window->Lock();
	EXPECT_STREQ(window->Title(), "Unknown Devices");
	EXPECT_EQ(window->Bounds().Width(), 355);
	BStringView* third = dynamic_cast<BStringView*>(window->FindView("instructions3"));
	ASSERT_NE(third, nullptr);
	EXPECT_STREQ(third->Text(), "the configuration of your system.  Could you please");

	EXPECT_EQ(Names<BBox>(), (std::vector<std::string>{"Bridge", "Display"}));
	EXPECT_EQ(
	    Names<BTextControl>(),
	    (std::vector<std::string>{"vendor_1-1_0x1DEF", "device_1-1_0xB00", "device_2-1_0x9999",
	                              "vendor_2-2_0x1E49", "device_2-2_0x100"}));
	BStringView* known = dynamic_cast<BStringView*>(window->FindView("known_vendor"));
	ASSERT_NE(known, nullptr);
	EXPECT_STREQ(known->Text(), "Vendor : S3");
	BTextControl* entry = dynamic_cast<BTextControl*>(window->FindView("vendor_2-2_0x1E49"));
	ASSERT_NE(entry, nullptr);
	EXPECT_EQ(entry->MaxBytes(), 50);
	EXPECT_STREQ(entry->Label(), "Vendor");

	// Boxes of 23 pixels per device and one more, 5 apart from 70 on, and
	// the window 10 below the last.
	BBox* bridge = dynamic_cast<BBox*>(window->FindView("vendor_1-1_0x1DEF")->Parent());
	BBox* display = dynamic_cast<BBox*>(window->FindView("vendor_2-2_0x1E49")->Parent());
	ASSERT_NE(bridge, nullptr);
	ASSERT_NE(display, nullptr);
	EXPECT_EQ(bridge->Frame(), BRect(10, 75, 345, 75 + 46));
	EXPECT_EQ(display->Frame(), BRect(10, 126, 345, 126 + 69));
	EXPECT_EQ(window->Bounds().Height(), 126 + 69 + 10);
	// Every entry fits inside its box.
	for (const std::string& name : Names<BTextControl>()) {
		BRect frame = window->FindView(name.c_str())->Frame();
		BRect box = window->FindView(name.c_str())->Parent()->Bounds();
		EXPECT_TRUE(frame.left >= box.left && frame.right <= box.right && frame.top >= box.top &&
		            frame.bottom <= box.bottom)
		    << name;
	}
	window->Unlock();
	apptest::Screenshot("unknown-devices");

	// Typed names go into the report when the window is closed; it stays
	// open until its owner acts.
	ASSERT_TRUE(apptest::ClickView(entry, BPoint(entry->Bounds().right - 20, 8)));
	ASSERT_TRUE(apptest::RunCommand("xdotool type --delay 20 'Matrox'"));
	window->Lock();
	dynamic_cast<BTextControl*>(window->FindView("device_2-1_0x9999"))->SetText("Savage4");
	window->Unlock();
	apptest::Screenshot("unknown-devices-typed");
	window->PostMessage(B_QUIT_REQUESTED);
	ASSERT_TRUE(RunUntil([&] { return fOwner->fDone == 1; }, 5));
	EXPECT_FALSE(window->IsHidden());

	TempDirectory temp;
	std::string report = temp.Path("unknown_devices");
	window->Save(report.c_str());
	std::stringstream text;
	text << std::ifstream(report).rdbuf();
	EXPECT_EQ(text.str(),
	          "pci class = <6>, type = <Bridge>\n"
	          "Vendor id <0x1DEF>, Device id <0x0B00>, Vendor <Unknown,>, Device <>\n"
	          "\n"
	          "pci class = <3>, type = <Display>\n"
	          "Vendor id <0x5333>, Device id <0x9999>, Vendor <S3,S3 Incorporated>, Device "
	          "<Savage4>\n"
	          "Vendor id <0x1E49>, Device id <0x0100>, Vendor <Unknown,Matrox>, Device <>\n"
	          "\n");
	// A file that cannot be made is passed over.
	window->Save(temp.Path("missing/unknown_devices").c_str());
}

TEST_F(GetSysDeviceWinTest, AllKnownGivesInstructionsOnly)
{
	GetSysDeviceWin* window = Open("pci-catalog-known");
	window->Lock();
	EXPECT_EQ(window->Bounds().Height(), 80);
	EXPECT_TRUE(Names<BBox>().empty());
	EXPECT_TRUE(Names<BTextControl>().empty());
	window->Unlock();
	apptest::Screenshot("unknown-devices-none");

	TempDirectory temp;
	std::string report = temp.Path("unknown_devices");
	window->Save(report.c_str());
	std::ifstream file(report);
	ASSERT_TRUE(file.good());
	EXPECT_EQ(file.peek(), std::ifstream::traits_type::eof());
}
