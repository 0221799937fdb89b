// A small forward-scanning reader of tagged text files that pulls one named
// element at a time, with its attributes, text and children, into an xmlTag.
#ifndef XML_PARSER_H
#define XML_PARSER_H

#include <cstdio>

#include <SupportDefs.h>

class xmlTag;
class xmlTagModifiers;

// It is not a conforming XML reader: no entities, no CDATA, closing tags are
// not matched against their opening tags, and the text of consecutive lines
// is joined with nothing between. FindTag only scans forward: Rewind between
// look-ups.
class xmlParser
{
public:
	// Size of the buffers for a tag name and for an attribute's name or
	// value, terminator included. Longer parts are cut to fit.
	static const int32 kNameSize = 80;
	// Longest piece of a line read at once; longer lines arrive in pieces.
	static const int32 kLineSize = 1023;
	// Deepest nesting kept, the element FindTag looks for being level 1. A
	// help file nests a handful of levels; elements below this one are read
	// past without being kept, and FindTag says so on standard error.
	static const int32 kMaxDepth = 64;

	xmlParser();
	explicit xmlParser(const char* path);

	virtual bool SkipTag(const char* name);
	virtual ~xmlParser();
	virtual bool NoAnchorTag(const char* name);
	virtual void PrintToStream();

	void Init();
	bool Open(const char* path);
	void Close();
	bool IsValid() const;
	void Rewind();

	bool ReadLine();
	bool Advance();
	bool IsWhiteSpace(const char& character) const;
	// name must hold kNameSize characters.
	bool NextTag(char* name, bool& hasModifiers);
	void AddModifiers(xmlTagModifiers& modifiers);
	bool FindTag(const char* name, xmlTag& tag);

protected:
	char Current() const;

	FILE* fFile;
	int32 fLine;
	int32 fColumn;
	char fBuffer[kLineSize + 2];
	char fLookahead;

private:
	// Where the reader stands, to come back to after reading ahead.
	struct Mark {
		long offset;
		int32 line;
		int32 column;
		char lookahead;
		char buffer[kLineSize + 2];
	};

	xmlParser(const xmlParser&) = delete;
	xmlParser& operator=(const xmlParser&) = delete;

	void StepBack();
	void SetLookahead();
	bool HasNext() const;
	void Save(Mark& mark) const;
	void Restore(const Mark& mark);
	bool FindTag(const char* name, xmlTag& tag, int32 depth);
	void ReadContent(xmlTag& tag, int32 depth);
	void SkipElement(const char* name, bool hasModifiers);
	void SkipModifiers();

	bool fDepthReported;
};

#endif // XML_PARSER_H
