// A rectangle with inclusive edges: (0, 0, 9, 9) covers 10 x 10 pixels, and
// Width() answers 9. A rectangle whose right lies left of its left is invalid.
#ifndef RECT_H
#define RECT_H

#include "Point.h"

class BRect
{
public:
	BRect() : left(0), top(0), right(-1), bottom(-1) {}
	BRect(float l, float t, float r, float b) : left(l), top(t), right(r), bottom(b) {}
	BRect(BPoint leftTop, BPoint rightBottom)
	    : left(leftTop.x), top(leftTop.y), right(rightBottom.x), bottom(rightBottom.y)
	{
	}

	float Width() const { return right - left; }
	float Height() const { return bottom - top; }
	bool IsValid() const { return left <= right && top <= bottom; }
	BPoint LeftTop() const { return BPoint(left, top); }
	BPoint RightBottom() const { return BPoint(right, bottom); }
	// Moves the rectangle, keeping its size, so that its left top is where.
	void OffsetTo(BPoint where)
	{
		right += where.x - left;
		bottom += where.y - top;
		left = where.x;
		top = where.y;
	}

	bool operator==(const BRect& other) const
	{
		return left == other.left && top == other.top && right == other.right &&
		       bottom == other.bottom;
	}
	bool operator!=(const BRect& other) const { return !(*this == other); }

	float left;
	float top;
	float right;
	float bottom;
};

#endif // RECT_H
