#include "Looper.h"

#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <future>

#include "AppDefs.h"
#include "LooperList.h"
#include "LooperLock.h"
#include "Message.h"


BLooper::BLooper(const char* name, int32 priority, int32 portCapacity)
    : BHandler(name), fLock(std::make_shared<LooperLock>()), fPreferredHandler(nullptr),
      fTerminating(false), fRunning(false), fPriority(priority), fThreadId(B_ERROR),
      fCurrentMessage(nullptr), fCurrentDetached(false), fQuitWhileDispatching(false)
{
	(void)portCapacity;
	fLooper = this;
	LooperList::Add(this);
}


BLooper::~BLooper()
{
	LooperList::Remove(this);
	{
		std::lock_guard<std::mutex> guard(fStateMutex);
		fTerminating = true;
	}
	fQueueCondition.notify_all();
	if (fThread.joinable()) {
		// Deleted by its own thread after quitting, or (not the way to end a
		// looper, but survivable when it is idle) deleted from outside.
		if (fThread.get_id() == std::this_thread::get_id())
			fThread.detach();
		else
			fThread.join();
	}
	for (BHandler* handler : fHandlers)
		handler->fLooper = nullptr;
	fLooper = nullptr;
	fLock->ReleaseAll();
}


// #pragma mark - running and quitting


thread_id
BLooper::Run()
{
	if (fRunning)
		return B_ALREADY_RUNNING;
	fRunning = true;
	return StartThread();
}


// The one place that creates the dispatching thread. Answers its kernel id.
// The thread waits until Run has stored it: a looper told to quit by its
// first message deletes itself, and must not do so while Run still writes.
thread_id
BLooper::StartThread()
{
	std::promise<thread_id> started;
	std::future<thread_id> id = started.get_future();
	std::promise<void> go;
	fThread = std::thread(
	    [this](std::promise<thread_id> startedPromise, std::future<void> goFuture) {
		    char threadName[16];
		    strncpy(threadName, Name(), sizeof(threadName) - 1);
		    threadName[sizeof(threadName) - 1] = '\0';
		    if (threadName[0] != '\0')
			    pthread_setname_np(pthread_self(), threadName);
		    startedPromise.set_value(thread_id(syscall(SYS_gettid)));
		    goFuture.wait();
		    Loop();
	    },
	    std::move(started), go.get_future());
	thread_id thread = id.get();
	fThreadId = thread;
	go.set_value();
	return thread;
}


void
BLooper::Loop()
{
	for (;;) {
		{
			std::unique_lock<std::mutex> guard(fStateMutex);
			fQueueCondition.wait(guard, [this] { return fTerminating || !fQueue.empty(); });
			if (fTerminating)
				return;
		}
		if (!DispatchNextMessage())
			return;
	}
}


void
BLooper::Quit()
{
	if (!IsLocked() && !Lock())
		return;

	// Holding the lock, the dispatching thread is known exactly: it only
	// changes with the lock held.
	if (fDispatchingThread == std::this_thread::get_id()) {
		fQuitWhileDispatching = true;
		return;
	}

	{
		std::lock_guard<std::mutex> guard(fStateMutex);
		fTerminating = true;
	}
	fQueueCondition.notify_all();
	// Leave the list before giving up the lock: a thread waiting in Lock then
	// finds the looper gone instead of taking it.
	LooperList::Remove(this);
	fLock->ReleaseAll();
	if (fThread.joinable())
		fThread.join();
	delete this;
}


bool
BLooper::QuitRequested()
{
	return true;
}


// #pragma mark - messages


status_t
BLooper::Enqueue(std::unique_ptr<BMessage> message, int64 handlerToken)
{
	{
		std::lock_guard<std::mutex> guard(fStateMutex);
		if (fTerminating)
			return B_BAD_HANDLER;
		if (!HasTargetLocked(handlerToken))
			return B_BAD_HANDLER;
		fQueue.push_back(QueuedMessage{std::move(message), handlerToken});
	}
	MessageQueued();
	return B_OK;
}


void
BLooper::MessageQueued()
{
	fQueueCondition.notify_one();
}


status_t
BLooper::PostMessage(uint32 what)
{
	BMessage message(what);
	return PostMessage(&message);
}


status_t
BLooper::PostMessage(BMessage* message, BHandler* handler, BHandler* replyTo)
{
	(void)replyTo;
	if (message == nullptr)
		return B_BAD_VALUE;
	if (handler != nullptr && handler->Looper() != this)
		return B_MISMATCHED_VALUES;
	return Enqueue(std::make_unique<BMessage>(*message), handler != nullptr ? handler->Token() : 0);
}


bool
BLooper::HasTargetLocked(int64 handlerToken) const
{
	return handlerToken == 0 || HandlerForTokenLocked(handlerToken) != nullptr;
}


BHandler*
BLooper::HandlerForTokenLocked(int64 token) const
{
	if (token == 0)
		return fPreferredHandler != nullptr ? fPreferredHandler : const_cast<BLooper*>(this);
	if (token == Token())
		return const_cast<BLooper*>(this);
	for (BHandler* handler : fHandlers) {
		if (handler->Token() == token)
			return handler;
	}
	return nullptr;
}


bool
BLooper::HasQueuedMessages() const
{
	std::lock_guard<std::mutex> guard(fStateMutex);
	return !fQueue.empty();
}


