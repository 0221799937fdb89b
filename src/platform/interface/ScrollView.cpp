#include "ScrollView.h"

#include "ScrollBar.h"

namespace {

float
BorderWidth(border_style border)
{
	switch (border) {
		case B_FANCY_BORDER:
			return 2;
		case B_PLAIN_BORDER:
			return 1;
		default:
			return 0;
	}
}


BRect
OuterFrame(BView* target, bool horizontal, bool vertical, border_style border)
{
	BRect frame = target != nullptr ? target->Frame() : BRect(0, 0, 0, 0);
	float inset = BorderWidth(border);
	frame.left -= inset;
	frame.top -= inset;
	frame.right += inset;
	frame.bottom += inset;
	if (vertical)
		frame.right += B_V_SCROLL_BAR_WIDTH;
	if (horizontal)
		frame.bottom += B_H_SCROLL_BAR_HEIGHT;
	return frame;
}

} // namespace


BScrollView::BScrollView(const char* name, BView* target, uint32 resizingMode, uint32 flags,
                         bool horizontal, bool vertical, border_style border)
    : BView(OuterFrame(target, horizontal, vertical, border), name, resizingMode,
            flags | B_WILL_DRAW | B_FRAME_EVENTS),
      fTarget(target), fHorizontal(nullptr), fVertical(nullptr), fBorder(border)
{
	SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
	float inset = BorderWidth(border);
	BRect inner(0, 0, 0, 0);
	if (target != nullptr) {
		inner = target->Frame();
		target->MoveTo(inset, inset);
		inner = target->Frame();
		AddChild(target);
	}
	if (vertical) {
		fVertical = new BScrollBar(
		    BRect(inner.right + 1, inner.top, inner.right + B_V_SCROLL_BAR_WIDTH, inner.bottom),
		    "_VSB_", target, 0, 0, B_VERTICAL);
		AddChild(fVertical);
	}
	if (horizontal) {
		fHorizontal = new BScrollBar(
		    BRect(inner.left, inner.bottom + 1, inner.right, inner.bottom + B_H_SCROLL_BAR_HEIGHT),
		    "_HSB_", target, 0, 0, B_HORIZONTAL);
		AddChild(fHorizontal);
	}
}


BScrollView::~BScrollView()
{
}


BScrollBar*
BScrollView::ScrollBar(orientation direction) const
{
	return direction == B_VERTICAL ? fVertical : fHorizontal;
}


void
BScrollView::SetBorder(border_style border)
{
	fBorder = border;
	Invalidate();
}


void
BScrollView::Draw(BRect updateRect)
{
	(void)updateRect;
	BRect bounds = Bounds();
	rgb_color high = HighColor();
	if (fBorder == B_FANCY_BORDER) {
		SetHighColor(152, 152, 152);
		StrokeLine(bounds.LeftTop(), BPoint(bounds.right, bounds.top));
		StrokeLine(bounds.LeftTop(), BPoint(bounds.left, bounds.bottom));
		SetHighColor(255, 255, 255);
		StrokeLine(BPoint(bounds.left + 1, bounds.bottom), bounds.RightBottom());
		StrokeLine(BPoint(bounds.right, bounds.top + 1), bounds.RightBottom());
		SetHighColor(96, 96, 96);
		StrokeRect(BRect(bounds.left + 1, bounds.top + 1, bounds.right - 1, bounds.bottom - 1));
	} else if (fBorder == B_PLAIN_BORDER) {
		SetHighColor(96, 96, 96);
		StrokeRect(bounds);
	}
	SetHighColor(high);
}
