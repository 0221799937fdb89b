#include "cli/Commands.h"

#include <CLI/CLI.hpp>

#include <AppFileInfo.h>
#include <Path.h>

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


status_t
DesktopExecutablePath(BPath& out)
{
	BPath self;
	status_t status = get_app_path(&self);
	if (status != B_OK)
		return status;
	BPath directory;
	status = self.GetParent(&directory);
	if (status != B_OK)
		return status;
	out = directory;
	return out.Append("quickstep");
}
