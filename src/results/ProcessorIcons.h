// The two pictures of the icon that expands a comparison row's device list:
// a processor chip, closed (row folded) and open (device list shown). Each is
// 16 x 16 pixels of B_CMAP8, bounds (0, 0, 15, 15).
#ifndef PROCESSOR_ICONS_H
#define PROCESSOR_ICONS_H

#include <SupportDefs.h>

const int32 kProcessorIconSize = 256;

extern const uint8 Processor[kProcessorIconSize];
extern const uint8 ProcessorOpen[kProcessorIconSize];

#endif // PROCESSOR_ICONS_H
