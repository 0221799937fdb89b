// Runs one Whetstone kernel on a thread of its own, for the test that starts
// ten kernels at once.
#ifndef WHETSTONE_THREAD_H
#define WHETSTONE_THREAD_H

#include <OS.h>

class WhetstoneThread
{
public:
	WhetstoneThread();
	virtual ~WhetstoneThread();

	// Spawns "WhetstoneThread_<number>" at priority 100 to run passes passes
	// of the kernel and answers its id. The thread is left suspended: the
	// caller resumes it when its timer runs.
	thread_id Go(const long& passes, const long& number);

	static int32 DoStaticWhetstone(void* self);
	// The thread's body; answers its exit code, 0.
	int32 DoWhetstone();

private:
	int32 fLoops;
	thread_id fThread;
};

#endif // WHETSTONE_THREAD_H
