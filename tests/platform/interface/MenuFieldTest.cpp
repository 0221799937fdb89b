// Menu fields: radio marking and where chosen items send their messages.
#include "InterfaceSupport.h"

#include <atomic>

#include <MenuField.h>
#include <MenuItem.h>
#include <PopUpMenu.h>
#include <Window.h>

namespace {

class ChoiceWindow : public BWindow
{
public:
	ChoiceWindow() : BWindow(BRect(100, 100, 399, 199), "CompareWin", B_TITLED_WINDOW, 0) {}

	void MessageReceived(BMessage* message) override
	{
		if (message->what == 1000) {
			const char* name = nullptr;
			if (message->FindString("name", &name) == B_OK)
				chosen = name;
			count++;
			return;
		}
		BWindow::MessageReceived(message);
	}

	std::string chosen;
	std::atomic<int32> count{0};
};


BMenuItem*
Choice(const char* name)
{
	BMessage* message = new BMessage(1000);
	message->AddString("name", name);
	return new BMenuItem(name, message);
}

} // namespace


TEST(MenuFieldTest, ChosenItemsAreMarkedAloneAndReportToTheWindow)
{
	REQUIRE_DISPLAY();
	ChoiceWindow* window = new ChoiceWindow;
	BPopUpMenu* menu = new BPopUpMenu("Test");
	BMenuItem* overall = Choice("Overall");
	menu->AddItem(overall);
	BMenuField* field = new BMenuField(BRect(30, 3, 229, 23), "choices", "Test", menu);
	window->AddChild(field);
	window->Run();
	EXPECT_EQ(nullptr, field->MenuItem());
	overall->SetMarked(true);

	// Refilled as the comparison window does for a new run.
	menu->RemoveItems(0, menu->CountItems(), true);
	for (const char* name : {"Dhrystone", "Whetstone", "Disk Input/Output"})
		menu->AddItem(Choice(name));
	EXPECT_EQ(nullptr, field->MenuItem());
	menu->ItemAt(0)->SetMarked(true);
	EXPECT_EQ(menu->ItemAt(0), field->MenuItem());

	menu->ItemAt(2)->Invoke();
	ASSERT_TRUE(platform_ui_run_until([&] { return window->count.load() == 1; }, 5000000));
	EXPECT_EQ("Disk Input/Output", window->chosen);
	EXPECT_EQ(menu->ItemAt(2), field->MenuItem());
	EXPECT_FALSE(menu->ItemAt(0)->IsMarked());
	EXPECT_EQ(window, menu->Window());
	window->Lock();
	window->Quit();
}
