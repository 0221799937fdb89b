// A help page as a reader sees it: a title, headings, paragraphs and list
// items, each made of runs of plain, bold, italic or fixed-width text, and the
// lines those blocks wrap into at a given width. The help window draws the
// lines; quickstep-cli prints the page as plain text.
#ifndef HELP_PAGE_H
#define HELP_PAGE_H

#include <string>
#include <vector>

#include <SupportDefs.h>

#include "lib/LibString.h"

class xmlTag;

// Styles of a run, combined as bits.
enum {
	kHelpPlain = 0,
	kHelpBold = 0x1,
	kHelpItalic = 0x2,
	kHelpFixed = 0x4,
};

enum help_block_kind {
	kHelpTitleBlock,
	kHelpHeadingBlock,
	kHelpTextBlock,
	// A list item: a marker ("1.", or a bullet) hangs left of the text.
	kHelpItemBlock,
};

struct HelpRun {
	std::string text;
	uint32 style;
};

struct HelpBlock {
	help_block_kind kind;
	// A paragraph's space separates this block from the one before.
	bool gapBefore;
	// For list items: "-" for a bullet, "1." and so on for numbered items.
	std::string marker;
	std::vector<HelpRun> runs;

	std::string Text() const;
};

// Font measurements the layout needs, per block kind and run style.
class HelpMetrics
{
public:
	virtual ~HelpMetrics();
	virtual float Width(const char* text, int32 length, help_block_kind kind, uint32 style) = 0;
	// Ascent and descent of a block kind's lines.
	virtual float Ascent(help_block_kind kind) = 0;
	virtual float Descent(help_block_kind kind) = 0;
};

// Text of one style at x on a line.
struct HelpFragment {
	float x;
	std::string text;
	uint32 style;
};

struct HelpLine {
	help_block_kind kind;
	float top;
	float baseline;
	float bottom;
	// The list item's marker, drawn at markerX; empty on other lines.
	std::string marker;
	float markerX;
	std::vector<HelpFragment> fragments;
};

class HelpPage
{
public:
	// Deeper nests of inline elements are shown as their plain text.
	static const int32 kMaxNesting = 16;

	HelpPage();

	// The page's text from a PAGE element (or any element): P starts a
	// paragraph, BR a line, H a heading; B and STRONG are bold, I and EM
	// italic, TT and CODE fixed width; any other element shows its text. A
	// line that starts with "- " is a bulleted item, one that starts with a
	// number and a full stop a numbered item. Replaces what the page held,
	// the title included.
	void Read(xmlTag& page);
	// Puts a title block before the page's blocks (replacing any title).
	void SetTitle(const char* title);
	void Clear();

	bool IsEmpty() const { return fBlocks.empty(); }
	const std::vector<HelpBlock>& Blocks() const { return fBlocks; }

	// The page as plain text: blocks on lines of their own, a blank line
	// before paragraphs and headings, list items with their markers.
	LibString Text() const;

	// Wraps the blocks into lines at most width wide (a word wider than
	// that is broken); answers the height of all lines.
	float Layout(float width, HelpMetrics& metrics, std::vector<HelpLine>& lines) const;

private:
	std::vector<HelpBlock> fBlocks;
};

#endif // HELP_PAGE_H
