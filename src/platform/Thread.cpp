// Kernel threads with BeOS ids and states on top of POSIX threads.
//
// Every thread made by spawn_thread has a record in one registry, guarded by
// one mutex. Records are shared: the thread itself holds one reference for its
// whole life, so a record stays valid for the thread after kill_thread or
// eviction has taken it out of the registry.
//
// Suspension is signal-based. suspend_thread sets the record's flag and sends
// kSuspendSignal; the handler parks the thread on a semaphore until
// resume_thread clears the flag. The handler never touches the registry: a
// thread that is inside this layer (holding the registry mutex or blocked in
// one of its calls) is not parked by the handler but when it leaves the layer,
// so a suspended thread never holds the registry mutex.
#include "OS.h"
#include "PlatformTest.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <climits>
#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <new>

#include <fcntl.h>
#include <pthread.h>
#include <sched.h>
#include <semaphore.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

const int32 kDefaultFinishedLimit = 4096;
// Far enough in the future to mean "never" without overflowing the clock.
const bigtime_t kForever = 1000000000000000LL;

enum BlockKind {
	kNotBlocked,
	kAsleep,
	kWaiting,
};

struct ThreadRecord {
	ThreadRecord();
	~ThreadRecord();

	thread_id fId = 0;
	char fName[B_OS_NAME_LENGTH] = {};
	int32 fPriority = B_NORMAL_PRIORITY;
	thread_func fFunc = nullptr;
	void* fData = nullptr;
	// Made by spawn_thread; other threads only get ids on demand and can be
	// neither killed nor waited for.
	bool fSpawned = false;

	pthread_t fHandle{};
	pid_t fTid = 0;
	int fBaseNice = 0;
	bool fNiceLowered = false;
	void* fStackBase = nullptr;
	void* fStackEnd = nullptr;

	// Guarded by the registry mutex.
	bool fStarted = false;
	bool fFinished = false;
	bool fKilled = false;
	bool fRegistered = false;
	int32 fExitValue = 0;
	BlockKind fBlocking = kNotBlocked;
	std::condition_variable* fBlockedOn = nullptr;
	bool fInFinishedList = false;
	std::list<thread_id>::iterator fFinishedPosition;

	// Signalled on start, kill and finish; the thread sleeps on it in snooze,
	// waiters of wait_for_thread on the target's.
	std::condition_variable fCondition;

	// Read by the thread's own signal handler, so lock-free.
	std::atomic<int> fLayerDepth{0};
	std::atomic<bool> fSuspendWanted{false};
	std::atomic<bool> fExiting{false};
	sem_t fResume;
	sem_t fParked;
};


ThreadRecord::ThreadRecord()
{
	sem_init(&fResume, 0, 0);
	sem_init(&fParked, 0, 0);
}


ThreadRecord::~ThreadRecord()
{
	sem_destroy(&fResume);
	sem_destroy(&fParked);
}


typedef std::shared_ptr<ThreadRecord> RecordRef;

struct Registry {
	Registry();

	std::mutex fLock;
	std::map<thread_id, RecordRef> fThreads;
	// Finished threads nobody has waited for, oldest first.
	std::list<thread_id> fFinished;
	int32 fFinishedLimit = kDefaultFinishedLimit;
	thread_id fNextId = 1;
	int fSuspendSignal = 0;
};


// The calling thread's record, if it has one. Read by the signal handler.
thread_local ThreadRecord* sSelf = nullptr;

void SuspendHandler(int);


Registry::Registry()
{
	fSuspendSignal = SIGRTMIN + 4;
	struct sigaction action;
	memset(&action, 0, sizeof(action));
	action.sa_handler = SuspendHandler;
	sigemptyset(&action.sa_mask);
	action.sa_flags = SA_RESTART;
	sigaction(fSuspendSignal, &action, nullptr);
}


// Never destroyed: threads may still use it while the process exits.
Registry&
TheRegistry()
{
	static Registry* registry = new Registry;
	return *registry;
}


