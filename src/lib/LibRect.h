// Rectangles written as left, top, width and height.
#ifndef LIB_RECT_H
#define LIB_RECT_H

#include <Rect.h>

// The rectangle from (left, top) to (left + width, top + height).
BRect LibRect(float left, float top, float width, float height);

#endif // LIB_RECT_H
