#include "lib/LibWindow.h"

#include <cmath>

#include <AppDefs.h>
#include <Application.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <Screen.h>
#include <View.h>


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
	if (placed.Width() != frame.Width() || placed.Height() != frame.Height())
		ResizeTo(placed.Width(), placed.Height());
	if (placed.LeftTop() != frame.LeftTop())
		MoveTo(placed.LeftTop());
}


void
LibWindow::Pop()
{
	if (IsHidden())
		Show();
	Activate();
}


void
LibWindow::DispatchMessage(BMessage* message, BHandler* handler)
{
	int32 key = 0;
	int32 modifiers = 0;
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