bool
BLooper::DispatchNextMessage()
{
	if (fLock->Acquire(B_INFINITE_TIMEOUT) != B_OK)
		return true;

	QueuedMessage item;
	BHandler* handler = nullptr;
	{
		std::lock_guard<std::mutex> guard(fStateMutex);
		if (fTerminating || fQueue.empty()) {
			fLock->Release();
			return true;
		}
		item = std::move(fQueue.front());
		fQueue.pop_front();
		// A handler removed after the message was queued gets nothing.
		handler = HandlerForTokenLocked(item.handlerToken);
	}

	fDispatchingThread = std::this_thread::get_id();
	fCurrentMessage = item.message.get();
	fCurrentDetached = false;
	if (handler != nullptr)
		DispatchMessage(item.message.get(), handler);
	if (fCurrentDetached)
		item.message.release();
	fCurrentMessage = nullptr;
	fDispatchingThread = std::thread::id();

	if (fQuitWhileDispatching) {
		LooperList::Remove(this);
		// The destructor gives up this thread's holds of the lock.
		delete this;
		return false;
	}
	fLock->Release();
	return true;
}


void
BLooper::DispatchMessage(BMessage* message, BHandler* handler)
{
	if (message->what == B_QUIT_REQUESTED && handler == this) {
		if (QuitRequested())
			Quit();
		return;
	}
	handler->MessageReceived(message);
}


void
BLooper::MessageReceived(BMessage* message)
{
	BHandler::MessageReceived(message);
}


BMessage*
BLooper::CurrentMessage() const
{
	return fDispatchingThread == std::this_thread::get_id() ? fCurrentMessage : nullptr;
}


BMessage*
BLooper::DetachCurrentMessage()
{
	BMessage* message = CurrentMessage();
	if (message != nullptr) {
		fCurrentDetached = true;
		fCurrentMessage = nullptr;
	}
	return message;
}


// #pragma mark - locking


bool
BLooper::Lock()
{
	return LockWithTimeout(B_INFINITE_TIMEOUT) == B_OK;
}


status_t
BLooper::LockWithTimeout(bigtime_t timeout)
{
	// The lock is fetched through the list, not through this: the looper
	// may quit and be deleted while we wait.
	std::shared_ptr<LooperLock> lock = LooperList::LockOf(this);
	if (lock == nullptr)
		return B_BAD_VALUE;
	status_t status = lock->Acquire(timeout);
	if (status != B_OK)
		return status;
	if (!LooperList::IsAlive(this, lock.get())) {
		lock->Release();
		return B_BAD_VALUE;
	}
	return B_OK;
}


void
BLooper::Unlock()
{
	fLock->Release();
}


bool
BLooper::IsLocked() const
{
	return fLock->IsHeldByCaller();
}


void
BLooper::SetLock(std::shared_ptr<LooperLock> lock)
{
	if (lock != nullptr)
		fLock = std::move(lock);
}


thread_id
BLooper::Thread() const
{
	return fThreadId;
}


// #pragma mark - handlers


void
BLooper::AddHandler(BHandler* handler)
{
	if (handler == nullptr || handler == this)
		return;
	if (handler->Looper() != nullptr)
		handler->Looper()->RemoveHandler(handler);
	std::lock_guard<std::mutex> guard(fStateMutex);
	fHandlers.push_back(handler);
	handler->fLooper = this;
}


bool
BLooper::RemoveHandler(BHandler* handler)
{
	if (handler == nullptr || handler == this)
		return false;
	// Waits for a dispatch in progress, which may be using the handler.
	bool locked = Lock();
	bool removed = false;
	{
		std::lock_guard<std::mutex> guard(fStateMutex);
		auto found = std::find(fHandlers.begin(), fHandlers.end(), handler);
		if (found != fHandlers.end()) {
			fHandlers.erase(found);
			handler->fLooper = nullptr;
			if (fPreferredHandler == handler)
				fPreferredHandler = nullptr;
			removed = true;
		}
	}
	if (locked)
		Unlock();
	return removed;
}


int32
BLooper::CountHandlers() const
{
	std::lock_guard<std::mutex> guard(fStateMutex);
	// The looper counts as its own first handler, as on BeOS.
	return int32(fHandlers.size()) + 1;
}


BHandler*
BLooper::HandlerAt(int32 index) const
{
	std::lock_guard<std::mutex> guard(fStateMutex);
	if (index == 0)
		return const_cast<BLooper*>(this);
	if (index < 0 || size_t(index) > fHandlers.size())
		return nullptr;
	return fHandlers[size_t(index) - 1];
}


int32
BLooper::IndexOf(BHandler* handler) const
{
	if (handler == this)
		return 0;
	std::lock_guard<std::mutex> guard(fStateMutex);
	auto found = std::find(fHandlers.begin(), fHandlers.end(), handler);
	return found != fHandlers.end() ? int32(found - fHandlers.begin()) + 1 : -1;
}


BHandler*
BLooper::PreferredHandler() const
{
	std::lock_guard<std::mutex> guard(fStateMutex);
	return fPreferredHandler;
}


void
BLooper::SetPreferredHandler(BHandler* handler)
{
	std::lock_guard<std::mutex> guard(fStateMutex);
	if (handler == nullptr || handler == this ||
	    std::find(fHandlers.begin(), fHandlers.end(), handler) != fHandlers.end()) {
		fPreferredHandler = handler == this ? nullptr : handler;
	}
}
