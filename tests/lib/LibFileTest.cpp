#include "lib/LibFile.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <FindDirectory.h>
#include <Message.h>
#include <Path.h>
#include <PlatformTest.h>

#include "CommandOutput.h"
#include "platform/TempDirectory.h"

namespace {

// Each fake tool writes its name and its arguments, one per line in brackets,
// to the log; fake rm then really removes, fake cp fails when FAKE_CP_FAILS is
// set. Only shell built-ins are used, so the fakes run with any PATH.
const char* const kFakeTool =
    "#!/bin/sh\n"
    "{ printf '%%s' '%s'; for a in \"$@\"; do printf ' [%%s]' \"$a\"; done; printf '\\n'; }"
    " >> '%s'\n"
    "%s\n";

class LibFileTest : public testing::Test
{
protected:
	void SetUp() override
	{
		ASSERT_TRUE(fTemp.Valid());
		fOldCwd = Cwd();
		const char* path = getenv("PATH");
		fHadPath = path != nullptr;
		fOldPath = fHadPath ? path : "";

		fBin = fTemp.Path("bin");
		fLog = fTemp.Path("log");
		ASSERT_EQ(mkdir(fBin.c_str(), 0755), 0);
		MakeTool("cp", "exit ${FAKE_CP_FAILS:+1}");
		MakeTool("mv", "exit 0");
		MakeTool("rm", "exec /bin/rm \"$@\"");
		MakeTool("mimeset", "exit 0");
		MakeTool("tar", "exit 3");
		platform_set_directory(B_BEOS_BIN_DIRECTORY, fBin.c_str());
	}

	void TearDown() override
	{
		platform_set_directory(B_BEOS_BIN_DIRECTORY, nullptr);
		unsetenv("FAKE_CP_FAILS");
		if (fHadPath)
			setenv("PATH", fOldPath.c_str(), 1);
		else
			unsetenv("PATH");
		EXPECT_EQ(chdir(fOldCwd.c_str()), 0);
	}

	void MakeTool(const char* name, const char* body, const std::string& dir = "")
	{
		std::string path = (dir.empty() ? fBin : dir) + "/" + name;
		FILE* stream = fopen(path.c_str(), "w");
		ASSERT_NE(stream, nullptr);
		fprintf(stream, kFakeTool, name, fLog.c_str(), body);
		fclose(stream);
		ASSERT_EQ(chmod(path.c_str(), 0755), 0);
	}

	std::string Log() { return FileText(fLog); }

	static std::string Cwd()
	{
		char cwd[4096];
		return getcwd(cwd, sizeof(cwd)) != nullptr ? cwd : "";
	}

	void MakeFile(const std::string& path)
	{
		std::ofstream(path) << "data";
		ASSERT_TRUE(LibExists(path.c_str()));
	}

	TempDirectory fTemp;
	std::string fBin, fLog, fOldCwd, fOldPath;
	bool fHadPath = false;
};

} // namespace

TEST_F(LibFileTest, ToolsGetTheirOptionsAndQuotedPaths)
{
	std::string a = fTemp.Path("a file");
	std::string b = fTemp.Path("b");
	MakeFile(a);
	// On one volume a move is mv's alone.
	EXPECT_TRUE(LibMove(a.c_str(), b.c_str()));
	EXPECT_TRUE(LibCopy(a.c_str(), b.c_str()));
	setenv("FAKE_CP_FAILS", "1", 1);
	EXPECT_FALSE(LibCopy(a.c_str(), b.c_str()));
	Libmimeset(b.c_str());
	LibUnlink(b.c_str());
	std::string copy = "cp [-fR] [" + a + "] [" + b + "]\n";
	EXPECT_EQ(Log(), "mv [-f] [" + a + "] [" + b + "]\n" + copy + copy + "mimeset [-f] [" + b +
	                     "]\nrm [-fr] [" + b + "]\n");
}

