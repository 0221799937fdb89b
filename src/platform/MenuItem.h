// An item of a menu: a label, a message sent when it is chosen (with int32
// "index", pointer "source" and int64 "when" added), an optional keyboard
// shortcut and a submenu. Without a target the message goes to the window of
// the menu bar. Shortcuts use the Ctrl key for B_COMMAND_KEY (always implied,
// as on BeOS); B_SHIFT_KEY and B_OPTION_KEY (Alt) may be added.
#ifndef MENU_ITEM_H
#define MENU_ITEM_H

#include <string>

#include "Invoker.h"

class BMenu;

class BMenuItem : public BInvoker
{
public:
	// message is taken over; shortcut 0 for none.
	BMenuItem(const char* label, BMessage* message, char shortcut = 0, uint32 modifiers = 0);
	// An item that opens submenu (owned).
	explicit BMenuItem(BMenu* submenu, BMessage* message = nullptr);
	~BMenuItem() override;

	virtual void SetLabel(const char* label);
	const char* Label() const;
	virtual void SetEnabled(bool enabled);
	bool IsEnabled() const;
	virtual void SetMarked(bool marked);
	bool IsMarked() const { return fMarked; }
	virtual void SetShortcut(char shortcut, uint32 modifiers);
	char Shortcut(uint32* modifiers = nullptr) const;
	BMenu* Submenu() const { return fSubmenu; }
	BMenu* Menu() const { return fMenu; }
	bool IsSeparator() const { return fSeparator; }
	status_t Invoke(BMessage* message = nullptr) override;

protected:
	BMessenger DefaultTarget() const override;

private:
	friend class BMenu;
	friend class BSeparatorItem;
	void Changed();

	std::string fLabel;
	BMenu* fSubmenu;
	BMenu* fMenu;
	char fShortcut;
	uint32 fModifiers;
	bool fEnabled;
	bool fMarked;
	bool fSeparator;
};

class BSeparatorItem : public BMenuItem
{
public:
	BSeparatorItem();
	~BSeparatorItem() override;
};

#endif // MENU_ITEM_H
