// A line of text that the user cannot change. The text is drawn on the
// baseline at the font's ascent from the top, aligned in the view's width.
#ifndef STRING_VIEW_H
#define STRING_VIEW_H

#include <string>

#include "View.h"

class BStringView : public BView
{
public:
	BStringView(BRect frame, const char* name, const char* text,
	            uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP, uint32 flags = B_WILL_DRAW);
	~BStringView() override;

	void SetText(const char* text);
	const char* Text() const;
	void SetAlignment(alignment flag);
	alignment Alignment() const { return fAlignment; }
	void Draw(BRect updateRect) override;
	void AttachedToWindow() override;

private:
	std::string fText;
	alignment fAlignment;
};

#endif // STRING_VIEW_H
