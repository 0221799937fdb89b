#include "MenuBar.h"

#include <FL/Fl.H>
#include <FL/Fl_Menu_Bar.H>
#include <FL/Fl_Menu_Item.H>

#include <cctype>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "MenuItem.h"
#include "Window.h"
#include "interface/UIThread.h"

namespace {

// One generation of what FLTK shows: the item array and its labels.
struct MenuArray {
	std::deque<std::string> labels;
	std::vector<Fl_Menu_Item> items;
};


class NativeMenuBar : public Fl_Menu_Bar
{
public:
	NativeMenuBar() : Fl_Menu_Bar(0, 0, 1, 1) {}

	// Arrays stay alive while a menu may be open: a message handled inside
	// the menu's loop can change the menus under it.
	std::vector<std::unique_ptr<MenuArray>> fArrays;
};


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
AddItems(const BMenu* menu, MenuArray* array)
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
		entry.labelsize_ = 12;
		if (!item->IsEnabled())
			entry.flags |= FL_MENU_INACTIVE;
		if (item->Submenu() != nullptr) {
			entry.flags |= FL_SUBMENU;
			array->items.push_back(entry);
			AddItems(item->Submenu(), array);
			array->items.push_back(Fl_Menu_Item{});
			continue;
		}
		entry.shortcut_ = ShortcutOf(item);
		entry.callback_ = ItemCallback;
		entry.user_data_ = item;
		if (menu->IsRadioMode())
			entry.flags |= FL_MENU_RADIO;
		else if (item->IsMarked())
			entry.flags |= FL_MENU_TOGGLE;
		if (item->IsMarked())
			entry.flags |= FL_MENU_VALUE;
		array->items.push_back(entry);
	}
}

} // namespace


BMenuBar::BMenuBar(BRect frame, const char* name, uint32 resizingMode, menu_layout layout,
                   bool resizeToFit)
    : BView(BRect(frame.left, frame.top, frame.right, frame.top + 19), name, resizingMode,
            B_WILL_DRAW | B_FRAME_EVENTS),
      fRoot(name, layout)
{
	(void)resizeToFit;
	fRoot.fBar = this;
	NativeMenuBar* native = new NativeMenuBar;
	native->box(FL_FLAT_BOX);
	rgb_color color = ui_color(B_MENU_BACKGROUND_COLOR);
	native->color(fl_rgb_color(color.red, color.green, color.blue));
	native->textsize(12);
	SetNativeWidget(native);
	Rebuild();
}


BMenuBar::~BMenuBar()
{
	// The items go with the root menu; FLTK must not show them meanwhile.
	NativeMenuBar* native = static_cast<NativeMenuBar*>(NativeWidget());
	if (native != nullptr)
		native->menu(nullptr);
	fRoot.fBar = nullptr;
}


bool
BMenuBar::AddItem(BMenu* menu)
{
	return fRoot.AddItem(menu);
}


bool
BMenuBar::AddItem(BMenuItem* item)
{
	return fRoot.AddItem(item);
}


bool
BMenuBar::AddItem(BMenuItem* item, int32 index)
{
	return fRoot.AddItem(item, index);
}


BMenuItem*
BMenuBar::ItemAt(int32 index) const
{
	return fRoot.ItemAt(index);
}


BMenu*
BMenuBar::SubmenuAt(int32 index) const
{
	return fRoot.SubmenuAt(index);
}


int32
BMenuBar::CountItems() const
{
	return fRoot.CountItems();
}


BMenuItem*
BMenuBar::FindItem(const char* label) const
{
	return fRoot.FindItem(label);
}


BMenuItem*
BMenuBar::FindItem(uint32 command) const
{
	return fRoot.FindItem(command);
}


void
BMenuBar::SetBorder(menu_bar_border border)
{
	(void)border;
}


void
BMenuBar::AttachedToWindow()
{
	BView::AttachedToWindow();
	if (Parent() == nullptr && Window() != nullptr)
		ResizeTo(Window()->Bounds().Width() - Frame().left, Frame().Height());
	Rebuild();
}


void
BMenuBar::Rebuild()
{
	NativeMenuBar* native = static_cast<NativeMenuBar*>(NativeWidget());
	if (native == nullptr)
		return;
	std::unique_ptr<MenuArray> array(new MenuArray);
	AddItems(&fRoot, array.get());
	array->items.push_back(Fl_Menu_Item{});
	// No menu is open unless something holds FLTK's grab: older arrays can go.
	if (Fl::grab() == nullptr && !native->fArrays.empty()) {
		native->menu(nullptr);
		native->fArrays.clear();
	}
	native->menu(array->items.data());
	native->fArrays.push_back(std::move(array));
	native->redraw();
	platform_interface::WakeUI();
}
