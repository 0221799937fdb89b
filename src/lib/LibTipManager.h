// Tool tips of the support library's widgets: whether they are on, and the
// tip requests of widgets that carry one.
#ifndef LIB_TIP_MANAGER_H
#define LIB_TIP_MANAGER_H

#include <Handler.h>

class BMessage;

// A widget asks for its tip to be shown: string "tip".
const uint32 kMsgShowTip = 'stip';
// Turns tips on or off.
const uint32 kMsgToggleTips = 'tipf';

class LibTipManager : public BHandler
{
public:
	LibTipManager();
	~LibTipManager() override;

	void MessageReceived(BMessage* message) override;
	void ToggleTips();
	bool TipsOn() const { return fTipsOn; }

private:
	bool fTipsOn;
};

#endif // LIB_TIP_MANAGER_H
