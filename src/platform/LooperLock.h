// The lock of a looper: recursive, owned by one thread at a time, with a
// time-out. Loopers share it through a shared pointer so that a thread still
// waiting for a looper that quits meanwhile wakes up on a live object.
// A looper that must use another lock (a window on the interface's global
// lock) installs a subclass with BLooper::SetLock.
#ifndef LOOPER_LOCK_H
#define LOOPER_LOCK_H

#include <condition_variable>
#include <mutex>
#include <thread>

#include "SupportDefs.h"

class LooperLock
{
public:
	LooperLock();
	virtual ~LooperLock();

	LooperLock(const LooperLock&) = delete;
	LooperLock& operator=(const LooperLock&) = delete;

	// Takes the lock for the calling thread (once more when it already holds
	// it), waiting at most timeout microseconds; B_INFINITE_TIMEOUT waits for
	// good. B_TIMED_OUT (B_WOULD_BLOCK for a zero time-out) when it stays taken.
	virtual status_t Acquire(bigtime_t timeout);
	// Gives back one hold of the calling thread; nothing when it holds none.
	virtual void Release();
	// Gives back every hold of the calling thread and answers how many.
	virtual int32 ReleaseAll();
	virtual bool IsHeldByCaller() const;

private:
	mutable std::mutex fMutex;
	std::condition_variable fCondition;
	std::thread::id fOwner;
	int32 fCount;
};

#endif // LOOPER_LOCK_H
