#include "help/HelpManager.h"

#include <cstdio>
#include <cstring>

#include <AppFileInfo.h>
#include <Autolock.h>
#include <Message.h>
#include <Path.h>

#include "help/HelpFile.h"
#include "help/HelpWindow.h"
#include "lib/LibFile.h"


HelpManager::HelpManager() : BHandler("HelpManager"), fWindow(nullptr)
{
}


HelpManager::~HelpManager()
{
	CloseWindow();
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
HelpManager::ContextKeys(const BMessage* request, LinkList<LibString>& keys)
{
	const char* window = nullptr;
	if (request->FindString("window", &window) != B_OK)
		window = "";
	const char* part = nullptr;
	for (int32 first = 0; request->FindString("view", first, &part) == B_OK; first++) {
		LibString* key = new LibString(window);
		for (int32 i = first; request->FindString("view", i, &part) == B_OK; i++) {
			*key += "/";
			*key += part;
		}
		keys.Insert(key);
	}
}


void
HelpManager::MessageReceived(BMessage* message)
{
	if (message->what != kMsgHelpRequest) {
		BHandler::MessageReceived(message);
		return;
	}
	if (fWindow == nullptr) {
		fWindow = new HelpWindow(fHelpName, this);
		fWindow->Run();
		fWindow->SetPosition(kLibPositionMiddleLeft);
	}
	BAutolock lock(fWindow);
	// Views that have no entry of their own (a label inside a box, a scroll
	// bar) lead to the entry of the nearest parent that has one; a request
	// that finds none is reported with its full key.
	LinkList<LibString> keys;
	ContextKeys(message, keys);
	LibString key = ContextKey(message);
	for (LibString* candidate = keys.First(); candidate != nullptr; candidate = keys.Next()) {
		if (fWindow->HasHelpFor(*candidate)) {
			key = *candidate;
			break;
		}
	}
	fWindow->HelpForInterface(key);
	// A window already on show keeps its place; it has just changed page.
	if (fWindow->IsHidden())
		fWindow->Pop();
}


void
HelpManager::CloseWindow()
{
	if (fWindow == nullptr)
		return;
	HelpWindow* window = fWindow;
	window->Lock();
	window->Quit();
	fWindow = nullptr;
}


void
HelpManager::WindowClosed(HelpWindow* window)
{
	if (window == fWindow)
		fWindow = nullptr;
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
