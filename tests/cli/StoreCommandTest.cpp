// The store, compare and help commands, run as a program: a copy of
// quickstep-cli in a temporary directory, so its store belongs to a
// "quickstep" there that does not exist, kept in a per-user store inside the
// same directory, and its help is the file found in that directory.
#include <cstdlib>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "CommandOutput.h"
#include "platform/TempDirectory.h"
#include "results/CompareStore.h"
#include "results/ResultList.h"

namespace {

const std::string kBoxA = "Box A (2-x86@300/66MHz) 128MB RAM\t1:Acme, IDE\t"
                          "500:1000000/1.250000,2.500000;550:1/2.000000,4.000000;";
const std::string kBoxB = "Box B (1-x86@100/66MHz) 64MB RAM\t500:1000000/5.000000;";

class StoreCommandTest : public testing::Test
{
protected:
	void SetUp() override
	{
		ASSERT_TRUE(fDirectory.Valid());
		fDirectory.UseAsDataHome();
		const std::string copy = "cp '" QS_BIN_DIR "/quickstep-cli' '" + fDirectory.Path() + "/'";
		ASSERT_EQ(0, system(copy.c_str()));
		Put("a.results", Results(kBoxA));
		Put("b.results", Results(kBoxB));
	}

	static std::string Results(const std::string& record)
	{
		return "1.0\n" + std::to_string(record.size()) + "\n" + record + "\n";
	}

	void Put(const char* leaf, const std::string& text)
	{
		std::ofstream(fDirectory.Path(leaf)) << text;
	}

	// Runs the copy in the temporary directory, with the variables given
	// before it; answers its exit status.
	int Run(const std::string& arguments, const std::string& variables = "")
	{
		const std::string command = "cd '" + fDirectory.Path() + "' && " + variables +
		                            " ./quickstep-cli " + arguments + " >out.txt 2>err.txt";
		const int status = system(command.c_str());
		fOut = FileText(fDirectory.Path("out.txt"));
		fErr = FileText(fDirectory.Path("err.txt"));
		return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
	}

	int StoredRuns()
	{
		CompareStore store(fDirectory.Path("quickstep").c_str());
		ResultList rows;
		EXPECT_EQ(B_OK, store.Read(rows));
		return rows.Size();
	}

	TempDirectory fDirectory;
	std::string fOut;
	std::string fErr;
};

} // namespace


TEST_F(StoreCommandTest, AddTakesGoodFilesAndNamesEachBadOne)
{
	Put("bad.results", "1.0\n99\nshort\n");
	Put("old.results", "0.9\n3\nabc\n");
	EXPECT_EQ(1, Run("store add a.results bad.results missing.results old.results b.results"));
	EXPECT_NE(std::string::npos, fErr.find("bad.results holds a record whose length does not"));
	EXPECT_NE(std::string::npos, fErr.find("missing.results cannot be opened"));
	EXPECT_NE(std::string::npos, fErr.find("old.results is not a results file"));
	EXPECT_EQ(std::string::npos, fErr.find("a.results "));
	EXPECT_EQ(2, StoredRuns());

	EXPECT_EQ(0, Run("store list"));
	EXPECT_NE(std::string::npos,
	          fOut.find("   1     2        2  Box A (2-x86@300/66MHz) 128MB RAM\n"
	                    "   2     1        1  Box B (1-x86@100/66MHz) 64MB RAM\n"));

	EXPECT_EQ(0, Run("store add a.results"));
	EXPECT_EQ(3, StoredRuns());
}


TEST_F(StoreCommandTest, RemoveTakesOneRowAndRefusesRowsThatAreNotThere)
{
	ASSERT_EQ(0, Run("store add a.results b.results"));
	EXPECT_EQ(1, Run("store remove 3"));
	EXPECT_NE(std::string::npos, fErr.find("no row 3"));
	EXPECT_EQ(1, Run("store remove 0"));
	EXPECT_EQ(2, StoredRuns());

	EXPECT_EQ(0, Run("store remove 1"));
	EXPECT_NE(std::string::npos, fOut.find("Removed row 1: Box A"));
	EXPECT_EQ(0, Run("store list"));
	EXPECT_NE(std::string::npos, fOut.find("   1     1        1  Box B"));
	EXPECT_EQ(std::string::npos, fOut.find("Box A"));
}


TEST_F(StoreCommandTest, ExportWritesTheTableHereOrIntoTheGivenDirectory)
{
	EXPECT_EQ(1, Run("store export"));
	EXPECT_NE(std::string::npos, fErr.find("empty"));

	ASSERT_EQ(0, Run("store add b.results a.results"));
	EXPECT_EQ(0, Run("store export"));
	EXPECT_NE(std::string::npos, fOut.find(fDirectory.Path("Quickstep.compare")));
	EXPECT_EQ("\tDhrystone\t\t\n\t()\t\t\n\t2 cpu\t1 cpu\t\n"
	          "Box B (1-x86@100/66MHz) 64MB RAM\t\t200000.0\t\n"
	          "Box B (1-x86@100/66MHz) 64MB RAM\t\t200000.0\t\n"
	          "Box A (2-x86@300/66MHz) 128MB RAM\t800000.0\t400000.0\t0.5\t0.2\t\n",
	          FileText(fDirectory.Path("Quickstep.compare")));

	ASSERT_EQ(0, system(("mkdir '" + fDirectory.Path("tables") + "'").c_str()));
	EXPECT_EQ(0, Run("store export tables"));
	EXPECT_NE(std::string::npos,
	          FileText(fDirectory.Path("tables/Quickstep.compare")).find("Box A"));
	EXPECT_EQ(1, Run("store export no/such/dir"));
	EXPECT_NE(std::string::npos, fErr.find("cannot write no/such/dir/Quickstep.compare"));
}


