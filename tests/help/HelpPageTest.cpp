#include "help/HelpPage.h"

#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "help/xmlParser.h"
#include "help/xmlTag.h"
#include "platform/TempDirectory.h"

namespace {

// Reads the first PAGE element of text through the parser, as the help does.
HelpPage
ReadPage(const std::string& text)
{
	TempDirectory dir;
	std::string path = dir.Path("page.help");
	std::ofstream(path) << "<PAGE NAME=\"p\">" << text << "</PAGE>\n";
	xmlParser parser(path.c_str());
	xmlTag tag;
	EXPECT_TRUE(parser.FindTag("PAGE", tag));
	HelpPage page;
	page.Read(tag);
	return page;
}


// Every byte one pixel wide; lines 8 above and 2 below the baseline.
class FixedMetrics : public HelpMetrics
{
public:
	float Width(const char*, int32 length, help_block_kind, uint32) override { return length; }
	float Ascent(help_block_kind) override { return 8; }
	float Descent(help_block_kind) override { return 2; }
};

} // namespace


TEST(HelpPageTest, TagsBecomeBlocksAndPlainText)
{
	struct Case {
		const char* page;
		std::vector<help_block_kind> kinds;
		const char* text;
	};
	const Case cases[] = {
	    {"First. <BR/>\n Second. <P/> Next\n paragraph.",
	     {kHelpTextBlock, kHelpTextBlock, kHelpTextBlock},
	     "First.\nSecond.\n\nNext paragraph."},
	    {"Boxes: <BR/>\n- Memory <BR/>\n- Disk <P/>\nEnd.",
	     {kHelpTextBlock, kHelpItemBlock, kHelpItemBlock, kHelpTextBlock},
	     "Boxes:\n- Memory\n- Disk\n\nEnd."},
	    {"<H>Passes</H>\nOne pass. <P/> <H>Order</H>\nIn order.",
	     {kHelpHeadingBlock, kHelpTextBlock, kHelpHeadingBlock, kHelpTextBlock},
	     "Passes\n\nOne pass.\n\nOrder\n\nIn order."},
	    // Emphasis and unknown elements show their text, never a tag.
	    {"Press <B>Shift+F1</B>, then <X>wait</X> <TT>a</TT>.",
	     {kHelpTextBlock},
	     "Press Shift+F1, then wait a."},
	    // Neither a dash without a space nor a year is a list.
	    {"-5 degrees <BR/>\n1999. A year <BR/>\n3.5 litres",
	     {kHelpTextBlock, kHelpTextBlock, kHelpTextBlock},
	     "-5 degrees\n1999. A year\n3.5 litres"},
	    {" <P/> <BR/> ", {}, ""},
	};
	for (const Case& test : cases) {
		HelpPage page = ReadPage(test.page);
		std::vector<help_block_kind> kinds;
		for (const HelpBlock& block : page.Blocks())
			kinds.push_back(block.kind);
		EXPECT_EQ(kinds, test.kinds) << test.page;
		EXPECT_STREQ(page.Text().String(), test.text) << test.page;
	}
}


TEST(HelpPageTest, InlineElementsGiveStyledRunsAndListMarkersAreTaken)
{
	HelpPage page = ReadPage("Press <B>Shift <I>F1</I></B> now. <BR/>\n- <EM>one</EM> item <BR/>\n"
	                         "12. twelve");
	ASSERT_EQ(page.Blocks().size(), 3u);
	const std::vector<HelpRun>& runs = page.Blocks()[0].runs;
	ASSERT_EQ(runs.size(), 4u);
	EXPECT_EQ(runs[0].text, "Press ");
	EXPECT_EQ(runs[1].text, "Shift ");
	EXPECT_EQ(runs[1].style, static_cast<uint32>(kHelpBold));
	EXPECT_EQ(runs[2].text, "F1");
	EXPECT_EQ(runs[2].style, static_cast<uint32>(kHelpBold | kHelpItalic));
	EXPECT_EQ(runs[3].text, " now.");

	const HelpBlock& bullet = page.Blocks()[1];
	EXPECT_EQ(bullet.marker, "-");
	EXPECT_EQ(bullet.Text(), "one item");
	EXPECT_EQ(bullet.runs[0].style, static_cast<uint32>(kHelpItalic));
	EXPECT_EQ(page.Blocks()[2].marker, "12.");
	EXPECT_EQ(page.Blocks()[2].Text(), "twelve");

	// A title goes first, once, and is replaced by the next.
	page.SetTitle("Old");
	page.SetTitle("Keys");
	EXPECT_EQ(page.Blocks()[0].kind, kHelpTitleBlock);
	EXPECT_EQ(page.Blocks()[0].Text(), "Keys");
	EXPECT_EQ(page.Blocks().size(), 4u);
	EXPECT_STREQ(page.Text().String(), "Keys\n\nPress Shift F1 now.\n- one item\n12. twelve");
}