TEST_F(LibFileTest, ShellCharactersInNamesRunNothing)
{
	ASSERT_EQ(chdir(fTemp.Path().c_str()), 0);
	const char* names[] = {"$(touch pwned1)",      "`touch pwned2`", "back\\slash",
	                       "say \"hi\"",           "$HOME",          "semi;touch pwned3",
	                       "a\"; touch pwned4; \""};
	std::string expected;
	for (const char* name : names) {
		std::string from = fTemp.Path(name);
		EXPECT_TRUE(LibCopy(from.c_str(), "to"));
		expected += "cp [-fR] [" + from + "] [to]\n";
	}
	EXPECT_EQ(Log(), expected);
	for (const char* pwned : {"pwned1", "pwned2", "pwned3", "pwned4"})
		EXPECT_FALSE(LibExists(fTemp.Path(pwned).c_str())) << pwned;
}

TEST_F(LibFileTest, MissingToolsAnswerFalseAndRunNothing)
{
	std::string empty = fTemp.Path("empty");
	ASSERT_EQ(mkdir(empty.c_str(), 0755), 0);
	platform_set_directory(B_BEOS_BIN_DIRECTORY, empty.c_str());
	std::string file = fTemp.Path("f");
	MakeFile(file);
	EXPECT_FALSE(LibCopy(file.c_str(), "x"));
	EXPECT_FALSE(LibMove(file.c_str(), "x"));
	EXPECT_FALSE(LibTar("a.tar", file.c_str()));
	LibUnlink(file.c_str());
	Libmimeset(file.c_str());
	EXPECT_TRUE(LibExists(file.c_str()));
	EXPECT_EQ(Log(), "");
}

TEST_F(LibFileTest, MkdirOnlyWhereNothingIs)
{
	std::string dir = fTemp.Path("new");
	EXPECT_TRUE(Libmkdir(dir.c_str()));
	struct stat info;
	ASSERT_EQ(stat(dir.c_str(), &info), 0);
	EXPECT_TRUE(S_ISDIR(info.st_mode));

	MakeFile(dir + "/inside");
	EXPECT_FALSE(Libmkdir(dir.c_str()));
	EXPECT_TRUE(LibExists((dir + "/inside").c_str()));
	EXPECT_FALSE(Libmkdir((dir + "/inside").c_str()));

	// True even when the directory cannot be made.
	EXPECT_TRUE(Libmkdir((dir + "/inside/below").c_str()));
	EXPECT_FALSE(LibExists((dir + "/inside/below").c_str()));
}

TEST_F(LibFileTest, MoveAcrossVolumesRemovesTheSourceEvenWhenTheCopyFails)
{
	struct stat tmp;
	struct stat shm;
	if (stat(fTemp.Path().c_str(), &tmp) != 0 || stat("/dev/shm", &shm) != 0 ||
	    tmp.st_dev == shm.st_dev || access("/dev/shm", W_OK) != 0)
		GTEST_SKIP() << "no second volume to move to";
	TempDirectory other("/dev/shm");
	ASSERT_TRUE(other.Valid());

	std::string from = fTemp.Path("from");
	MakeFile(from);
	std::string to = other.Path("to");
	setenv("FAKE_CP_FAILS", "1", 1);
	EXPECT_FALSE(LibMove(from.c_str(), to.c_str()));
	EXPECT_FALSE(LibExists(from.c_str()));
	EXPECT_EQ(Log(), "cp [-fR] [" + from + "] [" + to + "]\nmimeset [-f] [" + to + "]\nrm [-fr] [" +
	                     from + "]\n");

	unsetenv("FAKE_CP_FAILS");
	MakeFile(from);
	EXPECT_TRUE(LibMove(from.c_str(), to.c_str()));
	EXPECT_FALSE(LibExists(from.c_str()));
}