// Stops the calling thread until its suspension is lifted. Runs inside the
// signal handler, so only async-signal-safe calls.
void
Park(ThreadRecord* self)
{
	if (!self->fSuspendWanted.load())
		return;
	sem_post(&self->fParked);
	// resume_thread may post before the thread got here; a stale count only
	// makes this loop check the flag once more.
	while (self->fSuspendWanted.load()) {
		while (sem_wait(&self->fResume) != 0 && errno == EINTR) {
		}
	}
}


void
SuspendHandler(int)
{
	int savedErrno = errno;
	ThreadRecord* self = sSelf;
	if (self != nullptr && self->fLayerDepth.load() == 0 && !self->fExiting.load())
		Park(self);
	errno = savedErrno;
}


// Holds the registry mutex and marks the calling thread as inside the layer:
// a suspension that arrives meanwhile takes effect when the lock is left.
class LayerLock
{
public:
	LayerLock() : fSelf(sSelf)
	{
		if (fSelf != nullptr)
			fSelf->fLayerDepth++;
		fLock = std::unique_lock<std::mutex>(TheRegistry().fLock);
	}

	~LayerLock()
	{
		if (fLock.owns_lock())
			fLock.unlock();
		if (fSelf != nullptr && --fSelf->fLayerDepth == 0 && !fSelf->fExiting.load())
			Park(fSelf);
	}

	LayerLock(const LayerLock&) = delete;
	LayerLock& operator=(const LayerLock&) = delete;

	std::unique_lock<std::mutex>& Lock() { return fLock; }
	void Unlock() { fLock.unlock(); }

private:
	ThreadRecord* fSelf;
	std::unique_lock<std::mutex> fLock;
};


RecordRef
FindLocked(thread_id id)
{
	Registry& registry = TheRegistry();
	auto found = registry.fThreads.find(id);
	if (found == registry.fThreads.end())
		return RecordRef();
	return found->second;
}


void
UnregisterLocked(ThreadRecord* record)
{
	Registry& registry = TheRegistry();
	if (!record->fRegistered)
		return;
	registry.fThreads.erase(record->fId);
	record->fRegistered = false;
	if (record->fInFinishedList) {
		registry.fFinished.erase(record->fFinishedPosition);
		record->fInFinishedList = false;
	}
}


// Below normal priority a thread gets a higher nice value, 2 per step; normal
// and above go back to the nice value the thread started with, which needs no
// privilege only when it was raised by us (failures are ignored on purpose).
void
ApplyNiceLocked(ThreadRecord* record)
{
	if (record->fTid == 0 || record->fFinished)
		return;
	if (record->fPriority < B_NORMAL_PRIORITY) {
		int nice = record->fBaseNice + (B_NORMAL_PRIORITY - record->fPriority) * 2;
		if (nice > 19)
			nice = 19;
		if (setpriority(PRIO_PROCESS, static_cast<id_t>(record->fTid), nice) == 0)
			record->fNiceLowered = true;
	} else if (record->fNiceLowered) {
		setpriority(PRIO_PROCESS, static_cast<id_t>(record->fTid), record->fBaseNice);
		record->fNiceLowered = false;
	}
}


void
StartLocked(ThreadRecord* record)
{
	record->fStarted = true;
	record->fCondition.notify_all();
}


// Ends the calling thread, which has been killed, at one of the layer's
// blocking points. pthread_exit unwinds the thread's stack, so the body's
// destructors run and its locks held by RAII objects are released.
[[noreturn]] void
ExitKilled(ThreadRecord* self, LayerLock& layer)
{
	self->fExiting = true;
	layer.Unlock();
	pthread_exit(nullptr);
}


// The calling thread's record, made on demand for threads that spawn_thread
// did not create (the main thread, std::thread). Removed when the thread ends.
struct OnDemandRecord {
	~OnDemandRecord()
	{
		if (!fRecord)
			return;
		{
			std::lock_guard<std::mutex> lock(TheRegistry().fLock);
			UnregisterLocked(fRecord.get());
		}
		sSelf = nullptr;
		std::atomic_signal_fence(std::memory_order_seq_cst);
	}

