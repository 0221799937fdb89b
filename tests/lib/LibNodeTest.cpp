#include "lib/LibNode.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include <Message.h>
#include <Node.h>
#include <PlatformTest.h>
#include <TypeConstants.h>

#include "platform/TempDirectory.h"

namespace {

class LibNodeTest : public testing::Test
{
protected:
	void SetUp() override
	{
		ASSERT_TRUE(fTemp.Valid());
		fTemp.UseAsDataHome();
		fApp = fTemp.Path("quickstep");
		ASSERT_TRUE(std::ofstream(fApp).good());
	}

	void TearDown() override { platform_set_xattr_disabled(false); }

	static BMessage Store(int count)
	{
		BMessage store('stor');
		for (int i = 0; i < count; i++)
			store.AddString("results", ("record " + std::to_string(i)).c_str());
		return store;
	}

	static void ExpectStore(const BMessage& message, int count)
	{
		for (int i = 0; i < count; i++) {
			const char* text = nullptr;
			ASSERT_EQ(message.FindString("results", i, &text), B_OK) << i;
			EXPECT_EQ(std::string(text), "record " + std::to_string(i));
		}
		const char* extra = nullptr;
		EXPECT_NE(message.FindString("results", count, &extra), B_OK);
	}

	TempDirectory fTemp;
	std::string fApp;
};

} // namespace

TEST_F(LibNodeTest, StoreRoundTripsEvenBeforeTheExecutableIsBuilt)
{
	for (const std::string& path : {fApp, fTemp.Path("not-built")}) {
		SCOPED_TRACE(path);
		BMessage store = Store(3);
		ASSERT_EQ(LibNode::WriteMessageAttr(path.c_str(), "kw:benchmark", &store), B_OK);
		BMessage read;
		ASSERT_EQ(LibNode::ReadMessageAttr(path.c_str(), "kw:benchmark", &read), B_OK);
		EXPECT_EQ(read.what, static_cast<uint32>('stor'));
		ExpectStore(read, 3);
	}
}

TEST_F(LibNodeTest, LargeStoreAndRefusingFileSystemLoseNothing)
{
	// Far beyond what an ext4 attribute can hold.
	BMessage store = Store(9000);
	BNode node(fApp.c_str());
	ASSERT_EQ(LibNode::WriteMessageAttr(&node, "kw:benchmark", &store), B_OK);
	EXPECT_TRUE(node.LastAttrInFallback());
	BMessage read;
	ASSERT_EQ(LibNode::ReadMessageAttr(fApp.c_str(), "kw:benchmark", &read), B_OK);
	ExpectStore(read, 9000);

	platform_set_xattr_disabled(true);
	BMessage small = Store(1);
	ASSERT_EQ(LibNode::WriteMessageAttr(&node, "kw:benchmark", &small), B_OK);
	EXPECT_TRUE(node.LastAttrInFallback());
	BMessage again;
	ASSERT_EQ(LibNode::ReadMessageAttr(fApp.c_str(), "kw:benchmark", &again), B_OK);
	ExpectStore(again, 1);
}

TEST_F(LibNodeTest, WrongTypeOrDamagedBytesLeaveTheMessageAlone)
{
	BMessage read('keep');
	EXPECT_EQ(LibNode::ReadMessageAttr(fApp.c_str(), "kw:benchmark", &read), B_ENTRY_NOT_FOUND);

	BNode node(fApp.c_str());
	ASSERT_EQ(node.WriteAttr("kw:benchmark", B_STRING_TYPE, 0, "text", 5), 5);
	EXPECT_EQ(LibNode::ReadMessageAttr(&node, "kw:benchmark", &read), B_BAD_TYPE);

	ASSERT_EQ(node.WriteAttr("kw:benchmark", B_MESSAGE_TYPE, 0, "garbage!", 8), 8);
	EXPECT_NE(LibNode::ReadMessageAttr(&node, "kw:benchmark", &read), B_OK);
	EXPECT_EQ(read.what, static_cast<uint32>('keep'));
}
