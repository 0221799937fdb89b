// The subcommands of quickstep-cli. Each Add*Command registers its options on
// the parser and the function that runs it once the line has been parsed.
#ifndef CLI_COMMANDS_H
#define CLI_COMMANDS_H

#include <functional>
#include <vector>

#include <SupportDefs.h>

namespace CLI {
class App;
}

class BPath;

class CommandTable
{
public:
	// run answers the process's exit status.
	void Add(CLI::App* command, std::function<int()> run);
	int Run(const CLI::App& app) const;

private:
	struct Entry {
		CLI::App* command;
		std::function<int()> run;
	};
	std::vector<Entry> fEntries;
};

// The desktop program "quickstep" beside this executable, whether or not it
// has been built: its attributes hold the comparison store and the stored help.
status_t DesktopExecutablePath(BPath& out);

// A warning on standard error when rows come from different builds of the
// program, whose numbers need not agree on the same machine.
class ResultList;
void WarnMixedPrograms(const char* prefix, ResultList& rows);

void AddPlatformCommand(CLI::App& app, CommandTable& commands);
void AddRunCommand(CLI::App& app, CommandTable& commands);
void AddSystemCommand(CLI::App& app, CommandTable& commands);
void AddDevicesCommand(CLI::App& app, CommandTable& commands);
void AddStoreCommand(CLI::App& app, CommandTable& commands);
void AddCompareCommand(CLI::App& app, CommandTable& commands);
void AddHelpCommand(CLI::App& app, CommandTable& commands);
void AddMailCommand(CLI::App& app, CommandTable& commands);

// Packs the results file at path with the report of unknown devices, as the
// results window does; answers the exit status.
int PackSavedRun(const char* path);

#endif // CLI_COMMANDS_H
