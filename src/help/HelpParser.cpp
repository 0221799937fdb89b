#include "help/HelpParser.h"

#include <cstring>

#include "help/xmlTag.h"


HelpParser::HelpParser()
{
}


HelpParser::~HelpParser()
{
}


bool
HelpParser::FindPage(const char* name, xmlTag& page)
{
	if (name != nullptr && IsValid()) {
		Rewind();
		while (FindTag("PAGE", page)) {
			const char* pageName = nullptr;
			if (page.Modifiers().FindString("NAME", &pageName) == B_OK &&
			    strcmp(pageName, name) == 0)
				return true;
		}
	}
	page.Clear();
	return false;
}
