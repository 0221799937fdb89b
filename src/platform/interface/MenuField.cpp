#include "MenuField.h"

#include <FL/Fl_Choice.H>
#include <FL/Fl_Group.H>

#include <memory>
#include <vector>

#include "Menu.h"
#include "MenuItem.h"
#include "PopUpMenu.h"
#include "interface/MenuArray.h"
#include "interface/UIThread.h"
#include "interface/Widgets.h"

namespace {

class NativeChoice : public Fl_Choice
{
public:
	NativeChoice() : Fl_Choice(0, 0, 1, 1) {}

	std::vector<std::unique_ptr<platform_interface::MenuArray>> fArrays;
};

} // namespace


BPopUpMenu::BPopUpMenu(const char* name, bool radioMode, bool labelFromMarked)
    : BMenu(name), fLabelFromMarked(labelFromMarked)
{
	SetRadioMode(radioMode);
}


BPopUpMenu::~BPopUpMenu()
{
}


BMenuField::BMenuField(BRect frame, const char* name, const char* label, BMenu* menu,
                       uint32 resizingMode, uint32 flags)
    : BView(frame, name, resizingMode, flags), fMenu(menu), fLabel(label != nullptr ? label : ""),
      fDivider(0), fEnabled(true)
{
	SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
	SetLowColor(ui_color(B_PANEL_BACKGROUND_COLOR));
	if (!fLabel.empty())
		fDivider = StringWidth(fLabel.c_str()) + 6;
	NativeChoice* native = new NativeChoice;
	native->textsize(platform_interface::NativeTextSize());
	native->labelsize(platform_interface::NativeTextSize());
	native->down_box(FL_BORDER_BOX);
	SetNativeWidget(native);
	if (fMenu != nullptr)
		fMenu->fField = this;
	Rebuild();
}


BMenuField::~BMenuField()
{
	NativeChoice* native = static_cast<NativeChoice*>(NativeWidget());
	if (native != nullptr)
		native->menu(nullptr);
	if (fMenu != nullptr) {
		fMenu->fField = nullptr;
		delete fMenu;
	}
}


BMenuItem*
BMenuField::MenuItem() const
{
	return fMenu != nullptr ? fMenu->FindMarked() : nullptr;
}


void
BMenuField::SetLabel(const char* label)
{
	fLabel = label != nullptr ? label : "";
	Invalidate();
}


const char*
BMenuField::Label() const
{
	return fLabel.c_str();
}


void
BMenuField::SetDivider(float xCoordinate)
{
	fDivider = xCoordinate;
	LayoutNative();
	Invalidate();
}


void
BMenuField::SetEnabled(bool enabled)
{
	fEnabled = enabled;
	if (NativeWidget() != nullptr) {
		if (enabled)
			NativeWidget()->activate();
		else
			NativeWidget()->deactivate();
	}
	Invalidate();
}


void
BMenuField::Draw(BRect updateRect)
{
	(void)updateRect;
	if (fLabel.empty())
		return;
	font_height height;
	GetFontHeight(&height);
	BRect bounds = Bounds();
	float baseline = bounds.top + (bounds.Height() + height.ascent - height.descent) / 2;
	DrawString(fLabel.c_str(), BPoint(bounds.left + 1, baseline));
}


void
BMenuField::AttachedToWindow()
{
	BView::AttachedToWindow();
	if (Parent() != nullptr) {
		SetViewColor(Parent()->ViewColor());
		SetLowColor(Parent()->ViewColor());
	}
	Rebuild();
}


// The button shows the marked item, or nothing when none is marked.
void
BMenuField::Rebuild()
{
	NativeChoice* native = static_cast<NativeChoice*>(NativeWidget());
	if (native == nullptr || fMenu == nullptr)
		return;
	platform_interface::InstallMenuArray(native, native->fArrays,
	                                     platform_interface::BuildMenuArray(fMenu, false));
	BMenuItem* marked = fMenu->FindMarked();
	int32 index = marked != nullptr ? fMenu->IndexOf(marked) : -1;
	// Separators take no place in FLTK's array.
	int32 position = 0;
	for (int32 i = 0; i < index; i++) {
		if (!fMenu->ItemAt(i)->IsSeparator())
			position++;
	}
	if (index >= 0)
		native->value(position);
	else
		native->value(static_cast<const Fl_Menu_Item*>(nullptr));
	native->redraw();
	platform_interface::WakeUI();
}


void
BMenuField::LayoutNative()
{
	Fl_Widget* native = NativeWidget();
	Fl_Group* own = native != nullptr ? native->parent() : nullptr;
	if (native == nullptr || own == nullptr)
		return;
	int divider = static_cast<int>(fDivider);
	native->resize(own->x() + divider, own->y(), own->w() - divider, own->h());
}
