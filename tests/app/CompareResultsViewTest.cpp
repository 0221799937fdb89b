// The comparison rows drawn into a recorder (no display needed): bars,
// rows, the icon and the heading with its scale.
#include "results/CompareResultsView.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include <Bitmap.h>
#include <DrawingRecorder.h>
#include <PlatformTest.h>
#include <View.h>

#include "lib/LibColorChooser.h"
#include "results/Metric.h"
#include "results/ProcessorIcons.h"
#include "results/Results.h"

namespace {

// A frame 620 wide: bars from 320 get 300 pixels.
const BRect kFrame(0, 0, 620, 400);

const rgb_color kColors[kMaxMetricTimes] = {
    {1, 0, 0, 255}, {2, 0, 0, 255}, {3, 0, 0, 255}, {4, 0, 0, 255},
    {5, 0, 0, 255}, {6, 0, 0, 255}, {7, 0, 0, 255}, {8, 0, 0, 255},
};

class MetricDrawTest : public testing::Test
{
protected:
	MetricDrawTest() : fView(kFrame, "rows", B_FOLLOW_ALL_SIDES, B_WILL_DRAW)
	{
		fView.SetDrawingRecorder(&fRecorder);
	}

	~MetricDrawTest() override { fView.SetDrawingRecorder(nullptr); }

	std::vector<drawing_call> Bars() const { return fRecorder.CallsOf(B_CALL_FILL_RECT); }

	static Metric MakeMetric(long cycles, std::vector<float> times)
	{
		Metric metric;
		metric.Description("Savage");
		metric.NbrCycles(cycles);
		for (float seconds : times)
			metric.Time(seconds);
		return metric;
	}

	BView fView;
	BDrawingRecorder fRecorder;
};

// Which colour of kColors a call used.
int
ColorIndex(const rgb_color& color)
{
	return color.red - 1;
}

} // namespace


// Rates 1000, 500 and 250 on a scale of 1000: 300, 150 and 75 pixels,
// longest first, each in the colour of its processor count.
TEST_F(MetricDrawTest, BarsAreScaledLongestFirstInTheirConfigurationsColours)
{
	struct Case {
		const char* name;
		std::vector<float> times;
		float maxScale;
		float reference;
		std::vector<float> rights;
		std::vector<int> colors;
	};
	const Case cases[] = {
	    {"scale", {1, 2, 4}, 1000, -1, {620, 470, 395}, {2, 1, 0}},
	    // The slowest configuration first in the record: still drawn last.
	    {"order", {4, 1, 2}, 1000, -1, {620, 470, 395}, {1, 0, 2}},
	    // Percent of a reference of 500 on a scale of 200 (percent).
	    {"percent", {1, 2, 4}, 200, 500, {620, 470, 395}, {2, 1, 0}},
	    // Equal rates are drawn once, zero rates never.
	    {"equal-and-zero", {2, 2, 0, 4}, 1000, -1, {470, 395}, {3, 0}},
	    {"all-zero", {0, 0}, 1000, -1, {}, {}},
	};
	for (const Case& c : cases) {
		SCOPED_TRACE(c.name);
		fRecorder.Clear();
		Metric metric = MakeMetric(1000, c.times);
		float y = 40;
		metric.Draw(&fView, c.maxScale, 320, kColors, y, c.reference);
		EXPECT_FLOAT_EQ(y, 57);
		std::vector<drawing_call> bars = Bars();
		ASSERT_EQ(bars.size(), c.rights.size());
		for (size_t i = 0; i < bars.size(); i++) {
			EXPECT_FLOAT_EQ(bars[i].rect.left, 321) << i;
			EXPECT_FLOAT_EQ(bars[i].rect.top, 43) << i;
			EXPECT_FLOAT_EQ(bars[i].rect.bottom, 53) << i;
			EXPECT_FLOAT_EQ(bars[i].rect.right, c.rights[i]) << i;
			EXPECT_EQ(ColorIndex(bars[i].high), c.colors[i]) << i;
			EXPECT_FALSE(bars[i].lowPattern);
		}
	}
}

