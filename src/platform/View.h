// A view: a named rectangle of a window that draws and takes mouse and key
// events. Views form a tree under the window; their names and parent chains
// are what the help keys are built from. A view's frame is in its parent's
// coordinates with BeOS inclusive edges: frame (10, 10, 59, 29) covers 50 x 20
// pixels. Children of the window itself answer a null Parent().
//
// Drawing calls go, in this order of precedence:
//  - to the recorder set with SetDrawingRecorder (no display needed);
//  - inside Draw (and the DrawItem calls made from it) on the interface
//    thread, to the window being redrawn;
//  - otherwise, with the window locked and shown, straight to the window on
//    screen: the interface thread draws through FLTK, any other thread
//    through a connection of its own to the display (Flush sends what that
//    thread drew).
// Coordinates are floats in the view's coordinates; pixels are whole numbers,
// rounded to the nearest.
//
// Like every interface object, a view attached to a window is used with the
// window locked (or on the interface thread, which always holds the lock).
#ifndef VIEW_H
#define VIEW_H

#include <vector>

#include "Font.h"
#include "GraphicsDefs.h"
#include "Handler.h"
#include "InterfaceDefs.h"
#include "Point.h"
#include "Rect.h"

class BBitmap;
class BDrawingRecorder;
class BMessage;
class BWindow;
class Fl_Widget;
class Fl_Group;

struct drawing_call;

namespace platform_interface {
class Painter;
class ViewWidget;
} // namespace platform_interface

// Resizing modes: how the view follows its parent's size changes.
enum {
	B_FOLLOW_NONE = 0,
	B_FOLLOW_LEFT = 0x0202,
	B_FOLLOW_RIGHT = 0x0404,
	B_FOLLOW_LEFT_RIGHT = 0x0204,
	B_FOLLOW_H_CENTER = 0x0505,
	B_FOLLOW_TOP = 0x1010,
	B_FOLLOW_BOTTOM = 0x3030,
	B_FOLLOW_TOP_BOTTOM = 0x1030,
	B_FOLLOW_V_CENTER = 0x5050,
	B_FOLLOW_ALL_SIDES = 0x1234,
	B_FOLLOW_ALL = 0x1234,
};

// View flags.
enum {
	B_FULL_UPDATE_ON_RESIZE = 0x80000000,
	B_WILL_DRAW = 0x20000000,
	B_PULSE_NEEDED = 0x10000000,
	B_NAVIGABLE_JUMP = 0x08000000,
	B_FRAME_EVENTS = 0x04000000,
	B_NAVIGABLE = 0x02000000,
	B_SUBPIXEL_PRECISE = 0x01000000,
	B_INPUT_METHOD_AWARE = 0x00800000,
	B_DRAW_ON_CHILDREN = 0x00400000,
};

// Transits of MouseMoved and mouse buttons.
enum {
	B_ENTERED_VIEW = 0,
	B_INSIDE_VIEW,
	B_EXITED_VIEW,
	B_OUTSIDE_VIEW,
};
enum {
	B_PRIMARY_MOUSE_BUTTON = 1,
	B_SECONDARY_MOUSE_BUTTON = 2,
	B_TERTIARY_MOUSE_BUTTON = 4,
};

// SetFont masks.
enum {
	B_FONT_FAMILY_AND_STYLE = 0x1,
	B_FONT_SIZE = 0x2,
	B_FONT_FACE = 0x100,
	B_FONT_ALL = 0x1ff,
};

struct escapement_delta {
	float nonspace;
	float space;
};

class BView : public BHandler
{
public:
	BView(BRect frame, const char* name, uint32 resizingMode, uint32 flags);
	~BView() override;

