// The FLTK widgets behind windows and views. Internal to the platform layer.
#ifndef PLATFORM_INTERFACE_WIDGETS_H
#define PLATFORM_INTERFACE_WIDGETS_H

#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Group.H>

#include "GraphicsDefs.h"

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

} // namespace platform_interface

#endif // PLATFORM_INTERFACE_WIDGETS_H