// Whatever a file holds, a bar stays between the left edge and the frame's
// right edge, and a drawing never fails.
TEST_F(MetricDrawTest, HostileRatesAndScalesDrawNothingWrong)
{
	const float inf = std::numeric_limits<float>::infinity();
	const float nan = std::numeric_limits<float>::quiet_NaN();
	struct Case {
		const char* name;
		long cycles;
		std::vector<float> times;
		float maxScale;
		float reference;
		size_t bars;
	};
	const Case cases[] = {
	    {"negative time", 1000, {-1, 1}, 1000, -1, 1},
	    {"negative cycles", -1000, {1, 2}, 1000, -1, 0},
	    {"nan time", 1000, {nan, 1}, 1000, -1, 1},
	    {"infinite time", 1000, {inf, 1}, 1000, -1, 1},
	    // 2e9 / 1e-40 does not fit a float.
	    {"huge rate", 2000000000, {1e-40f, 1}, 1000, -1, 2},
	    {"rate above scale", 1000, {0.5f}, 1000, -1, 1},
	    {"zero scale", 1000, {1}, 0, -1, 0},
	    {"nan scale", 1000, {1}, nan, -1, 0},
	    {"infinite scale", 1000, {1}, inf, -1, 0},
	    {"tiny reference", 1000, {1}, 110, 1e-30f, 1},
	    {"infinite reference", 1000, {1}, 110, inf, 0},
	    // Seconds as the value: 2 of 1000 is under a pixel.
	    {"seconds (no cycles)", 0, {1e30f, 2}, 1000, -1, 1},
	};
	for (const Case& c : cases) {
		SCOPED_TRACE(c.name);
		fRecorder.Clear();
		Metric metric = MakeMetric(c.cycles, c.times);
		float y = 0;
		metric.Draw(&fView, c.maxScale, 320, kColors, y, c.reference);
		EXPECT_FLOAT_EQ(y, 17);
		std::vector<drawing_call> bars = Bars();
		EXPECT_EQ(bars.size(), c.bars);
		for (const drawing_call& bar : bars) {
			EXPECT_FLOAT_EQ(bar.rect.left, 321);
			EXPECT_GE(bar.rect.right, 321);
			EXPECT_LE(bar.rect.right, 620);
			EXPECT_GE(ColorIndex(bar.high), 0);
			EXPECT_LT(ColorIndex(bar.high), kMaxMetricTimes);
		}
	}
}

// The scale for the largest rate: the next multiple of the step above it.
TEST(CompareScaleTest, NextMultipleOfTheStepAbove)
{
	struct Case {
		double value;
		float scale;
		int32 step;
	};
	const Case cases[] = {
	    {0, 10, 10},
	    {95, 100, 10},
	    {100, 110, 10},
	    {1234, 1300, 100},
	    {60000, 61000, 1000},
	    {-5, 10, 10},
	    {NAN, 10, 10},
	    {1e300, 1.0e11f, 1000000000},
	    {std::numeric_limits<double>::infinity(), 1.0e11f, 1000000000},
	};
	for (const Case& c : cases) {
		int32 step = 0;
		EXPECT_FLOAT_EQ(CompareScale(c.value, &step), c.scale) << c.value;
		EXPECT_EQ(step, c.step) << c.value;
	}
}

namespace {

class ResultsDrawTest : public MetricDrawTest
{
protected:
	void SetUp() override
	{
		fRow.Read("Beta (2-x86@450/66MHz) 128MB RAM\t-1:8 bit color\t1:IDE controller\t"
		          "300:10000/1.000000,2.000000;");
		fRow.First();
	}

	Results fRow{false};
};

} // namespace


