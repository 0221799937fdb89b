// A list whose rows can have sub-rows: a collapsed row hides everything under
// it. The full list holds every row in outline order; the BListView calls
// (ItemAt, CountItems, CurrentSelection ...) see only the rows on show.
#ifndef OUTLINE_LIST_VIEW_H
#define OUTLINE_LIST_VIEW_H

#include "ListView.h"

class BOutlineListView : public BListView
{
public:
	BOutlineListView(BRect frame, const char* name, list_view_type type = B_SINGLE_SELECTION_LIST,
	                 uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
	                 uint32 flags = B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE);
	~BOutlineListView() override;

	// Adds at the end of the full list, at the item's own outline level.
	bool AddItem(BListItem* item) override;
	// index is a full-list index.
	bool AddItem(BListItem* item, int32 fullIndex) override;
	// Adds as the last sub-row of superitem (one level deeper).
	bool AddUnder(BListItem* item, BListItem* superitem);
	bool RemoveItem(BListItem* item) override;
	BListItem* RemoveItem(int32 fullIndex) override;
	void MakeEmpty() override;

	void Expand(BListItem* item);
	void Collapse(BListItem* item);
	bool IsExpanded(int32 fullIndex) const;
	BListItem* Superitem(const BListItem* item) const;

	int32 FullListCountItems() const;
	BListItem* FullListItemAt(int32 fullIndex) const;
	int32 FullListIndexOf(const BListItem* item) const;
	int32 CountItemsUnder(BListItem* under, bool oneLevelOnly) const;
	BListItem* ItemUnderAt(BListItem* under, bool oneLevelOnly, int32 index) const;

	// Rows are drawn kLatchWidth pixels in from the left, after a latch
	// (a triangle pointing right when collapsed, down when expanded) for
	// rows with sub-rows; a click in that margin opens or closes the row.
	void Draw(BRect updateRect) override;
	void MouseDown(BPoint where) override;

	static constexpr float kLatchWidth = 12;

private:
	void RebuildShown();
	bool HasSubitems(int32 fullIndex) const;
	int32 SubtreeEnd(int32 fullIndex) const;

	std::vector<BListItem*> fFullList;
};

#endif // OUTLINE_LIST_VIEW_H