	// Hooks, called on the interface thread with the window locked.
	virtual void AttachedToWindow();
	virtual void AllAttached();
	virtual void DetachedFromWindow();
	// updateRect is in the view's coordinates.
	virtual void Draw(BRect updateRect);
	virtual void MouseDown(BPoint where);
	virtual void MouseUp(BPoint where);
	virtual void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage);
	// bytes holds the character(s) of the key; the B_KEY_DOWN message being
	// dispatched is Window()->CurrentMessage().
	virtual void KeyDown(const char* bytes, int32 numBytes);
	// Only for views with B_FRAME_EVENTS. New width and height (inclusive).
	virtual void FrameResized(float newWidth, float newHeight);
	virtual void FrameMoved(BPoint newPosition);
	virtual void MakeFocus(bool focused = true);
	bool IsFocus() const;
	void MessageReceived(BMessage* message) override;

	// The tree. A view is owned by its parent (or window) and deleted with it.
	void AddChild(BView* child, BView* before = nullptr);
	bool RemoveChild(BView* child);
	bool RemoveSelf();
	int32 CountChildren() const;
	BView* ChildAt(int32 index) const;
	BView* NextSibling() const;
	BView* PreviousSibling() const;
	// This view or a descendant with that name, depth first; null if none.
	BView* FindView(const char* name) const;
	// Null for a child of the window itself.
	BView* Parent() const;
	BWindow* Window() const;

	BRect Frame() const;
	// (0, 0, width, height) moved by the scrolling offset.
	BRect Bounds() const;
	void MoveTo(BPoint where);
	void MoveTo(float x, float y);
	void MoveBy(float dx, float dy);
	void ResizeTo(float width, float height);
	void ResizeBy(float dx, float dy);
	// Scrolls the contents: Bounds().LeftTop() becomes where.
	void ScrollTo(BPoint where);
	void ScrollBy(float dx, float dy);
	uint32 ResizingMode() const { return fResizingMode; }
	void SetResizingMode(uint32 mode);
	uint32 Flags() const { return fFlags; }
	void SetFlags(uint32 flags);
	virtual void Show();
	virtual void Hide();
	bool IsHidden() const;

	void ConvertToScreen(BPoint* point) const;
	BPoint ConvertToScreen(BPoint point) const;
	BRect ConvertToScreen(BRect rect) const;
	void ConvertFromScreen(BPoint* point) const;
	BPoint ConvertFromScreen(BPoint point) const;
	BRect ConvertFromScreen(BRect rect) const;
	BPoint ConvertToParent(BPoint point) const;
	BPoint ConvertFromParent(BPoint point) const;
	// Where the pointer is, in this view's coordinates, and which buttons are
	// down (only known on the interface thread; 0 elsewhere).
	void GetMouse(BPoint* location, uint32* buttons, bool checkHistory = true);

	// The colour painted under the view's drawing before Draw is called.
	void SetViewColor(rgb_color color);
	void SetViewColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255);
	rgb_color ViewColor() const { return fViewColor; }
	void SetHighColor(rgb_color color);
	void SetHighColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255);
	rgb_color HighColor() const { return fHighColor; }
	void SetLowColor(rgb_color color);
	void SetLowColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255);
	rgb_color LowColor() const { return fLowColor; }
	void SetDrawingMode(drawing_mode mode);
	drawing_mode DrawingMode() const { return fDrawingMode; }
	void SetPenSize(float size);
	float PenSize() const { return fPenSize; }

	void SetFont(const BFont* font, uint32 mask = B_FONT_ALL);
	void GetFont(BFont* font) const;
	void SetFontSize(float size);
	float StringWidth(const char* string) const;
	float StringWidth(const char* string, int32 length) const;
	void GetFontHeight(font_height* height) const;

	// The text shown while the pointer rests on the view; null or empty for
	// none. Any thread.
	void SetToolTip(const char* text);
	// The view's tool tip, or "" without one.
	const char* ToolTipText() const;

	void MovePenTo(BPoint where);
	void MovePenTo(float x, float y);
	void MovePenBy(float dx, float dy);
	BPoint PenLocation() const { return fPenLocation; }

	// Lines leave the pen at their end; strings move it past the text.
	void StrokeLine(BPoint end, const pattern& p = B_SOLID_HIGH);
	void StrokeLine(BPoint start, BPoint end, const pattern& p = B_SOLID_HIGH);
	void StrokeRect(BRect rect, const pattern& p = B_SOLID_HIGH);
	void FillRect(BRect rect, const pattern& p = B_SOLID_HIGH);
	// Inverts the colours of the pixels of rect.
	void InvertRect(BRect rect);
	void StrokeEllipse(BRect rect, const pattern& p = B_SOLID_HIGH);
	void StrokeEllipse(BPoint center, float xRadius, float yRadius,
	                   const pattern& p = B_SOLID_HIGH);
	void FillEllipse(BRect rect, const pattern& p = B_SOLID_HIGH);
	void FillEllipse(BPoint center, float xRadius, float yRadius, const pattern& p = B_SOLID_HIGH);
	void StrokeTriangle(BPoint p1, BPoint p2, BPoint p3, const pattern& p = B_SOLID_HIGH);
	void FillTriangle(BPoint p1, BPoint p2, BPoint p3, const pattern& p = B_SOLID_HIGH);
	void StrokePolygon(const BPoint* points, int32 count, bool closed = true,
	                   const pattern& p = B_SOLID_HIGH);
	void FillPolygon(const BPoint* points, int32 count, const pattern& p = B_SOLID_HIGH);
	// where is the left end of the baseline.
	void DrawString(const char* string, BPoint where, const escapement_delta* delta = nullptr);
	void DrawString(const char* string, const escapement_delta* delta = nullptr);
	void DrawString(const char* string, int32 length, BPoint where);
	// B_CMAP8 pixels through the system palette, B_RGB32/B_RGBA32 directly;
	// the source rectangle is drawn at the destination's left top, unscaled.
	void DrawBitmap(const BBitmap* bitmap, BRect source, BRect destination);
	void DrawBitmap(const BBitmap* bitmap, BPoint where);
	void DrawBitmap(const BBitmap* bitmap);

	// Asks for Draw to be called soon on the interface thread.
	void Invalidate();
	void Invalidate(BRect rect);
	// Sends drawing still buffered to the display server (XFlush); Sync also
	// waits until the server has drawn it.
	void Flush() const;
	void Sync() const;

	// Every drawing call of this view goes to recorder (not owned) instead of
	// the screen; null draws again.
	void SetDrawingRecorder(BDrawingRecorder* recorder);
	BDrawingRecorder* DrawingRecorder() const { return fRecorder; }

