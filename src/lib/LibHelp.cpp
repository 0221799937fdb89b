#include "lib/LibHelp.h"

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <FindDirectory.h>
#include <Path.h>

#include "lib/LibAlert.h"
#include "lib/LibFile.h"

namespace {

const char* const kBrowserLauncher = "xdg-open";
// How long the launcher has to fail before it counts as having started a
// browser (milliseconds). xdg-open usually hands the link over and ends
// within a fraction of this; some browsers keep it until they close.
const int kLauncherVerdictTime = 1500;
// What the watcher reports when the launcher could not be run at all.
const unsigned char kLauncherNotRun = 127;


bool
FoundAlongPath(const char* program)
{
	const char* path = getenv("PATH");
	if (path == nullptr)
		return false;
	LibString directories(path);
	LibString candidate;
	int32 start = 0;
	while (start <= directories.Length()) {
		int32 end = directories.Index(":", start);
		if (end < 0)
			end = directories.Length();
		LibString directory = directories.Extract(start, end - start);
		if (directory.IsEmpty())
			directory = ".";
		candidate.Format("%s/%s", directory.String(), program);
		if (access(candidate.String(), X_OK) == 0)
			return true;
		start = end + 1;
	}
	return false;
}

} // namespace


LibString
LibHelp::DocumentPath(const char* name)
{
	BPath root;
	find_directory(B_COMMON_DOCUMENTATION_DIRECTORY, &root);

	// The folder carries the program's name, and on Linux also the package's
	// lower-case one, where the installed manual lives beside the copyright and
	// changelog. The manual is installed with ".html" so that the browser takes
	// it for a web page; a copy without the extension is found as well.
	LibString lowerName(name);
	lowerName.ToLower();
	const char* folders[] = {name, lowerName.String()};
	const LibString files[] = {LibString(name) + "SUM.html", LibString(name) + "SUM"};
	for (const char* folder : folders) {
		for (const LibString& file : files) {
			BPath candidate(root.Path(), folder);
			candidate.Append(file.String());
			struct stat status;
			if (stat(candidate.Path(), &status) == 0 && S_ISREG(status.st_mode))
				return LibString(candidate.Path());
		}
	}
	// Nowhere: name the place an install puts it.
	BPath installed(root.Path(), lowerName.String());
	installed.Append(files[0].String());
	return LibString(installed.Path());
}


status_t
LibHelp::Show(const char* name)
{
	LibString path = DocumentPath(name);
	if (!LibExists(path.String())) {
		LibError("Unable to find help file for %s in '%s'", name, path.String());
		return B_ENTRY_NOT_FOUND;
	}
	LibString link("file://");
	link += path;
	int exitStatus = 0;
	status_t status = WebLinkTo(link.String(), &exitStatus);
	if (status == B_ENTRY_NOT_FOUND) {
		LibError("Unable to open the help for %s: the web browser launcher '%s' is not "
		         "installed. The help is the file '%s'.",
		         name, kBrowserLauncher, path.String());
	} else if (status != B_OK) {
		LibError("Unable to open the help for %s: '%s' failed (exit status %d). The help is "
		         "the file '%s'.",
		         name, kBrowserLauncher, exitStatus, path.String());
	}
	return status;
}


status_t
WebLinkTo(const char* link, int* exitStatus)
{
	if (exitStatus != nullptr)
		*exitStatus = 0;
	if (link == nullptr)
		return B_BAD_VALUE;
	if (!FoundAlongPath(kBrowserLauncher))
		return B_ENTRY_NOT_FOUND;

	int verdict[2];
	if (pipe2(verdict, O_CLOEXEC) != 0)
		return B_ERROR;
	// The browser outlives the request: an intermediate child leaves at once,
	// and its child, the watcher, waits for the launcher and writes its exit
	// status into the pipe. Nobody has to wait for the browser to end.
	pid_t child = fork();
	if (child < 0) {
		close(verdict[0]);
		close(verdict[1]);
		return B_ERROR;
	}
	if (child == 0) {
		if (fork() == 0) {
			unsigned char code = kLauncherNotRun;
			pid_t launcher = fork();
			if (launcher == 0) {
				execlp(kBrowserLauncher, kBrowserLauncher, link, static_cast<char*>(nullptr));
				_exit(kLauncherNotRun);
			}
			int status = 0;
			if (launcher > 0 && waitpid(launcher, &status, 0) == launcher)
				code = static_cast<unsigned char>(WIFEXITED(status) ? WEXITSTATUS(status) : 255);
			ssize_t written = write(verdict[1], &code, 1);
			(void)written;
			_exit(0);
		}
		_exit(0);
	}
	close(verdict[1]);
	int status = 0;
	waitpid(child, &status, 0);

	status_t result = B_OK;
	pollfd ready = {verdict[0], POLLIN, 0};
	unsigned char code = 0;
	if (poll(&ready, 1, kLauncherVerdictTime) > 0 && read(verdict[0], &code, 1) == 1 && code != 0) {
		result = B_ERROR;
		if (code == kLauncherNotRun)
			result = B_ENTRY_NOT_FOUND;
		if (exitStatus != nullptr)
			*exitStatus = code;
	}
	close(verdict[0]);
	return result;
}