TEST_F(ResultsDrawTest, IconClickTogglesTheDeviceLines)
{
	// Collapsed, 17 high: the icon, the description (blue when selected) and
	// the bars.
	float y = 19;
	fRow.Draw(&fView, 11000, 320, kColors, y, true, -1);
	EXPECT_FLOAT_EQ(y, 36);
	std::vector<drawing_call> strings = fRecorder.CallsOf(B_CALL_DRAW_STRING);
	ASSERT_EQ(strings.size(), 1u);
	EXPECT_EQ(strings[0].points[0], BPoint(21, 31));
	EXPECT_EQ(strings[0].high.blue, 255);
	EXPECT_EQ(fRow.IconRect(), BRect(2, 19, 17, 34));
	EXPECT_EQ(Bars().size(), 2u);

	// Just outside the icon: nothing happens.
	EXPECT_FALSE(fRow.Contains(BPoint(18, 25)));
	EXPECT_FALSE(fRow.Contains(BPoint(10, 35)));
	ASSERT_TRUE(fRow.Contains(BPoint(17, 34)));
	EXPECT_TRUE(fRow.Expanded());
	EXPECT_EQ(memcmp(fRow.Icon()->Bits(), ProcessorOpen, kProcessorIconSize), 0);

	fRecorder.Clear();
	y = 19;
	fRow.Draw(&fView, 11000, 320, kColors, y, false, -1);
	// 17 for the bars, 10 before the devices, 13 per device line.
	EXPECT_FLOAT_EQ(y, 19 + 17 + 10 + 2 * 13);
	EXPECT_FLOAT_EQ(fRow.RowHeight(), 17 + 10 + 2 * 13);
	strings = fRecorder.CallsOf(B_CALL_DRAW_STRING);
	ASSERT_EQ(strings.size(), 5u);
	EXPECT_EQ(strings[0].high.blue, 0);
	const char* texts[] = {"Screen", "8 bit color", "Storage", "IDE controller"};
	const BPoint places[] = {BPoint(30, 46), BPoint(75, 46), BPoint(30, 59), BPoint(75, 59)};
	for (int i = 0; i < 4; i++) {
		EXPECT_EQ(strings[i + 1].text, texts[i]) << i;
		EXPECT_EQ(strings[i + 1].points[0], places[i]) << i;
		EXPECT_EQ(strings[i + 1].high.blue, 0) << i;
	}

	ASSERT_TRUE(fRow.Contains(BPoint(2, 19)));
	EXPECT_FALSE(fRow.Expanded());
	EXPECT_EQ(memcmp(fRow.Icon()->Bits(), Processor, kProcessorIconSize), 0);
}

TEST_F(ResultsDrawTest, RowWithoutACurrentMetricStillSteps)
{
	Results empty(false);
	empty.Read("Empty (1-x86@100/66MHz) 32MB RAM\t");
	float y = 0;
	empty.Draw(&fView, 110, 320, kColors, y, false, -1);
	EXPECT_FLOAT_EQ(y, 17);
	EXPECT_TRUE(Bars().empty());
}

namespace {

class CompareResultsViewTest : public testing::Test
{
protected:
	CompareResultsViewTest() : fView(kFrame) { fView.SetDrawingRecorder(&fRecorder); }
	~CompareResultsViewTest() override { fView.SetDrawingRecorder(nullptr); }

	Results* AddRow(const char* record, bool current = false)
	{
		Results* row = new Results(current);
		row->Read(record);
		row->First();
		fView.List().Insert(row);
		return row;
	}

	std::vector<std::string> Texts() const
	{
		std::vector<std::string> texts;
		for (const drawing_call& call : fRecorder.CallsOf(B_CALL_DRAW_STRING))
			texts.push_back(call.text);
		return texts;
	}

	CompareResultsView fView;
	BDrawingRecorder fRecorder;
};

const char* kFast = "Fast (2-x86@450/66MHz) 128MB RAM\t300:10000/0.500000,1.000000;";
const char* kSlow = "Slow (1-x86@300/66MHz) 64MB RAM\t1:disk\t300:10000/2.000000;";

} // namespace


