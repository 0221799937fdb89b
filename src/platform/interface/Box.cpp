#include "Box.h"

#include <cmath>


BBox::BBox(BRect frame, const char* name, uint32 resizingMode, uint32 flags, border_style border)
    : BView(frame, name, resizingMode, flags), fBorder(border), fHasLabel(false)
{
	SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
	SetLowColor(ui_color(B_PANEL_BACKGROUND_COLOR));
}


BBox::~BBox()
{
}


void
BBox::SetBorder(border_style border)
{
	fBorder = border;
	Invalidate();
}


void
BBox::SetLabel(const char* label)
{
	fHasLabel = label != nullptr;
	fLabel = label != nullptr ? label : "";
	Invalidate();
}


const char*
BBox::Label() const
{
	return fHasLabel ? fLabel.c_str() : nullptr;
}


// The frame's top edge runs through the middle of the label's text; the
// label sits 6 pixels in from the left on the box's low colour.
void
BBox::Draw(BRect updateRect)
{
	(void)updateRect;
	BRect bounds = Bounds();
	font_height height;
	GetFontHeight(&height);
	float top = bounds.top;
	if (fHasLabel)
		top = bounds.top + std::floor((height.ascent + height.descent) / 2);

	BRect frame(bounds.left, top, bounds.right, bounds.bottom);
	rgb_color high = HighColor();
	if (fBorder == B_FANCY_BORDER) {
		SetHighColor(152, 152, 152);
		StrokeRect(BRect(frame.left, frame.top, frame.right - 1, frame.bottom - 1));
		SetHighColor(255, 255, 255);
		StrokeLine(BPoint(frame.left + 1, frame.top + 1), BPoint(frame.right - 2, frame.top + 1));
		StrokeLine(BPoint(frame.left + 1, frame.top + 1), BPoint(frame.left + 1, frame.bottom - 2));
		StrokeLine(BPoint(frame.left, frame.bottom), BPoint(frame.right, frame.bottom));
		StrokeLine(BPoint(frame.right, frame.top), BPoint(frame.right, frame.bottom));
	} else if (fBorder == B_PLAIN_BORDER) {
		SetHighColor(96, 96, 96);
		StrokeRect(frame);
	}

	if (fHasLabel && !fLabel.empty()) {
		float width = StringWidth(fLabel.c_str());
		SetHighColor(LowColor());
		FillRect(BRect(bounds.left + 5, bounds.top, bounds.left + 8 + width,
		               bounds.top + height.ascent + height.descent));
		SetHighColor(0, 0, 0);
		DrawString(fLabel.c_str(), BPoint(bounds.left + 7, bounds.top + height.ascent));
	}
	SetHighColor(high);
}
