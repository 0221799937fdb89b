// The bar of menus at the top of a window. Its menus and items are BMenu and
// BMenuItem objects; the bar shows them with FLTK's menu bar, and their
// shortcuts work whenever the window has the keyboard.
#ifndef MENU_BAR_H
#define MENU_BAR_H

#include "Menu.h"
#include "View.h"

enum menu_bar_border {
	B_BORDER_FRAME,
	B_BORDER_CONTENTS,
	B_BORDER_EACH_ITEM,
};

class BMenuBar : public BView
{
public:
	// The height is set by the bar (about 20 pixels); the frame's width is kept.
	BMenuBar(BRect frame, const char* name,
	         uint32 resizingMode = B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP,
	         menu_layout layout = B_ITEMS_IN_ROW, bool resizeToFit = true);
	~BMenuBar() override;

	// The bar's menus: items whose submenus drop down, or items chosen
	// directly from the bar.
	bool AddItem(BMenu* menu);
	bool AddItem(BMenuItem* item);
	bool AddItem(BMenuItem* item, int32 index);
	BMenuItem* ItemAt(int32 index) const;
	BMenu* SubmenuAt(int32 index) const;
	int32 CountItems() const;
	BMenuItem* FindItem(const char* label) const;
	BMenuItem* FindItem(uint32 command) const;
	void SetBorder(menu_bar_border border);

	void AttachedToWindow() override;

	// Rebuilds what FLTK shows from the menus (called after every change).
	void Rebuild();
	// The menu holding the bar's own items.
	BMenu* Menu() { return &fRoot; }

private:
	BMenu fRoot;
};

#endif // MENU_BAR_H
