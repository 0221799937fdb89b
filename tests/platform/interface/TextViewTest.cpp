// Text views wrap their text into the text rectangle (recorded, no display).
#include <gtest/gtest.h>

#include <DrawingRecorder.h>
#include <TextView.h>

TEST(TextViewTest, WrapsAtBlanksWithinTheTextRectAndAtNewlines)
{
	BTextView view(BRect(0, 0, 199, 99), "_tv_", BRect(5, 5, 154, 94), B_FOLLOW_NONE);
	BDrawingRecorder recorder;
	view.SetDrawingRecorder(&recorder);
	view.SetText("Not all the tests were run.  Do you still wish to save the results?\nYes");
	font_height height;
	view.GetFontHeight(&height);

	view.Draw(view.Bounds());

	std::vector<drawing_call> lines = recorder.CallsOf(B_CALL_DRAW_STRING);
	ASSERT_GE(lines.size(), 3u);
	std::string joined;
	for (size_t i = 0; i < lines.size(); i++) {
		EXPECT_EQ(5, lines[i].points[0].x);
		EXPECT_LE(view.StringWidth(lines[i].text.c_str()), 150) << lines[i].text;
		if (i > 0) {
			EXPECT_GT(lines[i].points[0].y, lines[i - 1].points[0].y);
			joined += " ";
		}
		joined += lines[i].text;
	}
	EXPECT_EQ(5 + height.ascent, lines[0].points[0].y);
	// Nothing lost but the blank at each break; the newline starts a line.
	EXPECT_EQ("Yes", lines.back().text);
	EXPECT_EQ(
	    std::string("Not all the tests were run.  Do you still wish to save the results? Yes"),
	    joined);
	EXPECT_EQ(static_cast<float>(lines.size()) * (lines[1].points[0].y - lines[0].points[0].y),
	          view.TextHeight());
}
