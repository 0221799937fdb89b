#include "View.h"

#include <FL/Fl.H>
#include <FL/Fl_Tooltip.H>
#include <FL/filename.H>
#include <FL/fl_draw.H>
#include <FL/x.H>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "AppDefs.h"
#include "Bitmap.h"
#include "DrawingRecorder.h"
#include "Message.h"
#include "StorageDefs.h"
#include "Window.h"
#include "interface/Painter.h"
#include "interface/UIThread.h"
#include "interface/Widgets.h"

using platform_interface::CallerHoldsUILock;
using platform_interface::IsUIThread;

namespace platform_interface {

namespace {

thread_local int32 sDrawDepth = 0;

} // namespace


bool
InsideDraw()
{
	return sDrawDepth > 0;
}


void
SetFltkColor(rgb_color color)
{
	fl_color(color.red, color.green, color.blue);
}


int32
CurrentModifiers()
{
	int state = Fl::event_state();
	int32 modifiers = 0;
	if ((state & FL_SHIFT) != 0)
		modifiers |= B_SHIFT_KEY;
	if ((state & FL_CTRL) != 0)
		modifiers |= B_COMMAND_KEY;
	if ((state & FL_ALT) != 0)
		modifiers |= B_OPTION_KEY;
	if ((state & FL_CAPS_LOCK) != 0)
		modifiers |= B_CAPS_LOCK;
	if ((state & FL_NUM_LOCK) != 0)
		modifiers |= B_NUM_LOCK;
	if ((state & FL_SCROLL_LOCK) != 0)
		modifiers |= B_SCROLL_LOCK;
	if ((state & FL_META) != 0)
		modifiers |= B_MENU_KEY;
	return modifiers;
}


ViewWidget::ViewWidget(BView* view) : Fl_Group(0, 0, 1, 1), fView(view)
{
	end();
	resizable(nullptr);
	box(FL_NO_BOX);
	clip_children(1);
}


ViewWidget::~ViewWidget()
{
}


void
ViewWidget::draw()
{
	if ((damage() & ~FL_DAMAGE_CHILD) != 0) {
		fl_push_clip(x(), y(), w(), h());
		rgb_color color = fView->ViewColor();
		if (color != B_TRANSPARENT_COLOR) {
			SetFltkColor(color);
			fl_rectf(x(), y(), w(), h());
		}
		if ((fView->Flags() & B_WILL_DRAW) != 0) {
			sDrawDepth++;
			fView->Draw(fView->Bounds());
			sDrawDepth--;
		}
		fl_pop_clip();
	}
	draw_children();
}


int
ViewWidget::handle(int event)
{
	int handled = Fl_Group::handle(event);
	if (event == FL_SHORTCUT)
		return handled;
	BPoint where(Fl::event_x() - x() + fView->Bounds().left,
	             Fl::event_y() - y() + fView->Bounds().top);
	switch (event) {
		case FL_PUSH:
			if (handled)
				return handled;
			if ((fView->Flags() & (B_NAVIGABLE | B_NAVIGABLE_JUMP)) != 0)
				Fl::focus(this);
			fView->MouseDown(where);
			return 1;
		case FL_RELEASE:
			if (handled)
				return handled;
			fView->MouseUp(where);
			return 1;
		case FL_DRAG:
			if (handled)
				return handled;
			fView->MouseMoved(where, B_INSIDE_VIEW, nullptr);
			return 1;
		// A group always takes the pointer's moves: they are this view's
		// when no child is under the pointer, which the group then says by
		// making itself the widget below the mouse.
		case FL_MOVE:
			if (Fl::belowmouse() == this)
				fView->MouseMoved(where, B_INSIDE_VIEW, nullptr);
			return 1;
		case FL_ENTER:
			if (Fl::belowmouse() == this)
				fView->MouseMoved(where, B_ENTERED_VIEW, nullptr);
			return 1;
		case FL_LEAVE:
			if (!handled)
				fView->MouseMoved(where, B_EXITED_VIEW, nullptr);
			return 1;
		case FL_FOCUS:
		case FL_UNFOCUS:
			if (handled)
				return handled;
			return (fView->Flags() & (B_NAVIGABLE | B_NAVIGABLE_JUMP)) != 0 ? 1 : 0;
		case FL_DND_ENTER:
		case FL_DND_DRAG:
		case FL_DND_LEAVE:
		case FL_DND_RELEASE:
			return handled != 0 ? handled : (fView->Window() != nullptr ? 1 : 0);
		case FL_PASTE:
			if (handled)
				return handled;
			return PostDrop() ? 1 : 0;
		case FL_KEYBOARD:
			if (handled)
				return handled;
			// Keys with Ctrl or Alt go on to the shortcuts of the window, Tab
			// to the parents, which move the focus on.
			if (Fl::focus() != this || (Fl::event_state() & (FL_CTRL | FL_ALT)) != 0 ||
			    Fl::event_key() == FL_Tab)
				return 0;
			if (fView->Window() != nullptr)
				return fView->Window()->HandleKey(event) ? 1 : 0;
			return 0;
		default:
			return handled;
	}
}

// Files dropped on the view arrive as text, one per line: file:// URIs or
// plain paths. They go to the view as B_SIMPLE_DATA with one entry_ref
// "refs" per file; a view that does not handle it passes it on to its parents
// and the window.
bool
ViewWidget::PostDrop()
{
	BWindow* window = fView->Window();
	const char* text = Fl::event_text();
	if (window == nullptr || text == nullptr)
		return false;
	BMessage message(B_SIMPLE_DATA);
	std::string all(text, static_cast<size_t>(std::max(0, Fl::event_length())));
	size_t start = 0;
	while (start < all.size()) {
		size_t end = all.find('\n', start);
		if (end == std::string::npos)
			end = all.size();
		std::string line = all.substr(start, end - start);
		start = end + 1;
		while (!line.empty() && (line.back() == '\r' || line.back() == ' '))
			line.pop_back();
		if (line.compare(0, 7, "file://") == 0) {
			line.erase(0, 7);
			// A host part (file://host/path) is dropped.
			size_t slash = line.find('/');
			if (slash != std::string::npos)
				line.erase(0, slash);
			std::vector<char> decoded(line.begin(), line.end());
			decoded.push_back('\0');
			fl_decode_uri(decoded.data());
			line = decoded.data();
		}
		if (line.empty() || line[0] != '/')
			continue;
		entry_ref ref(line.c_str());
		message.AddRef("refs", &ref);
	}
	if (!message.HasRef("refs"))
		return false;
	window->PostMessage(&message, fView);
	return true;
}

} // namespace platform_interface


