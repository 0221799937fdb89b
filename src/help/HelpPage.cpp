#include "help/HelpPage.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstring>

#include "help/xmlTag.h"

namespace {

// Bullet of a bulleted list item on screen (U+2022).
const char* const kBullet = "\xE2\x80\xA2";


uint32
InlineStyle(const LibString& name)
{
	if (name == "B" || name == "STRONG")
		return kHelpBold;
	if (name == "I" || name == "EM")
		return kHelpItalic;
	if (name == "TT" || name == "CODE")
		return kHelpFixed;
	return kHelpPlain;
}


bool
IsHeading(const LibString& name)
{
	return name == "H" || name == "H1" || name == "H2" || name == "H3";
}


// Text of an element with its children's text where they stood.
void
AppendPlainText(xmlTag& tag, int32 depth, std::string& out)
{
	const LibString& contents = tag.Contents();
	int32 done = 0;
	LinkList<xmlTag>& children = tag.Children();
	for (xmlTag* child = children.First(); child != nullptr; child = children.Next()) {
		int32 at = child->ParentLocation();
		if (at > done) {
			int32 end = std::min(at, contents.Length());
			out.append(contents.String() + done, end - done);
			// Spaces the parser stripped from the end of the text.
			out.append(at - end, ' ');
			done = end;
		}
		if (depth < HelpPage::kMaxNesting)
			AppendPlainText(*child, depth + 1, out);
		else
			out += child->Contents().String();
	}
	if (done < contents.Length())
		out.append(contents.String() + done, contents.Length() - done);
}


// Collects runs into blocks as the page's elements are walked in order.
class Builder
{
public:
	explicit Builder(std::vector<HelpBlock>& blocks) : fBlocks(blocks), fGap(false) { Reset(); }

	void Text(const char* text, int32 length, uint32 style)
	{
		for (int32 i = 0; i < length; i++) {
			char character = text[i] == '\t' ? ' ' : text[i];
			// Blocks never start with white space.
			if (character == ' ' && fCurrent.runs.empty())
				continue;
			if (fCurrent.runs.empty() || fCurrent.runs.back().style != style)
				fCurrent.runs.push_back(HelpRun{std::string(), style});
			fCurrent.runs.back().text += character;
		}
	}

	void LineBreak() { Close(); }

	void Paragraph()
	{
		Close();
		fGap = true;
	}

	void Heading(const std::string& text)
	{
		Close();
		fCurrent.kind = kHelpHeadingBlock;
		Text(text.c_str(), static_cast<int32>(text.size()), kHelpPlain);
		Close();
	}

	void Finish() { Close(); }

private:
	void Reset()
	{
		fCurrent.kind = kHelpTextBlock;
		fCurrent.gapBefore = false;
		fCurrent.marker.clear();
		fCurrent.runs.clear();
	}

	void Close()
	{
		while (!fCurrent.runs.empty()) {
			std::string& last = fCurrent.runs.back().text;
			while (!last.empty() && last.back() == ' ')
				last.pop_back();
			if (!last.empty())
				break;
			fCurrent.runs.pop_back();
		}
		if (fCurrent.runs.empty()) {
			Reset();
			return;
		}
		if (fCurrent.kind == kHelpTextBlock)
			FindMarker();
		fCurrent.gapBefore = fGap && !fBlocks.empty();
		fBlocks.push_back(fCurrent);
		fGap = false;
		Reset();
	}

	// "- text" is a bulleted item and "12. text" a numbered one.
	void FindMarker()
	{
		std::string& first = fCurrent.runs.front().text;
		size_t length = 0;
		while (length < first.size() && length < 4 &&
		       isdigit(static_cast<unsigned char>(first[length])))
			length++;
		std::string marker;
		if (length == 0 && first[0] == '-')
			marker = "-";
		else if (length > 0 && length < 4 && length < first.size() && first[length] == '.')
			marker = first.substr(0, length + 1);
		else
			return;
		length = marker.size();
		// The marker stands apart from the item's text, which must follow.
		if (length >= first.size() || first[length] != ' ')
			return;
		while (length < first.size() && first[length] == ' ')
			length++;
		if (length == first.size() && fCurrent.runs.size() == 1)
			return;
		first.erase(0, length);
		if (first.empty())
			fCurrent.runs.erase(fCurrent.runs.begin());
		fCurrent.marker = marker;
		fCurrent.kind = kHelpItemBlock;
	}

