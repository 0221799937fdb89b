// One row of the results list: a metric's name, its units and one rate per
// processor configuration.
#ifndef RESULT_ITEM_H
#define RESULT_ITEM_H

#include <ListItem.h>

#include <string>

#include "lib/LibString.h"

class ResultItem : public BListItem
{
public:
	static constexpr int32 kMaxRates = 8;
	static constexpr float kColumnWidth = 55;

	explicit ResultItem(const char* name);
	~ResultItem() override;

	void Units(const char* units);
	// A group label; kept with the row, not drawn.
	void Branch(const char* branch);
	void Quantity(const int& quantity);
	// Stores value at position i and counts it; positions from 8 on are
	// ignored.
	void Rate(const int& i, const float& value);

	const char* Name() const { return fName; }
	const char* UnitsText() const { return fUnits; }
	const char* BranchText() const { return fBranch; }
	int32 QuantityValue() const { return fQuantity; }
	float RateAt(int32 i) const { return i >= 0 && i < kMaxRates ? fRates[i] : 0; }

	// White row, black text: name at 5, units at 190, values ("%-8.1f") from
	// 290 every 55 pixels, all 3 pixels above the bottom; inverted when
	// selected. A value wider than its column (two pixels kept before the
	// next) or than the row ends in an ellipsis.
	void DrawItem(BView* owner, BRect frame, bool complete = false) override;
	// The whole value under where, when the row shows it cut short.
	std::string ToolTipAt(BView* owner, BRect frame, BPoint where) const override;

private:
	int32 ShownRates() const;
	std::string RateText(int32 i) const;

	LibString fBranch;
	LibString fName;
	LibString fUnits;
	int32 fQuantity;
	float fRates[kMaxRates];
};

#endif // RESULT_ITEM_H
