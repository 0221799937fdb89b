#include "help/HelpManager.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include <AppFileInfo.h>
#include <File.h>
#include <Message.h>
#include <Path.h>
#include <Resources.h>

#include "help/HelpFile.h"
#include "platform/TempDirectory.h"

TEST(HelpManagerTest, ContextKeysJoinWindowAndViewsFromTheViewOutwards)
{
	BMessage request(kMsgHelpRequest);
	request.AddString("window", "QuickstepWin");
	request.AddString("view", "cpustring");
	request.AddString("view", "cpubox");
	request.AddString("view", "bgview");
	EXPECT_STREQ(HelpManager::ContextKey(&request).String(),
	             "QuickstepWin/cpustring/cpubox/bgview");
	LinkList<LibString> keys;
	HelpManager::ContextKeys(&request, keys);
	ASSERT_EQ(keys.Size(), 3);
	EXPECT_STREQ(keys.Get(0L)->String(), "QuickstepWin/cpustring/cpubox/bgview");
	EXPECT_STREQ(keys.Get(1L)->String(), "QuickstepWin/cpubox/bgview");
	EXPECT_STREQ(keys.Get(2L)->String(), "QuickstepWin/bgview");

	BMessage windowOnly(kMsgHelpRequest);
	windowOnly.AddString("window", "ResultsWin");
	EXPECT_STREQ(HelpManager::ContextKey(&windowOnly).String(), "ResultsWin");
	keys.Clear();
	HelpManager::ContextKeys(&windowOnly, keys);
	EXPECT_EQ(keys.Size(), 0);
}


TEST(HelpManagerTest, AddHelpFileStoresItInTheExecutableOrSaysWhyNot)
{
	TempDirectory temp;
	ASSERT_TRUE(temp.Valid());
	temp.UseAsDataHome();
	HelpManager manager;

	std::string missing = temp.Path("nothing.help");
	testing::internal::CaptureStderr();
	EXPECT_NE(manager.AddHelpFile(missing.c_str()), B_OK);
	EXPECT_EQ(testing::internal::GetCapturedStderr(), missing + " does not exist\n");

	std::string helpFile = temp.Path("QStp.help");
	const char* text = "<CONTENTS><Intro PAGE=\"intro\">Intro</Intro></CONTENTS>";
	ASSERT_TRUE(std::ofstream(helpFile) << text);
	testing::internal::CaptureStderr();
	EXPECT_EQ(manager.AddHelpFile(helpFile.c_str()), B_OK);
	EXPECT_EQ(testing::internal::GetCapturedStderr(), helpFile + " added to application\n");

	BPath self;
	ASSERT_EQ(get_app_path(&self), B_OK);
	BFile executable(self.Path(), B_READ_ONLY);
	BResources resources(&executable);
	size_t length = 0;
	const void* data =
	    resources.LoadResource(HelpFile::kResourceType, HelpFile::kResourceId, &length);
	ASSERT_NE(data, nullptr);
	EXPECT_EQ(std::string(static_cast<const char*>(data), length), text);
	resources.RemoveResource(HelpFile::kResourceType, HelpFile::kResourceId);
}
