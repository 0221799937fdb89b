#include <Node.h>

#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

#include <File.h>
#include <PlatformTest.h>

#include "platform/TempDirectory.h"

namespace {

const type_code kTextType = 0x43535452; // 'CSTR'
const type_code kRawType = 0x52415754;  // 'RAWT'

class NodeTest : public testing::Test
{
protected:
	void SetUp() override
	{
		ASSERT_TRUE(fTemp.Valid());
		fTemp.UseAsDataHome();
		fFile = fTemp.Path("node.bin");
		std::ofstream{fFile};
		// Whether this file system keeps user attributes at all.
		fXattrs = setxattr(fFile.c_str(), "user.probe", "x", 1, 0) == 0;
		removexattr(fFile.c_str(), "user.probe");
	}

	void TearDown() override { platform_set_xattr_disabled(false); }

	std::string Read(BNode& node, const char* name)
	{
		attr_info info;
		if (node.GetAttrInfo(name, &info) != B_OK)
			return "<none>";
		std::string value(info.size, '\0');
		ssize_t count = node.ReadAttr(name, info.type, 0, &value[0], value.size());
		if (count < 0)
			return "<error>";
		value.resize(count);
		return value;
	}

	TempDirectory fTemp;
	std::string fFile;
	bool fXattrs = false;
};

} // namespace

TEST_F(NodeTest, RoundTripKeepsBytesAndType)
{
	BNode node(fFile.c_str());
	ASSERT_EQ(node.InitCheck(), B_OK);
	const char value[] = "with\0nul";
	ASSERT_EQ(node.WriteAttr("kw:test", kTextType, 0, value, sizeof(value)),
	          static_cast<ssize_t>(sizeof(value)));
	EXPECT_EQ(node.LastAttrInFallback(), !fXattrs);

	attr_info info;
	ASSERT_EQ(node.GetAttrInfo("kw:test", &info), B_OK);
	EXPECT_EQ(info.type, kTextType);
	EXPECT_EQ(info.size, static_cast<off_t>(sizeof(value)));
	char back[sizeof(value)];
	ASSERT_EQ(node.ReadAttr("kw:test", 0, 0, back, sizeof(back)),
	          static_cast<ssize_t>(sizeof(back)));
	EXPECT_EQ(memcmp(back, value, sizeof(value)), 0);

	// Offsets read a tail; a short buffer reads a prefix.
	char tail[4] = {};
	EXPECT_EQ(node.ReadAttr("kw:test", 0, 5, tail, 3), 3);
	EXPECT_STREQ(tail, "nul");
	EXPECT_EQ(node.ReadAttr("kw:test", 0, 100, tail, 3), 0);

	// A second node on the same file sees it; another type replaces the first.
	BNode other(fFile.c_str());
	EXPECT_EQ(Read(other, "kw:test"), std::string(value, sizeof(value)));
	ASSERT_EQ(other.WriteAttr("kw:test", kRawType, 0, "ab", 2), 2);
	ASSERT_EQ(node.GetAttrInfo("kw:test", &info), B_OK);
	EXPECT_EQ(info.type, kRawType);
	EXPECT_EQ(info.size, 2);
}

TEST_F(NodeTest, WritesAtAnOffsetKeepTheHead)
{
	BNode node(fFile.c_str());
	ASSERT_EQ(node.WriteAttr("a", kRawType, 0, "hello", 5), 5);
	ASSERT_EQ(node.WriteAttr("a", kRawType, 3, "LO!", 3), 3);
	EXPECT_EQ(Read(node, "a"), "helLO!");
	ASSERT_EQ(node.WriteAttr("b", kRawType, 2, "x", 1), 1);
	EXPECT_EQ(Read(node, "b"), std::string("\0\0x", 3));
	ASSERT_EQ(node.WriteAttr("a", kRawType, 0, "z", 1), 1);
	EXPECT_EQ(Read(node, "a"), "z");
}

TEST_F(NodeTest, MissingAttributesAndBadArguments)
{
	BNode node(fFile.c_str());
	char buffer[4];
	attr_info info;
	EXPECT_EQ(node.ReadAttr("nothing", 0, 0, buffer, sizeof(buffer)), B_ENTRY_NOT_FOUND);
	EXPECT_EQ(node.GetAttrInfo("nothing", &info), B_ENTRY_NOT_FOUND);
	EXPECT_EQ(node.RemoveAttr("nothing"), B_ENTRY_NOT_FOUND);
	EXPECT_EQ(node.WriteAttr("", kRawType, 0, "x", 1), B_BAD_VALUE);
	EXPECT_EQ(node.WriteAttr(std::string(300, 'n').c_str(), kRawType, 0, "x", 1), B_NAME_TOO_LONG);

	BNode unset;
	EXPECT_EQ(unset.WriteAttr("a", kRawType, 0, "x", 1), B_NO_INIT);
	EXPECT_EQ(unset.GetAttrInfo("a", &info), B_NO_INIT);
}

