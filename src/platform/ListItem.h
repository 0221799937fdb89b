// A row of a list view. The list asks it to draw itself in a frame of the
// list view's coordinates; its height comes from Update (the list's font) or
// SetHeight.
#ifndef LIST_ITEM_H
#define LIST_ITEM_H

#include <string>

#include "Point.h"
#include "Rect.h"
#include "SupportDefs.h"

class BFont;
class BView;

class BListItem
{
public:
	BListItem(uint32 outlineLevel = 0, bool expanded = true);
	virtual ~BListItem();

	BListItem(const BListItem&) = delete;
	BListItem& operator=(const BListItem&) = delete;

	// complete: the whole frame must be painted (not only a change of the
	// selection). Called with owner locked, usually from owner's Draw.
	virtual void DrawItem(BView* owner, BRect frame, bool complete = false) = 0;
	// Sets the height from font (ascent + descent + leading, rounded up, plus
	// 2) and the width from owner's width.
	virtual void Update(BView* owner, const BFont* font);
	// The tool tip for the point where (owner's coordinates) of the row drawn
	// in frame, or empty for none: rows that cut a text short give it whole
	// here. Not a BeOS call; the list asks as the pointer moves.
	virtual std::string ToolTipAt(BView* owner, BRect frame, BPoint where) const;

	float Height() const { return fHeight; }
	float Width() const { return fWidth; }
	void SetHeight(float height) { fHeight = height; }
	void SetWidth(float width) { fWidth = width; }
	bool IsSelected() const { return fSelected; }
	void Select() { fSelected = true; }
	void Deselect() { fSelected = false; }
	void SetEnabled(bool enabled) { fEnabled = enabled; }
	bool IsEnabled() const { return fEnabled; }
	bool IsExpanded() const { return fExpanded; }
	void SetExpanded(bool expanded) { fExpanded = expanded; }
	uint32 OutlineLevel() const { return fOutlineLevel; }
	void SetOutlineLevel(uint32 level) { fOutlineLevel = level; }

private:
	float fWidth;
	float fHeight;
	uint32 fOutlineLevel;
	bool fSelected;
	bool fEnabled;
	bool fExpanded;
};

// A row showing one line of text, indented by its outline level.
class BStringItem : public BListItem
{
public:
	BStringItem(const char* text, uint32 outlineLevel = 0, bool expanded = true);
	~BStringItem() override;

	void DrawItem(BView* owner, BRect frame, bool complete = false) override;
	void Update(BView* owner, const BFont* font) override;
	virtual void SetText(const char* text);
	const char* Text() const;

private:
	std::string fText;
	float fBaselineOffset;
};

#endif // LIST_ITEM_H
