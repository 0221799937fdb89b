// A font: family (plain, bold or fixed), size in points and face. On X the
// families are the sans, bold sans and mono fonts FLTK draws with.
#ifndef FONT_H
#define FONT_H

#include <string>

#include "SupportDefs.h"

struct font_height {
	float ascent;
	float descent;
	float leading;
};

enum {
	B_REGULAR_FACE = 0x0040,
	B_BOLD_FACE = 0x0020,
	B_ITALIC_FACE = 0x0001,
};

enum font_kind {
	B_PLAIN_FONT_KIND,
	B_BOLD_FONT_KIND,
	B_FIXED_FONT_KIND,
};

class BFont
{
public:
	// be_plain_font at 12 points.
	BFont();
	explicit BFont(font_kind kind, float size = 12.0f);

	void SetSize(float size);
	float Size() const { return fSize; }
	void SetFace(uint16 face);
	uint16 Face() const { return fFace; }
	font_kind Kind() const { return fKind; }

	// Width in pixels of the string on the display; without an open display
	// (recording, tests) an estimate of 0.6 x size per character.
	float StringWidth(const char* string) const;
	float StringWidth(const char* string, int32 length) const;
	// string cut at its end so that, followed by an ellipsis, it is no wider
	// than width (whole characters only); string itself when it fits.
	std::string Truncated(const char* string, float width) const;
	// Ascent, descent and leading in pixels; estimated without a display.
	void GetHeight(font_height* height) const;

	bool operator==(const BFont& other) const;
	bool operator!=(const BFont& other) const { return !(*this == other); }

private:
	font_kind fKind;
	float fSize;
	uint16 fFace;
};

extern const BFont* be_plain_font;
extern const BFont* be_bold_font;
extern const BFont* be_fixed_font;

#endif // FONT_H