using platform_interface::ViewWidget;

namespace {

inline int
Pixel(float value)
{
	return static_cast<int>(std::floor(value + 0.5f));
}


class GroupCurrentReset
{
public:
	GroupCurrentReset() : fSaved(Fl_Group::current()) { Fl_Group::current(nullptr); }
	~GroupCurrentReset() { Fl_Group::current(fSaved); }

private:
	Fl_Group* fSaved;
};

} // namespace


BView::BView(BRect frame, const char* name, uint32 resizingMode, uint32 flags)
    : BHandler(name), fFrame(frame), fOrigin(0, 0), fResizingMode(resizingMode), fFlags(flags),
      fParent(nullptr), fWindow(nullptr), fHidden(false), fViewColor(make_color(255, 255, 255)),
      fHighColor(make_color(0, 0, 0)), fLowColor(make_color(255, 255, 255)),
      fDrawingMode(B_OP_COPY), fPenSize(1.0f), fFont(*be_plain_font), fPenLocation(0, 0),
      fRecorder(nullptr), fWidget(nullptr), fNative(nullptr)
{
	platform_interface::UIGuard guard;
	GroupCurrentReset reset;
	fWidget = new ViewWidget(this);
	UpdateGeometry();
}


BView::~BView()
{
	platform_interface::UIGuard guard;
	while (!fChildren.empty()) {
		BView* child = fChildren.back();
		RemoveChild(child);
		delete child;
	}
	if (fParent != nullptr)
		fParent->RemoveChild(this);
	else if (fWindow != nullptr)
		fWindow->RemoveChild(this);
	if (fNative != nullptr) {
		fWidget->remove(fNative);
		delete fNative;
	}
	delete fWidget;
}


// #pragma mark - hooks


void
BView::AttachedToWindow()
{
}


void
BView::AllAttached()
{
}


void
BView::DetachedFromWindow()
{
}


void
BView::Draw(BRect updateRect)
{
	(void)updateRect;
}


void
BView::MouseDown(BPoint where)
{
	(void)where;
}


void
BView::MouseUp(BPoint where)
{
	(void)where;
}


void
BView::MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage)
{
	(void)where;
	(void)transit;
	(void)dragMessage;
}


void
BView::KeyDown(const char* bytes, int32 numBytes)
{
	(void)bytes;
	(void)numBytes;
}


void
BView::FrameResized(float newWidth, float newHeight)
{
	(void)newWidth;
	(void)newHeight;
}


void
BView::FrameMoved(BPoint newPosition)
{
	(void)newPosition;
}


void
BView::MakeFocus(bool focused)
{
	Fl_Widget* widget = fNative != nullptr ? fNative : fWidget;
	if (focused)
		widget->take_focus();
	else if (Fl::focus() == widget)
		Fl::focus(nullptr);
}


bool
BView::IsFocus() const
{
	Fl_Widget* focus = Fl::focus();
	return focus != nullptr && (focus == fWidget || focus == fNative);
}


void
BView::MessageReceived(BMessage* message)
{
	BHandler::MessageReceived(message);
}


// #pragma mark - the tree


void
BView::AddChild(BView* child, BView* before)
{
	if (child == nullptr || child->fParent != nullptr || child->fWindow != nullptr)
		return;
	auto position = std::find(fChildren.begin(), fChildren.end(), before);
	Fl_Widget* beforeWidget = position != fChildren.end() ? (*position)->fWidget : nullptr;
	fChildren.insert(position, child);
	child->fParent = this;
	if (beforeWidget != nullptr)
		fWidget->insert(*child->fWidget, beforeWidget);
	else
		fWidget->add(child->fWidget);
	child->UpdateGeometry();
	if (fWindow != nullptr) {
		child->AttachTo(fWindow);
		fWidget->redraw();
	}
}


