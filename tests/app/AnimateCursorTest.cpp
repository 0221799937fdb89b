#include "app/AnimateCursor.h"

#include <cstring>
#include <gtest/gtest.h>


#include "app/AppTestSupport.h"
#include "app/QuickstepWin.h"

namespace {

bool
ThreadGone(const char* name)
{
	for (int i = 0; i < 100; i++) {
		if (find_thread(name) < 0)
			return true;
		snooze(10000);
	}
	return false;
}

} // namespace

TEST(AnimateCursorFramesTest, FramesOutsideTheCountAreIgnored)
{
	AnimateCursor cursor("LoadCursor", 2);
	unsigned char image[68];
	memset(image, 0xab, sizeof(image));
	cursor.SetCursor(1, image);
	cursor.SetCursor(2, image);
	cursor.SetCursor(-1, image);
	EXPECT_EQ(memcmp(cursor.Frame(1), image, 68), 0);
	EXPECT_EQ(cursor.Frame(0)[0], 0);
	EXPECT_EQ(cursor.Frame(2), nullptr);
}

TEST(AnimateCursorTest, RunSpinsOnItsThreadUntilQuit)
{
	QS_REQUIRE_DISPLAY();
	apptest::SharedApp();
	AnimateCursor cursor("LoadCursor", 4);
	for (long i = 0; i < 4; i++)
		cursor.SetCursor(i, QuickstepWin::kBusyCursors[i]);

	cursor.Run(0);
	EXPECT_FLOAT_EQ(cursor.Interval(), 0.1f);
	thread_id first = find_thread("LoadCursor");
	EXPECT_GT(first, 0);
	EXPECT_TRUE(cursor.IsRunning());
	apptest::RunFor(0.25);

	cursor.Suspend();
	EXPECT_FALSE(cursor.IsRunning());
	cursor.Resume(0.05f);
	EXPECT_TRUE(cursor.IsRunning());
	EXPECT_FLOAT_EQ(cursor.Interval(), 0.05f);

	// A second start replaces the spinning thread.
	cursor.Run(0.02f);
	EXPECT_FLOAT_EQ(cursor.Interval(), 0.02f);
	EXPECT_NE(cursor.Thread(), first);

	cursor.Quit();
	EXPECT_TRUE(ThreadGone("LoadCursor"));
	EXPECT_FALSE(cursor.IsRunning());
}

TEST(AnimateCursorTest, NoThreadWithoutAName)
{
	QS_REQUIRE_DISPLAY();
	apptest::SharedApp();
	AnimateCursor cursor("", 4);
	cursor.Run(0.1f);
	EXPECT_FALSE(cursor.IsRunning());
	EXPECT_LT(cursor.Thread(), 0);
}
