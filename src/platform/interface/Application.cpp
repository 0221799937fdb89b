#include "Application.h"

#include <FL/Fl.H>
#include <FL/Fl_RGB_Image.H>
#include <FL/Fl_Window.H>
#include <FL/x.H>
#include <X11/Xlib.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

#include "AppDefs.h"
#include "AppFileInfo.h"
#include "Message.h"
#include "Path.h"
#include "Window.h"
#include "interface/UIThread.h"
#include "interface/Widgets.h"

BApplication* be_app = nullptr;
BMessenger be_app_messenger;

// An arrow: hot spot at the tip (row 0, column 0).
const unsigned char B_HAND_CURSOR[68] = {
    16, 1, 0, 0,
    // image
    0x80, 0x00, 0xc0, 0x00, 0xa0, 0x00, 0x90, 0x00, 0x88, 0x00, 0x84, 0x00, 0x82, 0x00, 0x81, 0x00,
    0x83, 0x80, 0x92, 0x00, 0xa9, 0x00, 0xc9, 0x00, 0x04, 0x80, 0x04, 0x80, 0x03, 0x00, 0x00, 0x00,
    // mask
    0x80, 0x00, 0xc0, 0x00, 0xe0, 0x00, 0xf0, 0x00, 0xf8, 0x00, 0xfc, 0x00, 0xfe, 0x00, 0xff, 0x00,
    0xff, 0x80, 0xfe, 0x00, 0xef, 0x00, 0xcf, 0x00, 0x07, 0x80, 0x07, 0x80, 0x03, 0x00, 0x00, 0x00};


namespace {

// The display went away (its server ended, the connection broke) under any
// of the process's connections. Other threads may be drawing or waiting for
// the interface thread, which will never answer again: the process ends at
// once, without the exit handlers that would wait for them.
int
DisplayLost(Display*)
{
	static const char kLost[] = ": the connection to the X display was lost\n";
	const char* name = program_invocation_short_name;
	ssize_t written = write(STDERR_FILENO, name, strlen(name));
	written = write(STDERR_FILENO, kLost, sizeof(kLost) - 1);
	(void)written;
	_exit(1);
}


// A request the server refused: a thread's drawing that met its window
// already gone, say. Xlib's own handler would end the process; this one
// names the first few and goes on.
int
RequestFailed(Display* display, XErrorEvent* error)
{
	static std::atomic<int> sReported(0);
	if (sReported++ < 5) {
		char text[128] = "";
		XGetErrorText(display, error->error_code, text, sizeof(text));
		fprintf(stderr, "%s: X request %d failed: %s\n", program_invocation_short_name,
		        error->request_code, text);
	}
	return 0;
}

} // namespace


bool
platform_display_available()
{
	static bool sThreadsReady = false;
	if (!sThreadsReady) {
		XInitThreads();
		sThreadsReady = true;
	}
	Display* display = XOpenDisplay(nullptr);
	if (display == nullptr)
		return false;
	XCloseDisplay(display);
	return true;
}


BApplication::BApplication(const char* signature)
    : BLooper(signature), fRunning(false), fQuitting(false), fArgc(0), fDefaultCursor(true)
{
	strncpy(fSignature, signature != nullptr ? signature : "", sizeof(fSignature) - 1);
	fSignature[sizeof(fSignature) - 1] = '\0';
	memcpy(fCursor, B_HAND_CURSOR, sizeof(fCursor));
	be_app = this;

	platform_display_available();
	platform_interface::BecomeUIThread();
	SetLock(std::make_shared<platform_interface::UILock>());
	// FLTK ends the process when it cannot open the display itself: it is
	// handed the connection opened here, when there is one (tests that
	// record drawing run without).
	Display* display = XOpenDisplay(nullptr);
	if (display != nullptr) {
		fl_open_display(display);
		XSetIOErrorHandler(DisplayLost);
		XSetErrorHandler(RequestFailed);
	}
	platform_interface::RegisterLooper(this, &BApplication::DrainQueue);
	be_app_messenger = BMessenger(this);

	FILE* file = fopen("/proc/self/cmdline", "rb");
	if (file != nullptr) {
		char buffer[4096];
		size_t length;
		while ((length = fread(buffer, 1, sizeof(buffer), file)) > 0)
			fArgBuffer.insert(fArgBuffer.end(), buffer, buffer + length);
		fclose(file);
	}
	if (!fArgBuffer.empty() && fArgBuffer.back() != '\0')
		fArgBuffer.push_back('\0');
	for (size_t start = 0; start < fArgBuffer.size();) {
		fArgv.push_back(&fArgBuffer[start]);
		start += strlen(&fArgBuffer[start]) + 1;
	}
	fArgc = static_cast<int>(fArgv.size());
	fArgv.push_back(nullptr);
}


BApplication::~BApplication()
{
	std::vector<BWindow*> windows = fWindows;
	for (BWindow* window : windows) {
		if (std::find(fWindows.begin(), fWindows.end(), window) == fWindows.end())
			continue;
		window->Lock();
		window->Quit();
	}
	platform_interface::UnregisterLooper(this);
	if (be_app == this) {
		be_app = nullptr;
		be_app_messenger = BMessenger();
	}
}


bool
BApplication::DrainQueue(BLooper* looper)
{
	BApplication* application = static_cast<BApplication*>(looper);
	while (application->HasQueuedMessages()) {
		if (!application->DispatchNextMessage())
			return false;
	}
	return true;
}


