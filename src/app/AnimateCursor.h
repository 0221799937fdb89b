// The busy pointer: a thread that shows a series of cursor images in turn
// while a run is in progress.
#ifndef ANIMATE_CURSOR_H
#define ANIMATE_CURSOR_H

#include <OS.h>
#include <SupportDefs.h>

class AnimateCursor
{
public:
	// The platform's cursor format: size, depth, hot spot, 32 bytes of image
	// and 32 bytes of mask.
	static constexpr int32 kCursorSize = 68;

	AnimateCursor(const char* threadName, int32 frames);
	virtual ~AnimateCursor();

	// Copies one frame's image; an index past the last frame does nothing.
	void SetCursor(const long& frame, const unsigned char* image);
	// Starts the animation thread; an interval above 0 (seconds) replaces the
	// one in use.
	void Run(float interval);
	// Ends the thread and puts the ordinary hand pointer back.
	void Quit();
	void Suspend();
	void Resume(float interval);
	bool IsRunning();

	int32 Frames() const { return fFrames; }
	float Interval() const { return fInterval; }
	const unsigned char* Frame(int32 frame) const;
	thread_id Thread() const { return fThread; }

private:
	AnimateCursor(const AnimateCursor&) = delete;
	AnimateCursor& operator=(const AnimateCursor&) = delete;

	static int32 Animate(void* data);

	float fInterval;
	int32 fFrames;
	unsigned char** fCursors;
	thread_id fThread;
	char fThreadName[36];
};

#endif // ANIMATE_CURSOR_H