TEST(HelpPageTest, LayoutWrapsWordsInOrderWithinTheWidth)
{
	HelpPage page = ReadPage("The quick brown fox jumps over the lazy dog. <P/>\n"
	                         "- a bulleted item that needs three lines <BR/>\n"
	                         "Abcdefghijklmnopqrstuvwxyz");
	FixedMetrics metrics;
	std::vector<HelpLine> wide, narrow;
	float wideHeight = page.Layout(400, metrics, wide);
	float narrowHeight = page.Layout(20, metrics, narrow);
	EXPECT_EQ(wide.size(), 3u);
	EXPECT_GT(narrow.size(), wide.size());
	EXPECT_GT(narrowHeight, wideHeight);

	std::string words;
	float lastTop = -1;
	for (const HelpLine& line : narrow) {
		EXPECT_GT(line.top, lastTop);
		lastTop = line.top;
		EXPECT_EQ(line.baseline, line.top + 8);
		for (const HelpFragment& fragment : line.fragments) {
			EXPECT_LE(fragment.x + static_cast<float>(fragment.text.size()), 20.0f)
			    << fragment.text;
			words += fragment.text + " ";
		}
	}
	// Nothing lost or reordered, only the too-long word is cut.
	EXPECT_EQ(words, "The quick brown fox jumps over the lazy dog. a bulleted item that needs "
	                 "three lines Abcdefghijklmnopqrst uvwxyz ");

	// Item lines hang right of the marker column; only the first has the
	// marker.
	std::vector<const HelpLine*> item;
	for (const HelpLine& line : narrow)
		if (line.kind == kHelpItemBlock)
			item.push_back(&line);
	ASSERT_EQ(item.size(), 3u);
	EXPECT_EQ(item[0]->marker, "\xE2\x80\xA2");
	EXPECT_LT(item[0]->markerX + 3, item[0]->fragments[0].x);
	for (const HelpLine* line : item)
		EXPECT_EQ(line->fragments[0].x, item[0]->fragments[0].x);
	EXPECT_TRUE(item[1]->marker.empty());
	// The paragraph break adds space that a line break does not.
	float advance = item[1]->top - item[0]->top;
	EXPECT_GT(item[0]->top - narrow[2].top, advance);
	EXPECT_EQ(narrow[narrow.size() - 2].top - item[2]->top, advance);

	// Styled pieces of one word stay together, each at its own place.
	page = ReadPage("Press <B>Shift+F1</B>, now");
	page.Layout(14, metrics, narrow);
	ASSERT_EQ(narrow.size(), 2u);
	ASSERT_EQ(narrow[0].fragments.size(), 1u);
	EXPECT_EQ(narrow[0].fragments[0].text, "Press");
	ASSERT_EQ(narrow[1].fragments.size(), 2u);
	EXPECT_EQ(narrow[1].fragments[0].text, "Shift+F1");
	EXPECT_EQ(narrow[1].fragments[0].x, 0);
	EXPECT_EQ(narrow[1].fragments[1].text, ", now");
	EXPECT_EQ(narrow[1].fragments[1].x, 8);
}
