#include "lib/MainMenuBar.h"

#include <Menu.h>
#include <MenuItem.h>
#include <Message.h>

// U+2261, a menu glyph that the sans faces of the platform all have.
const char* const MainMenuBar::kAppMenuLabel = "\xe2\x89\xa1";


MainMenuBar::MainMenuBar(BRect frame)
    : BMenuBar(frame, "menubar"), fAppMenu(new BMenu(kAppMenuLabel)), fCurrent(nullptr)
{
	AddItem(fAppMenu);
	fCurrent = fAppMenu;
}


MainMenuBar::~MainMenuBar()
{
}


BMenu*
MainMenuBar::AddMenu(const char* label)
{
	BMenu* menu = new BMenu(label);
	AddItem(menu);
	fCurrent = menu;
	return menu;
}


BMenuItem*
MainMenuBar::AddMenuItem(const char* label, BMessage* message, char shortcut, BHandler* target)
{
	BMenuItem* item = new BMenuItem(label, message, shortcut);
	if (target != nullptr)
		item->SetTarget(target);
	fCurrent->AddItem(item);
	return item;
}


void
MainMenuBar::AddSeparator()
{
	fCurrent->AddSeparatorItem();
}
