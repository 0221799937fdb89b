// Controls: their messages, targets and what the user does to them.
#include "InterfaceSupport.h"

#include <atomic>

#include <CheckBox.h>
#include <Menu.h>
#include <MenuBar.h>
#include <MenuItem.h>
#include <Window.h>

namespace {

class RecordingHandler : public BHandler
{
public:
	RecordingHandler() : BHandler("recorder") {}
	void MessageReceived(BMessage* message) override { record.Add(message); }
	MessageLog record;
};


// Counts its Draw calls.
class DrawCountView : public BView
{
public:
	explicit DrawCountView(BRect frame)
	    : BView(frame, "drawcount", B_FOLLOW_NONE, B_WILL_DRAW), draws(0)
	{
	}

	void Draw(BRect) override
	{
		draws++;
		SetHighColor(0, 0, 200);
		FillEllipse(Bounds());
		SetHighColor(200, 0, 0);
		StrokeLine(Bounds().LeftTop(), Bounds().RightBottom());
	}

	std::atomic<int32> draws;
};

} // namespace


TEST(ControlTest, CheckBoxSendsItsMessageWithTheSourceToItsTargetOrItsWindow)
{
	REQUIRE_XDOTOOL();
	RecordingWindow* window =
	    new RecordingWindow(BRect(100, 100, 299, 199), "Controls", {1100, 1200, 2000});
	BView* background = new BView(window->Bounds(), "bgview", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
	BCheckBox* box =
	    new BCheckBox(BRect(20, 20, 159, 39), "cpugraphics", "Graphics", new BMessage(2000));
	background->AddChild(box);
	window->AddChild(background);
	RecordingHandler* handler = new RecordingHandler;
	window->AddHandler(handler);
	window->Show();
	platform_ui_run_for(300000);

	// No target: the window.
	box->Invoke();
	ASSERT_TRUE(platform_ui_run_until([&] { return window->record.Count() == 1; }, 5000000));
	BMessage first = window->record.Messages()[0];
	EXPECT_EQ(2000u, first.what);
	void* source = nullptr;
	EXPECT_EQ(B_OK, first.FindPointer("source", &source));
	EXPECT_EQ(box, source);

	// A click toggles the box and goes to the target set.
	box->SetTarget(handler);
	BPoint where = box->ConvertToScreen(BPoint(8, 10));
	ASSERT_TRUE(MovePointerTo(where));
	ASSERT_TRUE(Xdotool("click 1"));
	ASSERT_TRUE(platform_ui_run_until([&] { return handler->record.Count() == 1; }, 5000000));
	BMessage clicked = handler->record.Messages()[0];
	EXPECT_EQ(2000u, clicked.what);
	EXPECT_EQ(B_OK, clicked.FindPointer("source", &source));
	EXPECT_EQ(box, source);
	int32 value = -1;
	EXPECT_EQ(B_OK, clicked.FindInt32("be:value", &value));
	EXPECT_EQ(B_CONTROL_ON, value);
	EXPECT_EQ(B_CONTROL_ON, box->Value());
	EXPECT_EQ(1u, window->record.Count());

	// Set by the program, the value changes without a message.
	box->SetValue(B_CONTROL_OFF);
	platform_ui_run_for(100000);
	EXPECT_EQ(1u, handler->record.Count());

	// A disabled box ignores clicks.
	box->SetEnabled(false);
	platform_ui_run_for(100000);
	ASSERT_TRUE(Xdotool("click 1"));
	platform_ui_run_for(300000);
	EXPECT_EQ(1u, handler->record.Count());
	EXPECT_EQ(B_CONTROL_OFF, box->Value());

	window->Lock();
	window->RemoveHandler(handler);
	delete handler;
	window->Quit();
}


TEST(ControlTest, MenuShortcutsDeliverTheirWhatCodesUnlessDisabled)
{
	REQUIRE_XDOTOOL();
	RecordingWindow* window =
	    new RecordingWindow(BRect(100, 100, 299, 199), "Controls", {1100, 1200, 2000});
	BMenuBar* bar = new BMenuBar(BRect(0, 0, 199, 19), "menubar");
	BMenu* menu = new BMenu("Quickstep");
	BMenuItem* test = new BMenuItem("Test", new BMessage(1100), 'T');
	BMenuItem* all = new BMenuItem("All", new BMessage(1200), 'A');
	menu->AddItem(test);
	menu->AddItem(all);
	bar->AddItem(menu);
	window->AddChild(bar);
	window->Show();
	platform_ui_run_for(300000);
	ASSERT_TRUE(MovePointerTo(BPoint(200, 170)));
	platform_ui_run_for(100000);

	all->SetEnabled(false);
	ASSERT_TRUE(Xdotool("key ctrl+a"));
	ASSERT_TRUE(Xdotool("key ctrl+t"));
	ASSERT_TRUE(platform_ui_run_until([&] { return window->record.Count() >= 1; }, 5000000));
	platform_ui_run_for(200000);

	std::vector<BMessage> received = window->record.Messages();
	ASSERT_EQ(1u, received.size());
	EXPECT_EQ(1100u, received[0].what);
	void* source = nullptr;
	EXPECT_EQ(B_OK, received[0].FindPointer("source", &source));
	EXPECT_EQ(test, source);
	int32 index = -1;
	EXPECT_EQ(B_OK, received[0].FindInt32("index", &index));
	EXPECT_EQ(0, index);

	all->SetEnabled(true);
	ASSERT_TRUE(Xdotool("key ctrl+a"));
	ASSERT_TRUE(platform_ui_run_until([&] { return window->record.Count() >= 2; }, 5000000));
	EXPECT_EQ(1200u, window->record.Messages()[1].what);
	EXPECT_EQ(bar, window->KeyMenuBar());
	QuitWindow(window);
}


// Shown, a window draws its views; hidden, it leaves them undrawn even when
// they ask to be drawn.
TEST(ControlTest, WindowDrawsItsViewsOnlyWhileShown)
{
	REQUIRE_DISPLAY();
	BWindow* window = new BWindow(BRect(60, 60, 379, 299), "Quickstep", B_TITLED_WINDOW, 0);
	DrawCountView* drawn = new DrawCountView(BRect(170, 140, 230, 200));
	window->AddChild(drawn);
	window->Show();
	EXPECT_TRUE(platform_ui_run_until([&] { return drawn->draws.load() > 0; }, 5000000));
	platform_ui_run_for(300000);

	window->Hide();
	EXPECT_TRUE(window->IsHidden());
	platform_ui_run_for(100000);
	int32 draws = drawn->draws.load();
	drawn->Invalidate();
	platform_ui_run_for(200000);
	EXPECT_EQ(draws, drawn->draws.load());
	QuitWindow(window);
}
