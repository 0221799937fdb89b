// Something that sends a message to a target when invoked: controls and menu
// items. Without a target set, the message goes to the window of the control
// (for a menu item, the window of its menu).
#ifndef INVOKER_H
#define INVOKER_H

#include <memory>

#include "Messenger.h"

class BHandler;
class BLooper;
class BMessage;

class BInvoker
{
public:
	BInvoker();
	// message is taken over.
	BInvoker(BMessage* message, const BHandler* handler, const BLooper* looper = nullptr);
	virtual ~BInvoker();

	BInvoker(const BInvoker&) = delete;
	BInvoker& operator=(const BInvoker&) = delete;

	// Takes message over (null: invoking sends nothing).
	virtual status_t SetMessage(BMessage* message);
	BMessage* Message() const;
	uint32 Command() const;

	// handler null with looper: the looper's preferred handler.
	virtual status_t SetTarget(const BHandler* handler, const BLooper* looper = nullptr);
	virtual status_t SetTarget(BMessenger messenger);
	bool IsTargetLocal() const;
	BHandler* Target(BLooper** looper = nullptr) const;
	BMessenger Messenger() const;

	// Sends a copy of message (or of the own message when null) with int64
	// "when" added. B_BAD_VALUE without a message.
	virtual status_t Invoke(BMessage* message = nullptr);

protected:
	// The messenger used when no target was set (controls: their window).
	virtual BMessenger DefaultTarget() const;
	bool HasTarget() const { return fHasTarget; }

private:
	std::unique_ptr<BMessage> fMessage;
	BMessenger fMessenger;
	bool fHasTarget;
};

#endif // INVOKER_H
