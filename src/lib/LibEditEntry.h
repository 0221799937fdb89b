// A one-line text entry of the support library: a label on the left and a
// field that takes at most a given number of bytes.
#ifndef LIB_EDIT_ENTRY_H
#define LIB_EDIT_ENTRY_H

#include <TextControl.h>

class LibEditEntry : public BTextControl
{
public:
	LibEditEntry(BRect frame, const char* name, const char* label, const char* text,
	             int32 maxLength, BMessage* message = nullptr,
	             uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP);
	~LibEditEntry() override;
};

#endif // LIB_EDIT_ENTRY_H
