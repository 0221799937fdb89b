#include "interface/UIThread.h"

#include <FL/Fl.H>

#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <memory>
#include <vector>

namespace platform_interface {

namespace {

std::atomic<bool> sHasUIThread(false);
std::thread::id sUIThread;
int32 sUIThreadId = B_ERROR;
thread_local int32 sHolds = 0;

struct LooperEntry {
	BLooper* looper;
	DrainFunction drain;
	bool busy;
	bool pending;
};

struct Task {
	std::function<void()> function;
	std::shared_ptr<bool> done;
};

// Guards everything below. Never held while a message or task runs.
std::mutex sQueueMutex;
// Never destroyed: a thread may still wait on it when the process ends (a
// worker whose task the interface thread, gone from its loop, will never
// run), and destroying a condition variable waits for its waiters.
std::condition_variable& sTaskDone = *new std::condition_variable;
std::vector<LooperEntry> sLoopers;
std::deque<BLooper*> sPending;
std::deque<Task> sTasks;
bool sWakeUpPending = false;
bool sTimerStarted = false;


LooperEntry*
FindEntryLocked(BLooper* looper)
{
	for (LooperEntry& entry : sLoopers) {
		if (entry.looper == looper)
			return &entry;
	}
	return nullptr;
}


void
WakeUp(void*)
{
	DrainNow();
}


void
BackupTimer(void*)
{
	DrainNow();
	Fl::repeat_timeout(0.1, BackupTimer);
}


// One coalesced wake-up at a time: FLTK's own queue of wake-ups holds about a
// thousand, and a burst of messages must not overflow it. When the wake-up
// cannot be queued the backup timer drains within 100 ms.
void
RequestWakeUp()
{
	{
		std::lock_guard<std::mutex> guard(sQueueMutex);
		if (sWakeUpPending)
			return;
		sWakeUpPending = true;
	}
	Fl::awake(WakeUp, nullptr);
}

} // namespace


void
BecomeUIThread()
{
	// A later application on the same thread (tests make several) already
	// holds FLTK's lock from the first.
	if (IsUIThread())
		return;
	sUIThread = std::this_thread::get_id();
	sUIThreadId = static_cast<int32>(syscall(SYS_gettid));
	sHasUIThread = true;
	Fl::lock();
}


bool
IsUIThread()
{
	return sHasUIThread && std::this_thread::get_id() == sUIThread;
}


int32
UIThreadId()
{
	return sUIThreadId;
}


bool
HasUIThread()
{
	return sHasUIThread;
}


bool
CallerHoldsUILock()
{
	return IsUIThread() || sHolds > 0;
}


// #pragma mark - UIGuard


UIGuard::UIGuard() : fLocked(HasUIThread() && !CallerHoldsUILock())
{
	if (!fLocked)
		return;
	Fl::lock();
	sHolds++;
}


UIGuard::~UIGuard()
{
	if (!fLocked)
		return;
	sHolds--;
	Fl::unlock();
}


NestedLoopUnlock::NestedLoopUnlock() : fHeld(IsUIThread() ? sHolds : 0)
{
	for (int32 i = 0; i < fHeld; i++)
		Fl::unlock();
}


NestedLoopUnlock::~NestedLoopUnlock()
{
	for (int32 i = 0; i < fHeld; i++)
		Fl::lock();
}


// #pragma mark - UILock


UILock::UILock()
{
}


UILock::~UILock()
{
}


status_t
UILock::Acquire(bigtime_t timeout)
{
	(void)timeout;
	Fl::lock();
	sHolds++;
	std::lock_guard<std::mutex> guard(fCountMutex);
	fCounts[std::this_thread::get_id()]++;
	return B_OK;
}


void
UILock::Release()
{
	{
		std::lock_guard<std::mutex> guard(fCountMutex);
		auto found = fCounts.find(std::this_thread::get_id());
		if (found == fCounts.end())
			return;
		if (--found->second == 0)
			fCounts.erase(found);
	}
	sHolds--;
	Fl::unlock();
}


int32
UILock::ReleaseAll()
{
	int32 count = 0;
	{
		std::lock_guard<std::mutex> guard(fCountMutex);
		auto found = fCounts.find(std::this_thread::get_id());
		if (found == fCounts.end())
			return 0;
		count = found->second;
		fCounts.erase(found);
	}
	for (int32 i = 0; i < count; i++) {
		sHolds--;
		Fl::unlock();
	}
	return count;
}


bool
UILock::IsHeldByCaller() const
{
	if (IsUIThread())
		return true;
	std::lock_guard<std::mutex> guard(fCountMutex);
	return fCounts.find(std::this_thread::get_id()) != fCounts.end();
}


// #pragma mark - the queue


void
RegisterLooper(BLooper* looper, DrainFunction drain)
{
	std::lock_guard<std::mutex> guard(sQueueMutex);
	if (FindEntryLocked(looper) == nullptr)
		sLoopers.push_back(LooperEntry{looper, drain, false, false});
}


void
UnregisterLooper(BLooper* looper)
{
	std::lock_guard<std::mutex> guard(sQueueMutex);
	sLoopers.erase(
	    std::remove_if(sLoopers.begin(), sLoopers.end(),
	                   [looper](const LooperEntry& entry) { return entry.looper == looper; }),
	    sLoopers.end());
	sPending.erase(std::remove(sPending.begin(), sPending.end(), looper), sPending.end());
}


void
LooperHasMessages(BLooper* looper)
{
	{
		std::lock_guard<std::mutex> guard(sQueueMutex);
		LooperEntry* entry = FindEntryLocked(looper);
		if (entry == nullptr)
			return;
		if (!entry->pending) {
			entry->pending = true;
			sPending.push_back(looper);
		}
	}
	RequestWakeUp();
}


void
RunOnUIThread(std::function<void()> task, bool wait)
{
	if (!sHasUIThread || CallerHoldsUILock()) {
		task();
		return;
	}
	std::shared_ptr<bool> done = std::make_shared<bool>(false);
	{
		std::lock_guard<std::mutex> guard(sQueueMutex);
		sTasks.push_back(Task{std::move(task), done});
	}
	RequestWakeUp();
	if (!wait)
		return;
	std::unique_lock<std::mutex> guard(sQueueMutex);
	sTaskDone.wait(guard, [&done] { return *done; });
}


// Runs on the interface thread with FLTK's lock held, possibly nested inside
// a modal loop that a message handler started: a looper whose handler is
// still running there is left alone; its outer dispatch goes on with its
// queue once the handler returns.
void
DrainNow()
{
	{
		std::lock_guard<std::mutex> guard(sQueueMutex);
		sWakeUpPending = false;
	}
	for (;;) {
		Task task;
		bool haveTask = false;
		BLooper* looper = nullptr;
		DrainFunction drain = nullptr;
		{
			std::lock_guard<std::mutex> guard(sQueueMutex);
			if (!sTasks.empty()) {
				task = std::move(sTasks.front());
				sTasks.pop_front();
				haveTask = true;
			} else {
				while (!sPending.empty() && looper == nullptr) {
					BLooper* candidate = sPending.front();
					sPending.pop_front();
					LooperEntry* entry = FindEntryLocked(candidate);
					if (entry == nullptr)
						continue;
					entry->pending = false;
					if (entry->busy)
						continue;
					entry->busy = true;
					looper = candidate;
					drain = entry->drain;
				}
				if (looper == nullptr)
					return;
			}
		}
		if (haveTask) {
			task.function();
			{
				std::lock_guard<std::mutex> guard(sQueueMutex);
				*task.done = true;
			}
			sTaskDone.notify_all();
			continue;
		}
		if (drain(looper)) {
			std::lock_guard<std::mutex> guard(sQueueMutex);
			LooperEntry* entry = FindEntryLocked(looper);
			if (entry != nullptr)
				entry->busy = false;
		}
	}
}


void
WakeUI()
{
	if (HasUIThread() && !IsUIThread())
		RequestWakeUp();
}


void
StartBackupTimer()
{
	if (sTimerStarted)
		return;
	sTimerStarted = true;
	Fl::add_timeout(0.1, BackupTimer);
}

} // namespace platform_interface
