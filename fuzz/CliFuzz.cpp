// Fuzz entry of the command-line words quickstep-cli reads as numbers: the
// test of compare (an index or a name) and the values its bars are drawn from.
#include <cstdlib>
#include <string>
#include <vector>

#include "FuzzEntries.h"
#include "FuzzSupport.h"
#include "cli/CompareText.h"

int
FuzzCliNumbers(const uint8_t* data, size_t size)
{
	std::vector<std::string> words = fuzz::Sections(data, size, 4);
	int32 index = 0;
	ParseTestIndex(words[0].c_str(), index);
	if (words.size() < 3)
		return 0;
	const double rate = strtod(words[1].c_str(), nullptr);
	const double scale = strtod(words[2].c_str(), nullptr);
	const int width = words.size() > 3 ? atoi(words[3].substr(0, 3).c_str()) : 40;
	const std::string bar = TextBar(rate, scale, width);
	if (bar.size() != static_cast<size_t>(width < 0 ? 0 : width))
		abort();
	return 0;
}
