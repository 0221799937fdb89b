#include "Window.h"

#include <FL/Fl.H>
#include <FL/x.H>

#include <algorithm>
#include <cctype>
#include <cstring>

#include "AppDefs.h"
#include "Application.h"
#include "Button.h"
#include "InterfaceDefs.h"
#include "MenuBar.h"
#include "Message.h"
#include "OS.h"
#include "View.h"
#include "interface/Painter.h"
#include "interface/UIThread.h"
#include "interface/Widgets.h"

using platform_interface::CallerHoldsUILock;
using platform_interface::HasUIThread;
using platform_interface::IsUIThread;
using platform_interface::RunOnUIThread;

namespace platform_interface {

WindowWidget::WindowWidget(BWindow* window, int x, int y, int width, int height)
    : Fl_Double_Window(x, y, width, height), fProgramResize(false), fWindow(window)
{
	end();
	resizable(nullptr);
	box(FL_FLAT_BOX);
	rgb_color panel = ui_color(B_PANEL_BACKGROUND_COLOR);
	color(fl_rgb_color(panel.red, panel.green, panel.blue));
}


WindowWidget::~WindowWidget()
{
}


void
WindowWidget::draw()
{
	Fl_Double_Window::draw();
}


int
WindowWidget::handle(int event)
{
	switch (event) {
		case FL_ENTER:
		case FL_MOVE:
		case FL_DRAG:
			fWindow->UpdateMouseView(Fl::event_x(), Fl::event_y());
			break;
		case FL_LEAVE:
			fWindow->fMouseValid = false;
			break;
		default:
			break;
	}
	int handled = Fl_Double_Window::handle(event);
	if (event == FL_SHORTCUT && !handled) {
		// In a shortcut event the window coordinates are not to be trusted:
		// work from the root ones.
		int x = Fl::event_x_root() - x_root();
		int y = Fl::event_y_root() - y_root();
		if (x >= 0 && y >= 0 && x < w() && y < h())
			fWindow->UpdateMouseView(x, y);
		return fWindow->HandleKey(event) ? 1 : 0;
	}
	return handled;
}


void
WindowWidget::resize(int x, int y, int width, int height)
{
	int oldX = this->x();
	int oldY = this->y();
	int oldWidth = w();
	int oldHeight = h();
	Fl_Double_Window::resize(x, y, width, height);
	if (width != oldWidth || height != oldHeight) {
		fWindow->LayoutChildren(static_cast<float>(width - oldWidth),
		                        static_cast<float>(height - oldHeight));
		fWindow->FrameResized(static_cast<float>(width - 1), static_cast<float>(height - 1));
	}
	if (x != oldX || y != oldY)
		fWindow->FrameMoved(BPoint(static_cast<float>(x), static_cast<float>(y)));
}

} // namespace platform_interface


using platform_interface::WindowWidget;

namespace {

inline int
Pixel(float value)
{
	return static_cast<int>(value >= 0 ? value + 0.5f : value - 0.5f);
}


// The close box (and Escape, which FLTK turns into the same callback).
void
CloseCallback(Fl_Widget* widget, void*)
{
	if (Fl::event() == FL_SHORTCUT && Fl::event_key() == FL_Escape)
		return;
	BWindow* window = static_cast<WindowWidget*>(widget)->Window();
	if ((window->Flags() & B_NOT_CLOSABLE) != 0)
		return;
	window->PostMessage(B_QUIT_REQUESTED);
}


class GroupCurrentReset
{
public:
	GroupCurrentReset() : fSaved(Fl_Group::current()) { Fl_Group::current(nullptr); }
	~GroupCurrentReset() { Fl_Group::current(fSaved); }

private:
	Fl_Group* fSaved;
};

} // namespace


BWindow::BWindow(BRect frame, const char* title, window_type type, uint32 flags, uint32 workspace)
    : BLooper(title)
{
	window_look look = B_TITLED_WINDOW_LOOK;
	window_feel feel = B_NORMAL_WINDOW_FEEL;
	switch (type) {
		case B_MODAL_WINDOW:
			look = B_MODAL_WINDOW_LOOK;
			feel = B_MODAL_APP_WINDOW_FEEL;
			break;
		case B_DOCUMENT_WINDOW:
			look = B_DOCUMENT_WINDOW_LOOK;
			break;
		case B_BORDERED_WINDOW:
			look = B_BORDERED_WINDOW_LOOK;
			break;
		case B_FLOATING_WINDOW:
			look = B_FLOATING_WINDOW_LOOK;
			feel = B_FLOATING_APP_WINDOW_FEEL;
			break;
		default:
			break;
	}
	Init(frame, title, look, feel, flags, workspace);
}


