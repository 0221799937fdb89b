// Drawing into the recording surface: no display is needed.
#include <gtest/gtest.h>

#include <Box.h>
#include <DrawingRecorder.h>
#include <InterfaceDefs.h>
#include <ListItem.h>
#include <ListView.h>
#include <StringView.h>
#include <View.h>

namespace {

// A row that records the frames the list hands it.
class FrameItem : public BListItem
{
public:
	explicit FrameItem(float height) : fFixedHeight(height) {}

	void DrawItem(BView* owner, BRect frame, bool complete) override
	{
		(void)owner;
		frames.push_back(frame);
		completes.push_back(complete);
	}

	void Update(BView* owner, const BFont* font) override
	{
		BListItem::Update(owner, font);
		SetHeight(fFixedHeight);
	}

	std::vector<BRect> frames;
	std::vector<bool> completes;

private:
	float fFixedHeight;
};

} // namespace


TEST(DrawingRecorderTest, RecordsCallsInViewCoordinatesWithTheColoursInForce)
{
	// The frame's offset in the parent must not leak into the recorded
	// coordinates.
	BView view(BRect(40, 30, 139, 79), "view", B_FOLLOW_NONE, B_WILL_DRAW);
	BDrawingRecorder recorder;
	view.SetDrawingRecorder(&recorder);

	view.SetHighColor(10, 20, 30);
	view.SetLowColor(200, 210, 220);
	view.StrokeLine(BPoint(1, 2), BPoint(30, 40));
	view.FillRect(BRect(5, 6, 7, 8), B_SOLID_LOW);
	view.SetHighColor(make_color(1, 2, 3));
	view.StrokeTriangle(BPoint(0, 0), BPoint(10, 0), BPoint(5, 9));
	view.DrawString("Quickstep", BPoint(12, 20));
	// The pen continues after the string.
	view.DrawString("!");
	view.Flush();

	const std::vector<drawing_call>& calls = recorder.Calls();
	ASSERT_EQ(6u, calls.size());
	EXPECT_EQ(B_CALL_STROKE_LINE, calls[0].kind);
	ASSERT_EQ(2u, calls[0].points.size());
	EXPECT_EQ(BPoint(1, 2), calls[0].points[0]);
	EXPECT_EQ(BPoint(30, 40), calls[0].points[1]);
	EXPECT_EQ(make_color(10, 20, 30), calls[0].high);
	EXPECT_FALSE(calls[0].lowPattern);

	EXPECT_EQ(B_CALL_FILL_RECT, calls[1].kind);
	EXPECT_EQ(BRect(5, 6, 7, 8), calls[1].rect);
	EXPECT_TRUE(calls[1].lowPattern);
	EXPECT_EQ(make_color(200, 210, 220), calls[1].low);

	EXPECT_EQ(B_CALL_STROKE_POLYGON, calls[2].kind);
	ASSERT_EQ(3u, calls[2].points.size());
	EXPECT_EQ(BPoint(5, 9), calls[2].points[2]);
	EXPECT_EQ(make_color(1, 2, 3), calls[2].high);

	EXPECT_EQ(B_CALL_DRAW_STRING, calls[3].kind);
	EXPECT_EQ("Quickstep", calls[3].text);
	EXPECT_EQ(BPoint(12, 20), calls[3].points[0]);
	EXPECT_EQ(12.0f, calls[3].fontSize);

	EXPECT_EQ("!", calls[4].text);
	EXPECT_EQ(BPoint(12 + view.StringWidth("Quickstep"), 20), calls[4].points[0]);
	EXPECT_EQ(B_CALL_FLUSH, calls[5].kind);

	// Inverted rectangles go through as they are.
	recorder.Clear();
	view.StrokeRect(BRect(50, 60, 10, 20));
	view.FillEllipse(BRect(9, 9, 1, 1));
	ASSERT_EQ(2, recorder.CountCalls());
	EXPECT_EQ(BRect(50, 60, 10, 20), recorder.Calls()[0].rect);
	EXPECT_EQ(BRect(9, 9, 1, 1), recorder.Calls()[1].rect);

	// Pointed elsewhere again, nothing more is recorded.
	view.SetDrawingRecorder(nullptr);
	view.StrokeLine(BPoint(0, 0), BPoint(1, 1));
	EXPECT_EQ(2, recorder.CountCalls());
}


TEST(DrawingRecorderTest, StringViewDrawsOnTheBaselineAlignedInItsWidth)
{
	BStringView view(BRect(0, 0, 99, 14), "line", "0:00");
	BDrawingRecorder recorder;
	view.SetDrawingRecorder(&recorder);
	font_height height;
	view.GetFontHeight(&height);
	float width = view.StringWidth("0:00");

	view.Draw(view.Bounds());
	view.SetAlignment(B_ALIGN_RIGHT);
	view.Draw(view.Bounds());
	view.SetAlignment(B_ALIGN_CENTER);
	view.Draw(view.Bounds());
	view.SetText("");
	view.Draw(view.Bounds());

	std::vector<drawing_call> strings = recorder.CallsOf(B_CALL_DRAW_STRING);
	ASSERT_EQ(3u, strings.size());
	EXPECT_EQ(BPoint(0, height.ascent), strings[0].points[0]);
	EXPECT_EQ(BPoint(99 - width, height.ascent), strings[1].points[0]);
	EXPECT_EQ(BPoint((99 - width) / 2, height.ascent), strings[2].points[0]);
	EXPECT_EQ("0:00", strings[2].text);
}


