#include <Entry.h>

#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <File.h>
#include <OS.h>

#include "platform/TempDirectory.h"

namespace {

class EntryTest : public testing::Test
{
protected:
	void SetUp() override { ASSERT_TRUE(temp.Valid()); }

	TempDirectory temp;
};

} // namespace

TEST_F(EntryTest, AbstractEntriesNeedAnExistingDirectory)
{
	BEntry entry(temp.Path("not-yet").c_str());
	EXPECT_EQ(entry.InitCheck(), B_OK);
	EXPECT_FALSE(entry.Exists());
	EXPECT_FALSE(entry.IsFile());

	EXPECT_EQ(entry.SetTo(temp.Path("missing/leaf").c_str()), B_ENTRY_NOT_FOUND);
	EXPECT_EQ(entry.InitCheck(), B_NO_INIT);

	std::ofstream(temp.Path("plain")) << "x";
	EXPECT_EQ(entry.SetTo(temp.Path("plain/leaf").c_str()), B_NOT_A_DIRECTORY);
}

TEST_F(EntryTest, NamesRefsAndParents)
{
	std::ofstream(temp.Path("data.txt")) << "x";
	BEntry entry(temp.Path("data.txt").c_str());
	EXPECT_TRUE(entry.IsFile());
	EXPECT_FALSE(entry.IsDirectory());

	char name[B_FILE_NAME_LENGTH];
	ASSERT_EQ(entry.GetName(name), B_OK);
	EXPECT_STREQ(name, "data.txt");

	entry_ref ref;
	ASSERT_EQ(entry.GetRef(&ref), B_OK);
	EXPECT_EQ(ref.path, temp.Path("data.txt"));

	BEntry parent;
	ASSERT_EQ(entry.GetParent(&parent), B_OK);
	EXPECT_TRUE(parent.IsDirectory());
	BPath parentPath;
	parent.GetPath(&parentPath);
	EXPECT_EQ(std::string(parentPath.Path()), temp.Path());
}

TEST_F(EntryTest, RenameRespectsClobberAndFollowsTheFile)
{
	std::ofstream(temp.Path("a")) << "first";
	std::ofstream(temp.Path("b")) << "second";
	BEntry entry(temp.Path("a").c_str());

	EXPECT_EQ(entry.Rename("b"), B_FILE_EXISTS);
	EXPECT_TRUE(BEntry(temp.Path("a").c_str()).Exists());

	// A relative name is taken from the entry's own directory.
	ASSERT_EQ(entry.Rename("c"), B_OK);
	EXPECT_FALSE(BEntry(temp.Path("a").c_str()).Exists());
	BPath path;
	entry.GetPath(&path);
	EXPECT_EQ(std::string(path.Path()), temp.Path("c"));

	ASSERT_EQ(entry.Rename(temp.Path("b").c_str(), true), B_OK);
	BFile file(temp.Path("b").c_str(), B_READ_ONLY);
	char text[16] = {};
	file.Read(text, sizeof(text) - 1);
	EXPECT_STREQ(text, "first");
}

TEST_F(EntryTest, RemoveTakesFilesAndEmptyDirectories)
{
	std::ofstream(temp.Path("f")) << "x";
	BEntry file(temp.Path("f").c_str());
	EXPECT_EQ(file.Remove(), B_OK);
	EXPECT_FALSE(file.Exists());
	EXPECT_EQ(file.InitCheck(), B_OK);
	EXPECT_EQ(file.Remove(), B_ENTRY_NOT_FOUND);

	std::string dir = temp.Path("d");
	ASSERT_EQ(mkdir(dir.c_str(), 0755), 0);
	std::ofstream(dir + "/inner") << "x";
	BEntry directory(dir.c_str());
	EXPECT_EQ(directory.Remove(), B_DIRECTORY_NOT_EMPTY);
	unlink((dir + "/inner").c_str());
	EXPECT_EQ(directory.Remove(), B_OK);
	EXPECT_FALSE(directory.Exists());
}

TEST_F(EntryTest, TraverseResolvesALinkAtTheLeaf)
{
	std::ofstream(temp.Path("target")) << "x";
	ASSERT_EQ(symlink("target", temp.Path("link").c_str()), 0);
	BEntry plain(temp.Path("link").c_str());
	EXPECT_TRUE(plain.IsSymLink());
	BEntry followed(temp.Path("link").c_str(), true);
	EXPECT_TRUE(followed.IsFile());
	char name[B_FILE_NAME_LENGTH];
	followed.GetName(name);
	EXPECT_STREQ(name, "target");
}
