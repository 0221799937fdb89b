// Holds a looper's lock for the life of a scope.
#ifndef AUTOLOCK_H
#define AUTOLOCK_H

#include "Looper.h"

class BAutolock
{
public:
	explicit BAutolock(BLooper* looper)
	    : fLooper(looper), fLocked(looper != nullptr && looper->Lock())
	{
	}
	explicit BAutolock(BLooper& looper) : BAutolock(&looper) {}
	~BAutolock()
	{
		if (fLocked)
			fLooper->Unlock();
	}

	BAutolock(const BAutolock&) = delete;
	BAutolock& operator=(const BAutolock&) = delete;

	bool IsLocked() const { return fLocked; }

private:
	BLooper* fLooper;
	bool fLocked;
};

#endif // AUTOLOCK_H
