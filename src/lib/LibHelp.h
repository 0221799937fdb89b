// The program's manual, opened in the web browser.
#ifndef LIB_HELP_H
#define LIB_HELP_H

#include <SupportDefs.h>

#include "lib/LibString.h"

class LibHelp
{
public:
	// Opens <documentation>/<name>/<name>SUM in the web browser, or tells the
	// user (an error alert) that it is not installed or that the browser
	// could not be started.
	static status_t Show(const char* name);
	// The manual of name: the first regular file of <documentation>/<folder>/
	// <name>SUM.html and <name>SUM, the folder being name, then name in lower
	// case (the installed place). When there is none, the installed place.
	static LibString DocumentPath(const char* name);
};

// Hands link to the desktop's web browser (xdg-open, found along PATH) and
// returns without waiting for the browser. B_ENTRY_NOT_FOUND when there is
// no browser launcher or it cannot be run; B_ERROR when it ends with a
// failure within a second and a half, its exit status in exitStatus.
status_t WebLinkTo(const char* link, int* exitStatus = nullptr);

#endif // LIB_HELP_H
