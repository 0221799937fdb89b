#include "ListItem.h"

#include <cmath>

#include "Font.h"
#include "View.h"


BListItem::BListItem(uint32 outlineLevel, bool expanded)
    : fWidth(0), fHeight(0), fOutlineLevel(outlineLevel), fSelected(false), fEnabled(true),
      fExpanded(expanded)
{
}


BListItem::~BListItem()
{
}


std::string
BListItem::ToolTipAt(BView*, BRect, BPoint) const
{
	return std::string();
}


void
BListItem::Update(BView* owner, const BFont* font)
{
	font_height height = {};
	if (font != nullptr)
		font->GetHeight(&height);
	fHeight = std::ceil(height.ascent + height.descent + height.leading) + 2;
	if (owner != nullptr)
		fWidth = owner->Bounds().Width();
}


BStringItem::BStringItem(const char* text, uint32 outlineLevel, bool expanded)
    : BListItem(outlineLevel, expanded), fText(text != nullptr ? text : ""), fBaselineOffset(0)
{
}


BStringItem::~BStringItem()
{
}


void
BStringItem::Update(BView* owner, const BFont* font)
{
	BListItem::Update(owner, font);
	font_height height = {};
	if (font != nullptr)
		font->GetHeight(&height);
	fBaselineOffset = 1 + height.ascent + height.leading / 2;
}


// Selected rows are drawn on a grey band; the text is indented 10 pixels per
// outline level.
void
BStringItem::DrawItem(BView* owner, BRect frame, bool complete)
{
	rgb_color high = owner->HighColor();
	if (IsSelected() || complete) {
		if (IsSelected())
			owner->SetHighColor(184, 184, 184);
		else
			owner->SetHighColor(owner->ViewColor());
		owner->FillRect(frame);
	}
	if (IsEnabled())
		owner->SetHighColor(0, 0, 0);
	else
		owner->SetHighColor(152, 152, 152);
	float indent = 4 + 10.0f * static_cast<float>(OutlineLevel());
	owner->DrawString(fText.c_str(), BPoint(frame.left + indent, frame.top + fBaselineOffset));
	owner->SetHighColor(high);
}


void
BStringItem::SetText(const char* text)
{
	fText = text != nullptr ? text : "";
}


const char*
BStringItem::Text() const
{
	return fText.c_str();
}
