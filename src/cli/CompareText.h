// The text side of quickstep-cli compare: how a test is named on its command
// line and how a rate becomes a bar of characters.
#ifndef COMPARE_TEXT_H
#define COMPARE_TEXT_H

#include <string>

#include <SupportDefs.h>

// Whether text is a measurement index (a whole decimal number within 32
// bits), stored in index. Anything else names a test by its name.
bool ParseTestIndex(const char* text, int32& index);

// width characters: '#' for the share of rate in scale, spaces for the rest.
// A rate that is not a positive finite number, or a scale that is not,
// draws an empty bar.
std::string TextBar(double rate, double scale, int width);

#endif // COMPARE_TEXT_H
