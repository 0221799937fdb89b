#include "app/QuickstepWin.h"

#include <cstdio>
#include <string>

#include <Alert.h>
#include <AppDefs.h>
#include <Application.h>
#include <Box.h>
#include <CheckBox.h>
#include <Font.h>
#include <GraphicsDefs.h>
#include <InterfaceDefs.h>
#include <Menu.h>
#include <MenuItem.h>
#include <Message.h>
#include <Messenger.h>
#include <OS.h>
#include <StringView.h>
#include <View.h>

#include "app/AnimateCursor.h"
#include "engine/GraphicsWin.h"
#include "engine/MachineCheck.h"
#include "lib/LibAlert.h"
#include "lib/LibApp.h"
#include "lib/LibRect.h"
#include "lib/LibThread.h"
#include "lib/MainMenuBar.h"
#include "results/ResultsWin.h"
#include "sysinfo/LibSysInfo.h"

namespace {

struct TestBox {
	const char* viewName;
	const char* label;
	uint32 what;
	int32 flag;
	// Estimated seconds of one pass.
	float seconds;
};

// In the order of the window's check-box fields. There is no box for
// Dhrystone: runs started here never include it, on purpose.
const TestBox kTestBoxes[QuickstepWin::kBoxCount] = {
    {"cpugraphics", "Graphics", 2000, Benchmark::kGraphics, 80},
    {"cpustring", "Strings", 2001, Benchmark::kStrings, 4},
    {"cpumemory", "Memory", 2002, Benchmark::kMemory, 2},
    {"cpusavage", "Savage", 2003, Benchmark::kSavage, 2},
    {"cpuackerman", "Ackerman", 2004, Benchmark::kAckerman, 2},
    {"cpufourier", "Fourier", 2008, Benchmark::kFourier, 4},
    {"cpuwhetstone", "Whetstone", 2006, Benchmark::kWhetstone, 2},
    {"cpusieve", "Sieve", 2007, Benchmark::kSieve, 4},
    {"disio", "Input/Output", 3000, Benchmark::kFileIO, 8},
    {"disklifecycle", "LifeCycle", 3001, Benchmark::kFileLifeCycle, 11},
};

const char* const kScreenModeText = "To properly test the graphics portion, the screen should be "
                                    "set to 8 Bits/Pixel, and a resolution of 1024x768";
const char* const kProcessorWarning =
    "While the test is being conducted against one CPU, Quickstep may appear to have hung and "
    "the animated pointer will not spin much. Be patient for a moment, the single processor is "
    "very busy during this phase of the test.";

const char* const kEstimateLabel = "Estimated Test Time";
const char* const kStatusLabel = "Status";


BRect
BoxFrame(int32 box)
{
	// Architecture: two columns of four; Disk: one row, LifeCycle first.
	if (box == QuickstepWin::kBoxLifeCycle)
		return LibRect(10, 16, 100, 18);
	if (box == QuickstepWin::kBoxInputOutput)
		return LibRect(115, 16, 100, 18);
	float left = box < 4 ? 10 : 115;
	return LibRect(left, 16 + 20 * (box % 4), 100, 18);
}

} // namespace

