// A small window for choosing the colour of one kind of bar from a palette.
// Each click on a swatch makes it the chosen colour and sends kLibColorChosen
// with int32 "index" (the colour's place in the caller's table) to the
// target; closing the window sends it with index -1 and only hides the
// window: its owner quits it.
#ifndef LIB_COLOR_CHOOSER_H
#define LIB_COLOR_CHOOSER_H

#include <GraphicsDefs.h>
#include <Messenger.h>

#include "lib/LibWindow.h"

const uint32 kLibColorChosen = 'ColC';

// Bar colours by processor count (entry n - 1 for n processors), told apart
// also with the common colour-vision deficiencies: the Okabe-Ito set.
const int32 kLibBarColorCount = 8;
extern const rgb_color kLibDefaultBarColors[kLibBarColorCount];

class LibColorChooser : public LibWindow
{
public:
	LibColorChooser(const BMessenger& target, int32 index, rgb_color current, const char* title);
	~LibColorChooser() override;

	rgb_color Color() const { return fColor; }
	int32 Index() const { return fIndex; }
	// Chooses the palette's swatch as a click would.
	void ChooseSwatch(int32 swatch);

	void MessageReceived(BMessage* message) override;
	bool QuitRequested() override;

	static int32 CountSwatches();
	static rgb_color SwatchColor(int32 swatch);

private:
	BMessenger fTarget;
	int32 fIndex;
	rgb_color fColor;
	BView* fSample;
};

#endif // LIB_COLOR_CHOOSER_H
