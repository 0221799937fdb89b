#include "FilePanel.h"

#include <atomic>

#include <FL/Fl.H>
#include <FL/Fl_Native_File_Chooser.H>

#include "AppDefs.h"
#include "Application.h"
#include "InterfaceTest.h"
#include "Message.h"
#include "interface/UIThread.h"

namespace {

std::atomic<bool> sChooserDisabled(false);

void
StartChooser(void* data)
{
	static_cast<BFilePanel*>(data)->RunChooserNow();
}

} // namespace


void
platform_set_file_chooser_disabled(bool disabled)
{
	sChooserDisabled = disabled;
}


BFilePanel::BFilePanel(file_panel_mode mode, BMessenger* target, const entry_ref* directory,
                       uint32 nodeFlavors, bool allowMultipleSelection, BMessage* message,
                       BRefFilter* filter, bool modal, bool hideWhenDone)
    : fMode(mode), fShowing(false)
{
	(void)nodeFlavors;
	(void)allowMultipleSelection;
	(void)filter;
	(void)modal;
	(void)hideWhenDone;
	if (target != nullptr)
		fTarget = *target;
	else if (be_app != nullptr)
		fTarget = BMessenger(be_app);
	if (message != nullptr)
		fMessage.reset(new BMessage(*message));
	if (directory != nullptr)
		fDirectory = directory->path;
}


BFilePanel::~BFilePanel()
{
	Fl::remove_timeout(StartChooser, this);
}


// The chooser runs its own loop: it is started from the interface loop, never
// inside the caller, so Show returns at once as on BeOS.
void
BFilePanel::Show()
{
	if (fShowing)
		return;
	fShowing = true;
	if (sChooserDisabled)
		return;
	platform_interface::RunOnUIThread([this] { Fl::add_timeout(0.0, StartChooser, this); }, false);
}


void
BFilePanel::Hide()
{
	Fl::remove_timeout(StartChooser, this);
	fShowing = false;
}


void
BFilePanel::SetSaveText(const char* text)
{
	fSaveText = text != nullptr ? text : "";
}


void
BFilePanel::SetTarget(BMessenger target)
{
	fTarget = target;
}


void
BFilePanel::SetMessage(BMessage* message)
{
	fMessage.reset(message != nullptr ? new BMessage(*message) : nullptr);
}


void
BFilePanel::SetPanelDirectory(const char* directory)
{
	fDirectory = directory != nullptr ? directory : "";
}


void
BFilePanel::RunChooserNow()
{
	Fl_Native_File_Chooser chooser;
	chooser.type(fMode == B_SAVE_PANEL ? Fl_Native_File_Chooser::BROWSE_SAVE_FILE
	                                   : Fl_Native_File_Chooser::BROWSE_FILE);
	if (fMode == B_SAVE_PANEL)
		chooser.options(Fl_Native_File_Chooser::SAVEAS_CONFIRM);
	if (!fDirectory.empty())
		chooser.directory(fDirectory.c_str());
	if (!fSaveText.empty())
		chooser.preset_file(fSaveText.c_str());
	int result = chooser.show();
	fShowing = false;
	if (result != 0 || chooser.filename() == nullptr)
		return;
	std::string path = chooser.filename();
	BMessage message(fMode == B_SAVE_PANEL ? B_SAVE_REQUESTED : B_REFS_RECEIVED);
	if (fMessage != nullptr)
		message = *fMessage;
	if (fMode == B_SAVE_PANEL) {
		size_t slash = path.rfind('/');
		std::string directory = slash == std::string::npos ? "." : path.substr(0, slash);
		if (directory.empty())
			directory = "/";
		std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
		entry_ref ref(directory.c_str());
		message.AddRef("directory", &ref);
		message.AddString("name", name.c_str());
		fDirectory = directory;
	} else {
		entry_ref ref(path.c_str());
		message.AddRef("refs", &ref);
	}
	fTarget.SendMessage(&message);
}
