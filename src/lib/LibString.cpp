#include "lib/LibString.h"

#include <cctype>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <strings.h>
#include <utility>


static const char*
Safe(const char* text)
{
	return text != nullptr ? text : "";
}


static int32
SafeLength(const char* text)
{
	return text != nullptr ? static_cast<int32>(strlen(text)) : 0;
}


static bool
IsSpace(char c)
{
	return isspace(static_cast<unsigned char>(c)) != 0;
}


LibString::LibString() : fBuffer(nullptr), fLength(0), fCapacity(0)
{
}


LibString::LibString(const char* text) : LibString()
{
	SetTo(text, SafeLength(text));
}


LibString::LibString(const LibString& other) : LibString()
{
	SetTo(other.String(), other.fLength);
}


LibString::LibString(LibString&& other) noexcept
    : fBuffer(other.fBuffer), fLength(other.fLength), fCapacity(other.fCapacity)
{
	other.fBuffer = nullptr;
	other.fLength = 0;
	other.fCapacity = 0;
}


LibString::~LibString()
{
	free(fBuffer);
}


LibString&
LibString::operator=(const char* text)
{
	SetTo(text, SafeLength(text));
	return *this;
}


LibString&
LibString::operator=(const LibString& other)
{
	if (&other != this)
		SetTo(other.String(), other.fLength);
	return *this;
}


LibString&
LibString::operator=(LibString&& other) noexcept
{
	if (&other != this) {
		free(fBuffer);
		fBuffer = other.fBuffer;
		fLength = other.fLength;
		fCapacity = other.fCapacity;
		other.fBuffer = nullptr;
		other.fLength = 0;
		other.fCapacity = 0;
	}
	return *this;
}


LibString&
LibString::operator+=(const char* text)
{
	Append(text, SafeLength(text));
	return *this;
}


LibString&
LibString::operator+=(const LibString& other)
{
	Append(other.String(), other.fLength);
	return *this;
}


LibString&
LibString::operator+=(char character)
{
	Append(&character, 1);
	return *this;
}


LibString
LibString::operator+(const char* text) const
{
	LibString result(*this);
	result += text;
	return result;
}


LibString
LibString::operator+(const LibString& other) const
{
	LibString result(*this);
	result += other;
	return result;
}


int32
LibString::Compare(const char* other, bool caseSensitive) const
{
	int result = caseSensitive ? strcmp(String(), Safe(other)) : strcasecmp(String(), Safe(other));
	return result < 0 ? -1 : (result > 0 ? 1 : 0);
}


LibString&
LibString::Format(const char* format, ...)
{
	va_list args;
	va_start(args, format);
	va_list copy;
	va_copy(copy, args);
	int needed = vsnprintf(nullptr, 0, Safe(format), copy);
	va_end(copy);

	// Formatted into a fresh string: the arguments may point into this one.
	LibString result;
	if (needed >= 0 && result.Reserve(needed)) {
		vsnprintf(result.fBuffer, static_cast<size_t>(needed) + 1, Safe(format), args);
		result.fLength = needed;
	}
	va_end(args);
	// A format the C library refuses leaves an empty string.
	*this = std::move(result);
	return *this;
}


LibString
LibString::Formatted(const char* format, ...)
{
	LibString result;
	va_list args;
	va_start(args, format);
	va_list copy;
	va_copy(copy, args);
	int needed = vsnprintf(nullptr, 0, Safe(format), copy);
	va_end(copy);
	if (needed >= 0 && result.Reserve(needed)) {
		vsnprintf(result.fBuffer, static_cast<size_t>(needed) + 1, Safe(format), args);
		result.fLength = needed;
	}
	va_end(args);
	return result;
}


int32
LibString::Index(const char* sub, int32 from) const
{
	if (from < 0)
		from = 0;
	if (from > fLength)
		return -1;
	const char* found = strstr(String() + from, Safe(sub));
	return found != nullptr ? static_cast<int32>(found - String()) : -1;
}


bool
LibString::Contain(const char* sub) const
{
	return Index(sub) >= 0;
}


LibString
LibString::Extract(int32 from, int32 count) const
{
	if (from < 0)
		from = 0;
	if (from > fLength)
		from = fLength;
	if (count < 0 || count > fLength - from)
		count = fLength - from;

	LibString result;
	result.SetTo(String() + from, count);
	return result;
}