	RecordRef fRecord;
};

thread_local OnDemandRecord sOnDemand;


ThreadRecord*
SelfLocked()
{
	if (sSelf != nullptr)
		return sSelf;
	Registry& registry = TheRegistry();
	if (registry.fNextId == INT32_MAX)
		return nullptr;
	RecordRef record(new (std::nothrow) ThreadRecord);
	if (!record)
		return nullptr;
	record->fId = registry.fNextId++;
	pthread_getname_np(pthread_self(), record->fName, sizeof(record->fName));
	record->fHandle = pthread_self();
	record->fTid = gettid();
	errno = 0;
	int nice = getpriority(PRIO_PROCESS, 0);
	record->fBaseNice = errno == 0 ? nice : 0;
	record->fStarted = true;
	record->fRegistered = true;
	registry.fThreads[record->fId] = record;
	sOnDemand.fRecord = record;
	sSelf = record.get();
	return sSelf;
}


void
FinishSelf(ThreadRecord* self, int32 exitValue)
{
	LayerLock layer;
	// From here on the thread no longer stops for a suspension: it is done.
	self->fExiting = true;
	self->fFinished = true;
	self->fExitValue = exitValue;
	self->fCondition.notify_all();
	if (!self->fRegistered)
		return;

	Registry& registry = TheRegistry();
	registry.fFinished.push_back(self->fId);
	self->fFinishedPosition = std::prev(registry.fFinished.end());
	self->fInFinishedList = true;
	while (static_cast<int32>(registry.fFinished.size()) > registry.fFinishedLimit) {
		RecordRef oldest = FindLocked(registry.fFinished.front());
		if (oldest)
			UnregisterLocked(oldest.get());
		else
			registry.fFinished.pop_front();
	}
}


// Clears the thread's own record pointer before the record may go away, so
// that a late suspension signal finds no record.
struct SelfReset {
	~SelfReset()
	{
		sSelf = nullptr;
		std::atomic_signal_fence(std::memory_order_seq_cst);
	}
};


void*
ThreadEntry(void* argument)
{
	RecordRef* passed = static_cast<RecordRef*>(argument);
	RecordRef record(std::move(*passed));
	delete passed;
	sSelf = record.get();
	SelfReset selfReset;

	char shortName[16];
	strncpy(shortName, record->fName, sizeof(shortName) - 1);
	shortName[sizeof(shortName) - 1] = '\0';
	pthread_setname_np(pthread_self(), shortName);

	pthread_attr_t attributes;
	if (pthread_getattr_np(pthread_self(), &attributes) == 0) {
		void* stack = nullptr;
		size_t size = 0;
		if (pthread_attr_getstack(&attributes, &stack, &size) == 0) {
			record->fStackBase = stack;
			record->fStackEnd = static_cast<char*>(stack) + size;
		}
		pthread_attr_destroy(&attributes);
	}

	{
		// The start gate: the thread stays here until resumed, waited for or
		// killed.
		LayerLock layer;
		record->fTid = gettid();
		errno = 0;
		int nice = getpriority(PRIO_PROCESS, 0);
		record->fBaseNice = errno == 0 ? nice : 0;
		ApplyNiceLocked(record.get());
		while (!record->fStarted && !record->fKilled)
			record->fCondition.wait(layer.Lock());
		if (record->fKilled) {
			record->fExiting = true;
			return nullptr;
		}
	}

	int32 exitValue = record->fFunc(record->fData);
	FinishSelf(record.get(), exitValue);
	return nullptr;
}


int32
ClampPriority(int32 priority)
{
	if (priority < 1)
		return 1;
	if (priority > B_REAL_TIME_PRIORITY)
		return B_REAL_TIME_PRIORITY;
	return priority;
}


