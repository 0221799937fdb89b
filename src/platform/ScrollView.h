// A frame around a target view with scroll bars at its right and bottom. The
// scroll view takes the target's place in its parent: its frame is the
// target's frame grown by the border and the scroll bars, and the target moves
// inside it.
#ifndef SCROLL_VIEW_H
#define SCROLL_VIEW_H

#include "View.h"

class BScrollBar;

class BScrollView : public BView
{
public:
	BScrollView(const char* name, BView* target, uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
	            uint32 flags = 0, bool horizontal = false, bool vertical = false,
	            border_style border = B_FANCY_BORDER);
	~BScrollView() override;

	BScrollBar* ScrollBar(orientation direction) const;
	BView* Target() const { return fTarget; }
	void SetBorder(border_style border);
	border_style Border() const { return fBorder; }
	void Draw(BRect updateRect) override;

private:
	BView* fTarget;
	BScrollBar* fHorizontal;
	BScrollBar* fVertical;
	border_style fBorder;
};

#endif // SCROLL_VIEW_H
