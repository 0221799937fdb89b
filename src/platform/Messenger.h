// A messenger names a handler in this process (or a looper's preferred
// handler) and sends it copies of messages from any thread. It holds tokens,
// not pointers: a messenger whose looper has quit, or whose handler has left
// its looper, answers B_BAD_HANDLER and never touches freed memory.
#ifndef MESSENGER_H
#define MESSENGER_H

#include "SupportDefs.h"

class BHandler;
class BLooper;
class BMessage;

class BMessenger
{
public:
	BMessenger();
	// Aims at handler (which must belong to a looper; when looper is given
	// too it must be that one, else B_MISMATCHED_VALUES), or, when handler
	// is null, at the preferred handler of looper. result tells whether the
	// messenger is valid.
	BMessenger(const BHandler* handler, const BLooper* looper = nullptr,
	           status_t* result = nullptr);
	BMessenger(const BMessenger& other) = default;
	BMessenger& operator=(const BMessenger& other) = default;
	~BMessenger();

	bool operator==(const BMessenger& other) const;
	bool operator!=(const BMessenger& other) const { return !(*this == other); }

	// Whether the target still exists.
	bool IsValid() const;
	bool IsTargetLocal() const;
	// The target, or null when gone; the pointers may dangle as soon as the
	// target quits, so use them only with the target locked.
	BHandler* Target(BLooper** looper) const;
	bool LockTarget() const;
	status_t LockTargetWithTimeout(bigtime_t timeout) const;

	// Queues a copy of the message (the caller keeps its own); never waits,
	// so timeout is not used. B_BAD_HANDLER when the target is gone. There
	// are no replies: replyTo is accepted and not used.
	status_t SendMessage(uint32 what, BHandler* replyTo = nullptr) const;
	status_t SendMessage(BMessage* message, BHandler* replyTo = nullptr,
	                     bigtime_t timeout = B_INFINITE_TIMEOUT) const;

private:
	int64 fLooperToken;
	// 0: the looper's preferred handler
	int64 fHandlerToken;
};

#endif // MESSENGER_H
