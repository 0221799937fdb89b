// The loopers alive in this process, by handler token. Messengers reach their
// target only through this list, under its mutex, so a looper that has quit
// is never touched: it leaves the list before it is deleted.
#ifndef LOOPER_LIST_H
#define LOOPER_LIST_H

#include <memory>

#include "SupportDefs.h"

class BLooper;
class BMessage;
class LooperLock;

class LooperList
{
public:
	static void Add(BLooper* looper);
	// Harmless for a looper that has already left.
	static void Remove(BLooper* looper);

	// The lock of a live looper, or null.
	static std::shared_ptr<LooperLock> LockOf(const BLooper* looper);
	static std::shared_ptr<LooperLock> LockOf(int64 looperToken, BLooper** looper);
	// Whether the looper is still alive with that lock (an address can be reused).
	static bool IsAlive(const BLooper* looper, const LooperLock* lock);

	// Queues the message for the handler (0: the preferred handler) of a live
	// looper; B_BAD_HANDLER when either is gone.
	static status_t Post(int64 looperToken, int64 handlerToken, std::unique_ptr<BMessage> message);
	static bool IsValidTarget(int64 looperToken, int64 handlerToken);
};

#endif // LOOPER_LIST_H
