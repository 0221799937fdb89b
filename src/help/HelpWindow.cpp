#include "help/HelpWindow.h"

#include <cstdio>
#include <cstring>
#include <new>
#include <vector>

#include <AppFileInfo.h>
#include <Autolock.h>
#include <File.h>
#include <FindDirectory.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <OutlineListView.h>
#include <Resources.h>
#include <ScrollBar.h>
#include <ScrollView.h>

#include "help/HelpFile.h"
#include "help/HelpManager.h"
#include "help/HelpTextView.h"
#include "help/MetaStringItem.h"
#include "help/xmlTag.h"
#include "lib/LibApp.h"
#include "lib/LibFile.h"
#include "lib/LibString.h"

namespace {

// The smallest frame; the window opens at this size and may grow.
const float kMinWidth = 450;
const float kMinHeight = 200;
const float kMaxSize = 10000;
// Right edge of the contents' scroll view.
const float kContentsRight = 170;
// Grey margin around the two panes.
const float kGap = 4;
// Width of the scroll views' fancy border.
const float kBorder = 2;
// Contents nested deeper than this are left out: no help file needs them.
const int32 kMaxContentsDepth = 32;


bool
HasStoredHelp(const BPath& executable)
{
	if (executable.Path() == nullptr)
		return false;
	BFile file(executable.Path(), B_READ_ONLY);
	BResources resources(&file);
	return resources.HasResource(HelpFile::kResourceType, HelpFile::kResourceId);
}

} // namespace


