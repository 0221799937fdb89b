// "Unknown Devices": asks the user to name the PCI devices whose vendor or
// device the catalogue does not know, one box per class, and writes the
// names typed into its own copy of the catalogue for the report that travels
// with the packed results.
#ifndef GET_SYS_DEVICE_WIN_H
#define GET_SYS_DEVICE_WIN_H

#include "lib/LibWindow.h"
#include "lib/LinkList.h"
#include "sysinfo/pciItem.h"

class BLooper;
class LibDeviceInfo;

// Posted to the owner when the user closes the window.
const uint32 kMsgGetSysDeviceDone = 'gsdq';

class GetSysDeviceWin : public LibWindow
{
public:
	GetSysDeviceWin(LibDeviceInfo& catalogue, BLooper* owner);
	~GetSysDeviceWin() override;

	// Takes the typed names into the window's items, tells the owner and
	// answers false: the window stays until its owner closes it.
	bool QuitRequested() override;
	// The items with unknown devices, as pciItem::Write writes them. Nothing
	// is written (or said) when the file cannot be opened.
	void Save(const char* path);

	// An entry's height and the rows of a box, one per device.
	static constexpr float kRowHeight = 23;
	static constexpr int32 kMaxNameLength = 50;

private:
	BLooper* fOwner;
	LinkList<pciItem> fItems;
};

#endif // GET_SYS_DEVICE_WIN_H
