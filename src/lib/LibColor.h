// Colours of the support library.
#ifndef LIB_COLOR_H
#define LIB_COLOR_H

#include <GraphicsDefs.h>

// The grey of the program's panels: 216, 216, 216.
extern const rgb_color grey_color;

// The colour of the system palette nearest to color (alpha kept), so that a
// view looks the same on an 8-bit screen as on any other.
rgb_color lib_nearest_system_color(rgb_color color);

#endif // LIB_COLOR_H