bool
BView::RemoveChild(BView* child)
{
	auto found = std::find(fChildren.begin(), fChildren.end(), child);
	if (child == nullptr || found == fChildren.end())
		return false;
	if (fWindow != nullptr) {
		child->DetachFrom();
		fWidget->redraw();
	}
	fChildren.erase(found);
	fWidget->remove(child->fWidget);
	child->fParent = nullptr;
	child->UpdateGeometry();
	return true;
}


bool
BView::RemoveSelf()
{
	if (fParent != nullptr)
		return fParent->RemoveChild(this);
	if (fWindow != nullptr)
		return fWindow->RemoveChild(this);
	return false;
}


int32
BView::CountChildren() const
{
	return static_cast<int32>(fChildren.size());
}


BView*
BView::ChildAt(int32 index) const
{
	if (index < 0 || index >= CountChildren())
		return nullptr;
	return fChildren[index];
}


BView*
BView::NextSibling() const
{
	const std::vector<BView*>* siblings = nullptr;
	if (fParent != nullptr)
		siblings = &fParent->fChildren;
	else if (fWindow != nullptr)
		siblings = &fWindow->fChildren;
	if (siblings == nullptr)
		return nullptr;
	auto found = std::find(siblings->begin(), siblings->end(), this);
	if (found == siblings->end() || found + 1 == siblings->end())
		return nullptr;
	return *(found + 1);
}


BView*
BView::PreviousSibling() const
{
	const std::vector<BView*>* siblings = nullptr;
	if (fParent != nullptr)
		siblings = &fParent->fChildren;
	else if (fWindow != nullptr)
		siblings = &fWindow->fChildren;
	if (siblings == nullptr)
		return nullptr;
	auto found = std::find(siblings->begin(), siblings->end(), this);
	if (found == siblings->end() || found == siblings->begin())
		return nullptr;
	return *(found - 1);
}


BView*
BView::FindView(const char* name) const
{
	if (name == nullptr)
		return nullptr;
	if (strcmp(Name(), name) == 0)
		return const_cast<BView*>(this);
	for (BView* child : fChildren) {
		BView* found = child->FindView(name);
		if (found != nullptr)
			return found;
	}
	return nullptr;
}


BView*
BView::Parent() const
{
	return fParent;
}


BWindow*
BView::Window() const
{
	return fWindow;
}


void
BView::AttachTo(BWindow* window)
{
	fWindow = window;
	window->AddHandler(this);
	// Messages a view leaves alone go on to its parent, and at the top to
	// the window.
	if (fParent != nullptr)
		SetNextHandler(fParent);
	else
		SetNextHandler(window);
	for (BView* child : fChildren)
		child->AttachTo(window);
	UpdateGeometry();
	AttachedToWindow();
	AllAttached();
}


void
BView::DetachFrom()
{
	for (BView* child : fChildren)
		child->DetachFrom();
	DetachedFromWindow();
	if (fWindow != nullptr) {
		fWindow->ViewRemoved(this);
		fWindow->RemoveHandler(this);
	}
	SetNextHandler(nullptr);
	fWindow = nullptr;
}


// #pragma mark - geometry


BPoint
BView::WindowOffset() const
{
	BPoint offset(fFrame.left, fFrame.top);
	if (fParent != nullptr) {
		BPoint parent = fParent->WindowOffset();
		offset.x += parent.x - fParent->fOrigin.x;
		offset.y += parent.y - fParent->fOrigin.y;
	}
	return offset;
}


void
BView::UpdateGeometry()
{
	BPoint offset = WindowOffset();
	fWidget->Fl_Widget::resize(Pixel(offset.x), Pixel(offset.y), Pixel(fFrame.Width()) + 1,
	                           Pixel(fFrame.Height()) + 1);
	LayoutNative();
	for (BView* child : fChildren)
		child->UpdateGeometry();
	fWidget->redraw();
}


void
BView::LayoutNative()
{
	if (fNative != nullptr)
		fNative->resize(fWidget->x(), fWidget->y(), fWidget->w(), fWidget->h());
}


void
BView::SetNativeWidget(Fl_Widget* widget)
{
	if (fNative != nullptr) {
		fWidget->remove(fNative);
		delete fNative;
	}
	fNative = widget;
	if (widget != nullptr) {
		fWidget->insert(*widget, 0);
		LayoutNative();
	}
}


