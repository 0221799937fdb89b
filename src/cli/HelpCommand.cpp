// quickstep-cli help [PAGE]: the on-line help as text, read from the same help
// file, found the same way, as the help window reads it.
#include <cstdio>
#include <string>

#include <CLI/CLI.hpp>

#include <Path.h>

#include "cli/Commands.h"
#include "help/HelpFile.h"
#include "help/xmlTag.h"

static const char* kHelpName = "QStp";
static const int32 kTextWidth = 78;


// Prints text wrapped at kTextWidth columns, keeping its own line breaks.
static void
PrintWrapped(const char* text)
{
	std::string line;
	std::string word;
	auto flushWord = [&]() {
		if (word.empty())
			return;
		if (!line.empty() && line.size() + 1 + word.size() > size_t(kTextWidth)) {
			printf("%s\n", line.c_str());
			line.clear();
		}
		if (!line.empty())
			line += ' ';
		line += word;
		word.clear();
	};
	for (const char* c = text; *c != '\0'; c++) {
		if (*c == '\n') {
			flushWord();
			printf("%s\n", line.c_str());
			line.clear();
		} else if (*c == ' ' || *c == '\t') {
			flushWord();
		} else {
			word += *c;
		}
	}
	flushWord();
	if (!line.empty())
		printf("%s\n", line.c_str());
}


static int
ShowContents(const char* path)
{
	LinkList<HelpRow> rows;
	if (HelpFile::ReadContents(path, rows) != B_OK || rows.Size() == 0) {
		fprintf(stderr, "quickstep-cli: no contents in the help file %s\n", path);
		return 1;
	}
	printf("Quickstep help (%s)\n\n", path);
	for (HelpRow* row = rows.First(); row != nullptr; row = rows.Next()) {
		std::string label(size_t(row->depth) * 2, ' ');
		label += row->label.String();
		printf("  %-44s %s\n", label.c_str(), row->page.String());
	}
	printf("\nquickstep-cli help PAGE prints one page.\n");
	return 0;
}


static int
ShowPage(const char* path, const std::string& name)
{
	xmlTag page;
	if (HelpFile::ReadPage(path, name.c_str(), page) != B_OK) {
		fprintf(stderr, "quickstep-cli: no help page '%s' (quickstep-cli help lists them)\n",
		        name.c_str());
		return 2;
	}
	LibString text = HelpFile::PageText(page);
	PrintWrapped(text.String());
	return 0;
}


void
AddHelpCommand(CLI::App& app, CommandTable& commands)
{
	CLI::App* command = app.add_subcommand("help", "Print the help's contents, or one page");
	auto page = std::make_shared<std::string>();
	command->add_option("PAGE", *page, "Page name, as listed in the contents");

	commands.Add(command, [page]() {
		BPath executable;
		DesktopExecutablePath(executable);
		BPath path;
		if (HelpFile::Locate(kHelpName, executable.Path(), path, false) != B_OK) {
			fprintf(stderr,
			        "quickstep-cli: the help file %s.help was found neither in the working "
			        "directory, nor in the temporary directory, nor beside the program\n",
			        kHelpName);
			return 1;
		}
		if (page->empty())
			return ShowContents(path.Path());
		return ShowPage(path.Path(), *page);
	});
}
