// What FLTK shows of a BMenu: an item array and its labels, kept alive while
// a menu may be open. Internal to the platform layer.
#ifndef PLATFORM_INTERFACE_MENU_ARRAY_H
#define PLATFORM_INTERFACE_MENU_ARRAY_H

#include <FL/Fl_Menu_Item.H>

#include <deque>
#include <memory>
#include <string>
#include <vector>

class BMenu;
class Fl_Menu_;

namespace platform_interface {

struct MenuArray {
	std::deque<std::string> labels;
	std::vector<Fl_Menu_Item> items;
};

// The items of menu, submenus nested, separators as dividers, ended. Without
// showMarks marked items carry no check marks (a menu field shows the marked
// item as its own label instead).
std::unique_ptr<MenuArray> BuildMenuArray(const BMenu* menu, bool showMarks = true);

// Shows array in widget. Older arrays stay alive while a menu may be open
// (something holds FLTK's grab): a message handled inside the menu's loop can
// change the menus under it.
void InstallMenuArray(Fl_Menu_* widget, std::vector<std::unique_ptr<MenuArray>>& arrays,
                      std::unique_ptr<MenuArray> array);

} // namespace platform_interface

#endif // PLATFORM_INTERFACE_MENU_ARRAY_H
