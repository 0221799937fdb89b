#include "Alert.h"

#include <FL/Fl.H>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <condition_variable>
#include <cstdio>
#include <mutex>

#include "AppDefs.h"
#include "Button.h"
#include "Invoker.h"
#include "Message.h"
#include "Screen.h"
#include "TextView.h"
#include "View.h"
#include "interface/UIThread.h"
#include "interface/Widgets.h"

struct BAlert::Answer {
	std::mutex mutex;
	std::condition_variable condition;
	bool done = false;
	int32 which = -1;
};

namespace {

const float kAlertWidth = 310;
const float kIconWidth = 32;
const float kButtonHeight = 24;
const float kMargin = 10;


// The type's icon: a round sign with a letter.
class AlertIconView : public BView
{
public:
	AlertIconView(BRect frame, alert_type type)
	    : BView(frame, "_icon_", B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW), fType(type)
	{
		SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
	}

	void Draw(BRect) override
	{
		const char* letter = nullptr;
		switch (fType) {
			case B_INFO_ALERT:
				SetHighColor(40, 90, 200);
				letter = "i";
				break;
			case B_IDEA_ALERT:
				SetHighColor(230, 180, 0);
				letter = "?";
				break;
			case B_WARNING_ALERT:
				SetHighColor(240, 170, 0);
				letter = "!";
				break;
			case B_STOP_ALERT:
				SetHighColor(200, 30, 30);
				letter = "x";
				break;
			default:
				return;
		}
		BRect bounds = Bounds();
		FillEllipse(bounds);
		SetHighColor(255, 255, 255);
		BFont font(B_BOLD_FONT_KIND, 20);
		SetFont(&font);
		float width = StringWidth(letter);
		DrawString(letter, BPoint((bounds.Width() - width) / 2 + 1, bounds.top + 24));
	}

private:
	alert_type fType;
};

} // namespace