// State, user and kernel time of a thread as the kernel shows them.
bool
ReadKernelState(pid_t tid, char* state, bigtime_t* userTime, bigtime_t* kernelTime)
{
	char path[64];
	snprintf(path, sizeof(path), "/proc/self/task/%d/stat", static_cast<int>(tid));
	int fd = open(path, O_RDONLY | O_CLOEXEC);
	if (fd < 0)
		return false;
	char buffer[512];
	ssize_t length = read(fd, buffer, sizeof(buffer) - 1);
	close(fd);
	if (length <= 0)
		return false;
	buffer[length] = '\0';
	// The command name may hold spaces and parentheses: fields start after
	// the last ')'.
	char* fields = strrchr(buffer, ')');
	if (fields == nullptr || fields[1] != ' ' || fields[2] == '\0')
		return false;
	*state = fields[2];

	unsigned long long user = 0;
	unsigned long long system = 0;
	if (sscanf(fields + 3, " %*d %*d %*d %*d %*d %*u %*u %*u %*u %*u %llu %llu", &user, &system) ==
	    2) {
		long ticks = sysconf(_SC_CLK_TCK);
		if (ticks > 0) {
			*userTime = static_cast<bigtime_t>(user) * 1000000 / ticks;
			*kernelTime = static_cast<bigtime_t>(system) * 1000000 / ticks;
		}
	}
	return true;
}


bool
IsCallingThread(const ThreadRecord* record)
{
	return record == sSelf;
}

} // namespace


void
platform_set_finished_thread_limit(int32 limit)
{
	std::lock_guard<std::mutex> lock(TheRegistry().fLock);
	TheRegistry().fFinishedLimit = limit > 0 ? limit : kDefaultFinishedLimit;
}


thread_id
spawn_thread(thread_func func, const char* name, int32 priority, void* data)
{
	if (func == nullptr)
		return B_BAD_VALUE;

	RecordRef record(new (std::nothrow) ThreadRecord);
	if (!record)
		return B_NO_MEMORY;
	record->fFunc = func;
	record->fData = data;
	record->fSpawned = true;
	record->fPriority = ClampPriority(priority);
	if (name != nullptr) {
		strncpy(record->fName, name, sizeof(record->fName) - 1);
		record->fName[sizeof(record->fName) - 1] = '\0';
	}

	{
		LayerLock layer;
		Registry& registry = TheRegistry();
		if (registry.fNextId == INT32_MAX)
			return B_NO_MORE_THREADS;
		record->fId = registry.fNextId++;
	}

	pthread_attr_t attributes;
	pthread_attr_init(&attributes);
	pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
	RecordRef* passed = new (std::nothrow) RecordRef(record);
	if (passed == nullptr) {
		pthread_attr_destroy(&attributes);
		return B_NO_MEMORY;
	}
	pthread_t handle;
	int error = pthread_create(&handle, &attributes, ThreadEntry, passed);
	pthread_attr_destroy(&attributes);
	if (error != 0) {
		delete passed;
		return error == EAGAIN ? B_NO_MORE_THREADS : StatusFromErrno(error);
	}

	// The id becomes known only now, so nobody signals a thread whose handle
	// is not yet stored.
	LayerLock layer;
	record->fHandle = handle;
	record->fRegistered = true;
	TheRegistry().fThreads[record->fId] = record;
	return record->fId;
}


status_t
resume_thread(thread_id thread)
{
	LayerLock layer;
	RecordRef record = FindLocked(thread);
	if (!record)
		return B_BAD_THREAD_ID;
	if (!record->fStarted) {
		StartLocked(record.get());
		return B_OK;
	}
	if (record->fSuspendWanted.exchange(false)) {
		sem_post(&record->fResume);
		if (record->fFinished)
			return B_BAD_THREAD_STATE;
		return B_OK;
	}
	return B_BAD_THREAD_STATE;
}


