#include <File.h>

#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/TempDirectory.h"

namespace {

std::string
Contents(const std::string& path)
{
	BFile file(path.c_str(), B_READ_ONLY);
	off_t size = 0;
	if (file.GetSize(&size) != B_OK)
		return "<none>";
	std::string text(size, '\0');
	file.ReadAt(0, &text[0], text.size());
	return text;
}

class FileTest : public testing::Test
{
protected:
	void SetUp() override { ASSERT_TRUE(temp.Valid()); }

	TempDirectory temp;
	const std::string path = temp.Path("f");
};

} // namespace

TEST_F(FileTest, OpenModesCreateEraseAndFail)
{

	BFile file(path.c_str(), B_READ_ONLY);
	EXPECT_EQ(file.InitCheck(), B_ENTRY_NOT_FOUND);
	EXPECT_EQ(file.Read(nullptr, 0), B_FILE_ERROR);
	EXPECT_EQ(file.Write("x", 1), B_FILE_ERROR);

	ASSERT_EQ(file.SetTo(path.c_str(), B_WRITE_ONLY | B_CREATE_FILE), B_OK);
	EXPECT_TRUE(file.IsWritable());
	EXPECT_FALSE(file.IsReadable());
	EXPECT_EQ(file.Write("abcdef", 6), 6);
	file.Unset();
	EXPECT_EQ(Contents(path), "abcdef");

	EXPECT_EQ(file.SetTo(path.c_str(), B_READ_WRITE | B_FAIL_IF_EXISTS), B_FILE_EXISTS);

	// Without B_ERASE_FILE the old bytes stay; with it they go.
	ASSERT_EQ(file.SetTo(path.c_str(), B_WRITE_ONLY), B_OK);
	file.Write("XY", 2);
	EXPECT_EQ(Contents(path), "XYcdef");
	ASSERT_EQ(file.SetTo(path.c_str(), B_WRITE_ONLY | B_ERASE_FILE), B_OK);
	EXPECT_EQ(Contents(path), "");

	ASSERT_EQ(file.SetTo(path.c_str(), B_WRITE_ONLY | B_ERASE_FILE), B_OK);
	file.Write("12", 2);
	ASSERT_EQ(file.SetTo(path.c_str(), B_WRITE_ONLY | B_OPEN_AT_END), B_OK);
	file.WriteAt(0, "34", 2);
	file.Write("56", 2);
	EXPECT_EQ(Contents(path), "123456");

	EXPECT_EQ(file.SetTo(temp.Path().c_str(), B_READ_ONLY), B_IS_A_DIRECTORY);
	EXPECT_EQ(file.SetTo(path.c_str(), 3), B_BAD_VALUE);
}

TEST_F(FileTest, PositionsSizesAndPartialIo)
{
	BFile file(path.c_str(), B_READ_WRITE | B_CREATE_FILE);
	ASSERT_EQ(file.InitCheck(), B_OK);
	ASSERT_EQ(file.Write("0123456789", 10), 10);
	EXPECT_EQ(file.Position(), 10);
	EXPECT_EQ(file.Seek(-4, SEEK_END), 6);
	char buffer[8] = {};
	EXPECT_EQ(file.Read(buffer, sizeof(buffer)), 4);
	EXPECT_STREQ(buffer, "6789");
	EXPECT_EQ(file.Seek(-1, SEEK_SET), B_BAD_VALUE);

	// ReadAt and WriteAt leave the position alone.
	file.Seek(2, SEEK_SET);
	memset(buffer, 0, sizeof(buffer));
	EXPECT_EQ(file.ReadAt(8, buffer, 5), 2);
	EXPECT_STREQ(buffer, "89");
	EXPECT_EQ(file.WriteAt(12, "x", 1), 1);
	EXPECT_EQ(file.Position(), 2);

	off_t size = 0;
	ASSERT_EQ(file.GetSize(&size), B_OK);
	EXPECT_EQ(size, 13);
	ASSERT_EQ(file.SetSize(3), B_OK);
	ASSERT_EQ(file.GetSize(&size), B_OK);
	EXPECT_EQ(size, 3);
	EXPECT_EQ(file.SetSize(-1), B_BAD_VALUE);
}
