#include <AppDefs.h>
#include <Autolock.h>
#include <Handler.h>
#include <Looper.h>
#include <Message.h>
#include <Messenger.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace {

const uint32 kMsgData = 'data';
const uint32 kMsgQuitNow = 'quit';
const uint32 kMsgBlock = 'blok';
const auto kPatience = std::chrono::seconds(5);
// How long a message that must not arrive is given to arrive anyway.
const auto kQuiet = std::chrono::milliseconds(50);


// What a test looper saw, shared with the test so it outlives the looper.
struct Probe {
	std::mutex mutex;
	std::condition_variable changed;
	std::vector<BMessage> received;
	std::vector<bool> lockedWhileDispatching;
	bool deleted = false;
	bool allowQuit = true;
	bool blocking = false;
	bool releaseBlock = false;

	bool WaitFor(const std::function<bool()>& condition,
	             std::chrono::milliseconds timeout = kPatience)
	{
		std::unique_lock<std::mutex> guard(mutex);
		return changed.wait_for(guard, timeout, condition);
	}
	bool WaitForCount(size_t count, std::chrono::milliseconds timeout = kPatience)
	{
		return WaitFor([&] { return received.size() >= count; }, timeout);
	}
	bool WaitForDeletion()
	{
		return WaitFor([&] { return deleted; });
	}
	size_t Count()
	{
		std::lock_guard<std::mutex> guard(mutex);
		return received.size();
	}
};


class TestLooper : public BLooper
{
public:
	explicit TestLooper(std::shared_ptr<Probe> probe)
	    : BLooper("test looper"), fProbe(std::move(probe))
	{
	}

	~TestLooper() override
	{
		std::lock_guard<std::mutex> guard(fProbe->mutex);
		fProbe->deleted = true;
		fProbe->changed.notify_all();
	}

	void MessageReceived(BMessage* message) override
	{
		if (message->what == kMsgBlock) {
			// Holds the dispatching thread until the test lets it go.
			{
				std::lock_guard<std::mutex> guard(fProbe->mutex);
				fProbe->blocking = true;
				fProbe->changed.notify_all();
			}
			fProbe->WaitFor([this] { return fProbe->releaseBlock; });
		}
		{
			std::lock_guard<std::mutex> guard(fProbe->mutex);
			fProbe->received.push_back(*message);
			fProbe->lockedWhileDispatching.push_back(IsLocked() && CurrentMessage() == message);
			fProbe->changed.notify_all();
		}
		if (message->what == kMsgQuitNow)
			Quit();
	}

	bool QuitRequested() override
	{
		std::lock_guard<std::mutex> guard(fProbe->mutex);
		return fProbe->allowQuit;
	}

private:
	std::shared_ptr<Probe> fProbe;
};


class RecordingHandler : public BHandler
{
public:
	explicit RecordingHandler(const char* name) : BHandler(name) {}

	void MessageReceived(BMessage* message) override
	{
		std::lock_guard<std::mutex> guard(fMutex);
		fWhats.push_back(message->what);
		fSawLooper = Looper() != nullptr && Looper()->IsLocked();
		fChanged.notify_all();
		BHandler::MessageReceived(message);
	}

	bool WaitForCount(size_t count)
	{
		std::unique_lock<std::mutex> guard(fMutex);
		return fChanged.wait_for(guard, kPatience, [&] { return fWhats.size() >= count; });
	}

	std::vector<uint32> Whats()
	{
		std::lock_guard<std::mutex> guard(fMutex);
		return fWhats;
	}

	bool fSawLooper = false;

private:
	std::mutex fMutex;
	std::condition_variable fChanged;
	std::vector<uint32> fWhats;
};


void
QuitFromOutside(BLooper* looper)
{
	ASSERT_TRUE(looper->Lock());
	looper->Quit();
}


// A test looper, not yet running, and what it sees.
class LooperTest : public testing::Test
{
protected:
	std::shared_ptr<Probe> probe = std::make_shared<Probe>();
	TestLooper* looper = new TestLooper(probe);
};

} // namespace


TEST_F(LooperTest, DeliversMessagesInOrderFromSeveralThreads)
{
	ASSERT_GT(looper->Run(), 0);
	const int kSenders = 4;
	const int kPerSender = 500;
	BMessenger messenger(looper);
	ASSERT_TRUE(messenger.IsValid());

	std::vector<std::thread> senders;
	for (int sender = 0; sender < kSenders; sender++) {
		senders.emplace_back([messenger, sender] {
			BMessage message(kMsgData);
			message.AddInt32("sender", sender);
			message.AddInt32("sequence", 0);
			for (int i = 0; i < kPerSender; i++) {
				message.ReplaceInt32("sequence", i);
				EXPECT_EQ(B_OK, messenger.SendMessage(&message));
			}
		});
	}
	for (std::thread& sender : senders)
		sender.join();
	ASSERT_TRUE(probe->WaitForCount(kSenders * kPerSender));

	std::vector<int32> next(kSenders, 0);
	for (const BMessage& message : probe->received) {
		int32 sender = -1;
		int32 sequence = -1;
		ASSERT_EQ(B_OK, message.FindInt32("sender", &sender));
		ASSERT_EQ(B_OK, message.FindInt32("sequence", &sequence));
		ASSERT_EQ(next[sender], sequence) << "sender " << sender;
		next[sender]++;
	}
	for (bool locked : probe->lockedWhileDispatching)
		EXPECT_TRUE(locked);

	QuitFromOutside(looper);
	EXPECT_TRUE(probe->deleted);
	EXPECT_EQ(size_t(kSenders * kPerSender), probe->Count());
}


