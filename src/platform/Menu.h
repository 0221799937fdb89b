// A menu: a list of items (owned). Its label is the title shown in a menu
// bar. Changing items updates the menu bar (or menu field) on screen.
#ifndef MENU_H
#define MENU_H

#include <string>
#include <vector>

#include "View.h"

class BMenuBar;
class BMenuField;
class BMenuItem;
class BWindow;

enum menu_layout {
	B_ITEMS_IN_ROW = 0,
	B_ITEMS_IN_COLUMN,
	B_ITEMS_IN_MATRIX,
};

class BMenu
{
public:
	explicit BMenu(const char* name, menu_layout layout = B_ITEMS_IN_COLUMN);
	virtual ~BMenu();

	BMenu(const BMenu&) = delete;
	BMenu& operator=(const BMenu&) = delete;

	bool AddItem(BMenuItem* item);
	bool AddItem(BMenuItem* item, int32 index);
	// The menu becomes owned by the new item.
	bool AddItem(BMenu* submenu);
	bool AddSeparatorItem();
	// RemoveItem(BMenuItem*) hands the item back; RemoveItems deletes.
	bool RemoveItem(BMenuItem* item);
	BMenuItem* RemoveItem(int32 index);
	bool RemoveItems(int32 index, int32 count, bool deleteItems = false);
	BMenuItem* ItemAt(int32 index) const;
	BMenu* SubmenuAt(int32 index) const;
	int32 CountItems() const;
	int32 IndexOf(BMenuItem* item) const;
	BMenuItem* FindItem(const char* label) const;
	BMenuItem* FindItem(uint32 command) const;
	BMenuItem* FindMarked() const;
	// Sets the target of every item (not of submenus' items).
	status_t SetTargetForItems(BHandler* target);
	void SetRadioMode(bool on);
	bool IsRadioMode() const { return fRadioMode; }
	void SetEnabled(bool enabled);
	bool IsEnabled() const { return fEnabled; }

	const char* Name() const;
	BMenuItem* Superitem() const { return fSuperitem; }
	BMenu* Supermenu() const;
	// The window of the menu bar this menu hangs in, or null.
	BWindow* Window() const;

private:
	friend class BMenuItem;
	friend class BMenuBar;
	friend class BMenuField;
	void Changed();
	BMenuBar* Bar() const;
	BMenuField* Field() const;

	std::string fName;
	std::vector<BMenuItem*> fItems;
	BMenuItem* fSuperitem;
	BMenuBar* fBar;
	BMenuField* fField;
	bool fRadioMode;
	bool fEnabled;
};

#endif // MENU_H
