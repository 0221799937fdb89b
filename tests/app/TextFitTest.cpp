// The program's longest real texts, measured through the platform's fonts,
// fit the frames the windows give them; what cannot fit is cut with an
// ellipsis and shown whole in a tool tip. A font change that clips fails here.
#include <gtest/gtest.h>

#include <string>

#include <Font.h>
#include <StringView.h>
#include <View.h>
#include <Window.h>

#include "app/AppTestSupport.h"

namespace {

class TextFitTest : public testing::Test
{
protected:
	void SetUp() override
	{
		QS_REQUIRE_DISPLAY();
		apptest::SharedApp();
	}
};

} // namespace

TEST_F(TextFitTest, LongestTextsFitTheirFrames)
{
	struct Case {
		const char* where;
		const char* text;
		float size;
		// Pixels the frame leaves the text.
		float room;
	};
	const Case cases[] = {
	    // Result rows (font size 10): a value column is 55 wide; two pixels
	    // stay free before the next one.
	    {"result value", "99999999.9", 10, 53},
	    {"result name", "Ten Sequential Whetstones", 10, 185},
	    {"result units", "MegaChars/sec", 10, 95},
	    // The main window's status line and labels (plain font).
	    {"status line", "Testing Disk Input/Output (cpu 8/8)", 12, 206},
	    {"check box", "Input/Output", 12, 80},
	    {"tip", "Select <Shift><F1> for on-line help", 9, 226},
	    {"results heading", "8 CPU", 12, 51},
	    // The System window's lines are 191 wide.
	    {"system line", "OS Built : Jan 14 2025, 17:35:11", 12, 191},
	    {"system line", "OS Version : Ubuntu 24.04.1 LTS", 12, 191},
	    {"system line", "Type : Intel Pentium 75-486", 12, 191},
	};
	for (const Case& test : cases) {
		BFont font(B_PLAIN_FONT_KIND, test.size);
		EXPECT_LE(font.StringWidth(test.text), test.room) << test.where << ": " << test.text;
	}
}

TEST_F(TextFitTest, TooLongLinesEndInAnEllipsisWithTheWholeTextInATip)
{
	const char* const kEllipsis = "\xe2\x80\xa6";
	BWindow* window = new BWindow(BRect(100, 100, 299, 159), "Fit", B_TITLED_WINDOW, 0);
	BStringView* shortLine =
	    new BStringView(BRect(5, 5, 195, 20), "short", "OS Version : Ubuntu 24.04.1 LTS");
	BStringView* longLine = new BStringView(BRect(5, 30, 195, 45), "long",
	                                        "OS Version : Fedora Linux 41 (Workstation Edition)");
	window->AddChild(shortLine);
	window->AddChild(longLine);
	window->Run();
	window->Show();
	ASSERT_TRUE(apptest::RunUntil([&] { return !window->IsHidden(); }));
	apptest::RunFor(0.3);

	window->Lock();
	EXPECT_STREQ(shortLine->ToolTipText(), "");
	EXPECT_STREQ(longLine->ToolTipText(), longLine->Text());
	BFont font;
	longLine->GetFont(&font);
	for (const char* text : {"OS Version : Fedora Linux 41 (Workstation Edition)",
	                         "Host Name : \xc3\xa9t\xc3\xa9-machine-42"}) {
		std::string cut = font.Truncated(text, 100);
		EXPECT_LE(font.StringWidth(cut.c_str()), 100) << cut;
		ASSERT_GT(cut.size(), 3u);
		EXPECT_EQ(cut.substr(cut.size() - 3), kEllipsis) << cut;
		std::string kept = cut.substr(0, cut.size() - 3);
		EXPECT_EQ(std::string(text).compare(0, kept.size(), kept), 0) << cut;
		// Whole characters only: no cut UTF-8 sequence before the ellipsis.
		EXPECT_NE(static_cast<unsigned char>(kept.back()) & 0xc0, 0xc0u) << cut;
	}
	EXPECT_EQ(font.Truncated("fits", 100), "fits");
	window->Quit();
}
