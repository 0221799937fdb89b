#include "results/QstepAlert.h"

#include <Box.h>
#include <Button.h>
#include <Looper.h>
#include <Message.h>
#include <TextControl.h>
#include <TextView.h>

#include "lib/LibString.h"
#include "results/ResultsMail.h"

const float QstepAlert::kExtraHeight = 30;

namespace {

// The frame around the field: its label and the field.
const float kBoxHeight = 40;

LibString
NoticeText()
{
	LibString text;
	text.Format("Please send the results file to %s so that your results can be distributed "
	            "with the next release of Quickstep. You may send the file yourself, or you "
	            "can e-mail it now. Please describe your system's configuration below, for "
	            "example \"Dual PII 400 BX\" or \"Celeron 466 laptop\".",
	            kSupportAddress);
	return text;
}

} // namespace


QstepAlert::QstepAlert(BLooper* target)
    : BAlert("alert", NoticeText(), "Save", "E-mail", nullptr, B_WIDTH_AS_USUAL, B_INFO_ALERT),
      fConfig(nullptr), fTarget(target)
{
	Lock();
	BTextView* text = TextView();
	BView* parent = text->Parent();

	// Room for the field, and for the text where the alert's own layout left
	// it too little (a wide font, a long address).
	float overflow = text->TextHeight() + 4 - text->Frame().Height();
	if (overflow < 0)
		overflow = 0;
	text->ResizeBy(0, overflow);
	// The buttons go to the bottom of the grown alert, wherever the alert's
	// own layout left them.
	ResizeBy(0, kExtraHeight + overflow);
	BRect area = parent != nullptr ? parent->Bounds() : Bounds();
	float buttonsTop = area.bottom;
	for (int32 i = 0; i < CountButtons(); i++) {
		BButton* button = ButtonAt(i);
		BRect frame = button->Frame();
		button->MoveTo(frame.left, area.bottom - 10 - frame.Height());
		if (button->Frame().top < buttonsTop)
			buttonsTop = button->Frame().top;
	}

	// The text keeps the height it needs; the frame goes under it.
	BRect textFrame = text->Frame();
	float textBottom = textFrame.top + text->TextHeight() + 4;
	if (textBottom < textFrame.bottom) {
		text->ResizeTo(textFrame.Width(), textBottom - textFrame.top);
		textFrame = text->Frame();
	}
	BRect boxFrame(textFrame.left, textFrame.bottom + 4, textFrame.right, buttonsTop - 8);
	// The frame never covers the text: the alert grows under it instead.
	if (boxFrame.Height() < kBoxHeight) {
		float shortfall = kBoxHeight - boxFrame.Height();
		ResizeBy(0, shortfall);
		for (int32 i = 0; i < CountButtons(); i++)
			ButtonAt(i)->MoveBy(0, shortfall);
		boxFrame.bottom += shortfall;
	}
	BBox* box = new BBox(boxFrame, "config_box");
	box->SetLabel("Configuration");
	if (parent != nullptr)
		parent->AddChild(box);
	else
		AddChild(box);

	BRect fieldFrame(8, 16, boxFrame.Width() - 8, 36);
	fConfig = new BTextControl(fieldFrame, "config", nullptr, "", nullptr);
	fConfig->SetDivider(0);
	fConfig->SetMaxBytes(kConfigLength);
	box->AddChild(fConfig);
	fConfig->MakeFocus(true);
	Unlock();
}


QstepAlert::~QstepAlert()
{
}


const char*
QstepAlert::Configuration() const
{
	return fConfig->Text();
}


void
QstepAlert::MessageReceived(BMessage* message)
{
	int32 which = -1;
	if (message->what == B_ALERT_BUTTON_MESSAGE && message->FindInt32("which", &which) == B_OK &&
	    which == 1 && fTarget != nullptr) {
		BMessage mail(kMsgEmailResults);
		mail.AddString("config", Configuration());
		fTarget->PostMessage(&mail);
	}
	BAlert::MessageReceived(message);
}