// How a view follows a change of its parent's size by dx and dy.
void
BView::ParentResized(float dx, float dy)
{
	auto follow = [](uint32 rule, float delta) -> float {
		switch (rule) {
			case 4: // right
			case 3: // bottom
				return delta;
			case 5: // centre
				return std::floor(delta / 2);
			default:
				return 0;
		}
	};
	BRect old = fFrame;
	fFrame.left += follow((fResizingMode >> 8) & 0xf, dx);
	fFrame.right += follow(fResizingMode & 0xf, dx);
	fFrame.top += follow((fResizingMode >> 12) & 0xf, dy);
	fFrame.bottom += follow((fResizingMode >> 4) & 0xf, dy);
	float childDx = fFrame.Width() - old.Width();
	float childDy = fFrame.Height() - old.Height();
	for (BView* child : fChildren)
		child->ParentResized(childDx, childDy);
	UpdateGeometry();
	if ((childDx != 0 || childDy != 0) && (fFlags & B_FRAME_EVENTS) != 0)
		FrameResized(fFrame.Width(), fFrame.Height());
	if ((old.left != fFrame.left || old.top != fFrame.top) && (fFlags & B_FRAME_EVENTS) != 0)
		FrameMoved(fFrame.LeftTop());
}


BRect
BView::Frame() const
{
	return fFrame;
}


BRect
BView::Bounds() const
{
	return BRect(fOrigin.x, fOrigin.y, fOrigin.x + fFrame.Width(), fOrigin.y + fFrame.Height());
}


void
BView::MoveTo(BPoint where)
{
	MoveBy(where.x - fFrame.left, where.y - fFrame.top);
}


void
BView::MoveTo(float x, float y)
{
	MoveTo(BPoint(x, y));
}


void
BView::MoveBy(float dx, float dy)
{
	if (dx == 0 && dy == 0)
		return;
	fFrame.left += dx;
	fFrame.right += dx;
	fFrame.top += dy;
	fFrame.bottom += dy;
	if (fParent != nullptr)
		fParent->fWidget->redraw();
	else if (fWindow != nullptr)
		fWindow->fWidget->redraw();
	UpdateGeometry();
	if ((fFlags & B_FRAME_EVENTS) != 0)
		FrameMoved(fFrame.LeftTop());
}


void
BView::ResizeTo(float width, float height)
{
	ResizeBy(width - fFrame.Width(), height - fFrame.Height());
}


void
BView::ResizeBy(float dx, float dy)
{
	if (dx == 0 && dy == 0)
		return;
	fFrame.right += dx;
	fFrame.bottom += dy;
	for (BView* child : fChildren)
		child->ParentResized(dx, dy);
	if (fParent != nullptr)
		fParent->fWidget->redraw();
	else if (fWindow != nullptr)
		fWindow->fWidget->redraw();
	UpdateGeometry();
	if ((fFlags & B_FRAME_EVENTS) != 0)
		FrameResized(fFrame.Width(), fFrame.Height());
}


void
BView::ScrollTo(BPoint where)
{
	if (where == fOrigin)
		return;
	fOrigin = where;
	UpdateGeometry();
}


void
BView::ScrollBy(float dx, float dy)
{
	ScrollTo(BPoint(fOrigin.x + dx, fOrigin.y + dy));
}


void
BView::SetResizingMode(uint32 mode)
{
	fResizingMode = mode;
}


void
BView::SetFlags(uint32 flags)
{
	fFlags = flags;
	fWidget->redraw();
}


void
BView::Show()
{
	if (!fHidden)
		return;
	fHidden = false;
	fWidget->show();
	platform_interface::WakeUI();
}


void
BView::Hide()
{
	if (fHidden)
		return;
	fHidden = true;
	fWidget->hide();
	platform_interface::WakeUI();
}


bool
BView::IsHidden() const
{
	if (fHidden)
		return true;
	if (fParent != nullptr)
		return fParent->IsHidden();
	if (fWindow != nullptr)
		return fWindow->IsHidden();
	return false;
}


void
BView::ConvertToScreen(BPoint* point) const
{
	*point = ConvertToScreen(*point);
}


BPoint
BView::ConvertToScreen(BPoint point) const
{
	BPoint offset = WindowOffset();
	BPoint result(point.x - fOrigin.x + offset.x, point.y - fOrigin.y + offset.y);
	if (fWindow != nullptr) {
		BRect frame = fWindow->Frame();
		result.x += frame.left;
		result.y += frame.top;
	}
	return result;
}


BRect
BView::ConvertToScreen(BRect rect) const
{
	return BRect(ConvertToScreen(rect.LeftTop()), ConvertToScreen(rect.RightBottom()));
}


void
BView::ConvertFromScreen(BPoint* point) const
{
	*point = ConvertFromScreen(*point);
}


BPoint
BView::ConvertFromScreen(BPoint point) const
{
	BPoint origin = ConvertToScreen(BPoint(0, 0));
	return BPoint(point.x - origin.x, point.y - origin.y);
}


BRect
BView::ConvertFromScreen(BRect rect) const
{
	return BRect(ConvertFromScreen(rect.LeftTop()), ConvertFromScreen(rect.RightBottom()));
}


BPoint
BView::ConvertToParent(BPoint point) const
{
	return BPoint(point.x - fOrigin.x + fFrame.left, point.y - fOrigin.y + fFrame.top);
}