TEST_F(LibFileTest, TarAndZipPackTheLeafFromTheParentAndStayThere)
{
	std::string results = fTemp.Path("results");
	ASSERT_EQ(mkdir(results.c_str(), 0755), 0);
	// The tool's failing status is not part of the answer.
	EXPECT_TRUE(LibTar("results.tar", results.c_str()));
	EXPECT_EQ(Log(), "tar [-cf] [results.tar] [results]\n");
	EXPECT_EQ(Cwd(), fTemp.Path());
	std::remove(fLog.c_str());

	// Zip is found along PATH.
	std::string first = fTemp.Path("first");
	std::string second = fTemp.Path("second");
	ASSERT_EQ(mkdir(first.c_str(), 0755), 0);
	ASSERT_EQ(mkdir(second.c_str(), 0755), 0);
	MakeTool("zip", "exit 0", second);
	BPath source(fTemp.Path("results.tar").c_str());

	unsetenv("PATH");
	EXPECT_FALSE(LibZip("out.zip", source, 9));
	setenv("PATH", first.c_str(), 1);
	EXPECT_FALSE(LibZip("out.zip", source, 9));
	EXPECT_EQ(Log(), "");

	setenv("PATH", (first + ":" + second).c_str(), 1);
	EXPECT_TRUE(LibZip("out.zip", source, 9));
	EXPECT_EQ(Log(), "zip [-rq9] [out.zip] [results.tar]\n");
	EXPECT_EQ(Cwd(), fTemp.Path());

	BPath found;
	ASSERT_TRUE(LibFindEnvFile("PATH", "zip", found));
	EXPECT_EQ(std::string(found.Path()), second + "/zip");
	EXPECT_FALSE(LibFindEnvFile("QS_SURELY_UNSET_VARIABLE", "zip", found));
}

TEST_F(LibFileTest, SavePanelReplyGivesDirectoryAndTrimmedName)
{
	BMessage reply('save');
	entry_ref dir(fTemp.Path().c_str());
	BPath out;
	EXPECT_FALSE(LibGetFilePath(&reply, out));
	reply.AddRef("directory", &dir);
	EXPECT_FALSE(LibGetFilePath(&reply, out));
	reply.AddString("name", "  run 1.txt \t");
	ASSERT_TRUE(LibGetFilePath(&reply, out));
	EXPECT_EQ(std::string(out.Path()), fTemp.Path("run 1.txt"));
}

