#include "lib/LibHelp.h"

#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <FindDirectory.h>
#include <Path.h>

#include "lib/LibAlert.h"
#include "lib/LibFile.h"

namespace {

const char* const kBrowserLauncher = "xdg-open";


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
	return WebLinkTo(link.String());
}


status_t
WebLinkTo(const char* link)
{
	if (link == nullptr)
		return B_BAD_VALUE;
	if (!FoundAlongPath(kBrowserLauncher))
		return B_ENTRY_NOT_FOUND;

	// The browser outlives the request: an intermediate child starts it and
	// leaves at once, so nothing has to wait for the browser to end.
	pid_t child = fork();
	if (child < 0)
		return B_ERROR;
	if (child == 0) {
		if (fork() == 0) {
			execlp(kBrowserLauncher, kBrowserLauncher, link, static_cast<char*>(nullptr));
			_exit(127);
		}
		_exit(0);
	}
	int status = 0;
	waitpid(child, &status, 0);
	return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? B_OK : B_ERROR;
}