TEST_F(CompareResultsViewTest, HeadingScaleMarksAndRowsInOrder)
{
	AddRow(kFast);
	Results* slow = AddRow(kSlow);
	fView.UpdateMaxScale();
	// 20000 -> 21000 (step 1000).
	EXPECT_FLOAT_EQ(fView.MaxScale(), 21000);
	EXPECT_EQ(fView.Step(), 1000);
	fView.Draw(fView.Bounds());

	std::vector<std::string> texts = Texts();
	ASSERT_GE(texts.size(), 4u);
	EXPECT_EQ(texts[0], "Configuration");
	// Marks every 5000 (60 pixels at least on 300): 5000 ... 20000.
	const std::vector<std::string> marks = {"5000", "10000", "15000", "20000"};
	ASSERT_EQ(texts.size(), 1 + marks.size() + 1 + 2);
	for (size_t i = 0; i < marks.size(); i++)
		EXPECT_EQ(texts[1 + i], marks[i]);
	EXPECT_EQ(texts[5], "(  )");
	EXPECT_EQ(texts[6].rfind("Fast", 0), 0u);
	EXPECT_EQ(texts[7].rfind("Slow", 0), 0u);

	// Each mark's tick stands where a bar of its value ends.
	std::vector<drawing_call> lines = fRecorder.CallsOf(B_CALL_STROKE_LINE);
	std::vector<float> ticks;
	for (const drawing_call& line : lines) {
		if (line.points[0].x == line.points[1].x && line.points[0].y == 11)
			ticks.push_back(line.points[0].x);
	}
	ASSERT_EQ(ticks.size(), marks.size());
	EXPECT_FLOAT_EQ(ticks[0], 320 + 300 * 5000.0f / 21000);
	EXPECT_FLOAT_EQ(ticks[3], 320 + 300 * 20000.0f / 21000);

	// Rows from 19, 17 apart; the rule under the heading and at 320.
	std::vector<drawing_call> icons = fRecorder.CallsOf(B_CALL_DRAW_BITMAP);
	ASSERT_EQ(icons.size(), 2u);
	EXPECT_FLOAT_EQ(icons[0].rect.top, 19);
	EXPECT_FLOAT_EQ(icons[1].rect.top, 36);
	EXPECT_EQ(slow->IconRect(), BRect(2, 36, 17, 51));

	// Expanding the first row moves the second down by its device lines
	// (none here but the gap).
	fView.List().Contains(BPoint(5, 20));
	fRecorder.Clear();
	fView.Draw(fView.Bounds());
	EXPECT_EQ(slow->IconRect(), BRect(2, 46, 17, 61));
}

TEST_F(CompareResultsViewTest, PercentModeIsRelativeToTheSelectedRow)
{
	AddRow(kFast, true)->First();
	Results* slow = AddRow(kSlow);
	fView.SetSelected(slow);
	fView.CompareByRatio(true);
	// Slow's 5000 is 100 percent; Fast's 20000 is 400 -> 410.
	EXPECT_FLOAT_EQ(fView.Reference(), 5000);
	EXPECT_FLOAT_EQ(fView.MaxScale(), 410);
	fView.Draw(fView.Bounds());
	std::vector<std::string> texts = Texts();
	EXPECT_NE(std::find(texts.begin(), texts.end(), "( Percent )"), texts.end());
	std::vector<drawing_call> bars = fRecorder.CallsOf(B_CALL_FILL_RECT);
	ASSERT_EQ(bars.size(), 3u);
	// Fast's 2-CPU bar: 400 of 410 percent; Slow: 100 of 410.
	EXPECT_FLOAT_EQ(bars[0].rect.right, 320 + 300 * 400.0f / 410);
	EXPECT_FLOAT_EQ(bars[2].rect.right, 320 + 300 * 100.0f / 410);

	// A selected row without a rate gives no bars rather than wrong ones.
	Results* none = AddRow("None (1-x86@300/66MHz) 64MB RAM\t300:10000/0.000000;");
	fView.SetSelected(none);
	fView.UpdateMaxScale();
	fRecorder.Clear();
	fView.Draw(fView.Bounds());
	EXPECT_TRUE(fRecorder.CallsOf(B_CALL_FILL_RECT).empty());

	// Back to absolute rates.
	fView.CompareByRatio(false);
	EXPECT_FLOAT_EQ(fView.Reference(), -1);
	EXPECT_FLOAT_EQ(fView.MaxScale(), 21000);
}

TEST_F(CompareResultsViewTest, BarUnderAPointNamesItsColour)
{
	AddRow(kFast);
	fView.UpdateMaxScale();
	int32 color = -1;
	// Fast's bars: 2 CPUs 20000 (end 605.7), 1 CPU 10000 (end 462.9).
	EXPECT_EQ(fView.BarAt(BPoint(600, 25), &color), fView.List().Get(0L));
	EXPECT_EQ(color, 1);
	EXPECT_NE(fView.BarAt(BPoint(400, 25), &color), nullptr);
	EXPECT_EQ(color, 0);
	EXPECT_EQ(fView.BarAt(BPoint(610, 25), &color), nullptr);
	EXPECT_EQ(fView.BarAt(BPoint(300, 25), &color), nullptr);
	EXPECT_EQ(fView.BarAt(BPoint(400, 40), &color), nullptr);
}
