// The graphics test's own window: thirteen timed runs of random lines,
// strings, ellipses, rectangles and triangles drawn from the benchmark's
// worker thread into its one view, each recording one metric.
#ifndef GRAPHICS_WIN_H
#define GRAPHICS_WIN_H

#include <GraphicsDefs.h>
#include <Point.h>
#include <Rect.h>
#include <SupportDefs.h>

#include "lib/LibWindow.h"

class BView;
class Results;

class GraphicsWin : public LibWindow
{
public:
	GraphicsWin();
	~GraphicsWin() override;

	// What the worker's graphics test does where there are windows: makes the
	// window, shows it, runs the thirteen tests in their order into results
	// and quits the window. Called on the worker thread.
	static void RunTests(Results& results);

	// White over the whole view, the high colour back to black, and a flush.
	void ClearView();

	// Each locks the window for its timed loop and leaves the view white.
	void TestLinesFlushed(Results& results);
	void TestLinesUnflushed(Results& results);
	void TestStringsFlushed(Results& results);
	void TestStringsUnflushed(Results& results);
	void TestEllipsesFlushed(Results& results);
	void TestEllipsesUnflushed(Results& results);
	void TestEllipsesFilledUnflushed(Results& results);
	void TestRectanglesFlushed(Results& results);
	void TestRectanglesUnflushed(Results& results);
	void TestRectanglesFilledUnflushed(Results& results);
	void TestPolygonsFlushed(Results& results);
	void TestPolygonsUnflushed(Results& results);
	void TestPolygonsFilledUnflushed(Results& results);

private:
	struct Measurement;

	// Title, lock, the measurement calls around count passes of draw, unlock,
	// clear. Each pass takes a new random colour, then draw takes its
	// coordinates and issues one primitive.
	template <class Draw> void Measure(Results& results, const Measurement& measurement, Draw draw);

	// rand() scaled into [0, 500).
	float Coordinate() const;
	// x, then y.
	BPoint RandomPoint() const;
	// Left, top, right, bottom.
	BRect RandomRect() const;
	// Red, green and blue from rand() in that order, each 0 to 254.
	static rgb_color RandomColor();

	BView* fView;
	BRect fBounds;
	float fScale;
};

#endif // GRAPHICS_WIN_H