LibString&
LibString::Insert(const char* text, int32 at)
{
	if (at < 0)
		at = 0;
	if (at > fLength)
		at = fLength;

	// Built in a new string so that text may point into this one.
	LibString result;
	int32 textLength = SafeLength(text);
	if (!result.Reserve(fLength + textLength))
		return *this;
	result.Append(String(), at);
	result.Append(Safe(text), textLength);
	result.Append(String() + at, fLength - at);
	*this = std::move(result);
	return *this;
}


int32
LibString::Replace(const char* oldText, const char* newText, bool all)
{
	int32 oldLength = SafeLength(oldText);
	if (oldLength == 0)
		return 0;

	// Copies of both texts: either may point into this string.
	LibString pattern(oldText);
	LibString replacement(newText);
	LibString result;
	int32 count = 0;
	int32 from = 0;
	while (from <= fLength) {
		int32 found = Index(pattern, from);
		if (found < 0)
			break;
		result.Append(String() + from, found - from);
		result += replacement;
		from = found + oldLength;
		count++;
		if (!all)
			break;
	}
	if (count == 0)
		return 0;

	result.Append(String() + from, fLength - from);
	*this = std::move(result);
	return count;
}


LibString&
LibString::Remove(int32 from, int32 count)
{
	if (from < 0)
		from = 0;
	if (from >= fLength)
		return *this;
	if (count < 0 || count > fLength - from)
		count = fLength - from;

	memmove(fBuffer + from, fBuffer + from + count,
	        static_cast<size_t>(fLength - from - count) + 1);
	fLength -= count;
	return *this;
}


LibString
LibString::Word(int32 n) const
{
	const char* text = String();
	int32 index = 0;
	int32 i = 0;
	while (i < fLength) {
		while (i < fLength && IsSpace(text[i]))
			i++;
		if (i == fLength)
			break;
		int32 start = i;
		while (i < fLength && !IsSpace(text[i]))
			i++;
		if (index == n)
			return Extract(start, i - start);
		index++;
	}
	return LibString();
}


int32
LibString::Words() const
{
	const char* text = String();
	int32 count = 0;
	bool inWord = false;
	for (int32 i = 0; i < fLength; i++) {
		bool space = IsSpace(text[i]);
		if (!space && !inWord)
			count++;
		inWord = !space;
	}
	return count;
}


LibString&
LibString::ToUpper()
{
	for (int32 i = 0; i < fLength; i++)
		fBuffer[i] = static_cast<char>(toupper(static_cast<unsigned char>(fBuffer[i])));
	return *this;
}


LibString&
LibString::ToLower()
{
	for (int32 i = 0; i < fLength; i++)
		fBuffer[i] = static_cast<char>(tolower(static_cast<unsigned char>(fBuffer[i])));
	return *this;
}


LibString&
LibString::StripSpaces()
{
	StripTrailingSpaces();
	return StripLeadingSpaces();
}


LibString&
LibString::StripLeadingSpaces()
{
	int32 count = 0;
	while (count < fLength && IsSpace(fBuffer[count]))
		count++;
	return Remove(0, count);
}


LibString&
LibString::StripTrailingSpaces()
{
	while (fLength > 0 && IsSpace(fBuffer[fLength - 1]))
		fLength--;
	if (fBuffer != nullptr)
		fBuffer[fLength] = '\0';
	return *this;
}


LibString&
LibString::StripAllSpaces()
{
	int32 kept = 0;
	for (int32 i = 0; i < fLength; i++) {
		if (!IsSpace(fBuffer[i]))
			fBuffer[kept++] = fBuffer[i];
	}
	fLength = kept;
	if (fBuffer != nullptr)
		fBuffer[fLength] = '\0';
	return *this;
}


// True when only white space follows the number.
static bool
OnlySpaceAfter(const char* end)
{
	while (*end != '\0' && IsSpace(*end))
		end++;
	return *end == '\0';
}


bool
LibString::GetInt32(int32& value) const
{
	const char* text = String();
	char* end = nullptr;
	errno = 0;
	long result = strtol(text, &end, 10);
	if (end == text || errno == ERANGE || !OnlySpaceAfter(end) || result < INT32_MIN ||
	    result > INT32_MAX)
		return false;
	value = static_cast<int32>(result);
	return true;
}


bool
LibString::GetFloat(float& value) const
{
	const char* text = String();
	char* end = nullptr;
	errno = 0;
	float result = strtof(text, &end);
	if (end == text || !OnlySpaceAfter(end) || !std::isfinite(result))
		return false;
	value = result;
	return true;
}


