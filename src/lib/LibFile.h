// File and process utilities of the support library: existence, directories,
// and copying, moving, removing, retyping and packing through the system's
// command-line tools, run by the shell with every path in double quotes.
// Inside the quotes the characters the shell still interprets ($, `, \ and ")
// are escaped, so a file name can neither run a command nor end the quoting.
// The tools' output is never looked at and nothing is printed.
#ifndef LIB_FILE_H
#define LIB_FILE_H

#include <SupportDefs.h>

class BMessage;
class BPath;

// Whether anything exists at the path.
bool LibExists(const char* path);
// Creates the directory (mode 0775) when nothing exists at the path and answers
// true whether or not that worked; answers false and does nothing when
// something is there already.
bool Libmkdir(const char* path);
// "cp -fR"; false when the tool is missing, else whether the shell returned 0.
bool LibCopy(const char* from, const char* to);
// "mv -f" on one volume. Across volumes: copy, retype the copy, then remove
// the source whatever the copy did, answering the copy's result.
bool LibMove(const char* from, const char* to);
// "rm -fr": a directory goes with its contents.
void LibUnlink(const char* path);
// "mimeset -f": the file's type is worked out again. Nothing when the system
// has no such tool.
void Libmimeset(const char* path);
// Changes the working directory to source's parent, on purpose, and packs
// source's leaf name with "tar -cf" into archive (relative to that directory
// if relative). False only when the tool is missing.
bool LibTar(const char* archive, const char* source);
// As LibTar, with "zip -rq<level>" found along PATH. False when PATH is unset
// or no directory in it holds zip.
bool LibZip(const char* archive, const BPath& source, int level);
// The first directory in the colon-separated variable holding file, joined with
// it. An empty field is the working directory, as for the shell.
bool LibFindEnvFile(const char* variable, const char* file, BPath& out);
// The path a save panel's reply names: its "directory" reference joined with
// its "name" string stripped of leading and trailing blanks.
bool LibGetFilePath(const BMessage* message, BPath& out);


// Fixed names in a directory that every user can write to ("/tmp/results"):
// the program never follows a symbolic link there and never uses what another
// user owns, since either would let that user have the program write over his
// choice of file. Ownership is judged against platform_user_id().
//
// Clears the path for the user's own use: B_OK when nothing is there, or when
// what was there was the user's own and is gone now (a stale directory goes
// with its contents). B_LINK_LIMIT for a symbolic link, B_PERMISSION_DENIED
// for another user's entry, B_FILE_EXISTS when the user's own would not go.
// Nothing but the user's own entry is changed.
status_t LibClearSharedPath(const char* path);
// Makes a directory at a cleared path that only the user can enter: B_OK when
// there is one of the user's own there now; otherwise the code of
// LibClearSharedPath for what stands there (someone was quicker), or why the
// directory could not be made.
status_t LibMakePrivateDirectory(const char* path);
// Makes an empty file that only the user can read, where nothing is; a link
// is not followed. B_OK, or why not (B_FILE_EXISTS when something is there).
status_t LibMakePrivateFile(const char* path);

#endif // LIB_FILE_H