BPoint
BView::ConvertFromParent(BPoint point) const
{
	return BPoint(point.x - fFrame.left + fOrigin.x, point.y - fFrame.top + fOrigin.y);
}


void
BView::GetMouse(BPoint* location, uint32* buttons, bool checkHistory)
{
	(void)checkHistory;
	if (location != nullptr) {
		if (IsUIThread() && fWindow != nullptr) {
			*location = ConvertFromScreen(BPoint(static_cast<float>(Fl::event_x_root()),
			                                     static_cast<float>(Fl::event_y_root())));
		} else {
			*location = BPoint(-1, -1);
		}
	}
	if (buttons != nullptr) {
		uint32 state = 0;
		if (IsUIThread()) {
			int fltk = Fl::event_buttons();
			if ((fltk & FL_BUTTON1) != 0)
				state |= B_PRIMARY_MOUSE_BUTTON;
			if ((fltk & FL_BUTTON3) != 0)
				state |= B_SECONDARY_MOUSE_BUTTON;
			if ((fltk & FL_BUTTON2) != 0)
				state |= B_TERTIARY_MOUSE_BUTTON;
		}
		*buttons = state;
	}
}


// The deepest visible view (this one or a descendant) containing the point,
// given in window coordinates.
BView*
BView::ViewAt(BPoint windowPoint)
{
	if (fHidden)
		return nullptr;
	BPoint offset = WindowOffset();
	if (windowPoint.x < offset.x || windowPoint.y < offset.y ||
	    windowPoint.x > offset.x + fFrame.Width() || windowPoint.y > offset.y + fFrame.Height())
		return nullptr;
	for (auto child = fChildren.rbegin(); child != fChildren.rend(); ++child) {
		BView* found = (*child)->ViewAt(windowPoint);
		if (found != nullptr)
			return found;
	}
	return this;
}


// #pragma mark - state


void
BView::SetViewColor(rgb_color color)
{
	fViewColor = color;
	fWidget->redraw();
}


void
BView::SetViewColor(uint8 red, uint8 green, uint8 blue, uint8 alpha)
{
	SetViewColor(make_color(red, green, blue, alpha));
}


void
BView::SetHighColor(rgb_color color)
{
	fHighColor = color;
}


void
BView::SetHighColor(uint8 red, uint8 green, uint8 blue, uint8 alpha)
{
	fHighColor = make_color(red, green, blue, alpha);
}


void
BView::SetLowColor(rgb_color color)
{
	fLowColor = color;
}


void
BView::SetLowColor(uint8 red, uint8 green, uint8 blue, uint8 alpha)
{
	fLowColor = make_color(red, green, blue, alpha);
}


void
BView::SetDrawingMode(drawing_mode mode)
{
	fDrawingMode = mode;
}


void
BView::SetPenSize(float size)
{
	fPenSize = size;
}


void
BView::SetFont(const BFont* font, uint32 mask)
{
	if (font == nullptr)
		return;
	if ((mask & B_FONT_SIZE) != 0)
		fFont.SetSize(font->Size());
	if ((mask & B_FONT_FAMILY_AND_STYLE) != 0) {
		uint16 face = fFont.Face();
		float size = fFont.Size();
		fFont = BFont(font->Kind(), size);
		fFont.SetFace(face);
	}
	if ((mask & B_FONT_FACE) != 0)
		fFont.SetFace(font->Face());
	fWidget->redraw();
}


void
BView::GetFont(BFont* font) const
{
	if (font != nullptr)
		*font = fFont;
}


void
BView::SetFontSize(float size)
{
	fFont.SetSize(size);
	fWidget->redraw();
}


float
BView::StringWidth(const char* string) const
{
	return fFont.StringWidth(string);
}


float
BView::StringWidth(const char* string, int32 length) const
{
	return fFont.StringWidth(string, length);
}


void
BView::GetFontHeight(font_height* height) const
{
	fFont.GetHeight(height);
}


void
BView::SetToolTip(const char* text)
{
	const char* current = fWidget->tooltip();
	if ((text == nullptr || text[0] == '\0') && current == nullptr)
		return;
	if (text != nullptr && current != nullptr && strcmp(text, current) == 0)
		return;
	platform_interface::UIGuard guard;
	fWidget->copy_tooltip(text != nullptr && text[0] != '\0' ? text : nullptr);
}


// FLTK places the tip below the area, at the pointer; the area is given in
// window coordinates.
void
BView::ShowAreaToolTip(BRect area, const char* text)
{
	platform_interface::UIGuard guard;
	if (text == nullptr || text[0] == '\0') {
		if (Fl_Tooltip::current() == fWidget)
			Fl_Tooltip::enter_area(fWidget, 0, 0, 0, 0, nullptr);
		return;
	}
	const BRect bounds = Bounds();
	Fl_Tooltip::enter_area(fWidget, fWidget->x() + static_cast<int>(area.left - bounds.left),
	                       fWidget->y() + static_cast<int>(area.top - bounds.top),
	                       static_cast<int>(area.Width()) + 1, static_cast<int>(area.Height()) + 1,
	                       text);
}


