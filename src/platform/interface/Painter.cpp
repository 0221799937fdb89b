#include "interface/Painter.h"

#include <FL/Fl.H>
#include <FL/Fl_Window.H>
#include <FL/fl_draw.H>
#include <FL/x.H>
#include <X11/Xft/Xft.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include "OS.h"
#include "interface/UIThread.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace platform_interface {

Painter::~Painter()
{
}


namespace {

Fl_Font
FltkFontOf(const BFont& font)
{
	bool bold = font.Kind() == B_BOLD_FONT_KIND || (font.Face() & B_BOLD_FACE) != 0;
	bool italic = (font.Face() & B_ITALIC_FACE) != 0;
	Fl_Font base = font.Kind() == B_FIXED_FONT_KIND ? FL_COURIER : FL_HELVETICA;
	return base + (bold ? FL_BOLD : 0) + (italic ? FL_ITALIC : 0);
}


class Fltk : public Painter
{
public:
	void SetColor(rgb_color color) override { fl_color(color.red, color.green, color.blue); }

	void SetPenSize(int size) override
	{
		if (size > 1)
			fl_line_style(FL_SOLID, size);
		else
			fl_line_style(0);
	}

	void Line(int x0, int y0, int x1, int y1) override { fl_line(x0, y0, x1, y1); }

	void StrokeRect(int left, int top, int right, int bottom) override
	{
		if (left <= right && top <= bottom)
			fl_rect(left, top, right - left + 1, bottom - top + 1);
	}

	void FillRect(int left, int top, int right, int bottom) override
	{
		if (left <= right && top <= bottom)
			fl_rectf(left, top, right - left + 1, bottom - top + 1);
	}

	void InvertRect(int left, int top, int right, int bottom) override
	{
		if (left > right || top > bottom)
			return;
		XSetFunction(fl_display, fl_gc, GXinvert);
		XFillRectangle(fl_display, fl_window, fl_gc, left, top,
		               static_cast<unsigned>(right - left + 1),
		               static_cast<unsigned>(bottom - top + 1));
		XSetFunction(fl_display, fl_gc, GXcopy);
	}

	void StrokeEllipse(int left, int top, int right, int bottom) override
	{
		if (left <= right && top <= bottom)
			fl_arc(left, top, right - left + 1, bottom - top + 1, 0.0, 360.0);
	}

	void FillEllipse(int left, int top, int right, int bottom) override
	{
		if (left <= right && top <= bottom)
			fl_pie(left, top, right - left + 1, bottom - top + 1, 0.0, 360.0);
	}

	void StrokePolygon(const int* xy, int count, bool closed) override
	{
		if (closed)
			fl_begin_loop();
		else
			fl_begin_line();
		for (int i = 0; i < count; i++)
			fl_vertex(xy[2 * i], xy[2 * i + 1]);
		if (closed)
			fl_end_loop();
		else
			fl_end_line();
	}

	void FillPolygon(const int* xy, int count) override
	{
		if (count == 3) {
			fl_polygon(xy[0], xy[1], xy[2], xy[3], xy[4], xy[5]);
			return;
		}
		fl_begin_complex_polygon();
		for (int i = 0; i < count; i++)
			fl_vertex(xy[2 * i], xy[2 * i + 1]);
		fl_end_complex_polygon();
	}

	float String(const char* string, int length, int x, int y, const BFont& font) override
	{
		fl_font(FltkFontOf(font), static_cast<Fl_Fontsize>(std::lround(font.Size())));
		fl_draw(string, length, x, y);
		return static_cast<float>(fl_width(string, length));
	}

	void Image(const unsigned char* rgb, int x, int y, int width, int height) override
	{
		fl_draw_image(rgb, x, y, width, height, 3, 0);
	}

	void Flush() override
	{
		if (fl_display != nullptr)
			XFlush(fl_display);
	}

