// A block of text drawn with word wrap inside the view's text rectangle. This
// version shows text only: it is neither editable nor selectable.
#ifndef TEXT_VIEW_H
#define TEXT_VIEW_H

#include <string>

#include "View.h"

class BTextView : public BView
{
public:
	// textRect is in the view's coordinates.
	BTextView(BRect frame, const char* name, BRect textRect, uint32 resizingMode,
	          uint32 flags = B_WILL_DRAW);
	~BTextView() override;

	void SetText(const char* text);
	void Insert(const char* text);
	const char* Text() const;
	int32 TextLength() const;
	void SetTextRect(BRect rect);
	BRect TextRect() const { return fTextRect; }
	void SetWordWrap(bool wrap);
	bool DoesWordWrap() const { return fWrap; }
	void MakeEditable(bool editable = true);
	bool IsEditable() const { return fEditable; }
	void MakeSelectable(bool selectable = true);
	bool IsSelectable() const { return fSelectable; }
	void SetAlignment(alignment flag);
	// Height of the wrapped text in pixels.
	float TextHeight() const;
	void Draw(BRect updateRect) override;

private:
	std::string fText;
	BRect fTextRect;
	bool fWrap;
	bool fEditable;
	bool fSelectable;
	alignment fAlignment;
};

#endif // TEXT_VIEW_H