TEST(DrawingRecorderTest, ListViewStacksRowsAndSkipsThoseScrolledAway)
{
	BListView list(BRect(0, 0, 199, 39), "list");
	BDrawingRecorder recorder;
	list.SetDrawingRecorder(&recorder);
	FrameItem first(10);
	FrameItem second(20);
	FrameItem third(15);
	list.AddItem(&first);
	list.AddItem(&second);
	list.AddItem(&third);

	list.Draw(list.Bounds());
	ASSERT_EQ(1u, first.frames.size());
	EXPECT_EQ(BRect(0, 0, 199, 9), first.frames[0]);
	EXPECT_EQ(BRect(0, 10, 199, 29), second.frames[0]);
	// Bounds end at 39: the third row (30 to 44) still shows in part.
	ASSERT_EQ(1u, third.frames.size());
	EXPECT_EQ(BRect(0, 30, 199, 44), third.frames[0]);
	EXPECT_TRUE(first.completes[0]);

	// Scrolled down by 10 the first row is out of sight; the others keep
	// their frames in the list's coordinates.
	list.ScrollTo(BPoint(0, 10));
	list.Draw(list.Bounds());
	EXPECT_EQ(1u, first.frames.size());
	ASSERT_EQ(2u, second.frames.size());
	EXPECT_EQ(BRect(0, 10, 199, 29), second.frames[1]);
	EXPECT_EQ(2u, third.frames.size());

	EXPECT_EQ(1, list.IndexOf(BPoint(5, 29)));
	EXPECT_EQ(2, list.IndexOf(BPoint(5, 30)));
	EXPECT_EQ(-1, list.IndexOf(BPoint(5, 45)));
	list.MakeEmpty();
}


TEST(DrawingRecorderTest, SelectedStringItemIsFilledAndIndentedByLevel)
{
	BView owner(BRect(0, 0, 199, 99), "owner", B_FOLLOW_NONE, B_WILL_DRAW);
	BDrawingRecorder recorder;
	owner.SetDrawingRecorder(&recorder);
	BStringItem item("Whetstone", 1);
	BFont font;
	item.Update(&owner, &font);
	item.Select();

	BRect frame(0, 20, 199, 20 + item.Height() - 1);
	item.DrawItem(&owner, frame, false);

	ASSERT_EQ(2, recorder.CountCalls());
	EXPECT_EQ(B_CALL_FILL_RECT, recorder.Calls()[0].kind);
	EXPECT_EQ(frame, recorder.Calls()[0].rect);
	EXPECT_NE(owner.ViewColor(), recorder.Calls()[0].high);
	const drawing_call& text = recorder.Calls()[1];
	EXPECT_EQ("Whetstone", text.text);
	EXPECT_EQ(14, text.points[0].x);
	EXPECT_GT(text.points[0].y, frame.top);
	EXPECT_LE(text.points[0].y, frame.bottom);
	EXPECT_EQ(make_color(0, 0, 0), text.high);

	// Not selected and not complete: only the text.
	recorder.Clear();
	item.Deselect();
	item.DrawItem(&owner, frame, false);
	ASSERT_EQ(1, recorder.CountCalls());
	EXPECT_EQ(B_CALL_DRAW_STRING, recorder.Calls()[0].kind);
}


TEST(DrawingRecorderTest, BoxLabelSitsOnTheTopEdge)
{
	BBox box(BRect(0, 0, 120, 80), "diskbox");
	box.SetLabel("Disk");
	BDrawingRecorder recorder;
	box.SetDrawingRecorder(&recorder);
	font_height height;
	box.GetFontHeight(&height);

	box.Draw(box.Bounds());

	std::vector<drawing_call> strings = recorder.CallsOf(B_CALL_DRAW_STRING);
	ASSERT_EQ(1u, strings.size());
	EXPECT_EQ("Disk", strings[0].text);
	EXPECT_EQ(BPoint(7, height.ascent), strings[0].points[0]);
	std::vector<drawing_call> rects = recorder.CallsOf(B_CALL_STROKE_RECT);
	ASSERT_FALSE(rects.empty());
	float edge = rects[0].rect.top;
	EXPECT_GT(edge, 0);
	EXPECT_LT(edge, height.ascent);

	// Without a label the frame starts at the top.
	recorder.Clear();
	box.SetLabel(nullptr);
	box.Draw(box.Bounds());
	EXPECT_TRUE(recorder.CallsOf(B_CALL_DRAW_STRING).empty());
	EXPECT_EQ(0, recorder.CallsOf(B_CALL_STROKE_RECT)[0].rect.top);
}


TEST(SystemColorsTest, IndexMapFindsEachPaletteColourAndInversionsInvert)
{
	const color_map* map = system_colors();
	for (int index = 0; index < 255; index++) {
		const rgb_color& color = map->color_list[index];
		int key = (color.red >> 3) << 10 | (color.green >> 3) << 5 | color.blue >> 3;
		const rgb_color& found = map->color_list[map->index_map[key]];
		// The 15-bit key loses 3 bits per channel.
		EXPECT_LE(abs(found.red - color.red), 8) << index;
		EXPECT_LE(abs(found.green - color.green), 8) << index;
		EXPECT_LE(abs(found.blue - color.blue), 8) << index;
		EXPECT_NE(255, map->index_map[key]) << "the transparent index is never nearest";
	}
	EXPECT_EQ(make_color(0, 0, 0), map->color_list[0]);
	const rgb_color& white = map->color_list[map->inversion_map[0]];
	EXPECT_EQ(make_color(255, 255, 255), white);
}
