// A list of rows (BListItem), drawn one under the other from the top of the
// bounds. Items are not owned: RemoveItem and MakeEmpty hand them back, as on
// BeOS; the caller deletes them. A click selects the row under it and sends
// the selection message; a double click (or Enter) sends the invocation
// message (int32 "index" added). Inside a BScrollView the list keeps the
// vertical scroll bar's range in line with its rows.
#ifndef LIST_VIEW_H
#define LIST_VIEW_H

#include <memory>
#include <string>
#include <vector>

#include "Invoker.h"
#include "View.h"

class BListItem;

enum list_view_type {
	B_SINGLE_SELECTION_LIST,
	B_MULTIPLE_SELECTION_LIST,
};

class BListView : public BView, public BInvoker
{
public:
	BListView(BRect frame, const char* name, list_view_type type = B_SINGLE_SELECTION_LIST,
	          uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
	          uint32 flags = B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE);
	~BListView() override;

	virtual bool AddItem(BListItem* item);
	virtual bool AddItem(BListItem* item, int32 index);
	virtual bool RemoveItem(BListItem* item);
	virtual BListItem* RemoveItem(int32 index);
	// Forgets every item without deleting it.
	virtual void MakeEmpty();
	BListItem* ItemAt(int32 index) const;
	BListItem* FirstItem() const;
	BListItem* LastItem() const;
	int32 IndexOf(const BListItem* item) const;
	int32 IndexOf(BPoint point) const;
	bool HasItem(const BListItem* item) const;
	int32 CountItems() const;
	bool IsEmpty() const;
	void SortItems(int (*compare)(const void*, const void*));

	// The index-th selected row (in list order), or -1.
	int32 CurrentSelection(int32 index = 0) const;
	void Select(int32 index, bool extend = false);
	void Select(int32 from, int32 to, bool extend = false);
	void Deselect(int32 index);
	void DeselectAll();
	bool IsItemSelected(int32 index) const;
	void ScrollToSelection();
	// Called after the selection changed, before the selection message.
	virtual void SelectionChanged();

	// Messages are taken over.
	void SetSelectionMessage(BMessage* message);
	BMessage* SelectionMessage() const;
	void SetInvocationMessage(BMessage* message);
	BMessage* InvocationMessage() const;
	status_t Invoke(BMessage* message = nullptr) override;

	BRect ItemFrame(int32 index) const;
	void InvalidateItem(int32 index);
	list_view_type ListType() const { return fType; }

	void Draw(BRect updateRect) override;
	void MouseDown(BPoint where) override;
	// Shows the tool tip of the row part under the pointer.
	void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
	void KeyDown(const char* bytes, int32 numBytes) override;
	void AttachedToWindow() override;
	void FrameResized(float newWidth, float newHeight) override;
	void SetFont(const BFont* font, uint32 mask = B_FONT_ALL);
	void SetFontSize(float size);

protected:
	BMessenger DefaultTarget() const override;
	// The rows on show; subclasses with hidden rows (outline lists) fill it.
	std::vector<BListItem*> fItems;
	void ItemsChanged();

private:
	void SendSelection();
	void FixupScrollBar();

	list_view_type fType;
	std::unique_ptr<BMessage> fSelectionMessage;
	int32 fLastClickIndex;
	bigtime_t fLastClickTime;
	// The row tool tip on show; its text must outlive the showing.
	std::string fRowTip;
};

#endif // LIST_VIEW_H
