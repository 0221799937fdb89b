#include "results/ResultsPacker.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <PlatformTest.h>

#include "CommandOutput.h"
#include "lib/LibFile.h"
#include "platform/TempDirectory.h"

namespace {

// Packs with the system's real tar and zip, in a fixture standing for /tmp.
class ResultsPackerTest : public testing::Test
{
protected:
	void SetUp() override
	{
		ASSERT_TRUE(fTmp.Valid());
		ASSERT_TRUE(fHome.Valid());
		if (!LibExists("/bin/tar") || system("command -v zip unzip > /dev/null") != 0)
			GTEST_SKIP() << "tar, zip and unzip are needed";
		platform_set_tmp_directory(fTmp.Path().c_str());
		char cwd[4096];
		fOldCwd = getcwd(cwd, sizeof(cwd)) != nullptr ? cwd : "/";
		fVictim = fHome.Path("victim");
		std::ofstream(fVictim) << "precious";
	}

	void TearDown() override
	{
		platform_set_tmp_directory(nullptr);
		platform_set_user_id(-1);
		EXPECT_EQ(chdir(fOldCwd.c_str()), 0);
	}

	// A results file at name in the user's directory, packed as the window
	// does it: prepared, the report written, packed.
	ResultsPackStatus SaveAndPack(const std::string& name, BPath& saved, LibString& problem)
	{
		std::string path = fHome.Path(name);
		std::ofstream(path) << "1.0\n5\nrun 1\n";
		ResultsPacker packer;
		if (!packer.Prepare(problem))
			return kPackRefused;
		std::ofstream(packer.ReportPath()) << "pci class = <3>, type = <Display>\n";
		return packer.Pack(path.c_str(), saved, problem);
	}

	TempDirectory fTmp;
	TempDirectory fHome;
	std::string fOldCwd, fVictim;
};

} // namespace

TEST_F(ResultsPackerTest, ZipHoldsTheTarOfResultsAndReportAndNothingIsLeftBehind)
{
	// Shell characters in the chosen name reach the tools as a name only.
	for (std::string name : {"Quickstep.results", "it's \"$(touch pwned)\" `x`.results"}) {
		BPath saved;
		LibString problem;
		ASSERT_EQ(SaveAndPack(name, saved, problem), kPackZipped) << problem.String();
		std::string zip = fHome.Path(name + ".zip");
		EXPECT_EQ(std::string(saved.Path()), zip);
		// The tar under the chosen name made way for the zip.
		EXPECT_FALSE(LibExists(fHome.Path(name).c_str()));
		EXPECT_FALSE(LibExists(fTmp.Path("results").c_str()));
		EXPECT_FALSE(LibExists(fTmp.Path("Quickstep.tar").c_str()));
		EXPECT_FALSE(LibExists(fHome.Path("pwned").c_str()));

		std::string quoted = "'" + zip + "'";
		if (name.find('\'') != std::string::npos)
			continue;
		EXPECT_NE(CommandOutput("unzip -Z1 " + quoted).find(name), std::string::npos);
		EXPECT_EQ(CommandOutput("unzip -p " + quoted + " | tar -tf - | LC_ALL=C sort"),
		          "results/\nresults/" + name + "\nresults/unknown_devices\n");
		EXPECT_EQ(CommandOutput("unzip -p " + quoted + " | tar -xOf - results/" + name),
		          "1.0\n5\nrun 1\n");
	}
}

TEST_F(ResultsPackerTest, LinksAndOtherUsersEntriesAtTheFixedNamesStopThePacking)
{
	std::string folder = fTmp.Path("results");
	std::string archive = fTmp.Path("Quickstep.tar");
	struct Case {
		const char* what;
		std::string path;
		bool link;
		bool otherUser;
		const char* why;
	};
	const Case cases[] = {
	    {"link at the folder", folder, true, false, "is a symbolic link"},
	    {"link at the archive", archive, true, false, "is a symbolic link"},
	    {"another user's folder", folder, false, true, "belongs to another user"},
	    {"another user's archive", archive, false, true, "belongs to another user"},
	};
	for (const Case& c : cases) {
		if (c.link) {
			ASSERT_EQ(symlink(fVictim.c_str(), c.path.c_str()), 0);
		} else {
			ASSERT_EQ(c.path == folder ? mkdir(c.path.c_str(), 0755) : 0, 0);
			std::ofstream(c.path == folder ? c.path + "/theirs" : c.path) << "theirs";
			platform_set_user_id(static_cast<int64>(getuid()) + 1);
		}
		BPath saved;
		LibString problem;
		EXPECT_EQ(SaveAndPack("Quickstep.results", saved, problem), kPackRefused) << c.what;
		platform_set_user_id(-1);
		EXPECT_NE(std::string(problem.String()).find(c.path + "\" " + c.why), std::string::npos)
		    << problem.String();
		// The results file is kept; nothing was packed or followed.
		EXPECT_TRUE(LibExists(fHome.Path("Quickstep.results").c_str()));
		EXPECT_FALSE(LibExists(fHome.Path("Quickstep.results.zip").c_str()));
		EXPECT_EQ(FileText(fVictim), "precious");
		if (!c.link) {
			EXPECT_TRUE(LibExists(c.path.c_str()));
		}
		LibUnlink(c.path.c_str());
	}
}

TEST_F(ResultsPackerTest, StaleEntriesOfTheUsersOwnAreReplaced)
{
	std::string folder = fTmp.Path("results");
	ASSERT_EQ(mkdir(folder.c_str(), 0777), 0);
	std::ofstream(folder + "/old") << "old";
	ASSERT_EQ(symlink(fVictim.c_str(), (folder + "/link").c_str()), 0);
	std::ofstream(fTmp.Path("Quickstep.tar")) << "old tar";

	BPath saved;
	LibString problem;
	ASSERT_EQ(SaveAndPack("Quickstep.results", saved, problem), kPackZipped) << problem.String();
	EXPECT_EQ(
	    CommandOutput("unzip -p '" + std::string(saved.Path()) + "' | tar -tf - | LC_ALL=C sort"),
	    "results/\nresults/Quickstep.results\nresults/unknown_devices\n");
	EXPECT_EQ(FileText(fVictim), "precious");
}

TEST_F(ResultsPackerTest, TargetsThatPackingWouldDestroyAreRefused)
{
	ResultsPacker packer;
	LibString problem;
	EXPECT_TRUE(packer.AcceptsTarget(fHome.Path("Quickstep.results").c_str(), problem));
	for (std::string target :
	     {fHome.Path(), fTmp.Path("results"), fTmp.Path("results/Quickstep.results"),
	      fTmp.Path("Quickstep.tar"), std::string()}) {
		EXPECT_FALSE(packer.AcceptsTarget(target.c_str(), problem)) << target;
		EXPECT_NE(std::string(problem.String()).find("could not save"), std::string::npos);
	}
	// The user's directory was left alone.
	EXPECT_EQ(FileText(fVictim), "precious");
}
