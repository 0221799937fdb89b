// A drawing surface that needs no display: a view pointed at a recorder with
// BView::SetDrawingRecorder logs every drawing call, with its coordinates in
// the view's own coordinates (as the view was asked, before any clipping),
// the colours and font size in force, and the text of strings, instead of
// drawing. Tests read the calls back to check what a view draws.
#ifndef DRAWING_RECORDER_H
#define DRAWING_RECORDER_H

#include <string>
#include <vector>

#include "GraphicsDefs.h"
#include "Point.h"
#include "Rect.h"

enum drawing_call_kind {
	B_CALL_STROKE_LINE,
	B_CALL_STROKE_RECT,
	B_CALL_FILL_RECT,
	B_CALL_INVERT_RECT,
	B_CALL_STROKE_ELLIPSE,
	B_CALL_FILL_ELLIPSE,
	B_CALL_STROKE_POLYGON, // triangles too
	B_CALL_FILL_POLYGON,
	B_CALL_DRAW_STRING,
	B_CALL_DRAW_BITMAP,
	B_CALL_FLUSH,
	B_CALL_SYNC,
};

struct drawing_call {
	drawing_call_kind kind;
	// Lines: the two ends; polygons and triangles: the corners; strings: the
	// baseline origin.
	std::vector<BPoint> points;
	// Rectangles, ellipses (bounding rectangle), bitmaps (destination).
	BRect rect;
	rgb_color high;
	rgb_color low;
	// Strings only.
	std::string text;
	float fontSize;
	// Whether the low colour was the pattern (B_SOLID_LOW).
	bool lowPattern;
};

class BDrawingRecorder
{
public:
	BDrawingRecorder();

	void Record(const drawing_call& call);
	const std::vector<drawing_call>& Calls() const { return fCalls; }
	int32 CountCalls() const { return static_cast<int32>(fCalls.size()); }
	// The calls of one kind, in the order they were made.
	std::vector<drawing_call> CallsOf(drawing_call_kind kind) const;
	void Clear();
	// One line per call on standard error.
	void PrintToStream() const;

private:
	std::vector<drawing_call> fCalls;
};

#endif // DRAWING_RECORDER_H