BWindow::BWindow(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags,
                 uint32 workspace)
    : BLooper(title)
{
	Init(frame, title, look, feel, flags, workspace);
}


void
BWindow::Init(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags,
              uint32 workspace)
{
	fUILock = std::make_shared<platform_interface::UILock>();
	SetLock(fUILock);
	fKeyMenuBar = nullptr;
	fDefaultButton = nullptr;
	fFocus = nullptr;
	fMouseView = nullptr;
	fLook = look;
	fFeel = feel;
	fFlags = flags;
	fWorkspaces = workspace;
	fShowLevel = 1;
	fRunning = false;
	fTitle = title != nullptr ? title : "";
	fMousePoint = BPoint(0, 0);
	fMouseValid = false;
	fMinWidth = 0;
	fMaxWidth = 32768;
	fMinHeight = 0;
	fMaxHeight = 32768;
	// A window may be made on any thread: its widget is built, and the
	// application learns of it, under FLTK's lock.
	platform_interface::UIGuard guard;
	{
		GroupCurrentReset reset;
		fWidget = new WindowWidget(this, Pixel(frame.left), Pixel(frame.top),
		                           std::max(1, Pixel(frame.Width()) + 1),
		                           std::max(1, Pixel(frame.Height()) + 1));
	}
	fWidget->copy_label(fTitle.c_str());
	fWidget->callback(CloseCallback);
	if (look == B_NO_BORDER_WINDOW_LOOK || look == B_BORDERED_WINDOW_LOOK)
		fWidget->border(0);
	ApplySizeRange();
	platform_interface::RegisterLooper(this, &BWindow::DrainQueue);
	if (be_app != nullptr)
		be_app->AddWindow(this);
}


BWindow::~BWindow()
{
	platform_interface::UnregisterLooper(this);
	if (be_app != nullptr)
		be_app->RemoveWindow(this);
	auto teardown = [this] {
		while (!fChildren.empty()) {
			BView* child = fChildren.back();
			RemoveChild(child);
			delete child;
		}
		fWidget->hide();
		delete fWidget;
		fWidget = nullptr;
	};
	if (!HasUIThread() || CallerHoldsUILock())
		teardown();
	else
		RunOnUIThread(teardown, true);
}


// #pragma mark - looping


bool
BWindow::DrainQueue(BLooper* looper)
{
	BWindow* window = static_cast<BWindow*>(looper);
	while (window->HasQueuedMessages()) {
		if (!window->DispatchNextMessage())
			return false;
	}
	return true;
}


thread_id
BWindow::Run()
{
	if (fRunning)
		return B_ALREADY_RUNNING;
	fRunning = true;
	if (HasQueuedMessages())
		platform_interface::LooperHasMessages(this);
	return platform_interface::UIThreadId();
}


void
BWindow::MessageQueued()
{
	if (fRunning)
		platform_interface::LooperHasMessages(this);
}


// Windows are deleted on the interface thread only: from another thread the
// quitting is handed over and waited for.
void
BWindow::Quit()
{
	if (!HasUIThread() || IsUIThread()) {
		BLooper::Quit();
		return;
	}
	platform_interface::ReleaseWorkerWindow();
	fUILock->ReleaseAll();
	if (CallerHoldsUILock()) {
		// The caller still holds the lock through another window, so the
		// interface thread cannot run: quit here, under the lock.
		BLooper::Quit();
		return;
	}
	RunOnUIThread([this] { BLooper::Quit(); }, true);
}


bool
BWindow::QuitRequested()
{
	return true;
}


void
BWindow::DispatchMessage(BMessage* message, BHandler* handler)
{
	if (message->what == B_KEY_DOWN) {
		int32 rawChar = 0;
		message->FindInt32("raw_char", &rawChar);
		if (rawChar == B_ENTER && fDefaultButton != nullptr && fDefaultButton->IsEnabled()) {
			fDefaultButton->Invoke();
			return;
		}
		BView* view = dynamic_cast<BView*>(handler);
		if (view != nullptr) {
			const char* bytes = "";
			message->FindString("bytes", &bytes);
			view->KeyDown(bytes, static_cast<int32>(strlen(bytes)));
		}
		return;
	}
	BLooper::DispatchMessage(message, handler);
}


void
BWindow::MessageReceived(BMessage* message)
{
	BLooper::MessageReceived(message);
}


