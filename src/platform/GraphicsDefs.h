// Pixel formats and colours under their BeOS codes.
#ifndef GRAPHICS_DEFS_H
#define GRAPHICS_DEFS_H

#include "SupportDefs.h"

typedef enum {
	B_NO_COLOR_SPACE = 0x0000,
	B_GRAY1 = 0x0001,
	B_GRAY8 = 0x0002,
	B_RGB24 = 0x0003,
	B_CMAP8 = 0x0004,
	B_RGB16 = 0x0005,
	B_RGB32 = 0x0008,
	B_RGB15 = 0x0010,
	B_RGBA32 = 0x2008,
	B_RGBA15 = 0x2010,

	B_RGB32_BIG = 0x1008,
	B_RGBA32_BIG = 0x3008,
	B_RGB24_BIG = 0x1003,
	B_RGB16_BIG = 0x1005,
	B_RGB15_BIG = 0x1010,
	B_RGBA15_BIG = 0x3010,
	B_GRAY8_BIG = 0x1002,
	B_GRAY1_BIG = 0x1001,
} color_space;

typedef struct rgb_color {
	uint8 red;
	uint8 green;
	uint8 blue;
	uint8 alpha;
} rgb_color;

#endif // GRAPHICS_DEFS_H
