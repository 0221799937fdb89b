#include "Bitmap.h"

#include <cstring>
#include <new>

// Bits per pixel of the spaces a bitmap can hold; 0 for the others.
static int32
BitsPerPixel(color_space space)
{
	switch (space) {
		case B_GRAY1:
		case B_GRAY1_BIG:
			return 1;
		case B_GRAY8:
		case B_GRAY8_BIG:
		case B_CMAP8:
			return 8;
		case B_RGB15:
		case B_RGBA15:
		case B_RGB16:
		case B_RGB15_BIG:
		case B_RGBA15_BIG:
		case B_RGB16_BIG:
			return 16;
		case B_RGB24:
		case B_RGB24_BIG:
			return 24;
		case B_RGB32:
		case B_RGBA32:
		case B_RGB32_BIG:
		case B_RGBA32_BIG:
			return 32;
		default:
			return 0;
	}
}


BBitmap::BBitmap(BRect bounds, color_space space)
    : fBounds(bounds), fColorSpace(space), fBytesPerRow(0), fBitsLength(0), fBits(nullptr)
{
	// Inclusive coordinates: (0, 0, 15, 15) is 16 pixels wide and high.
	const int32 width = static_cast<int32>(bounds.right - bounds.left) + 1;
	const int32 height = static_cast<int32>(bounds.bottom - bounds.top) + 1;
	const int32 bits = BitsPerPixel(space);
	if (width <= 0 || height <= 0 || bits == 0)
		return;

	fBytesPerRow = (width * bits + 31) / 32 * 4;
	fBitsLength = fBytesPerRow * height;
	fBits = new (std::nothrow) uint8[fBitsLength]();
	if (fBits == nullptr) {
		fBytesPerRow = 0;
		fBitsLength = 0;
	}
}


BBitmap::~BBitmap()
{
	delete[] fBits;
}


void
BBitmap::SetBits(const void* data, int32 length, int32 offset, color_space space)
{
	if (fBits == nullptr || data == nullptr || space != fColorSpace || offset < 0 || length <= 0 ||
	    offset >= fBitsLength)
		return;
	if (length > fBitsLength - offset)
		length = fBitsLength - offset;
	memcpy(fBits + offset, data, length);
}
