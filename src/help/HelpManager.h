// Receives the application's help requests and adds help files to the
// program's own executable.
#ifndef HELP_MANAGER_H
#define HELP_MANAGER_H

#include <Handler.h>

#include "lib/LibString.h"

class BMessage;

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

	void MessageReceived(BMessage* message) override;
	void CloseWindow();

	// Stores the file in the running program's executable (type "kw:help", id
	// 2002) and says on standard error how that went.
	status_t AddHelpFile(const char* path);

	// "window/view/parent/..." of a help request.
	static LibString ContextKey(const BMessage* request);

private:
	LibString fHelpName;
};

#endif // HELP_MANAGER_H
