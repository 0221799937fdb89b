// A picture's pixels in one of the BeOS colour spaces, without any window:
// the program fills it, and a view draws it later. Rows are padded to 4 bytes.
#ifndef BITMAP_H
#define BITMAP_H

#include "GraphicsDefs.h"
#include "Rect.h"
#include "SupportDefs.h"

class BBitmap
{
public:
	// The pixels start out zeroed. An empty bounds or a colour space without a
	// pixel size leaves no pixels and InitCheck answers B_BAD_VALUE.
	BBitmap(BRect bounds, color_space space);
	virtual ~BBitmap();

	BBitmap(const BBitmap&) = delete;
	BBitmap& operator=(const BBitmap&) = delete;

	status_t InitCheck() const { return fBits != nullptr ? B_OK : B_BAD_VALUE; }
	BRect Bounds() const { return fBounds; }
	color_space ColorSpace() const { return fColorSpace; }
	void* Bits() { return fBits; }
	const void* Bits() const { return fBits; }
	int32 BitsLength() const { return fBitsLength; }
	int32 BytesPerRow() const { return fBytesPerRow; }

	// Copies length bytes of data into the pixels from byte offset on, clipped
	// to the pixels. Only data already in the bitmap's own colour space is
	// taken: data in another space is ignored, as no conversion is offered.
	void SetBits(const void* data, int32 length, int32 offset, color_space space);

private:
	BRect fBounds;
	color_space fColorSpace;
	int32 fBytesPerRow;
	int32 fBitsLength;
	uint8* fBits;
};

#endif // BITMAP_H
