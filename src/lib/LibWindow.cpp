#include "lib/LibWindow.h"

#include <cmath>

#include <AppDefs.h>
#include <Application.h>
#include <Button.h>
#include <InterfaceDefs.h>
#include <Menu.h>
#include <MenuBar.h>
#include <MenuItem.h>
#include <Message.h>
#include <Screen.h>
#include <View.h>

BWindow* LibWindow::sMainWindow = nullptr;

namespace {

bool
Overlap(const BRect& a, const BRect& b)
{
	return a.left <= b.right && b.left <= a.right && a.top <= b.bottom && b.top <= a.bottom;
}


// A content frame grown by the title bar above it and a margin around.
BRect
Decorated(const BRect& frame, float margin)
{
	return BRect(frame.left - margin, frame.top - margin - kLibTitleAllowance, frame.right + margin,
	             frame.bottom + margin);
}

} // namespace


LibWindow::LibWindow(BRect frame, const char* name, window_look look, window_feel feel,
                     uint32 flags, uint32 workspace)
    : BWindow(frame, name, look, feel, flags, workspace)
{
}


LibWindow::LibWindow(BRect frame, const char* name, window_type type, uint32 flags,
                     uint32 workspace)
    : BWindow(frame, name, type, flags, workspace)
{
}


LibWindow::~LibWindow()
{
	if (sMainWindow == this)
		sMainWindow = nullptr;
}


void
LibWindow::SetMainWindow(BWindow* window)
{
	sMainWindow = window;
}


BWindow*
LibWindow::MainWindow()
{
	return sMainWindow;
}


void
LibWindow::AvoidMainWindow(BRect& rect) const
{
	if (sMainWindow == nullptr || sMainWindow == this)
		return;
	BScreen screen;
	if (!screen.IsValid())
		return;
	// Frames are content areas: the title bars and borders around them need
	// the room of the margins.
	BRect main = Decorated(sMainWindow->Frame(), kLibScreenMargin);
	if (!Overlap(Decorated(rect, 0), main))
		return;

	float width = rect.Width();
	float height = rect.Height();
	BRect candidates[4] = {
	    BRect(main.right + 1, rect.top, main.right + 1 + width, rect.top + height),
	    BRect(main.left - 1 - width, rect.top, main.left - 1, rect.top + height),
	    BRect(rect.left, main.bottom + 1 + kLibTitleAllowance, rect.right,
	          main.bottom + 1 + kLibTitleAllowance + height),
	    BRect(rect.left, main.top - 1 - height, rect.right, main.top - 1),
	};
	for (BRect candidate : candidates) {
		LibFitInScreen(candidate);
		if (!Overlap(Decorated(candidate, 0), main)) {
			rect = candidate;
			return;
		}
	}
}


void
LibWindow::SetPosition(int32 position, BWindow* reference)
{
	BRect frame = Frame();
	BRect area;
	if (reference != nullptr) {
		area = reference->Frame();
	} else {
		BScreen screen;
		if (!screen.IsValid())
			return;
		area = screen.Frame();
	}
	BRect placed = LibPositionRect(frame, position, area);
	LibFitInScreen(placed);
	AvoidMainWindow(placed);
	if (placed.Width() != frame.Width() || placed.Height() != frame.Height())
		ResizeTo(placed.Width(), placed.Height());
	if (placed.LeftTop() != frame.LeftTop())
		MoveTo(placed.LeftTop());
}


void
LibWindow::Pop()
{
	if (IsHidden()) {
		// The main window may have moved since this one was placed.
		BRect frame = Frame();
		BRect placed = frame;
		LibFitInScreen(placed);
		AvoidMainWindow(placed);
		if (placed.LeftTop() != frame.LeftTop())
			MoveTo(placed.LeftTop());
		Show();
	}
	Activate();
}


void
LibWindow::MessageReceived(BMessage* message)
{
	if (message->what == B_CLOSE_ATTEMPTED) {
		TakeWayOut(false);
		return;
	}
	BWindow::MessageReceived(message);
}


