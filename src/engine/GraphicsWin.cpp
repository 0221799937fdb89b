#include "engine/GraphicsWin.h"

#include <cstdlib>
#include <cstring>

#include <InterfaceDefs.h>
#include <View.h>

#include "results/Metric.h"
#include "results/Results.h"

namespace {

const rgb_color white_color = {255, 255, 255, 255};
const rgb_color black_color = {0, 0, 0, 255};

// 1000 / 2^32: rand()'s 0 to 2^31 - 1 become coordinates in [0, 500), a
// little beyond the 490-pixel view on purpose.
float
CoordinateScale()
{
	const uint32 bits = 0x347A0000;
	float scale;
	memcpy(&scale, &bits, sizeof(scale));
	return scale;
}

// The nine characters each strings pass draws; the metrics count them in
// thousands.
const char* const kDrawnText = "Quickstep";

} // namespace


struct GraphicsWin::Measurement {
	const char* title;
	const char* name;
	const char* units;
	long index;
	long cycles;
	long loops;
	// rand() calls of one pass's coordinates, which calibration takes out;
	// the colour's three calls stay in the measurement.
	int randCalls;
	long count;
	bool flush;
};


GraphicsWin::GraphicsWin()
    : LibWindow(BRect(10, 10, 500, 500), "GraphicsWin", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL,
                B_NOT_MOVABLE | B_NOT_RESIZABLE | B_NOT_CLOSABLE | B_NOT_ZOOMABLE |
                    B_NOT_MINIMIZABLE,
                B_CURRENT_WORKSPACE),
      fView(nullptr), fBounds(0, 0, -1, -1), fScale(0)
{
	Lock();
	SetTitle("Test Graphics");
	fBounds = Frame();
	fBounds.OffsetTo(B_ORIGIN);
	fView = new BView(fBounds, "graphicsview", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
	AddChild(fView);
	fScale = CoordinateScale();
	Unlock();
}


GraphicsWin::~GraphicsWin()
{
}


void
GraphicsWin::RunTests(Results& results)
{
	GraphicsWin* window = new GraphicsWin;
	window->Run();
	window->SetPosition(kLibPositionMiddleLeft);
	window->Show();

	window->TestLinesFlushed(results);
	window->TestLinesUnflushed(results);
	window->TestStringsFlushed(results);
	window->TestStringsUnflushed(results);
	window->TestEllipsesFlushed(results);
	window->TestEllipsesUnflushed(results);
	window->TestEllipsesFilledUnflushed(results);
	window->TestRectanglesFlushed(results);
	window->TestRectanglesUnflushed(results);
	window->TestRectanglesFilledUnflushed(results);
	window->TestPolygonsFlushed(results);
	window->TestPolygonsUnflushed(results);
	window->TestPolygonsFilledUnflushed(results);

	window->Hide();
	window->Lock();
	window->Quit();
}


void
GraphicsWin::ClearView()
{
	Lock();
	fView->SetHighColor(white_color);
	fView->FillRect(fBounds, B_SOLID_HIGH);
	fView->SetHighColor(black_color);
	fView->Flush();
	Unlock();
}


float
GraphicsWin::Coordinate() const
{
	return static_cast<float>(rand()) * fScale;
}


BPoint
GraphicsWin::RandomPoint() const
{
	const float x = Coordinate();
	const float y = Coordinate();
	return BPoint(x, y);
}


// Left, top, right, bottom, kept as drawn: left may lie right of right and
// top below bottom, and such rectangles are drawn so.
BRect
GraphicsWin::RandomRect() const
{
	const float left = Coordinate();
	const float top = Coordinate();
	const float right = Coordinate();
	const float bottom = Coordinate();
	return BRect(left, top, right, bottom);
}


rgb_color
GraphicsWin::RandomColor()
{
	// In double: a float product could round 254.99 up to 255.
	const double toChannel = 255.0 / 2147483648.0;
	rgb_color color;
	color.red = static_cast<uint8>(rand() * toChannel);
	color.green = static_cast<uint8>(rand() * toChannel);
	color.blue = static_cast<uint8>(rand() * toChannel);
	color.alpha = 255;
	return color;
}


// The timed region holds the random numbers, the colour change and the
// primitive of every pass, and the flush after each in the flushed tests. An
// unflushed test stops its timer with drawing still queued: that is the
// difference the pair of tests shows.
template <class Draw>
void
GraphicsWin::Measure(Results& results, const Measurement& measurement, Draw draw)
{
	SetTitle(measurement.title);
	Lock();
	Metric* metric = results.NewTest(measurement.name, measurement.cycles);
	results.Calibrate(measurement.loops, measurement.randCalls);
	results.StartTimer();
	if (measurement.flush) {
		for (long pass = 0; pass < measurement.count; pass++) {
			fView->SetHighColor(RandomColor());
			draw();
			fView->Flush();
		}
	} else {
		for (long pass = 0; pass < measurement.count; pass++) {
			fView->SetHighColor(RandomColor());
			draw();
		}
	}
	metric->Time(results.EndTimer());
	metric->Index(measurement.index);
	metric->Units(measurement.units);
	Unlock();
	ClearView();
}


// Coordinates are taken one statement at a time: the order of rand() calls
// is part of the test, and the order arguments are evaluated in is not.

void
GraphicsWin::TestLinesFlushed(Results& results)
{
	static const Measurement kTest = {"Flushed Lines",
	                                  "Graphics Lines Flushed",
	                                  "vectors/sec",
	                                  1010,
	                                  10000,
	                                  10000,
	                                  4,
	                                  10000,
	                                  true};
	Measure(results, kTest, [this] {
		const BPoint start = RandomPoint();
		const BPoint end = RandomPoint();
		fView->StrokeLine(start, end, B_SOLID_HIGH);
	});
}


void
GraphicsWin::TestLinesUnflushed(Results& results)
{
	static const Measurement kTest = {"Unflushed Lines",
	                                  "Graphics Lines Unflushed",
	                                  "vectors/sec",
	                                  1011,
	                                  20000,
	                                  20000,
	                                  4,
	                                  20000,
	                                  false};
	Measure(results, kTest, [this] {
		const BPoint start = RandomPoint();
		const BPoint end = RandomPoint();
		fView->StrokeLine(start, end, B_SOLID_HIGH);
	});
}


void
GraphicsWin::TestStringsFlushed(Results& results)
{
	static const Measurement kTest = {"Flushed Strings",
	                                  "Graphics Strings Flushed",
	                                  "KiloChars/sec",
	                                  1050,
	                                  90,
	                                  10000,
	                                  2,
	                                  10000,
	                                  true};
	Measure(results, kTest, [this] { fView->DrawString(kDrawnText, RandomPoint(), nullptr); });
}


void
GraphicsWin::TestStringsUnflushed(Results& results)
{
	static const Measurement kTest = {"Unflushed Strings",
	                                  "Graphics Strings Unflushed",
	                                  "KiloChars/sec",
	                                  1051,
	                                  180,
	                                  20000,
	                                  2,
	                                  20000,
	                                  false};
	Measure(results, kTest, [this] { fView->DrawString(kDrawnText, RandomPoint(), nullptr); });
}


void
GraphicsWin::TestEllipsesFlushed(Results& results)
{
	static const Measurement kTest = {"Flushed Ellipses",
	                                  "Graphics Ellipses Flushed",
	                                  "ellipses/sec",
	                                  1020,
	                                  10000,
	                                  10000,
	                                  4,
	                                  10000,
	                                  true};
	Measure(results, kTest, [this] { fView->StrokeEllipse(RandomRect(), B_SOLID_HIGH); });
}


void
GraphicsWin::TestEllipsesUnflushed(Results& results)
{
	static const Measurement kTest = {"Unflushed Ellipses",
	                                  "Graphics Ellipses Unflushed",
	                                  "ellipses/sec",
	                                  1021,
	                                  10000,
	                                  10000,
	                                  4,
	                                  10000,
	                                  false};
	Measure(results, kTest, [this] { fView->StrokeEllipse(RandomRect(), B_SOLID_HIGH); });
}


void
GraphicsWin::TestEllipsesFilledUnflushed(Results& results)
{
	static const Measurement kTest = {"Unflushed Filled Ellipses",
	                                  "Graphics Ellipses Unflushed Filled",
	                                  "ellipses/sec",
	                                  1022,
	                                  10000,
	                                  10000,
	                                  4,
	                                  10000,
	                                  false};
	Measure(results, kTest, [this] { fView->FillEllipse(RandomRect(), B_SOLID_HIGH); });
}


void
GraphicsWin::TestRectanglesFlushed(Results& results)
{
	static const Measurement kTest = {"Flushed Rectangles",
	                                  "Graphics Rectangles Flushed",
	                                  "rectangles/sec",
	                                  1030,
	                                  10000,
	                                  10000,
	                                  4,
	                                  10000,
	                                  true};
	Measure(results, kTest, [this] { fView->StrokeRect(RandomRect(), B_SOLID_HIGH); });
}


void
GraphicsWin::TestRectanglesUnflushed(Results& results)
{
	static const Measurement kTest = {"Unflushed Rectangles",
	                                  "Graphics Rectangles Unflushed",
	                                  "rectangles/sec",
	                                  1031,
	                                  50000,
	                                  50000,
	                                  4,
	                                  50000,
	                                  false};
	Measure(results, kTest, [this] { fView->StrokeRect(RandomRect(), B_SOLID_HIGH); });
}


void
GraphicsWin::TestRectanglesFilledUnflushed(Results& results)
{
	static const Measurement kTest = {"Unflushed Filled Rectangles",
	                                  "Graphics Rectangles Unflushed Filled",
	                                  "rectangles/sec",
	                                  1032,
	                                  10000,
	                                  10000,
	                                  4,
	                                  10000,
	                                  false};
	Measure(results, kTest, [this] { fView->FillRect(RandomRect(), B_SOLID_HIGH); });
}


void
GraphicsWin::TestPolygonsFlushed(Results& results)
{
	static const Measurement kTest = {"Flushed Polygons",
	                                  "Graphics Polygons Flushed",
	                                  "polygons/sec",
	                                  1040,
	                                  10000,
	                                  10000,
	                                  6,
	                                  10000,
	                                  true};
	Measure(results, kTest, [this] {
		const BPoint p1 = RandomPoint();
		const BPoint p2 = RandomPoint();
		const BPoint p3 = RandomPoint();
		fView->StrokeTriangle(p1, p2, p3, B_SOLID_HIGH);
	});
}


void
GraphicsWin::TestPolygonsUnflushed(Results& results)
{
	static const Measurement kTest = {"Unflushed Polygons",
	                                  "Graphics Polygons Unflushed",
	                                  "polygons/sec",
	                                  1041,
	                                  10000,
	                                  10000,
	                                  6,
	                                  10000,
	                                  false};
	Measure(results, kTest, [this] {
		const BPoint p1 = RandomPoint();
		const BPoint p2 = RandomPoint();
		const BPoint p3 = RandomPoint();
		fView->StrokeTriangle(p1, p2, p3, B_SOLID_HIGH);
	});
}


void
GraphicsWin::TestPolygonsFilledUnflushed(Results& results)
{
	static const Measurement kTest = {"Unflushed Filled Polygons",
	                                  "Graphics Polygons Unflushed Filled",
	                                  "polygons/sec",
	                                  1042,
	                                  10000,
	                                  10000,
	                                  6,
	                                  10000,
	                                  false};
	Measure(results, kTest, [this] {
		const BPoint p1 = RandomPoint();
		const BPoint p2 = RandomPoint();
		const BPoint p3 = RandomPoint();
		fView->FillTriangle(p1, p2, p3, B_SOLID_HIGH);
	});
}
