// The help window: the help file's contents on the left, the page of the
// selected row on the right. The help manager makes it on the first help
// request; closing it only hides it while the program runs.
#ifndef HELP_WINDOW_H
#define HELP_WINDOW_H

#include <Path.h>

#include "help/HelpParser.h"
#include "lib/LibWindow.h"

class BOutlineListView;
class HelpManager;
class HelpTextView;
class MetaStringItem;
class xmlTag;

// A row of the contents was selected.
const uint32 kMsgHelpContentSelected = 1000;

class HelpWindow : public LibWindow
{
public:
	// name is the help name: the file read is "<name>.help".
	HelpWindow(const char* name, HelpManager* manager);
	~HelpWindow() override;

	// Fills the contents from the first help file found (see the .cpp);
	// without one the contents stay empty.
	void ReadInContents(const char* name);
	// Selects the first row, in full-list order, that has key among its
	// "VIEW" strings, opening the rows above it, and scrolls it into view.
	void HelpForInterface(const char* key);
	// Whether a row has key among its "VIEW" strings.
	bool HasHelpFor(const char* key);
	// Shows the first page called page; an unknown page empties the pane, a
	// null one changes nothing.
	void HelpForContent(const char* page);

	void MessageReceived(BMessage* message) override;
	// Hides the window; it quits only with the application.
	bool QuitRequested() override;

	BOutlineListView* ContentList() const { return fContents; }
	HelpTextView* HelpPane() const { return fPane; }
	// The help file in use; empty when none was found.
	const char* HelpPath() const { return fPath.Path(); }

private:
	void AddRows(xmlTag& parent, MetaStringItem* superitem, int32 depth);
	MetaStringItem* FindRow(const char* key) const;
	void EmptyContents();

	HelpManager* fManager;
	BOutlineListView* fContents;
	HelpTextView* fPane;
	BPath fPath;
	HelpParser fParser;
};

#endif // HELP_WINDOW_H
