#include "help/HelpManager.h"

#include <gtest/gtest.h>
#include <string>

#include <Message.h>


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
