#include "results/ResultsWin.h"

#include <cstdio>

#include <Button.h>
#include <FilePanel.h>
#include <ListView.h>
#include <Message.h>
#include <Messenger.h>
#include <ScrollView.h>
#include <StringView.h>

#include "lib/ActionView.h"
#include "lib/LibRect.h"
#include "lib/LibString.h"
#include "results/CompareWin.h"
#include "results/Metric.h"
#include "results/ResultItem.h"
#include "results/Results.h"

namespace {

BRect
ResultsFrame(int nbrCpus)
{
	float width = 55 * nbrCpus + 310;
	if (width < 320)
		width = 320;
	return BRect(0, 0, width, 300);
}


void
AddHeading(BView* parent, const char* name, const char* text, BRect frame)
{
	parent->AddChild(new BStringView(frame, name, text, B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW));
}

} // namespace


ResultsWin::ResultsWin(const int& nbrCpus)
    : DialogWindow(ResultsFrame(nbrCpus), "ResultsWin", 3, 75, B_HORIZONTAL), fList(nullptr),
      fScroll(nullptr), fSavePanel(nullptr), fRecord(nullptr), fCompareWin(nullptr),
      fDevicesWin(nullptr), fCompareFlag(false)
{
	Lock();
	SetTitle("Results");

	fActionView->SetButton(0, "cancel", "Cancel", new BMessage(kMsgResultsCancel));
	fActionView->SetButton(1, "compare", "Compare...", new BMessage(kMsgResultsCompare));
	fActionView->SetButton(2, "save", "Save...", new BMessage(kMsgResultsSave));
	fActionView->MakeDefault(2);

	AddHeading(fMainView, "banner1", "Test", LibRect(15, 3, 60, 14));
	AddHeading(fMainView, "banner2", "Units", LibRect(198, 3, 60, 14));
	LibString heading;
	for (int cpu = nbrCpus, column = 0; cpu >= 1; cpu--, column++) {
		heading.Format("%d CPU", cpu);
		AddHeading(fMainView, heading, heading, LibRect(300 + 55 * column, 3, 50, 14));
	}

	BRect listFrame = fMainView->Bounds();
	listFrame.left = 10;
	listFrame.top = 20;
	listFrame.right -= 25;
	listFrame.bottom -= 10;
	fList = new BListView(listFrame, "list", B_SINGLE_SELECTION_LIST, B_FOLLOW_ALL_SIDES,
	                      B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE);
	fList->SetFontSize(10);
	fScroll = new BScrollView("scroll", fList, B_FOLLOW_ALL_SIDES, 0, false, true, B_FANCY_BORDER);
	fMainView->AddChild(fScroll);

	BMessenger self(this);
	BMessage panelMessage(kMsgResultsSavePanel);
	fSavePanel = new BFilePanel(B_SAVE_PANEL, &self, nullptr, B_FILE_NODE, false, &panelMessage,
	                            nullptr, false, true);

	fRecord = new Results(false);
	Unlock();
}


ResultsWin::~ResultsWin()
{
	Lock();
	if (fCompareWin != nullptr)
		fCompareWin->Quit();
	// The list does not own its rows.
	while (fList->CountItems() > 0)
		delete fList->RemoveItem(fList->CountItems() - 1);
	Unlock();
	delete fSavePanel;
	delete fRecord;
}


void
ResultsWin::Update(Results& results, bool flag)
{
	Lock();
	fCompareFlag = flag;
	fRecord->Clear();
	*fRecord = results;

	while (fList->CountItems() > 0)
		delete fList->RemoveItem(fList->CountItems() - 1);
	for (Metric* metric = fRecord->First(); metric != nullptr; metric = fRecord->Next()) {
		ResultItem* item = new ResultItem(metric->Description());
		item->Units(metric->Units());
		for (int i = 0; i < metric->Count(); i++)
			item->Rate(i, static_cast<float>(metric->Rate(i)));
		fList->AddItem(item);
	}
	if (fCompareWin != nullptr)
		CompareResults();
	Unlock();
}


void
ResultsWin::CompareResults()
{
	if (fCompareWin == nullptr) {
		fCompareWin = new CompareWin(this, fCompareFlag);
		fCompareWin->Run();
		fCompareWin->SetPosition(kLibPositionMiddleLeft);
	}
	fCompareWin->SetResults(*fRecord);
	fprintf(stderr, "time 2: %.3f 1: %.3f\n", fRecord->Time(1), fRecord->Time(0));
	fCompareWin->Pop();
}


void
ResultsWin::MessageReceived(BMessage* message)
{
	switch (message->what) {
		case kMsgResultsCancel:
			Hide();
			break;
		case kMsgResultsCompare:
			CompareResults();
			break;
		case kMsgCompareClosed:
			if (fCompareWin != nullptr && fCompareWin->Lock()) {
				fCompareWin->Quit();
				fCompareWin = nullptr;
			}
			break;
		case kMsgResultsSave:
		case kMsgResultsSavePanel:
		case kMsgResultsEmail:
		case kMsgDevicesDone:
			// Saving and mailing arrive with the unknown-devices window; until
			// then their requests are taken here and go no further.
			break;
		default:
			DialogWindow::MessageReceived(message);
	}
}


bool
ResultsWin::QuitRequested()
{
	if (fSavePanel != nullptr && fSavePanel->Window() != nullptr)
		fSavePanel->Window()->Quit();
	if (fCompareWin != nullptr && fCompareWin->Lock()) {
		fCompareWin->Quit();
		fCompareWin = nullptr;
	}
	return true;
}
