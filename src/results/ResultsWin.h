// The results window: the last run's metrics, one row each with a rate per
// processor configuration, and the buttons that save it, compare it or put
// the window away.
#ifndef RESULTS_WIN_H
#define RESULTS_WIN_H

#include <Path.h>

#include "lib/DialogWindow.h"

class BFilePanel;
class BListView;
class BMessage;
class BScrollView;
class CompareWin;
class GetSysDeviceWin;
class Results;

const uint32 kMsgResultsCancel = 500;
const uint32 kMsgResultsCompare = 501;
const uint32 kMsgResultsSave = 502;
const uint32 kMsgResultsSavePanel = 503;
const uint32 kMsgResultsEmail = 5000;
const uint32 kMsgCompareClosed = 'cmpq';
const uint32 kMsgDevicesDone = 'gsdq';

class ResultsWin : public DialogWindow
{
public:
	// Wide enough for one value column per CPU, the run with all of them
	// first.
	explicit ResultsWin(const int& nbrCpus);
	~ResultsWin() override;

	// Copies results (under the window lock) and lists its metrics. flag
	// allows the comparison window to save its store.
	void Update(Results& results, bool flag);
	// Opens the comparison window (once) with this run at its head, or
	// hands the run to the one open.
	void CompareResults();

	// "Save...": a run of fewer tests than all asks first; the unknown-devices
	// window comes before the save panel when the machine has such devices.
	void SaveResults();
	// Proposes "Quickstep.results".
	void ShowSavePanel();
	// The save panel's answer: writes the results file, packs it for mailing
	// and offers to mail it.
	void SaveResultFile(BMessage* message);
	// Mails the saved archive with the user's description of the machine.
	void EmailResults(const char* config);
	// The unknown-devices window is done: the save panel follows.
	void GetSysDeviceQuit();

	void MessageReceived(BMessage* message) override;
	bool QuitRequested() override;

	BListView* List() const { return fList; }
	BFilePanel* SavePanel() const { return fSavePanel; }
	GetSysDeviceWin* DevicesWindow() const { return fDevicesWin; }
	const BPath& SavePath() const { return fSavePath; }
	const Results* Record() const { return fRecord; }
	bool CompareFlag() const { return fCompareFlag; }
	CompareWin* CompareWindow() const { return fCompareWin; }

private:
	BListView* fList;
	BScrollView* fScroll;
	BFilePanel* fSavePanel;
	Results* fRecord;
	CompareWin* fCompareWin;
	GetSysDeviceWin* fDevicesWin;
	BPath fSavePath;
	bool fCompareFlag;
};

#endif // RESULTS_WIN_H
