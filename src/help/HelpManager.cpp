#include "help/HelpManager.h"

#include <cstdio>
#include <cstring>

#include <AppFileInfo.h>
#include <Message.h>
#include <Path.h>

#include "help/HelpFile.h"
#include "lib/LibFile.h"


HelpManager::HelpManager() : BHandler("HelpManager")
{
}


HelpManager::~HelpManager()
{
}


void
HelpManager::SetSignature(const char* signature)
{
	const char* dot = signature != nullptr ? strrchr(signature, '.') : nullptr;
	fHelpName = dot != nullptr ? dot + 1 : "";
}


LibString
HelpManager::ContextKey(const BMessage* request)
{
	LibString key;
	const char* part = nullptr;
	if (request->FindString("window", &part) == B_OK)
		key = part;
	for (int32 i = 0; request->FindString("view", i, &part) == B_OK; i++) {
		key += "/";
		key += part;
	}
	return key;
}


void
HelpManager::MessageReceived(BMessage* message)
{
	if (message->what != kMsgHelpRequest) {
		BHandler::MessageReceived(message);
		return;
	}
	// The help window is not part of this version; the request is named so a
	// user who pressed Shift+F1 sees where the help would have opened.
	fprintf(stderr, "No help window for %s\n", ContextKey(message).String());
}


void
HelpManager::CloseWindow()
{
}


status_t
HelpManager::AddHelpFile(const char* path)
{
	if (!LibExists(path)) {
		fprintf(stderr, "%s does not exist\n", path);
		return B_ENTRY_NOT_FOUND;
	}
	BPath self;
	status_t status = get_app_path(&self);
	if (status == B_OK)
		status = HelpFile::Store(self.Path(), path);
	if (status == B_OK)
		fprintf(stderr, "%s added to application\n", path);
	else
		fprintf(stderr, "%s failed to add to application\n", path);
	return status;
}
