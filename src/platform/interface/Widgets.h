// The FLTK widgets behind windows and views. Internal to the platform layer.
#ifndef PLATFORM_INTERFACE_WIDGETS_H
#define PLATFORM_INTERFACE_WIDGETS_H

#include <FL/Enumerations.H>
#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Group.H>

#include "GraphicsDefs.h"

class BFont;
class BView;
class BWindow;

namespace platform_interface {

// A view's own widget: paints the view colour, calls Draw, then draws the
// children (the native widget of a control first, then child views).
class ViewWidget : public Fl_Group
{
public:
	explicit ViewWidget(BView* view);
	~ViewWidget() override;

	void draw() override;
	int handle(int event) override;

	BView* View() const { return fView; }

private:
	bool PostDrop();

	BView* fView;
};

class WindowWidget : public Fl_Double_Window
{
public:
	WindowWidget(BWindow* window, int x, int y, int width, int height);
	~WindowWidget() override;

	void draw() override;
	int handle(int event) override;
	void resize(int x, int y, int width, int height) override;
	// Gives the focus to the next (1) or previous (-1) control; false when
	// the window has none.
	bool MoveFocus(int direction);

	BWindow* Window() const { return fWindow; }
	// Set while the window's size is changed by the program, not the user.
	bool fProgramResize;

private:
	BWindow* fWindow;
};

// Whether drawing calls of the interface thread go to a window being redrawn.
bool InsideDraw();
void SetFltkColor(rgb_color color);
// BeOS key state of the current FLTK event.
int32 CurrentModifiers();

// The FLTK face and pixel size that draw a BFont. The sans faces are
// Liberation Sans (Helvetica's widths, which the program's layouts assume),
// at the largest size not above the one asked for whose digits are no wider
// than Helvetica's; without a display the size asked for.
Fl_Font FltkFont(const BFont& font);
Fl_Fontsize FltkFontSize(Fl_Font face, float size);
Fl_Fontsize FltkFontSize(const BFont& font);
// fl_font with both.
void SetFltkFont(const BFont& font);
// The size of labels and menus of native widgets (the plain font's).
inline Fl_Fontsize
NativeTextSize()
{
	return FltkFontSize(FL_HELVETICA, 12);
}

} // namespace platform_interface

#endif // PLATFORM_INTERFACE_WIDGETS_H
