#include "lib/LibMenuButton.h"

#include <cstring>

#include <MenuItem.h>
#include <PopUpMenu.h>


LibMenuButton::LibMenuButton(BRect frame, const char* name, const char* label, uint32 resizingMode)
    : BMenuField(frame, name, label, new BPopUpMenu(name), resizingMode)
{
}


LibMenuButton::~LibMenuButton()
{
}


void
LibMenuButton::AddItem(const char* label, BMessage* message)
{
	Menu()->AddItem(new BMenuItem(label, message));
	Rebuild();
}


void
LibMenuButton::RemoveAllItems()
{
	Menu()->RemoveItems(0, Menu()->CountItems(), true);
	Rebuild();
}


bool
LibMenuButton::Choose(const char* label)
{
	for (int32 i = 0; i < Menu()->CountItems(); i++) {
		if (strcmp(Menu()->ItemAt(i)->Label(), label) == 0)
			return Choose(i);
	}
	Choose(-1);
	return false;
}


bool
LibMenuButton::Choose(int32 index)
{
	BMenuItem* chosen = Menu()->ItemAt(index);
	for (int32 i = 0; i < Menu()->CountItems(); i++)
		Menu()->ItemAt(i)->SetMarked(false);
	if (chosen != nullptr)
		chosen->SetMarked(true);
	Rebuild();
	return chosen != nullptr;
}


const char*
LibMenuButton::Text() const
{
	BMenuItem* marked = MenuItem();
	return marked != nullptr ? marked->Label() : Label();
}
