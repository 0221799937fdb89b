// The "System..." window: the machine's profile as it was when the window
// was opened.
#ifndef ABOUT_SYS_WINDOW_H
#define ABOUT_SYS_WINDOW_H

#include "lib/LibWindow.h"

class BLooper;

class AboutSysWindow : public LibWindow
{
public:
	explicit AboutSysWindow(BLooper* owner);
	~AboutSysWindow() override;

	// Posts 'SYSQ' to the owner and lets the window close.
	bool QuitRequested() override;

private:
	BLooper* fOwner;
};

#endif // ABOUT_SYS_WINDOW_H
