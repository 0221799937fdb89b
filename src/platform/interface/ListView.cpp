#include "ListView.h"

#include <algorithm>

#include "ListItem.h"
#include "Message.h"
#include "OS.h"
#include "ScrollBar.h"
#include "ScrollView.h"
#include "Window.h"

namespace {

// Two clicks on the same row within this time (microseconds) invoke it.
const bigtime_t kDoubleClickTime = 500000;

} // namespace


BListView::BListView(BRect frame, const char* name, list_view_type type, uint32 resizingMode,
                     uint32 flags)
    : BView(frame, name, resizingMode, flags), fType(type), fLastClickIndex(-1), fLastClickTime(0)
{
}


BListView::~BListView()
{
}


bool
BListView::AddItem(BListItem* item)
{
	return AddItem(item, CountItems());
}


bool
BListView::AddItem(BListItem* item, int32 index)
{
	if (item == nullptr || index < 0 || index > CountItems())
		return false;
	BFont font;
	GetFont(&font);
	item->Update(this, &font);
	fItems.insert(fItems.begin() + index, item);
	ItemsChanged();
	return true;
}


bool
BListView::RemoveItem(BListItem* item)
{
	int32 index = IndexOf(item);
	if (index < 0)
		return false;
	BListView::RemoveItem(index);
	return true;
}


BListItem*
BListView::RemoveItem(int32 index)
{
	if (index < 0 || index >= CountItems())
		return nullptr;
	BListItem* item = fItems[index];
	fItems.erase(fItems.begin() + index);
	ItemsChanged();
	return item;
}


void
BListView::MakeEmpty()
{
	fItems.clear();
	fLastClickIndex = -1;
	ScrollTo(BPoint(Bounds().left, 0));
	ItemsChanged();
}


BListItem*
BListView::ItemAt(int32 index) const
{
	if (index < 0 || index >= CountItems())
		return nullptr;
	return fItems[index];
}


BListItem*
BListView::FirstItem() const
{
	return ItemAt(0);
}


BListItem*
BListView::LastItem() const
{
	return ItemAt(CountItems() - 1);
}


int32
BListView::IndexOf(const BListItem* item) const
{
	auto found = std::find(fItems.begin(), fItems.end(), item);
	return found == fItems.end() ? -1 : static_cast<int32>(found - fItems.begin());
}


int32
BListView::IndexOf(BPoint point) const
{
	float top = 0;
	for (int32 i = 0; i < CountItems(); i++) {
		float bottom = top + fItems[i]->Height();
		if (point.y >= top && point.y < bottom)
			return i;
		top = bottom;
	}
	return -1;
}


bool
BListView::HasItem(const BListItem* item) const
{
	return IndexOf(item) >= 0;
}


int32
BListView::CountItems() const
{
	return static_cast<int32>(fItems.size());
}


bool
BListView::IsEmpty() const
{
	return fItems.empty();
}


void
BListView::SortItems(int (*compare)(const void*, const void*))
{
	if (compare == nullptr)
		return;
	std::stable_sort(fItems.begin(), fItems.end(),
	                 [compare](BListItem* a, BListItem* b) { return compare(&a, &b) < 0; });
	Invalidate();
}


// #pragma mark - selection


int32
BListView::CurrentSelection(int32 index) const
{
	int32 seen = 0;
	for (int32 i = 0; i < CountItems(); i++) {
		if (fItems[i]->IsSelected()) {
			if (seen == index)
				return i;
			seen++;
		}
	}
	return -1;
}


void
BListView::Select(int32 index, bool extend)
{
	Select(index, index, extend);
}


void
BListView::Select(int32 from, int32 to, bool extend)
{
	if (from < 0 || to >= CountItems() || from > to)
		return;
	if (fType == B_SINGLE_SELECTION_LIST) {
		extend = false;
		to = from;
	}
	bool changed = false;
	if (!extend) {
		for (int32 i = 0; i < CountItems(); i++) {
			if ((i < from || i > to) && fItems[i]->IsSelected()) {
				fItems[i]->Deselect();
				changed = true;
			}
		}
	}
	for (int32 i = from; i <= to; i++) {
		if (!fItems[i]->IsSelected()) {
			fItems[i]->Select();
			changed = true;
		}
	}
	if (!changed)
		return;
	Invalidate();
	SelectionChanged();
	SendSelection();
}


void
BListView::Deselect(int32 index)
{
	BListItem* item = ItemAt(index);
	if (item == nullptr || !item->IsSelected())
		return;
	item->Deselect();
	Invalidate();
	SelectionChanged();
	SendSelection();
}


void
BListView::DeselectAll()
{
	bool changed = false;
	for (BListItem* item : fItems) {
		if (item->IsSelected()) {
			item->Deselect();
			changed = true;
		}
	}
	if (!changed)
		return;
	Invalidate();
	SelectionChanged();
	SendSelection();
}


bool
BListView::IsItemSelected(int32 index) const
{
	BListItem* item = ItemAt(index);
	return item != nullptr && item->IsSelected();
}


void
BListView::ScrollToSelection()
{
	int32 index = CurrentSelection();
	if (index < 0)
		return;
	BRect frame = ItemFrame(index);
	BRect bounds = Bounds();
	float top = bounds.top;
	if (frame.top < bounds.top)
		top = frame.top;
	else if (frame.bottom > bounds.bottom)
		top = frame.bottom - bounds.Height();
	if (top == bounds.top)
		return;
	BScrollView* scrollView = dynamic_cast<BScrollView*>(Parent());
	BScrollBar* bar = scrollView != nullptr ? scrollView->ScrollBar(B_VERTICAL) : nullptr;
	if (bar != nullptr)
		bar->SetValue(top);
	else
		ScrollTo(BPoint(bounds.left, top));
}


