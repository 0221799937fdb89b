// One kernel thread around a virtual Action, reporting its end to an optional
// messenger with kMsgThreadCompleted.
#ifndef LIB_THREAD_H
#define LIB_THREAD_H

#include <OS.h>
#include <SupportDefs.h>

class BMessenger;

// Sent when Action has returned: "name" (the thread's name) and the int32
// "status" (what Action answered).
const uint32 kMsgThreadCompleted = 'LThC';

class LibThread
{
public:
	LibThread();

	// The thread body; runs on the spawned thread.
	virtual int32 Action();
	// Deletes the messenger, then kills the thread whether or not it still
	// runs. Must run on another thread than the one it kills.
	virtual ~LibThread();
	virtual void Suspend();
	virtual void Resume();
	virtual void Kill();
	// Spawns and starts the thread at once. Takes the messenger (may be null);
	// one stored by an earlier Go is overwritten, not deleted.
	virtual void Go(const char* name, BMessenger* messenger, long priority);
	virtual void PrintToStream();

	// Runs Action and sends the completion message; answers Action's result.
	int32 StartAction();
	thread_state Status();
	void SetPriority(long priority);

	static int32 StaticAction(void* object);

protected:
	thread_id fThread;
	BMessenger* fMessenger;
};

#endif // LIB_THREAD_H
