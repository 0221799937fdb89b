#include "app/AnimateCursor.h"

#include <cstring>

#include <Application.h>


AnimateCursor::AnimateCursor(const char* threadName, int32 frames)
    : fInterval(0.1f), fFrames(frames > 0 ? frames : 0), fCursors(nullptr), fThread(-1)
{
	memset(fThreadName, 0, sizeof(fThreadName));
	if (threadName != nullptr)
		strncpy(fThreadName, threadName, sizeof(fThreadName) - 1);
	fCursors = new unsigned char*[fFrames];
	for (int32 i = 0; i < fFrames; i++) {
		fCursors[i] = new unsigned char[kCursorSize];
		memset(fCursors[i], 0, kCursorSize);
	}
}


AnimateCursor::~AnimateCursor()
{
	if (fThread >= 0)
		kill_thread(fThread);
	for (int32 i = 0; i < fFrames; i++)
		delete[] fCursors[i];
	delete[] fCursors;
}


void
AnimateCursor::SetCursor(const long& frame, const unsigned char* image)
{
	if (frame < 0 || frame >= fFrames || image == nullptr)
		return;
	memcpy(fCursors[frame], image, kCursorSize);
}


const unsigned char*
AnimateCursor::Frame(int32 frame) const
{
	return frame >= 0 && frame < fFrames ? fCursors[frame] : nullptr;
}


void
AnimateCursor::Run(float interval)
{
	if (fThreadName[0] == '\0')
		return;
	if (interval > 0)
		fInterval = interval;
	// A second start while one thread spins (a second run started during a
	// run) replaces that thread: only the newest is known to Quit, and one
	// left spinning would keep the pointer busy for good.
	if (fThread >= 0)
		kill_thread(fThread);
	fThread = spawn_thread(Animate, fThreadName, 5, this);
	resume_thread(fThread);
}


int32
AnimateCursor::Animate(void* data)
{
	AnimateCursor* self = static_cast<AnimateCursor*>(data);
	// Runs until Quit kills it, which happens inside snooze.
	while (true) {
		for (int32 i = 0; i < self->fFrames; i++) {
			if (self->fCursors[i] != nullptr)
				be_app->SetCursor(self->fCursors[i]);
			snooze(static_cast<bigtime_t>(self->fInterval * 1000000));
		}
		if (self->fFrames == 0)
			snooze(static_cast<bigtime_t>(self->fInterval * 1000000));
	}
	return 0;
}


void
AnimateCursor::Quit()
{
	kill_thread(fThread);
	fThread = -1;
	be_app->SetCursor(B_HAND_CURSOR);
}


void
AnimateCursor::Suspend()
{
	if (IsRunning()) {
		suspend_thread(fThread);
		be_app->SetCursor(B_HAND_CURSOR);
	}
}


void
AnimateCursor::Resume(float interval)
{
	if (interval > 0)
		fInterval = interval;
	if (!IsRunning())
		resume_thread(fThread);
}


bool
AnimateCursor::IsRunning()
{
	thread_info info;
	if (fThread < 0 || get_thread_info(fThread, &info) != B_OK)
		return false;
	return info.state == B_THREAD_RUNNING || info.state == B_THREAD_ASLEEP ||
	       info.state == B_THREAD_READY || info.state == B_THREAD_WAITING;
}
