// A window: a looper whose messages are dispatched on the interface thread
// (FLTK's one thread, the main thread), and a tree of views. Its frame is the
// content area in screen coordinates, BeOS inclusive: frame (10, 10, 500, 500)
// gives a 491 x 491 pixel window.
//
// Lock is FLTK's global recursive lock (every window shares it): while any
// thread holds it the interface thread neither draws nor dispatches. The
// interface thread holds it whenever it runs the program's code. Never wait
// for another looper or a modal alert while holding it. LockWithTimeout waits
// without a limit on this lock.
//
// A window starts hidden and unlocked; Run starts dispatching (no thread is
// started: Thread() answers the interface thread's id). Quit deletes the
// window on the interface thread; called from another thread it waits until
// that is done. The close box posts B_QUIT_REQUESTED; QuitRequested
// answering true quits. A window with B_NOT_CLOSABLE asks the window manager
// not to offer closing (Motif hints); where one offers it anyway, the window
// gets B_CLOSE_ATTEMPTED instead and may act on it (BWindow ignores it).
//
// On the desktop every window carries the program's WM_CLASS and icon (see
// platform_set_window_class) and its flags as Motif hints; modal windows are
// dialogs to the window manager.
//
// Keys: a key that no control and no menu shortcut takes is posted as
// B_KEY_DOWN, with int32 "key" (the BeOS key code: 1 Escape, 2 F1 ... 13 F12,
// 0 for the others), int32 "modifiers" (see InterfaceDefs.h: Ctrl is
// B_COMMAND_KEY), int32 "raw_char" (the character without modifiers, or
// B_FUNCTION_KEY), string "bytes", int8 "byte" and int64 "when", addressed to
// the focus view (or the window). It goes through DispatchMessage, which hands
// it to the handler's KeyDown.
#ifndef WINDOW_H
#define WINDOW_H

#include <memory>
#include <string>
#include <vector>

#include "Looper.h"
#include "Rect.h"

class BButton;
class BMenuBar;
class BMessage;
class BView;

namespace platform_interface {
class ViewWidget;
class WindowWidget;
class UILock;
} // namespace platform_interface

enum window_type {
	B_UNTYPED_WINDOW = 0,
	B_TITLED_WINDOW = 1,
	B_MODAL_WINDOW = 3,
	B_DOCUMENT_WINDOW = 11,
	B_BORDERED_WINDOW = 20,
	B_FLOATING_WINDOW = 21,
};

enum window_look {
	B_BORDERED_WINDOW_LOOK = 20,
	B_NO_BORDER_WINDOW_LOOK = 19,
	B_TITLED_WINDOW_LOOK = 1,
	B_DOCUMENT_WINDOW_LOOK = 11,
	B_MODAL_WINDOW_LOOK = 3,
	B_FLOATING_WINDOW_LOOK = 7,
};

enum window_feel {
	B_NORMAL_WINDOW_FEEL = 0,
	B_MODAL_SUBSET_WINDOW_FEEL = 2,
	B_MODAL_APP_WINDOW_FEEL = 1,
	B_MODAL_ALL_WINDOW_FEEL = 3,
	B_FLOATING_SUBSET_WINDOW_FEEL = 5,
	B_FLOATING_APP_WINDOW_FEEL = 4,
	B_FLOATING_ALL_WINDOW_FEEL = 6,
};

// Window flags. Without a window manager's cooperation some are hints only:
// B_NOT_MOVABLE, B_NOT_MINIMIZABLE and B_NOT_ZOOMABLE are kept and answered
// by Flags(); B_NOT_RESIZABLE fixes the size, B_NOT_CLOSABLE ignores the
// close box.
enum {
	B_NOT_MOVABLE = 0x00000001,
	B_NOT_CLOSABLE = 0x00000020,
	B_NOT_ZOOMABLE = 0x00000040,
	B_NOT_MINIMIZABLE = 0x00004000,
	B_NOT_RESIZABLE = 0x00000002,
	B_NOT_H_RESIZABLE = 0x00000004,
	B_NOT_V_RESIZABLE = 0x00000008,
	B_AVOID_FRONT = 0x00000080,
	B_AVOID_FOCUS = 0x00002000,
	B_WILL_ACCEPT_FIRST_CLICK = 0x00000010,
	B_OUTLINE_RESIZE = 0x00001000,
	B_NO_WORKSPACE_ACTIVATION = 0x00000100,
	B_NOT_ANCHORED_ON_ACTIVATE = 0x00020000,
	B_ASYNCHRONOUS_CONTROLS = 0x00080000,
	B_QUIT_ON_WINDOW_CLOSE = 0x00100000,
};

