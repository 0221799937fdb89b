// Finds the program's help file and reads what the help shows from it: the
// contents rows and the text of a page. The help window and quickstep-cli
// both read help through this class, so they find the same file.
#ifndef HELP_FILE_H
#define HELP_FILE_H

#include <SupportDefs.h>

#include "lib/LibString.h"
#include "lib/LinkList.h"

class BPath;
class xmlTag;

// One row of the contents, with its depth in the tree (0 at the top level).
class HelpRow
{
public:
	HelpRow();
	virtual ~HelpRow();
	bool operator==(const HelpRow& other) const;

	int32 depth;
	LibString label;
	LibString page;
	LinkList<LibString> views;
};

class HelpFile
{
public:
	// Type and id of the help file stored in the executable by "-help <file>".
	static const char* const kResourceType;
	static const int32 kResourceId = 2002;

	// Looks for "<helpName>.help" in the working directory, then in the common
	// temporary directory, then extracts the copy stored in the executable to
	// the temporary directory, and last takes the copy installed with the
	// program (<prefix>/share/quickstep). With report set, the misses are
	// printed on standard error as the help window prints them.
	static status_t Locate(const char* helpName, const char* executable, BPath& out, bool report);

	// Adds a help file to the executable's stored entries: a regular file of
	// at most kMaxStoredBytes (B_IS_A_DIRECTORY, B_BAD_VALUE for another
	// kind of file, B_BUFFER_OVERFLOW for a larger one).
	static status_t Store(const char* executable, const char* helpFile);
	static constexpr int64 kMaxStoredBytes = 4 * 1024 * 1024;

	// Reads the rows of the CONTENTS element, in tree order.
	static status_t ReadContents(const char* path, LinkList<HelpRow>& rows);

	// Finds the PAGE element called name; B_NAME_NOT_FOUND when there is none.
	static status_t ReadPage(const char* path, const char* name, xmlTag& page);

	// Names of every PAGE element, in file order.
	static status_t ReadPageNames(const char* path, LinkList<LibString>& names);

	// A page's text as HelpPage::Text gives it: paragraphs, lines, list items.
	static LibString PageText(xmlTag& page);
};

#endif // HELP_FILE_H
