#include "interface/MenuArray.h"

#include <FL/Fl.H>
#include <FL/Fl_Menu_.H>

#include <cctype>

#include "InterfaceDefs.h"
#include "Menu.h"
#include "MenuItem.h"
#include "interface/Widgets.h"

namespace platform_interface {

namespace {

void
ItemCallback(Fl_Widget*, void* data)
{
	static_cast<BMenuItem*>(data)->Invoke();
}


int
ShortcutOf(const BMenuItem* item)
{
	uint32 modifiers = 0;
	char key = item->Shortcut(&modifiers);
	if (key == 0)
		return 0;
	int shortcut = FL_CTRL | tolower(static_cast<unsigned char>(key));
	if ((modifiers & B_SHIFT_KEY) != 0)
		shortcut |= FL_SHIFT;
	if ((modifiers & B_OPTION_KEY) != 0)
		shortcut |= FL_ALT;
	return shortcut;
}


void
AddItems(const BMenu* menu, MenuArray* array, bool showMarks)
{
	for (int32 i = 0; i < menu->CountItems(); i++) {
		BMenuItem* item = menu->ItemAt(i);
		if (item->IsSeparator()) {
			if (!array->items.empty())
				array->items.back().flags |= FL_MENU_DIVIDER;
			continue;
		}
		array->labels.push_back(item->Label());
		Fl_Menu_Item entry = {};
		entry.text = array->labels.back().c_str();
		entry.labelsize_ = platform_interface::NativeTextSize();
		if (!item->IsEnabled())
			entry.flags |= FL_MENU_INACTIVE;
		if (item->Submenu() != nullptr) {
			entry.flags |= FL_SUBMENU;
			array->items.push_back(entry);
			AddItems(item->Submenu(), array, showMarks);
			array->items.push_back(Fl_Menu_Item{});
			continue;
		}
		entry.shortcut_ = ShortcutOf(item);
		entry.callback_ = ItemCallback;
		entry.user_data_ = item;
		if (showMarks) {
			if (menu->IsRadioMode())
				entry.flags |= FL_MENU_RADIO;
			else if (item->IsMarked())
				entry.flags |= FL_MENU_TOGGLE;
			if (item->IsMarked())
				entry.flags |= FL_MENU_VALUE;
		}
		array->items.push_back(entry);
	}
}

} // namespace


std::unique_ptr<MenuArray>
BuildMenuArray(const BMenu* menu, bool showMarks)
{
	std::unique_ptr<MenuArray> array(new MenuArray);
	AddItems(menu, array.get(), showMarks);
	array->items.push_back(Fl_Menu_Item{});
	return array;
}


void
InstallMenuArray(Fl_Menu_* widget, std::vector<std::unique_ptr<MenuArray>>& arrays,
                 std::unique_ptr<MenuArray> array)
{
	if (Fl::grab() == nullptr && !arrays.empty()) {
		widget->menu(nullptr);
		arrays.clear();
	}
	widget->menu(array->items.data());
	arrays.push_back(std::move(array));
}

} // namespace platform_interface
