#include "CheckBox.h"

#include <FL/Fl_Check_Button.H>


BCheckBox::BCheckBox(BRect frame, const char* name, const char* label, BMessage* message,
                     uint32 resizingMode, uint32 flags)
    : BControl(frame, name, label, message, resizingMode, flags)
{
	Fl_Check_Button* native = new Fl_Check_Button(0, 0, 1, 1);
	native->type(FL_TOGGLE_BUTTON);
	native->box(FL_FLAT_BOX);
	native->down_box(FL_DOWN_BOX);
	native->selection_color(FL_FOREGROUND_COLOR);
	InstallNative(native);
}


BCheckBox::~BCheckBox()
{
}


void
BCheckBox::GetPreferredSize(float* width, float* height)
{
	font_height fontHeight;
	GetFontHeight(&fontHeight);
	if (width != nullptr)
		*width = StringWidth(Label()) + 22;
	if (height != nullptr)
		*height = fontHeight.ascent + fontHeight.descent + 4;
}


void
BCheckBox::UpdateNative()
{
	BControl::UpdateNative();
	Fl_Check_Button* native = static_cast<Fl_Check_Button*>(NativeWidget());
	if (native != nullptr)
		native->value(Value() == B_CONTROL_ON ? 1 : 0);
}
