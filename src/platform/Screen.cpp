#include "Screen.h"

#include <mutex>

#include <X11/Xlib.h>

#include "PlatformTest.h"

namespace {

std::mutex sSubstituteLock;
bool sSubstituted = false;
BRect sSubstituteFrame;
color_space sSubstituteSpace = B_NO_COLOR_SPACE;

color_space
SpaceFromDepth(int depth)
{
	switch (depth) {
		case 8:
			return B_CMAP8;
		case 15:
			return B_RGB15;
		case 16:
			return B_RGB16;
		case 24:
		case 32:
			return B_RGB32;
		default:
			return B_NO_COLOR_SPACE;
	}
}

} // namespace

void
platform_set_screen(const BRect* frame, color_space space)
{
	std::lock_guard<std::mutex> lock(sSubstituteLock);
	sSubstituted = frame != nullptr;
	if (frame != nullptr) {
		sSubstituteFrame = *frame;
		sSubstituteSpace = space;
	}
}

BScreen::BScreen(screen_id id)
    : fId(id), fValid(false), fFrame(0, 0, -1, -1), fColorSpace(B_NO_COLOR_SPACE)
{
	if (id.id != B_MAIN_SCREEN_ID.id)
		return;
	{
		std::lock_guard<std::mutex> lock(sSubstituteLock);
		if (sSubstituted) {
			fFrame = sSubstituteFrame;
			fColorSpace = sSubstituteSpace;
			fValid = fFrame.IsValid();
			return;
		}
	}
	// A connection of our own for the moment of reading: the caller may be any
	// thread, and the interface's own connection belongs to the UI thread.
	Display* display = XOpenDisplay(nullptr);
	if (display == nullptr)
		return;
	int screen = DefaultScreen(display);
	int width = DisplayWidth(display, screen);
	int height = DisplayHeight(display, screen);
	fFrame = BRect(0, 0, width - 1, height - 1);
	fColorSpace = SpaceFromDepth(DefaultDepth(display, screen));
	fValid = width > 0 && height > 0;
	XCloseDisplay(display);
}

BScreen::~BScreen()
{
}

bool
BScreen::IsValid() const
{
	return fValid;
}

screen_id
BScreen::ID() const
{
	return fId;
}

BRect
BScreen::Frame() const
{
	return fFrame;
}

color_space
BScreen::ColorSpace() const
{
	return fColorSpace;
}
