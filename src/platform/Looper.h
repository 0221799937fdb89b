// A looper: a queue of messages and the handlers they are dispatched to, one
// message at a time, in the order they were queued, with the looper locked.
//
// Where dispatching happens is the only thing subclasses change. A plain
// looper dispatches on a thread of its own, started by Run. A looper driven
// by another thread (a window on the interface thread) overrides
//   Run()            to mark itself running without starting a thread,
//   MessageQueued()  to wake its dispatching thread (called on the sending
//                    thread, no internal lock held), and
// calls DispatchNextMessage() on its dispatching thread until it answers
// false or the queue is empty (HasQueuedMessages). It may install another
// lock with SetLock before it is used, e.g. the interface's global lock.
// Queueing, locking, handler look-up, B_QUIT_REQUESTED handling and quitting
// stay here.
//
// Quit deletes the looper, as on BeOS. Called on the dispatching thread while
// a message is being handled, it takes effect when that handler returns: the
// caller returns without touching the looper again. Called from any other
// thread, it takes the lock if needed, stops the dispatching thread, waits
// for it and deletes the looper before returning. Messages still queued are
// deleted unhandled. One thread quits a looper; messengers to it then
// answer B_BAD_HANDLER and Lock answers false.
//
// Unlike BeOS a new looper is not locked, and Run does not unlock it.
#ifndef LOOPER_H
#define LOOPER_H

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "Handler.h"
#include "SupportDefs.h"

class BMessage;
class LooperList;
class LooperLock;

#define B_LOOPER_PORT_DEFAULT_CAPACITY 200

typedef int32 thread_id;

class BLooper : public BHandler
{
public:
	// B_NORMAL_PRIORITY; recorded, not applied to the thread.
	static const int32 kDefaultPriority = 10;

	// The queue has no fixed capacity: portCapacity is kept for the BeOS
	// signature only, and senders never block.
	explicit BLooper(const char* name = nullptr, int32 priority = kDefaultPriority,
	                 int32 portCapacity = B_LOOPER_PORT_DEFAULT_CAPACITY);
	~BLooper() override;

	// Starts dispatching; answers the dispatching thread's id (the kernel's
	// id of that thread), or B_ALREADY_RUNNING.
	virtual thread_id Run();
	virtual void Quit();
	// Asked on B_QUIT_REQUESTED addressed to the looper itself: true quits.
	virtual bool QuitRequested();

	// Queues a copy of the message (the caller keeps its own) for handler,
	// which must belong to this looper (else B_MISMATCHED_VALUES), or for the
	// preferred handler when null. replyTo is accepted and not used: there
	// are no replies.
	status_t PostMessage(uint32 what);
	status_t PostMessage(BMessage* message, BHandler* handler = nullptr,
	                     BHandler* replyTo = nullptr);

	// Hands the message to the handler; B_QUIT_REQUESTED addressed to the
	// looper itself asks QuitRequested and quits on true.
	virtual void DispatchMessage(BMessage* message, BHandler* handler);
	void MessageReceived(BMessage* message) override;

	// The message being dispatched, on the dispatching thread; null otherwise.
	BMessage* CurrentMessage() const;
	// Takes the current message over: the caller deletes it.
	BMessage* DetachCurrentMessage();

	bool Lock();
	// B_OK, B_TIMED_OUT, or B_BAD_VALUE when the looper has quit. Timeout in
	// microseconds.
	status_t LockWithTimeout(bigtime_t timeout);
	void Unlock();
	// Whether the calling thread holds the lock.
	bool IsLocked() const;

	thread_id Thread() const;

	// Handlers are not owned; each belongs to one looper at a time.
	void AddHandler(BHandler* handler);
	bool RemoveHandler(BHandler* handler);
	int32 CountHandlers() const;
	BHandler* HandlerAt(int32 index) const;
	int32 IndexOf(BHandler* handler) const;

	// Where messages sent without a handler go; null means the looper itself.
	BHandler* PreferredHandler() const;
	void SetPreferredHandler(BHandler* handler);

protected:
	virtual void MessageQueued();
	// Dispatches the oldest queued message, if any, with the looper locked.
	// Answers false when the looper quit (and has been deleted) meanwhile.
	bool DispatchNextMessage();
	bool HasQueuedMessages() const;
	void SetLock(std::shared_ptr<LooperLock> lock);

private:
	friend class BMessenger;
	friend class LooperList;

	struct QueuedMessage {
		std::unique_ptr<BMessage> message;
		// 0 for the preferred handler
		int64 handlerToken;
	};

	status_t Enqueue(std::unique_ptr<BMessage> message, int64 handlerToken);
	BHandler* HandlerForTokenLocked(int64 token) const;
	bool HasTargetLocked(int64 handlerToken) const;
	thread_id StartThread();
	void Loop();

	std::shared_ptr<LooperLock> fLock;

	// Guards the queue, the handler list and the quitting flag.
	mutable std::mutex fStateMutex;
	std::condition_variable fQueueCondition;
	std::deque<QueuedMessage> fQueue;
	std::vector<BHandler*> fHandlers;
	BHandler* fPreferredHandler;
	bool fTerminating;

	bool fRunning;
	int32 fPriority;
	std::thread fThread;
	thread_id fThreadId;

	// Set only on the dispatching thread, while it dispatches.
	std::thread::id fDispatchingThread;
	BMessage* fCurrentMessage;
	bool fCurrentDetached;
	bool fQuitWhileDispatching;
};

#endif // LOOPER_H
