// The graphics test's thirteen loops written straight on Xlib and Xft, as
// the yardstick for what Quickstep's own drawing adds: the same window size,
// the same unseeded rand() sequence (calibration calls included, so the
// same shapes are drawn), the same colour work per primitive, the same
// corner-to-size rule for rectangles and ellipses, one XFlush per primitive
// in the flushed loops and none before the clock stops in the others.
//
// Prints one JSON object: {"metrics": [{"index", "name", "rate"}, ...]}.
// Usage: graphics_bare [--repeat N]   (N runs of the thirteen, one line each)

#include <X11/Xft/Xft.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <unistd.h>

namespace {

enum Primitive {
	kLine,
	kString,
	kStrokeEllipse,
	kFillEllipse,
	kStrokeRect,
	kFillRect,
	kStrokeTriangle,
	kFillTriangle
};

struct Test {
	const char* name;
	int index;
	long cycles;
	int randCalls;
	long count;
	Primitive primitive;
	bool flush;
};

// In the order the program runs them.
const Test kTests[] = {
    {"Graphics Lines Flushed", 1010, 10000, 4, 10000, kLine, true},
    {"Graphics Lines Unflushed", 1011, 20000, 4, 20000, kLine, false},
    {"Graphics Strings Flushed", 1050, 90, 2, 10000, kString, true},
    {"Graphics Strings Unflushed", 1051, 180, 2, 20000, kString, false},
    {"Graphics Ellipses Flushed", 1020, 10000, 4, 10000, kStrokeEllipse, true},
    {"Graphics Ellipses Unflushed", 1021, 10000, 4, 10000, kStrokeEllipse, false},
    {"Graphics Ellipses Unflushed Filled", 1022, 10000, 4, 10000, kFillEllipse, false},
    {"Graphics Rectangles Flushed", 1030, 10000, 4, 10000, kStrokeRect, true},
    {"Graphics Rectangles Unflushed", 1031, 50000, 4, 50000, kStrokeRect, false},
    {"Graphics Rectangles Unflushed Filled", 1032, 10000, 4, 10000, kFillRect, false},
    {"Graphics Polygons Flushed", 1040, 10000, 6, 10000, kStrokeTriangle, true},
    {"Graphics Polygons Unflushed", 1041, 10000, 6, 10000, kStrokeTriangle, false},
    {"Graphics Polygons Unflushed Filled", 1042, 10000, 6, 10000, kFillTriangle, false},
};

const int kSize = 491;

long long
Microseconds()
{
	timespec now;
	clock_gettime(CLOCK_MONOTONIC, &now);
	return now.tv_sec * 1000000LL + now.tv_nsec / 1000;
}

// rand() * 1000 / 2^32 as a float, rounded to a pixel as the program does.
inline int
Coordinate()
{
	const float scale = 1000.0f / 4294967296.0f;
	return static_cast<int>(std::floor(static_cast<float>(rand()) * scale + 0.5f));
}

unsigned long
Channel(unsigned value, unsigned long mask)
{
	int shift = 0;
	while (((mask >> shift) & 1) == 0)
		shift++;
	unsigned long bits = mask >> shift;
	return ((value * bits + 127) / 255) << shift;
}

struct Target {
	Display* display;
	Window window;
	GC gc;
	Visual* visual;
	Colormap colormap;
	XftDraw* draw;
	XftFont* font;
};

// The calibration of the program: the same number of passes of the same
// number of rand() calls, timed and taken off the measurement.
long long
Calibrate(long passes, int randCalls)
{
	const long long start = Microseconds();
	for (long pass = 0; pass < passes; pass++) {
		for (int call = 0; call < randCalls; call++) {
			volatile int sink = rand();
			(void)sink;
		}
	}
	return Microseconds() - start;
}

// Red, green, blue from rand() as the program takes them, set as the
// foreground; answers the colour for text.
void
RandomColor(Target& screen, unsigned rgb[3])
{
	const double toChannel = 255.0 / 2147483648.0;
	rgb[0] = static_cast<unsigned>(rand() * toChannel);
	rgb[1] = static_cast<unsigned>(rand() * toChannel);
	rgb[2] = static_cast<unsigned>(rand() * toChannel);
	XSetForeground(screen.display, screen.gc,
	               Channel(rgb[0], screen.visual->red_mask) |
	                   Channel(rgb[1], screen.visual->green_mask) |
	                   Channel(rgb[2], screen.visual->blue_mask));
}

inline void
Draw(Target& screen, Primitive primitive, const unsigned rgb[3])
{
	switch (primitive) {
		case kLine: {
			int x1 = Coordinate();
			int y1 = Coordinate();
			int x2 = Coordinate();
			int y2 = Coordinate();
			XDrawLine(screen.display, screen.window, screen.gc, x1, y1, x2, y2);
			break;
		}
		case kString: {
			int x = Coordinate();
			int y = Coordinate();
			XRenderColor render = {static_cast<unsigned short>(rgb[0] * 257),
			                       static_cast<unsigned short>(rgb[1] * 257),
			                       static_cast<unsigned short>(rgb[2] * 257), 0xffff};
			XftColor color;
			XftColorAllocValue(screen.display, screen.visual, screen.colormap, &render, &color);
			XftDrawStringUtf8(screen.draw, &color, screen.font, x, y,
			                  reinterpret_cast<const FcChar8*>("Quickstep"), 9);
			XftColorFree(screen.display, screen.visual, screen.colormap, &color);
			break;
		}
		case kStrokeEllipse:
		case kFillEllipse:
		case kStrokeRect:
		case kFillRect: {
			int left = Coordinate();
			int top = Coordinate();
			int right = Coordinate();
			int bottom = Coordinate();
			int x = std::min(left, right);
			int y = std::min(top, bottom);
			unsigned width = static_cast<unsigned>(std::abs(right - left)) + 1;
			unsigned height = static_cast<unsigned>(std::abs(bottom - top)) + 1;
			if (primitive == kStrokeRect)
				XDrawRectangle(screen.display, screen.window, screen.gc, x, y, width - 1,
				               height - 1);
			else if (primitive == kFillRect)
				XFillRectangle(screen.display, screen.window, screen.gc, x, y, width, height);
			else if (primitive == kStrokeEllipse)
				XDrawArc(screen.display, screen.window, screen.gc, x, y, width - 1, height - 1, 0,
				         360 * 64);
			else
				XFillArc(screen.display, screen.window, screen.gc, x, y, width, height, 0,
				         360 * 64);
			break;
		}
		case kStrokeTriangle:
		case kFillTriangle: {
			XPoint points[4];
			for (int i = 0; i < 3; i++) {
				points[i].x = static_cast<short>(Coordinate());
				points[i].y = static_cast<short>(Coordinate());
			}
			points[3] = points[0];
			if (primitive == kStrokeTriangle)
				XDrawLines(screen.display, screen.window, screen.gc, points, 4, CoordModeOrigin);
			else
				XFillPolygon(screen.display, screen.window, screen.gc, points, 3, Convex,
				             CoordModeOrigin);
			break;
		}
	}
}

double
Measure(Target& screen, const Test& test)
{
	const long long overhead = Calibrate(test.count, test.randCalls);
	unsigned rgb[3];
	const long long start = Microseconds();
	for (long pass = 0; pass < test.count; pass++) {
		RandomColor(screen, rgb);
		Draw(screen, test.primitive, rgb);
		if (test.flush)
			XFlush(screen.display);
	}
	const double seconds = (Microseconds() - start - overhead) / 1e6;

	// White, then black, then everything out: outside the clock.
	XSetForeground(screen.display, screen.gc, WhitePixel(screen.display, 0));
	XFillRectangle(screen.display, screen.window, screen.gc, 0, 0, kSize, kSize);
	XSetForeground(screen.display, screen.gc, BlackPixel(screen.display, 0));
	XFlush(screen.display);
	return seconds > 0 ? test.cycles / seconds : 0;
}

} // namespace


