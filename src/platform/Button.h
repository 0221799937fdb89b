// A push button; pressing it invokes its message. The window's default
// button is pressed by Enter too.
#ifndef BUTTON_H
#define BUTTON_H

#include "Control.h"

class BButton : public BControl
{
public:
	BButton(BRect frame, const char* name, const char* label, BMessage* message,
	        uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
	        uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
	~BButton() override;

	void AttachedToWindow() override;
	virtual void MakeDefault(bool isDefault);
	bool IsDefault() const;
	void GetPreferredSize(float* width, float* height) override;

protected:
	void UpdateNative() override;

private:
	bool fDefault;
};

#endif // BUTTON_H
