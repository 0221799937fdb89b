// The program's string value type: an owned, NUL-terminated character buffer
// with the editing, searching and number-reading operations the program uses.
#ifndef LIB_STRING_H
#define LIB_STRING_H

#include <SupportDefs.h>

// Every operation accepts nullptr where it takes a const char* and treats it
// as "". Positions and counts are clamped into the string; a negative count
// means "up to the end". White space, for words and stripping, is what
// isspace() calls white space.
class LibString
{
public:
	LibString();
	LibString(const char* text);
	LibString(const LibString& other);
	LibString(LibString&& other) noexcept;
	virtual ~LibString();

	LibString& operator=(const char* text);
	LibString& operator=(const LibString& other);
	LibString& operator=(LibString&& other) noexcept;

	operator const char*() const { return String(); }
	const char* String() const { return fBuffer != nullptr ? fBuffer : ""; }
	int32 Length() const { return fLength; }
	bool IsEmpty() const { return fLength == 0; }

	LibString& operator+=(const char* text);
	LibString& operator+=(const LibString& other);
	LibString& operator+=(char character);
	LibString operator+(const char* text) const;
	LibString operator+(const LibString& other) const;

	// Negative, zero or positive as strcmp() or strcasecmp() answer.
	int32 Compare(const char* other, bool caseSensitive = true) const;

	// printf-style; replaces the content.
	LibString& Format(const char* format, ...) __attribute__((format(printf, 2, 3)));
	static LibString Formatted(const char* format, ...) __attribute__((format(printf, 1, 2)));

	// The first occurrence of sub at or after from, or -1.
	int32 Index(const char* sub, int32 from = 0) const;
	bool Contain(const char* sub) const;
	LibString Extract(int32 from, int32 count) const;
	LibString& Insert(const char* text, int32 at);
	// Replaces occurrences from left to right without re-reading the
	// replacement text; answers how many were replaced. An empty old text
	// replaces nothing.
	int32 Replace(const char* oldText, const char* newText, bool all = true);
	LibString& Remove(int32 from, int32 count);

	// Words are runs of non-white characters, counted from 0.
	LibString Word(int32 n) const;
	int32 Words() const;

	LibString& ToUpper();
	LibString& ToLower();
	LibString& StripSpaces();
	LibString& StripLeadingSpaces();
	LibString& StripTrailingSpaces();
	LibString& StripAllSpaces();

	// The whole string must be the number, white space around it allowed.
	// The plain forms answer 0 when it is not.
	bool GetInt32(int32& value) const;
	bool GetFloat(float& value) const;
	bool GetDouble(double& value) const;
	int32 GetInt32() const;
	float GetFloat() const;
	double GetDouble() const;
	bool IsNumeric() const;

	void PrintToStream() const;

private:
	void SetTo(const char* text, int32 length);
	void Append(const char* text, int32 length);
	bool Reserve(int32 length);

	char* fBuffer;
	int32 fLength;
	int32 fCapacity;
};

bool operator==(const LibString& a, const LibString& b);
bool operator==(const LibString& a, const char* b);
bool operator==(const char* a, const LibString& b);
bool operator!=(const LibString& a, const LibString& b);
bool operator!=(const LibString& a, const char* b);
bool operator!=(const char* a, const LibString& b);
bool operator<(const LibString& a, const LibString& b);
bool operator<(const LibString& a, const char* b);
bool operator<(const char* a, const LibString& b);
bool operator>(const LibString& a, const LibString& b);
bool operator>(const LibString& a, const char* b);
bool operator>(const char* a, const LibString& b);
bool operator<=(const LibString& a, const LibString& b);
bool operator<=(const LibString& a, const char* b);
bool operator<=(const char* a, const LibString& b);
bool operator>=(const LibString& a, const LibString& b);
bool operator>=(const LibString& a, const char* b);
bool operator>=(const char* a, const LibString& b);
LibString operator+(const char* a, const LibString& b);

#endif // LIB_STRING_H