// Builds B_KEY_DOWN from the current FLTK key event, or posts the message of
// a matching shortcut. Answers false for keys that produce nothing (a
// modifier key alone).
bool
BWindow::HandleKey(int event)
{
	(void)event;
	int key = Fl::event_key();
	int32 code = 0;
	int32 rawChar = 0;
	if (key >= FL_F + 1 && key <= FL_F + 12) {
		code = key - FL_F + 1;
		rawChar = B_FUNCTION_KEY;
	} else {
		switch (key) {
			case FL_Escape:
				code = 1;
				rawChar = B_ESCAPE;
				break;
			case FL_Enter:
			case FL_KP_Enter:
				rawChar = B_ENTER;
				break;
			case FL_BackSpace:
				rawChar = B_BACKSPACE;
				break;
			case FL_Tab:
				rawChar = B_TAB;
				break;
			case FL_Left:
				rawChar = B_LEFT_ARROW;
				break;
			case FL_Right:
				rawChar = B_RIGHT_ARROW;
				break;
			case FL_Up:
				rawChar = B_UP_ARROW;
				break;
			case FL_Down:
				rawChar = B_DOWN_ARROW;
				break;
			case FL_Home:
				rawChar = B_HOME;
				break;
			case FL_End:
				rawChar = B_END;
				break;
			case FL_Page_Up:
				rawChar = B_PAGE_UP;
				break;
			case FL_Page_Down:
				rawChar = B_PAGE_DOWN;
				break;
			case FL_Insert:
				rawChar = B_INSERT;
				break;
			case FL_Delete:
				rawChar = B_DELETE;
				break;
			default:
				if (key > 0 && key < 128)
					rawChar = key;
				else if (Fl::event_length() > 0)
					rawChar = static_cast<unsigned char>(Fl::event_text()[0]);
				break;
		}
	}
	if (rawChar == 0)
		return false;

	int32 modifiers = platform_interface::CurrentModifiers();
	if ((modifiers & B_COMMAND_KEY) != 0) {
		const int32 kCompared = B_SHIFT_KEY | B_OPTION_KEY;
		for (const Shortcut& shortcut : fShortcuts) {
			if (tolower(static_cast<int>(shortcut.key)) == tolower(rawChar) &&
			    (shortcut.modifiers & kCompared) == (static_cast<uint32>(modifiers) & kCompared)) {
				BHandler* target = shortcut.target;
				if (target != nullptr && target->Looper() != this)
					target = nullptr;
				PostMessage(shortcut.message.get(), target);
				return true;
			}
		}
	}

	BMessage message(B_KEY_DOWN);
	message.AddInt64("when", system_time());
	message.AddInt32("key", code);
	message.AddInt32("modifiers", modifiers);
	message.AddInt32("raw_char", rawChar);
	char bytes[8] = {};
	if (Fl::event_length() > 0 && rawChar != B_FUNCTION_KEY && rawChar != B_ESCAPE) {
		strncpy(bytes, Fl::event_text(), sizeof(bytes) - 1);
	} else {
		bytes[0] = static_cast<char>(rawChar);
	}
	message.AddString("bytes", bytes);
	message.AddInt8("byte", static_cast<int8>(bytes[0]));
	PostMessage(&message, CurrentFocus());
	return true;
}


// #pragma mark - showing


void
BWindow::Show()
{
	if (--fShowLevel != 0)
		return;
	if (!fRunning)
		Run();
	RunOnUIThread([this] {
		if (fFeel == B_MODAL_APP_WINDOW_FEEL || fFeel == B_MODAL_ALL_WINDOW_FEEL ||
		    fFeel == B_MODAL_SUBSET_WINDOW_FEEL)
			fWidget->set_modal();
		else if (fFeel != B_NORMAL_WINDOW_FEEL)
			fWidget->set_non_modal();
		fWidget->show();
	});
	// A thread that shows a window draws on it next (the graphics test):
	// its connection to the display is made ready now, not in its first
	// timed drawing call.
	if (HasUIThread() && !IsUIThread())
		platform_interface::PrepareWorkerDrawing(fWidget);
}


void
BWindow::Hide()
{
	if (++fShowLevel != 1)
		return;
	if (HasUIThread() && !IsUIThread())
		platform_interface::ReleaseWorkerWindow();
	RunOnUIThread([this] { fWidget->hide(); });
}


bool
BWindow::IsHidden() const
{
	return fShowLevel > 0;
}


void
BWindow::Activate(bool active)
{
	if (!active || IsHidden())
		return;
	RunOnUIThread([this] {
		fWidget->show();
		fWidget->take_focus();
	});
}


