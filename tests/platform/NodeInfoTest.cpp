#include <NodeInfo.h>

#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <Errors.h>
#include <Node.h>

#include "platform/TempDirectory.h"

// The type comes from the contents, whatever the name says.
TEST(NodeInfoTest, TypeComesFromTheContents)
{
	TempDirectory temp;
	ASSERT_TRUE(temp.Valid());
	struct Case {
		const char* name;
		std::string bytes;
		const char* type;
	};
	const Case cases[] = {
	    {"run.results", "1.0\n44\nBox (1-x86@300/66MHz) 32MB RAM\t500:1/0.5;\n", "text/plain"},
	    {"picture.results",
	     std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16) + std::string(32, '\1'), "image/png"},
	    {"empty.txt", "", "inode/x-empty"},
	};
	for (const Case& c : cases) {
		const std::string path = temp.Path(c.name);
		std::ofstream(path, std::ios::binary) << c.bytes;
		BNode node(path.c_str());
		BNodeInfo info(&node);
		char type[B_MIME_TYPE_LENGTH];
		ASSERT_EQ(info.GetType(type), B_OK) << c.name;
		EXPECT_STREQ(type, c.type) << c.name;
	}
}

TEST(NodeInfoTest, NoTypeWithoutAReadableFile)
{
	TempDirectory temp;
	char type[B_MIME_TYPE_LENGTH] = "unchanged";

	BNodeInfo unset;
	EXPECT_EQ(unset.GetType(type), B_NO_INIT);

	BNode missing(temp.Path("missing").c_str());
	BNodeInfo missingInfo(&missing);
	EXPECT_NE(missingInfo.GetType(type), B_OK);

	const std::string secret = temp.Path("secret");
	std::ofstream(secret) << "text";
	chmod(secret.c_str(), 0);
	BNode node(secret.c_str());
	BNodeInfo info(&node);
	EXPECT_STREQ(type, "unchanged");
	// root reads it all the same.
	if (access(secret.c_str(), R_OK) != 0) {
		EXPECT_EQ(info.GetType(type), B_PERMISSION_DENIED);
		EXPECT_STREQ(type, "unchanged");
	}
}
