// A fixed dialog: a main view for its contents and a bar of buttons, along
// the bottom (horizontal) or the right-hand side (vertical).
#ifndef DIALOG_WINDOW_H
#define DIALOG_WINDOW_H

#include <InterfaceDefs.h>

#include "lib/LibWindow.h"

class ActionView;
class BView;

class DialogWindow : public LibWindow
{
public:
	DialogWindow(BRect frame, const char* name, int32 buttons, float buttonWidth,
	             orientation direction);
	~DialogWindow() override;

	BView* MainView() const { return fMainView; }
	ActionView* Actions() const { return fActionView; }

	// Height of a horizontal button bar.
	static const float kBarHeight;

protected:
	BView* fMainView;
	ActionView* fActionView;
};

#endif // DIALOG_WINDOW_H
