// A check box: clicking it toggles its value between B_CONTROL_OFF and
// B_CONTROL_ON and invokes its message. SetValue changes the value without
// invoking.
#ifndef CHECK_BOX_H
#define CHECK_BOX_H

#include "Control.h"

class BCheckBox : public BControl
{
public:
	BCheckBox(BRect frame, const char* name, const char* label, BMessage* message,
	          uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
	          uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
	~BCheckBox() override;

	void GetPreferredSize(float* width, float* height) override;

protected:
	void UpdateNative() override;
};

#endif // CHECK_BOX_H