	std::vector<HelpBlock>& fBlocks;
	HelpBlock fCurrent;
	bool fGap;
};


void
Walk(xmlTag& tag, uint32 style, int32 depth, Builder& builder)
{
	const LibString& contents = tag.Contents();
	int32 done = 0;
	LinkList<xmlTag>& children = tag.Children();
	for (xmlTag* child = children.First(); child != nullptr; child = children.Next()) {
		int32 at = child->ParentLocation();
		if (at > done) {
			// A child after the text's last word stands behind spaces the
			// parser stripped from the end of the text: they are put back.
			int32 end = std::min(at, contents.Length());
			builder.Text(contents.String() + done, end - done, style);
			builder.Text(std::string(at - end, ' ').c_str(), at - end, style);
			done = end;
		}
		const LibString& name = child->Name();
		if (name == "P") {
			builder.Paragraph();
		} else if (name == "BR") {
			builder.LineBreak();
		} else if (IsHeading(name)) {
			std::string text;
			AppendPlainText(*child, depth + 1, text);
			builder.Heading(text);
		} else if (depth < HelpPage::kMaxNesting) {
			Walk(*child, style | InlineStyle(name), depth + 1, builder);
		} else {
			builder.Text(child->Contents().String(), child->Contents().Length(), style);
		}
	}
	if (done < contents.Length())
		builder.Text(contents.String() + done, contents.Length() - done, style);
}


struct Piece {
	std::string text;
	uint32 style;
	float width;
};

struct Word {
	std::vector<Piece> pieces;
	float width;
};


std::vector<Word>
SplitWords(const HelpBlock& block, HelpMetrics& metrics)
{
	std::vector<Word> words;
	Word word{{}, 0};
	auto endWord = [&]() {
		if (word.pieces.empty())
			return;
		for (Piece& piece : word.pieces) {
			piece.width = metrics.Width(piece.text.c_str(), static_cast<int32>(piece.text.size()),
			                            block.kind, piece.style);
			word.width += piece.width;
		}
		words.push_back(word);
		word = Word{{}, 0};
	};
	for (const HelpRun& run : block.runs) {
		for (char character : run.text) {
			if (character == ' ') {
				endWord();
				continue;
			}
			if (word.pieces.empty() || word.pieces.back().style != run.style)
				word.pieces.push_back(Piece{std::string(), run.style, 0});
			word.pieces.back().text += character;
		}
	}
	endWord();
	return words;
}


// Length of the UTF-8 character that starts at text.
size_t
CharacterLength(const std::string& text, size_t at)
{
	size_t length = 1;
	while (at + length < text.size() &&
	       (static_cast<unsigned char>(text[at + length]) & 0xc0) == 0x80)
		length++;
	return length;
}


class LineFiller
{
public:
	LineFiller(help_block_kind kind, float indent, float width, float space, HelpMetrics& metrics,
	           std::vector<HelpLine>& lines)
	    : fKind(kind), fIndent(indent), fWidth(width), fSpace(space), fMetrics(metrics),
	      fLines(lines), fX(indent), fEmpty(true)
	{
		fLine.kind = kind;
		fLine.markerX = 0;
	}

	void SetMarker(const std::string& marker, float x)
	{
		fLine.marker = marker;
		fLine.markerX = x;
	}

	void Place(const Word& word)
	{
		if (!fEmpty && fX + fSpace + word.width > fWidth)
			EndLine();
		if (fEmpty && fIndent + word.width > fWidth) {
			PlaceBroken(word);
			return;
		}
		bool spaced = !fEmpty;
		for (const Piece& piece : word.pieces) {
			Add(piece.text, piece.style, spaced);
			fX += (spaced ? fSpace : 0) + piece.width;
			spaced = false;
		}
	}

	// Lines hold at least one word or piece of one.
	void EndLine()
	{
		if (fEmpty)
			return;
		fLines.push_back(fLine);
		fLine.fragments.clear();
		fLine.marker.clear();
		fX = fIndent;
		fEmpty = true;
	}

private:
	void Add(const std::string& text, uint32 style, bool spaced)
	{
		if (!fLine.fragments.empty() && fLine.fragments.back().style == style) {
			HelpFragment& last = fLine.fragments.back();
			if (spaced)
				last.text += ' ';
			last.text += text;
		} else {
			fLine.fragments.push_back(HelpFragment{fX + (spaced ? fSpace : 0), text, style});
		}
		fEmpty = false;
	}

