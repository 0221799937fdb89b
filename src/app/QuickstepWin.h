// The main window: the tests to run, their estimated time, the "Test"
// command, and the progress of a run. It owns the worker, the results window
// and the busy pointer.
#ifndef QUICKSTEP_WIN_H
#define QUICKSTEP_WIN_H

#include <SupportDefs.h>

#include "engine/Benchmark.h"
#include "lib/LibWindow.h"

class AnimateCursor;
class BBox;
class BCheckBox;
class BMessage;
class BStringView;
class BView;
class MainMenuBar;
class ResultsWin;

const uint32 kMsgStartTest = 100;
const uint32 kMsgSelectAll = 200;
const uint32 kMsgHelpDocument = 'Help';

class QuickstepWin : public LibWindow
{
public:
	// The boxes in the order of the check-box fields.
	enum {
		kBoxGraphics = 0,
		kBoxStrings,
		kBoxMemory,
		kBoxSavage,
		kBoxAckerman,
		kBoxFourier,
		kBoxWhetstone,
		kBoxSieve,
		kBoxInputOutput,
		kBoxLifeCycle,
		kBoxCount
	};

	explicit QuickstepWin(bool allowCompareSave);
	~QuickstepWin() override;

	void MessageReceived(BMessage* message) override;
	// Asks the results window first (its answer does not count).
	bool QuitRequested() override;

	void StartTest();
	void SelectAll();
	uint8 CountSelected();
	void EstimateTime();
	// Enables "Test" when at least one box is ticked.
	void SetDescription();
	void BenchmarkChange();
	void StatusChange(BMessage* message);

	ResultsWin* ResultsWindow() const { return fResultsWin; }
	AnimateCursor* Cursor() const { return fCursor; }
	Benchmark& Worker() { return fWorker; }
	bool AllowCompareSave() const { return fAllowCompareSave; }

	// The four frames of the busy pointer (68 bytes each).
	static const unsigned char kBusyCursors[4][68];

private:
	bool fWarned;
	bool fAllowCompareSave;
	MainMenuBar* fMenuBar;
	BView* fBackground;
	BCheckBox* fBoxes[kBoxCount];
	ResultsWin* fResultsWin;
	BBox* fTimeBox;
	BStringView* fTimeText;
	Benchmark fWorker;
	AnimateCursor* fCursor;
	// Runs started and not yet reported back with 'LThC'.
	int32 fRunsGoing;
};

#endif // QUICKSTEP_WIN_H