status_t
suspend_thread(thread_id thread)
{
	RecordRef record;
	{
		LayerLock layer;
		record = FindLocked(thread);
		if (!record)
			return B_BAD_THREAD_ID;
		if (record->fFinished)
			return B_BAD_THREAD_STATE;
		// A thread at its start gate is suspended already.
		if (!record->fStarted || record->fSuspendWanted.load())
			return B_OK;
		while (sem_trywait(&record->fParked) == 0) {
		}
		record->fSuspendWanted = true;
		// The caller itself stops when it leaves this call.
		if (IsCallingThread(record.get()))
			return B_OK;
		// Signalled under the lock: the thread cannot have ended meanwhile.
		pthread_kill(record->fHandle, TheRegistry().fSuspendSignal);
		if (record->fBlocking != kNotBlocked)
			return B_OK;
	}

	// Return only when the thread has stopped, so that it is stopped "at
	// once" for the caller. A thread that blocks in this layer instead stops
	// when it leaves the blocking call. Gives up after about a second.
	for (int slice = 0; slice < 200; slice++) {
		struct timespec until;
		clock_gettime(CLOCK_MONOTONIC, &until);
		until.tv_nsec += 5000000;
		if (until.tv_nsec >= 1000000000) {
			until.tv_sec++;
			until.tv_nsec -= 1000000000;
		}
		if (sem_clockwait(&record->fParked, CLOCK_MONOTONIC, &until) == 0)
			return B_OK;
		LayerLock layer;
		if (record->fFinished || record->fKilled || !record->fSuspendWanted.load() ||
		    record->fBlocking != kNotBlocked)
			return B_OK;
	}
	return B_OK;
}


status_t
kill_thread(thread_id thread)
{
	LayerLock layer;
	RecordRef record = FindLocked(thread);
	if (!record || record->fFinished)
		return B_BAD_THREAD_ID;
	if (!record->fSpawned)
		return B_NOT_ALLOWED;
	UnregisterLocked(record.get());
	record->fKilled = true;
	record->fCondition.notify_all();
	if (record->fBlockedOn != nullptr)
		record->fBlockedOn->notify_all();
	return B_OK;
}


status_t
wait_for_thread(thread_id thread, status_t* exitValue)
{
	ThreadRecord* self = sSelf;
	LayerLock layer;
	RecordRef target = FindLocked(thread);
	if (!target)
		return B_BAD_THREAD_ID;
	if (target.get() == self || !target->fSpawned)
		return B_NOT_ALLOWED;
	if (!target->fStarted)
		StartLocked(target.get());

	if (self != nullptr) {
		if (self->fKilled) {
			if (self->fExiting)
				return B_INTERRUPTED;
			ExitKilled(self, layer);
		}
		self->fBlocking = kWaiting;
		self->fBlockedOn = &target->fCondition;
	}
	while (!target->fFinished && !target->fKilled && !(self != nullptr && self->fKilled))
		target->fCondition.wait(layer.Lock());
	if (self != nullptr) {
		self->fBlocking = kNotBlocked;
		self->fBlockedOn = nullptr;
		if (self->fKilled) {
			if (self->fExiting)
				return B_INTERRUPTED;
			ExitKilled(self, layer);
		}
	}
	if (target->fKilled)
		return B_BAD_THREAD_ID;
	if (exitValue != nullptr)
		*exitValue = target->fExitValue;
	UnregisterLocked(target.get());
	return B_OK;
}


