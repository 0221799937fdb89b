#include "cli/Commands.h"

#include <CLI/CLI.hpp>

void
CommandTable::Add(CLI::App* command, std::function<int()> run)
{
	fEntries.push_back({command, std::move(run)});
}

int
CommandTable::Run(const CLI::App&) const
{
	for (const Entry& entry : fEntries) {
		if (entry.command->parsed())
			return entry.run();
	}
	return 2;
}