const char*
BView::ToolTipText() const
{
	const char* text = fWidget->tooltip();
	return text != nullptr ? text : "";
}


void
BView::MovePenTo(BPoint where)
{
	fPenLocation = where;
}


void
BView::MovePenTo(float x, float y)
{
	fPenLocation = BPoint(x, y);
}


void
BView::MovePenBy(float dx, float dy)
{
	fPenLocation.x += dx;
	fPenLocation.y += dy;
}


// #pragma mark - drawing


void
BView::SetDrawingRecorder(BDrawingRecorder* recorder)
{
	fRecorder = recorder;
}


void
BView::Record(drawing_call& call, const pattern& p) const
{
	call.high = fHighColor;
	call.low = fLowColor;
	call.fontSize = fFont.Size();
	call.lowPattern = memcmp(&p, &B_SOLID_LOW, sizeof(pattern)) == 0;
	fRecorder->Record(call);
}


// Drawing on the interface thread inside Draw goes to the window being
// redrawn (FLTK has made it current and clipped to the view). Elsewhere the
// window must be shown and the caller must hold its lock: the interface
// thread makes the window current; another thread draws through its own
// connection to the display straight onto the window (FLTK's drawing state
// belongs to the interface thread).
platform_interface::Painter*
BView::BeginDrawing(BPoint* offset) const
{
	if (fWindow == nullptr || fHidden)
		return nullptr;
	BPoint view = WindowOffset();
	offset->x = view.x - fOrigin.x;
	offset->y = view.y - fOrigin.y;
	if (IsUIThread() && platform_interface::InsideDraw())
		return platform_interface::FltkPainter();
	if (!CallerHoldsUILock() || fl_display == nullptr)
		return nullptr;
	Fl_Window* window = fWindow->fWidget;
	if (!window->shown() || !window->visible())
		return nullptr;
	if (IsUIThread()) {
		window->make_current();
		return platform_interface::FltkPainter();
	}
	return platform_interface::WorkerPainter(window);
}


namespace {

bool
IsLowPattern(const pattern& p)
{
	return memcmp(&p, &B_SOLID_LOW, sizeof(pattern)) == 0;
}


// The colour and pen of the view, for one call.
platform_interface::Painter*
Prepare(platform_interface::Painter* painter, const BView* view, const pattern& p)
{
	painter->SetColor(IsLowPattern(p) ? view->LowColor() : view->HighColor());
	if (view->PenSize() > 1.0f)
		painter->SetPenSize(Pixel(view->PenSize()));
	return painter;
}


void
Finish(platform_interface::Painter* painter, const BView* view)
{
	if (view->PenSize() > 1.0f)
		painter->SetPenSize(1);
}


// A BeOS rectangle (inclusive edges) as its corner pixels, in the order it
// was given: an inverted rectangle stays inverted.
struct PixelRect {
	PixelRect(BRect rect, BPoint offset)
	    : left(Pixel(rect.left + offset.x)), top(Pixel(rect.top + offset.y)),
	      right(Pixel(rect.right + offset.x)), bottom(Pixel(rect.bottom + offset.y))
	{
	}

	int left;
	int top;
	int right;
	int bottom;
};

} // namespace


void
BView::StrokeLine(BPoint end, const pattern& p)
{
	StrokeLine(fPenLocation, end, p);
}


void
BView::StrokeLine(BPoint start, BPoint end, const pattern& p)
{
	fPenLocation = end;
	if (fRecorder != nullptr) {
		drawing_call call = {};
		call.kind = B_CALL_STROKE_LINE;
		call.points = {start, end};
		Record(call, p);
		return;
	}
	BPoint offset;
	platform_interface::Painter* painter = BeginDrawing(&offset);
	if (painter == nullptr)
		return;
	Prepare(painter, this, p)
	    ->Line(Pixel(start.x + offset.x), Pixel(start.y + offset.y), Pixel(end.x + offset.x),
	           Pixel(end.y + offset.y));
	Finish(painter, this);
}


void
BView::StrokeRect(BRect rect, const pattern& p)
{
	if (fRecorder != nullptr) {
		drawing_call call = {};
		call.kind = B_CALL_STROKE_RECT;
		call.rect = rect;
		Record(call, p);
		return;
	}
	BPoint offset;
	platform_interface::Painter* painter = BeginDrawing(&offset);
	if (painter == nullptr)
		return;
	PixelRect pixels(rect, offset);
	Prepare(painter, this, p)->StrokeRect(pixels.left, pixels.top, pixels.right, pixels.bottom);
	Finish(painter, this);
}


void
BView::FillRect(BRect rect, const pattern& p)
{
	if (fRecorder != nullptr) {
		drawing_call call = {};
		call.kind = B_CALL_FILL_RECT;
		call.rect = rect;
		Record(call, p);
		return;
	}
	BPoint offset;
	platform_interface::Painter* painter = BeginDrawing(&offset);
	if (painter == nullptr)
		return;
	PixelRect pixels(rect, offset);
	Prepare(painter, this, p)->FillRect(pixels.left, pixels.top, pixels.right, pixels.bottom);
}


