// A window's menu bar whose first menu is the application's own menu (About,
// Help, System, Quit). Items are added to the current menu, which a new menu
// becomes.
#ifndef MAIN_MENU_BAR_H
#define MAIN_MENU_BAR_H

#include <MenuBar.h>

class BHandler;
class BMenu;
class BMenuItem;
class BMessage;

class MainMenuBar : public BMenuBar
{
public:
	// The bar's width is frame's; its height is the bar's own.
	explicit MainMenuBar(BRect frame);
	~MainMenuBar() override;

	BMenu* AppMenu() const { return fAppMenu; }
	void MakeAppMenuCurrent() { fCurrent = fAppMenu; }
	// Adds a menu to the bar and makes it current.
	BMenu* AddMenu(const char* label);
	BMenu* CurrentMenu() const { return fCurrent; }

	// Adds an item to the current menu. A null target sends to the window.
	BMenuItem* AddMenuItem(const char* label, BMessage* message, char shortcut = 0,
	                       BHandler* target = nullptr);
	void AddSeparator();

	// The label of the application's menu: the platform has no menu icons.
	static const char* const kAppMenuLabel;

private:
	BMenu* fAppMenu;
	BMenu* fCurrent;
};

#endif // MAIN_MENU_BAR_H
