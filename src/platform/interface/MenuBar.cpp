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
#include "interface/MenuArray.h"
#include "interface/UIThread.h"
#include "interface/Widgets.h"

namespace {

class NativeMenuBar : public Fl_Menu_Bar
{
public:
	NativeMenuBar() : Fl_Menu_Bar(0, 0, 1, 1) {}

	std::vector<std::unique_ptr<platform_interface::MenuArray>> fArrays;
};

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
	native->textsize(platform_interface::NativeTextSize());
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
	platform_interface::InstallMenuArray(native, native->fArrays,
	                                     platform_interface::BuildMenuArray(&fRoot));
	native->redraw();
	platform_interface::WakeUI();
}
