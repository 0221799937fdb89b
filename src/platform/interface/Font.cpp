#include "Font.h"

#include <FL/Fl.H>
#include <FL/Fl_Tooltip.H>
#include <FL/fl_draw.H>
#include <FL/x.H>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <mutex>
#include <utility>

#include "interface/Widgets.h"

namespace {

const BFont sPlainFont(B_PLAIN_FONT_KIND, 12.0f);
const BFont sBoldFont(B_BOLD_FONT_KIND, 12.0f);
const BFont sFixedFont(B_FIXED_FONT_KIND, 12.0f);


// Fonts can be measured only once the display is open; before that (and in
// tests that record drawing without a display) sizes are estimated.
bool
CanMeasure()
{
	return fl_display != nullptr;
}

// The program's layouts were drawn for Helvetica, whose digits are 0.556 em
// wide. Liberation Sans has its widths; where fontconfig substitutes another
// family, its measured digits decide the size.
const float kDigitsPerEm = 10 * 0.556f;
// Smaller than this stops being readable; the text is cut with an ellipsis
// instead.
const Fl_Fontsize kSmallestSize = 7;

std::mutex sSizesLock;
std::map<std::pair<Fl_Font, int>, Fl_Fontsize> sSizes;


void
SetUpFamilies()
{
	static bool sDone = false;
	if (sDone)
		return;
	sDone = true;
	// FLTK's Xft names: a style letter, then the fontconfig family.
	static const char* const kNames[4] = {" Liberation Sans", "BLiberation Sans",
	                                      "ILiberation Sans", "PLiberation Sans"};
	Fl::set_font(FL_HELVETICA, kNames[0]);
	Fl::set_font(FL_HELVETICA_BOLD, kNames[1]);
	Fl::set_font(FL_HELVETICA_ITALIC, kNames[2]);
	Fl::set_font(FL_HELVETICA_BOLD_ITALIC, kNames[3]);
	Fl_Tooltip::font(FL_HELVETICA);
}

} // namespace


namespace platform_interface {

Fl_Font
FltkFont(const BFont& font)
{
	bool bold = font.Kind() == B_BOLD_FONT_KIND || (font.Face() & B_BOLD_FACE) != 0;
	bool italic = (font.Face() & B_ITALIC_FACE) != 0;
	Fl_Font base = font.Kind() == B_FIXED_FONT_KIND ? FL_COURIER : FL_HELVETICA;
	return base + (bold ? FL_BOLD : 0) + (italic ? FL_ITALIC : 0);
}


// The largest pixel size, at most the size asked for, whose digits are no
// wider than Helvetica's at that size. Measured once per face and size.
Fl_Fontsize
FltkFontSize(Fl_Font face, float size)
{
	int wanted = std::max(1, static_cast<int>(std::lround(size)));
	if (!CanMeasure())
		return wanted;
	if (face >= FL_COURIER && face <= FL_COURIER_BOLD_ITALIC)
		return wanted;
	std::lock_guard<std::mutex> guard(sSizesLock);
	SetUpFamilies();
	auto found = sSizes.find(std::make_pair(face, wanted));
	if (found != sSizes.end())
		return found->second;
	float limit = kDigitsPerEm * static_cast<float>(wanted) + 0.5f;
	Fl_Fontsize chosen = std::min<Fl_Fontsize>(wanted, kSmallestSize);
	for (Fl_Fontsize candidate = wanted; candidate >= kSmallestSize; candidate--) {
		fl_font(face, candidate);
		if (fl_width("0123456789") <= limit) {
			chosen = candidate;
			break;
		}
	}
	sSizes[std::make_pair(face, wanted)] = chosen;
	return chosen;
}


Fl_Fontsize
FltkFontSize(const BFont& font)
{
	return FltkFontSize(FltkFont(font), font.Size());
}


void
SetFltkFont(const BFont& font)
{
	Fl_Font face = FltkFont(font);
	fl_font(face, FltkFontSize(face, font.Size()));
}

} // namespace platform_interface

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
	platform_interface::SetFltkFont(*this);
	return static_cast<float>(fl_width(string, length));
}


std::string
BFont::Truncated(const char* string, float width) const
{
	if (string == nullptr)
		return std::string();
	std::string text(string);
	if (StringWidth(text.c_str()) <= width)
		return text;
	static const char kEllipsis[] = "\xe2\x80\xa6";
	while (!text.empty()) {
		// Drop one whole UTF-8 character: continuation bytes, then its lead.
		while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0xc0) == 0x80)
			text.pop_back();
		if (!text.empty())
			text.pop_back();
		while (!text.empty() && text.back() == ' ')
			text.pop_back();
		std::string shown = text + kEllipsis;
		if (StringWidth(shown.c_str()) <= width)
			return shown;
	}
	return StringWidth(kEllipsis) <= width ? std::string(kEllipsis) : std::string();
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
	platform_interface::SetFltkFont(*this);
	height->descent = static_cast<float>(fl_descent());
	height->ascent = static_cast<float>(fl_height()) - height->descent;
	height->leading = 0;
}


bool
BFont::operator==(const BFont& other) const
{
	return fKind == other.fKind && fSize == other.fSize && fFace == other.fFace;
}