void
BListView::SelectionChanged()
{
}


void
BListView::SetSelectionMessage(BMessage* message)
{
	fSelectionMessage.reset(message);
}


BMessage*
BListView::SelectionMessage() const
{
	return fSelectionMessage.get();
}


void
BListView::SetInvocationMessage(BMessage* message)
{
	SetMessage(message);
}


BMessage*
BListView::InvocationMessage() const
{
	return Message();
}


status_t
BListView::Invoke(BMessage* message)
{
	BMessage* source = message != nullptr ? message : Message();
	if (source == nullptr)
		return B_BAD_VALUE;
	BMessage copy(*source);
	copy.AddPointer("source", this);
	for (int32 i = 0; CurrentSelection(i) >= 0; i++)
		copy.AddInt32("index", CurrentSelection(i));
	return BInvoker::Invoke(&copy);
}


void
BListView::SendSelection()
{
	if (fSelectionMessage == nullptr)
		return;
	BMessage copy(*fSelectionMessage);
	copy.AddInt64("when", system_time());
	copy.AddPointer("source", this);
	for (int32 i = 0; CurrentSelection(i) >= 0; i++)
		copy.AddInt32("index", CurrentSelection(i));
	Messenger().SendMessage(&copy);
}


BMessenger
BListView::DefaultTarget() const
{
	if (Window() == nullptr)
		return BMessenger();
	return BMessenger(Window());
}


// #pragma mark - drawing and events


BRect
BListView::ItemFrame(int32 index) const
{
	BRect bounds = Bounds();
	float top = 0;
	for (int32 i = 0; i < index && i < CountItems(); i++)
		top += fItems[i]->Height();
	float height = index >= 0 && index < CountItems() ? fItems[index]->Height() : 0;
	return BRect(bounds.left, top, bounds.right, top + height - 1);
}


void
BListView::InvalidateItem(int32 index)
{
	Invalidate(ItemFrame(index));
}


void
BListView::Draw(BRect updateRect)
{
	BRect bounds = Bounds();
	float top = 0;
	for (int32 i = 0; i < CountItems(); i++) {
		float height = fItems[i]->Height();
		BRect frame(bounds.left, top, bounds.right, top + height - 1);
		top += height;
		if (frame.bottom < updateRect.top)
			continue;
		if (frame.top > updateRect.bottom)
			break;
		fItems[i]->DrawItem(this, frame, true);
	}
}


void
BListView::MouseDown(BPoint where)
{
	int32 index = IndexOf(where);
	if (index < 0)
		return;
	bigtime_t now = system_time();
	bool doubleClick = index == fLastClickIndex && now - fLastClickTime < kDoubleClickTime;
	fLastClickIndex = doubleClick ? -1 : index;
	fLastClickTime = now;
	Select(index);
	if (doubleClick)
		Invoke();
}


void
BListView::MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage)
{
	BView::MouseMoved(where, transit, dragMessage);
	const int32 index = transit == B_EXITED_VIEW ? -1 : IndexOf(where);
	const BRect frame = index >= 0 ? ItemFrame(index) : BRect();
	const std::string tip = index >= 0 ? fItems[index]->ToolTipAt(this, frame, where) : "";
	const bool changed = tip != fRowTip;
	fRowTip = tip;
	// Shown again on every move: FLTK drops an area's tip when the pointer
	// enters the view, after this view has been told of the move.
	if (changed || !fRowTip.empty())
		ShowAreaToolTip(frame, fRowTip.c_str());
}


void
BListView::KeyDown(const char* bytes, int32 numBytes)
{
	if (numBytes <= 0 || bytes == nullptr)
		return;
	int32 selected = CurrentSelection();
	switch (bytes[0]) {
		case B_UP_ARROW:
			if (selected > 0) {
				Select(selected - 1);
				ScrollToSelection();
			}
			break;
		case B_DOWN_ARROW:
			if (selected < CountItems() - 1) {
				Select(selected + 1);
				ScrollToSelection();
			}
			break;
		case B_ENTER:
			if (selected >= 0)
				Invoke();
			break;
		default:
			BView::KeyDown(bytes, numBytes);
			break;
	}
}


void
BListView::AttachedToWindow()
{
	BView::AttachedToWindow();
	FixupScrollBar();
}


void
BListView::FrameResized(float newWidth, float newHeight)
{
	BView::FrameResized(newWidth, newHeight);
	FixupScrollBar();
}


void
BListView::SetFont(const BFont* font, uint32 mask)
{
	BView::SetFont(font, mask);
	BFont current;
	GetFont(&current);
	for (BListItem* item : fItems)
		item->Update(this, &current);
	ItemsChanged();
}


void
BListView::SetFontSize(float size)
{
	BView::SetFontSize(size);
	BFont current;
	GetFont(&current);
	for (BListItem* item : fItems)
		item->Update(this, &current);
	ItemsChanged();
}


void
BListView::ItemsChanged()
{
	FixupScrollBar();
	Invalidate();
}


// Inside a scroll view the vertical bar covers the rows' total height.
void
BListView::FixupScrollBar()
{
	BScrollView* scrollView = dynamic_cast<BScrollView*>(Parent());
	if (scrollView == nullptr)
		return;
	BScrollBar* bar = scrollView->ScrollBar(B_VERTICAL);
	if (bar == nullptr)
		return;
	float total = 0;
	for (BListItem* item : fItems)
		total += item->Height();
	float visible = Bounds().Height() + 1;
	float max = std::max(0.0f, total - visible);
	bar->SetRange(0, max);
	bar->SetProportion(total > 0 ? std::min(1.0f, visible / total) : 1.0f);
	float step = fItems.empty() ? 12 : fItems.front()->Height();
	bar->SetSteps(step, std::max(step, visible - step));
}
