#include "results/CompareWin.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>

#include <Application.h>
#include <Autolock.h>
#include <Button.h>
#include <CheckBox.h>
#include <Errors.h>
#include <Message.h>
#include <Messenger.h>
#include <Node.h>
#include <NodeInfo.h>
#include <ScrollBar.h>
#include <ScrollView.h>

#include "lib/LibAlert.h"
#include "lib/LibColorChooser.h"
#include "lib/LibMenuButton.h"
#include "lib/LibRect.h"
#include "results/CompareResultsView.h"
#include "results/CompareStore.h"
#include "results/CompareView.h"
#include "results/Metric.h"
#include "results/Results.h"
#include "results/ResultsFile.h"
#include "results/ResultsWin.h"

namespace {

// The executable whose attribute holds the store.
LibString
AppPath()
{
	app_info info;
	if (be_app == nullptr || be_app->GetAppInfo(&info) != B_OK)
		return LibString();
	return LibString(info.ref.path.c_str());
}

} // namespace


CompareWin::CompareWin(BLooper* owner, bool allowSave)
    : LibWindow(BRect(0, 0, 600, 300), "CompareWin", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL,
                B_OUTLINE_RESIZE),
      fOwner(owner), fView(nullptr), fChoices(nullptr), fRatio(nullptr), fResults(nullptr),
      fScroll(nullptr), fChooser(nullptr), fStorePath(AppPath())
{
	Lock();
	SetTitle("Quickstep Comparisons");
	SetSizeLimits(550, 1200, 250, 1200);

	fView = new CompareView(Bounds());
	AddChild(fView);

	fChoices = new LibMenuButton(LibRect(30, 3, 300, 20), "choices", "Test");
	fChoices->AddItem("Overall", new BMessage(kMsgCompareTest));
	fChoices->Choose(0);
	fView->AddChild(fChoices);

	fRatio = new BCheckBox(LibRect(350, 7, 200, 15), "ratio", "Percent of Current Selection",
	                       new BMessage(kMsgCompareRatio));
	fView->AddChild(fRatio);

	// Room for the scroll bar at the right.
	const BRect bounds = Bounds();
	fResults =
	    new CompareResultsView(BRect(30, 35, bounds.right - B_V_SCROLL_BAR_WIDTH, bounds.bottom));
	fScroll =
	    new BScrollView("scroll_view", fResults, B_FOLLOW_ALL_SIDES, 0, false, true, B_NO_BORDER);
	fView->AddChild(fScroll);

	// Just beyond the right edge of the first frame: it shows once the
	// window is widened, and only with -scmp.
	if (allowSave)
		fView->AddChild(
		    new BButton(LibRect(600, 2, 60, 15), "save", "Save", new BMessage(kMsgCompareSave)));

	ReadFromResource();
	Unlock();
}


CompareWin::~CompareWin()
{
	if (fChooser != nullptr && fChooser->Lock())
		fChooser->Quit();
}


void
CompareWin::SetResults(Results& results)
{
	BAutolock lock(this);
	ResultList& list = fResults->List();
	Results* first = list.First();
	if (first == nullptr || !first->IsCurrent()) {
		first = new Results(true);
		*first = results;
		if (!list.InsertBefore(first, 0)) {
			delete first;
			return;
		}
	} else {
		first->Clear();
		*first = results;
	}
	fResults->SetSelected(first);

	// The test shown stays when the new run has it; otherwise its first.
	const LibString shown = fChoices->Text();
	fChoices->RemoveAllItems();
	for (Metric* metric = first->First(); metric != nullptr; metric = first->Next())
		fChoices->AddItem(metric->Description(), new BMessage(kMsgCompareTest));
	if (!fChoices->Choose(shown))
		fChoices->Choose(0);
	Refresh();
}


bool
CompareWin::LoadResults(const char* path)
{
	struct stat info;
	if (stat(path, &info) != 0 || !S_ISREG(info.st_mode)) {
		fprintf(stderr, "%s: %s\n", path, ResultsFile::StatusText(kResultsFileCannotOpen));
		return false;
	}
	if (info.st_size > kCompareMaxFileSize) {
		fprintf(stderr, "%s: too large for a results file (%lld bytes)\n", path,
		        static_cast<long long>(info.st_size));
		return false;
	}

	BAutolock lock(this);
	const ResultsFileStatus status = ResultsFile::Read(path, fResults->List());
	if (status != kResultsFileOK) {
		fprintf(stderr, "%s: %s\n", path, ResultsFile::StatusText(status));
		return false;
	}
	Refresh();
	SaveToResource();
	return true;
}


