// The graphics test's thirteen loops drawn into a recording surface: every
// primitive checked against the unseeded rand() sequence, the flushes, the
// clearing between tests and the metrics.
#include "engine/GraphicsWin.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <DrawingRecorder.h>
#include <View.h>

#include "results/Metric.h"
#include "results/Results.h"

namespace {

enum Shape { kLine, kString, kRect, kTriangle };

struct Expected {
	void (GraphicsWin::*test)(Results&);
	drawing_call_kind kind;
	Shape shape;
	int index;
	long cycles;
	long loops;
	int randCalls;
	long count;
	bool flush;
};

// In the order the worker runs them.
const Expected kTests[] = {
    {&GraphicsWin::TestLinesFlushed, B_CALL_STROKE_LINE, kLine, 1010, 10000, 10000, 4, 10000, true},
    {&GraphicsWin::TestLinesUnflushed, B_CALL_STROKE_LINE, kLine, 1011, 20000, 20000, 4, 20000,
     false},
    {&GraphicsWin::TestStringsFlushed, B_CALL_DRAW_STRING, kString, 1050, 90, 10000, 2, 10000,
     true},
    {&GraphicsWin::TestStringsUnflushed, B_CALL_DRAW_STRING, kString, 1051, 180, 20000, 2, 20000,
     false},
    {&GraphicsWin::TestEllipsesFlushed, B_CALL_STROKE_ELLIPSE, kRect, 1020, 10000, 10000, 4, 10000,
     true},
    {&GraphicsWin::TestEllipsesUnflushed, B_CALL_STROKE_ELLIPSE, kRect, 1021, 10000, 10000, 4,
     10000, false},
    {&GraphicsWin::TestEllipsesFilledUnflushed, B_CALL_FILL_ELLIPSE, kRect, 1022, 10000, 10000, 4,
     10000, false},
    {&GraphicsWin::TestRectanglesFlushed, B_CALL_STROKE_RECT, kRect, 1030, 10000, 10000, 4, 10000,
     true},
    {&GraphicsWin::TestRectanglesUnflushed, B_CALL_STROKE_RECT, kRect, 1031, 50000, 50000, 4, 50000,
     false},
    {&GraphicsWin::TestRectanglesFilledUnflushed, B_CALL_FILL_RECT, kRect, 1032, 10000, 10000, 4,
     10000, false},
    {&GraphicsWin::TestPolygonsFlushed, B_CALL_STROKE_POLYGON, kTriangle, 1040, 10000, 10000, 6,
     10000, true},
    {&GraphicsWin::TestPolygonsUnflushed, B_CALL_STROKE_POLYGON, kTriangle, 1041, 10000, 10000, 6,
     10000, false},
    {&GraphicsWin::TestPolygonsFilledUnflushed, B_CALL_FILL_POLYGON, kTriangle, 1042, 10000, 10000,
     6, 10000, false},
};

// glibc's generator before any srand is the one seeded with 1: this is what
// a fresh process of the program draws. The replay below runs its own copy
// of that sequence with the same calls.
class Replay
{
public:
	Replay()
	{
		memset(&fData, 0, sizeof(fData));
		initstate_r(1, fState, sizeof(fState), &fData);
	}

	int32_t Next()
	{
		int32_t value = 0;
		random_r(&fData, &value);
		return value;
	}

	void Skip(long count)
	{
		for (long i = 0; i < count; i++)
			Next();
	}

	float Coordinate() { return static_cast<float>(Next()) * (1000.0f / 4294967296.0f); }

	rgb_color Color()
	{
		rgb_color color;
		color.red = static_cast<uint8>(Next() * 255.0 / 2147483648.0);
		color.green = static_cast<uint8>(Next() * 255.0 / 2147483648.0);
		color.blue = static_cast<uint8>(Next() * 255.0 / 2147483648.0);
		color.alpha = 255;
		return color;
	}

private:
	random_data fData;
	char fState[128];
};

bool
InRange(float coordinate)
{
	return coordinate >= 0.0f && coordinate < 500.0f;
}

std::string
Describe(const drawing_call& call)
{
	char text[200];
	snprintf(text, sizeof(text), "kind %d rect (%g, %g, %g, %g) high %d,%d,%d", call.kind,
	         call.rect.left, call.rect.top, call.rect.right, call.rect.bottom, call.high.red,
	         call.high.green, call.high.blue);
	std::string all = text;
	for (const BPoint& point : call.points)
		all += " (" + std::to_string(point.x) + ", " + std::to_string(point.y) + ")";
	return all;
}

// Compares one recorded primitive with the next the replay draws; answers
// false (with a message) at the first difference.
testing::AssertionResult
SamePrimitive(const drawing_call& call, const Expected& expected, Replay& replay)
{
	const rgb_color color = replay.Color();
	if (call.kind != expected.kind)
		return testing::AssertionFailure() << "kind of " << Describe(call);
	if (call.high.red != color.red || call.high.green != color.green ||
	    call.high.blue != color.blue)
		return testing::AssertionFailure() << "colour of " << Describe(call);
	std::vector<BPoint> points;
	BRect rect = call.rect;
	switch (expected.shape) {
		case kLine:
		case kString:
		case kTriangle: {
			const int count = expected.shape == kLine ? 2 : expected.shape == kString ? 1 : 3;
			for (int i = 0; i < count; i++) {
				const float x = replay.Coordinate();
				const float y = replay.Coordinate();
				points.push_back(BPoint(x, y));
			}
			if (call.points != points)
				return testing::AssertionFailure() << "points of " << Describe(call);
			if (expected.shape == kString && call.text != "Quickstep")
				return testing::AssertionFailure() << "text " << call.text;
			break;
		}
		case kRect: {
			const float left = replay.Coordinate();
			const float top = replay.Coordinate();
			const float right = replay.Coordinate();
			const float bottom = replay.Coordinate();
			if (rect != BRect(left, top, right, bottom))
				return testing::AssertionFailure() << "rectangle of " << Describe(call);
			break;
		}
	}
	return testing::AssertionSuccess();
}

} // namespace


