// A labelled button that pops up a menu of choices: the chosen item is marked
// and named on the button, and its message is sent as usual.
#ifndef LIB_MENU_BUTTON_H
#define LIB_MENU_BUTTON_H

#include <MenuField.h>

class BMenuItem;
class BMessage;

class LibMenuButton : public BMenuField
{
public:
	LibMenuButton(BRect frame, const char* name, const char* label,
	              uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP);
	~LibMenuButton() override;

	// Appends an item sending message (taken over).
	void AddItem(const char* label, BMessage* message);
	void RemoveAllItems();
	// Marks the item of that label; false (and nothing marked) when there is
	// none.
	bool Choose(const char* label);
	bool Choose(int32 index);
	// What the button says: the chosen item's label, or the button's own
	// label while nothing is chosen.
	const char* Text() const;
};

#endif // LIB_MENU_BUTTON_H
