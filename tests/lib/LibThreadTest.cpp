#include "lib/LibThread.h"

#include <Looper.h>
#include <Message.h>
#include <Messenger.h>
#include <OS.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>

#include <gtest/gtest.h>

namespace {

const bigtime_t kPatience = 2000000;

// Collects the completion message on a looper thread of its own.
class Receiver : public BLooper
{
public:
	Receiver() : BLooper("receiver") {}

	void MessageReceived(BMessage* message) override
	{
		if (message->what != kMsgThreadCompleted) {
			BLooper::MessageReceived(message);
			return;
		}
		const char* name = nullptr;
		int32 status = -1;
		message->FindString("name", &name);
		message->FindInt32("status", &status);
		std::lock_guard<std::mutex> lock(fLock);
		fName = name != nullptr ? name : "(none)";
		fStatus = status;
		fCount++;
		fCondition.notify_all();
	}

	bool WaitForCompletion()
	{
		std::unique_lock<std::mutex> lock(fLock);
		return fCondition.wait_for(lock, std::chrono::microseconds(kPatience),
		                           [this] { return fCount > 0; });
	}

	std::mutex fLock;
	std::condition_variable fCondition;
	std::string fName;
	int32 fStatus = -1;
	int fCount = 0;
};


class FiveThread : public LibThread
{
public:
	int32 Action() override { return 5; }
	thread_id Thread() const { return fThread; }
};


// Sets its flag when its stack unwinds.
struct Unwound {
	std::mutex lock;
	std::condition_variable condition;
	bool done = false;

	bool Wait()
	{
		std::unique_lock<std::mutex> guard(lock);
		return condition.wait_for(guard, std::chrono::microseconds(kPatience),
		                          [this] { return done; });
	}
};

Unwound sUnwound;

struct UnwindMark {
	~UnwindMark()
	{
		std::lock_guard<std::mutex> guard(sUnwound.lock);
		sUnwound.done = true;
		sUnwound.condition.notify_all();
	}
};


class SleepyThread : public LibThread
{
public:
	int32 Action() override
	{
		UnwindMark mark;
		snooze(30000000);
		return 1;
	}
	thread_id Thread() const { return fThread; }
};


template <typename Predicate>
bool
WaitUntil(Predicate predicate)
{
	bigtime_t deadline = system_time() + kPatience;
	while (!predicate()) {
		if (system_time() > deadline)
			return false;
		snooze(200);
	}
	return true;
}

} // namespace


TEST(LibThreadTest, CompletionMessageCarriesNameAndActionResult)
{
	Receiver* receiver = new Receiver;
	ASSERT_GT(receiver->Run(), 0);
	{
		FiveThread worker;
		worker.Go("lib worker", new BMessenger(receiver), B_URGENT_DISPLAY_PRIORITY);
		ASSERT_TRUE(receiver->WaitForCompletion());
		{
			std::lock_guard<std::mutex> lock(receiver->fLock);
			EXPECT_EQ("lib worker", receiver->fName);
			EXPECT_EQ(5, receiver->fStatus);
			EXPECT_EQ(1, receiver->fCount);
		}
		status_t exitValue = 0;
		EXPECT_EQ(B_OK, wait_for_thread(worker.Thread(), &exitValue));
		EXPECT_EQ(5, exitValue);
	}
	receiver->Lock();
	receiver->Quit();
}


TEST(LibThreadTest, WithoutMessengerExitValueIsStillActionResult)
{
	FiveThread worker;
	worker.Go("silent worker", nullptr, B_NORMAL_PRIORITY);
	ASSERT_GT(worker.Thread(), 0);
	status_t exitValue = 0;
	EXPECT_EQ(B_OK, wait_for_thread(worker.Thread(), &exitValue));
	EXPECT_EQ(5, exitValue);

	// Started again: a new thread replaces the old one.
	thread_id first = worker.Thread();
	worker.Go("silent worker", nullptr, B_NORMAL_PRIORITY);
	EXPECT_NE(first, worker.Thread());
	EXPECT_EQ(B_OK, wait_for_thread(worker.Thread(), &exitValue));
	EXPECT_EQ(5, exitValue);
}


TEST(LibThreadTest, DestroyingAfterThreadFinishedLeavesItsEndIntact)
{
	FiveThread* worker = new FiveThread;
	worker->Go("finished early", nullptr, B_NORMAL_PRIORITY);
	thread_id thread = worker->Thread();
	ASSERT_TRUE(WaitUntil([&] { return worker->Status() == B_THREAD_WAITING; }));
	delete worker;
	// The destructor's kill failed harmlessly: the exit value is still there.
	status_t exitValue = 0;
	EXPECT_EQ(B_OK, wait_for_thread(thread, &exitValue));
	EXPECT_EQ(5, exitValue);

	// Never started: nothing to kill.
	delete new FiveThread;
}


TEST(LibThreadTest, DestroyingKillsSleepingThread)
{
	sUnwound.done = false;
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
	EXPECT_TRUE(sUnwound.Wait());
	EXPECT_EQ(B_BAD_THREAD_ID, get_thread_info(thread, &info));
}


TEST(LibThreadTest, PrintToStreamOfUnknownThread)
{
	FiveThread never;
	testing::internal::CaptureStderr();
	never.PrintToStream();
	EXPECT_EQ("Unknown\n", testing::internal::GetCapturedStderr());
}
