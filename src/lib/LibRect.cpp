#include "lib/LibRect.h"


BRect
LibRect(float left, float top, float width, float height)
{
	return BRect(left, top, left + width, top + height);
}