HelpWindow::HelpWindow(const char* name, HelpManager* manager)
    : LibWindow(BRect(0, 0, kMinWidth, kMinHeight), "HelpWindow", B_TITLED_WINDOW_LOOK,
                B_NORMAL_WINDOW_FEEL, B_NOT_ZOOMABLE),
      fManager(manager), fContents(nullptr), fPane(nullptr)
{
	Lock();
	SetTitle("Help");
	SetSizeLimits(kMinWidth, kMaxSize, kMinHeight, kMaxSize);

	BRect bounds = Bounds();
	BView* view = new BView(bounds, "view", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
	view->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
	AddChild(view);

	// Each scroll view is its target's frame grown by the border and the
	// scroll bar.
	BRect listFrame(kGap + kBorder, kGap + kBorder, kContentsRight - kBorder - B_V_SCROLL_BAR_WIDTH,
	                bounds.bottom - kGap - kBorder);
	fContents = new BOutlineListView(listFrame, "content_list", B_SINGLE_SELECTION_LIST,
	                                 B_FOLLOW_LEFT | B_FOLLOW_TOP_BOTTOM);
	fContents->SetFontSize(10);
	fContents->SetSelectionMessage(new BMessage(kMsgHelpContentSelected));
	view->AddChild(new BScrollView("content_scroll", fContents, B_FOLLOW_LEFT | B_FOLLOW_TOP_BOTTOM,
	                               0, false, true));

	BRect paneFrame(kContentsRight + kGap + kBorder, kGap + kBorder,
	                bounds.right - kGap - kBorder - B_V_SCROLL_BAR_WIDTH,
	                bounds.bottom - kGap - kBorder);
	fPane = new HelpTextView(paneFrame, "help_pane", B_FOLLOW_ALL_SIDES);
	view->AddChild(new BScrollView("help_scroll", fPane, B_FOLLOW_ALL_SIDES, 0, false, true));

	ReadInContents(name);
	Unlock();
}


HelpWindow::~HelpWindow()
{
	EmptyContents();
	if (fManager != nullptr)
		fManager->WindowClosed(this);
}


void
HelpWindow::EmptyContents()
{
	// The list does not own its rows.
	std::vector<BListItem*> rows;
	for (int32 i = 0; i < fContents->FullListCountItems(); i++)
		rows.push_back(fContents->FullListItemAt(i));
	fContents->MakeEmpty();
	for (BListItem* row : rows)
		delete row;
}


// The help file is looked for in the working directory, then in the common
// temporary directory, then the copy stored in the executable is extracted
// there, and last the copy installed with the program is taken.
void
HelpWindow::ReadInContents(const char* name)
{
	BAutolock lock(this);
	EmptyContents();
	fPane->Clear();
	fParser.Close();
	fPath.Unset();

	LibString fileName;
	fileName.Format("%s.help", name);
	BPath working(fileName.String());
	BPath temp;
	find_directory(B_COMMON_TEMP_DIRECTORY, &temp);
	temp.Append(fileName.String());
	bool nearby = LibExists(working.Path()) || LibExists(temp.Path());

	BPath self;
	bool haveSelf = get_app_path(&self) == B_OK;
	BPath found;
	status_t status = HelpFile::Locate(name, haveSelf ? self.Path() : nullptr, found, true);
	if (!nearby && (status != B_OK || !HasStoredHelp(self)))
		fprintf(stderr, "HelpWindow::ReadInContents: No help in attrs\n");
	if (status != B_OK)
		return;
	fPath = found;

	bool opened = fParser.Open(fPath.Path());
	fprintf(stderr, "parser %d\n", opened);
	fParser.Rewind();
	xmlTag contents;
	if (fParser.FindTag("CONTENTS", contents))
		AddRows(contents, nullptr, 0);
}


void
HelpWindow::AddRows(xmlTag& parent, MetaStringItem* superitem, int32 depth)
{
	LinkList<xmlTag>& children = parent.Children();
	// Each level walks its own list's cursor, so the recursion into a child
	// does not disturb this loop.
	for (xmlTag* child = children.First(); child != nullptr; child = children.Next()) {
		LibString label = child->Contents();
		label.StripSpaces();
		MetaStringItem* row = new (std::nothrow) MetaStringItem(label.String());
		if (row == nullptr) {
			fprintf(stderr, "Error allocating MetaStringItem\n");
			continue;
		}
		const char* value = nullptr;
		if (child->Modifiers().FindString("PAGE", &value) == B_OK)
			row->Meta()->AddString("PAGE", value);
		for (int32 i = 0; child->Modifiers().FindString("VIEW", i, &value) == B_OK; i++)
			row->Meta()->AddString("VIEW", value);
		if (superitem != nullptr) {
			fContents->AddUnder(row, superitem);
			fContents->Collapse(superitem);
		} else {
			fContents->AddItem(row);
		}
		if (depth + 1 < kMaxContentsDepth)
			AddRows(*child, row, depth + 1);
	}
}


MetaStringItem*
HelpWindow::FindRow(const char* key) const
{
	if (key == nullptr)
		return nullptr;
	for (int32 i = 0; i < fContents->FullListCountItems(); i++) {
		MetaStringItem* row = dynamic_cast<MetaStringItem*>(fContents->FullListItemAt(i));
		if (row != nullptr && row->HasView(key))
			return row;
	}
	return nullptr;
}


bool
HelpWindow::HasHelpFor(const char* key)
{
	BAutolock lock(this);
	return FindRow(key) != nullptr;
}


void
HelpWindow::HelpForInterface(const char* key)
{
	BAutolock lock(this);
	MetaStringItem* row = FindRow(key);
	if (row == nullptr) {
		fprintf(stderr, "No help for %s\n", key != nullptr ? key : "");
		return;
	}
	// Open the rows above it from the top, so that each one is on show.
	std::vector<BListItem*> above;
	for (BListItem* item = fContents->Superitem(row); item != nullptr;
	     item = fContents->Superitem(item))
		above.push_back(item);
	for (auto item = above.rbegin(); item != above.rend(); ++item) {
		if (!(*item)->IsExpanded())
			fContents->Expand(*item);
	}
	fContents->Select(fContents->IndexOf(row));
	fContents->ScrollToSelection();
}


void
HelpWindow::HelpForContent(const char* page)
{
	if (page == nullptr)
		return;
	BAutolock lock(this);
	xmlTag tag;
	if (!fParser.FindPage(page, tag)) {
		fPane->Clear();
		return;
	}
	// The page is headed by the label of the first row that shows it.
	const char* title = nullptr;
	for (int32 i = 0; i < fContents->FullListCountItems() && title == nullptr; i++) {
		MetaStringItem* row = dynamic_cast<MetaStringItem*>(fContents->FullListItemAt(i));
		if (row != nullptr && row->Page() != nullptr && strcmp(row->Page(), page) == 0)
			title = row->Text();
	}
	fPane->ShowTag(tag, title);
}


void
HelpWindow::MessageReceived(BMessage* message)
{
	switch (message->what) {
		case kMsgHelpContentSelected: {
			int32 index = fContents->CurrentSelection();
			MetaStringItem* row =
			    index >= 0 ? dynamic_cast<MetaStringItem*>(fContents->ItemAt(index)) : nullptr;
			HelpForContent(row != nullptr ? row->Page() : nullptr);
			break;
		}
		default:
			LibWindow::MessageReceived(message);
	}
}


bool
HelpWindow::QuitRequested()
{
	if (!IsHidden())
		Hide();
	LibApp* app = dynamic_cast<LibApp*>(be_app);
	return app != nullptr && app->Quitting();
}
