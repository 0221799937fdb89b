#include <cstdio>

#include <CLI/CLI.hpp>

#include "cli/Commands.h"

void
AddPlatformCommand(CLI::App& app, CommandTable& commands)
{
	CLI::App* command = app.add_subcommand("platform", "Print what the platform layer reads "
		"on this machine");
	commands.Add(command, [] {
		printf("platform: not yet reported\n");
		return 0;
	});
}