	// A word too wide for a line of its own is cut between characters.
	void PlaceBroken(const Word& word)
	{
		for (const Piece& piece : word.pieces) {
			for (size_t at = 0; at < piece.text.size();) {
				size_t length = CharacterLength(piece.text, at);
				float width = fMetrics.Width(piece.text.c_str() + at, static_cast<int32>(length),
				                             fKind, piece.style);
				if (!fEmpty && fX + width > fWidth)
					EndLine();
				Add(piece.text.substr(at, length), piece.style, false);
				fX += width;
				at += length;
			}
		}
	}

	help_block_kind fKind;
	float fIndent;
	float fWidth;
	float fSpace;
	HelpMetrics& fMetrics;
	std::vector<HelpLine>& fLines;
	HelpLine fLine;
	float fX;
	bool fEmpty;
};

} // namespace


HelpMetrics::~HelpMetrics()
{
}


std::string
HelpBlock::Text() const
{
	std::string text;
	for (const HelpRun& run : runs)
		text += run.text;
	return text;
}


HelpPage::HelpPage()
{
}


void
HelpPage::Read(xmlTag& page)
{
	fBlocks.clear();
	Builder builder(fBlocks);
	Walk(page, kHelpPlain, 0, builder);
	builder.Finish();
}


void
HelpPage::SetTitle(const char* title)
{
	if (!fBlocks.empty() && fBlocks.front().kind == kHelpTitleBlock)
		fBlocks.erase(fBlocks.begin());
	if (title == nullptr)
		return;
	std::vector<HelpBlock> titled;
	Builder builder(titled);
	builder.Heading(title);
	if (titled.empty())
		return;
	titled.front().kind = kHelpTitleBlock;
	fBlocks.insert(fBlocks.begin(), titled.front());
	if (fBlocks.size() > 1)
		fBlocks[1].gapBefore = false;
}


void
HelpPage::Clear()
{
	fBlocks.clear();
}


LibString
HelpPage::Text() const
{
	LibString text;
	const HelpBlock* previous = nullptr;
	for (const HelpBlock& block : fBlocks) {
		if (previous != nullptr) {
			bool blank = block.gapBefore || block.kind == kHelpHeadingBlock ||
			             previous->kind == kHelpHeadingBlock || previous->kind == kHelpTitleBlock;
			text += blank ? "\n\n" : "\n";
		}
		if (block.kind == kHelpItemBlock) {
			text += block.marker.c_str();
			text += " ";
		}
		text += block.Text().c_str();
		previous = &block;
	}
	return text;
}


float
HelpPage::Layout(float width, HelpMetrics& metrics, std::vector<HelpLine>& lines) const
{
	lines.clear();
	float textHeight = metrics.Ascent(kHelpTextBlock) + metrics.Descent(kHelpTextBlock);
	float space = metrics.Width(" ", 1, kHelpTextBlock, kHelpPlain);
	// Item text hangs right of a column wide enough for "99."; the marker
	// ends one space before it.
	float indent = metrics.Width("00.", 3, kHelpTextBlock, kHelpPlain) + 2 * space;
	float y = 0;
	const HelpBlock* previous = nullptr;
	for (const HelpBlock& block : fBlocks) {
		if (previous != nullptr) {
			if (block.kind == kHelpHeadingBlock)
				y += std::ceil(textHeight * 0.9f);
			else if (block.gapBefore || previous->kind == kHelpTitleBlock)
				y += std::ceil(textHeight * 0.6f);
		}
		float ascent = metrics.Ascent(block.kind);
		float descent = metrics.Descent(block.kind);
		// A fifth of the line's height between lines keeps longer pages easy
		// to read.
		float advance = std::ceil((ascent + descent) * 1.2f);

		size_t first = lines.size();
		bool item = block.kind == kHelpItemBlock;
		LineFiller filler(block.kind, item ? indent : 0, width, space, metrics, lines);
		if (item) {
			std::string marker = block.marker == "-" ? kBullet : block.marker;
			float markerWidth = metrics.Width(marker.c_str(), static_cast<int32>(marker.size()),
			                                  block.kind, kHelpPlain);
			filler.SetMarker(marker, std::max(0.0f, indent - space - markerWidth));
		}
		for (const Word& word : SplitWords(block, metrics))
			filler.Place(word);
		filler.EndLine();
		for (size_t i = first; i < lines.size(); i++) {
			lines[i].top = y;
			lines[i].baseline = y + ascent;
			lines[i].bottom = y + ascent + descent;
			y += advance;
		}
		previous = &block;
	}
	return y;
}
