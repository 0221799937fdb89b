#include "help/xmlParser.h"

#include <cstring>
#include <new>

#include "help/xmlTag.h"
#include "help/xmlTagModifiers.h"


xmlParser::xmlParser() : fDepthReported(false)
{
	Init();
}


xmlParser::xmlParser(const char* path) : fDepthReported(false)
{
	Init();
	Open(path);
}


xmlParser::~xmlParser()
{
	Close();
}


// The declaration and the "!" tag are passed over by NextTag.
bool
xmlParser::SkipTag(const char* name)
{
	return name != nullptr && (strcmp(name, "?xml") == 0 || strcmp(name, "!") == 0);
}


// Tags that have no content of their own to read.
bool
xmlParser::NoAnchorTag(const char* name)
{
	return name != nullptr && (strcmp(name, "?xml") == 0 || strcmp(name, "!") == 0);
}


void
xmlParser::PrintToStream()
{
	fprintf(stderr, "xmlParser: line %ld, column %ld\nbuffer <%s>\n", static_cast<long>(fLine),
	        static_cast<long>(fColumn), fBuffer);
}


void
xmlParser::Init()
{
	fFile = nullptr;
	fLine = 0;
	fColumn = 0;
	fBuffer[0] = '\0';
	fLookahead = '\0';
}


bool
xmlParser::Open(const char* path)
{
	Close();
	// A new file starts with a fresh cursor, not inside the old file's line.
	Init();
	if (path != nullptr)
		fFile = fopen(path, "r");
	return IsValid();
}


void
xmlParser::Close()
{
	if (fFile != nullptr) {
		fclose(fFile);
		fFile = nullptr;
	}
}


bool
xmlParser::IsValid() const
{
	return fFile != nullptr;
}


void
xmlParser::Rewind()
{
	if (fFile == nullptr)
		return;
	fLine = 0;
	fColumn = 0;
	fBuffer[0] = '\0';
	fLookahead = '\0';
	rewind(fFile);
}


bool
xmlParser::ReadLine()
{
	if (fFile == nullptr)
		return false;
	if (fgets(fBuffer, kLineSize + 1, fFile) == nullptr)
		return false;

	fLine++;
	fColumn = 0;
	size_t length = strlen(fBuffer);
	if (length > 0 && fBuffer[length - 1] == '\n')
		fBuffer[length - 1] = '\0';
	SetLookahead();
	return true;
}


// The column is the current character. A line end adds no character: the
// last character of one line is followed by the first of the next non-empty
// line.
bool
xmlParser::Advance()
{
	if (HasNext()) {
		fColumn++;
		SetLookahead();
		return true;
	}

	do {
		if (!ReadLine())
			return false;
	} while (fBuffer[0] == '\0');
	return true;
}


bool
xmlParser::IsWhiteSpace(const char& character) const
{
	return character == ' ' || character == '\t';
}


// Names are taken as they stand: a closing tag keeps its leading slash and
// an empty element its trailing one.
bool
xmlParser::NextTag(char* name, bool& hasModifiers)
{
	int32 length = 0;
	bool collecting = false;
	name[0] = '\0';

	while (Advance()) {
		char c = Current();
		if (!collecting) {
			if (c == '<') {
				collecting = true;
				length = 0;
				if (!Advance())
					break;
				c = Current();
			} else {
				continue;
			}
		}

		if (!IsWhiteSpace(c) && c != '>') {
			// Longer names are cut to the buffer and read on to their end.
			if (length < kNameSize - 1)
				name[length++] = c;
			continue;
		}

		name[length] = '\0';
		hasModifiers = c != '>';
		collecting = false;
		if (SkipTag(name)) {
			name[0] = '\0';
			length = 0;
			continue;
		}
		return true;
	}

	// End of input in the middle of a name still answers that name.
	if (collecting) {
		name[length] = '\0';
		hasModifiers = false;
		if (SkipTag(name))
			name[0] = '\0';
	}
	return name[0] != '\0';
}


// Reads name=value pairs up to the closing '>'. Consequences kept on purpose:
// an unquoted value ends at the next space or at '>'; a quoted value cannot
// be empty (an immediate closing quote becomes the value's first character);
// after a quoted value its quote character stays in force for later
// unquoted values; an attribute written twice adds a second string under the
// same name.
void
xmlParser::AddModifiers(xmlTagModifiers& modifiers)
{
	bool inName = true;
	bool inValue = false;
	char quote = ' ';
	char name[kNameSize];
	char value[kNameSize];
	int32 nameLength = 0;
	int32 valueLength = 0;
	name[0] = '\0';

	while (Advance()) {
		char c = Current();
		if (c == '>') {
			if (inValue) {
				value[valueLength] = '\0';
				modifiers.AddString(name, value);
			}
			return;
		}
		if (IsWhiteSpace(c) && !inValue)
			continue;
		if (c == '=') {
			name[nameLength] = '\0';
			inName = false;
			inValue = true;
			if (fLookahead == '"' || fLookahead == '\'') {
				Advance();
				quote = Current();
			}
			continue;
		}
		if (c == quote && valueLength > 0) {
			value[valueLength] = '\0';
			modifiers.AddString(name, value);
			nameLength = 0;
			valueLength = 0;
			name[0] = '\0';
			inName = true;
			inValue = false;
			continue;
		}
		// Longer parts are cut to their buffers; the rest is read and dropped.
		if (inName) {
			if (nameLength < kNameSize - 1)
				name[nameLength++] = c;
		} else if (inValue) {
			if (valueLength < kNameSize - 1)
				value[valueLength++] = c;
		}
	}
}


