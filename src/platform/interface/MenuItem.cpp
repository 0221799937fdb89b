#include "MenuItem.h"

#include "Menu.h"
#include "Message.h"
#include "Window.h"


BMenuItem::BMenuItem(const char* label, BMessage* message, char shortcut, uint32 modifiers)
    : BInvoker(message, nullptr), fLabel(label != nullptr ? label : ""), fSubmenu(nullptr),
      fMenu(nullptr), fShortcut(shortcut), fModifiers(modifiers), fEnabled(true), fMarked(false),
      fSeparator(false)
{
}


BMenuItem::BMenuItem(BMenu* submenu, BMessage* message)
    : BInvoker(message, nullptr), fLabel(submenu != nullptr ? submenu->Name() : ""),
      fSubmenu(submenu), fMenu(nullptr), fShortcut(0), fModifiers(0), fEnabled(true),
      fMarked(false), fSeparator(false)
{
	if (submenu != nullptr)
		submenu->fSuperitem = this;
}


BMenuItem::~BMenuItem()
{
	if (fMenu != nullptr)
		fMenu->RemoveItem(this);
	delete fSubmenu;
}


void
BMenuItem::SetLabel(const char* label)
{
	fLabel = label != nullptr ? label : "";
	Changed();
}


const char*
BMenuItem::Label() const
{
	return fLabel.c_str();
}


void
BMenuItem::SetEnabled(bool enabled)
{
	if (enabled == fEnabled)
		return;
	fEnabled = enabled;
	Changed();
}


bool
BMenuItem::IsEnabled() const
{
	if (!fEnabled)
		return false;
	return fMenu == nullptr || fMenu->IsEnabled();
}


void
BMenuItem::SetMarked(bool marked)
{
	if (marked == fMarked)
		return;
	if (marked && fMenu != nullptr && fMenu->IsRadioMode()) {
		BMenuItem* other = fMenu->FindMarked();
		if (other != nullptr && other != this)
			other->fMarked = false;
	}
	fMarked = marked;
	Changed();
}


void
BMenuItem::SetShortcut(char shortcut, uint32 modifiers)
{
	fShortcut = shortcut;
	fModifiers = modifiers;
	Changed();
}


char
BMenuItem::Shortcut(uint32* modifiers) const
{
	if (modifiers != nullptr)
		*modifiers = fModifiers | (fShortcut != 0 ? B_COMMAND_KEY : 0);
	return fShortcut;
}


status_t
BMenuItem::Invoke(BMessage* message)
{
	BMessage* source = message != nullptr ? message : Message();
	if (source == nullptr)
		return B_BAD_VALUE;
	if (fMenu != nullptr && fMenu->IsRadioMode())
		SetMarked(true);
	BMessage copy(*source);
	copy.AddInt32("index", fMenu != nullptr ? fMenu->IndexOf(this) : -1);
	copy.AddPointer("source", this);
	return BInvoker::Invoke(&copy);
}


BMessenger
BMenuItem::DefaultTarget() const
{
	BWindow* window = fMenu != nullptr ? fMenu->Window() : nullptr;
	if (window == nullptr)
		return BMessenger();
	return BMessenger(window);
}


void
BMenuItem::Changed()
{
	if (fMenu != nullptr)
		fMenu->Changed();
}


BSeparatorItem::BSeparatorItem() : BMenuItem("", nullptr)
{
	fSeparator = true;
	fEnabled = false;
}


BSeparatorItem::~BSeparatorItem()
{
}
