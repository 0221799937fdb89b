#include "help/HelpFile.h"

#include <fstream>
#include <set>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <Path.h>
#include <PlatformTest.h>

#include "CommandOutput.h"
#include "help/xmlTag.h"
#include "platform/TempDirectory.h"

static const char* kShipped = QS_SOURCE_DIR "/data/QStp.help";


static void
WriteFile(const std::string& path, const char* text)
{
	ASSERT_TRUE(std::ofstream(path) << text);
}


// A user's directory with a working directory "cwd", a temporary directory
// "tmp" and the program "quickstep", whose help to store is source.help.
class HelpFileTest : public testing::Test
{
protected:
	void SetUp() override
	{
		fDir.UseAsDataHome();
		ASSERT_EQ(mkdir(fDir.Path("cwd").c_str(), 0755), 0);
		ASSERT_EQ(mkdir(fDir.Path("tmp").c_str(), 0755), 0);
		platform_set_directory(B_COMMON_TEMP_DIRECTORY, fDir.Path("tmp").c_str());
		ASSERT_NE(getcwd(fPrevious, sizeof(fPrevious)), nullptr);
		ASSERT_EQ(chdir(fDir.Path("cwd").c_str()), 0);
		WriteFile(fSource, "<CONTENTS></CONTENTS>\n");
	}

	void TearDown() override
	{
		EXPECT_EQ(chdir(fPrevious), 0);
		platform_set_directory(B_COMMON_TEMP_DIRECTORY, nullptr);
	}

	TempDirectory fDir;
	const std::string fExecutable = fDir.Path("quickstep");
	const std::string fSource = fDir.Path("source.help");
	char fPrevious[1024] = {};
};


TEST_F(HelpFileTest, ShippedHelpHasContentsAndEveryPageIsReachable)
{
	LinkList<HelpRow> rows;
	ASSERT_EQ(HelpFile::ReadContents(kShipped, rows), B_OK);
	ASSERT_GT(rows.Size(), 10);

	LinkList<LibString> names;
	ASSERT_EQ(HelpFile::ReadPageNames(kShipped, names), B_OK);
	std::set<std::string> pages;
	for (LibString* name = names.First(); name != nullptr; name = names.Next())
		EXPECT_TRUE(pages.insert(name->String()).second) << "page twice: " << name->String();

	std::set<std::string> reached, views;
	for (HelpRow* row = rows.First(); row != nullptr; row = rows.Next()) {
		EXPECT_FALSE(row->label.IsEmpty());
		ASSERT_FALSE(row->page.IsEmpty()) << "row without a page: " << row->label.String();
		EXPECT_EQ(pages.count(row->page.String()), 1u)
		    << "row " << row->label.String() << " names a missing page " << row->page.String();
		reached.insert(row->page.String());
		for (LibString* view = row->views.First(); view != nullptr; view = row->views.Next())
			EXPECT_TRUE(views.insert(view->String()).second) << "key twice: " << view->String();
	}
	for (const std::string& page : pages)
		EXPECT_EQ(reached.count(page), 1u) << "page not in the contents: " << page;
}