TEST(GraphicsWinTest, DrawsTheUnseededSequenceFlushesAsTimedAndClearsAfterEachTest)
{
	// The process's generator back to its state at start (glibc documents
	// that an unseeded rand() is seeded with 1); nothing the tests call
	// may seed it again.
	srand(1);
	Replay replay;
	GraphicsWin* window = new GraphicsWin;
	window->Lock();
	BView* view = window->FindView("graphicsview");
	ASSERT_NE(view, nullptr);
	EXPECT_EQ(window->Frame(), BRect(10, 10, 500, 500));
	BRect bounds = view->Bounds();
	EXPECT_EQ(bounds, BRect(0, 0, 490, 490));
	BDrawingRecorder recorder;
	view->SetDrawingRecorder(&recorder);
	window->Unlock();

	Results results(true);
	float smallest = 500;
	float largest = 0;
	int inverted = 0;
	int brightest = 0;
	for (const Expected& expected : kTests) {
		SCOPED_TRACE(Metric::NameOf(expected.index));
		recorder.Clear();
		(window->*expected.test)(results);
		// Calibration calls rand() as often as the coordinates do, before
		// the timer starts.
		replay.Skip(expected.loops * expected.randCalls);

		const std::vector<drawing_call>& calls = recorder.Calls();
		const size_t perPass = expected.flush ? 2 : 1;
		ASSERT_EQ(calls.size(), static_cast<size_t>(expected.count) * perPass + 2);
		for (long pass = 0; pass < expected.count; pass++) {
			const drawing_call& call = calls[static_cast<size_t>(pass) * perPass];
			ASSERT_TRUE(SamePrimitive(call, expected, replay)) << "pass " << pass;
			if (expected.flush) {
				ASSERT_EQ(calls[static_cast<size_t>(pass) * perPass + 1].kind, B_CALL_FLUSH)
				    << "pass " << pass;
			}
			brightest = std::max<int>({brightest, call.high.red, call.high.green, call.high.blue});
			if (expected.shape == kRect) {
				inverted += call.rect.left > call.rect.right || call.rect.top > call.rect.bottom;
				for (float value :
				     {call.rect.left, call.rect.top, call.rect.right, call.rect.bottom}) {
					ASSERT_TRUE(InRange(value)) << value;
					smallest = std::min(smallest, value);
					largest = std::max(largest, value);
				}
			}
			for (const BPoint& point : call.points) {
				ASSERT_TRUE(InRange(point.x) && InRange(point.y)) << Describe(call);
				smallest = std::min({smallest, point.x, point.y});
				largest = std::max({largest, point.x, point.y});
			}
		}
		// Then the view cleared to white over its bounds, flushed, and the
		// high colour back to black.
		const drawing_call& clear = calls[calls.size() - 2];
		EXPECT_EQ(clear.kind, B_CALL_FILL_RECT);
		EXPECT_EQ(clear.rect, bounds);
		EXPECT_EQ(clear.high.red + clear.high.green + clear.high.blue, 3 * 255);
		EXPECT_EQ(calls.back().kind, B_CALL_FLUSH);
		rgb_color high = view->HighColor();
		EXPECT_EQ(high.red + high.green + high.blue, 0);

		Metric* metric = results.NewTest(Metric::NameOf(expected.index), 0);
		EXPECT_EQ(metric->Index(), expected.index);
		EXPECT_EQ(metric->NbrCycles(), expected.cycles);
		EXPECT_EQ(metric->Count(), 1);
		EXPECT_STRNE(metric->Units(), "");
	}
	EXPECT_EQ(results.Size(), 13);
	// Channels stop at 254; coordinates reach past the 490-pixel view; many
	// rectangles come inverted and are drawn as they came.
	EXPECT_EQ(brightest, 254);
	EXPECT_LT(smallest, 1.0f);
	EXPECT_GT(largest, 499.0f);
	EXPECT_GT(inverted, 10000);

	window->Lock();
	window->Quit();
}