BAlert::BAlert(const char* title, const char* text, const char* button0, const char* button1,
               const char* button2, button_width width, alert_type type)
    : BWindow(BRect(0, 0, kAlertWidth - 1, 99), title != nullptr ? title : "", B_MODAL_WINDOW_LOOK,
              B_MODAL_APP_WINDOW_FEEL,
              B_NOT_CLOSABLE | B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE),
      fButtons{nullptr, nullptr, nullptr}, fShortcuts{0, 0, 0}, fButtonCount(0), fTextView(nullptr),
      fType(type), fAnswer(std::make_shared<Answer>()), fInvoker(nullptr)
{
	const char* labels[3] = {button0, button1, button2};
	for (const char* label : labels) {
		if (label == nullptr)
			break;
		fButtonCount++;
	}

	BView* background =
	    new BView(BRect(0, 0, kAlertWidth - 1, 99), "TAlertView", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
	background->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
	AddChild(background);

	float textLeft = type == B_EMPTY_ALERT ? kMargin : kMargin * 2 + kIconWidth;
	if (type != B_EMPTY_ALERT) {
		background->AddChild(new AlertIconView(
		    BRect(kMargin, kMargin, kMargin + kIconWidth - 1, kMargin + kIconWidth - 1), type));
	}
	BRect textFrame(textLeft, kMargin, kAlertWidth - 1 - kMargin, kMargin + 40);
	fTextView = new BTextView(textFrame, "_tv_", BRect(0, 0, textFrame.Width(), textFrame.Height()),
	                          B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP);
	fTextView->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
	fTextView->SetText(text);
	background->AddChild(fTextView);
	float textHeight = std::max(kIconWidth, fTextView->TextHeight());
	fTextView->ResizeTo(textFrame.Width(), textHeight);
	fTextView->SetTextRect(BRect(0, 0, textFrame.Width(), textHeight));

	// Buttons from the right edge leftwards; the last one is the default.
	float widths[3] = {0, 0, 0};
	float widest = 0;
	for (int32 i = 0; i < fButtonCount; i++) {
		widths[i] = background->StringWidth(labels[i]) + 20;
		if (width == B_WIDTH_AS_USUAL)
			widths[i] = std::max(widths[i], 75.0f);
		widest = std::max(widest, widths[i]);
	}
	// The window takes its final height before the buttons are added: they
	// follow the bottom edge, and a later resize would move them off it.
	float buttonsTop = kMargin + textHeight + 12;
	float height = buttonsTop + kButtonHeight + kMargin;
	ResizeTo(kAlertWidth - 1, height - 1);

	float right = kAlertWidth - 1 - kMargin;
	for (int32 i = fButtonCount - 1; i >= 0; i--) {
		float buttonWidth = width == B_WIDTH_FROM_WIDEST ? widest : widths[i];
		char name[16];
		snprintf(name, sizeof(name), "_b%d_", static_cast<int>(i));
		BMessage* message = new BMessage(B_ALERT_BUTTON_MESSAGE);
		message->AddInt32("which", i);
		fButtons[i] = new BButton(
		    BRect(right - buttonWidth + 1, buttonsTop, right, buttonsTop + kButtonHeight - 1), name,
		    labels[i], message, B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM);
		background->AddChild(fButtons[i]);
		right -= buttonWidth + 8;
	}
	if (fButtonCount > 0)
		fButtons[fButtonCount - 1]->MakeDefault(true);
	PlaceOverOwner();
}


// Over the window the user was last busy with: FLTK keeps its shown windows
// with the one that last had an event first.
void
BAlert::PlaceOverOwner()
{
	BScreen screen;
	if (!screen.IsValid())
		return;
	BRect area = screen.Frame();
	BRect over = area;
	{
		platform_interface::UIGuard guard;
		for (Fl_Window* window = Fl::first_window(); window != nullptr;
		     window = Fl::next_window(window)) {
			auto* widget = dynamic_cast<platform_interface::WindowWidget*>(window);
			if (widget == nullptr || widget->Window() == this || !window->visible() ||
			    dynamic_cast<BAlert*>(widget->Window()) != nullptr)
				continue;
			over = widget->Window()->Frame();
			break;
		}
	}
	BRect frame = Frame();
	float left = std::floor(over.left + (over.Width() - frame.Width()) / 2);
	float top = std::floor(over.top + (over.Height() - frame.Height()) / 2);
	if (over == area)
		top = std::floor(area.Height() / 4);
	// Inside the screen, with room for a title bar above.
	const float kTitle = 24;
	left = std::max(area.left, std::min(left, area.right - frame.Width()));
	top = std::max(area.top + kTitle, std::min(top, area.bottom - frame.Height()));
	MoveTo(left, top);
}


BAlert::~BAlert()
{
	delete fInvoker;
}


void
BAlert::SetShortcut(int32 index, char key)
{
	if (index >= 0 && index < fButtonCount)
		fShortcuts[index] = key;
}


char
BAlert::Shortcut(int32 index) const
{
	return index >= 0 && index < fButtonCount ? fShortcuts[index] : 0;
}


BButton*
BAlert::ButtonAt(int32 index) const
{
	return index >= 0 && index < fButtonCount ? fButtons[index] : nullptr;
}


int32
BAlert::Go()
{
	std::shared_ptr<Answer> answer = fAnswer;
	if (platform_interface::IsUIThread()) {
		Show();
		// The alert deletes itself when a button is chosen. Other threads
		// may lock windows meanwhile, as they could without the alert.
		platform_interface::NestedLoopUnlock unlock;
		while (!answer->done)
			Fl::wait();
		return answer->which;
	}
	if (platform_interface::CallerHoldsUILock()) {
		// The interface thread cannot show the alert while this thread holds
		// the lock, and waiting here would never end.
		fprintf(stderr, "BAlert::Go: called with a window locked; \"%s\" not shown\n",
		        fTextView->Text());
		Lock();
		Quit();
		return -1;
	}
	Show();
	std::unique_lock<std::mutex> guard(answer->mutex);
	answer->condition.wait(guard, [&answer] { return answer->done; });
	return answer->which;
}


status_t
BAlert::Go(BInvoker* invoker)
{
	fInvoker = invoker;
	Show();
	return B_OK;
}


void
BAlert::MessageReceived(BMessage* message)
{
	if (message->what == B_CLOSE_ATTEMPTED && fButtonCount > 0) {
		fButtons[0]->Invoke();
		return;
	}
	if (message->what != B_ALERT_BUTTON_MESSAGE) {
		BWindow::MessageReceived(message);
		return;
	}
	int32 which = -1;
	message->FindInt32("which", &which);
	if (fInvoker != nullptr) {
		BMessage copy(fInvoker->Message() != nullptr ? *fInvoker->Message() : BMessage());
		copy.AddInt32("which", which);
		fInvoker->Invoke(&copy);
	}
	{
		std::lock_guard<std::mutex> guard(fAnswer->mutex);
		fAnswer->which = which;
		fAnswer->done = true;
	}
	fAnswer->condition.notify_all();
	Hide();
	Quit();
}


// Shortcut keys press their buttons without any modifier.
void
BAlert::DispatchMessage(BMessage* message, BHandler* handler)
{
	if (message->what == B_KEY_DOWN) {
		int32 rawChar = 0;
		int32 modifiers = 0;
		message->FindInt32("raw_char", &rawChar);
		message->FindInt32("modifiers", &modifiers);
		if ((modifiers & (B_COMMAND_KEY | B_OPTION_KEY)) == 0) {
			if (rawChar == B_ESCAPE && fButtonCount > 0) {
				fButtons[0]->Invoke();
				return;
			}
			for (int32 i = 0; i < fButtonCount; i++) {
				if (fShortcuts[i] != 0 &&
				    tolower(static_cast<unsigned char>(fShortcuts[i])) == tolower(rawChar)) {
					fButtons[i]->Invoke();
					return;
				}
			}
		}
	}
	BWindow::DispatchMessage(message, handler);
}


bool
BAlert::QuitRequested()
{
	return false;
}