void
BApplication::MessageQueued()
{
	platform_interface::LooperHasMessages(this);
}


thread_id
BApplication::Run()
{
	if (fRunning)
		return B_ALREADY_RUNNING;
	fRunning = true;
	fQuitting = false;
	platform_interface::StartBackupTimer();
	if (fArgc > 1)
		ArgvReceived(fArgc, fArgv.data());
	if (!fQuitting)
		ReadyToRun();
	platform_interface::DrainNow();
	while (!fQuitting)
		Fl::wait(1.0);
	fRunning = false;
	return platform_interface::UIThreadId();
}


void
BApplication::Quit()
{
	fQuitting = true;
	platform_interface::WakeUI();
}


bool
BApplication::QuitRequested()
{
	std::vector<BWindow*> windows = fWindows;
	for (BWindow* window : windows) {
		if (std::find(fWindows.begin(), fWindows.end(), window) == fWindows.end())
			continue;
		if (!window->Lock())
			continue;
		if (!window->QuitRequested()) {
			window->Unlock();
			return false;
		}
		window->Quit();
	}
	return true;
}


void
BApplication::DispatchMessage(BMessage* message, BHandler* handler)
{
	if (handler == this) {
		switch (message->what) {
			case B_ABOUT_REQUESTED:
				AboutRequested();
				return;
			case B_READY_TO_RUN:
				ReadyToRun();
				return;
			default:
				break;
		}
	}
	BLooper::DispatchMessage(message, handler);
}


void
BApplication::MessageReceived(BMessage* message)
{
	BLooper::MessageReceived(message);
}


void
BApplication::ArgvReceived(int32 argc, char** argv)
{
	(void)argc;
	(void)argv;
}


void
BApplication::ReadyToRun()
{
}


void
BApplication::AboutRequested()
{
}


status_t
BApplication::GetAppInfo(app_info* info) const
{
	if (info == nullptr)
		return B_BAD_VALUE;
	BPath path;
	status_t status = get_app_path(&path);
	if (status != B_OK)
		return status;
	info->thread = platform_interface::UIThreadId();
	info->flags = 0;
	info->ref = entry_ref(path.Path());
	strncpy(info->signature, fSignature, sizeof(info->signature) - 1);
	info->signature[sizeof(info->signature) - 1] = '\0';
	return B_OK;
}


const char*
BApplication::Signature() const
{
	return fSignature;
}


int32
BApplication::CountWindows() const
{
	return static_cast<int32>(fWindows.size());
}


BWindow*
BApplication::WindowAt(int32 index) const
{
	if (index < 0 || index >= CountWindows())
		return nullptr;
	return fWindows[index];
}


void
BApplication::AddWindow(BWindow* window)
{
	fWindows.push_back(window);
}


void
BApplication::RemoveWindow(BWindow* window)
{
	fWindows.erase(std::remove(fWindows.begin(), fWindows.end(), window), fWindows.end());
}


namespace {

// The 16 x 16 one-bit image and mask of a BeOS cursor as RGBA: mask off is
// transparent, on is black (image bit set) or white.
Fl_RGB_Image*
CursorImage(const unsigned char* data)
{
	static unsigned char sPixels[16 * 16 * 4];
	for (int y = 0; y < 16; y++) {
		for (int x = 0; x < 16; x++) {
			int byte = y * 2 + x / 8;
			int bit = 7 - x % 8;
			bool black = ((data[4 + byte] >> bit) & 1) != 0;
			bool opaque = ((data[36 + byte] >> bit) & 1) != 0;
			unsigned char* pixel = &sPixels[(y * 16 + x) * 4];
			unsigned char level = black ? 0 : 255;
			pixel[0] = pixel[1] = pixel[2] = opaque ? level : 0;
			pixel[3] = opaque ? 255 : 0;
		}
	}
	return new Fl_RGB_Image(sPixels, 16, 16, 4);
}

} // namespace


void
BApplication::SetCursor(const void* cursor)
{
	if (cursor == nullptr)
		return;
	bool isDefault = cursor == B_HAND_CURSOR;
	unsigned char data[68];
	memcpy(data, cursor, sizeof(data));
	// The animation thread calls this often: hand it over without waiting.
	platform_interface::RunOnUIThread(
	    [this, isDefault, data]() {
		    memcpy(fCursor, data, sizeof(fCursor));
		    fDefaultCursor = isDefault;
		    if (fl_display == nullptr)
			    return;
		    Fl_RGB_Image* image = isDefault ? nullptr : CursorImage(fCursor);
		    for (BWindow* window : fWindows) {
			    if (!window->fWidget->shown())
				    continue;
			    if (image != nullptr)
				    window->fWidget->cursor(image, fCursor[3], fCursor[2]);
			    else
				    window->fWidget->cursor(FL_CURSOR_DEFAULT);
		    }
		    delete image;
	    },
	    false);
}


void
BApplication::HideCursor()
{
	platform_interface::RunOnUIThread([this]() {
		for (BWindow* window : fWindows) {
			if (window->fWidget->shown())
				window->fWidget->cursor(FL_CURSOR_NONE);
		}
	});
}


void
BApplication::ShowCursor()
{
	SetCursor(fDefaultCursor ? B_HAND_CURSOR : fCursor);
}
