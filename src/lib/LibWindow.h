// The support library's window: a BWindow that places itself by a numbered
// screen position, comes to the front with Pop, and turns Shift+F1 over one
// of its views into a help request for the application.
//
// Screen positions follow a numeric keypad:
//
//     7 top left      8 top centre      9 top right
//     4 middle left   5 centre          6 middle right
//     1 bottom left   2 bottom centre   3 bottom right
//
// measured inside the usable area: the screen (or, with a reference window,
// that window's frame) less a margin of kLibScreenMargin pixels on every side
// and kLibTitleAllowance more at the top for the window's title bar (frames
// are content areas). 0 or any other number leaves the window where it is.
// Whatever the position, the window then ends up inside the screen (see
// LibFitInScreen), and, when the program has a main window, beside it rather
// than over it (see AvoidMainWindow).
//
// Keys and closing: Escape closes a closable window; a window that is not
// closable takes its own way out instead, on Escape or when a window manager
// closes it anyway: its "cancel" button, else its menu's quit command (for
// the main window only when the window manager closes it).
#ifndef LIB_WINDOW_H
#define LIB_WINDOW_H

#include <Window.h>

class BView;

enum {
	kLibPositionBottomLeft = 1,
	kLibPositionBottomCentre = 2,
	kLibPositionBottomRight = 3,
	kLibPositionMiddleLeft = 4,
	kLibPositionCentre = 5,
	kLibPositionMiddleRight = 6,
	kLibPositionTopLeft = 7,
	kLibPositionTopCentre = 8,
	kLibPositionTopRight = 9,
};

const float kLibScreenMargin = 8.0f;
const float kLibTitleAllowance = 24.0f;

// What a help request is posted with.
const uint32 kLibHelpRequest = 'help';

class LibWindow : public BWindow
{
public:
	LibWindow(BRect frame, const char* name, window_look look, window_feel feel, uint32 flags,
	          uint32 workspace = B_CURRENT_WORKSPACE);
	LibWindow(BRect frame, const char* name, window_type type, uint32 flags,
	          uint32 workspace = B_CURRENT_WORKSPACE);
	~LibWindow() override;

	// Moves the window to the numbered position (above) on the screen, or on
	// reference's frame when one is given. Any thread, window unlocked or
	// locked.
	void SetPosition(int32 position, BWindow* reference = nullptr);
	// Shows the window if hidden (moved off the main window when it would
	// cover it), activates it and brings it to the front.
	void Pop();

	// The window that the program's other windows keep clear of; null for
	// none. Set by the main window for itself; cleared when it goes.
	static void SetMainWindow(BWindow* window);
	static BWindow* MainWindow();
	// Moves rect, a frame for this window, beside the main window (right of
	// it, else left, else below, else above) when it would cover it and the
	// screen has room there. No main window, or this one: unchanged.
	void AvoidMainWindow(BRect& rect) const;

	void MessageReceived(BMessage* message) override;

	// Shift+F1 (key code 2) over a view: posts 'help' to the application with
	// string "window" (this window's name) and one string "view" per view from
	// the one under the pointer outwards to the window; message "inserts" when
	// InsertHelpRequest answers true. The key is then dispatched as usual.
	void DispatchMessage(BMessage* message, BHandler* handler) override;
	// May add to the help request made for view; true adds it under "inserts".
	virtual bool InsertHelpRequest(BView* view, BMessage* message);

private:
	// Escape or a window manager's close: see above. True when acted on.
	bool TakeWayOut(bool escape);

	static BWindow* sMainWindow;
};

// Moves rect so that it lies inside the main screen, with kLibTitleAllowance
// pixels left free above it for the title bar; a rectangle larger than that
// area in a direction is cut to the area's size in that direction. Nothing
// changes without a screen.
void LibFitInScreen(BRect& rect);

// The frame of a numbered position (as LibWindow::SetPosition computes it)
// for a window of frame's size in area, before fitting into the screen.
BRect LibPositionRect(const BRect& frame, int32 position, const BRect& area);

#endif // LIB_WINDOW_H
