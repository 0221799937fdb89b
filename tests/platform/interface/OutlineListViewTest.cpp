// Outline lists: rows under rows, collapsing and drawing (no display needed).
#include <gtest/gtest.h>

#include <DrawingRecorder.h>
#include <ListItem.h>
#include <OutlineListView.h>

namespace {

std::vector<std::string>
Shown(const BOutlineListView& list)
{
	std::vector<std::string> labels;
	for (int32 i = 0; i < list.CountItems(); i++)
		labels.push_back(static_cast<BStringItem*>(list.ItemAt(i))->Text());
	return labels;
}

} // namespace


TEST(OutlineListViewTest, SubRowsFollowTheirRowAndHideWithIt)
{
	BOutlineListView list(BRect(0, 0, 169, 199), "content_list");
	BStringItem tests("Tests");
	BStringItem cpu("Processor");
	BStringItem disk("Disk");
	BStringItem dhrystone("Dhrystone");
	BStringItem about("About");
	list.AddItem(&tests);
	list.AddItem(&about);
	list.AddUnder(&cpu, &tests);
	list.AddUnder(&disk, &tests);
	// Under the first sub-row: it goes before "Disk", not at the end.
	list.AddUnder(&dhrystone, &cpu);

	EXPECT_EQ((std::vector<std::string>{"Tests", "Processor", "Dhrystone", "Disk", "About"}),
	          Shown(list));
	EXPECT_EQ(2u, dhrystone.OutlineLevel());
	EXPECT_EQ(&cpu, list.Superitem(&dhrystone));
	EXPECT_EQ(&tests, list.Superitem(&disk));
	EXPECT_EQ(nullptr, list.Superitem(&about));
	EXPECT_EQ(2, list.CountItemsUnder(&tests, true));
	EXPECT_EQ(3, list.CountItemsUnder(&tests, false));
	EXPECT_EQ(&disk, list.ItemUnderAt(&tests, true, 1));

	list.Select(2);
	list.Collapse(&tests);
	EXPECT_EQ((std::vector<std::string>{"Tests", "About"}), Shown(list));
	EXPECT_EQ(5, list.FullListCountItems());
	EXPECT_FALSE(dhrystone.IsSelected()) << "hidden rows lose the selection";
	EXPECT_EQ(-1, list.CurrentSelection());

	// Expanding the outer row shows the inner one as it was left.
	list.Collapse(&cpu);
	list.Expand(&tests);
	EXPECT_EQ((std::vector<std::string>{"Tests", "Processor", "Disk", "About"}), Shown(list));
	EXPECT_FALSE(list.IsExpanded(list.FullListIndexOf(&cpu)));

	BDrawingRecorder recorder;
	list.SetDrawingRecorder(&recorder);
	list.Draw(list.Bounds());
	std::vector<drawing_call> strings = recorder.CallsOf(B_CALL_DRAW_STRING);
	ASSERT_EQ(4u, strings.size());
	EXPECT_EQ("Processor", strings[1].text);
	// Rows start after the latch margin and indent by level.
	EXPECT_EQ(BOutlineListView::kLatchWidth + 4, strings[0].points[0].x);
	EXPECT_EQ(BOutlineListView::kLatchWidth + 14, strings[1].points[0].x);
	// Latches for "Tests" (open) and "Processor" (closed) only.
	EXPECT_EQ(2u, recorder.CallsOf(B_CALL_FILL_POLYGON).size());

	list.MakeEmpty();
	EXPECT_EQ(0, list.FullListCountItems());
	EXPECT_EQ(0, list.CountItems());
}
