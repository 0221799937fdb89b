// The comparison window: the run just measured beside the stored runs of
// other machines, one row each, for the test chosen in "choices". Results
// files dropped on it join the store at once; "Save" (with -scmp) or the key
// "S" exports the rows as a table.
#ifndef COMPARE_WIN_H
#define COMPARE_WIN_H

#include <sys/types.h>

#include "lib/LibString.h"
#include "lib/LibWindow.h"

class BButton;
class BCheckBox;
class BLooper;
class BMessage;
class BScrollView;
class CompareResultsView;
class CompareView;
class LibColorChooser;
class LibMenuButton;
class Results;

const uint32 kMsgCompareTest = 1000;
const uint32 kMsgCompareSave = 1001;
const uint32 kMsgCompareRatio = 1002;
// A click on a bar: int32 "index" is the colour to change.
const uint32 kMsgCompareChooseColor = 'CmCC';
const uint32 kMsgCompareFocusRows = 'CmFR';

// Results files larger than this are not taken (a store of a thousand
// machines is well under a megabyte).
const off_t kCompareMaxFileSize = 16 * 1024 * 1024;

class CompareWin : public LibWindow
{
public:
	// owner hears 'cmpq' when the window closes; allowSave adds "Save".
	CompareWin(BLooper* owner, bool allowSave);
	~CompareWin() override;

	// Puts the run at the head of the rows (replacing the one there) and
	// offers its tests in "choices".
	void SetResults(Results& results);
	// Adds the records of a results file and writes the store; false (with
	// a line on standard error) when the file adds nothing.
	bool LoadResults(const char* path);
	// Loads every "refs" entry whose contents are "text/plain".
	void LoadResults(BMessage* message);
	status_t SaveToResource();
	status_t ReadFromResource();
	void SaveComparison();
	void TestItemSelected();

	void MessageReceived(BMessage* message) override;
	void FrameResized(float newWidth, float newHeight) override;
	// The rows take the keys ("S") once the window is up.
	void Show() override;
	bool QuitRequested() override;
	void UpdateScrollBars(const float& height);
	void ColorChooserClosed();

	CompareResultsView* ResultsView() const { return fResults; }
	LibMenuButton* Choices() const { return fChoices; }
	LibColorChooser* ColorChooser() const { return fChooser; }
	const char* StorePath() const { return fStorePath; }

private:
	void Refresh();
	void OpenColorChooser(int32 index);

	BLooper* fOwner;
	CompareView* fView;
	LibMenuButton* fChoices;
	BCheckBox* fRatio;
	CompareResultsView* fResults;
	BScrollView* fScroll;
	LibColorChooser* fChooser;
	LibString fStorePath;
};

#endif // COMPARE_WIN_H
