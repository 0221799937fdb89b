#include "sysinfo/GetSysDeviceWin.h"

#include <cstdio>

#include <Box.h>
#include <Looper.h>
#include <StringView.h>
#include <View.h>

#include "lib/LibColor.h"
#include "lib/LibEditEntry.h"
#include "lib/LibRect.h"
#include "lib/LibString.h"
#include "sysinfo/LibDeviceInfo.h"

namespace {

const char* const kInstructions[] = {
    "Some devices are currently unknown to Quickstep.",
    "These hardware devices are needed to properly list",
    "the configuration of your system.  Could you please",
    "fill in the unknown vendor(s) and device(s) that you know.",
};

// The boxes start below the instructions.
const float kFirstTop = 70;
const float kBoxGap = 5;
const float kMargin = 10;
// Inside a box: the label's line, then one row per device, the vendor on
// the left half and the device on the right.
const float kRowTop = 18;
const float kEntryHeight = 20;
const float kLabelDivider = 48;
// The known names' lines sit on the entries' baseline.
const float kKnownOffset = 3;
const float kTextSize = 12;
const float kSmallestTextSize = 8;


LibString
EntryName(const char* kind, int classCounter, int deviceCounter, uint16 id)
{
	LibString name;
	name.Format("%s_%d-%d_0x%X", kind, classCounter, deviceCounter, static_cast<unsigned>(id));
	return name;
}

} // namespace


GetSysDeviceWin::GetSysDeviceWin(LibDeviceInfo& catalogue, BLooper* owner)
    : LibWindow(BRect(0, 0, 355, 200), "GetSysDeviceWin", B_TITLED_WINDOW_LOOK,
                B_NORMAL_WINDOW_FEEL, B_NOT_RESIZABLE | B_NOT_ZOOMABLE),
      fOwner(owner)
{
	Lock();
	SetTitle("Unknown Devices");

	BView* background = new BView(Bounds(), "view", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
	background->SetViewColor(lib_nearest_system_color(grey_color));
	AddChild(background);

	const float width = Bounds().Width();
	BStringView* lines[4];
	for (int line = 0; line < 4; line++) {
		LibString name;
		name.Format("instructions%d", line + 1);
		lines[line] = new BStringView(LibRect(kMargin, 5 + 15 * line, width - 2 * kMargin, 14),
		                              name, kInstructions[line]);
		background->AddChild(lines[line]);
	}
	// The window keeps its width whatever the desktop's font: the lines
	// shrink together until the longest fits.
	for (float size = kTextSize; size >= kSmallestTextSize; size -= 0.5f) {
		float widest = 0;
		for (BStringView* line : lines) {
			line->SetFontSize(size);
			if (line->StringWidth(line->Text()) > widest)
				widest = line->StringWidth(line->Text());
		}
		if (widest <= width - 2 * kMargin)
			break;
	}

	fItems.Clear();
	float top = kFirstTop;
	int classCounter = 0;
	for (pciItem* item = catalogue.First(); item != nullptr; item = catalogue.Next()) {
		if (item->NumberDevicesUnknown() <= 0)
			continue;
		classCounter++;
		top += kBoxGap;
		LinkList<pciDevice>& devices = item->Devices();
		const float height = kRowHeight * (devices.Size() + 1);
		BBox* box = new BBox(LibRect(kMargin, top, width - 2 * kMargin, height), "box");
		box->SetLabel(item->Type());
		background->AddChild(box);
		fItems.Insert(new pciItem(*item));

		const float half = (box->Bounds().Width() - 3 * kMargin) / 2;
		int deviceCounter = 0;
		for (pciDevice* device = devices.First(); device != nullptr; device = devices.Next()) {
			deviceCounter++;
			const float rowTop = kRowTop + kRowHeight * (deviceCounter - 1);
			BRect vendorFrame = LibRect(kMargin, rowTop, half, kEntryHeight);
			BRect deviceFrame = LibRect(2 * kMargin + half, rowTop, half, kEntryHeight);
			LibString text;
			if (!device->IsVendorMatched()) {
				LibEditEntry* entry = new LibEditEntry(
				    vendorFrame,
				    EntryName("vendor", classCounter, deviceCounter, device->VendorId()), "Vendor",
				    "", kMaxNameLength);
				entry->SetDivider(kLabelDivider);
				box->AddChild(entry);
			} else {
				text.Format("Vendor : %s", device->VendorShort());
				vendorFrame.top += kKnownOffset;
				vendorFrame.bottom += kKnownOffset;
				box->AddChild(new BStringView(vendorFrame, "known_vendor", text));
			}
			if (!device->IsDeviceMatched()) {
				LibEditEntry* entry = new LibEditEntry(
				    deviceFrame,
				    EntryName("device", classCounter, deviceCounter, device->DeviceId()), "Device",
				    "", kMaxNameLength);
				entry->SetDivider(kLabelDivider);
				box->AddChild(entry);
			} else {
				text.Format("Device : %s", device->Description());
				deviceFrame.top += kKnownOffset;
				deviceFrame.bottom += kKnownOffset;
				box->AddChild(new BStringView(deviceFrame, "known_device", text));
			}
		}
		top += height;
	}
	ResizeTo(width, top + kMargin);
	Unlock();
}


GetSysDeviceWin::~GetSysDeviceWin()
{
	fItems.Clear();
}


bool
GetSysDeviceWin::QuitRequested()
{
	Lock();
	// The window's items are exactly the classes that got a box, in order,
	// so their positions are the class counters of the entries' names. An
	// entry is looked for whatever the device's names are now: after a first
	// close the names typed then may make a device look known.
	int classCounter = 0;
	for (pciItem* item = fItems.First(); item != nullptr; item = fItems.Next()) {
		classCounter++;
		LinkList<pciDevice>& devices = item->Devices();
		int deviceCounter = 0;
		for (pciDevice* device = devices.First(); device != nullptr; device = devices.Next()) {
			deviceCounter++;
			LibString name = EntryName("vendor", classCounter, deviceCounter, device->VendorId());
			BTextControl* entry = dynamic_cast<BTextControl*>(FindView(name));
			if (entry != nullptr) {
				fprintf(stderr, "%s found <%s>\n", name.String(), entry->Text());
				device->VendorLong(entry->Text());
			}
			name = EntryName("device", classCounter, deviceCounter, device->DeviceId());
			entry = dynamic_cast<BTextControl*>(FindView(name));
			if (entry != nullptr) {
				fprintf(stderr, "%s found <%s>\n", name.String(), entry->Text());
				device->Description(entry->Text());
			}
		}
	}
	Unlock();
	if (fOwner != nullptr)
		fOwner->PostMessage(kMsgGetSysDeviceDone);
	return false;
}


void
GetSysDeviceWin::Save(const char* path)
{
	FILE* file = path != nullptr ? fopen(path, "w") : nullptr;
	if (file == nullptr)
		return;
	Lock();
	for (pciItem* item = fItems.First(); item != nullptr; item = fItems.Next())
		item->Write(file);
	Unlock();
	fclose(file);
}