// Finds the next element called name from the cursor, at any depth, and
// fills tag with it. Without a match the parser is left at the end of input.
bool
xmlParser::FindTag(const char* name, xmlTag& tag)
{
	fDepthReported = false;
	return FindTag(name, tag, 1);
}


// depth is the level tag will have in the tree being built, 1 at the top.
bool
xmlParser::FindTag(const char* name, xmlTag& tag, int32 depth)
{
	tag.Clear();
	if (name == nullptr)
		return false;

	char tagName[kNameSize];
	bool hasModifiers = false;
	bool found = false;
	while (!found && NextTag(tagName, hasModifiers)) {
		// Any other tag is passed over; scanning goes on behind its name.
		if (strcmp(tagName, name) != 0)
			continue;
		if (hasModifiers)
			AddModifiers(tag.Modifiers());
		tag.SetName(tagName);
		found = true;
		if (!NoAnchorTag(name))
			ReadContent(tag, depth);
	}
	tag.StripTrailingContent();
	return found;
}


void
xmlParser::ReadContent(xmlTag& tag, int32 depth)
{
	char tagName[kNameSize];
	bool hasModifiers = false;

	while (Advance()) {
		char c = Current();
		if (c == '<' && fLookahead == '/') {
			// Any closing tag ends the element: its name keeps the slash, so
			// it never equals the element's name and is not compared further.
			StepBack();
			if (!NextTag(tagName, hasModifiers))
				return;
			if (strcmp(tagName, tag.Name()) != 0)
				return;
			continue;
		}

		if (c == '<') {
			StepBack();
			Mark start;
			Save(start);
			int32 location = tag.Contents().Length();
			if (!NextTag(tagName, hasModifiers))
				return;

			size_t length = strlen(tagName);
			const bool empty = length > 0 && tagName[length - 1] == '/';
			xmlTag* child = nullptr;
			if (depth < kMaxDepth)
				child = new (std::nothrow) xmlTag;
			if (child == nullptr) {
				// Too deep to keep (or no memory): read past it, children and
				// all, without recursing, so that the text after it is still
				// this element's.
				if (!empty) {
					if (!fDepthReported) {
						fprintf(stderr,
						        "xmlParser: elements nested deeper than %ld levels skipped, "
						        "line %ld\n",
						        static_cast<long>(kMaxDepth), static_cast<long>(fLine));
						fDepthReported = true;
					}
					SkipElement(tagName, hasModifiers);
				}
				continue;
			}
			if (empty) {
				// Written with the slash against the '>': an empty element.
				tagName[length - 1] = '\0';
				child->SetName(tagName);
			} else {
				// Read again from its start, attributes, text and all.
				Restore(start);
				FindTag(tagName, *child, depth + 1);
			}
			child->SetParentLocation(location);
			// The child is handed over, not copied: a copy at every level
			// would cost the square of the depth.
			tag.AdoptChild(child);
			continue;
		}

		// Leading white space is dropped; inner runs are kept as written.
		if (IsWhiteSpace(c) && tag.Contents().IsEmpty())
			continue;
		tag.AddContent(c);
	}
}


// Reads past an element whose start tag name has just been read, as FindTag
// and ReadContent would read it, but keeping only a count of the open
// elements: every closing tag closes one, every start tag that is not empty
// opens one.
void
xmlParser::SkipElement(const char* name, bool hasModifiers)
{
	if (hasModifiers)
		SkipModifiers();
	if (NoAnchorTag(name))
		return;

	char tagName[kNameSize];
	int64 open = 1;
	while (open > 0 && Advance()) {
		const char c = Current();
		if (c != '<')
			continue;
		const bool closing = fLookahead == '/';
		StepBack();
		if (!NextTag(tagName, hasModifiers))
			return;
		if (closing) {
			open--;
			continue;
		}
		size_t length = strlen(tagName);
		if (length > 0 && tagName[length - 1] == '/')
			continue;
		if (hasModifiers)
			SkipModifiers();
		if (!NoAnchorTag(tagName))
			open++;
	}
}


// Reads up to the '>' that ends a start tag, as AddModifiers does.
void
xmlParser::SkipModifiers()
{
	while (Advance()) {
		if (Current() == '>')
			return;
	}
}


char
xmlParser::Current() const
{
	return fColumn >= 0 ? fBuffer[fColumn] : '\0';
}


// Moves the cursor back one character in the line (possibly to just before
// its first), so that the next Advance lands on the current one again.
void
xmlParser::StepBack()
{
	fColumn--;
	SetLookahead();
}


void
xmlParser::SetLookahead()
{
	fLookahead = HasNext() ? fBuffer[fColumn + 1] : '\0';
}


// Whether the line holds a character after the current one.
bool
xmlParser::HasNext() const
{
	if (fColumn >= 0 && fBuffer[fColumn] == '\0')
		return false;
	return fBuffer[fColumn + 1] != '\0';
}


void
xmlParser::Save(Mark& mark) const
{
	mark.offset = fFile != nullptr ? ftell(fFile) : 0;
	mark.line = fLine;
	mark.column = fColumn;
	mark.lookahead = fLookahead;
	memcpy(mark.buffer, fBuffer, sizeof(mark.buffer));
}


void
xmlParser::Restore(const Mark& mark)
{
	// Reading a child's name seldom leaves the line it starts on; the stream
	// is then still where it was, and a seek (which drops the stream's
	// buffer, to be read again) is left out.
	if (fFile != nullptr && mark.offset >= 0 && ftell(fFile) != mark.offset)
		fseek(fFile, mark.offset, SEEK_SET);
	fLine = mark.line;
	fColumn = mark.column;
	fLookahead = mark.lookahead;
	memcpy(fBuffer, mark.buffer, sizeof(fBuffer));
}
