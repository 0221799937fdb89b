#include "Button.h"

#include <FL/Fl_Button.H>
#include <FL/fl_draw.H>

#include "Window.h"

namespace {

// A push button; the default one has a dark outline.
class NativeButton : public Fl_Button
{
public:
	NativeButton() : Fl_Button(0, 0, 1, 1), fDefault(false) {}

	void draw() override
	{
		Fl_Button::draw();
		if (fDefault) {
			fl_color(FL_BLACK);
			fl_rect(x(), y(), w(), h());
		}
	}

	bool fDefault;
};

} // namespace


BButton::BButton(BRect frame, const char* name, const char* label, BMessage* message,
                 uint32 resizingMode, uint32 flags)
    : BControl(frame, name, label, message, resizingMode, flags), fDefault(false)
{
	InstallNative(new NativeButton);
}


BButton::~BButton()
{
	if (Window() != nullptr && Window()->DefaultButton() == this)
		Window()->SetDefaultButton(nullptr);
}


void
BButton::AttachedToWindow()
{
	BControl::AttachedToWindow();
	if (fDefault)
		Window()->SetDefaultButton(this);
}


void
BButton::MakeDefault(bool isDefault)
{
	if (isDefault == fDefault)
		return;
	fDefault = isDefault;
	UpdateNative();
	if (Window() == nullptr)
		return;
	if (isDefault && Window()->DefaultButton() != this)
		Window()->SetDefaultButton(this);
	else if (!isDefault && Window()->DefaultButton() == this)
		Window()->SetDefaultButton(nullptr);
}


bool
BButton::IsDefault() const
{
	return fDefault;
}


void
BButton::GetPreferredSize(float* width, float* height)
{
	float labelWidth = StringWidth(Label()) + 20;
	if (width != nullptr)
		*width = labelWidth > 75 ? labelWidth : 75;
	if (height != nullptr)
		*height = 24;
}


void
BButton::UpdateNative()
{
	BControl::UpdateNative();
	NativeButton* native = static_cast<NativeButton*>(NativeWidget());
	if (native != nullptr) {
		native->fDefault = fDefault;
		native->color(FL_BACKGROUND_COLOR);
	}
}
