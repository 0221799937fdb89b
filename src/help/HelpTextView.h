// The help window's page pane: shows a page element as a reader expects help
// to look (a title, headings, paragraphs, lists, emphasis), wrapped to the
// pane's width again whenever the pane changes size. Inside a scroll view it
// keeps the vertical scroll bar's range in line with the page.
#ifndef HELP_TEXT_VIEW_H
#define HELP_TEXT_VIEW_H

#include <vector>

#include <Font.h>
#include <View.h>

#include "help/HelpPage.h"

class xmlTag;

class HelpTextView : public BView
{
public:
	// Space around the text, in pixels.
	static constexpr float kMargin = 8;

	HelpTextView(BRect frame, const char* name, uint32 resizingMode);
	~HelpTextView() override;

	// Shows page's text, under title when there is one, from the top.
	void ShowTag(xmlTag& page, const char* title);
	void Clear();
	bool IsEmpty() const { return fPage.IsEmpty(); }
	const HelpPage& Page() const { return fPage; }
	// The page's lines at the present width (view coordinates less the
	// margin), and their height.
	const std::vector<HelpLine>& Lines() const { return fLines; }
	float TextHeight() const { return fHeight; }

	static BFont FontFor(help_block_kind kind, uint32 style);

	void AttachedToWindow() override;
	void Draw(BRect updateRect) override;
	void FrameResized(float newWidth, float newHeight) override;

private:
	void ShowFromTop();
	void Relayout();
	void FixupScrollBar();

	HelpPage fPage;
	std::vector<HelpLine> fLines;
	float fHeight;
	float fLaidOutWidth;
};

#endif // HELP_TEXT_VIEW_H
