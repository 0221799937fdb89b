// The interface thread: who it is, its lock (FLTK's global lock, seen by each
// looper through a UILock), and the queue that carries messages and tasks to
// it. Internal to the platform layer.
#ifndef PLATFORM_INTERFACE_UI_THREAD_H
#define PLATFORM_INTERFACE_UI_THREAD_H

#include <functional>
#include <map>
#include <mutex>
#include <thread>

#include "LooperLock.h"

class BLooper;

namespace platform_interface {

// Makes the calling thread the interface thread and takes FLTK's lock for it
// (it keeps the lock except inside FLTK's wait). Called by BApplication.
void BecomeUIThread();
bool IsUIThread();
// The kernel's id of the interface thread (B_ERROR before there is one).
int32 UIThreadId();
bool HasUIThread();
// Whether the calling thread holds FLTK's lock through any window or the
// application (the interface thread always does).
bool CallerHoldsUILock();

// Holds FLTK's lock for a scope when the calling thread does not hold it yet:
// building or deleting widgets from another thread must not race with the
// interface thread.
class UIGuard
{
public:
	UIGuard();
	~UIGuard();

	UIGuard(const UIGuard&) = delete;
	UIGuard& operator=(const UIGuard&) = delete;

private:
	bool fLocked;
};

// For a nested loop on the interface thread (a modal alert inside a message
// handler): FLTK gives up its lock while it waits only when held once, so the
// holds of windows locked around the loop are given back for its duration
// and taken again after.
class NestedLoopUnlock
{
public:
	NestedLoopUnlock();
	~NestedLoopUnlock();

	NestedLoopUnlock(const NestedLoopUnlock&) = delete;
	NestedLoopUnlock& operator=(const NestedLoopUnlock&) = delete;

private:
	int32 fHeld;
};

// One looper's view of FLTK's global lock: recursive, counted per thread so
// that a looper quitting gives back only its own holds.
class UILock : public LooperLock
{
public:
	UILock();
	~UILock() override;

	// Waits without a limit, whatever the time-out: FLTK's lock has none.
	status_t Acquire(bigtime_t timeout) override;
	void Release() override;
	int32 ReleaseAll() override;
	bool IsHeldByCaller() const override;

private:
	mutable std::mutex fCountMutex;
	std::map<std::thread::id, int32> fCounts;
};

// Loopers dispatched on the interface thread. drain dispatches the looper's
// queued messages and answers false when the looper was deleted meanwhile.
typedef bool (*DrainFunction)(BLooper* looper);
void RegisterLooper(BLooper* looper, DrainFunction drain);
void UnregisterLooper(BLooper* looper);
// Any thread: the looper has a new message; wakes the interface thread.
void LooperHasMessages(BLooper* looper);

// Runs task on the interface thread. From the interface thread, or from a
// thread holding FLTK's lock (the interface thread cannot run meanwhile), it
// runs at once. Otherwise it is queued; wait says whether to wait for it.
void RunOnUIThread(std::function<void()> task, bool wait = true);

// Wakes the interface thread (coalesced with other wake-ups) so that it
// redraws what was invalidated.
void WakeUI();

// Runs what is queued now (interface thread only); also called by FLTK's
// wake-up and the backup timer.
void DrainNow();
// Starts the 100 ms backup timer (interface thread, once).
void StartBackupTimer();

} // namespace platform_interface

#endif // PLATFORM_INTERFACE_UI_THREAD_H
