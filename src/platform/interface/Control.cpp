#include "Control.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Widget.H>

#include "Message.h"
#include "Window.h"
#include "interface/UIThread.h"
#include "interface/Widgets.h"


BControl::BControl(BRect frame, const char* name, const char* label, BMessage* message,
                   uint32 resizingMode, uint32 flags)
    : BView(frame, name, resizingMode, flags), BInvoker(message, nullptr),
      fLabel(label != nullptr ? label : ""), fValue(B_CONTROL_OFF), fEnabled(true)
{
	SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
	SetLowColor(ui_color(B_PANEL_BACKGROUND_COLOR));
}


BControl::~BControl()
{
}


void
BControl::AttachedToWindow()
{
	BView::AttachedToWindow();
	if (Parent() != nullptr) {
		SetViewColor(Parent()->ViewColor());
		SetLowColor(Parent()->ViewColor());
	}
	UpdateNative();
}


void
BControl::SetLabel(const char* label)
{
	fLabel = label != nullptr ? label : "";
	UpdateNative();
	Invalidate();
}


const char*
BControl::Label() const
{
	return fLabel.c_str();
}


void
BControl::SetValue(int32 value)
{
	if (value == fValue)
		return;
	fValue = value;
	UpdateNative();
	Invalidate();
}


void
BControl::SetEnabled(bool enabled)
{
	if (enabled == fEnabled)
		return;
	fEnabled = enabled;
	UpdateNative();
	Invalidate();
}


status_t
BControl::Invoke(BMessage* message)
{
	BMessage* source = message != nullptr ? message : Message();
	if (source == nullptr)
		return B_BAD_VALUE;
	BMessage copy(*source);
	copy.AddPointer("source", this);
	copy.AddInt32("be:value", fValue);
	return BInvoker::Invoke(&copy);
}


void
BControl::GetPreferredSize(float* width, float* height)
{
	font_height fontHeight;
	GetFontHeight(&fontHeight);
	if (width != nullptr)
		*width = StringWidth(Label()) + 20;
	if (height != nullptr)
		*height = fontHeight.ascent + fontHeight.descent + 6;
}


void
BControl::ResizeToPreferred()
{
	float width = 0;
	float height = 0;
	GetPreferredSize(&width, &height);
	ResizeTo(width, height);
}


BMessenger
BControl::DefaultTarget() const
{
	if (Window() == nullptr)
		return BMessenger();
	return BMessenger(Window());
}


void
BControl::UpdateNative()
{
	Fl_Widget* native = NativeWidget();
	if (native == nullptr)
		return;
	native->copy_label(fLabel.c_str());
	if (fEnabled)
		native->activate();
	else
		native->deactivate();
	rgb_color color = ViewColor();
	native->color(fl_rgb_color(color.red, color.green, color.blue));
	native->redraw();
	platform_interface::WakeUI();
}


void
BControl::NativeChanged()
{
	Fl_Button* button = dynamic_cast<Fl_Button*>(NativeWidget());
	if (button != nullptr && button->type() == FL_TOGGLE_BUTTON)
		SetValue(button->value() != 0 ? B_CONTROL_ON : B_CONTROL_OFF);
	Invoke();
}


void
BControl::InstallNative(Fl_Widget* widget)
{
	widget->labelsize(platform_interface::NativeTextSize());
	widget->callback(NativeCallback, this);
	SetNativeWidget(widget);
	UpdateNative();
}


void
BControl::NativeCallback(Fl_Widget* widget, void* data)
{
	(void)widget;
	static_cast<BControl*>(data)->NativeChanged();
}
