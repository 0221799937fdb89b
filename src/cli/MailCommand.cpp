// quickstep-cli mail, and the packing of "run --save FILE --pack": a saved run
// packed with the report of unknown devices and mailed to the vendor as the
// results window does it, without asking the user to name the devices (the
// report holds the catalogue's own names).
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <unistd.h>

#include <CLI/CLI.hpp>

#include <Path.h>

#include "cli/Commands.h"
#include "lib/LibString.h"
#include "results/ResultsMail.h"
#include "results/ResultsPacker.h"
#include "sysinfo/LibDeviceInfo.h"

namespace {

// The items with an unknown device, as the unknown-devices window saves them.
void
WriteReport(LibDeviceInfo& catalogue, const char* path)
{
	FILE* file = fopen(path, "w");
	if (file == nullptr)
		return;
	for (pciItem* item = catalogue.First(); item != nullptr; item = catalogue.Next()) {
		if (item->NumberDevicesUnknown() > 0)
			item->Write(file);
	}
	fclose(file);
}


int
MailRun(const std::string& path, const std::string& config)
{
	if (access(path.c_str(), R_OK) != 0) {
		fprintf(stderr, "quickstep-cli mail: %s: %s\n", path.c_str(), strerror(errno));
		return 1;
	}
	status_t status = MailResults(path.c_str(), config.c_str());
	if (status == B_OK) {
		printf("Sent %s to %s\n", path.c_str(), kSupportAddress);
		return 0;
	}
	if (status == B_ENTRY_NOT_FOUND)
		fprintf(stderr,
		        "quickstep-cli mail: neither sendmail nor xdg-email was found; nothing was sent. "
		        "Please send %s to %s yourself.\n",
		        path.c_str(), kSupportAddress);
	else
		fprintf(stderr, "quickstep-cli mail: %s: %s; nothing was sent\n", path.c_str(),
		        strerror_status(status));
	return 1;
}

} // namespace


int
PackSavedRun(const char* path)
{
	ResultsPacker packer;
	LibString problem;
	if (!packer.AcceptsTarget(path, problem) || !packer.Prepare(problem)) {
		fprintf(stderr, "quickstep-cli run: %s\n", problem.String());
		return 1;
	}
	LibDeviceInfo catalogue;
	if (!catalogue.AllDevicesKnown())
		WriteReport(catalogue, packer.ReportPath());

	BPath saved;
	switch (packer.Pack(path, saved, problem)) {
		case kPackRefused:
			fprintf(stderr, "quickstep-cli run: %s\n", problem.String());
			return 1;
		case kPackNotPacked:
			fprintf(stderr, "quickstep-cli run: tar could not pack %s; it is saved unpacked\n",
			        path);
			return 1;
		case kPackZipMissing:
			fprintf(stderr, "quickstep-cli run: %s\n", kZipMissingText);
			break;
		case kPackNotZipped:
		case kPackZipped:
			break;
	}
	fprintf(stderr,
	        "Packed the run into %s. Please send it to %s so that your results can be "
	        "distributed with the next release of Quickstep: quickstep-cli mail %s --config "
	        "\"your machine\"\n",
	        saved.Path(), kSupportAddress, saved.Path());
	return 0;
}


void
AddMailCommand(CLI::App& app, CommandTable& commands)
{
	CLI::App* command =
	    app.add_subcommand("mail", "Mail a packed run (run --save FILE --pack) to the vendor");
	auto path = std::make_shared<std::string>();
	auto config = std::make_shared<std::string>();
	command->add_option("file", *path, "The packed run")->required();
	command
	    ->add_option("--config", *config,
	                 "Your machine in a few words, such as \"Dual PII 400 BX\"")
	    ->check(CLI::Validator(
	        [](std::string& text) {
		        return text.size() <= static_cast<size_t>(kMaxConfigLength)
		                   ? std::string()
		                   : "at most " + std::to_string(kMaxConfigLength) + " bytes";
	        },
	        ""))
	    ->type_name("TEXT");
	commands.Add(command, [path, config] { return MailRun(*path, *config); });
}