const unsigned char QuickstepWin::kBusyCursors[4][68] = {
    {
        0x10, 0x01, 0x07, 0x07, 0x01, 0x80, 0x0f, 0xf0, 0x1f, 0x18, 0x3f, 0x04, 0x7f, 0x06,
        0x7f, 0x02, 0x7f, 0x02, 0xfe, 0x03, 0xc0, 0x7f, 0x40, 0xfe, 0x40, 0xfe, 0x60, 0xfe,
        0x20, 0xfc, 0x18, 0xf8, 0x0f, 0xf0, 0x01, 0x80, 0x01, 0x80, 0x0f, 0xf0, 0x1f, 0xf8,
        0x3f, 0xfc, 0x7f, 0xfe, 0x7f, 0xfe, 0x7f, 0xfe, 0xff, 0xff, 0xff, 0xff, 0x7f, 0xfe,
        0x7f, 0xfe, 0x7f, 0xfe, 0x3f, 0xfc, 0x1f, 0xf8, 0x0f, 0xf0, 0x01, 0x80,
    },
    {
        0x10, 0x01, 0x07, 0x07, 0x01, 0x80, 0x0f, 0xf0, 0x1f, 0xf8, 0x3f, 0xf4, 0x6f, 0xe6,
        0x47, 0xc2, 0x43, 0x82, 0xc0, 0x03, 0xc0, 0x03, 0x41, 0xc2, 0x43, 0xe2, 0x67, 0xf6,
        0x2f, 0xfc, 0x1f, 0xf8, 0x0f, 0xf0, 0x01, 0x80, 0x01, 0x80, 0x0f, 0xf0, 0x1f, 0xf8,
        0x3f, 0xfc, 0x7f, 0xfe, 0x7f, 0xfe, 0x7f, 0xfe, 0xff, 0xff, 0xff, 0xff, 0x7f, 0xfe,
        0x7f, 0xfe, 0x7f, 0xfe, 0x3f, 0xfc, 0x1f, 0xf8, 0x0f, 0xf0, 0x01, 0x80,
    },
    {
        0x10, 0x01, 0x07, 0x07, 0x01, 0x80, 0x0f, 0xf0, 0x18, 0xf8, 0x20, 0xfc, 0x60, 0xfe,
        0x40, 0xfe, 0x40, 0xfe, 0xc0, 0x7f, 0xfe, 0x03, 0x7f, 0x02, 0x7f, 0x02, 0x7f, 0x06,
        0x3f, 0x04, 0x1f, 0x18, 0x0f, 0xf0, 0x01, 0x80, 0x01, 0x80, 0x0f, 0xf0, 0x1f, 0xf8,
        0x3f, 0xfc, 0x7f, 0xfe, 0x7f, 0xfe, 0x7f, 0xfe, 0xff, 0xff, 0xff, 0xff, 0x7f, 0xfe,
        0x7f, 0xfe, 0x7f, 0xfe, 0x3f, 0xfc, 0x1f, 0xf8, 0x0f, 0xf0, 0x01, 0x80,
    },
    {
        0x10, 0x01, 0x07, 0x07, 0x01, 0x80, 0x0f, 0xf0, 0x18, 0x18, 0x20, 0x0c, 0x70, 0x1e,
        0x78, 0x3e, 0x7c, 0x7e, 0xfe, 0x7f, 0xfe, 0x7f, 0x7e, 0x3e, 0x7c, 0x1e, 0x78, 0x0e,
        0x30, 0x04, 0x18, 0x18, 0x0f, 0xf0, 0x01, 0x80, 0x01, 0x80, 0x0f, 0xf0, 0x1f, 0xf8,
        0x3f, 0xfc, 0x7f, 0xfe, 0x7f, 0xfe, 0x7f, 0xfe, 0xff, 0xff, 0xff, 0xff, 0x7f, 0xfe,
        0x7f, 0xfe, 0x7f, 0xfe, 0x3f, 0xfc, 0x1f, 0xf8, 0x0f, 0xf0, 0x01, 0x80,
    },
};


