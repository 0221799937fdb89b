#include "lib/LibFile.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <Directory.h>
#include <FindDirectory.h>
#include <Message.h>
#include <Path.h>
#include <Platform.h>

namespace {

// rwxrwxr-x
const mode_t kDirectoryMode = 0775;
// What the program makes under a shared name: the user's alone.
const mode_t kPrivateDirectoryMode = 0700;
const mode_t kPrivateFileMode = 0600;


// A path for the inside of double quotes: the shell still expands $ and `
// there and gives \ and " their meaning, so those get a backslash.
std::string
Quoted(const char* path)
{
	std::string result = "\"";
	for (const char* c = path; *c != '\0'; c++) {
		if (*c == '$' || *c == '`' || *c == '\\' || *c == '"')
			result += '\\';
		result += *c;
	}
	return result + "\"";
}


// The tool's path stands unquoted at the head of the line: anything but the
// plain characters of a path gets a backslash.
std::string
Command(const char* tool)
{
	std::string result;
	for (const char* c = tool; *c != '\0'; c++) {
		if (strchr("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._-+,:@%=",
		           *c) == nullptr)
			result += '\\';
		result += *c;
	}
	return result;
}


// The named tool in the system's command directory, when it is there.
bool
FindSystemTool(const char* name, BPath* tool)
{
	if (find_directory(B_BEOS_BIN_DIRECTORY, tool) != B_OK)
		return false;
	if (tool->Append(name) != B_OK)
		return false;
	return LibExists(tool->Path());
}


int
Run(const std::string& line)
{
	return system(line.c_str());
}


// Moves to source's parent and answers source's leaf name; a relative source is
// taken from the working directory before the move.
bool
EnterParent(const BPath& source, std::string* leaf)
{
	BPath parent;
	if (source.GetParent(&parent) != B_OK)
		return false;
	*leaf = source.Leaf();
	// The working directory stays changed afterwards, on purpose. Should the
	// change fail the tool runs where we are: its result is not looked at.
	if (chdir(parent.Path()) != 0)
		return true;
	return true;
}


// What stands at a shared name: B_ENTRY_NOT_FOUND for nothing, B_OK for an
// entry of the user's own that is not a link, else the reason not to touch it.
status_t
SharedPathState(const char* path, struct stat* info)
{
	if (path == nullptr || path[0] == '\0')
		return B_BAD_VALUE;
	if (lstat(path, info) != 0)
		return errno == ENOENT ? B_ENTRY_NOT_FOUND : StatusFromErrno(errno);
	if (S_ISLNK(info->st_mode))
		return B_LINK_LIMIT;
	if (info->st_uid != platform_user_id())
		return B_PERMISSION_DENIED;
	return B_OK;
}

} // namespace


bool
LibExists(const char* path)
{
	return path != nullptr && access(path, F_OK) == 0;
}


bool
Libmkdir(const char* path)
{
	if (LibExists(path))
		return false;
	// Whether the creation worked is not part of the answer.
	create_directory(path, kDirectoryMode);
	return true;
}


bool
LibCopy(const char* from, const char* to)
{
	BPath tool;
	if (!FindSystemTool("cp", &tool))
		return false;
	return Run(Command(tool.Path()) + " -fR " + Quoted(from) + " " + Quoted(to)) == 0;
}


bool
LibMove(const char* from, const char* to)
{
	BPath tool;
	if (!FindSystemTool("mv", &tool))
		return false;

	// The destination may not exist yet: its directory decides its volume.
	struct stat source;
	struct stat target;
	BPath toParent;
	bool acrossVolumes = stat(from, &source) == 0 && BPath(to).GetParent(&toParent) == B_OK &&
	                     stat(toParent.Path(), &target) == 0 && source.st_dev != target.st_dev;
	if (acrossVolumes) {
		bool copied = LibCopy(from, to);
		Libmimeset(to);
		// The source goes even when the copy failed: kept as it always was.
		LibUnlink(from);
		return copied;
	}
	return Run(Command(tool.Path()) + " -f " + Quoted(from) + " " + Quoted(to)) == 0;
}


void
LibUnlink(const char* path)
{
	BPath tool;
	if (FindSystemTool("rm", &tool))
		Run(Command(tool.Path()) + " -fr " + Quoted(path));
}


