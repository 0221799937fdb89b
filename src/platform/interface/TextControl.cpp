#include "TextControl.h"

#include "interface/Widgets.h"
#include <FL/Fl_Group.H>
#include <FL/Fl_Input.H>


BTextControl::BTextControl(BRect frame, const char* name, const char* label, const char* text,
                           BMessage* message, uint32 resizingMode, uint32 flags)
    : BControl(frame, name, label, message, resizingMode, flags | B_WILL_DRAW),
      fText(text != nullptr ? text : ""), fDivider(0), fMaxBytes(0)
{
	if (label != nullptr && label[0] != '\0')
		fDivider = StringWidth(label) + 6;
	Fl_Input* native = new Fl_Input(0, 0, 1, 1);
	native->textsize(platform_interface::NativeTextSize());
	native->when(FL_WHEN_RELEASE | FL_WHEN_ENTER_KEY);
	InstallNative(native);
	native->value(fText.c_str());
}


BTextControl::~BTextControl()
{
}


void
BTextControl::SetText(const char* text)
{
	fText = text != nullptr ? text : "";
	Fl_Input* native = static_cast<Fl_Input*>(NativeWidget());
	if (native != nullptr)
		native->value(fText.c_str());
}


const char*
BTextControl::Text() const
{
	Fl_Input* native = static_cast<Fl_Input*>(NativeWidget());
	if (native != nullptr)
		fText = native->value();
	return fText.c_str();
}


void
BTextControl::SetDivider(float xCoordinate)
{
	fDivider = xCoordinate;
	LayoutNative();
	Invalidate();
}


void
BTextControl::SetMaxBytes(int32 max)
{
	fMaxBytes = max;
	Fl_Input* native = static_cast<Fl_Input*>(NativeWidget());
	if (native != nullptr && max > 0)
		native->maximum_size(max);
}


void
BTextControl::SetLabel(const char* label)
{
	BControl::SetLabel(label);
}


void
BTextControl::Draw(BRect updateRect)
{
	(void)updateRect;
	if (Label()[0] == '\0')
		return;
	font_height height;
	GetFontHeight(&height);
	BRect bounds = Bounds();
	float baseline = bounds.top + (bounds.Height() + height.ascent - height.descent) / 2;
	DrawString(Label(), BPoint(bounds.left + 1, baseline));
}


void
BTextControl::MakeFocus(bool focused)
{
	BView::MakeFocus(focused);
}


// The label is drawn by the view itself: the field shows no label.
void
BTextControl::UpdateNative()
{
	BControl::UpdateNative();
	Fl_Widget* native = NativeWidget();
	if (native != nullptr) {
		native->label(nullptr);
		native->color(FL_BACKGROUND2_COLOR);
	}
}


void
BTextControl::LayoutNative()
{
	Fl_Widget* native = NativeWidget();
	Fl_Group* own = native != nullptr ? native->parent() : nullptr;
	if (native == nullptr || own == nullptr)
		return;
	int divider = static_cast<int>(fDivider);
	native->resize(own->x() + divider, own->y(), own->w() - divider, own->h());
}