bool
LibWindow::TakeWayOut(bool escape)
{
	if ((Flags() & B_NOT_CLOSABLE) == 0) {
		PostMessage(B_QUIT_REQUESTED);
		return true;
	}
	BButton* cancel = dynamic_cast<BButton*>(FindView("cancel"));
	if (cancel != nullptr && cancel->IsEnabled()) {
		cancel->Invoke();
		return true;
	}
	// Escape never ends the program: only the window manager's close does,
	// as the menu's own command.
	BMenuBar* bar = KeyMenuBar();
	if (escape || bar == nullptr)
		return false;
	BMenuItem* quit = bar->FindItem(B_QUIT_REQUESTED);
	if (quit == nullptr || !quit->IsEnabled())
		return false;
	quit->Invoke();
	return true;
}


void
LibWindow::DispatchMessage(BMessage* message, BHandler* handler)
{
	int32 key = 0;
	int32 modifiers = 0;
	int32 rawChar = 0;
	if (message->what == B_KEY_DOWN && message->FindInt32("raw_char", &rawChar) == B_OK &&
	    rawChar == B_ESCAPE && message->FindInt32("modifiers", &modifiers) == B_OK &&
	    (modifiers & (B_SHIFT_KEY | B_COMMAND_KEY | B_OPTION_KEY)) == 0 && TakeWayOut(true))
		return;
	if (message->what == B_KEY_DOWN && message->FindInt32("key", &key) == B_OK &&
	    message->FindInt32("modifiers", &modifiers) == B_OK && key == B_F1_KEY &&
	    (modifiers & B_SHIFT_KEY) != 0) {
		BView* view = LastMouseMovedView();
		if (view != nullptr && be_app != nullptr) {
			BMessage request(kLibHelpRequest);
			request.AddString("window", Name());
			request.AddString("view", view->Name());
			BMessage inserts;
			if (InsertHelpRequest(view, &inserts))
				request.AddMessage("inserts", &inserts);
			for (BView* parent = view->Parent(); parent != nullptr; parent = parent->Parent())
				request.AddString("view", parent->Name());
			be_app->PostMessage(&request);
		}
	}
	BWindow::DispatchMessage(message, handler);
}


bool
LibWindow::InsertHelpRequest(BView* view, BMessage* message)
{
	(void)view;
	(void)message;
	return false;
}


BRect
LibPositionRect(const BRect& frame, int32 position, const BRect& area)
{
	if (position < kLibPositionBottomLeft || position > kLibPositionTopRight)
		return frame;
	float width = frame.Width();
	float height = frame.Height();
	float left = area.left + kLibScreenMargin;
	float top = area.top + kLibScreenMargin + kLibTitleAllowance;
	float right = area.right - kLibScreenMargin;
	float bottom = area.bottom - kLibScreenMargin;

	float x = left;
	switch ((position - 1) % 3) {
		case 1:
			x = left + std::floor((right - left - width) / 2);
			break;
		case 2:
			x = right - width;
			break;
		default:
			break;
	}
	float y = top;
	switch ((position - 1) / 3) {
		case 0:
			y = bottom - height;
			break;
		case 1:
			y = top + std::floor((bottom - top - height) / 2);
			break;
		default:
			break;
	}
	return BRect(x, y, x + width, y + height);
}


void
LibFitInScreen(BRect& rect)
{
	BScreen screen;
	if (!screen.IsValid())
		return;
	BRect area = screen.Frame();
	area.top += kLibTitleAllowance;

	if (rect.Width() > area.Width()) {
		rect.left = area.left;
		rect.right = area.right;
	} else if (rect.right > area.right) {
		float shift = rect.right - area.right;
		rect.left -= shift;
		rect.right -= shift;
	} else if (rect.left < area.left) {
		float shift = area.left - rect.left;
		rect.left += shift;
		rect.right += shift;
	}

	if (rect.Height() > area.Height()) {
		rect.top = area.top;
		rect.bottom = area.bottom;
	} else if (rect.bottom > area.bottom) {
		float shift = rect.bottom - area.bottom;
		rect.top -= shift;
		rect.bottom -= shift;
	} else if (rect.top < area.top) {
		float shift = area.top - rect.top;
		rect.top += shift;
		rect.bottom += shift;
	}
}
