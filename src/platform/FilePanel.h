// The file panel: FLTK's native file chooser, run on the interface thread.
// This version offers the save panel: Show runs the chooser (modal) and, when
// the user accepts, sends the panel's message (B_SAVE_REQUESTED by default)
// with entry_ref "directory" and string "name" to the target. An open panel
// sends entry_ref "refs" (B_REFS_RECEIVED).
#ifndef FILE_PANEL_H
#define FILE_PANEL_H

#include <memory>
#include <string>

#include "Messenger.h"
#include "StorageDefs.h"

class BMessage;
class BWindow;

enum file_panel_mode {
	B_OPEN_PANEL,
	B_SAVE_PANEL,
};

enum {
	B_FILE_NODE = 0x01,
	B_SYMLINK_NODE = 0x02,
	B_DIRECTORY_NODE = 0x04,
	B_ANY_NODE = 0x07,
};

class BRefFilter;

class BFilePanel
{
public:
	// target and message are copied; a null target is be_app.
	BFilePanel(file_panel_mode mode = B_OPEN_PANEL, BMessenger* target = nullptr,
	           const entry_ref* directory = nullptr, uint32 nodeFlavors = 0,
	           bool allowMultipleSelection = true, BMessage* message = nullptr,
	           BRefFilter* filter = nullptr, bool modal = false, bool hideWhenDone = true);
	virtual ~BFilePanel();

	BFilePanel(const BFilePanel&) = delete;
	BFilePanel& operator=(const BFilePanel&) = delete;

	void Show();
	void Hide();
	bool IsShowing() const { return fShowing; }
	void SetSaveText(const char* text);
	// The name the save panel proposes.
	const char* SaveText() const { return fSaveText.c_str(); }
	void SetTarget(BMessenger target);
	void SetMessage(BMessage* message);
	void SetPanelDirectory(const char* directory);
	file_panel_mode PanelMode() const { return fMode; }
	// The panel has no window of its own here: null.
	BWindow* Window() const { return nullptr; }

	// Runs the chooser now (interface thread; Show arranges it).
	void RunChooserNow();

private:
	file_panel_mode fMode;
	BMessenger fTarget;
	std::unique_ptr<BMessage> fMessage;
	std::string fDirectory;
	std::string fSaveText;
	bool fShowing;
};

#endif // FILE_PANEL_H
