// Controls: their messages, targets and what the user does to them.
#include "InterfaceSupport.h"

#include <atomic>
#include <mutex>

#include <AppDefs.h>
#include <Box.h>
#include <Button.h>
#include <CheckBox.h>
#include <ListItem.h>
#include <ListView.h>
#include <Menu.h>
#include <MenuBar.h>
#include <MenuField.h>
#include <MenuItem.h>
#include <PopUpMenu.h>
#include <ScrollView.h>
#include <StringView.h>
#include <TextControl.h>
#include <Window.h>

namespace {

// Keeps a copy of every message it receives.
class Recorder
{
public:
	void Add(const BMessage* message)
	{
		std::lock_guard<std::mutex> guard(fMutex);
		fMessages.push_back(*message);
	}

	std::vector<BMessage> Messages()
	{
		std::lock_guard<std::mutex> guard(fMutex);
		return fMessages;
	}

	size_t Count()
	{
		std::lock_guard<std::mutex> guard(fMutex);
		return fMessages.size();
	}

private:
	std::mutex fMutex;
	std::vector<BMessage> fMessages;
};


class RecordingHandler : public BHandler
{
public:
	RecordingHandler() : BHandler("recorder") {}
	void MessageReceived(BMessage* message) override { record.Add(message); }
	Recorder record;
};


class RecordingWindow : public BWindow
{
public:
	explicit RecordingWindow(BRect frame)
	    : BWindow(frame, "Controls", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0)
	{
	}

	void MessageReceived(BMessage* message) override
	{
		if (message->what < 1000 || message->what > 3001) {
			BWindow::MessageReceived(message);
			return;
		}
		record.Add(message);
	}

	Recorder record;
};


// Counts its Draw calls and the thread they come on.
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
	RecordingWindow* window = new RecordingWindow(BRect(100, 100, 299, 199));
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
	RecordingWindow* window = new RecordingWindow(BRect(100, 100, 299, 199));
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
	EXPECT_EQ(window, bar->Window());
	EXPECT_EQ(bar, window->KeyMenuBar());
	window->Lock();
	window->Quit();
}


TEST(ControlTest, WindowOfControlsIsDrawnOnTheInterfaceThread)
{
	REQUIRE_DISPLAY();
	RecordingWindow* window = new RecordingWindow(BRect(60, 60, 379, 299));
	window->SetTitle("Quickstep");
	BMenuBar* bar = new BMenuBar(BRect(0, 0, 319, 19), "menubar");
	BMenu* menu = new BMenu("Quickstep");
	menu->AddItem(new BMenuItem("Test", new BMessage(1100), 'T'));
	menu->AddSeparatorItem();
	menu->AddItem(new BMenuItem("Quit", new BMessage(B_QUIT_REQUESTED), 'Q'));
	bar->AddItem(menu);
	window->AddChild(bar);
	BView* background =
	    new BView(BRect(0, 20, 319, 239), "bgview", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
	background->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
	window->AddChild(background);
	BBox* box = new BBox(BRect(10, 5, 150, 80), "cpubox");
	box->SetLabel("Architecture");
	box->AddChild(
	    new BCheckBox(BRect(10, 20, 130, 38), "cpugraphics", "Graphics", new BMessage(2000)));
	BCheckBox* strings =
	    new BCheckBox(BRect(10, 42, 130, 60), "cpustring", "Strings", new BMessage(2001));
	strings->SetValue(B_CONTROL_ON);
	box->AddChild(strings);
	background->AddChild(box);
	background->AddChild(new BStringView(BRect(10, 90, 150, 104), "est_time", "Estimated 0:08"));
	BButton* button = new BButton(BRect(10, 110, 90, 133), "save", "Save...", new BMessage(1002));
	background->AddChild(button);
	button->MakeDefault(true);
	background->AddChild(
	    new BTextControl(BRect(10, 140, 150, 160), "config", "Config", "dual", nullptr));
	BListView* list = new BListView(BRect(170, 10, 280, 120), "list");
	for (const char* name : {"Dhrystone", "Whetstone", "Fourier", "Sieve", "Savage", "Memory",
	                         "Strings", "Ackerman", "Graphics", "Disk"})
		list->AddItem(new BStringItem(name));
	list->Select(1);
	background->AddChild(new BScrollView("scroll", list, B_FOLLOW_ALL_SIDES, 0, false, true));
	BPopUpMenu* choices = new BPopUpMenu("Test");
	choices->AddItem(new BMenuItem("Overall", new BMessage(1000)));
	choices->ItemAt(0)->SetMarked(true);
	background->AddChild(new BMenuField(BRect(10, 170, 160, 192), "choices", "Test", choices));
	DrawCountView* drawn = new DrawCountView(BRect(170, 140, 230, 200));
	background->AddChild(drawn);

	window->Show();
	EXPECT_TRUE(platform_ui_run_until([&] { return drawn->draws.load() > 0; }, 5000000));
	platform_ui_run_for(300000);
	EXPECT_EQ(button, window->DefaultButton());
	EXPECT_FALSE(window->IsHidden());

	const char* shot = getenv("QS_SCREENSHOT");
	if (shot != nullptr && shot[0] != '\0') {
		std::string command = std::string("import -window root ") + shot;
		EXPECT_EQ(0, system(command.c_str()));
	}

	// Hidden, the window is not drawn any more.
	window->Hide();
	EXPECT_TRUE(window->IsHidden());
	platform_ui_run_for(100000);
	int32 draws = drawn->draws.load();
	drawn->Invalidate();
	platform_ui_run_for(200000);
	EXPECT_EQ(draws, drawn->draws.load());

	window->Lock();
	for (int32 i = list->CountItems() - 1; i >= 0; i--)
		delete list->RemoveItem(i);
	window->Quit();
}
