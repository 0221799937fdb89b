#include "results/ResultItem.h"

#include <cstdio>

#include <View.h>


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
	char text[64];
	// Quantity counts the rates stored; it never exceeds the array.
	int32 count = fQuantity < kMaxRates ? fQuantity : kMaxRates;
	for (int32 i = 0; i < count; i++) {
		snprintf(text, sizeof(text), "%-8.1f", fRates[i]);
		owner->DrawString(text, BPoint(frame.left + 290 + 55 * i, baseline));
	}

	if (IsSelected())
		owner->InvertRect(frame);
}