void
BView::InvertRect(BRect rect)
{
	if (fRecorder != nullptr) {
		drawing_call call = {};
		call.kind = B_CALL_INVERT_RECT;
		call.rect = rect;
		Record(call, B_SOLID_HIGH);
		return;
	}
	BPoint offset;
	platform_interface::Painter* painter = BeginDrawing(&offset);
	if (painter == nullptr)
		return;
	PixelRect pixels(rect, offset);
	painter->InvertRect(pixels.left, pixels.top, pixels.right, pixels.bottom);
}


void
BView::StrokeEllipse(BRect rect, const pattern& p)
{
	if (fRecorder != nullptr) {
		drawing_call call = {};
		call.kind = B_CALL_STROKE_ELLIPSE;
		call.rect = rect;
		Record(call, p);
		return;
	}
	BPoint offset;
	platform_interface::Painter* painter = BeginDrawing(&offset);
	if (painter == nullptr)
		return;
	PixelRect pixels(rect, offset);
	Prepare(painter, this, p)->StrokeEllipse(pixels.left, pixels.top, pixels.right, pixels.bottom);
	Finish(painter, this);
}


void
BView::StrokeEllipse(BPoint center, float xRadius, float yRadius, const pattern& p)
{
	StrokeEllipse(
	    BRect(center.x - xRadius, center.y - yRadius, center.x + xRadius, center.y + yRadius), p);
}


void
BView::FillEllipse(BRect rect, const pattern& p)
{
	if (fRecorder != nullptr) {
		drawing_call call = {};
		call.kind = B_CALL_FILL_ELLIPSE;
		call.rect = rect;
		Record(call, p);
		return;
	}
	BPoint offset;
	platform_interface::Painter* painter = BeginDrawing(&offset);
	if (painter == nullptr)
		return;
	PixelRect pixels(rect, offset);
	Prepare(painter, this, p)->FillEllipse(pixels.left, pixels.top, pixels.right, pixels.bottom);
}


void
BView::FillEllipse(BPoint center, float xRadius, float yRadius, const pattern& p)
{
	FillEllipse(
	    BRect(center.x - xRadius, center.y - yRadius, center.x + xRadius, center.y + yRadius), p);
}


void
BView::StrokeTriangle(BPoint p1, BPoint p2, BPoint p3, const pattern& p)
{
	BPoint points[3] = {p1, p2, p3};
	StrokePolygon(points, 3, true, p);
}


void
BView::FillTriangle(BPoint p1, BPoint p2, BPoint p3, const pattern& p)
{
	BPoint points[3] = {p1, p2, p3};
	FillPolygon(points, 3, p);
}


// Polygon corners as x, y pixel pairs: in the caller's array for up to
// kStackCorners corners (no allocation while the graphics test draws), on the
// heap beyond.
static const int32 kStackCorners = 8;

static int*
PixelCorners(const BPoint* points, int32 count, BPoint offset, int* stack, std::vector<int>& heap)
{
	int* xy = stack;
	if (count > kStackCorners) {
		heap.resize(static_cast<size_t>(count) * 2);
		xy = heap.data();
	}
	for (int32 i = 0; i < count; i++) {
		xy[2 * i] = Pixel(points[i].x + offset.x);
		xy[2 * i + 1] = Pixel(points[i].y + offset.y);
	}
	return xy;
}


void
BView::StrokePolygon(const BPoint* points, int32 count, bool closed, const pattern& p)
{
	if (points == nullptr || count <= 0)
		return;
	if (fRecorder != nullptr) {
		drawing_call call = {};
		call.kind = B_CALL_STROKE_POLYGON;
		call.points.assign(points, points + count);
		Record(call, p);
		return;
	}
	BPoint offset;
	platform_interface::Painter* painter = BeginDrawing(&offset);
	if (painter == nullptr)
		return;
	int stackPoints[2 * kStackCorners];
	std::vector<int> heapPoints;
	int* xy = PixelCorners(points, count, offset, stackPoints, heapPoints);
	Prepare(painter, this, p)->StrokePolygon(xy, count, closed);
	Finish(painter, this);
}


void
BView::FillPolygon(const BPoint* points, int32 count, const pattern& p)
{
	if (points == nullptr || count <= 0)
		return;
	if (fRecorder != nullptr) {
		drawing_call call = {};
		call.kind = B_CALL_FILL_POLYGON;
		call.points.assign(points, points + count);
		Record(call, p);
		return;
	}
	BPoint offset;
	platform_interface::Painter* painter = BeginDrawing(&offset);
	if (painter == nullptr)
		return;
	int stackPoints[2 * kStackCorners];
	std::vector<int> heapPoints;
	int* xy = PixelCorners(points, count, offset, stackPoints, heapPoints);
	Prepare(painter, this, p)->FillPolygon(xy, count);
}


void
BView::DrawString(const char* string, BPoint where, const escapement_delta* delta)
{
	if (string == nullptr)
		return;
	DrawString(string, static_cast<int32>(strlen(string)), where);
	(void)delta;
}