protected:
	// For controls built on an FLTK widget: the widget (owned) fills the view
	// and sits under the view's children.
	void SetNativeWidget(Fl_Widget* widget);
	Fl_Widget* NativeWidget() const { return fNative; }
	// Called after the view's frame or window position changed.
	virtual void LayoutNative();
	// A tool tip for a part of the view (the view's coordinates), shown
	// while the pointer is over it; text must stay valid until the next
	// call. Null or empty hides it.
	void ShowAreaToolTip(BRect area, const char* text);

private:
	friend class BWindow;
	friend class platform_interface::ViewWidget;

	void AttachTo(BWindow* window);
	void DetachFrom();
	void UpdateGeometry();
	void ParentResized(float dx, float dy);
	BPoint WindowOffset() const;
	// Where this view's drawing goes now, or null when nothing can be drawn.
	// offset: window coordinates of the view's (0, 0).
	platform_interface::Painter* BeginDrawing(BPoint* offset) const;
	void Record(drawing_call& call, const pattern& p) const;
	BView* ViewAt(BPoint windowPoint);

	BRect fFrame;
	BPoint fOrigin;
	uint32 fResizingMode;
	uint32 fFlags;
	BView* fParent;
	BWindow* fWindow;
	std::vector<BView*> fChildren;
	bool fHidden;

	rgb_color fViewColor;
	rgb_color fHighColor;
	rgb_color fLowColor;
	drawing_mode fDrawingMode;
	float fPenSize;
	BFont fFont;
	BPoint fPenLocation;
	BDrawingRecorder* fRecorder;

	platform_interface::ViewWidget* fWidget;
	Fl_Widget* fNative;
};

#endif // VIEW_H
