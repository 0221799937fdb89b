#include "LooperLock.h"

#include <chrono>


LooperLock::LooperLock() : fCount(0)
{
}


LooperLock::~LooperLock() = default;


status_t
LooperLock::Acquire(bigtime_t timeout)
{
	std::unique_lock<std::mutex> guard(fMutex);
	std::thread::id self = std::this_thread::get_id();
	if (fCount > 0 && fOwner == self) {
		fCount++;
		return B_OK;
	}
	auto isFree = [this] { return fCount == 0; };
	if (timeout == B_INFINITE_TIMEOUT) {
		fCondition.wait(guard, isFree);
	} else if (!fCondition.wait_for(guard, std::chrono::microseconds(timeout > 0 ? timeout : 0),
	                                isFree)) {
		return timeout > 0 ? B_TIMED_OUT : B_WOULD_BLOCK;
	}
	fOwner = self;
	fCount = 1;
	return B_OK;
}


void
LooperLock::Release()
{
	std::lock_guard<std::mutex> guard(fMutex);
	if (fCount == 0 || fOwner != std::this_thread::get_id())
		return;
	if (--fCount == 0) {
		fOwner = std::thread::id();
		fCondition.notify_one();
	}
}


int32
LooperLock::ReleaseAll()
{
	std::lock_guard<std::mutex> guard(fMutex);
	if (fCount == 0 || fOwner != std::this_thread::get_id())
		return 0;
	int32 count = fCount;
	fCount = 0;
	fOwner = std::thread::id();
	fCondition.notify_one();
	return count;
}


bool
LooperLock::IsHeldByCaller() const
{
	std::lock_guard<std::mutex> guard(fMutex);
	return fCount > 0 && fOwner == std::this_thread::get_id();
}