// The user closed a B_NOT_CLOSABLE window through the window manager.
const uint32 B_CLOSE_ATTEMPTED = '_CLA';

enum {
	B_CURRENT_WORKSPACE = 0,
	B_ALL_WORKSPACES = 0xffffffff,
};

class BWindow : public BLooper
{
public:
	BWindow(BRect frame, const char* title, window_type type, uint32 flags,
	        uint32 workspace = B_CURRENT_WORKSPACE);
	BWindow(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags,
	        uint32 workspace = B_CURRENT_WORKSPACE);
	~BWindow() override;

	thread_id Run() override;
	void Quit() override;
	bool QuitRequested() override;
	// Hands B_KEY_DOWN to the handler's KeyDown (a view) and everything else
	// as BLooper does. Subclasses see every message here first.
	void DispatchMessage(BMessage* message, BHandler* handler) override;
	void MessageReceived(BMessage* message) override;

	// Shows nest as on BeOS: n Hide calls need n Show calls.
	virtual void Show();
	virtual void Hide();
	bool IsHidden() const;
	void Activate(bool active = true);
	bool IsActive() const;
	void Minimize(bool minimize);

	void AddChild(BView* child, BView* before = nullptr);
	bool RemoveChild(BView* child);
	int32 CountChildren() const;
	BView* ChildAt(int32 index) const;
	BView* FindView(const char* name) const;
	// The view that has the keyboard focus, or null.
	BView* CurrentFocus() const;
	// The deepest visible view under the last place the pointer moved to in
	// this window, or null when it left the window or is over no view.
	BView* LastMouseMovedView() const;

	void SetTitle(const char* title);
	const char* Title() const;

	BRect Frame() const;
	BRect Bounds() const;
	void MoveTo(BPoint where);
	void MoveTo(float x, float y);
	void MoveBy(float dx, float dy);
	void ResizeTo(float width, float height);
	void ResizeBy(float dx, float dy);
	void SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight);
	virtual void FrameMoved(BPoint newPosition);
	virtual void FrameResized(float newWidth, float newHeight);

	window_look Look() const { return fLook; }
	window_feel Feel() const { return fFeel; }
	uint32 Flags() const { return fFlags; }
	uint32 Workspaces() const { return fWorkspaces; }

	// Posts a copy of message (which is taken over) when key is pressed with
	// modifiers; B_COMMAND_KEY is implied, as on BeOS. key is compared without
	// case.
	void AddShortcut(uint32 key, uint32 modifiers, BMessage* message);
	void AddShortcut(uint32 key, uint32 modifiers, BMessage* message, BHandler* target);
	void RemoveShortcut(uint32 key, uint32 modifiers);

	// The first menu bar added to the window.
	BMenuBar* KeyMenuBar() const;
	void SetKeyMenuBar(BMenuBar* bar);

	// B_PULSE is not sent: no view of the program needs it.
	void SetPulseRate(bigtime_t rate);

	// Draws what is waiting to be drawn now (on the interface thread only).
	void UpdateIfNeeded();
	void Flush() const;
	void Sync() const;

	// The default button (B_ENTER presses it), or null.
	void SetDefaultButton(BButton* button);
	BButton* DefaultButton() const;

private:
	friend class BView;
	friend class BApplication;
	friend class platform_interface::WindowWidget;
	friend class platform_interface::ViewWidget;

	void Init(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags,
	          uint32 workspace);
	static bool DrainQueue(BLooper* looper);
	void MessageQueued() override;
	bool HandleKey(int event);
	void UpdateMouseView(int windowX, int windowY);
	void ApplySizeRange();
	// The window manager's view of the flags; on the interface thread, once
	// the window is on the display and after FLTK rewrites its own hints.
	void ApplyDesktopHints();
	void ViewRemoved(BView* view);
	void LayoutChildren(float dx, float dy);

	struct Shortcut {
		uint32 key;
		uint32 modifiers;
		std::unique_ptr<BMessage> message;
		BHandler* target;
	};

	platform_interface::WindowWidget* fWidget;
	std::shared_ptr<platform_interface::UILock> fUILock;
	std::vector<BView*> fChildren;
	std::vector<Shortcut> fShortcuts;
	BMenuBar* fKeyMenuBar;
	BButton* fDefaultButton;
	BView* fFocus;
	BView* fMouseView;
	window_look fLook;
	window_feel fFeel;
	uint32 fFlags;
	uint32 fWorkspaces;
	int32 fShowLevel;
	bool fRunning;
	std::string fTitle;
	BPoint fMousePoint;
	bool fMouseValid;
	float fMinWidth;
	float fMaxWidth;
	float fMinHeight;
	float fMaxHeight;
};

#endif // WINDOW_H
