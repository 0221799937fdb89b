// Creates and deletes a numbered series of empty files, on a thread of its
// own, for the disk life-cycle test.
#ifndef FILE_LIFE_H
#define FILE_LIFE_H

#include <OS.h>

#include "lib/LibString.h"

class FileLife
{
public:
	FileLife();
	virtual ~FileLife();

	// File names are "<prefix>.<index>".
	void SetPathPrefix(const char* prefix);
	// Both bounds inclusive; first greater than last means no file.
	void SetIndexRange(const long& first, const long& last);

	// Mode 1 spawns "CreateThread", any other mode "RemoveThread", at priority
	// 100, and answers its id. The thread is not resumed: the caller's
	// wait_for_thread starts it, inside the caller's timed interval.
	thread_id Go(const int& mode);

	static int32 CreateThread(void* self);
	static int32 RemoveThread(void* self);

	// The same work on the calling thread.
	void Create();
	void Remove();

private:
	thread_id fThread;
	int32 fFirst;
	int32 fLast;
	LibString fPathPrefix;
};

#endif // FILE_LIFE_H
