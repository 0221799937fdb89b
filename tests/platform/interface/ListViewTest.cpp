// List views in a window: selection and invocation messages, keys, and the
// scroll bar kept in line with the rows.
#include "InterfaceSupport.h"


#include <ListItem.h>
#include <ListView.h>
#include <ScrollBar.h>
#include <ScrollView.h>
#include <Window.h>

namespace {

const uint32 kMsgSelected = 'lsel';
const uint32 kMsgInvoked = 'linv';

int32
IndexOf(const BMessage& message)
{
	int32 index = -1;
	message.FindInt32("index", &index);
	return index;
}

} // namespace


TEST(ListViewTest, ClicksAndKeysSelectAndInvokeRows)
{
	REQUIRE_DISPLAY();
	RecordingWindow* window =
	    new RecordingWindow(BRect(100, 100, 299, 199), "Lists", {kMsgSelected, kMsgInvoked});
	BListView* list = new BListView(BRect(10, 10, 150, 69), "list");
	std::vector<BStringItem*> items;
	for (int i = 0; i < 12; i++) {
		char label[16];
		snprintf(label, sizeof(label), "Row %d", i);
		items.push_back(new BStringItem(label));
		list->AddItem(items.back());
	}
	list->SetSelectionMessage(new BMessage(kMsgSelected));
	list->SetInvocationMessage(new BMessage(kMsgInvoked));
	BScrollView* scroll = new BScrollView("scroll", list, B_FOLLOW_ALL_SIDES, 0, false, true);
	window->AddChild(scroll);
	window->Run();
	window->Lock();

	float rowHeight = items[0]->Height();
	ASSERT_GT(rowHeight, 0);
	BScrollBar* bar = scroll->ScrollBar(B_VERTICAL);
	ASSERT_NE(nullptr, bar);
	float min = -1;
	float max = -1;
	bar->GetRange(&min, &max);
	EXPECT_EQ(0, min);
	EXPECT_EQ(12 * rowHeight - 60, max) << "rows' height less the 60 pixels on show";

	// A click on the third row selects it; a second click on it invokes it.
	list->MouseDown(BPoint(5, 2 * rowHeight + 1));
	list->MouseDown(BPoint(5, 2 * rowHeight + 1));
	EXPECT_EQ(2, list->CurrentSelection());
	// Down arrow moves the selection and scrolls it into view at the end.
	for (int i = 0; i < 9; i++)
		list->KeyDown("\x1f", 1);
	EXPECT_EQ(11, list->CurrentSelection());
	EXPECT_EQ(max, bar->Value());
	EXPECT_EQ(max, list->Bounds().top);
	// At the last row a further Down changes nothing.
	list->KeyDown("\x1f", 1);
	window->Unlock();

	ASSERT_TRUE(
	    platform_ui_run_until([&] { return window->record.Messages().size() >= 11; }, 5000000));
	platform_ui_run_for(100000);
	std::vector<BMessage> received = window->record.Messages();
	ASSERT_EQ(11u, received.size());
	EXPECT_EQ(kMsgSelected, received[0].what);
	EXPECT_EQ(2, IndexOf(received[0]));
	EXPECT_EQ(kMsgInvoked, received[1].what);
	EXPECT_EQ(2, IndexOf(received[1]));
	void* source = nullptr;
	EXPECT_EQ(B_OK, received[1].FindPointer("source", &source));
	EXPECT_EQ(list, source);
	EXPECT_EQ(3, IndexOf(received[2]));
	EXPECT_EQ(11, IndexOf(received[10]));

	// Emptied, the list hands its rows back and scrolls home.
	window->Lock();
	list->MakeEmpty();
	EXPECT_EQ(0, list->CountItems());
	EXPECT_EQ(0, list->Bounds().top);
	bar->GetRange(&min, &max);
	EXPECT_EQ(0, max);
	for (BStringItem* item : items)
		delete item;
	window->Quit();
}