bool
BWindow::IsActive() const
{
	Fl_Widget* focus = Fl::focus();
	return focus != nullptr && (focus == fWidget || focus->window() == fWidget);
}


void
BWindow::Minimize(bool minimize)
{
	RunOnUIThread([this, minimize] {
		if (minimize)
			fWidget->iconize();
		else if (!IsHidden())
			fWidget->show();
	});
}


// #pragma mark - views


void
BWindow::AddChild(BView* child, BView* before)
{
	if (child == nullptr || child->fParent != nullptr || child->fWindow != nullptr)
		return;
	auto position = std::find(fChildren.begin(), fChildren.end(), before);
	Fl_Widget* beforeWidget = position != fChildren.end() ? (*position)->fWidget : nullptr;
	fChildren.insert(position, child);
	if (beforeWidget != nullptr)
		fWidget->insert(*child->fWidget, beforeWidget);
	else
		fWidget->add(child->fWidget);
	child->AttachTo(this);
	BMenuBar* bar = dynamic_cast<BMenuBar*>(child);
	if (bar != nullptr && fKeyMenuBar == nullptr)
		fKeyMenuBar = bar;
	fWidget->redraw();
	platform_interface::WakeUI();
}


bool
BWindow::RemoveChild(BView* child)
{
	auto found = std::find(fChildren.begin(), fChildren.end(), child);
	if (child == nullptr || found == fChildren.end())
		return false;
	child->DetachFrom();
	fChildren.erase(std::find(fChildren.begin(), fChildren.end(), child));
	fWidget->remove(child->fWidget);
	child->UpdateGeometry();
	fWidget->redraw();
	return true;
}


void
BWindow::ViewRemoved(BView* view)
{
	if (fDefaultButton == view)
		fDefaultButton = nullptr;
	if (fKeyMenuBar == view)
		fKeyMenuBar = nullptr;
	if (fFocus == view)
		fFocus = nullptr;
	if (fMouseView == view)
		fMouseView = nullptr;
}


int32
BWindow::CountChildren() const
{
	return static_cast<int32>(fChildren.size());
}


BView*
BWindow::ChildAt(int32 index) const
{
	if (index < 0 || index >= CountChildren())
		return nullptr;
	return fChildren[index];
}


BView*
BWindow::FindView(const char* name) const
{
	for (BView* child : fChildren) {
		BView* found = child->FindView(name);
		if (found != nullptr)
			return found;
	}
	return nullptr;
}


BView*
BWindow::CurrentFocus() const
{
	for (Fl_Widget* widget = Fl::focus(); widget != nullptr; widget = widget->parent()) {
		if (widget == fWidget)
			return nullptr;
		platform_interface::ViewWidget* view =
		    dynamic_cast<platform_interface::ViewWidget*>(widget);
		if (view != nullptr)
			return view->View()->Window() == this ? view->View() : nullptr;
	}
	return nullptr;
}


void
BWindow::UpdateMouseView(int windowX, int windowY)
{
	fMousePoint = BPoint(static_cast<float>(windowX), static_cast<float>(windowY));
	fMouseValid = true;
}


BView*
BWindow::LastMouseMovedView() const
{
	if (!fMouseValid)
		return nullptr;
	for (auto child = fChildren.rbegin(); child != fChildren.rend(); ++child) {
		BView* found = (*child)->ViewAt(fMousePoint);
		if (found != nullptr)
			return found;
	}
	return nullptr;
}


void
BWindow::LayoutChildren(float dx, float dy)
{
	for (BView* child : fChildren)
		child->ParentResized(dx, dy);
}


// #pragma mark - frame and title


void
BWindow::SetTitle(const char* title)
{
	fTitle = title != nullptr ? title : "";
	std::string copy = fTitle;
	RunOnUIThread([this, copy] { fWidget->copy_label(copy.c_str()); });
}


const char*
BWindow::Title() const
{
	return fTitle.c_str();
}


BRect
BWindow::Frame() const
{
	return BRect(static_cast<float>(fWidget->x()), static_cast<float>(fWidget->y()),
	             static_cast<float>(fWidget->x() + fWidget->w() - 1),
	             static_cast<float>(fWidget->y() + fWidget->h() - 1));
}


BRect
BWindow::Bounds() const
{
	return BRect(0, 0, static_cast<float>(fWidget->w() - 1), static_cast<float>(fWidget->h() - 1));
}


void
BWindow::MoveTo(BPoint where)
{
	int x = Pixel(where.x);
	int y = Pixel(where.y);
	RunOnUIThread([this, x, y] { fWidget->position(x, y); });
}