TEST_F(StoreCommandTest, StoreThatCannotBeWrittenSaysSoAndKeepsItsRuns)
{
	ASSERT_EQ(0, Run("store add a.results"));
	// A per-user store under a plain file cannot be used, and the program
	// itself is missing: the store cannot be reached.
	Put("blocker", "x");
	EXPECT_EQ(1, Run("store add b.results", "XDG_DATA_HOME='" + fDirectory.Path("blocker") + "'"));
	EXPECT_NE(std::string::npos, fErr.find("the comparison store of " +
	                                       fDirectory.Path("quickstep") + ": Not a directory"));
	EXPECT_EQ(1, StoredRuns());
}


TEST_F(StoreCommandTest, CompareDrawsBarsOnTheLargestRate)
{
	ASSERT_EQ(0, Run("store add b.results"));
	EXPECT_EQ(0, Run("compare DHRYSTONE --results a.results"));
	const std::string full(40, '#');
	const std::string half = std::string(20, '#') + std::string(20, ' ');
	EXPECT_NE(std::string::npos, fOut.find("Dhrystone (index 500)"));
	EXPECT_NE(std::string::npos, fOut.find("This run: Box A"));
	EXPECT_NE(std::string::npos, fOut.find(" 2 cpu      800000.00 |" + full + "|"));
	EXPECT_NE(std::string::npos, fOut.find(" 1 cpu      400000.00 |" + half + "|"));
	// Box B: 200000 is a quarter of the largest rate.
	EXPECT_NE(std::string::npos, fOut.find("|" + std::string(10, '#') + std::string(30, ' ') +
	                                       "|    25% of this run"));
	EXPECT_LT(fOut.find("Box A"), fOut.find("Box B"));

	EXPECT_EQ(0, Run("compare 550 --results a.results"));
	EXPECT_NE(std::string::npos, fOut.find("Box B (1-x86@100/66MHz) 64MB RAM\n  not measured"));
	EXPECT_EQ(1, Run("compare Whetstone --results a.results"));
	EXPECT_NE(std::string::npos, fErr.find("no run measures 'Whetstone'"));
	EXPECT_EQ(1, Run("compare 500 --results missing.results"));
	EXPECT_NE(std::string::npos, fErr.find("missing.results cannot be opened"));
}


// Runs from other machines can hold any rate: a negative one (a time below
// the calibrated empty loop), one that is not a number, or one beyond the
// float range. Each draws an empty bar; none stops the comparison.
TEST_F(StoreCommandTest, CompareDrawsNoBarForRatesThatAreNotPositiveNumbers)
{
	const std::string empty = "|" + std::string(40, ' ') + "|";
	Put("negative.results", "1.0\n25\nm (2-x)\t100:5/1.0,-0.001;\n");
	EXPECT_EQ(0, Run("compare 100 --results negative.results"));
	EXPECT_NE(std::string::npos, fOut.find(" 2 cpu           5.00 |" + std::string(40, '#') + "|"))
	    << fOut;
	EXPECT_NE(std::string::npos, fOut.find(" 1 cpu       -5000.00 " + empty)) << fOut;

	// Stored, the same run is read on every comparison of the test.
	ASSERT_EQ(0, Run("store add negative.results"));
	const std::string odd = "m (2-x)\t100:0/inf,1e39;101:2000000000/1e-45;";
	Put("odd.results", "1.0\n" + std::to_string(odd.size()) + "\n" + odd + "\n");
	EXPECT_EQ(0, Run("compare 100 --results odd.results")) << fErr;
	EXPECT_NE(std::string::npos, fOut.find(" inf " + empty)) << fOut;
	// A rate beyond a float's range is taken as the largest float: the whole
	// bar, not an overflowing conversion.
	EXPECT_EQ(0, Run("compare 101 --results odd.results")) << fErr;
	EXPECT_NE(std::string::npos, fOut.find("|" + std::string(40, '#') + "|")) << fOut;

	// An index beyond 32 bits names no test rather than wrapping onto 100.
	EXPECT_EQ(1, Run("compare 4294967396 --results negative.results"));
	EXPECT_NE(std::string::npos, fErr.find("no run measures '4294967396'"));
}


// A help file a user did not write is read as far as the reader's bounds
// allow, never a crash.
typedef StoreCommandTest HelpCommandTest;

TEST_F(HelpCommandTest, DeeplyNestedHelpFileIsReadToTheBoundWithOneLine)
{
	std::string deep = "<CONTENTS><ITEM PAGE=\"p\">Top";
	for (int i = 0; i < 6000; i++)
		deep += "<a>";
	Put("QStp.help", deep);
	EXPECT_EQ(0, Run("help"));
	EXPECT_NE(std::string::npos, fOut.find("Top"));
	EXPECT_NE(std::string::npos, fErr.find("elements nested deeper than 64 levels"));
}
