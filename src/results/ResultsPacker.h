// Packs a saved results file for mailing to the vendor, as the results
// window's Save... does: the file and the unknown-devices report go into the
// folder "/tmp/results", which is packed into "/tmp/Quickstep.tar"; that
// archive replaces the results file and is compressed into "<file>.zip".
//
// Both fixed names are in a directory every user can write to: a symbolic
// link there or an entry of another user's stops the packing before anything
// is written (a stale entry of the user's own is replaced), so no one can have
// the program write over a file of his choice.
#ifndef RESULTS_PACKER_H
#define RESULTS_PACKER_H

#include <Path.h>
#include <SupportDefs.h>

#include "lib/LibString.h"

// Told when the compressor is missing (information, the packing goes on).
extern const char* const kZipMissingText;

enum ResultsPackStatus {
	kPackZipped,     // the saved file is "<file>.zip"; the tar under the chosen name is gone
	kPackZipMissing, // no zip along PATH: the chosen name holds the tar archive
	kPackNotZipped,  // zip ran but made no archive: the chosen name holds the tar
	kPackNotPacked,  // tar missing or failed: the results file is as it was written
	kPackRefused,    // a fixed name could not be used safely: nothing was packed
};

class ResultsPacker
{
public:
	// The fixed names under platform_tmp_directory() ("/tmp").
	ResultsPacker();
	~ResultsPacker();

	const char* FolderPath() const { return fFolder.Path(); }
	const char* ArchivePath() const { return fArchive.Path(); }
	// Where the unknown-devices report goes once Prepare succeeded.
	const char* ReportPath() const { return fReport.Path(); }

	// Makes the folder, the user's own and no one else's. False with the
	// reason in words (for an alert) when a fixed name is not safe to use.
	bool Prepare(LibString& problem);
	// Copies the results file into the folder and packs as above. savedPath
	// becomes the file the user now has (resultsPath or "<resultsPath>.zip").
	// The folder is removed afterwards in every case but kPackRefused.
	ResultsPackStatus Pack(const char* resultsPath, BPath& savedPath, LibString& problem);

	// Whether the user's choice can take the results: not a directory and
	// not one of the fixed names. False with the reason in words.
	bool AcceptsTarget(const char* resultsPath, LibString& problem) const;

private:
	bool Refuse(const char* path, status_t status, LibString& problem) const;

	BPath fFolder;
	BPath fArchive;
	BPath fReport;
	bool fPrepared;
};

#endif // RESULTS_PACKER_H