void
CompareWin::LoadResults(BMessage* message)
{
	entry_ref ref;
	for (int32 i = 0; message->FindRef("refs", i, &ref) == B_OK; i++) {
		BNode node(ref.path.c_str());
		BNodeInfo nodeInfo(&node);
		char type[B_MIME_TYPE_LENGTH];
		if (nodeInfo.GetType(type) != B_OK || strcmp(type, "text/plain") != 0)
			continue;
		LoadResults(ref.path.c_str());
	}
}


status_t
CompareWin::SaveToResource()
{
	CompareStore store(fStorePath);
	const status_t status = store.Write(fResults->List());
	if (status != B_OK) {
		// The rows stay in the window; only the store is behind.
		fprintf(stderr, "Quickstep: cannot write the comparison store of %s: %s\n",
		        fStorePath.String(), strerror_status(status));
		LibWarning("The comparison store could not be written (%s). The machines added stay in "
		           "this window until it closes.",
		           strerror_status(status));
	}
	return status;
}


status_t
CompareWin::ReadFromResource()
{
	CompareStore store(fStorePath);
	const status_t status = store.Read(fResults->List());
	if (status != B_OK)
		fprintf(stderr, "Quickstep: cannot read the comparison store of %s: %s\n",
		        fStorePath.String(), strerror_status(status));
	Refresh();
	return status;
}


void
CompareWin::SaveComparison()
{
	fResults->Save();
	Refresh();
}


void
CompareWin::TestItemSelected()
{
	Refresh();
}


// The rows show the test named on the "choices" button when the current run
// has it.
void
CompareWin::Refresh()
{
	ResultList& list = fResults->List();
	Metric probe;
	probe.Description(fChoices->Text());
	Results* first = list.First();
	if (first != nullptr && first->IsCurrent() && first->Get(&probe) != nullptr)
		list.MakeCurrent(probe);
	fResults->UpdateMaxScale();
	fResults->Invalidate();
}


void
CompareWin::MessageReceived(BMessage* message)
{
	if (message->HasRef("refs")) {
		LoadResults(message);
		return;
	}
	switch (message->what) {
		case kMsgCompareTest:
			TestItemSelected();
			break;
		case kMsgCompareSave:
			SaveComparison();
			break;
		case kMsgCompareFocusRows:
			fResults->MakeFocus(true);
			break;
		case kMsgCompareRatio:
			fResults->CompareByRatio(fRatio->Value() == B_CONTROL_ON);
			fResults->Invalidate();
			break;
		case kMsgCompareChooseColor: {
			int32 index = 0;
			if (message->FindInt32("index", &index) != B_OK)
				break;
			OpenColorChooser(index);
			break;
		}
		case kLibColorChosen: {
			int32 index = -1;
			if (message->FindInt32("index", &index) != B_OK)
				break;
			if (index < 0) {
				ColorChooserClosed();
			} else if (fChooser != nullptr) {
				fResults->SetColor(index, fChooser->Color());
				fResults->Invalidate();
			}
			break;
		}
		default:
			LibWindow::MessageReceived(message);
	}
}


// Showing a window gives the keys to its first control; the focus moves to
// the rows once that is done.
void
CompareWin::Show()
{
	LibWindow::Show();
	PostMessage(kMsgCompareFocusRows);
}


void
CompareWin::FrameResized(float newWidth, float newHeight)
{
	LibWindow::FrameResized(newWidth, newHeight);
	fResults->Invalidate();
}


bool
CompareWin::QuitRequested()
{
	ColorChooserClosed();
	// The results window quits this one when it hears of it.
	if (fOwner != nullptr) {
		BMessenger(fOwner).SendMessage(kMsgCompareClosed);
		return false;
	}
	return true;
}


void
CompareWin::UpdateScrollBars(const float& height)
{
	BScrollBar* bar = fScroll->ScrollBar(B_VERTICAL);
	if (bar == nullptr)
		return;
	const float visible = fResults->Bounds().Height();
	const float hidden = std::max(0.0f, height - visible);
	float low = 0;
	float high = 0;
	bar->GetRange(&low, &high);
	if (high != hidden)
		bar->SetRange(0, hidden);
	bar->SetProportion(height > 0 ? std::min(1.0f, visible / height) : 1.0f);
	bar->SetSteps(17, std::max(17.0f, visible - 17));
}


void
CompareWin::ColorChooserClosed()
{
	if (fChooser == nullptr)
		return;
	if (fChooser->Lock())
		fChooser->Quit();
	fChooser = nullptr;
}


void
CompareWin::OpenColorChooser(int32 index)
{
	if (index < 0 || index >= kLibBarColorCount)
		return;
	ColorChooserClosed();
	LibString title;
	title.Format("Bars of %d CPU%s:", static_cast<int>(index + 1), index == 0 ? "" : "s");
	fChooser = new LibColorChooser(BMessenger(this), index, fResults->Colors()[index], title);
	fChooser->Run();
	fChooser->SetPosition(kLibPositionCentre, this);
	fChooser->Pop();
}
