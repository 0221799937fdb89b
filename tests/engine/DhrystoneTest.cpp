#include "engine/Dhrystone.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>


namespace {

// Runs a fresh Dhrystone for runs and answers the lines it printed.
std::vector<std::string>
RunAndCapture(long runs)
{
	Dhrystone dhrystone;
	testing::internal::CaptureStderr();
	dhrystone.Run(runs);
	std::string text = testing::internal::GetCapturedStderr();

	std::vector<std::string> lines;
	size_t start = 0;
	for (size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1)
		lines.push_back(text.substr(start, end - start));
	EXPECT_EQ(start, text.size()) << "printout does not end with a line break";
	return lines;
}

} // namespace


// Only the low 16 bits of the count are taken; outer = high byte / 32000 is
// the number of passes, each running 1 + inner, ..., 1 iterations.
TEST(DhrystoneTest, LoopCountsAndPrintedValues)
{
	const struct {
		long runs;
		const char* header;
		bool iterates;
	} cases[] = {
	    // The benchmark's own request: 1600000 = 24 * 65536 + 27136.
	    {1600000, "Dhrystone: iter 27136, outer 0, inner 27136", false},
	    {31999, "Dhrystone: iter 31999, outer 0, inner 31999", false},
	    {32000, "Dhrystone: iter 32000, outer 1, inner 0", false},
	    {65536, "Dhrystone: iter 0, outer 0, inner 0", false},
	    {64000 - 65536, "Dhrystone: iter 64000, outer 2, inner 0", false},
	    {32001, "Dhrystone: iter 32001, outer 1, inner 1", true},
	    // Two passes of 3 + 2 + 1 iterations: the check value restarts at 10
	    // before every pass and shows only the last, one-iteration pass.
	    {64003, "Dhrystone: iter 64003, outer 2, inner 3", true},
	};
	const std::string string =
	    "\tstr compt = 'DHRYSTONE PROGRAM, SOME STRING', should be 'DHRYSTONE PROGRAM, SOME STRING";
	for (const auto& testCase : cases) {
		SCOPED_TRACE(testCase.runs);
		const std::vector<std::string> lines = RunAndCapture(testCase.runs);
		ASSERT_EQ(lines.size(), 19u);
		EXPECT_EQ(lines[0], testCase.header);
		EXPECT_EQ(lines[7], "pointer:");
		EXPECT_EQ(lines[9], "\tdiscr = 0, should be 0");
		EXPECT_EQ(lines[10], "\tenum comp = 2, sould be 2");
		EXPECT_EQ(lines[12], string);
		EXPECT_EQ(lines[13], "next_pointer");
		if (!testCase.iterates) {
			// The first record still holds the constructor's values.
			EXPECT_EQ(lines[11], "\tint comp = 40, should be 17");
			continue;
		}
		EXPECT_EQ(lines[1], "value = 5, should be 5");
		EXPECT_EQ(lines[2], "test_state = 1, should be 1");
		EXPECT_EQ(lines[3], "char_1 = 'A', should be 'A'");
		EXPECT_EQ(lines[4], "char_2 = 'B', should be 'B'");
		EXPECT_EQ(lines[5], "array_1[8] = 7, should be 7");
		EXPECT_EQ(lines[6], "array_2[8][7] = 11, should be number_of_runs + 10");
		EXPECT_EQ(lines[8].rfind("\tptr_comp = ", 0), 0u) << lines[8];
		EXPECT_NE(lines[8].find(", should be impl dependent"), std::string::npos);
		EXPECT_EQ(lines[11], "\tint comp = 17, should be 17");
		// Both records end up pointing at the second record.
		EXPECT_EQ(lines[14], lines[8]);
		EXPECT_EQ(lines[15], "\tdiscr = 0, should be 0");
		EXPECT_EQ(lines[16], "\tenum comp = 1, sould be 1");
		EXPECT_EQ(lines[17], "\tint comp = 18, should be 18");
		EXPECT_EQ(lines[18], string);
	}
}


TEST(DhrystoneTest, ProceduresFollowThePublishedBenchmark)
{
	Dhrystone dhrystone;

	// Function_1 sets the first global character only when both are equal.
	EXPECT_EQ(dhrystone.Function_1('A', 'C'), Dhrystone::Ident_1);
	EXPECT_EQ(dhrystone.Function_1('C', 'C'), Dhrystone::Ident_2);
	EXPECT_TRUE(dhrystone.Function_3(Dhrystone::Ident_3));
	EXPECT_FALSE(dhrystone.Function_3(Dhrystone::Ident_1));
	// "...1'ST STRING" sorts before "...2'ND STRING".
	EXPECT_FALSE(
	    dhrystone.Function_2("DHRYSTONE PROGRAM, 1'ST STRING", "DHRYSTONE PROGRAM, 2'ND STRING"));
	EXPECT_TRUE(
	    dhrystone.Function_2("DHRYSTONE PROGRAM, 2'ND STRING", "DHRYSTONE PROGRAM, 1'ST STRING"));

	Dhrystone::Enumeration enumeration = Dhrystone::Ident_1;
	dhrystone.Procedure_6(Dhrystone::Ident_3, enumeration);
	EXPECT_EQ(enumeration, Dhrystone::Ident_2);
	dhrystone.Procedure_6(Dhrystone::Ident_5, enumeration);
	EXPECT_EQ(enumeration, Dhrystone::Ident_3);
	dhrystone.Procedure_6(Dhrystone::Ident_4, enumeration);
	EXPECT_EQ(enumeration, Dhrystone::Ident_4);

	int arr1[50] = {};
	int arr2[50][50] = {};
	arr2[8][7] = 10;
	dhrystone.Procedure_8(arr1, arr2, 3, 7);
	EXPECT_EQ(arr1[8], 7);
	EXPECT_EQ(arr1[9], 7);
	EXPECT_EQ(arr1[38], 8);
	EXPECT_EQ(arr2[8][8], 8);
	EXPECT_EQ(arr2[8][9], 8);
	EXPECT_EQ(arr2[8][7], 11);
	EXPECT_EQ(arr2[28][8], 7);
}
