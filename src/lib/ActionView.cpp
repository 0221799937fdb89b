#include "lib/ActionView.h"

#include <Button.h>
#include <Message.h>
#include <Window.h>

#include "lib/LibRect.h"

const float ActionView::kButtonHeight = 24;
const float ActionView::kSpacing = 10;


ActionView::ActionView(BRect frame, const char* name, int32 buttons, float buttonWidth,
                       orientation direction)
    : BView(frame, name,
            direction == B_HORIZONTAL ? B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM
                                      : B_FOLLOW_RIGHT | B_FOLLOW_TOP_BOTTOM,
            B_WILL_DRAW),
      fButtonCount(buttons > 0 ? buttons : 0), fButtonWidth(buttonWidth), fDirection(direction),
      fButtons(nullptr)
{
	SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
	fButtons = new BButton*[fButtonCount];
	for (int32 i = 0; i < fButtonCount; i++)
		fButtons[i] = nullptr;
}


ActionView::~ActionView()
{
	// The buttons are child views and go with the view.
	delete[] fButtons;
}


BRect
ActionView::ButtonFrame(int32 position) const
{
	BRect bounds = Bounds();
	if (fDirection == B_HORIZONTAL) {
		float total = fButtonCount * fButtonWidth + (fButtonCount - 1) * kSpacing;
		float left = bounds.right - kSpacing - total + position * (fButtonWidth + kSpacing);
		float top = bounds.top + (bounds.Height() - kButtonHeight) / 2;
		return LibRect(left, top, fButtonWidth, kButtonHeight);
	}
	return LibRect(bounds.left + kSpacing,
	               bounds.top + kSpacing + position * (kButtonHeight + kSpacing), fButtonWidth,
	               kButtonHeight);
}


BButton*
ActionView::SetButton(int32 position, const char* name, const char* label, BMessage* message)
{
	if (position < 0 || position >= fButtonCount) {
		delete message;
		return nullptr;
	}
	uint32 follow =
	    fDirection == B_HORIZONTAL ? B_FOLLOW_RIGHT | B_FOLLOW_TOP : B_FOLLOW_LEFT | B_FOLLOW_TOP;
	BButton* button = new BButton(ButtonFrame(position), name, label, message, follow);
	if (fButtons[position] != nullptr) {
		fButtons[position]->RemoveSelf();
		delete fButtons[position];
	}
	fButtons[position] = button;
	AddChild(button);
	return button;
}


BButton*
ActionView::ButtonAt(int32 position) const
{
	return position >= 0 && position < fButtonCount ? fButtons[position] : nullptr;
}


void
ActionView::MakeDefault(int32 position)
{
	BButton* button = ButtonAt(position);
	if (button == nullptr)
		return;
	button->MakeDefault(true);
	if (Window() != nullptr)
		Window()->SetDefaultButton(button);
}
