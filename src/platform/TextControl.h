// A one-line text field with a label on its left. The label takes the width
// up to the divider; the field takes the rest. Enter (or leaving the field
// after a change) invokes the message.
#ifndef TEXT_CONTROL_H
#define TEXT_CONTROL_H

#include <string>

#include "Control.h"

class BTextControl : public BControl
{
public:
	BTextControl(BRect frame, const char* name, const char* label, const char* text,
	             BMessage* message, uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
	             uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
	~BTextControl() override;

	virtual void SetText(const char* text);
	const char* Text() const;
	void SetDivider(float xCoordinate);
	float Divider() const { return fDivider; }
	// At most this many bytes can be typed (BeOS: TextView()->SetMaxBytes).
	void SetMaxBytes(int32 max);
	int32 MaxBytes() const { return fMaxBytes; }
	void SetLabel(const char* label) override;
	void Draw(BRect updateRect) override;
	void MakeFocus(bool focused = true) override;

protected:
	void UpdateNative() override;
	void LayoutNative() override;

private:
	mutable std::string fText;
	float fDivider;
	int32 fMaxBytes;
};

#endif // TEXT_CONTROL_H