	void Sync() override
	{
		if (fl_display != nullptr)
			XSync(fl_display, False);
	}
};


// A thread's own connection to the display: a graphics context and an Xft
// drawable for the window it last drew on, and the fonts it used.
class Worker : public Painter
{
public:
	Worker() : fDisplay(nullptr), fWindow(0), fGC(nullptr), fDraw(nullptr), fPixel(0)
	{
		const char* name = fl_display != nullptr ? DisplayString(fl_display) : nullptr;
		fDisplay = XOpenDisplay(name);
		fColor = rgb_color{0, 0, 0, 255};
	}

	~Worker() override
	{
		if (fDisplay == nullptr)
			return;
		Release();
		for (auto& font : fFonts)
			XftFontClose(fDisplay, font.second);
		XCloseDisplay(fDisplay);
	}

	bool IsValid() const { return fDisplay != nullptr; }

	void Aim(Window window)
	{
		if (window == fWindow)
			return;
		Release();
		fWindow = window;
		int screen = DefaultScreen(fDisplay);
		fGC = XCreateGC(fDisplay, window, 0, nullptr);
		fDraw = XftDrawCreate(fDisplay, window, DefaultVisual(fDisplay, screen),
		                      DefaultColormap(fDisplay, screen));
		SetPixel();
	}

	void SetColor(rgb_color color) override
	{
		if (color.red == fColor.red && color.green == fColor.green && color.blue == fColor.blue)
			return;
		fColor = color;
		SetPixel();
	}

	void SetPenSize(int size) override
	{
		XSetLineAttributes(fDisplay, fGC, static_cast<unsigned>(size > 1 ? size : 0), LineSolid,
		                   CapButt, JoinMiter);
	}

	void Line(int x0, int y0, int x1, int y1) override
	{
		XDrawLine(fDisplay, fWindow, fGC, x0, y0, x1, y1);
	}

	// Sizes are the pixels between the corners less one for outlines, as
	// X draws an outline of size w over w + 1 pixels.
	void StrokeRect(int left, int top, int right, int bottom) override
	{
		Span span(left, top, right, bottom);
		XDrawRectangle(fDisplay, fWindow, fGC, span.x, span.y, span.width - 1, span.height - 1);
	}

	void FillRect(int left, int top, int right, int bottom) override
	{
		Span span(left, top, right, bottom);
		XFillRectangle(fDisplay, fWindow, fGC, span.x, span.y, span.width, span.height);
	}

	void InvertRect(int left, int top, int right, int bottom) override
	{
		XSetFunction(fDisplay, fGC, GXinvert);
		FillRect(left, top, right, bottom);
		XSetFunction(fDisplay, fGC, GXcopy);
	}

	void StrokeEllipse(int left, int top, int right, int bottom) override
	{
		Span span(left, top, right, bottom);
		XDrawArc(fDisplay, fWindow, fGC, span.x, span.y, span.width - 1, span.height - 1, 0,
		         360 * 64);
	}

	void FillEllipse(int left, int top, int right, int bottom) override
	{
		Span span(left, top, right, bottom);
		XFillArc(fDisplay, fWindow, fGC, span.x, span.y, span.width, span.height, 0, 360 * 64);
	}

	// Triangles and other small polygons need no allocation.
	void StrokePolygon(const int* xy, int count, bool closed) override
	{
		if (count <= 0)
			return;
		Points points(xy, count, closed);
		XDrawLines(fDisplay, fWindow, fGC, points.Data(), points.Count(), CoordModeOrigin);
	}

	void FillPolygon(const int* xy, int count) override
	{
		if (count <= 0)
			return;
		Points points(xy, count, false);
		XFillPolygon(fDisplay, fWindow, fGC, points.Data(), count, count == 3 ? Convex : Complex,
		             CoordModeOrigin);
	}

