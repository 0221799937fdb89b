// Menu fields: radio marking and where chosen items send their messages.
#include "InterfaceSupport.h"

#include <MenuField.h>
#include <MenuItem.h>
#include <PopUpMenu.h>
#include <Window.h>

namespace {

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
	RecordingWindow* window = new RecordingWindow(BRect(100, 100, 399, 199), "CompareWin", {1000});
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
	ASSERT_TRUE(platform_ui_run_until([&] { return window->record.Count() == 1; }, 5000000));
	const char* chosen = nullptr;
	EXPECT_EQ(B_OK, window->record.Messages()[0].FindString("name", &chosen));
	EXPECT_STREQ("Disk Input/Output", chosen);
	EXPECT_EQ(menu->ItemAt(2), field->MenuItem());
	EXPECT_FALSE(menu->ItemAt(0)->IsMarked());
	EXPECT_EQ(window, menu->Window());
	QuitWindow(window);
}
