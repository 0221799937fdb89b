#include "lib/LibFile.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <FindDirectory.h>
#include <Message.h>
#include <Path.h>
#include <PlatformTest.h>

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

	std::string Log()
	{
		std::stringstream text;
		text << std::ifstream(fLog).rdbuf();
		return text.str();
	}

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
