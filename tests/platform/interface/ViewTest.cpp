// Drawing on screen from a thread other than the interface thread.
#include "CommandOutput.h"
#include "InterfaceSupport.h"

#include <atomic>
#include <cstdlib>
#include <thread>

#include <OS.h>
#include <View.h>
#include <Window.h>

namespace {

// The colour of one pixel of the screen as ImageMagick writes it ("#RRGGBB").
std::string
ScreenPixel(BPoint where)
{
	char command[128];
	snprintf(command, sizeof(command),
	         "import -window root -depth 8 -crop 1x1+%d+%d txt:- 2>/dev/null",
	         static_cast<int>(where.x), static_cast<int>(where.y));
	const std::string output = CommandOutput(command);
	size_t hash = output.find('#', output.find("0,0:"));
	return hash == std::string::npos ? "" : output.substr(hash, 7);
}

} // namespace


TEST(ViewTest, WorkerHoldingTheLockDrawsOntoTheWindow)
{
	REQUIRE_DISPLAY();
	if (system("command -v import >/dev/null 2>&1") != 0)
		GTEST_SKIP() << "ImageMagick is not installed";
	BWindow* window = new BWindow(BRect(10, 10, 500, 500), "GraphicsWin", B_TITLED_WINDOW_LOOK,
	                              B_NORMAL_WINDOW_FEEL, B_NOT_RESIZABLE | B_NOT_CLOSABLE);
	BView* view = new BView(window->Bounds(), "graphicsview", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
	window->AddChild(view);
	window->Show();
	platform_ui_run_for(300000);
	BPoint inside = view->ConvertToScreen(BPoint(30, 30));
	BPoint outside = view->ConvertToScreen(BPoint(100, 30));

	std::atomic<bool> done(false);
	std::string whileLocked;
	std::string besideIt;
	std::thread worker([&] {
		window->SetTitle("Flushed Rectangles");
		ASSERT_TRUE(window->Lock());
		// Shapes of every kind, inverted rectangles among them, as a test
		// of the graphics draws them.
		srand(7);
		for (int i = 0; i < 200; i++) {
			view->SetHighColor(static_cast<uint8>(rand() % 255), static_cast<uint8>(rand() % 255),
			                   static_cast<uint8>(rand() % 255));
			float a = static_cast<float>(rand() % 500);
			float b = static_cast<float>(rand() % 500);
			float c = static_cast<float>(rand() % 500);
			float d = static_cast<float>(rand() % 500);
			view->StrokeLine(BPoint(a, b), BPoint(c, d));
			view->StrokeEllipse(BRect(a, b, c, d));
			view->FillEllipse(BRect(c, d, a, b));
			view->StrokeRect(BRect(a, b, c, d));
			view->StrokeTriangle(BPoint(a, b), BPoint(c, d), BPoint(a, d));
			view->FillTriangle(BPoint(a, b), BPoint(c, d), BPoint(c, b));
			view->DrawString("Quickstep", BPoint(a, b), nullptr);
			view->Flush();
		}
		view->SetHighColor(255, 255, 255);
		view->FillRect(view->Bounds());
		view->SetHighColor(255, 0, 0);
		view->FillRect(BRect(10, 10, 49, 49), B_SOLID_HIGH);
		view->Sync();
		// The interface thread cannot redraw meanwhile: the screen shows
		// what this thread drew.
		whileLocked = ScreenPixel(inside);
		besideIt = ScreenPixel(outside);
		window->Unlock();
		done = true;
	});
	EXPECT_TRUE(platform_ui_run_until([&] { return done.load(); }, 30000000));
	worker.join();

	EXPECT_EQ("#FF0000", whileLocked);
	EXPECT_EQ("#FFFFFF", besideIt);
	EXPECT_STREQ("Flushed Rectangles", window->Title());
	QuitWindow(window);
}


namespace {

// Counts the pointer's moves over it, with the last transit.
class HoverView : public BView
{
public:
	HoverView(BRect frame, const char* name)
	    : BView(frame, name, B_FOLLOW_NONE, B_WILL_DRAW), fMoves(0), fTransit(0)
	{
	}

	void MouseMoved(BPoint where, uint32 transit, const BMessage*) override
	{
		fWhere = where;
		fTransit = transit;
		fMoves++;
	}

	std::atomic<int> fMoves;
	std::atomic<uint32> fTransit;
	BPoint fWhere;
};

} // namespace


// A view hears the pointer moving over it; over a child, the child hears it
// and the parent does not.
TEST(ViewTest, PointerMovesGoToTheViewUnderThePointer)
{
	REQUIRE_XDOTOOL();
	BWindow* window = new BWindow(BRect(60, 60, 359, 259), "Hover", B_TITLED_WINDOW_LOOK,
	                              B_NORMAL_WINDOW_FEEL, B_NOT_RESIZABLE);
	HoverView* parent = new HoverView(BRect(0, 0, 299, 199), "parent");
	HoverView* child = new HoverView(BRect(150, 20, 249, 119), "child");
	parent->AddChild(child);
	window->AddChild(parent);
	window->Show();
	platform_ui_run_for(300000);

	window->Lock();
	const BPoint overParent = parent->ConvertToScreen(BPoint(40, 150));
	const BPoint overChild = child->ConvertToScreen(BPoint(30, 40));
	window->Unlock();
	// From outside the window, one step at a time.
	ASSERT_TRUE(MovePointerTo(BPoint(5, 5)));
	platform_ui_run_for(100000);
	parent->fMoves = 0;
	child->fMoves = 0;
	ASSERT_TRUE(MovePointerTo(overParent));
	platform_ui_run_for(100000);
	ASSERT_TRUE(MovePointerTo(BPoint(overParent.x + 3, overParent.y + 2)));
	platform_ui_run_until([&] { return parent->fWhere.x == 43; }, 3000000);
	EXPECT_GE(parent->fMoves, 2);
	EXPECT_EQ(parent->fTransit, B_INSIDE_VIEW);
	EXPECT_FLOAT_EQ(parent->fWhere.x, 43);
	EXPECT_FLOAT_EQ(parent->fWhere.y, 152);
	EXPECT_EQ(child->fMoves, 0);

	const int parentMoves = parent->fMoves;
	ASSERT_TRUE(MovePointerTo(overChild));
	platform_ui_run_for(100000);
	ASSERT_TRUE(MovePointerTo(BPoint(overChild.x + 2, overChild.y + 2)));
	platform_ui_run_until([&] { return child->fWhere.x == 32; }, 3000000);
	EXPECT_GE(child->fMoves, 2);
	EXPECT_FLOAT_EQ(child->fWhere.x, 32);
	EXPECT_FLOAT_EQ(child->fWhere.y, 42);
	EXPECT_EQ(parent->fMoves, parentMoves);

	QuitWindow(window);
}
