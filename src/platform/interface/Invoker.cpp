#include "Invoker.h"

#include "Handler.h"
#include "Looper.h"
#include "Message.h"
#include "OS.h"


BInvoker::BInvoker() : fHasTarget(false)
{
}


BInvoker::BInvoker(BMessage* message, const BHandler* handler, const BLooper* looper)
    : fMessage(message), fHasTarget(false)
{
	SetTarget(handler, looper);
}


BInvoker::~BInvoker()
{
}


status_t
BInvoker::SetMessage(BMessage* message)
{
	fMessage.reset(message);
	return B_OK;
}


BMessage*
BInvoker::Message() const
{
	return fMessage.get();
}


uint32
BInvoker::Command() const
{
	return fMessage != nullptr ? fMessage->what : 0;
}


status_t
BInvoker::SetTarget(const BHandler* handler, const BLooper* looper)
{
	if (handler == nullptr && looper == nullptr) {
		fMessenger = BMessenger();
		fHasTarget = false;
		return B_OK;
	}
	status_t status = B_OK;
	fMessenger = BMessenger(handler, looper, &status);
	fHasTarget = status == B_OK;
	return status;
}


status_t
BInvoker::SetTarget(BMessenger messenger)
{
	fMessenger = messenger;
	fHasTarget = messenger.IsValid();
	return B_OK;
}


bool
BInvoker::IsTargetLocal() const
{
	return Messenger().IsTargetLocal();
}


BHandler*
BInvoker::Target(BLooper** looper) const
{
	return Messenger().Target(looper);
}


BMessenger
BInvoker::Messenger() const
{
	return fHasTarget ? fMessenger : DefaultTarget();
}


BMessenger
BInvoker::DefaultTarget() const
{
	return BMessenger();
}


status_t
BInvoker::Invoke(BMessage* message)
{
	BMessage* source = message != nullptr ? message : fMessage.get();
	if (source == nullptr)
		return B_BAD_VALUE;
	BMessage copy(*source);
	if (!copy.HasInt64("when"))
		copy.AddInt64("when", system_time());
	return Messenger().SendMessage(&copy);
}
