#include "Font.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>
#include <FL/x.H>

#include <cmath>
#include <cstring>

namespace {

const BFont sPlainFont(B_PLAIN_FONT_KIND, 12.0f);
const BFont sBoldFont(B_BOLD_FONT_KIND, 12.0f);
const BFont sFixedFont(B_FIXED_FONT_KIND, 12.0f);


Fl_Font
FltkFont(const BFont& font)
{
	bool bold = font.Kind() == B_BOLD_FONT_KIND || (font.Face() & B_BOLD_FACE) != 0;
	bool italic = (font.Face() & B_ITALIC_FACE) != 0;
	Fl_Font base = font.Kind() == B_FIXED_FONT_KIND ? FL_COURIER : FL_HELVETICA;
	return base + (bold ? FL_BOLD : 0) + (italic ? FL_ITALIC : 0);
}


// Fonts can be measured only once the display is open; before that (and in
// tests that record drawing without a display) sizes are estimated.
bool
CanMeasure()
{
	return fl_display != nullptr;
}

} // namespace

const BFont* be_plain_font = &sPlainFont;
const BFont* be_bold_font = &sBoldFont;
const BFont* be_fixed_font = &sFixedFont;


BFont::BFont() : fKind(B_PLAIN_FONT_KIND), fSize(12.0f), fFace(B_REGULAR_FACE)
{
}


BFont::BFont(font_kind kind, float size)
    : fKind(kind), fSize(size), fFace(kind == B_BOLD_FONT_KIND ? B_BOLD_FACE : B_REGULAR_FACE)
{
}


void
BFont::SetSize(float size)
{
	if (size > 0)
		fSize = size;
}


void
BFont::SetFace(uint16 face)
{
	fFace = face;
}


float
BFont::StringWidth(const char* string) const
{
	if (string == nullptr)
		return 0;
	return StringWidth(string, static_cast<int32>(strlen(string)));
}


float
BFont::StringWidth(const char* string, int32 length) const
{
	if (string == nullptr || length <= 0)
		return 0;
	if (!CanMeasure())
		return std::ceil(0.6f * fSize * static_cast<float>(length));
	fl_font(FltkFont(*this), static_cast<Fl_Fontsize>(std::lround(fSize)));
	return static_cast<float>(fl_width(string, length));
}


void
BFont::GetHeight(font_height* height) const
{
	if (height == nullptr)
		return;
	if (!CanMeasure()) {
		height->ascent = std::ceil(fSize * 0.8f);
		height->descent = std::ceil(fSize * 0.2f);
		height->leading = 0;
		return;
	}
	fl_font(FltkFont(*this), static_cast<Fl_Fontsize>(std::lround(fSize)));
	height->descent = static_cast<float>(fl_descent());
	height->ascent = static_cast<float>(fl_height()) - height->descent;
	height->leading = 0;
}


bool
BFont::operator==(const BFont& other) const
{
	return fKind == other.fKind && fSize == other.fSize && fFace == other.fFace;
}
