// Fuzz entry of the help reader: the contents, the page names and the text of
// the pages, as the help window and quickstep-cli help read them.
#include <string>

#include "FuzzEntries.h"
#include "FuzzSupport.h"
#include "help/HelpFile.h"
#include "help/xmlTag.h"

int
FuzzHelpFile(const uint8_t* data, size_t size)
{
	const std::string text(reinterpret_cast<const char*>(data), size);
	fuzz::PutFile("QStp.help", &text);
	const std::string path = fuzz::ScratchDirectory() + "/QStp.help";

	LinkList<HelpRow> rows;
	HelpFile::ReadContents(path.c_str(), rows);
	LinkList<LibString> names;
	HelpFile::ReadPageNames(path.c_str(), names);
	int pages = 0;
	for (LibString* name = names.First(); name != nullptr && pages < 4; name = names.Next()) {
		xmlTag page;
		if (HelpFile::ReadPage(path.c_str(), name->String(), page) == B_OK)
			HelpFile::PageText(page);
		pages++;
	}
	return 0;
}
