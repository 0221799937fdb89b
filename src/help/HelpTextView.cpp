#include "help/HelpTextView.h"

#include <algorithm>
#include <cmath>

#include <ScrollBar.h>
#include <ScrollView.h>

#include "help/xmlTag.h"

namespace {

const rgb_color kPaper = {255, 255, 255, 255};
const rgb_color kInk = {0, 0, 0, 255};
const rgb_color kHeadingInk = {24, 56, 112, 255};
const rgb_color kRule = {176, 176, 176, 255};


float
SizeOf(help_block_kind kind)
{
	switch (kind) {
		case kHelpTitleBlock:
			return 16;
		case kHelpHeadingBlock:
			return 13;
		default:
			return 12;
	}
}


class FontMetrics : public HelpMetrics
{
public:
	float Width(const char* text, int32 length, help_block_kind kind, uint32 style) override
	{
		return HelpTextView::FontFor(kind, style).StringWidth(text, length);
	}

	float Ascent(help_block_kind kind) override { return Height(kind).ascent; }
	float Descent(help_block_kind kind) override { return Height(kind).descent; }

private:
	font_height Height(help_block_kind kind)
	{
		font_height height;
		HelpTextView::FontFor(kind, kHelpPlain).GetHeight(&height);
		height.ascent = std::ceil(height.ascent);
		height.descent = std::ceil(height.descent);
		return height;
	}
};

} // namespace


HelpTextView::HelpTextView(BRect frame, const char* name, uint32 resizingMode)
    : BView(frame, name, resizingMode, B_WILL_DRAW | B_FRAME_EVENTS), fHeight(0), fLaidOutWidth(-1)
{
	SetViewColor(kPaper);
	SetLowColor(kPaper);
}


HelpTextView::~HelpTextView()
{
}


BFont
HelpTextView::FontFor(help_block_kind kind, uint32 style)
{
	bool heading = kind == kHelpTitleBlock || kind == kHelpHeadingBlock;
	BFont font((style & kHelpFixed) != 0 ? B_FIXED_FONT_KIND : B_PLAIN_FONT_KIND, SizeOf(kind));
	uint16 face = 0;
	const uint16 regular = B_REGULAR_FACE;
	if (heading || (style & kHelpBold) != 0)
		face |= B_BOLD_FACE;
	if ((style & kHelpItalic) != 0)
		face |= B_ITALIC_FACE;
	font.SetFace(face != 0 ? face : regular);
	return font;
}


void
HelpTextView::ShowTag(xmlTag& page, const char* title)
{
	fPage.Read(page);
	fPage.SetTitle(title);
	ShowFromTop();
}


void
HelpTextView::Clear()
{
	fPage.Clear();
	ShowFromTop();
}


// A new page: laid out afresh and shown from its top.
void
HelpTextView::ShowFromTop()
{
	fLaidOutWidth = -1;
	Relayout();
	ScrollTo(BPoint(0, 0));
	FixupScrollBar();
	Invalidate();
}


void
HelpTextView::AttachedToWindow()
{
	BView::AttachedToWindow();
	Relayout();
	FixupScrollBar();
}


void
HelpTextView::FrameResized(float newWidth, float newHeight)
{
	BView::FrameResized(newWidth, newHeight);
	Relayout();
	FixupScrollBar();
	Invalidate();
}


void
HelpTextView::Relayout()
{
	float width = std::max(1.0f, Bounds().Width() + 1 - 2 * kMargin);
	if (width == fLaidOutWidth)
		return;
	FontMetrics metrics;
	fHeight = fPage.Layout(width, metrics, fLines);
	fLaidOutWidth = width;
}


void
HelpTextView::FixupScrollBar()
{
	BScrollView* scrollView = dynamic_cast<BScrollView*>(Parent());
	BScrollBar* bar = scrollView != nullptr ? scrollView->ScrollBar(B_VERTICAL) : nullptr;
	if (bar == nullptr)
		return;
	float total = fHeight + 2 * kMargin;
	float visible = Bounds().Height() + 1;
	bar->SetRange(0, std::max(0.0f, total - visible));
	bar->SetProportion(total > visible ? visible / total : 1.0f);
	float step = std::ceil(SizeOf(kHelpTextBlock) * 1.5f);
	bar->SetSteps(step, std::max(step, visible - step));
}


void
HelpTextView::Draw(BRect updateRect)
{
	for (size_t i = 0; i < fLines.size(); i++) {
		const HelpLine& line = fLines[i];
		bool heading = line.kind == kHelpTitleBlock || line.kind == kHelpHeadingBlock;
		// A rule across the pane sets the title off from the page.
		bool lastTitleLine = line.kind == kHelpTitleBlock &&
		                     (i + 1 == fLines.size() || fLines[i + 1].kind != kHelpTitleBlock);
		float bottom = kMargin + line.bottom + (lastTitleLine ? 4 : 0);
		if (bottom < updateRect.top || kMargin + line.top > updateRect.bottom)
			continue;
		SetHighColor(heading ? kHeadingInk : kInk);
		if (!line.marker.empty()) {
			BFont font = FontFor(line.kind, kHelpPlain);
			SetFont(&font);
			DrawString(line.marker.c_str(),
			           BPoint(kMargin + line.markerX, kMargin + line.baseline));
		}
		for (const HelpFragment& fragment : line.fragments) {
			BFont font = FontFor(line.kind, fragment.style);
			SetFont(&font);
			DrawString(fragment.text.c_str(),
			           BPoint(kMargin + fragment.x, kMargin + line.baseline));
		}
		if (lastTitleLine) {
			SetHighColor(kRule);
			StrokeLine(BPoint(kMargin, bottom), BPoint(Bounds().right - kMargin, bottom));
		}
	}
}