TEST_F(LooperTest, QuittingFromInsideDeletesTheLooperAndItsQueuedMessages)
{
	BMessenger messenger(looper);
	// Queued before Run: the first message quits, the rest must be freed
	// unhandled (the leak checker sees the payloads otherwise).
	looper->PostMessage(kMsgQuitNow);
	BMessage payload(kMsgData);
	payload.AddString("payload", "a string long enough to need its own allocation");
	for (int i = 0; i < 100; i++)
		ASSERT_EQ(B_OK, looper->PostMessage(&payload));
	looper->Run();

	ASSERT_TRUE(probe->WaitForDeletion());
	EXPECT_EQ(1u, probe->Count());
	EXPECT_FALSE(messenger.IsValid());
	EXPECT_EQ(B_BAD_HANDLER, messenger.SendMessage(kMsgData));
}


TEST_F(LooperTest, QuittingFromOutsideWithMessagesQueuedStopsDispatching)
{
	looper->Run();
	BMessenger messenger(looper);
	ASSERT_TRUE(looper->Lock());
	BMessage payload(kMsgData);
	payload.AddString("payload", "a string long enough to need its own allocation");
	for (int i = 0; i < 100; i++)
		ASSERT_EQ(B_OK, messenger.SendMessage(&payload));
	// Still locked by this thread: nothing can have been dispatched.
	looper->Quit();
	EXPECT_TRUE(probe->deleted);
	EXPECT_EQ(0u, probe->Count());
	EXPECT_EQ(B_BAD_HANDLER, messenger.SendMessage(&payload));

	// A looper that never ran is deleted by Quit just the same.
	auto idleProbe = std::make_shared<Probe>();
	TestLooper* idle = new TestLooper(idleProbe);
	idle->PostMessage(&payload);
	idle->Quit();
	EXPECT_TRUE(idleProbe->deleted);
}


TEST_F(LooperTest, MessengerToAQuitLooperAnswersAnError)
{
	looper->Run();
	status_t status = B_ERROR;
	BMessenger messenger(nullptr, looper, &status);
	EXPECT_EQ(B_OK, status);
	BMessenger copy;
	EXPECT_FALSE(copy.IsValid());
	EXPECT_EQ(B_BAD_HANDLER, copy.SendMessage(kMsgData));
	copy = messenger;
	EXPECT_TRUE(copy == messenger);
	ASSERT_EQ(B_OK, copy.SendMessage(kMsgData));
	ASSERT_TRUE(probe->WaitForCount(1));

	// A thread waiting for the lock through a messenger when the looper
	// quits is told so instead of touching the deleted looper.
	ASSERT_TRUE(looper->Lock());
	std::atomic<int> lockResult(-1);
	std::thread waiter([&] { lockResult = messenger.LockTarget() ? 1 : 0; });
	looper->Quit();
	waiter.join();
	EXPECT_EQ(0, lockResult.load());
	EXPECT_TRUE(probe->deleted);

	EXPECT_FALSE(messenger.IsValid());
	EXPECT_FALSE(copy.IsValid());
	EXPECT_EQ(B_BAD_HANDLER, copy.SendMessage(kMsgData));
	BMessage message(kMsgData);
	EXPECT_EQ(B_BAD_HANDLER, messenger.SendMessage(&message));
	EXPECT_EQ(B_BAD_HANDLER, messenger.LockTargetWithTimeout(0));
	BLooper* target = reinterpret_cast<BLooper*>(1);
	EXPECT_EQ(nullptr, messenger.Target(&target));
	EXPECT_EQ(nullptr, target);
}


TEST_F(LooperTest, LockFromAnotherThreadHoldsOffDispatching)
{
	looper->Run();
	{
		BAutolock lock(looper);
		ASSERT_TRUE(lock.IsLocked());
		ASSERT_TRUE(looper->IsLocked());
		ASSERT_EQ(B_OK, looper->PostMessage(kMsgData));
		EXPECT_FALSE(probe->WaitForCount(1, kQuiet));
		std::thread other([this] {
			EXPECT_FALSE(looper->IsLocked());
			EXPECT_EQ(B_TIMED_OUT, looper->LockWithTimeout(1000));
		});
		other.join();
		// The lock is recursive.
		ASSERT_TRUE(looper->Lock());
		looper->Unlock();
		EXPECT_TRUE(looper->IsLocked());
	}
	EXPECT_FALSE(looper->IsLocked());
	ASSERT_TRUE(probe->WaitForCount(1));
	EXPECT_TRUE(probe->lockedWhileDispatching[0]);

	// The looper thread keeps the lock while it dispatches.
	ASSERT_EQ(B_OK, looper->PostMessage(kMsgBlock));
	ASSERT_TRUE(probe->WaitFor([&] { return probe->blocking; }));
	EXPECT_EQ(B_TIMED_OUT, looper->LockWithTimeout(1000));
	{
		std::lock_guard<std::mutex> guard(probe->mutex);
		probe->releaseBlock = true;
		probe->changed.notify_all();
	}
	ASSERT_TRUE(probe->WaitForCount(2));
	QuitFromOutside(looper);
}


