// A point in a view's or the screen's coordinates.
#ifndef POINT_H
#define POINT_H

class BPoint
{
public:
	BPoint() : x(0), y(0) {}
	BPoint(float px, float py) : x(px), y(py) {}

	bool operator==(const BPoint& other) const { return x == other.x && y == other.y; }
	bool operator!=(const BPoint& other) const { return !(*this == other); }

	float x;
	float y;
};

const BPoint B_ORIGIN(0, 0);

#endif // POINT_H
