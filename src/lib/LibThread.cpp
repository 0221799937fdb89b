#include "lib/LibThread.h"

#include <cstdio>
#include <cstring>

#include <Message.h>
#include <Messenger.h>

// Never a valid id: the destructor's Kill of an object that never ran Go does
// nothing.
static const thread_id kNoThread = -1;


LibThread::LibThread() : fThread(kNoThread), fMessenger(nullptr)
{
}


int32
LibThread::Action()
{
	return 0;
}


LibThread::~LibThread()
{
	delete fMessenger;
	// Kill fails harmlessly when the thread has already finished.
	LibThread::Kill();
}


void
LibThread::Suspend()
{
	suspend_thread(fThread);
}


void
LibThread::Resume()
{
	resume_thread(fThread);
}


void
LibThread::Kill()
{
	kill_thread(fThread);
}


void
LibThread::Go(const char* name, BMessenger* messenger, long priority)
{
	fMessenger = messenger;
	fThread = spawn_thread(StaticAction, name, static_cast<int32>(priority), this);
	resume_thread(fThread);
}


void
LibThread::PrintToStream()
{
	switch (Status()) {
		case B_THREAD_RUNNING:
			fprintf(stderr, "Running\n");
			break;
		case B_THREAD_READY:
			fprintf(stderr, "Ready\n");
			break;
		case B_THREAD_RECEIVING:
			fprintf(stderr, "Receiving\n");
			break;
		case B_THREAD_ASLEEP:
			fprintf(stderr, "Asleep\n");
			break;
		case B_THREAD_SUSPENDED:
			fprintf(stderr, "Suspended\n");
			break;
		case B_THREAD_WAITING:
			fprintf(stderr, "Waiting\n");
			break;
		default:
			fprintf(stderr, "Unknown\n");
			break;
	}
}


// Runs on the spawned thread. The completion message is the only hand-over:
// its receiver may read this object's results once it has arrived.
int32
LibThread::StartAction()
{
	int32 result = Action();
	if (fMessenger != nullptr) {
		// A failed look-up leaves the name empty.
		thread_info info;
		memset(&info, 0, sizeof(info));
		get_thread_info(fThread, &info);
		BMessage* message = new BMessage(kMsgThreadCompleted);
		message->AddString("name", info.name);
		message->AddInt32("status", result);
		fMessenger->SendMessage(message, static_cast<BHandler*>(nullptr), B_INFINITE_TIMEOUT);
		delete message;
	}
	return result;
}


thread_state
LibThread::Status()
{
	thread_info info;
	memset(&info, 0, sizeof(info));
	get_thread_info(fThread, &info);
	return info.state;
}


void
LibThread::SetPriority(long priority)
{
	set_thread_priority(fThread, static_cast<int32>(priority));
}


int32
LibThread::StaticAction(void* object)
{
	return static_cast<LibThread*>(object)->StartAction();
}
