// quickstep-cli help on help files a user did not write: found in the working
// directory, read as far as the reader's bounds allow, never a crash.
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include <sys/wait.h>

#include <gtest/gtest.h>

#include "platform/TempDirectory.h"

namespace {

std::string
Contents(const std::string& path)
{
	std::ifstream file(path);
	std::stringstream text;
	text << file.rdbuf();
	return text.str();
}

TEST(HelpCommandTest, DeeplyNestedHelpFileIsReadToTheBoundWithOneLine)
{
	TempDirectory directory;
	ASSERT_TRUE(directory.Valid());
	std::string deep = "<CONTENTS><ITEM PAGE=\"p\">Top";
	for (int i = 0; i < 6000; i++)
		deep += "<a>";
	std::ofstream(directory.Path("QStp.help")) << deep;

	const std::string command =
	    "cd '" + directory.Path() + "' && '" QS_BIN_DIR "/quickstep-cli' help >out.txt 2>err.txt";
	const int status = system(command.c_str());
	ASSERT_TRUE(WIFEXITED(status)) << "killed by signal " << WTERMSIG(status);
	EXPECT_EQ(0, WEXITSTATUS(status));
	EXPECT_NE(std::string::npos, Contents(directory.Path("out.txt")).find("Top"));
	EXPECT_NE(std::string::npos,
	          Contents(directory.Path("err.txt")).find("elements nested deeper than 64 levels"));
}

} // namespace