void
BView::DrawString(const char* string, const escapement_delta* delta)
{
	DrawString(string, fPenLocation, delta);
}


void
BView::DrawString(const char* string, int32 length, BPoint where)
{
	if (string == nullptr || length <= 0)
		return;
	if (fRecorder != nullptr) {
		drawing_call call = {};
		call.kind = B_CALL_DRAW_STRING;
		call.points = {where};
		call.text.assign(string, static_cast<size_t>(length));
		Record(call, B_SOLID_HIGH);
		fPenLocation = BPoint(where.x + StringWidth(string, length), where.y);
		return;
	}
	BPoint offset;
	platform_interface::Painter* painter = BeginDrawing(&offset);
	if (painter == nullptr) {
		fPenLocation = BPoint(where.x + StringWidth(string, length), where.y);
		return;
	}
	painter->SetColor(fHighColor);
	float width = painter->String(string, length, Pixel(where.x + offset.x),
	                              Pixel(where.y + offset.y), fFont);
	fPenLocation = BPoint(where.x + width, where.y);
}


void
BView::DrawBitmap(const BBitmap* bitmap, BRect source, BRect destination)
{
	if (bitmap == nullptr || bitmap->Bits() == nullptr)
		return;
	if (fRecorder != nullptr) {
		drawing_call call = {};
		call.kind = B_CALL_DRAW_BITMAP;
		call.rect = destination;
		Record(call, B_SOLID_HIGH);
		return;
	}
	BPoint offset;
	platform_interface::Painter* painter = BeginDrawing(&offset);
	if (painter == nullptr)
		return;
	BRect bounds = bitmap->Bounds();
	int firstColumn = std::max(0, Pixel(source.left - bounds.left));
	int firstRow = std::max(0, Pixel(source.top - bounds.top));
	int width = std::min(Pixel(source.Width()) + 1, Pixel(bounds.Width()) + 1 - firstColumn);
	int height = std::min(Pixel(source.Height()) + 1, Pixel(bounds.Height()) + 1 - firstRow);
	if (width <= 0 || height <= 0)
		return;
	std::vector<unsigned char> rgb(static_cast<size_t>(width) * static_cast<size_t>(height) * 3);
	const uint8* bits = static_cast<const uint8*>(bitmap->Bits());
	const color_map* palette = system_colors();
	for (int row = 0; row < height; row++) {
		const uint8* line = bits + static_cast<size_t>(row + firstRow) * bitmap->BytesPerRow();
		unsigned char* out = &rgb[static_cast<size_t>(row) * static_cast<size_t>(width) * 3];
		for (int column = 0; column < width; column++) {
			int x = column + firstColumn;
			switch (bitmap->ColorSpace()) {
				case B_CMAP8: {
					const rgb_color& color = palette->color_list[line[x]];
					out[0] = color.red;
					out[1] = color.green;
					out[2] = color.blue;
					break;
				}
				case B_RGB32:
				case B_RGBA32:
					// Blue, green, red, alpha in memory.
					out[0] = line[x * 4 + 2];
					out[1] = line[x * 4 + 1];
					out[2] = line[x * 4];
					break;
				case B_GRAY8:
					out[0] = out[1] = out[2] = line[x];
					break;
				default:
					out[0] = out[1] = out[2] = 0;
					break;
			}
			out += 3;
		}
	}
	painter->Image(rgb.data(), Pixel(destination.left + offset.x),
	               Pixel(destination.top + offset.y), width, height);
}


void
BView::DrawBitmap(const BBitmap* bitmap, BPoint where)
{
	if (bitmap == nullptr)
		return;
	BRect bounds = bitmap->Bounds();
	DrawBitmap(bitmap, bounds,
	           BRect(where.x, where.y, where.x + bounds.Width(), where.y + bounds.Height()));
}


void
BView::DrawBitmap(const BBitmap* bitmap)
{
	DrawBitmap(bitmap, fPenLocation);
}


void
BView::Invalidate()
{
	fWidget->redraw();
	platform_interface::WakeUI();
}


void
BView::Invalidate(BRect rect)
{
	(void)rect;
	Invalidate();
}


// The interface thread's drawing goes out on FLTK's connection; another
// thread's on its own.
void
BView::Flush() const
{
	if (fRecorder != nullptr) {
		drawing_call call = {};
		call.kind = B_CALL_FLUSH;
		Record(call, B_SOLID_HIGH);
		return;
	}
	platform_interface::Painter* painter = IsUIThread()
	                                           ? platform_interface::FltkPainter()
	                                           : platform_interface::ExistingWorkerPainter();
	if (painter != nullptr)
		painter->Flush();
}


void
BView::Sync() const
{
	if (fRecorder != nullptr) {
		drawing_call call = {};
		call.kind = B_CALL_SYNC;
		Record(call, B_SOLID_HIGH);
		return;
	}
	platform_interface::Painter* painter = IsUIThread()
	                                           ? platform_interface::FltkPainter()
	                                           : platform_interface::ExistingWorkerPainter();
	if (painter != nullptr)
		painter->Sync();
}
