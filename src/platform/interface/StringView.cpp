#include "StringView.h"


BStringView::BStringView(BRect frame, const char* name, const char* text, uint32 resizingMode,
                         uint32 flags)
    : BView(frame, name, resizingMode, flags), fText(text != nullptr ? text : ""),
      fAlignment(B_ALIGN_LEFT)
{
	SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
	SetLowColor(ui_color(B_PANEL_BACKGROUND_COLOR));
}


BStringView::~BStringView()
{
}


void
BStringView::AttachedToWindow()
{
	BView::AttachedToWindow();
	if (Parent() != nullptr) {
		SetViewColor(Parent()->ViewColor());
		SetLowColor(Parent()->ViewColor());
	}
}


void
BStringView::SetText(const char* text)
{
	fText = text != nullptr ? text : "";
	Invalidate();
}


const char*
BStringView::Text() const
{
	return fText.c_str();
}


void
BStringView::SetAlignment(alignment flag)
{
	fAlignment = flag;
	Invalidate();
}


// The baseline lies the font's ascent below the top; the text starts at the
// left, ends at the right or is centred in the bounds. A text wider than the
// view ends in an ellipsis and is shown whole in the view's tool tip.
void
BStringView::Draw(BRect updateRect)
{
	(void)updateRect;
	if (fText.empty()) {
		SetToolTip(nullptr);
		return;
	}
	BRect bounds = Bounds();
	font_height height;
	GetFontHeight(&height);
	BFont font;
	GetFont(&font);
	// Inclusive bounds: the view is one pixel wider than Width().
	std::string shown = font.Truncated(fText.c_str(), bounds.Width() + 1);
	SetToolTip(shown != fText ? fText.c_str() : nullptr);
	float x = bounds.left;
	float width = StringWidth(shown.c_str());
	if (fAlignment == B_ALIGN_RIGHT)
		x = bounds.right - width;
	else if (fAlignment == B_ALIGN_CENTER)
		x = bounds.left + (bounds.Width() - width) / 2;
	DrawString(shown.c_str(), BPoint(x, bounds.top + height.ascent));
}
