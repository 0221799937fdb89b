#include "engine/WhetstoneThread.h"

#include <cstdio>

#include "engine/Whetstone.h"


WhetstoneThread::WhetstoneThread() : fLoops(0), fThread(0)
{
}


WhetstoneThread::~WhetstoneThread()
{
}


thread_id
WhetstoneThread::Go(const long& passes, const long& number)
{
	fLoops = static_cast<int32>(passes);

	char name[B_OS_NAME_LENGTH];
	snprintf(name, sizeof(name), "WhetstoneThread_%d", static_cast<int>(number));
	fThread = spawn_thread(&WhetstoneThread::DoStaticWhetstone, name, 100, this);
	return fThread;
}


int32
WhetstoneThread::DoStaticWhetstone(void* self)
{
	return static_cast<WhetstoneThread*>(self)->DoWhetstone();
}


int32
WhetstoneThread::DoWhetstone()
{
	// Each thread has its own kernel on its own stack: the ten threads share
	// nothing but the object's pass count, which they only read.
	Whetstone whetstone;
	whetstone.Run(fLoops);
	return 0;
}
