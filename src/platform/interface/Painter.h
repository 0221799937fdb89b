// Where a view's drawing calls end up on screen, in window coordinates
// (pixels). The interface thread paints through FLTK; another thread that
// holds the window lock paints through a connection of its own to the
// display, onto the window. Internal to the platform layer.
#ifndef PLATFORM_INTERFACE_PAINTER_H
#define PLATFORM_INTERFACE_PAINTER_H

#include "Font.h"
#include "GraphicsDefs.h"

class Fl_Window;

namespace platform_interface {

class Painter
{
public:
	virtual ~Painter();

	virtual void SetColor(rgb_color color) = 0;
	// Line width in pixels; 0 and 1 are the thinnest.
	virtual void SetPenSize(int size) = 0;
	virtual void Line(int x0, int y0, int x1, int y1) = 0;
	// Rectangles (and the rectangles ellipses fit in) by their corner pixels,
	// both included, as the view was given them: left may lie right of
	// right and top below bottom. FLTK has no meaning for such a rectangle
	// and draws nothing; a thread's own connection sends it to the display
	// server like any other, as the rectangle between the two corners (X
	// describes rectangles by a corner and a size), so that a program that
	// draws random corners has every shape drawn.
	virtual void StrokeRect(int left, int top, int right, int bottom) = 0;
	virtual void FillRect(int left, int top, int right, int bottom) = 0;
	virtual void InvertRect(int left, int top, int right, int bottom) = 0;
	virtual void StrokeEllipse(int left, int top, int right, int bottom) = 0;
	virtual void FillEllipse(int left, int top, int right, int bottom) = 0;
	// xy holds count points, x then y.
	virtual void StrokePolygon(const int* xy, int count, bool closed) = 0;
	virtual void FillPolygon(const int* xy, int count) = 0;
	// Draws length bytes of string on the baseline from (x, y) and answers
	// the width drawn.
	virtual float String(const char* string, int length, int x, int y, const BFont& font) = 0;
	// width x height pixels of 3 bytes (red, green, blue).
	virtual void Image(const unsigned char* rgb, int x, int y, int width, int height) = 0;
	virtual void Flush() = 0;
	virtual void Sync() = 0;
};

// FLTK's drawing functions on the window FLTK has made current.
Painter* FltkPainter();
// The calling thread's own connection, aimed at window (which is shown);
// null when the display cannot be opened.
Painter* WorkerPainter(Fl_Window* window);
// The calling thread's connection, if it has one, for Flush and Sync.
Painter* ExistingWorkerPainter();
// For a thread that has just shown window and is about to draw on it: opens
// the thread's connection, waits (two seconds at most) until the server
// shows the window, and opens the font a view draws with by default, so
// that none of this lands in what the thread times next.
void PrepareWorkerDrawing(Fl_Window* window);
// Waits until the server has drawn what the calling thread's connection
// sent: the server takes each client's requests in turn, so drawing still
// queued from a thread would otherwise meet its window already destroyed or
// hidden by the interface thread.
void FinishWorkerDrawing();
// The same, then lets go of what the calling thread's connection holds for
// the window it drew on last (its graphics context and text drawable), which
// is about to be destroyed.
void ReleaseWorkerWindow();

} // namespace platform_interface

#endif // PLATFORM_INTERFACE_PAINTER_H
