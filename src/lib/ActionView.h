// A bar of equally wide push buttons along the bottom or the right-hand side
// of a dialog.
#ifndef ACTION_VIEW_H
#define ACTION_VIEW_H

#include <InterfaceDefs.h>
#include <View.h>

class BButton;
class BMessage;

class ActionView : public BView
{
public:
	// Horizontal bars put their buttons in a row flush right, vertical ones
	// in a column from the top.
	ActionView(BRect frame, const char* name, int32 buttons, float buttonWidth,
	           orientation direction);
	~ActionView() override;

	// Makes the button at position (0 is the first) with its message (taken
	// over); null when position is outside the bar.
	BButton* SetButton(int32 position, const char* name, const char* label, BMessage* message);
	BButton* ButtonAt(int32 position) const;
	// The button Enter presses.
	void MakeDefault(int32 position);
	int32 CountButtons() const { return fButtonCount; }

	static const float kButtonHeight;
	static const float kSpacing;

private:
	BRect ButtonFrame(int32 position) const;

	int32 fButtonCount;
	float fButtonWidth;
	orientation fDirection;
	BButton** fButtons;
};

#endif // ACTION_VIEW_H
