// For tests of windows: run the interface loop on the calling thread (which
// must be the one that made the application) without BApplication::Run.
#ifndef INTERFACE_TEST_H
#define INTERFACE_TEST_H

#include <functional>

#include "SupportDefs.h"

// Runs the loop until done() answers true (checked after every event and
// at least every 10 ms) or timeout microseconds pass; answers done().
bool platform_ui_run_until(const std::function<bool()>& done, bigtime_t timeout);
// Runs the loop for duration microseconds.
void platform_ui_run_for(bigtime_t duration);
// Asks for the window to close as a window manager does (WM_DELETE_WINDOW
// to its X window); false when it is not on the display.
class BWindow;
bool platform_ui_close_window(BWindow* window);
// Gives the keyboard back to the window under the pointer, as on a display
// without a window manager (one that ended leaves it on its last window).
void platform_ui_keyboard_follows_pointer();

// While set, a file panel's Show only marks the panel as showing and runs no
// chooser: the test answers with the panel's message itself.
void platform_set_file_chooser_disabled(bool disabled);

#endif // INTERFACE_TEST_H
