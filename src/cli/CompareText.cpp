#include "cli/CompareText.h"

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdlib>


bool
ParseTestIndex(const char* text, int32& index)
{
	if (text == nullptr || *text == '\0')
		return false;
	char* end = nullptr;
	errno = 0;
	const long long value = strtoll(text, &end, 10);
	// An index beyond 32 bits names no test; it must not wrap onto one.
	if (*end != '\0' || errno != 0 || value < INT32_MIN || value > INT32_MAX)
		return false;
	index = static_cast<int32>(value);
	return true;
}


// Records come from other machines and files: a rate may be negative (a time
// below the calibrated empty loop), infinite or not a number. The fraction is
// clamped before it becomes a length.
std::string
TextBar(double rate, double scale, int width)
{
	if (width < 0)
		width = 0;
	int length = 0;
	if (std::isfinite(rate) && std::isfinite(scale) && rate > 0 && scale > 0) {
		const double fraction = rate / scale;
		length = fraction >= 1 ? width : static_cast<int>(fraction * width + 0.5);
	}
	return std::string(length, '#') + std::string(width - length, ' ');
}
