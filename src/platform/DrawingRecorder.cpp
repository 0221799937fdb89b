#include "DrawingRecorder.h"

#include <cstdio>

namespace {

const char*
KindName(drawing_call_kind kind)
{
	switch (kind) {
		case B_CALL_STROKE_LINE:
			return "StrokeLine";
		case B_CALL_STROKE_RECT:
			return "StrokeRect";
		case B_CALL_FILL_RECT:
			return "FillRect";
		case B_CALL_INVERT_RECT:
			return "InvertRect";
		case B_CALL_STROKE_ELLIPSE:
			return "StrokeEllipse";
		case B_CALL_FILL_ELLIPSE:
			return "FillEllipse";
		case B_CALL_STROKE_POLYGON:
			return "StrokePolygon";
		case B_CALL_FILL_POLYGON:
			return "FillPolygon";
		case B_CALL_DRAW_STRING:
			return "DrawString";
		case B_CALL_DRAW_BITMAP:
			return "DrawBitmap";
		case B_CALL_FLUSH:
			return "Flush";
		case B_CALL_SYNC:
			return "Sync";
	}
	return "?";
}

} // namespace


BDrawingRecorder::BDrawingRecorder()
{
}


void
BDrawingRecorder::Record(const drawing_call& call)
{
	fCalls.push_back(call);
}


std::vector<drawing_call>
BDrawingRecorder::CallsOf(drawing_call_kind kind) const
{
	std::vector<drawing_call> calls;
	for (const drawing_call& call : fCalls) {
		if (call.kind == kind)
			calls.push_back(call);
	}
	return calls;
}


void
BDrawingRecorder::Clear()
{
	fCalls.clear();
}


void
BDrawingRecorder::PrintToStream() const
{
	for (const drawing_call& call : fCalls) {
		fprintf(stderr, "%s rect (%g, %g, %g, %g) high %d,%d,%d", KindName(call.kind),
		        call.rect.left, call.rect.top, call.rect.right, call.rect.bottom, call.high.red,
		        call.high.green, call.high.blue);
		for (const BPoint& point : call.points)
			fprintf(stderr, " (%g, %g)", point.x, point.y);
		if (!call.text.empty())
			fprintf(stderr, " \"%s\" size %g", call.text.c_str(), call.fontSize);
		fprintf(stderr, "\n");
	}
}
