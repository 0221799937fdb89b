#include <Path.h>

#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

#include <Directory.h>
#include <Entry.h>

#include "platform/TempDirectory.h"

TEST(PathTest, NormalisesAbsolutePathsLexically)
{
	struct {
		const char* in;
		const char* out;
	} cases[] = {
	    {"/", "/"},
	    {"//usr///bin/", "/usr/bin"},
	    {"/usr/./bin/.", "/usr/bin"},
	    {"/usr/lib/../bin", "/usr/bin"},
	    {"/../..", "/"},
	    {"/a/b/../../..", "/"},
	    {"/a/..b/c", "/a/..b/c"},
	};
	for (const auto& test : cases) {
		BPath path(test.in);
		ASSERT_EQ(path.InitCheck(), B_OK) << test.in;
		EXPECT_STREQ(path.Path(), test.out) << test.in;
	}
}

TEST(PathTest, RelativePathsStartAtTheWorkingDirectory)
{
	char cwd[4096];
	ASSERT_NE(getcwd(cwd, sizeof(cwd)), nullptr);
	BPath path("sub/../file.txt");
	ASSERT_EQ(path.InitCheck(), B_OK);
	EXPECT_EQ(std::string(path.Path()),
	          std::string(cwd == std::string("/") ? "" : cwd) + "/file.txt");
}

TEST(PathTest, LeafJoinsAndRejectsAbsoluteLeaves)
{
	BPath path("/usr", "share/doc");
	EXPECT_STREQ(path.Path(), "/usr/share/doc");
	EXPECT_STREQ(path.Leaf(), "doc");

	EXPECT_EQ(path.SetTo("/usr", "/etc"), B_BAD_VALUE);
	EXPECT_EQ(path.Path(), nullptr);
	EXPECT_EQ(path.SetTo(""), B_BAD_VALUE);
	EXPECT_EQ(path.SetTo(static_cast<const char*>(nullptr)), B_BAD_VALUE);

	// Setting a path from its own text must not read freed memory.
	path.SetTo("/a/b");
	EXPECT_EQ(path.SetTo(path.Path(), "c"), B_OK);
	EXPECT_STREQ(path.Path(), "/a/b/c");
	EXPECT_EQ(path.Append("../d"), B_OK);
	EXPECT_STREQ(path.Path(), "/a/b/d");
	EXPECT_EQ(path.Append("/e"), B_BAD_VALUE);
	EXPECT_STREQ(path.Path(), "/a/b/d");
}

TEST(PathTest, ParentsClimbToTheRootAndStop)
{
	BPath path("/a/b");
	BPath parent;
	ASSERT_EQ(path.GetParent(&parent), B_OK);
	EXPECT_STREQ(parent.Path(), "/a");
	ASSERT_EQ(parent.GetParent(&parent), B_OK);
	EXPECT_STREQ(parent.Path(), "/");
	EXPECT_STREQ(parent.Leaf(), "");
	EXPECT_EQ(parent.GetParent(&parent), B_ENTRY_NOT_FOUND);
	EXPECT_EQ(parent.InitCheck(), B_NO_INIT);

	BPath unset;
	EXPECT_EQ(unset.Leaf(), nullptr);
	EXPECT_NE(unset.GetParent(&parent), B_OK);
}

TEST(PathTest, EntryRefsCarryThePath)
{
	entry_ref ref("/x/./y/");
	BPath path(&ref);
	EXPECT_STREQ(path.Path(), "/x/y");
	EXPECT_TRUE(path == "/x/y");
	EXPECT_TRUE(path != BPath("/x"));
}

TEST(PathTest, CreateDirectoryMakesEveryLevel)
{
	TempDirectory temp;
	ASSERT_TRUE(temp.Valid());
	std::string deep = temp.Path("one/two/three");
	EXPECT_EQ(create_directory(deep.c_str(), 0755), B_OK);
	EXPECT_TRUE(BEntry(deep.c_str()).IsDirectory());
	EXPECT_EQ(create_directory(deep.c_str(), 0755), B_OK);

	std::string file = temp.Path("one/file");
	std::ofstream{file};
	EXPECT_EQ(create_directory(file.c_str(), 0755), B_NOT_A_DIRECTORY);
	EXPECT_EQ(create_directory((file + "/below").c_str(), 0755), B_NOT_A_DIRECTORY);
}
