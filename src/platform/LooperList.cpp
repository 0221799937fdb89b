#include "LooperList.h"

#include <mutex>
#include <unordered_map>

#include "Looper.h"
#include "LooperLock.h"
#include "Message.h"

namespace {

std::mutex sMutex;

std::unordered_map<int64, BLooper*>&
Loopers()
{
	// Never destroyed: loopers may still quit while the process exits.
	static auto* sLoopers = new std::unordered_map<int64, BLooper*>;
	return *sLoopers;
}


BLooper*
FindLooper(const BLooper* looper)
{
	for (const auto& entry : Loopers()) {
		if (entry.second == looper)
			return entry.second;
	}
	return nullptr;
}

} // namespace


void
LooperList::Add(BLooper* looper)
{
	std::lock_guard<std::mutex> guard(sMutex);
	Loopers()[looper->Token()] = looper;
}


void
LooperList::Remove(BLooper* looper)
{
	std::lock_guard<std::mutex> guard(sMutex);
	Loopers().erase(looper->Token());
}


std::shared_ptr<LooperLock>
LooperList::LockOf(const BLooper* looper)
{
	std::lock_guard<std::mutex> guard(sMutex);
	BLooper* live = FindLooper(looper);
	return live != nullptr ? live->fLock : nullptr;
}


std::shared_ptr<LooperLock>
LooperList::LockOf(int64 looperToken, BLooper** looper)
{
	std::lock_guard<std::mutex> guard(sMutex);
	auto found = Loopers().find(looperToken);
	if (found == Loopers().end())
		return nullptr;
	if (looper != nullptr)
		*looper = found->second;
	return found->second->fLock;
}


bool
LooperList::IsAlive(const BLooper* looper, const LooperLock* lock)
{
	std::lock_guard<std::mutex> guard(sMutex);
	BLooper* live = FindLooper(looper);
	return live != nullptr && live->fLock.get() == lock;
}


status_t
LooperList::Post(int64 looperToken, int64 handlerToken, std::unique_ptr<BMessage> message)
{
	// The list's mutex stays held while queueing: the looper cannot leave
	// and be deleted meanwhile.
	std::lock_guard<std::mutex> guard(sMutex);
	auto found = Loopers().find(looperToken);
	if (found == Loopers().end())
		return B_BAD_HANDLER;
	return found->second->Enqueue(std::move(message), handlerToken);
}


bool
LooperList::IsValidTarget(int64 looperToken, int64 handlerToken)
{
	std::lock_guard<std::mutex> guard(sMutex);
	auto found = Loopers().find(looperToken);
	if (found == Loopers().end())
		return false;
	std::lock_guard<std::mutex> state(found->second->fStateMutex);
	return found->second->HasTargetLocked(handlerToken);
}
