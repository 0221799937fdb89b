// File and process utilities of the support library: existence, directories,
// and copying, moving, removing, retyping and packing through the system's
// command-line tools, run by the shell with every path in double quotes.
// Inside the quotes the characters the shell still interprets ($, `, \ and ")
// are escaped, so a file name can neither run a command nor end the quoting.
// The tools' output is never looked at and nothing is printed.
#ifndef LIB_FILE_H
#define LIB_FILE_H

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

#endif // LIB_FILE_H
