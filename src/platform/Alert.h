// A modal alert: an icon for its type, a text and up to three buttons, the
// last of them the default. Go shows it and answers the index of the button
// chosen (0 is the first), then deletes the alert. Go may be called from any
// thread: on the interface thread it runs a nested loop (other windows keep
// getting their messages); from another thread it hands the alert to the
// interface thread and waits, so that thread must not hold a window lock.
//
// A button posts 'ALTB' with int32 "which" to the alert; BAlert's
// MessageReceived closes the alert on it, so subclasses may look at the
// message first and then pass it on. Escape, and a window manager's close,
// choose the first button: the cancelling choice ("No", "Abort"), or the
// only one. The alert is made centred over the program's window that last
// had the user's attention, else on the screen, and always inside it.
#ifndef ALERT_H
#define ALERT_H

#include <memory>

#include "InterfaceDefs.h"
#include "Window.h"

class BButton;
class BInvoker;
class BTextView;

enum alert_type {
	B_EMPTY_ALERT = 0,
	B_INFO_ALERT,
	B_IDEA_ALERT,
	B_WARNING_ALERT,
	B_STOP_ALERT,
};

// What a button of an alert posts to the alert.
const uint32 B_ALERT_BUTTON_MESSAGE = 'ALTB';

class BAlert : public BWindow
{
public:
	BAlert(const char* title, const char* text, const char* button0, const char* button1 = nullptr,
	       const char* button2 = nullptr, button_width width = B_WIDTH_AS_USUAL,
	       alert_type type = B_INFO_ALERT);
	~BAlert() override;

	// A key that presses button index, without modifiers.
	void SetShortcut(int32 index, char key);
	char Shortcut(int32 index) const;
	BButton* ButtonAt(int32 index) const;
	BTextView* TextView() const { return fTextView; }
	int32 CountButtons() const { return fButtonCount; }

	// The index of the button chosen; the alert is deleted.
	int32 Go();
	// Shows the alert and returns at once; when a button is chosen a copy of
	// the invoker's message with int32 "which" goes to its target. The
	// invoker is taken over.
	status_t Go(BInvoker* invoker);

	void MessageReceived(BMessage* message) override;
	void DispatchMessage(BMessage* message, BHandler* handler) override;
	bool QuitRequested() override;

	struct Answer;

private:
	void PlaceOverOwner();

	BButton* fButtons[3];
	char fShortcuts[3];
	int32 fButtonCount;
	BTextView* fTextView;
	alert_type fType;
	std::shared_ptr<Answer> fAnswer;
	BInvoker* fInvoker;
};

#endif // ALERT_H