bool
LibString::GetDouble(double& value) const
{
	const char* text = String();
	char* end = nullptr;
	errno = 0;
	double result = strtod(text, &end);
	if (end == text || !OnlySpaceAfter(end) || !std::isfinite(result))
		return false;
	value = result;
	return true;
}


int32
LibString::GetInt32() const
{
	int32 value = 0;
	return GetInt32(value) ? value : 0;
}


float
LibString::GetFloat() const
{
	float value = 0;
	return GetFloat(value) ? value : 0;
}


double
LibString::GetDouble() const
{
	double value = 0;
	return GetDouble(value) ? value : 0;
}


bool
LibString::IsNumeric() const
{
	double value;
	return GetDouble(value);
}


void
LibString::PrintToStream() const
{
	fprintf(stderr, "LibString: <%s>\n", String());
}


void
LibString::SetTo(const char* text, int32 length)
{
	// Into a fresh buffer first: text may point into this string.
	char* buffer = static_cast<char*>(malloc(static_cast<size_t>(length) + 1));
	if (buffer == nullptr)
		return;
	if (length > 0)
		memcpy(buffer, text, static_cast<size_t>(length));
	buffer[length] = '\0';
	free(fBuffer);
	fBuffer = buffer;
	fLength = length;
	fCapacity = length;
}


void
LibString::Append(const char* text, int32 length)
{
	if (length <= 0)
		return;

	// Text inside our own buffer moves with it when the buffer grows.
	bool inside = fBuffer != nullptr && text >= fBuffer && text <= fBuffer + fLength;
	size_t offset = inside ? static_cast<size_t>(text - fBuffer) : 0;
	if (!Reserve(fLength + length))
		return;
	if (inside)
		text = fBuffer + offset;
	memmove(fBuffer + fLength, text, static_cast<size_t>(length));
	fLength += length;
	fBuffer[fLength] = '\0';
}


// Makes room for length characters and the terminator, keeping the content.
// Grows by doubling so that character-by-character appends stay linear.
bool
LibString::Reserve(int32 length)
{
	if (fBuffer != nullptr && length <= fCapacity)
		return true;

	int32 capacity = fCapacity > 0 ? fCapacity : 15;
	while (capacity < length)
		capacity = capacity < INT32_MAX / 2 ? capacity * 2 + 1 : INT32_MAX - 1;
	char* buffer = static_cast<char*>(realloc(fBuffer, static_cast<size_t>(capacity) + 1));
	if (buffer == nullptr)
		return false;
	if (fBuffer == nullptr)
		buffer[0] = '\0';
	fBuffer = buffer;
	fCapacity = capacity;
	return true;
}


bool
operator==(const LibString& a, const LibString& b)
{
	return a.Compare(b) == 0;
}


bool
operator==(const LibString& a, const char* b)
{
	return a.Compare(b) == 0;
}


bool
operator==(const char* a, const LibString& b)
{
	return b.Compare(a) == 0;
}


bool
operator!=(const LibString& a, const LibString& b)
{
	return a.Compare(b) != 0;
}


bool
operator!=(const LibString& a, const char* b)
{
	return a.Compare(b) != 0;
}


bool
operator!=(const char* a, const LibString& b)
{
	return b.Compare(a) != 0;
}


bool
operator<(const LibString& a, const LibString& b)
{
	return a.Compare(b) < 0;
}


bool
operator<(const LibString& a, const char* b)
{
	return a.Compare(b) < 0;
}


bool
operator<(const char* a, const LibString& b)
{
	return b.Compare(a) > 0;
}


bool
operator>(const LibString& a, const LibString& b)
{
	return a.Compare(b) > 0;
}


bool
operator>(const LibString& a, const char* b)
{
	return a.Compare(b) > 0;
}


bool
operator>(const char* a, const LibString& b)
{
	return b.Compare(a) < 0;
}


bool
operator<=(const LibString& a, const LibString& b)
{
	return a.Compare(b) <= 0;
}


bool
operator<=(const LibString& a, const char* b)
{
	return a.Compare(b) <= 0;
}


bool
operator<=(const char* a, const LibString& b)
{
	return b.Compare(a) >= 0;
}


bool
operator>=(const LibString& a, const LibString& b)
{
	return a.Compare(b) >= 0;
}


bool
operator>=(const LibString& a, const char* b)
{
	return a.Compare(b) >= 0;
}


bool
operator>=(const char* a, const LibString& b)
{
	return b.Compare(a) <= 0;
}


LibString
operator+(const char* a, const LibString& b)
{
	LibString result(a);
	result += b;
	return result;
}