void
Libmimeset(const char* path)
{
	BPath tool;
	if (FindSystemTool("mimeset", &tool))
		Run(Command(tool.Path()) + " -f " + Quoted(path));
}


bool
LibTar(const char* archive, const char* source)
{
	BPath tool;
	if (!FindSystemTool("tar", &tool))
		return false;
	std::string leaf;
	if (!EnterParent(BPath(source), &leaf))
		return false;
	// The archiver's own result is not part of the answer.
	Run(Command(tool.Path()) + " -cf " + Quoted(archive) + " " + Quoted(leaf.c_str()));
	return true;
}


bool
LibZip(const char* archive, const BPath& source, int level)
{
	BPath tool;
	if (!LibFindEnvFile("PATH", "zip", tool))
		return false;
	std::string leaf;
	if (!EnterParent(source, &leaf))
		return false;
	char options[32];
	snprintf(options, sizeof(options), " -rq%d ", level);
	Run(Command(tool.Path()) + options + Quoted(archive) + " " + Quoted(leaf.c_str()));
	return true;
}


bool
LibFindEnvFile(const char* variable, const char* file, BPath& out)
{
	const char* value = getenv(variable);
	if (value == nullptr || file == nullptr)
		return false;
	std::string fields = value;
	size_t start = 0;
	while (start <= fields.size()) {
		size_t end = fields.find(':', start);
		if (end == std::string::npos)
			end = fields.size();
		std::string dir = fields.substr(start, end - start);
		if (dir.empty())
			dir = ".";
		BPath candidate(dir.c_str(), file);
		if (candidate.InitCheck() == B_OK && LibExists(candidate.Path())) {
			out = candidate;
			return true;
		}
		start = end + 1;
	}
	return false;
}


bool
LibGetFilePath(const BMessage* message, BPath& out)
{
	if (message == nullptr)
		return false;
	entry_ref directory;
	const char* name = nullptr;
	if (message->FindRef("directory", &directory) != B_OK ||
	    message->FindString("name", &name) != B_OK)
		return false;
	std::string leaf = name;
	size_t first = leaf.find_first_not_of(" \t");
	size_t last = leaf.find_last_not_of(" \t");
	leaf = first == std::string::npos ? std::string() : leaf.substr(first, last - first + 1);
	BPath path(directory.path.c_str());
	if (path.InitCheck() != B_OK)
		return false;
	if (!leaf.empty() && path.Append(leaf.c_str()) != B_OK)
		return false;
	out = path;
	return true;
}


status_t
LibClearSharedPath(const char* path)
{
	struct stat info;
	status_t state = SharedPathState(path, &info);
	if (state == B_ENTRY_NOT_FOUND)
		return B_OK;
	if (state != B_OK)
		return state;
	// The user's own, left from an earlier run: rm does not follow the links
	// it meets inside a directory.
	LibUnlink(path);
	state = SharedPathState(path, &info);
	if (state == B_ENTRY_NOT_FOUND)
		return B_OK;
	return state == B_OK ? B_FILE_EXISTS : state;
}


status_t
LibMakePrivateDirectory(const char* path)
{
	if (path == nullptr || path[0] == '\0')
		return B_BAD_VALUE;
	int made = mkdir(path, kPrivateDirectoryMode);
	int error = errno;
	// Whatever mkdir said, what is there now decides: between the clearing
	// and now someone else may have put a link or a directory of his there.
	struct stat info;
	status_t state = SharedPathState(path, &info);
	if (state == B_ENTRY_NOT_FOUND && made != 0)
		return StatusFromErrno(error);
	if (state != B_OK)
		return state;
	if (!S_ISDIR(info.st_mode))
		return B_NOT_A_DIRECTORY;
	if ((info.st_mode & 077) != 0 && chmod(path, kPrivateDirectoryMode) != 0)
		return StatusFromErrno(errno);
	return B_OK;
}


status_t
LibMakePrivateFile(const char* path)
{
	if (path == nullptr || path[0] == '\0')
		return B_BAD_VALUE;
	int fd = open(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kPrivateFileMode);
	if (fd < 0)
		return errno == EEXIST ? B_FILE_EXISTS : StatusFromErrno(errno);
	close(fd);
	return B_OK;
}
