// A handler receives the messages its looper dispatches to it. A looper is
// itself a handler; other handlers join a looper with BLooper::AddHandler.
#ifndef HANDLER_H
#define HANDLER_H

#include <atomic>
#include <string>

#include "SupportDefs.h"

class BLooper;
class BMessage;

class BHandler
{
public:
	explicit BHandler(const char* name = nullptr);
	virtual ~BHandler();

	BHandler(const BHandler&) = delete;
	BHandler& operator=(const BHandler&) = delete;

	// Called on the looper's dispatching thread with the looper locked. The
	// default hands the message to the next handler, if any, else drops it.
	virtual void MessageReceived(BMessage* message);

	// The looper this handler belongs to (a looper answers itself), or null.
	BLooper* Looper() const;

	void SetName(const char* name);
	const char* Name() const;

	virtual void SetNextHandler(BHandler* handler);
	BHandler* NextHandler() const;

private:
	friend class BLooper;
	friend class BMessenger;
	friend class LooperList;

	// Never reused in a run: messengers name their target by token, so a
	// deleted handler is never reached through a stale pointer.
	int64 Token() const { return fToken; }

	std::string fName;
	std::atomic<BLooper*> fLooper;
	BHandler* fNextHandler;
	const int64 fToken;
};

#endif // HANDLER_H