void
BWindow::MoveTo(float x, float y)
{
	MoveTo(BPoint(x, y));
}


void
BWindow::MoveBy(float dx, float dy)
{
	BRect frame = Frame();
	MoveTo(BPoint(frame.left + dx, frame.top + dy));
}


void
BWindow::ResizeTo(float width, float height)
{
	int newWidth = std::max(1, Pixel(width) + 1);
	int newHeight = std::max(1, Pixel(height) + 1);
	RunOnUIThread([this, newWidth, newHeight] {
		fWidget->fProgramResize = true;
		if ((fFlags & B_NOT_RESIZABLE) != 0)
			fWidget->size_range(newWidth, newHeight, newWidth, newHeight);
		fWidget->size(newWidth, newHeight);
		fWidget->fProgramResize = false;
	});
}


void
BWindow::ResizeBy(float dx, float dy)
{
	BRect bounds = Bounds();
	ResizeTo(bounds.Width() + dx, bounds.Height() + dy);
}


void
BWindow::SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight)
{
	fMinWidth = minWidth;
	fMaxWidth = maxWidth;
	fMinHeight = minHeight;
	fMaxHeight = maxHeight;
	RunOnUIThread([this] { ApplySizeRange(); });
}


void
BWindow::ApplySizeRange()
{
	if ((fFlags & B_NOT_RESIZABLE) != 0) {
		fWidget->size_range(fWidget->w(), fWidget->h(), fWidget->w(), fWidget->h());
		return;
	}
	int minWidth = std::max(1, Pixel(fMinWidth) + 1);
	int minHeight = std::max(1, Pixel(fMinHeight) + 1);
	int maxWidth = Pixel(fMaxWidth) + 1;
	int maxHeight = Pixel(fMaxHeight) + 1;
	if ((fFlags & B_NOT_H_RESIZABLE) != 0)
		minWidth = maxWidth = fWidget->w();
	if ((fFlags & B_NOT_V_RESIZABLE) != 0)
		minHeight = maxHeight = fWidget->h();
	fWidget->size_range(minWidth, minHeight, maxWidth, maxHeight);
}


void
BWindow::FrameMoved(BPoint newPosition)
{
	(void)newPosition;
}


void
BWindow::FrameResized(float newWidth, float newHeight)
{
	(void)newWidth;
	(void)newHeight;
}


// #pragma mark - shortcuts and the rest


void
BWindow::AddShortcut(uint32 key, uint32 modifiers, BMessage* message)
{
	AddShortcut(key, modifiers, message, nullptr);
}


void
BWindow::AddShortcut(uint32 key, uint32 modifiers, BMessage* message, BHandler* target)
{
	if (message == nullptr)
		return;
	RemoveShortcut(key, modifiers);
	fShortcuts.push_back(Shortcut{key, modifiers, std::unique_ptr<BMessage>(message), target});
}


void
BWindow::RemoveShortcut(uint32 key, uint32 modifiers)
{
	const uint32 kCompared = B_SHIFT_KEY | B_OPTION_KEY;
	fShortcuts.erase(std::remove_if(fShortcuts.begin(), fShortcuts.end(),
	                                [key, modifiers, kCompared](const Shortcut& shortcut) {
		                                return tolower(static_cast<int>(shortcut.key)) ==
		                                           tolower(static_cast<int>(key)) &&
		                                       (shortcut.modifiers & kCompared) ==
		                                           (modifiers & kCompared);
	                                }),
	                 fShortcuts.end());
}


BMenuBar*
BWindow::KeyMenuBar() const
{
	return fKeyMenuBar;
}


void
BWindow::SetKeyMenuBar(BMenuBar* bar)
{
	fKeyMenuBar = bar;
}


void
BWindow::SetPulseRate(bigtime_t rate)
{
	(void)rate;
}


void
BWindow::UpdateIfNeeded()
{
	if (IsUIThread())
		Fl::flush();
}


void
BWindow::Flush() const
{
	if (fl_display != nullptr)
		XFlush(fl_display);
}


void
BWindow::Sync() const
{
	if (fl_display != nullptr)
		XSync(fl_display, False);
}


void
BWindow::SetDefaultButton(BButton* button)
{
	if (fDefaultButton == button)
		return;
	BButton* old = fDefaultButton;
	fDefaultButton = button;
	if (old != nullptr)
		old->MakeDefault(false);
	if (button != nullptr)
		button->MakeDefault(true);
}


BButton*
BWindow::DefaultButton() const
{
	return fDefaultButton;
}
