// Receives the application's help requests, opening the help window at the
// entry for the view asked about, and adds help files to the program's own
// executable.
#ifndef HELP_MANAGER_H
#define HELP_MANAGER_H

#include <Handler.h>

#include "lib/LibString.h"
#include "lib/LinkList.h"

class BMessage;
class HelpWindow;

// A context-help request: the string "window" and one "view" string per view
// from the one under the pointer outwards.
const uint32 kMsgHelpRequest = 'help';

class HelpManager : public BHandler
{
public:
	HelpManager();
	~HelpManager() override;

	// The help name is what follows the signature's last ".".
	void SetSignature(const char* signature);
	const char* HelpName() const { return fHelpName; }

	// A help request: the help window (made on the first one) shows the
	// entry of the view, or of the nearest of its parents that has one.
	void MessageReceived(BMessage* message) override;
	// Quits the help window, if there is one.
	void CloseWindow();
	HelpWindow* Window() const { return fWindow; }

	// Stores the file in the running program's executable (type "kw:help", id
	// 2002) and says on standard error how that went.
	status_t AddHelpFile(const char* path);

	// "window/view/parent/..." of a help request.
	static LibString ContextKey(const BMessage* request);

	// The keys of a request from the view outwards: the full key first, then
	// the key of each parent in turn.
	static void ContextKeys(const BMessage* request, LinkList<LibString>& keys);

private:
	friend class HelpWindow;
	// Called by the help window as it is destroyed.
	void WindowClosed(HelpWindow* window);

	LibString fHelpName;
	HelpWindow* fWindow;
};

#endif // HELP_MANAGER_H
