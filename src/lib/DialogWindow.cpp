#include "lib/DialogWindow.h"

#include <View.h>

#include "lib/ActionView.h"

const float DialogWindow::kBarHeight = 45;


DialogWindow::DialogWindow(BRect frame, const char* name, int32 buttons, float buttonWidth,
                           orientation direction)
    : LibWindow(frame, name, B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL,
                B_NOT_RESIZABLE | B_NOT_CLOSABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE),
      fMainView(nullptr), fActionView(nullptr)
{
	BRect bounds = Bounds();
	BRect mainFrame = bounds;
	BRect barFrame = bounds;
	if (direction == B_HORIZONTAL) {
		barFrame.top = bounds.bottom - kBarHeight;
		mainFrame.bottom = bounds.bottom - kBarHeight - 1;
	} else {
		barFrame.left = bounds.right - (buttonWidth + 20);
		mainFrame.right = barFrame.left - 1;
	}

	Lock();
	fMainView = new BView(mainFrame, "view", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
	fMainView->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
	AddChild(fMainView);
	fActionView = new ActionView(barFrame, "action_view", buttons, buttonWidth, direction);
	AddChild(fActionView);
	Unlock();
}


DialogWindow::~DialogWindow()
{
}