TEST_F(HelpFileTest, RowsKeepDepthAndEveryViewPagesKeepTheirBreaks)
{
	std::string path = fDir.Path("rows.help");
	WriteFile(path, "<CONTENTS>\n<T PAGE=\"p1\" VIEW=\"W/a\" VIEW=\"W/b\">One\n"
	                "<T PAGE=\"p2\">Two</T></T>\n<T PAGE=\"p3\">Three</T>\n</CONTENTS>\n"
	                "<PAGE NAME=\"a\">First <BR/> line.</PAGE>\n<PAGE NAME=\"b\">Other</PAGE>\n");

	LinkList<HelpRow> rows;
	ASSERT_EQ(HelpFile::ReadContents(path.c_str(), rows), B_OK);
	ASSERT_EQ(rows.Size(), 3);
	EXPECT_STREQ(rows.Get(0L)->label.String(), "One");
	EXPECT_EQ(rows.Get(0L)->views.Size(), 2);
	EXPECT_STREQ(rows.Get(0L)->views.Get(1L)->String(), "W/b");
	EXPECT_STREQ(rows.Get(1L)->page.String(), "p2");
	EXPECT_EQ(rows.Get(1L)->depth, 1);
	EXPECT_EQ(rows.Get(2L)->depth, 0);

	xmlTag page;
	ASSERT_EQ(HelpFile::ReadPage(path.c_str(), "a", page), B_OK);
	EXPECT_STREQ(HelpFile::PageText(page).String(), "First\nline.");
	ASSERT_EQ(HelpFile::ReadPage(path.c_str(), "b", page), B_OK);
	EXPECT_STREQ(HelpFile::PageText(page).String(), "Other");
	EXPECT_EQ(HelpFile::ReadPage(path.c_str(), "c", page), B_NAME_NOT_FOUND);
	EXPECT_EQ(HelpFile::ReadPage(fDir.Path("none").c_str(), "a", page), B_ENTRY_NOT_FOUND);
}


// The working directory wins over the temporary directory, which wins over
// the copy stored in the executable.
TEST_F(HelpFileTest, LocateSearchesInOrder)
{
	BPath found;
	EXPECT_EQ(HelpFile::Locate("QStp", fExecutable.c_str(), found, false), B_ENTRY_NOT_FOUND);

	ASSERT_EQ(HelpFile::Store(fExecutable.c_str(), fSource.c_str()), B_OK);
	ASSERT_EQ(HelpFile::Locate("QStp", fExecutable.c_str(), found, false), B_OK);
	EXPECT_STREQ(found.Path(), fDir.Path("tmp/QStp.help").c_str());
	EXPECT_EQ(FileText(found.Path()), "<CONTENTS></CONTENTS>\n");

	WriteFile(fDir.Path("cwd/QStp.help"), "x");
	ASSERT_EQ(HelpFile::Locate("QStp", fExecutable.c_str(), found, false), B_OK);
	EXPECT_STREQ(found.Path(), fDir.Path("cwd/QStp.help").c_str());
}


// Any local user can write to the temporary directory: a copy there is read
// only when it is this user's own plain file, and the stored copy is never
// extracted through whatever stands under its name.
TEST_F(HelpFileTest, LocateNeverUsesOrWritesThroughAnotherUsersName)
{
	ASSERT_EQ(HelpFile::Store(fExecutable.c_str(), fSource.c_str()), B_OK);
	const std::string target = fDir.Path("target");
	WriteFile(target, "precious");
	const std::string planted = fDir.Path("tmp/QStp.help");
	ASSERT_EQ(symlink(target.c_str(), planted.c_str()), 0);

	BPath found;
	testing::internal::CaptureStderr();
	EXPECT_EQ(HelpFile::Locate("QStp", fExecutable.c_str(), found, true), B_ENTRY_NOT_FOUND);
	EXPECT_NE(testing::internal::GetCapturedStderr().find("Help in tmp directory <" + planted +
	                                                      "> is not this user's file: not read"),
	          std::string::npos);
	EXPECT_EQ(FileText(target), "precious");

	// A file of another user (only root can make one) is passed over alike.
	ASSERT_EQ(unlink(planted.c_str()), 0);
	if (geteuid() == 0) {
		WriteFile(planted, "<CONTENTS><T>theirs</T></CONTENTS>\n");
		ASSERT_EQ(chown(planted.c_str(), 65534, 65534), 0);
		EXPECT_EQ(HelpFile::Locate("QStp", fExecutable.c_str(), found, false), B_ENTRY_NOT_FOUND);
		ASSERT_EQ(unlink(planted.c_str()), 0);
	}

	// With the name free the stored copy is extracted, this user's own.
	ASSERT_EQ(HelpFile::Locate("QStp", fExecutable.c_str(), found, false), B_OK);
	EXPECT_STREQ(found.Path(), planted.c_str());
}
