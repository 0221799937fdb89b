// A box: a frame with an optional label in its top edge that groups views.
// B_FANCY_BORDER is an engraved line, B_PLAIN_BORDER a plain one.
#ifndef BOX_H
#define BOX_H

#include <string>

#include "View.h"

class BBox : public BView
{
public:
	BBox(BRect frame, const char* name = nullptr,
	     uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
	     uint32 flags = B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE_JUMP,
	     border_style border = B_FANCY_BORDER);
	~BBox() override;

	void SetBorder(border_style border);
	border_style Border() const { return fBorder; }
	void SetLabel(const char* label);
	const char* Label() const;
	void Draw(BRect updateRect) override;

private:
	border_style fBorder;
	std::string fLabel;
	bool fHasLabel;
};

#endif // BOX_H
