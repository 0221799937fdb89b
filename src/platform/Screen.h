// The screen a window lives on. On X the main screen is the display's default
// screen; the object reads it once, when it is made.
#ifndef SCREEN_H
#define SCREEN_H

#include "GraphicsDefs.h"
#include "Rect.h"

struct screen_id {
	int32 id;
};

constexpr screen_id B_MAIN_SCREEN_ID = {0};

class BScreen
{
public:
	explicit BScreen(screen_id id = B_MAIN_SCREEN_ID);
	~BScreen();

	// False without a display (or for a screen other than the main one).
	bool IsValid() const;
	screen_id ID() const;
	// (0, 0, width - 1, height - 1), or (0, 0, -1, -1) without a display.
	BRect Frame() const;
	color_space ColorSpace() const;

private:
	screen_id fId;
	bool fValid;
	BRect fFrame;
	color_space fColorSpace;
};

#endif // SCREEN_H
