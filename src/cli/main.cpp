// quickstep-cli: the benchmark's engine without windows.
#include <cstdio>

#include <CLI/CLI.hpp>

#include "cli/Commands.h"

int
main(int argc, char** argv)
{
	CLI::App app{"Quickstep: how fast is this machine, and how does it compare?", "quickstep-cli"};
	app.require_subcommand(1);
	app.set_help_all_flag("--help-all", "Print help for every command");

	CommandTable commands;
	AddPlatformCommand(app, commands);
	AddSystemCommand(app, commands);
	AddDevicesCommand(app, commands);

	try {
		app.parse(argc, argv);
	} catch (const CLI::CallForHelp& e) {
		return app.exit(e);
	} catch (const CLI::CallForAllHelp& e) {
		return app.exit(e);
	} catch (const CLI::ParseError& e) {
		fprintf(stderr, "%s\n", e.what());
		fprintf(stderr, "usage: quickstep-cli COMMAND [OPTIONS]  (see quickstep-cli --help)\n");
		return 2;
	}
	return commands.Run(app);
}
