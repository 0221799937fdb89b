// The About box of a support-library application: its name, version record,
// build date and a line on what it is for. Closing it tells the owner.
#ifndef LIB_ABOUT_WINDOW_H
#define LIB_ABOUT_WINDOW_H

#include "lib/LibWindow.h"

class BLooper;

class LibAboutWindow : public LibWindow
{
public:
	LibAboutWindow(BLooper* owner, const char* name, const char* buildDate);
	~LibAboutWindow() override;

	// Posts 'ABTQ' to the owner and lets the window close.
	bool QuitRequested() override;

private:
	BLooper* fOwner;
};

#endif // LIB_ABOUT_WINDOW_H
