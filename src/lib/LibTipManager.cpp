#include "lib/LibTipManager.h"

#include <Message.h>


LibTipManager::LibTipManager() : BHandler("LibTipManager"), fTipsOn(true)
{
}


LibTipManager::~LibTipManager()
{
}


void
LibTipManager::MessageReceived(BMessage* message)
{
	switch (message->what) {
		case kMsgShowTip:
			// No view of this program carries a tip: requests are taken and
			// dropped so they never reach the application's default handling.
			break;
		case kMsgToggleTips:
			ToggleTips();
			break;
		default:
			BHandler::MessageReceived(message);
	}
}


void
LibTipManager::ToggleTips()
{
	fTipsOn = !fTipsOn;
}
