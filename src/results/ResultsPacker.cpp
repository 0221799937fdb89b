#include "results/ResultsPacker.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <OS.h>
#include <Platform.h>

#include "lib/LibFile.h"

const char* const kZipMissingText =
    "Quickstep was unable to ZIP your results because the utility 'zip' was not found. You may "
    "have trouble emailing the results. It would be best if you obtained 'zip' from the BeWare "
    "web site, and re-run your test.";

namespace {

const char* const kFolderName = "results";
const char* const kArchiveName = "Quickstep.tar";
const char* const kReportName = "unknown_devices";
const int kZipLevel = 9;


// What stood at a path, to tell afterwards whether a tool wrote it anew.
struct Snapshot {
	bool exists = false;
	bool regular = false;
	off_t size = 0;
	ino_t inode = 0;
	struct timespec modified = {0, 0};
};

Snapshot
Look(const char* path)
{
	Snapshot snapshot;
	struct stat info;
	if (lstat(path, &info) != 0)
		return snapshot;
	snapshot.exists = true;
	snapshot.regular = S_ISREG(info.st_mode);
	snapshot.size = info.st_size;
	snapshot.inode = info.st_ino;
	snapshot.modified = info.st_mtim;
	return snapshot;
}


bool
WrittenAnew(const Snapshot& before, const Snapshot& after)
{
	if (!after.exists || !after.regular || after.size == 0)
		return false;
	if (!before.exists)
		return true;
	return before.inode != after.inode || before.modified.tv_sec != after.modified.tv_sec ||
	       before.modified.tv_nsec != after.modified.tv_nsec || before.size != after.size;
}

} // namespace


ResultsPacker::ResultsPacker() : fPrepared(false)
{
	char directory[B_PATH_NAME_LENGTH];
	if (platform_tmp_directory(directory, sizeof(directory)) != B_OK)
		strcpy(directory, "/tmp");
	fFolder.SetTo(directory, kFolderName);
	fArchive.SetTo(directory, kArchiveName);
	fReport.SetTo(fFolder.Path(), kReportName);
}


ResultsPacker::~ResultsPacker()
{
}


bool
ResultsPacker::Refuse(const char* path, status_t status, LibString& problem) const
{
	const char* why = nullptr;
	switch (status) {
		case B_LINK_LIMIT:
			why = "is a symbolic link";
			break;
		case B_PERMISSION_DENIED:
			why = "belongs to another user";
			break;
		case B_FILE_EXISTS:
			why = "is left from an earlier save and cannot be removed";
			break;
		case B_NOT_A_DIRECTORY:
			why = "is not a folder";
			break;
		default:
			why = strerror_status(status);
			break;
	}
	problem.Format("Quickstep could not pack your results: \"%s\" %s. Your results file is "
	               "kept as it is; remove \"%s\" and save again to pack it.",
	               path, why, path);
	return false;
}


bool
ResultsPacker::AcceptsTarget(const char* resultsPath, LibString& problem) const
{
	struct stat info;
	if (resultsPath == nullptr || resultsPath[0] == '\0') {
		problem = "Quickstep could not save your results: no file name was given.";
		return false;
	}
	if (stat(resultsPath, &info) == 0 && S_ISDIR(info.st_mode)) {
		problem.Format("Quickstep could not save your results: \"%s\" is a folder.", resultsPath);
		return false;
	}
	// Packing empties and removes the folder and the archive: the results
	// may not be saved to either.
	BPath target(resultsPath);
	std::string folder = std::string(fFolder.Path()) + "/";
	if (target == fArchive || target == fFolder ||
	    strncmp(target.Path(), folder.c_str(), folder.size()) == 0) {
		problem.Format("Quickstep could not save your results: \"%s\" is where Quickstep packs "
		               "them. Please choose another place.",
		               resultsPath);
		return false;
	}
	return true;
}


bool
ResultsPacker::Prepare(LibString& problem)
{
	fPrepared = false;
	for (const BPath* path : {&fFolder, &fArchive}) {
		status_t status = LibClearSharedPath(path->Path());
		if (status != B_OK)
			return Refuse(path->Path(), status, problem);
	}
	status_t status = LibMakePrivateDirectory(fFolder.Path());
	if (status != B_OK)
		return Refuse(fFolder.Path(), status, problem);
	fPrepared = true;
	return true;
}


ResultsPackStatus
ResultsPacker::Pack(const char* resultsPath, BPath& savedPath, LibString& problem)
{
	if (!fPrepared && !Prepare(problem))
		return kPackRefused;
	fPrepared = false;
	// Absolute from here on: tar and zip change the working directory.
	BPath results(resultsPath);
	savedPath = results;

	LibCopy(results.Path(), fFolder.Path());

	// The archive is made here first, the user's alone, so that tar writes
	// into a file of ours even if someone puts a link at the name meanwhile.
	status_t status = LibMakePrivateFile(fArchive.Path());
	if (status != B_OK) {
		LibUnlink(fFolder.Path());
		Refuse(fArchive.Path(), status, problem);
		return kPackRefused;
	}

	ResultsPackStatus outcome = kPackNotPacked;
	// An empty archive means tar did not run or failed: the results file is
	// not replaced by it.
	if (LibTar(fArchive.Path(), fFolder.Path()) && Look(fArchive.Path()).size > 0 &&
	    LibMove(fArchive.Path(), results.Path())) {
		std::string zipPath = std::string(results.Path()) + ".zip";
		Snapshot before = Look(zipPath.c_str());
		if (!LibZip(zipPath.c_str(), results, kZipLevel)) {
			outcome = kPackZipMissing;
			problem = kZipMissingText;
		} else if (WrittenAnew(before, Look(zipPath.c_str()))) {
			LibUnlink(results.Path());
			savedPath.SetTo(zipPath.c_str());
			outcome = kPackZipped;
		} else {
			outcome = kPackNotZipped;
			fprintf(stderr, "zip made no archive at %s; the results stay in %s\n", zipPath.c_str(),
			        results.Path());
		}
	}
	// Only the file made above: after a move nothing is left at the name.
	if (Look(fArchive.Path()).exists)
		unlink(fArchive.Path());
	LibUnlink(fFolder.Path());
	return outcome;
}
