// quickstep-cli: the benchmark's engine without windows.
#include <cstdio>

#include <CLI/CLI.hpp>

#include "cli/Commands.h"
#include "cli/GraphicsHost.h"
#include "lib/LibBuildInfo.h"

static const char* kUsage = "usage: quickstep-cli COMMAND [OPTIONS]  (see quickstep-cli --help)";

int
main(int argc, char** argv)
{
	GraphicsSetCommandLine(argc, argv);
	CLI::App app{"Quickstep: how fast is this machine, and how does it compare?", "quickstep-cli"};
	app.require_subcommand(1);
	app.set_help_all_flag("--help-all", "Print help for every command");
	app.set_version_flag("--version", LibBuildLine("quickstep-cli"),
	                     "Print the version, commit and compiler, then exit");

	CommandTable commands;
	AddPlatformCommand(app, commands);
	AddRunCommand(app, commands);
	AddSystemCommand(app, commands);
	AddDevicesCommand(app, commands);
	AddStoreCommand(app, commands);
	AddCompareCommand(app, commands);
	AddHelpCommand(app, commands);
	AddMailCommand(app, commands);

	// CLI11 reports a mistyped command as a missing one; name it instead.
	if (argc > 1 && argv[1][0] != '-') {
		bool known = false;
		for (const CLI::App* command : app.get_subcommands({}))
			known = known || command->check_name(argv[1]);
		if (!known) {
			fprintf(stderr, "quickstep-cli: unknown command '%s'\n", argv[1]);
			fprintf(stderr, "%s\n", kUsage);
			return 2;
		}
	}

	try {
		app.parse(argc, argv);
	} catch (const CLI::CallForHelp& e) {
		return app.exit(e);
	} catch (const CLI::CallForAllHelp& e) {
		return app.exit(e);
	} catch (const CLI::CallForVersion& e) {
		return app.exit(e);
	} catch (const CLI::ParseError& e) {
		fprintf(stderr, "%s\n", e.what());
		fprintf(stderr, "%s\n", kUsage);
		return 2;
	}
	return commands.Run(app);
}
