#include "results/ResultItem.h"

#include <gtest/gtest.h>

#include <DrawingRecorder.h>
#include <Font.h>
#include <View.h>

namespace {

// A row drawn into a recorder: no display is needed.
class ResultItemTest : public testing::Test
{
protected:
	ResultItemTest() : fView(BRect(0, 0, 499, 199), "list", B_FOLLOW_ALL_SIDES, B_WILL_DRAW)
	{
		fView.SetDrawingRecorder(&fRecorder);
	}

	~ResultItemTest() override { fView.SetDrawingRecorder(nullptr); }

	std::vector<drawing_call> Strings() const { return fRecorder.CallsOf(B_CALL_DRAW_STRING); }

	BView fView;
	BDrawingRecorder fRecorder;
};

bool
IsColor(const rgb_color& color, uint8 red, uint8 green, uint8 blue)
{
	return color.red == red && color.green == green && color.blue == blue && color.alpha == 255;
}

} // namespace

TEST_F(ResultItemTest, RowIsWhiteWithNameUnitsAndValuesInTheirColumns)
{
	ResultItem item("Savage");
	item.Units("KIPS");
	item.Rate(0, 13828.14f);
	item.Rate(1, 9528.66f);
	item.Rate(2, 7.0f);

	BRect frame(12, 40, 480, 54);
	item.DrawItem(&fView, frame, true);

	ASSERT_GE(fRecorder.CountCalls(), 1);
	const drawing_call& fill = fRecorder.Calls().front();
	EXPECT_EQ(fill.kind, B_CALL_FILL_RECT);
	EXPECT_EQ(fill.rect, frame);
	EXPECT_TRUE(IsColor(fill.high, 255, 255, 255));

	std::vector<drawing_call> strings = Strings();
	ASSERT_EQ(strings.size(), 5u);
	const char* texts[] = {"Savage", "KIPS", "13828.1 ", "9528.7  ", "7.0     "};
	const float lefts[] = {17, 202, 302, 357, 412};
	for (size_t i = 0; i < strings.size(); i++) {
		EXPECT_EQ(strings[i].text, texts[i]) << i;
		ASSERT_EQ(strings[i].points.size(), 1u);
		EXPECT_FLOAT_EQ(strings[i].points[0].x, lefts[i]) << i;
		EXPECT_FLOAT_EQ(strings[i].points[0].y, 51) << i;
		EXPECT_TRUE(IsColor(strings[i].high, 0, 0, 0)) << i;
	}
	EXPECT_TRUE(fRecorder.CallsOf(B_CALL_INVERT_RECT).empty());
}

TEST_F(ResultItemTest, SelectedRowIsInvertedAfterItsText)
{
	ResultItem item("Memory");
	item.Units("MB/s");
	item.Select();
	BRect frame(0, 0, 400, 13);
	item.DrawItem(&fView, frame, false);

	ASSERT_GE(fRecorder.CountCalls(), 2);
	const drawing_call& last = fRecorder.Calls().back();
	EXPECT_EQ(last.kind, B_CALL_INVERT_RECT);
	EXPECT_EQ(last.rect, frame);
	// No rates yet: the name and the units only.
	EXPECT_EQ(Strings().size(), 2u);
}

TEST_F(ResultItemTest, RatesBeyondEightPositionsAreIgnored)
{
	ResultItem item("Sieve");
	item.Units("Passes/s");
	for (int i = 0; i < 8; i++)
		item.Rate(i, static_cast<float>(i) + 0.25f);
	item.Rate(8, 99.0f);
	item.Rate(12, 99.0f);
	EXPECT_EQ(item.QuantityValue(), 8);

	item.DrawItem(&fView, BRect(0, 0, 800, 13), true);
	std::vector<drawing_call> strings = Strings();
	ASSERT_EQ(strings.size(), 10u);
	EXPECT_EQ(strings[2].text, "0.2     ");
	EXPECT_EQ(strings.back().text, "7.2     ");
	EXPECT_FLOAT_EQ(strings.back().points[0].x, 290 + 55 * 7);
}

TEST_F(ResultItemTest, QuantitySetsHowManyValuesAreDrawn)
{
	ResultItem item("Disk Input");
	item.Units("MB/s");
	item.Rate(0, 1.5f);
	item.Rate(1, 2.5f);
	item.Quantity(1);
	item.DrawItem(&fView, BRect(0, 0, 600, 13), true);
	std::vector<drawing_call> strings = Strings();
	ASSERT_EQ(strings.size(), 3u);
	EXPECT_EQ(strings[2].text, "1.5     ");
}

// The last column has only what the row leaves of it: a value too wide there
// ends in an ellipsis, and the row's tool tip gives it whole.
TEST_F(ResultItemTest, ValueCutShortEndsInAnEllipsisAndIsWholeInTheTip)
{
	ResultItem item("Disk Output");
	item.Units("MB/s");
	item.Rate(0, 12.5f);
	item.Rate(1, 123456784.0f);  // a float exactly
	const BRect frame(0, 0, 290 + 55 + 40, 13);
	item.DrawItem(&fView, frame, true);

	std::vector<drawing_call> strings = Strings();
	ASSERT_EQ(strings.size(), 4u);
	EXPECT_EQ(strings[2].text, "12.5    ");
	const std::string cut = strings[3].text;
	const std::string kEllipsis = "\xe2\x80\xa6";
	ASSERT_GT(cut.size(), kEllipsis.size());
	EXPECT_EQ(cut.substr(cut.size() - kEllipsis.size()), kEllipsis) << cut;
	EXPECT_EQ(std::string("123456784.0").compare(0, cut.size() - kEllipsis.size(), cut, 0,
	                                             cut.size() - kEllipsis.size()),
	          0)
	    << cut;
	BFont font;
	fView.GetFont(&font);
	EXPECT_LE(font.StringWidth(cut.c_str()), 40);

	EXPECT_EQ(item.ToolTipAt(&fView, frame, BPoint(350, 5)), "123456784.0");
	EXPECT_EQ(item.ToolTipAt(&fView, frame, BPoint(300, 5)), "");
	EXPECT_EQ(item.ToolTipAt(&fView, frame, BPoint(100, 5)), "");
}
