#include "TextView.h"

#include <cmath>
#include <vector>

namespace {

// Splits text into lines that fit width: at newlines, and (when wrapping) at
// the last blank before the width is exceeded; a word wider than the line
// stands alone.
std::vector<std::string>
WrapLines(const BView* view, const std::string& text, float width, bool wrap)
{
	std::vector<std::string> lines;
	size_t start = 0;
	while (start <= text.size()) {
		size_t end = text.find('\n', start);
		std::string paragraph =
		    text.substr(start, end == std::string::npos ? std::string::npos : end - start);
		if (!wrap) {
			lines.push_back(paragraph);
		} else {
			std::string line;
			size_t position = 0;
			while (position < paragraph.size()) {
				size_t blank = paragraph.find(' ', position);
				size_t wordEnd = blank == std::string::npos ? paragraph.size() : blank;
				std::string word = paragraph.substr(position, wordEnd - position);
				std::string candidate = line.empty() ? word : line + " " + word;
				if (!line.empty() && view->StringWidth(candidate.c_str()) > width) {
					lines.push_back(line);
					line = word;
				} else {
					line = candidate;
				}
				position = wordEnd + 1;
			}
			lines.push_back(line);
		}
		if (end == std::string::npos)
			break;
		start = end + 1;
	}
	return lines;
}

} // namespace


BTextView::BTextView(BRect frame, const char* name, BRect textRect, uint32 resizingMode,
                     uint32 flags)
    : BView(frame, name, resizingMode, flags), fTextRect(textRect), fWrap(true), fEditable(false),
      fSelectable(false), fAlignment(B_ALIGN_LEFT)
{
}


BTextView::~BTextView()
{
}


void
BTextView::SetText(const char* text)
{
	fText = text != nullptr ? text : "";
	Invalidate();
}


void
BTextView::Insert(const char* text)
{
	if (text != nullptr)
		fText += text;
	Invalidate();
}


const char*
BTextView::Text() const
{
	return fText.c_str();
}


int32
BTextView::TextLength() const
{
	return static_cast<int32>(fText.size());
}


void
BTextView::SetTextRect(BRect rect)
{
	fTextRect = rect;
	Invalidate();
}


void
BTextView::SetWordWrap(bool wrap)
{
	fWrap = wrap;
	Invalidate();
}


void
BTextView::MakeEditable(bool editable)
{
	fEditable = editable;
}


void
BTextView::MakeSelectable(bool selectable)
{
	fSelectable = selectable;
}


void
BTextView::SetAlignment(alignment flag)
{
	fAlignment = flag;
	Invalidate();
}


float
BTextView::TextHeight() const
{
	font_height height;
	GetFontHeight(&height);
	float lineHeight = std::ceil(height.ascent + height.descent + height.leading);
	size_t count = WrapLines(this, fText, fTextRect.Width(), fWrap).size();
	return lineHeight * static_cast<float>(count);
}


void
BTextView::Draw(BRect updateRect)
{
	(void)updateRect;
	font_height height;
	GetFontHeight(&height);
	float lineHeight = std::ceil(height.ascent + height.descent + height.leading);
	float y = fTextRect.top + height.ascent;
	for (const std::string& line : WrapLines(this, fText, fTextRect.Width(), fWrap)) {
		float x = fTextRect.left;
		if (fAlignment != B_ALIGN_LEFT) {
			float width = StringWidth(line.c_str());
			x = fAlignment == B_ALIGN_RIGHT ? fTextRect.right - width
			                                : fTextRect.left + (fTextRect.Width() - width) / 2;
		}
		DrawString(line.c_str(), BPoint(x, y));
		y += lineHeight;
	}
}