QuickstepWin::QuickstepWin(bool allowCompareSave)
    : LibWindow(LibRect(50, 50, 245, 235), "QuickstepWin", B_TITLED_WINDOW_LOOK,
                B_NORMAL_WINDOW_FEEL, B_NOT_RESIZABLE | B_NOT_CLOSABLE | B_NOT_ZOOMABLE,
                B_CURRENT_WORKSPACE),
      fWarned(false), fAllowCompareSave(allowCompareSave), fMenuBar(nullptr), fBackground(nullptr),
      fResultsWin(nullptr), fTimeBox(nullptr), fTimeText(nullptr), fCursor(nullptr), fRunsGoing(0)
{
	Lock();
	SetTitle("Quickstep");
	// The program's other windows open beside this one, not over it.
	SetMainWindow(this);

	BRect bounds = Bounds();
	fMenuBar = new MainMenuBar(BRect(0, 0, bounds.right, 0));
	fMenuBar->MakeAppMenuCurrent();
	fMenuBar->AddMenuItem("About Quickstep...", new BMessage(kMsgShowAbout), 0, be_app);
	fMenuBar->AddMenuItem("Help...", new BMessage(kMsgHelpDocument), 0, be_app);
	fMenuBar->AddMenuItem("System...", new BMessage(kMsgShowSystem), 0, be_app);
	fMenuBar->AddSeparator();
	fMenuBar->AddMenuItem("Quit", new BMessage(B_QUIT_REQUESTED), 'Q', be_app);
	fMenuBar->AddMenu("Quickstep");
	fMenuBar->AddMenuItem("Test", new BMessage(kMsgStartTest), 'T');
	fMenuBar->AddMenuItem("All", new BMessage(kMsgSelectAll), 'A');
	AddChild(fMenuBar);

	BRect backFrame = bounds;
	backFrame.top = fMenuBar->Frame().bottom + 1;
	fBackground = new BView(backFrame, "bgview", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
	fBackground->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
	AddChild(fBackground);

	BBox* cpuBox = new BBox(LibRect(8, 6, 229, 98), "cpubox");
	cpuBox->SetLabel("Architecture");
	fBackground->AddChild(cpuBox);
	BBox* diskBox = new BBox(LibRect(8, 110, 229, 40), "diskbox");
	diskBox->SetLabel("Disk");
	fBackground->AddChild(diskBox);
	fTimeBox = new BBox(LibRect(8, 156, 229, 36), "timebox");
	fTimeBox->SetLabel(kEstimateLabel);
	fBackground->AddChild(fTimeBox);

	for (int32 i = 0; i < kBoxCount; i++) {
		const TestBox& test = kTestBoxes[i];
		fBoxes[i] = new BCheckBox(BoxFrame(i), test.viewName, test.label, new BMessage(test.what));
		bool disk = i == kBoxInputOutput || i == kBoxLifeCycle;
		(disk ? diskBox : cpuBox)->AddChild(fBoxes[i]);
	}

	fTimeText = new BStringView(LibRect(10, 14, 205, 16), "est_time", "0:00");
	fTimeBox->AddChild(fTimeText);
	BStringView* tip = new BStringView(LibRect(10, backFrame.Height() - 17, 225, 13), "tip_help",
	                                   "Select <Shift><F1> for on-line help");
	tip->SetFontSize(9);
	fBackground->AddChild(tip);

	system_info info;
	get_system_info(&info);
	fResultsWin = new ResultsWin(info.cpu_count);
	fResultsWin->Run();
	fResultsWin->SetPosition(kLibPositionTopLeft);

	fMenuBar->FindItem(kMsgStartTest)->SetEnabled(false);

	// The worker draws its graphics test in a window of its own.
	Benchmark::SetGraphicsTest(GraphicsWin::RunTests);

	fCursor = new AnimateCursor("LoadCursor", 4);
	for (long frame = 0; frame < 4; frame++)
		fCursor->SetCursor(frame, kBusyCursors[frame]);
	Unlock();
}


QuickstepWin::~QuickstepWin()
{
	// fWorker goes with the members after this body: its destructor kills a
	// worker thread that is still running. Killing alone would leave the disk
	// tests' helpers writing files into the temporary directory.
	if (fRunsGoing > 0)
		fWorker.Abandon();
	if (fCursor->IsRunning())
		fCursor->Quit();
	delete fCursor;
}


void
QuickstepWin::MessageReceived(BMessage* message)
{
	switch (message->what) {
		case kMsgStartTest:
			StartTest();
			break;
		case kMsgSelectAll:
			SelectAll();
			break;
		case 2000:
		case 2001:
		case 2002:
		case 2003:
		case 2004:
		case 2005:
		case 2006:
		case 2007:
		case 2008:
		case 3000:
		case 3001:
			SetDescription();
			EstimateTime();
			break;
		case kMsgBenchmarkStatus:
			StatusChange(message);
			break;
		case kMsgThreadCompleted:
			BenchmarkChange();
			break;
		default:
			LibWindow::MessageReceived(message);
	}
}


bool
QuickstepWin::QuitRequested()
{
	if (fResultsWin != nullptr)
		fResultsWin->QuitRequested();
	return LibWindow::QuitRequested();
}


void
QuickstepWin::StartTest()
{
	LibSysInfo profile;
	Lock();

	if (fBoxes[kBoxGraphics]->Value() == B_CONTROL_ON &&
	    (profile.ScreenWidth() != 1024 || profile.ScreenHeight() != 768 ||
	     profile.ColorSpace() != B_CMAP8)) {
		BAlert* alert = new BAlert("", kScreenModeText, "Abort", "Continue", nullptr,
		                           B_WIDTH_AS_USUAL, B_INFO_ALERT);
		if (alert->Go() == 0) {
			Unlock();
			return;
		}
	}

	// What makes this run's numbers less trustworthy (a busy machine, a
	// battery ...): on standard error before every run, and after the
	// processor warning in its one alert.
	MachineCheck check;
	check.Start();
	const std::string machine = check.StartText();
	if (!machine.empty())
		fprintf(stderr, "quickstep: before the run: %s\n", machine.c_str());

	if (!fWarned) {
		if (machine.empty())
			LibWarning("%s", kProcessorWarning);
		else
			LibWarning("%s\n\nThis machine: %s", kProcessorWarning, machine.c_str());
		fWarned = true;
	}

	fCursor->Run(0.1f);

	// The Dhrystone flag has no box and is left as it is.
	for (int32 i = 0; i < kBoxCount; i++)
		fWorker.SetTest(kTestBoxes[i].flag, fBoxes[i]->Value() == B_CONTROL_ON);

	fTimeBox->SetLabel(kStatusLabel);
	Unlock();

	// Nothing stops a second start while a run is going: it starts another
	// worker thread over the same record. Kept as it is.
	fRunsGoing++;
	fWorker.Go("benchmark", new BMessenger(this), 20);
}


void
QuickstepWin::SelectAll()
{
	Lock();
	for (int32 i = 0; i < kBoxCount; i++)
		fBoxes[i]->SetValue(B_CONTROL_ON);
	fMenuBar->FindItem(kMsgStartTest)->SetEnabled(true);
	Unlock();
	EstimateTime();
}


uint8
QuickstepWin::CountSelected()
{
	uint8 count = 0;
	for (int32 i = 0; i < kBoxCount; i++) {
		if (fBoxes[i]->Value() == B_CONTROL_ON)
			count++;
	}
	return count;
}


void
QuickstepWin::EstimateTime()
{
	Lock();
	float total = 0;
	for (int32 i = 0; i < kBoxCount; i++) {
		if (fBoxes[i]->Value() == B_CONTROL_ON)
			total += kTestBoxes[i].seconds;
	}
	// Every test runs once per processor configuration.
	system_info info;
	get_system_info(&info);
	total *= info.cpu_count;

	int minutes = static_cast<int>(total / 60);
	int seconds = static_cast<int>(total - 60 * minutes);
	char text[32];
	snprintf(text, sizeof(text), "%d:%2.2d", minutes, seconds);
	fTimeText->SetText(text);
	Unlock();
}


void
QuickstepWin::SetDescription()
{
	Lock();
	fMenuBar->FindItem(kMsgStartTest)->SetEnabled(CountSelected() > 0);
	Unlock();
}


void
QuickstepWin::BenchmarkChange()
{
	if (fRunsGoing > 0)
		fRunsGoing--;
	fCursor->Quit();
	Lock();
	fTimeBox->SetLabel(kEstimateLabel);
	// The estimate comes back with the next change of the boxes.
	fTimeText->SetText("");
	Unlock();
	fResultsWin->Update(fWorker.RunResults(), fAllowCompareSave);
	fResultsWin->Pop();
}


void
QuickstepWin::StatusChange(BMessage* message)
{
	const char* status = nullptr;
	if (message->FindString("status", &status) != B_OK)
		return;
	Lock();
	fTimeText->SetText(status);
	Unlock();
}