// Fixed names in a shared directory: what is cleared, what is refused, and
// that a refused or followed entry's target never changes.
TEST_F(LibFileTest, SharedNamesAreClearedOnlyWhenTheUsersOwn)
{
	std::string victim = fTemp.Path("victim");
	ASSERT_EQ(mkdir(victim.c_str(), 0755), 0);
	MakeFile(victim + "/keep");

	struct Case {
		const char* what;
		std::function<void(const std::string&)> make;
		bool otherUser;
		status_t expected;
		bool gone;
	};
	const Case cases[] = {
	    {"nothing", [](const std::string&) {}, false, B_OK, true},
	    {"stale directory with a link inside",
	     [&](const std::string& p) {
		     ASSERT_EQ(mkdir(p.c_str(), 0755), 0);
		     ASSERT_EQ(symlink(victim.c_str(), (p + "/link").c_str()), 0);
		     MakeFile(p + "/old");
	     },
	     false, B_OK, true},
	    {"stale file", [&](const std::string& p) { MakeFile(p); }, false, B_OK, true},
	    {"link to a directory",
	     [&](const std::string& p) { ASSERT_EQ(symlink(victim.c_str(), p.c_str()), 0); }, false,
	     B_LINK_LIMIT, false},
	    {"dangling link",
	     [&](const std::string& p) { ASSERT_EQ(symlink((victim + "/new").c_str(), p.c_str()), 0); },
	     false, B_LINK_LIMIT, false},
	    {"another user's directory",
	     [&](const std::string& p) {
		     ASSERT_EQ(mkdir(p.c_str(), 0755), 0);
		     MakeFile(p + "/theirs");
	     },
	     true, B_PERMISSION_DENIED, false},
	};
	int n = 0;
	for (const Case& c : cases) {
		std::string path = fTemp.Path("results" + std::to_string(n++));
		c.make(path);
		if (c.otherUser)
			platform_set_user_id(static_cast<int64>(getuid()) + 1);
		EXPECT_EQ(LibClearSharedPath(path.c_str()), c.expected) << c.what;
		platform_set_user_id(-1);
		struct stat info;
		EXPECT_EQ(lstat(path.c_str(), &info) != 0, c.gone) << c.what;
		if (c.otherUser) {
			EXPECT_TRUE(LibExists((path + "/theirs").c_str()));
		}
	}
	EXPECT_TRUE(LibExists((victim + "/keep").c_str()));
	EXPECT_FALSE(LibExists((victim + "/new").c_str()));

	// Where the process may give a file away, a real owner is refused too.
	if (geteuid() == 0) {
		std::string theirs = fTemp.Path("theirs");
		ASSERT_EQ(mkdir(theirs.c_str(), 0755), 0);
		ASSERT_EQ(chown(theirs.c_str(), 65534, 65534), 0);
		EXPECT_EQ(LibClearSharedPath(theirs.c_str()), B_PERMISSION_DENIED);
		EXPECT_TRUE(LibExists(theirs.c_str()));
	}

	// The user's own that cannot be removed (no rm) is reported, not used.
	std::string stuck = fTemp.Path("stuck");
	MakeFile(stuck);
	std::string empty = fTemp.Path("nobin");
	ASSERT_EQ(mkdir(empty.c_str(), 0755), 0);
	platform_set_directory(B_BEOS_BIN_DIRECTORY, empty.c_str());
	EXPECT_EQ(LibClearSharedPath(stuck.c_str()), B_FILE_EXISTS);
}

TEST_F(LibFileTest, PrivateEntriesAreTheUsersAloneAndNeverFollowLinks)
{
	std::string victim = fTemp.Path("victim");
	MakeFile(victim);

	std::string dir = fTemp.Path("results");
	ASSERT_EQ(LibMakePrivateDirectory(dir.c_str()), B_OK);
	struct stat info;
	ASSERT_EQ(lstat(dir.c_str(), &info), 0);
	EXPECT_TRUE(S_ISDIR(info.st_mode));
	EXPECT_EQ(info.st_mode & 0777, 0700u);
	// A second call finds the user's own directory: still fine.
	EXPECT_EQ(LibMakePrivateDirectory(dir.c_str()), B_OK);

	// Someone was quicker with a link or a file.
	std::string link = fTemp.Path("link");
	ASSERT_EQ(symlink(victim.c_str(), link.c_str()), 0);
	EXPECT_EQ(LibMakePrivateDirectory(link.c_str()), B_LINK_LIMIT);
	EXPECT_EQ(LibMakePrivateDirectory(victim.c_str()), B_NOT_A_DIRECTORY);
	platform_set_user_id(static_cast<int64>(getuid()) + 1);
	EXPECT_EQ(LibMakePrivateDirectory(dir.c_str()), B_PERMISSION_DENIED);
	platform_set_user_id(-1);

	std::string file = fTemp.Path("Quickstep.tar");
	ASSERT_EQ(LibMakePrivateFile(file.c_str()), B_OK);
	ASSERT_EQ(lstat(file.c_str(), &info), 0);
	EXPECT_EQ(info.st_mode & 0777, 0600u);
	EXPECT_EQ(info.st_size, 0);
	EXPECT_EQ(LibMakePrivateFile(file.c_str()), B_FILE_EXISTS);
	EXPECT_EQ(LibMakePrivateFile(link.c_str()), B_FILE_EXISTS);

	EXPECT_EQ(FileText(victim), "data");
}