TEST_F(NodeTest, RefusedAttributesGoToTheFallbackAndReadBack)
{
	platform_set_xattr_disabled(true);
	BNode node(fFile.c_str());
	ASSERT_EQ(node.WriteAttr("kw:benchmark", kRawType, 0, "stored", 6), 6);
	EXPECT_TRUE(node.LastAttrInFallback());
	EXPECT_EQ(node.LastXattrRefusal(), B_NOT_SUPPORTED);
	EXPECT_EQ(Read(node, "kw:benchmark"), "stored");
	EXPECT_TRUE(node.LastAttrInFallback());

	// With extended attributes back, reads still find the fallback copy; a new
	// write lands in the file and wins.
	platform_set_xattr_disabled(false);
	BNode again(fFile.c_str());
	EXPECT_EQ(Read(again, "kw:benchmark"), "stored");
	ASSERT_EQ(again.WriteAttr("kw:benchmark", kRawType, 0, "newer", 5), 5);
	EXPECT_EQ(Read(again, "kw:benchmark"), "newer");

	// Removal clears both places.
	platform_set_xattr_disabled(true);
	ASSERT_EQ(node.WriteAttr("kw:benchmark", kRawType, 0, "fallback", 8), 8);
	platform_set_xattr_disabled(false);
	EXPECT_EQ(Read(again, "kw:benchmark"), "fallback");
	EXPECT_EQ(again.RemoveAttr("kw:benchmark"), B_OK);
	EXPECT_EQ(Read(again, "kw:benchmark"), "<none>");
	EXPECT_EQ(again.RemoveAttr("kw:benchmark"), B_ENTRY_NOT_FOUND);
}

TEST_F(NodeTest, FallbackNamesAreEncodedSafely)
{
	platform_set_xattr_disabled(true);
	BNode node(fFile.c_str());
	const char* names[] = {"../../escape", "a/b", "%41", "A"};
	for (const char* name : names)
		ASSERT_EQ(node.WriteAttr(name, kRawType, 0, name, strlen(name)),
		          static_cast<ssize_t>(strlen(name)))
		    << name;
	for (const char* name : names)
		EXPECT_EQ(Read(node, name), name);
	// Nothing escaped the store.
	EXPECT_NE(access(fTemp.Path("data/quickstep/attributes").c_str(), F_OK), -1);
	EXPECT_EQ(access(fTemp.Path("data/quickstep/escape").c_str(), F_OK), -1);
	EXPECT_EQ(access(fTemp.Path("data/escape").c_str(), F_OK), -1);
}

TEST_F(NodeTest, MissingFileKeepsAttributesUnderItsPath)
{
	std::string missing = fTemp.Path("not-built-yet");
	BNode node(missing.c_str());
	EXPECT_EQ(node.InitCheck(), B_ENTRY_NOT_FOUND);
	ASSERT_EQ(node.WriteAttr("kw:benchmark", kRawType, 0, "runs", 4), 4);
	EXPECT_TRUE(node.LastAttrInFallback());
	EXPECT_EQ(node.LastXattrRefusal(), B_ENTRY_NOT_FOUND);

	// Another node, through a path spelt differently, finds it.
	BNode other((fTemp.Path() + "/./sub/../not-built-yet").c_str());
	EXPECT_EQ(Read(other, "kw:benchmark"), "runs");

	// Once the file exists the stored value is still there.
	std::ofstream{missing};
	BNode built(missing.c_str());
	EXPECT_EQ(built.InitCheck(), B_OK);
	EXPECT_EQ(Read(built, "kw:benchmark"), "runs");
	EXPECT_TRUE(built.LastAttrInFallback());

	// A different file does not see it.
	BNode unrelated(fFile.c_str());
	EXPECT_EQ(Read(unrelated, "kw:benchmark"), "<none>");
}

TEST_F(NodeTest, ReadOnlyFileLosesNothing)
{
	ASSERT_EQ(chmod(fFile.c_str(), 0444), 0);
	// Root may write any file: then the value simply stays in the file.
	bool refused = access(fFile.c_str(), W_OK) != 0 || !fXattrs;
	BFile file(fFile.c_str(), B_READ_ONLY);
	ASSERT_EQ(file.InitCheck(), B_OK);
	ASSERT_EQ(file.WriteAttr("kw:benchmark", kRawType, 0, "kept", 4), 4);
	EXPECT_EQ(file.LastAttrInFallback(), refused);
	EXPECT_EQ(Read(file, "kw:benchmark"), "kept");
	EXPECT_EQ(file.RemoveAttr("kw:benchmark"), B_OK);
	EXPECT_EQ(Read(file, "kw:benchmark"), "<none>");
}

TEST_F(NodeTest, ValuesTooLargeForTheFileSystemGoToTheFallback)
{
	// Beyond the kernel's 64 KiB limit for any extended attribute.
	std::vector<char> big(70 * 1024);
	for (size_t i = 0; i < big.size(); i++)
		big[i] = static_cast<char>(i * 7);
	BNode node(fFile.c_str());
	ASSERT_EQ(node.WriteAttr("big", kRawType, 0, big.data(), big.size()),
	          static_cast<ssize_t>(big.size()));
	EXPECT_TRUE(node.LastAttrInFallback());
	EXPECT_NE(node.LastXattrRefusal(), B_OK);
	std::string back = Read(node, "big");
	ASSERT_EQ(back.size(), big.size());
	EXPECT_EQ(memcmp(back.data(), big.data(), big.size()), 0);

	// A small value afterwards goes back into the file and replaces it.
	ASSERT_EQ(node.WriteAttr("big", kRawType, 0, "small", 5), 5);
	EXPECT_EQ(node.LastAttrInFallback(), !fXattrs);
	EXPECT_EQ(Read(node, "big"), "small");
}

TEST_F(NodeTest, UnwritableStoreIsReported)
{
	platform_set_xattr_disabled(true);
	setenv("XDG_DATA_HOME", (fTemp.Path() + "/node.bin/cannot").c_str(), 1);
	BNode node(fFile.c_str());
	ssize_t result = node.WriteAttr("a", kRawType, 0, "x", 1);
	EXPECT_LT(result, 0);
	EXPECT_EQ(node.GetAttrInfo("a", nullptr), B_BAD_VALUE);
}
