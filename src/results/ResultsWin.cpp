#include "results/ResultsWin.h"

#include <cstdio>

#include <Alert.h>
#include <Button.h>
#include <FilePanel.h>
#include <ListView.h>
#include <Message.h>
#include <Messenger.h>
#include <ScrollView.h>
#include <StringView.h>

#include "lib/ActionView.h"
#include "lib/LibAlert.h"
#include "lib/LibFile.h"
#include "lib/LibRect.h"
#include "lib/LibString.h"
#include "results/CompareWin.h"
#include "results/Metric.h"
#include "results/QstepAlert.h"
#include "results/ResultItem.h"
#include "results/Results.h"
#include "results/ResultsFile.h"
#include "results/ResultsMail.h"
#include "results/ResultsPacker.h"
#include "sysinfo/GetSysDeviceWin.h"
#include "sysinfo/LibDeviceInfo.h"

namespace {

// A run of every test has this many metrics.
const int32 kCompleteRun = 27;
const char* const kProposedName = "Quickstep.results";
const char* const kIncompleteRunText =
    "Not all the tests were run.  Do you still wish to save the results?";

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
	if (fDevicesWin != nullptr && fDevicesWin->Lock())
		fDevicesWin->Quit();
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
			SaveResults();
			break;
		case kMsgResultsSavePanel:
			SaveResultFile(message);
			break;
		case kMsgResultsEmail: {
			const char* config = nullptr;
			if (message->FindString("config", &config) != B_OK)
				config = "";
			EmailResults(config);
			break;
		}
		case kMsgDevicesDone:
			GetSysDeviceQuit();
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
	// The unknown-devices window never agrees to close by itself: it would
	// keep the application from quitting.
	if (fDevicesWin != nullptr && fDevicesWin->Lock()) {
		fDevicesWin->Quit();
		fDevicesWin = nullptr;
	}
	return true;
}


void
ResultsWin::SaveResults()
{
	if (fRecord->Size() != kCompleteRun) {
		BAlert* alert = new BAlert("", kIncompleteRunText, "No", "Yes", nullptr, B_WIDTH_AS_USUAL,
		                           B_INFO_ALERT);
		alert->SetShortcut(0, 'n');
		alert->SetShortcut(1, 'y');
		if (alert->Go() == 0)
			return;
	}
	// Names typed before a save panel was cancelled are still there.
	if (fDevicesWin != nullptr) {
		fDevicesWin->Pop();
		return;
	}
	LibDeviceInfo catalogue;
	if (!catalogue.AllDevicesKnown()) {
		fDevicesWin = new GetSysDeviceWin(catalogue, this);
		fDevicesWin->SetPosition(kLibPositionCentre);
		fDevicesWin->Show();
		return;
	}
	ShowSavePanel();
}


void
ResultsWin::ShowSavePanel()
{
	fSavePanel->SetSaveText(kProposedName);
	fSavePanel->Show();
}


void
ResultsWin::GetSysDeviceQuit()
{
	if (fDevicesWin == nullptr)
		return;
	fDevicesWin->Hide();
	ShowSavePanel();
}


void
ResultsWin::SaveResultFile(BMessage* message)
{
	BPath path;
	if (!LibGetFilePath(message, path))
		return;
	fSavePanel->Hide();

	ResultsPacker packer;
	LibString problem;
	if (!packer.AcceptsTarget(path.Path(), problem)) {
		LibWarning("%s", problem.String());
		return;
	}
	fSavePath = path;
	// A file that cannot be written is passed over without a word: the
	// packing that follows still has the report to carry.
	ResultsFile::Write(path.Path(), *fRecord);

	// Nothing is packed rather than use a link or another user's entry at
	// the fixed names; the results file stays as written.
	if (!packer.Prepare(problem)) {
		LibWarning("%s", problem.String());
		return;
	}
	if (fDevicesWin != nullptr)
		fDevicesWin->Save(packer.ReportPath());
	ResultsPackStatus packed = packer.Pack(path.Path(), fSavePath, problem);
	if (packed == kPackRefused) {
		LibWarning("%s", problem.String());
		return;
	}
	if (packed == kPackZipMissing)
		LibInfo("%s", kZipMissingText);

	QstepAlert* notice = new QstepAlert(this);
	notice->Go(nullptr);

	if (fDevicesWin != nullptr && fDevicesWin->Lock()) {
		fDevicesWin->Quit();
		fDevicesWin = nullptr;
	}
}


void
ResultsWin::EmailResults(const char* config)
{
	status_t status = MailResults(fSavePath.Path(), config);
	if (status == B_OK)
		return;
	// Said only when the user could not know: the mail kit had nothing to
	// send with, or the tool refused the message.
	if (fSavePath.Path() == nullptr)
		LibWarning("Quickstep could not mail your results: they have not been saved yet.");
	else if (status == B_ENTRY_NOT_FOUND && LibExists(fSavePath.Path()))
		LibWarning("Quickstep could not mail your results: neither 'sendmail' nor 'xdg-email' "
		           "was found. Please send %s to %s yourself.",
		           fSavePath.Path(), kSupportAddress);
	else
		LibWarning("Quickstep could not mail your results (%s). Please send %s to %s yourself.",
		           strerror_status(status), fSavePath.Path(), kSupportAddress);
}
