#include "Messenger.h"

#include <memory>

#include "Looper.h"
#include "LooperList.h"
#include "LooperLock.h"
#include "Message.h"


BMessenger::BMessenger() : fLooperToken(0), fHandlerToken(0)
{
}


BMessenger::BMessenger(const BHandler* handler, const BLooper* looper, status_t* result)
    : fLooperToken(0), fHandlerToken(0)
{
	status_t status = B_OK;
	if (handler != nullptr) {
		BLooper* owner = handler->Looper();
		if (owner == nullptr || (looper != nullptr && looper != owner)) {
			status = B_MISMATCHED_VALUES;
		} else {
			fLooperToken = owner->Token();
			fHandlerToken = handler->Token();
		}
	} else if (looper != nullptr) {
		fLooperToken = looper->Token();
	} else {
		status = B_BAD_VALUE;
	}
	if (status == B_OK && !IsValid())
		status = B_BAD_HANDLER;
	if (result != nullptr)
		*result = status;
}


BMessenger::~BMessenger() = default;


bool
BMessenger::operator==(const BMessenger& other) const
{
	return fLooperToken == other.fLooperToken && fHandlerToken == other.fHandlerToken;
}


bool
BMessenger::IsValid() const
{
	return fLooperToken != 0 && LooperList::IsValidTarget(fLooperToken, fHandlerToken);
}


bool
BMessenger::IsTargetLocal() const
{
	return true;
}


BHandler*
BMessenger::Target(BLooper** looper) const
{
	BLooper* target = nullptr;
	if (fLooperToken == 0 || LooperList::LockOf(fLooperToken, &target) == nullptr)
		target = nullptr;
	if (looper != nullptr)
		*looper = target;
	if (target == nullptr || fHandlerToken == 0)
		return nullptr;
	std::lock_guard<std::mutex> guard(target->fStateMutex);
	return target->HandlerForTokenLocked(fHandlerToken);
}


bool
BMessenger::LockTarget() const
{
	return LockTargetWithTimeout(B_INFINITE_TIMEOUT) == B_OK;
}


status_t
BMessenger::LockTargetWithTimeout(bigtime_t timeout) const
{
	BLooper* looper = nullptr;
	std::shared_ptr<LooperLock> lock = LooperList::LockOf(fLooperToken, &looper);
	if (lock == nullptr)
		return B_BAD_HANDLER;
	status_t status = lock->Acquire(timeout);
	if (status != B_OK)
		return status;
	if (!LooperList::IsAlive(looper, lock.get())) {
		lock->Release();
		return B_BAD_HANDLER;
	}
	return B_OK;
}


status_t
BMessenger::SendMessage(uint32 what, BHandler* replyTo) const
{
	BMessage message(what);
	return SendMessage(&message, replyTo);
}


status_t
BMessenger::SendMessage(BMessage* message, BHandler* replyTo, bigtime_t timeout) const
{
	(void)replyTo;
	(void)timeout;
	if (message == nullptr)
		return B_BAD_VALUE;
	if (fLooperToken == 0)
		return B_BAD_HANDLER;
	return LooperList::Post(fLooperToken, fHandlerToken, std::make_unique<BMessage>(*message));
}