	float String(const char* string, int length, int x, int y, const BFont& font) override
	{
		XftFont* xftFont = Font(font);
		if (xftFont == nullptr || fDraw == nullptr)
			return 0;
		XftColor color;
		XRenderColor render = {static_cast<unsigned short>(fColor.red * 257),
		                       static_cast<unsigned short>(fColor.green * 257),
		                       static_cast<unsigned short>(fColor.blue * 257), 0xffff};
		int screen = DefaultScreen(fDisplay);
		XftColorAllocValue(fDisplay, DefaultVisual(fDisplay, screen),
		                   DefaultColormap(fDisplay, screen), &render, &color);
		XftDrawStringUtf8(fDraw, &color, xftFont, x, y, reinterpret_cast<const FcChar8*>(string),
		                  length);
		XGlyphInfo extents;
		XftTextExtentsUtf8(fDisplay, xftFont, reinterpret_cast<const FcChar8*>(string), length,
		                   &extents);
		XftColorFree(fDisplay, DefaultVisual(fDisplay, screen), DefaultColormap(fDisplay, screen),
		             &color);
		return static_cast<float>(extents.xOff);
	}

	void Image(const unsigned char* rgb, int x, int y, int width, int height) override
	{
		// Pixel by pixel: images are small (cursors, icons) and rare.
		rgb_color saved = fColor;
		for (int row = 0; row < height; row++) {
			for (int column = 0; column < width; column++) {
				const unsigned char* pixel = rgb + (row * width + column) * 3;
				SetColor(rgb_color{pixel[0], pixel[1], pixel[2], 255});
				XDrawPoint(fDisplay, fWindow, fGC, x + column, y + row);
			}
		}
		SetColor(saved);
	}

	void Flush() override { XFlush(fDisplay); }
	void Sync() override { XSync(fDisplay, False); }

	void Forget()
	{
		XSync(fDisplay, False);
		Release();
		XSync(fDisplay, False);
	}

	// Waits, asking the server every few milliseconds, until window is
	// viewable or the time (microseconds) has passed; drawing on a window
	// not yet mapped is thrown away at no cost and would be timed so. Then
	// has the default font ready.
	void Prepare(Window window, bigtime_t timeout)
	{
		Aim(window);
		const bigtime_t deadline = system_time() + timeout;
		for (;;) {
			XWindowAttributes attributes;
			if (XGetWindowAttributes(fDisplay, window, &attributes) == 0 ||
			    attributes.map_state == IsViewable || system_time() >= deadline)
				break;
			snooze(5000);
		}
		Font(*be_plain_font);
		XSync(fDisplay, False);
	}

private:
	void Release()
	{
		if (fDraw != nullptr)
			XftDrawDestroy(fDraw);
		if (fGC != nullptr)
			XFreeGC(fDisplay, fGC);
		fDraw = nullptr;
		fGC = nullptr;
		fWindow = 0;
	}

	// True colour from the visual's masks; other visuals ask the server.
	void SetPixel()
	{
		if (fGC == nullptr)
			return;
		int screen = DefaultScreen(fDisplay);
		Visual* visual = DefaultVisual(fDisplay, screen);
		if (visual->c_class == TrueColor) {
			fPixel = Channel(fColor.red, visual->red_mask) |
			         Channel(fColor.green, visual->green_mask) |
			         Channel(fColor.blue, visual->blue_mask);
		} else {
			uint32 key = static_cast<uint32>(fColor.red) << 16 |
			             static_cast<uint32>(fColor.green) << 8 | fColor.blue;
			auto found = fAllocated.find(key);
			if (found != fAllocated.end()) {
				fPixel = found->second;
			} else {
				XColor color = {};
				color.red = static_cast<unsigned short>(fColor.red * 257);
				color.green = static_cast<unsigned short>(fColor.green * 257);
				color.blue = static_cast<unsigned short>(fColor.blue * 257);
				if (XAllocColor(fDisplay, DefaultColormap(fDisplay, screen), &color) != 0)
					fPixel = color.pixel;
				fAllocated[key] = fPixel;
			}
		}
		XSetForeground(fDisplay, fGC, fPixel);
	}

