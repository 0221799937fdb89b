#include "interface/Painter.h"

#include <FL/Fl.H>
#include <FL/Fl_Window.H>
#include <FL/fl_draw.H>
#include <FL/x.H>
#include <X11/Xft/Xft.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include "interface/Widgets.h"
#include <cmath>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace platform_interface {

Painter::~Painter()
{
}


namespace {

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

	void StrokeRect(int x, int y, int width, int height) override
	{
		if (width > 0 && height > 0)
			fl_rect(x, y, width, height);
	}

	void FillRect(int x, int y, int width, int height) override
	{
		if (width > 0 && height > 0)
			fl_rectf(x, y, width, height);
	}

	void InvertRect(int x, int y, int width, int height) override
	{
		if (width <= 0 || height <= 0)
			return;
		XSetFunction(fl_display, fl_gc, GXinvert);
		XFillRectangle(fl_display, fl_window, fl_gc, x, y, static_cast<unsigned>(width),
		               static_cast<unsigned>(height));
		XSetFunction(fl_display, fl_gc, GXcopy);
	}

	void StrokeEllipse(int x, int y, int width, int height) override
	{
		if (width > 0 && height > 0)
			fl_arc(x, y, width, height, 0.0, 360.0);
	}

	void FillEllipse(int x, int y, int width, int height) override
	{
		if (width > 0 && height > 0)
			fl_pie(x, y, width, height, 0.0, 360.0);
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
		platform_interface::SetFltkFont(font);
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

	void StrokeRect(int x, int y, int width, int height) override
	{
		if (width > 0 && height > 0) {
			XDrawRectangle(fDisplay, fWindow, fGC, x, y, static_cast<unsigned>(width - 1),
			               static_cast<unsigned>(height - 1));
		}
	}

	void FillRect(int x, int y, int width, int height) override
	{
		if (width > 0 && height > 0) {
			XFillRectangle(fDisplay, fWindow, fGC, x, y, static_cast<unsigned>(width),
			               static_cast<unsigned>(height));
		}
	}

	void InvertRect(int x, int y, int width, int height) override
	{
		if (width <= 0 || height <= 0)
			return;
		XSetFunction(fDisplay, fGC, GXinvert);
		FillRect(x, y, width, height);
		XSetFunction(fDisplay, fGC, GXcopy);
	}

	void StrokeEllipse(int x, int y, int width, int height) override
	{
		if (width > 0 && height > 0) {
			XDrawArc(fDisplay, fWindow, fGC, x, y, static_cast<unsigned>(width - 1),
			         static_cast<unsigned>(height - 1), 0, 360 * 64);
		}
	}

	void FillEllipse(int x, int y, int width, int height) override
	{
		if (width > 0 && height > 0) {
			XFillArc(fDisplay, fWindow, fGC, x, y, static_cast<unsigned>(width),
			         static_cast<unsigned>(height), 0, 360 * 64);
		}
	}

	void StrokePolygon(const int* xy, int count, bool closed) override
	{
		std::vector<XPoint> points = Points(xy, count);
		if (closed && count > 0)
			points.push_back(points.front());
		XDrawLines(fDisplay, fWindow, fGC, points.data(), static_cast<int>(points.size()),
		           CoordModeOrigin);
	}

	void FillPolygon(const int* xy, int count) override
	{
		std::vector<XPoint> points = Points(xy, count);
		XFillPolygon(fDisplay, fWindow, fGC, points.data(), count, count == 3 ? Convex : Complex,
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

	static std::vector<XPoint> Points(const int* xy, int count)
	{
		std::vector<XPoint> points(static_cast<size_t>(count));
		for (int i = 0; i < count; i++) {
			points[i].x = static_cast<short>(xy[2 * i]);
			points[i].y = static_cast<short>(xy[2 * i + 1]);
		}
		return points;
	}

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

} // namespace platform_interface
