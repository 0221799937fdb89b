// The application: one per process, made on the main thread, which becomes
// the interface thread (FLTK's). Run runs FLTK's loop there until Quit; the
// application's own messages and every window's are dispatched on it, all
// under FLTK's global lock (be_app->Lock() is that lock too).
//
// Messages reach the interface thread through a queue of our own and one
// coalesced wake-up at a time (plus a 100 ms backup timer), so bursts from
// other threads arrive complete and in order, also while a modal alert runs.
//
// Call platform_display_available() before anything else: without a display
// FLTK ends the process as soon as a window or font is touched.
#ifndef APPLICATION_H
#define APPLICATION_H

#include <vector>

#include "Looper.h"
#include "Messenger.h"
#include "StorageDefs.h"

class BBitmap;
class BWindow;

struct app_info {
	thread_id thread;
	uint32 flags;
	// The executable.
	entry_ref ref;
	char signature[256];
};

// 68-byte cursor of the pointing hand (the system's default pointer).
extern const unsigned char B_HAND_CURSOR[];

class BApplication : public BLooper
{
public:
	// The arguments of the process are read from /proc/self/cmdline and handed
	// to ArgvReceived when Run starts (only when there is more than one).
	explicit BApplication(const char* signature);
	~BApplication() override;

	// Runs the interface loop on the calling (main) thread: ArgvReceived,
	// ReadyToRun, then messages until Quit. Answers the thread's id.
	thread_id Run() override;
	// Ends Run; the application object stays (main deletes it).
	void Quit() override;
	// Asks every window (QuitRequested, on this thread) and quits those that
	// agree; true when all agreed.
	bool QuitRequested() override;
	void MessageReceived(BMessage* message) override;
	void DispatchMessage(BMessage* message, BHandler* handler) override;
	virtual void ArgvReceived(int32 argc, char** argv);
	virtual void ReadyToRun();
	virtual void AboutRequested();

	status_t GetAppInfo(app_info* info) const;
	const char* Signature() const;

	int32 CountWindows() const;
	BWindow* WindowAt(int32 index) const;

	// cursor is 68 bytes in the BeOS format (size 16, depth 1, hot spot y and
	// x, 32 bytes of image, 32 of mask); B_HAND_CURSOR is the default pointer.
	// Any thread; it applies to every window.
	void SetCursor(const void* cursor);
	void HideCursor();
	void ShowCursor();

private:
	friend class BWindow;

	static bool DrainQueue(BLooper* looper);
	void MessageQueued() override;
	void AddWindow(BWindow* window);
	void RemoveWindow(BWindow* window);

	char fSignature[256];
	std::vector<BWindow*> fWindows;
	bool fRunning;
	bool fQuitting;
	int fArgc;
	std::vector<char*> fArgv;
	std::vector<char> fArgBuffer;
	unsigned char fCursor[68];
	bool fDefaultCursor;
};

extern BApplication* be_app;
// Aimed at be_app once it exists.
extern BMessenger be_app_messenger;

// Whether an X display can be opened (the DISPLAY variable names a server
// that answers). Also prepares Xlib for threads; call it first in main.
bool platform_display_available();

// How every window of the program presents itself to the desktop: the
// WM_CLASS instance name (the class name is the same with a capital first
// letter), and the icon of task bars and window lists, a B_CMAP8 or B_RGB32
// bitmap that is copied and offered at its own size and at two and three
// times it. Set both before the first window is shown; null icon: none.
void platform_set_window_class(const char* name);
void platform_set_window_icon(const BBitmap* icon);

#endif // APPLICATION_H