status_t
get_thread_info(thread_id thread, thread_info* info)
{
	if (info == nullptr)
		return B_BAD_VALUE;

	bool askKernel = false;
	pid_t tid = 0;
	{
		LayerLock layer;
		RecordRef record = FindLocked(thread);
		if (!record)
			return B_BAD_THREAD_ID;
		memset(info, 0, sizeof(*info));
		info->thread = record->fId;
		info->team = getpid();
		memcpy(info->name, record->fName, sizeof(info->name));
		info->priority = record->fPriority;
		info->sem = -1;
		info->stack_base = record->fStackBase;
		info->stack_end = record->fStackEnd;
		tid = record->fTid;

		if (record->fFinished)
			info->state = B_THREAD_WAITING;
		else if (!record->fStarted || record->fSuspendWanted.load())
			info->state = B_THREAD_SUSPENDED;
		else if (record->fBlocking == kAsleep)
			info->state = B_THREAD_ASLEEP;
		else if (record->fBlocking == kWaiting)
			info->state = B_THREAD_WAITING;
		else if (IsCallingThread(record.get()) || record->fLayerDepth.load() > 0) {
			// Inside a short call of this layer it may wait for the registry
			// lock, which is not a wait of its own.
			info->state = B_THREAD_RUNNING;
		} else {
			info->state = B_THREAD_RUNNING;
			askKernel = true;
		}
		if (record->fFinished)
			tid = 0;
	}

	if (tid != 0) {
		char kernelState = 'R';
		bigtime_t userTime = 0;
		bigtime_t kernelTime = 0;
		if (ReadKernelState(tid, &kernelState, &userTime, &kernelTime)) {
			info->user_time = userTime;
			info->kernel_time = kernelTime;
			if (askKernel && kernelState != 'R')
				info->state = kernelState == 'T' || kernelState == 't' ? B_THREAD_SUSPENDED
				                                                       : B_THREAD_WAITING;
		}
	}
	return B_OK;
}


status_t
set_thread_priority(thread_id thread, int32 newPriority)
{
	LayerLock layer;
	RecordRef record = FindLocked(thread);
	if (!record)
		return B_BAD_THREAD_ID;
	int32 old = record->fPriority;
	record->fPriority = ClampPriority(newPriority);
	ApplyNiceLocked(record.get());
	return old;
}


thread_id
find_thread(const char* name)
{
	LayerLock layer;
	if (name == nullptr) {
		ThreadRecord* self = SelfLocked();
		return self != nullptr ? self->fId : B_NO_MORE_THREADS;
	}
	for (const auto& entry : TheRegistry().fThreads) {
		const ThreadRecord* record = entry.second.get();
		if (!record->fFinished && strncmp(record->fName, name, B_OS_NAME_LENGTH) == 0)
			return record->fId;
	}
	return B_NAME_NOT_FOUND;
}


status_t
snooze(bigtime_t microseconds)
{
	if (microseconds <= 0) {
		sched_yield();
		return B_OK;
	}
	if (microseconds > kForever)
		microseconds = kForever;

	ThreadRecord* self = sSelf;
	if (self == nullptr) {
		// A thread unknown to the registry: nobody can kill it or ask its
		// state, so a plain sleep will do.
		struct timespec until;
		clock_gettime(CLOCK_MONOTONIC, &until);
		until.tv_sec += static_cast<time_t>(microseconds / 1000000);
		until.tv_nsec += static_cast<long>(microseconds % 1000000) * 1000;
		if (until.tv_nsec >= 1000000000) {
			until.tv_sec++;
			until.tv_nsec -= 1000000000;
		}
		while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr) == EINTR) {
		}
		return B_OK;
	}

	auto deadline = std::chrono::steady_clock::now() + std::chrono::microseconds(microseconds);
	LayerLock layer;
	if (self->fKilled) {
		if (self->fExiting)
			return B_INTERRUPTED;
		ExitKilled(self, layer);
	}
	self->fBlocking = kAsleep;
	self->fBlockedOn = &self->fCondition;
	while (!self->fKilled && std::chrono::steady_clock::now() < deadline)
		self->fCondition.wait_until(layer.Lock(), deadline);
	self->fBlocking = kNotBlocked;
	self->fBlockedOn = nullptr;
	if (self->fKilled) {
		if (self->fExiting)
			return B_INTERRUPTED;
		ExitKilled(self, layer);
	}
	return B_OK;
}


bigtime_t
system_time()
{
	struct timespec now;
	clock_gettime(CLOCK_MONOTONIC, &now);
	return static_cast<bigtime_t>(now.tv_sec) * 1000000 + now.tv_nsec / 1000;
}
