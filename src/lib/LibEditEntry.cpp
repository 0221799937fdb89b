#include "lib/LibEditEntry.h"


LibEditEntry::LibEditEntry(BRect frame, const char* name, const char* label, const char* text,
                           int32 maxLength, BMessage* message, uint32 resizingMode)
    : BTextControl(frame, name, label, text, message, resizingMode)
{
	SetMaxBytes(maxLength);
}


LibEditEntry::~LibEditEntry()
{
}
