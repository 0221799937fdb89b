#include "results/ResultItem.h"

#include <algorithm>
#include <cstdio>

#include <Font.h>
#include <View.h>

namespace {

const float kFirstColumn = 290;

float
ColumnLeft(BRect frame, int32 i)
{
	return frame.left + kFirstColumn + ResultItem::kColumnWidth * i;
}


// A value without the blanks its format pads it with.
std::string
WithoutPadding(const std::string& text)
{
	return text.substr(0, text.find_last_not_of(' ') + 1);
}


// The value as the row can show it from left: whole when it fits its column
// (two pixels kept free before the next) and the row, or when only its
// padding does not; otherwise cut, ending in an ellipsis.
std::string
FittedValue(const BView* owner, const std::string& text, float left, float right)
{
	BFont font;
	owner->GetFont(&font);
	const float room = std::min(left + ResultItem::kColumnWidth - 2, right) - left;
	if (font.StringWidth(text.c_str()) <= room)
		return text;
	const std::string value = WithoutPadding(text);
	if (font.StringWidth(value.c_str()) <= room)
		return text;
	return font.Truncated(value.c_str(), room);
}

} // namespace


ResultItem::ResultItem(const char* name) : BListItem(0, true), fName(name), fQuantity(0)
{
	for (int32 i = 0; i < kMaxRates; i++)
		fRates[i] = 0;
}


ResultItem::~ResultItem()
{
}


void
ResultItem::Units(const char* units)
{
	fUnits = units;
}


void
ResultItem::Branch(const char* branch)
{
	fBranch = branch;
}


void
ResultItem::Quantity(const int& quantity)
{
	fQuantity = quantity;
}


void
ResultItem::Rate(const int& i, const float& value)
{
	if (i < 0 || i >= kMaxRates)
		return;
	fRates[i] = value;
	fQuantity++;
}


void
ResultItem::DrawItem(BView* owner, BRect frame, bool)
{
	owner->SetHighColor(255, 255, 255, 255);
	owner->FillRect(frame);
	owner->SetHighColor(0, 0, 0, 255);

	const float baseline = frame.bottom - 3;
	owner->DrawString(fName, BPoint(frame.left + 5, baseline));
	owner->DrawString(fUnits, BPoint(frame.left + 190, baseline));
	for (int32 i = 0; i < ShownRates(); i++) {
		const float left = ColumnLeft(frame, i);
		const std::string text = RateText(i);
		owner->DrawString(FittedValue(owner, text, left, frame.right).c_str(),
		                  BPoint(left, baseline));
	}

	if (IsSelected())
		owner->InvertRect(frame);
}


std::string
ResultItem::ToolTipAt(BView* owner, BRect frame, BPoint where) const
{
	for (int32 i = 0; i < ShownRates(); i++) {
		const float left = ColumnLeft(frame, i);
		if (where.x < left || where.x >= left + kColumnWidth)
			continue;
		const std::string text = RateText(i);
		if (FittedValue(owner, text, left, frame.right) == text)
			return std::string();
		return WithoutPadding(text);
	}
	return std::string();
}


// Quantity counts the rates stored; it never exceeds the array.
int32
ResultItem::ShownRates() const
{
	return fQuantity < kMaxRates ? fQuantity : kMaxRates;
}


std::string
ResultItem::RateText(int32 i) const
{
	char text[64];
	snprintf(text, sizeof(text), "%-8.1f", fRates[i]);
	return text;
}