	static unsigned long Channel(uint8 value, unsigned long mask)
	{
		if (mask == 0)
			return 0;
		int shift = 0;
		while (((mask >> shift) & 1) == 0)
			shift++;
		unsigned long bits = mask >> shift;
		return ((static_cast<unsigned long>(value) * bits + 127) / 255) << shift;
	}

	// The rectangle between two corner pixels, both included, whichever
	// way round they are.
	struct Span {
		Span(int left, int top, int right, int bottom)
		    : x(std::min(left, right)), y(std::min(top, bottom)),
		      width(static_cast<unsigned>(std::abs(right - left)) + 1),
		      height(static_cast<unsigned>(std::abs(bottom - top)) + 1)
		{
		}

		int x;
		int y;
		unsigned width;
		unsigned height;
	};

	// Corners as X points, on the stack up to kStackPoints; closed repeats
	// the first at the end.
	class Points
	{
	public:
		Points(const int* xy, int count, bool closed)
		    : fCount(count + (closed ? 1 : 0)), fData(fStack)
		{
			if (fCount > kStackPoints) {
				fHeap.resize(static_cast<size_t>(fCount));
				fData = fHeap.data();
			}
			for (int i = 0; i < count; i++) {
				fData[i].x = static_cast<short>(xy[2 * i]);
				fData[i].y = static_cast<short>(xy[2 * i + 1]);
			}
			if (closed)
				fData[count] = fData[0];
		}

		XPoint* Data() { return fData; }
		int Count() const { return fCount; }

	private:
		static const int kStackPoints = 16;
		int fCount;
		XPoint fStack[kStackPoints];
		std::vector<XPoint> fHeap;
		XPoint* fData;
	};

	XftFont* Font(const BFont& font)
	{
		std::string pattern = font.Kind() == B_FIXED_FONT_KIND ? "mono" : "sans";
		if (font.Kind() == B_BOLD_FONT_KIND || (font.Face() & B_BOLD_FACE) != 0)
			pattern += ":bold";
		if ((font.Face() & B_ITALIC_FACE) != 0)
			pattern += ":italic";
		pattern += ":pixelsize=" + std::to_string(std::lround(font.Size()));
		auto found = fFonts.find(pattern);
		if (found != fFonts.end())
			return found->second;
		XftFont* opened = XftFontOpenName(fDisplay, DefaultScreen(fDisplay), pattern.c_str());
		fFonts[pattern] = opened;
		return opened;
	}

	Display* fDisplay;
	Window fWindow;
	GC fGC;
	XftDraw* fDraw;
	rgb_color fColor;
	unsigned long fPixel;
	std::map<uint32, unsigned long> fAllocated;
	std::map<std::string, XftFont*> fFonts;
};


thread_local std::unique_ptr<Worker> sWorker;

} // namespace


Painter*
FltkPainter()
{
	static Fltk sPainter;
	return &sPainter;
}


Painter*
WorkerPainter(Fl_Window* window)
{
	if (sWorker == nullptr)
		sWorker.reset(new Worker);
	if (!sWorker->IsValid())
		return nullptr;
	sWorker->Aim(fl_xid(window));
	return sWorker.get();
}


Painter*
ExistingWorkerPainter()
{
	return sWorker != nullptr && sWorker->IsValid() ? sWorker.get() : nullptr;
}


void
FinishWorkerDrawing()
{
	if (Painter* painter = ExistingWorkerPainter())
		painter->Sync();
}


void
ReleaseWorkerWindow()
{
	if (sWorker != nullptr && sWorker->IsValid())
		sWorker->Forget();
}


void
PrepareWorkerDrawing(Fl_Window* window)
{
	Window xid = 0;
	{
		UIGuard guard;
		if (window->shown())
			xid = fl_xid(window);
	}
	if (xid == 0)
		return;
	if (sWorker == nullptr)
		sWorker.reset(new Worker);
	if (sWorker->IsValid())
		sWorker->Prepare(xid, 2000000);
}

} // namespace platform_interface