TEST_F(LooperTest, QuitRequestedFalseKeepsTheLooperRunning)
{
	looper->Run();
	BMessenger messenger(looper);
	probe->allowQuit = false;
	ASSERT_EQ(B_OK, messenger.SendMessage(B_QUIT_REQUESTED));
	ASSERT_EQ(B_OK, messenger.SendMessage(kMsgData));
	ASSERT_TRUE(probe->WaitForCount(1));
	EXPECT_EQ(kMsgData, probe->received[0].what);
	EXPECT_FALSE(probe->deleted);
	EXPECT_TRUE(messenger.IsValid());

	{
		std::lock_guard<std::mutex> guard(probe->mutex);
		probe->allowQuit = true;
	}
	ASSERT_EQ(B_OK, messenger.SendMessage(B_QUIT_REQUESTED));
	ASSERT_TRUE(probe->WaitForDeletion());
	EXPECT_EQ(1u, probe->Count());
	EXPECT_FALSE(messenger.IsValid());
}


TEST_F(LooperTest, HandlersReceiveTheirMessagesAndLeaveCleanly)
{
	TestLooper* otherLooper = new TestLooper(std::make_shared<Probe>());
	auto first = std::make_unique<RecordingHandler>("first");
	RecordingHandler next("next");
	first->SetNextHandler(&next);

	status_t status = B_OK;
	BMessenger unattached(first.get(), nullptr, &status);
	EXPECT_EQ(B_MISMATCHED_VALUES, status);
	EXPECT_FALSE(unattached.IsValid());

	looper->AddHandler(first.get());
	EXPECT_EQ(looper, first->Looper());
	EXPECT_EQ(1, looper->IndexOf(first.get()));
	BMessenger toFirst(first.get(), nullptr, &status);
	EXPECT_EQ(B_OK, status);
	BMessenger(first.get(), otherLooper, &status);
	EXPECT_EQ(B_MISMATCHED_VALUES, status);
	BMessage forFirst(kMsgData);
	EXPECT_EQ(B_MISMATCHED_VALUES, otherLooper->PostMessage(&forFirst, first.get()))
	    << "a handler of another looper";

	looper->Run();
	BMessage message(kMsgData);
	ASSERT_EQ(B_OK, looper->PostMessage(&message, first.get()));
	ASSERT_EQ(B_OK, toFirst.SendMessage(kMsgQuitNow));
	ASSERT_TRUE(first->WaitForCount(2));
	// The default handling passes each message down the chain.
	ASSERT_TRUE(next.WaitForCount(2));
	EXPECT_TRUE(first->fSawLooper);
	EXPECT_EQ((std::vector<uint32>{kMsgData, kMsgQuitNow}), first->Whats());
	EXPECT_EQ(0u, probe->Count()) << "messages for a handler do not reach the looper";

	// A deleted handler leaves its looper; messengers to it then fail.
	first.reset();
	EXPECT_EQ(1, looper->CountHandlers());
	EXPECT_EQ(B_BAD_HANDLER, toFirst.SendMessage(kMsgData));
	EXPECT_FALSE(toFirst.IsValid());
	EXPECT_TRUE(BMessenger(looper).IsValid());

	QuitFromOutside(looper);
	QuitFromOutside(otherLooper);
}


TEST(LooperDetachTest, DetachedCurrentMessageBelongsToTheHandler)
{
	struct Detaching : BLooper {
		std::mutex mutex;
		std::condition_variable done;
		BMessage* kept = nullptr;
		void MessageReceived(BMessage* message) override
		{
			std::lock_guard<std::mutex> guard(mutex);
			kept = DetachCurrentMessage();
			EXPECT_EQ(message, kept);
			EXPECT_EQ(nullptr, CurrentMessage());
			done.notify_all();
		}
	};
	Detaching* looper = new Detaching;
	EXPECT_EQ(nullptr, looper->CurrentMessage());
	looper->Run();
	BMessage message(kMsgData);
	message.AddString("text", "kept after dispatch");
	ASSERT_EQ(B_OK, looper->PostMessage(&message));
	std::unique_ptr<BMessage> kept;
	{
		std::unique_lock<std::mutex> guard(looper->mutex);
		ASSERT_TRUE(looper->done.wait_for(guard, kPatience, [&] { return looper->kept; }));
		kept.reset(looper->kept);
	}
	QuitFromOutside(looper);
	const char* text = nullptr;
	ASSERT_EQ(B_OK, kept->FindString("text", &text));
	EXPECT_STREQ("kept after dispatch", text);
}
