#include "lib/LibColorChooser.h"

#include <Message.h>
#include <StringView.h>
#include <View.h>

#include "lib/LibRect.h"

const rgb_color kLibDefaultBarColors[kLibBarColorCount] = {
    {0, 114, 178, 255},   // 1: blue
    {230, 159, 0, 255},   // 2: orange
    {0, 158, 115, 255},   // 3: bluish green
    {204, 121, 167, 255}, // 4: reddish purple
    {86, 180, 233, 255},  // 5: sky blue
    {213, 94, 0, 255},    // 6: vermilion
    {240, 228, 66, 255},  // 7: yellow
    {80, 80, 80, 255},    // 8: dark grey
};

namespace {

const uint32 kMsgSwatch = 'ColS';

// The default colours first, then lighter and darker companions and greys.
const rgb_color kExtraSwatches[] = {
    {0, 0, 0, 255},     {128, 128, 128, 255}, {190, 190, 190, 255}, {0, 60, 120, 255},
    {150, 100, 0, 255}, {0, 100, 70, 255},    {140, 60, 110, 255},  {170, 40, 40, 255},
};

const int32 kColumns = 8;
const float kSwatchSize = 24;
const float kGap = 6;
const float kTop = 30;


BRect
SwatchFrame(int32 swatch)
{
	const float left = kGap + (swatch % kColumns) * (kSwatchSize + kGap);
	const float top = kTop + (swatch / kColumns) * (kSwatchSize + kGap);
	return BRect(left, top, left + kSwatchSize - 1, top + kSwatchSize - 1);
}


// The palette: one square per colour; a click chooses it.
class PaletteView : public BView
{
public:
	explicit PaletteView(BRect frame) : BView(frame, "palette", B_FOLLOW_ALL_SIDES, B_WILL_DRAW)
	{
		SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
	}

	void Draw(BRect) override
	{
		for (int32 i = 0; i < LibColorChooser::CountSwatches(); i++) {
			BRect frame = SwatchFrame(i);
			SetHighColor(LibColorChooser::SwatchColor(i));
			FillRect(frame);
			SetHighColor(0, 0, 0);
			StrokeRect(frame);
		}
	}

	void MouseDown(BPoint where) override
	{
		for (int32 i = 0; i < LibColorChooser::CountSwatches(); i++) {
			const BRect frame = SwatchFrame(i);
			if (where.x >= frame.left && where.x <= frame.right && where.y >= frame.top &&
			    where.y <= frame.bottom) {
				BMessage message(kMsgSwatch);
				message.AddInt32("swatch", i);
				Window()->PostMessage(&message);
				return;
			}
		}
	}
};


// The chosen colour, under the title.
class SampleView : public BView
{
public:
	explicit SampleView(BRect frame)
	    : BView(frame, "sample", B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW)
	{
	}

	// The high colour is the chosen colour.
	void Draw(BRect) override
	{
		const rgb_color chosen = HighColor();
		FillRect(Bounds());
		SetHighColor(0, 0, 0);
		StrokeRect(Bounds());
		SetHighColor(chosen);
	}
};

} // namespace


LibColorChooser::LibColorChooser(const BMessenger& target, int32 index, rgb_color current,
                                 const char* title)
    : LibWindow(
          BRect(0, 0, kGap + kColumns * (kSwatchSize + kGap), kTop + 2 * (kSwatchSize + kGap)),
          "LibColorChooser", B_FLOATING_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL,
          B_NOT_RESIZABLE | B_NOT_ZOOMABLE),
      fTarget(target), fIndex(index), fColor(current), fSample(nullptr)
{
	SetTitle("Bar Colour");
	PaletteView* palette = new PaletteView(Bounds());
	AddChild(palette);
	palette->AddChild(new BStringView(LibRect(kGap, 6, 180, 16), "title", title));
	fSample = new SampleView(LibRect(Bounds().right - kGap - 40, 6, 40, 16));
	fSample->SetHighColor(current);
	palette->AddChild(fSample);
}


LibColorChooser::~LibColorChooser()
{
}


int32
LibColorChooser::CountSwatches()
{
	return kLibBarColorCount +
	       static_cast<int32>(sizeof(kExtraSwatches) / sizeof(kExtraSwatches[0]));
}


rgb_color
LibColorChooser::SwatchColor(int32 swatch)
{
	if (swatch < 0 || swatch >= CountSwatches())
		return make_color(0, 0, 0);
	if (swatch < kLibBarColorCount)
		return kLibDefaultBarColors[swatch];
	return kExtraSwatches[swatch - kLibBarColorCount];
}


void
LibColorChooser::ChooseSwatch(int32 swatch)
{
	if (swatch < 0 || swatch >= CountSwatches())
		return;
	fColor = SwatchColor(swatch);
	fSample->SetHighColor(fColor);
	fSample->Invalidate();
	BMessage chosen(kLibColorChosen);
	chosen.AddInt32("index", fIndex);
	fTarget.SendMessage(&chosen);
}


void
LibColorChooser::MessageReceived(BMessage* message)
{
	int32 swatch = 0;
	if (message->what == kMsgSwatch && message->FindInt32("swatch", &swatch) == B_OK) {
		ChooseSwatch(swatch);
		return;
	}
	LibWindow::MessageReceived(message);
}


// The owner reads Color() while handling the messages sent, so the window
// stays until the owner quits it.
bool
LibColorChooser::QuitRequested()
{
	if (!IsHidden())
		Hide();
	BMessage closed(kLibColorChosen);
	closed.AddInt32("index", -1);
	fTarget.SendMessage(&closed);
	return false;
}
