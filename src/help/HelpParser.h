// The parser the help window keeps open on its help file: the mark-up
// parser plus the look-up of a page by name.
#ifndef HELP_PARSER_H
#define HELP_PARSER_H

#include "help/xmlParser.h"

class HelpParser : public xmlParser
{
public:
	HelpParser();
	~HelpParser() override;

	// From the start of the file, the first PAGE element whose NAME is name;
	// false (page cleared) when there is none or no file is open.
	bool FindPage(const char* name, xmlTag& page);
};

#endif // HELP_PARSER_H
