#include "lib/LibThread.h"

#include <Looper.h>
#include <Message.h>
#include <Messenger.h>
#include <OS.h>

#include <atomic>
#include <mutex>
#include <string>

#include <gtest/gtest.h>

namespace {

template <typename Predicate>
bool
WaitUntil(Predicate predicate)
{
	bigtime_t deadline = system_time() + 2000000;
	while (!predicate()) {
		if (system_time() > deadline)
			return false;
		snooze(200);
	}
	return true;
}


// Collects the completion message on a looper thread of its own.
class Receiver : public BLooper
{
public:
	void MessageReceived(BMessage* message) override
	{
		std::lock_guard<std::mutex> lock(fLock);
		fWhat = message->what;
		const char* name = "(none)";
		message->FindString("name", &name);
		message->FindInt32("status", &fStatus);
		fName = name;
		fCount++;
	}

	std::mutex fLock;
	std::string fName;
	uint32 fWhat = 0;
	int32 fStatus = -1;
	std::atomic<int> fCount{0};
};


class FiveThread : public LibThread
{
public:
	int32 Action() override { return 5; }
	thread_id Thread() const { return fThread; }
};


std::atomic<bool> sUnwound{false};

// Marks its stack unwound when the thread is killed in its sleep.
class SleepyThread : public FiveThread
{
public:
	int32 Action() override
	{
		struct Mark {
			~Mark() { sUnwound = true; }
		} mark;
		snooze(30000000);
		return 1;
	}
};


int32
ExitValue(thread_id thread)
{
	status_t exitValue = 0;
	EXPECT_EQ(B_OK, wait_for_thread(thread, &exitValue));
	return exitValue;
}

} // namespace


TEST(LibThreadTest, CompletionMessageCarriesNameAndActionResult)
{
	Receiver* receiver = new Receiver;
	ASSERT_GT(receiver->Run(), 0);
	{
		FiveThread worker;
		worker.Go("lib worker", new BMessenger(receiver), B_URGENT_DISPLAY_PRIORITY);
		ASSERT_TRUE(WaitUntil([&] { return receiver->fCount > 0; }));
		EXPECT_EQ(5, ExitValue(worker.Thread()));
		std::lock_guard<std::mutex> lock(receiver->fLock);
		EXPECT_EQ(kMsgThreadCompleted, receiver->fWhat);
		EXPECT_EQ("lib worker", receiver->fName);
		EXPECT_EQ(5, receiver->fStatus);
		EXPECT_EQ(1, receiver->fCount.load());
	}
	receiver->Lock();
	receiver->Quit();
}


TEST(LibThreadTest, WithoutMessengerAStartReplacesTheThreadAndDeletingLeavesItsEnd)
{
	FiveThread* worker = new FiveThread;
	worker->Go("silent worker", nullptr, B_NORMAL_PRIORITY);
	thread_id first = worker->Thread();
	ASSERT_GT(first, 0);
	EXPECT_EQ(5, ExitValue(first));

	worker->Go("silent worker", nullptr, B_NORMAL_PRIORITY);
	thread_id second = worker->Thread();
	EXPECT_NE(first, second);
	ASSERT_TRUE(WaitUntil([&] { return worker->Status() == B_THREAD_WAITING; }));
	delete worker;
	// The destructor's kill failed harmlessly: the exit value is still there.
	EXPECT_EQ(5, ExitValue(second));

	// Never started: nothing to kill, and nothing known about it.
	FiveThread never;
	testing::internal::CaptureStderr();
	never.PrintToStream();
	EXPECT_EQ("Unknown\n", testing::internal::GetCapturedStderr());
}


TEST(LibThreadTest, DestroyingKillsSleepingThread)
{
	sUnwound = false;
	SleepyThread* worker = new SleepyThread;
	worker->Go("sleepy", nullptr, B_NORMAL_PRIORITY);
	thread_id thread = worker->Thread();
	ASSERT_TRUE(WaitUntil([&] { return worker->Status() == B_THREAD_ASLEEP; }));

	testing::internal::CaptureStderr();
	worker->PrintToStream();
	worker->Suspend();
	worker->PrintToStream();
	worker->Resume();
	EXPECT_EQ("Asleep\nSuspended\n", testing::internal::GetCapturedStderr());

	worker->SetPriority(B_LOW_PRIORITY);
	thread_info info;
	ASSERT_EQ(B_OK, get_thread_info(thread, &info));
	EXPECT_EQ(B_LOW_PRIORITY, info.priority);

	delete worker;
	EXPECT_TRUE(WaitUntil([] { return sUnwound.load(); }));
	EXPECT_EQ(B_BAD_THREAD_ID, get_thread_info(thread, &info));
}
