#include "OutlineListView.h"

#include <algorithm>
#include <cmath>

#include "ListItem.h"


BOutlineListView::BOutlineListView(BRect frame, const char* name, list_view_type type,
                                   uint32 resizingMode, uint32 flags)
    : BListView(frame, name, type, resizingMode, flags)
{
}


BOutlineListView::~BOutlineListView()
{
}


bool
BOutlineListView::AddItem(BListItem* item)
{
	return AddItem(item, FullListCountItems());
}


bool
BOutlineListView::AddItem(BListItem* item, int32 fullIndex)
{
	if (item == nullptr || fullIndex < 0 || fullIndex > FullListCountItems())
		return false;
	BFont font;
	GetFont(&font);
	item->Update(this, &font);
	fFullList.insert(fFullList.begin() + fullIndex, item);
	RebuildShown();
	return true;
}


bool
BOutlineListView::AddUnder(BListItem* item, BListItem* superitem)
{
	int32 superIndex = FullListIndexOf(superitem);
	if (item == nullptr || superIndex < 0)
		return false;
	item->SetOutlineLevel(superitem->OutlineLevel() + 1);
	return AddItem(item, SubtreeEnd(superIndex));
}


// The full-list index just past the rows under fullIndex.
int32
BOutlineListView::SubtreeEnd(int32 fullIndex) const
{
	uint32 level = fFullList[fullIndex]->OutlineLevel();
	int32 end = fullIndex + 1;
	while (end < FullListCountItems() && fFullList[end]->OutlineLevel() > level)
		end++;
	return end;
}


bool
BOutlineListView::RemoveItem(BListItem* item)
{
	int32 index = FullListIndexOf(item);
	if (index < 0)
		return false;
	RemoveItem(index);
	return true;
}


// Removes the row; the rows under it stay in the list (the caller owns every
// row and decides about them).
BListItem*
BOutlineListView::RemoveItem(int32 fullIndex)
{
	if (fullIndex < 0 || fullIndex >= FullListCountItems())
		return nullptr;
	BListItem* item = fFullList[fullIndex];
	fFullList.erase(fFullList.begin() + fullIndex);
	RebuildShown();
	return item;
}


void
BOutlineListView::MakeEmpty()
{
	fFullList.clear();
	BListView::MakeEmpty();
}


void
BOutlineListView::Expand(BListItem* item)
{
	if (item == nullptr || item->IsExpanded())
		return;
	item->SetExpanded(true);
	RebuildShown();
}


void
BOutlineListView::Collapse(BListItem* item)
{
	if (item == nullptr || !item->IsExpanded())
		return;
	item->SetExpanded(false);
	// Rows that disappear lose their selection.
	int32 index = FullListIndexOf(item);
	if (index >= 0) {
		for (int32 i = index + 1; i < SubtreeEnd(index); i++)
			fFullList[i]->Deselect();
	}
	RebuildShown();
}


bool
BOutlineListView::IsExpanded(int32 fullIndex) const
{
	BListItem* item = FullListItemAt(fullIndex);
	return item != nullptr && item->IsExpanded();
}


BListItem*
BOutlineListView::Superitem(const BListItem* item) const
{
	int32 index = FullListIndexOf(item);
	if (index < 0 || item->OutlineLevel() == 0)
		return nullptr;
	for (int32 i = index - 1; i >= 0; i--) {
		if (fFullList[i]->OutlineLevel() < item->OutlineLevel())
			return fFullList[i];
	}
	return nullptr;
}


int32
BOutlineListView::FullListCountItems() const
{
	return static_cast<int32>(fFullList.size());
}


BListItem*
BOutlineListView::FullListItemAt(int32 fullIndex) const
{
	if (fullIndex < 0 || fullIndex >= FullListCountItems())
		return nullptr;
	return fFullList[fullIndex];
}


int32
BOutlineListView::FullListIndexOf(const BListItem* item) const
{
	auto found = std::find(fFullList.begin(), fFullList.end(), item);
	return found == fFullList.end() ? -1 : static_cast<int32>(found - fFullList.begin());
}


int32
BOutlineListView::CountItemsUnder(BListItem* under, bool oneLevelOnly) const
{
	int32 count = 0;
	while (ItemUnderAt(under, oneLevelOnly, count) != nullptr)
		count++;
	return count;
}


BListItem*
BOutlineListView::ItemUnderAt(BListItem* under, bool oneLevelOnly, int32 index) const
{
	int32 start = 0;
	int32 end = FullListCountItems();
	uint32 level = 0;
	if (under != nullptr) {
		int32 superIndex = FullListIndexOf(under);
		if (superIndex < 0)
			return nullptr;
		start = superIndex + 1;
		end = SubtreeEnd(superIndex);
		level = under->OutlineLevel() + 1;
	}
	int32 seen = 0;
	for (int32 i = start; i < end; i++) {
		if (oneLevelOnly && fFullList[i]->OutlineLevel() != level)
			continue;
		if (seen == index)
			return fFullList[i];
		seen++;
	}
	return nullptr;
}


bool
BOutlineListView::HasSubitems(int32 fullIndex) const
{
	return fullIndex >= 0 && SubtreeEnd(fullIndex) > fullIndex + 1;
}


void
BOutlineListView::Draw(BRect updateRect)
{
	BRect bounds = Bounds();
	float top = 0;
	rgb_color high = HighColor();
	for (int32 i = 0; i < CountItems(); i++) {
		BListItem* item = ItemAt(i);
		float height = item->Height();
		BRect frame(bounds.left, top, bounds.right, top + height - 1);
		top += height;
		if (frame.bottom < updateRect.top)
			continue;
		if (frame.top > updateRect.bottom)
			break;
		SetHighColor(ViewColor());
		FillRect(BRect(frame.left, frame.top, frame.left + kLatchWidth - 1, frame.bottom));
		SetHighColor(high);
		BRect itemFrame = frame;
		itemFrame.left += kLatchWidth;
		item->DrawItem(this, itemFrame, true);
		// The latch goes over the row's indentation, after the row.
		if (HasSubitems(FullListIndexOf(item))) {
			SetHighColor(80, 80, 80);
			float x = frame.left + 2 + 10.0f * static_cast<float>(item->OutlineLevel());
			float middle = std::floor((frame.top + frame.bottom) / 2);
			if (item->IsExpanded()) {
				FillTriangle(BPoint(x, middle - 2), BPoint(x + 8, middle - 2),
				             BPoint(x + 4, middle + 2));
			} else {
				FillTriangle(BPoint(x + 2, middle - 4), BPoint(x + 6, middle),
				             BPoint(x + 2, middle + 4));
			}
			SetHighColor(high);
		}
	}
}


// A click in the latch margin of a row that has sub-rows opens or closes it;
// other clicks select as in any list.
void
BOutlineListView::MouseDown(BPoint where)
{
	int32 index = IndexOf(where);
	BListItem* item = ItemAt(index);
	if (item != nullptr && HasSubitems(FullListIndexOf(item))) {
		float indent = 10.0f * static_cast<float>(item->OutlineLevel());
		if (where.x < Bounds().left + indent + kLatchWidth) {
			if (item->IsExpanded())
				Collapse(item);
			else
				Expand(item);
			return;
		}
	}
	BListView::MouseDown(where);
}


void
BOutlineListView::RebuildShown()
{
	fItems.clear();
	int32 i = 0;
	while (i < FullListCountItems()) {
		BListItem* item = fFullList[i];
		fItems.push_back(item);
		if (item->IsExpanded())
			i++;
		else
			i = SubtreeEnd(i);
	}
	ItemsChanged();
}