int
main(int argc, char** argv)
{
	int repeat = 1;
	if (argc == 3 && strcmp(argv[1], "--repeat") == 0)
		repeat = std::max(1, atoi(argv[2]));
	Target screen;
	screen.display = XOpenDisplay(nullptr);
	if (screen.display == nullptr) {
		fprintf(stderr, "graphics_bare: cannot open the X display\n");
		return 1;
	}
	int number = DefaultScreen(screen.display);
	screen.visual = DefaultVisual(screen.display, number);
	screen.colormap = DefaultColormap(screen.display, number);
	if (screen.visual->c_class != TrueColor) {
		fprintf(stderr, "graphics_bare: needs a true-colour screen\n");
		return 1;
	}
	screen.window = XCreateSimpleWindow(screen.display, RootWindow(screen.display, number), 10, 10,
	                                    kSize, kSize, 0, 0, WhitePixel(screen.display, number));
	XStoreName(screen.display, screen.window, "graphics_bare");
	XSelectInput(screen.display, screen.window, StructureNotifyMask);
	XMapWindow(screen.display, screen.window);
	for (;;) {
		XEvent event;
		XNextEvent(screen.display, &event);
		if (event.type == MapNotify)
			break;
	}
	for (int i = 0; i < 400; i++) {
		XWindowAttributes attributes;
		XGetWindowAttributes(screen.display, screen.window, &attributes);
		if (attributes.map_state == IsViewable)
			break;
		usleep(5000);
	}
	screen.gc = XCreateGC(screen.display, screen.window, 0, nullptr);
	screen.draw = XftDrawCreate(screen.display, screen.window, screen.visual, screen.colormap);
	screen.font = XftFontOpenName(screen.display, number, "sans:pixelsize=12");
	XSync(screen.display, False);

	for (int run = 0; run < repeat; run++) {
		printf("{\"metrics\": [");
		for (size_t i = 0; i < sizeof(kTests) / sizeof(kTests[0]); i++) {
			const double rate = Measure(screen, kTests[i]);
			printf("%s{\"index\": %d, \"name\": \"%s\", \"rate\": %.1f}", i == 0 ? "" : ", ",
			       kTests[i].index, kTests[i].name, rate);
		}
		printf("]}\n");
		fflush(stdout);
	}
	XftFontClose(screen.display, screen.font);
	XftDrawDestroy(screen.draw);
	XFreeGC(screen.display, screen.gc);
	XCloseDisplay(screen.display);
	return 0;
}
