// Opening the comparison window over a store of many machines, one full
// redraw, and the peak resident memory. Runs under a display (xvfb-run -a).
//
//   bench_compare_window [records] [redraws]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <time.h>
#include <unistd.h>
#include <vector>

#include <AppFileInfo.h>
#include <Application.h>
#include <DrawingRecorder.h>
#include <InterfaceTest.h>
#include <Path.h>
#include <PlatformTest.h>

#include "results/CompareResultsView.h"
#include "results/CompareStore.h"
#include "results/CompareWin.h"
#include "results/Metric.h"
#include "results/ResultList.h"
#include "results/Results.h"

namespace {

using Clock = std::chrono::steady_clock;

double
Milliseconds(Clock::time_point from, Clock::time_point to)
{
	return std::chrono::duration<double, std::milli>(to - from).count();
}


// This process's processor time: on a busy machine the wall time of a phase
// holds other programs' turns too.
double
CpuMilliseconds()
{
	timespec now;
	clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
	return now.tv_sec * 1000.0 + now.tv_nsec / 1e6;
}


long
PeakKilobytes()
{
	rusage usage;
	getrusage(RUSAGE_SELF, &usage);
	return usage.ru_maxrss;
}


// A complete run of 27 measurements on a machine of 1 to 8 processors.
std::string
Record(int machine)
{
	const int indices[] = {100,  101,  200,  300,  400,  500,  550,  600,  601,
	                       602,  700,  800,  801,  900,  901,  1010, 1011, 1020,
	                       1021, 1022, 1030, 1031, 1032, 1040, 1041, 1042, 1050};
	const int cpus = 1 + machine % 8;
	std::ostringstream record;
	record << "Machine " << machine << " (" << cpus << "-x86@" << 300 + machine
	       << "/66MHz) 128MB RAM\t-1:8 bit color, 1024x768 resolution\t1:IDE controller\t"
	       << "2:Ethernet controller\t3:VGA controller\t";
	for (int index : indices) {
		record << index << ":100000/";
		for (int c = 0; c < cpus; c++)
			record << (c > 0 ? "," : "") << 0.5 + 0.001 * ((machine * 7 + index + c) % 997);
		record << ";";
	}
	return record.str();
}

// Drawn after everything else in the window: its Draw says the window is.
class ProbeView : public BView
{
public:
	ProbeView() : BView(BRect(0, 0, 1, 1), "probe", B_FOLLOW_NONE, B_WILL_DRAW), fDraws(0) {}
	void Draw(BRect) override { fDraws++; }
	int fDraws;
};

} // namespace


int
main(int argc, char** argv)
{
	const int records = argc > 1 ? atoi(argv[1]) : 1000;
	const int redraws = argc > 2 ? atoi(argv[2]) : 20;
	if (!platform_display_available()) {
		fprintf(stderr, "bench_compare_window: needs a display (run under xvfb-run -a)\n");
		return 1;
	}

	// The store goes to a scratch per-user store, not to this executable.
	char scratch[] = "/tmp/qs-bench-XXXXXX";
	if (mkdtemp(scratch) == nullptr)
		return 1;
	setenv("XDG_DATA_HOME", scratch, 1);
	platform_set_xattr_disabled(true);

	BApplication app("application/x-vnd.Quickstep-bench");
	BPath self;
	get_app_path(&self);
	{
		ResultList rows;
		for (int i = 0; i < records; i++) {
			rows.Insert(Results::FromRecord(Record(i).c_str()));
		}
		CompareStore store(self.Path());
		if (store.Write(rows) != B_OK) {
			fprintf(stderr, "bench_compare_window: cannot write the store\n");
			return 1;
		}
	}
	Results run(true);
	run.Read(Record(2).c_str());
	const long baseline = PeakKilobytes();

	// Opening: the store read, the run put first, the window shown and drawn.
	const Clock::time_point start = Clock::now();
	const double cpuStart = CpuMilliseconds();
	CompareWin* window = new CompareWin(nullptr, false);
	ProbeView* probe = new ProbeView;
	window->Lock();
	window->ChildAt(0)->AddChild(probe);
	window->Unlock();
	window->Run();
	const Clock::time_point made = Clock::now();
	window->SetResults(run);
	const Clock::time_point filled = Clock::now();
	window->Show();
	platform_ui_run_until([&] { return probe->fDraws > 0; }, 10000000);
	window->Sync();
	const Clock::time_point shown = Clock::now();
	const double cpuOpen = CpuMilliseconds() - cpuStart;
	if (probe->fDraws == 0) {
		fprintf(stderr, "bench_compare_window: the window was never drawn\n");
		return 1;
	}

	// A full redraw of the window as it stands.
	std::vector<double> times;
	for (int i = 0; i < redraws; i++) {
		const Clock::time_point before = Clock::now();
		const int draws = probe->fDraws;
		window->Lock();
		window->ResultsView()->Invalidate();
		probe->Invalidate();
		window->Unlock();
		platform_ui_run_until([&] { return probe->fDraws > draws; }, 5000000);
		window->Sync();
		times.push_back(Milliseconds(before, Clock::now()));
	}
	std::sort(times.begin(), times.end());

	// Every row drawn, none stepped over (into a recorder: the drawing's
	// own cost without the display server).
	BDrawingRecorder recorder;
	window->Lock();
	CompareResultsView* view = window->ResultsView();
	const int32 rows = view->List().Size();
	view->SetDrawingRecorder(&recorder);
	const Clock::time_point allStart = Clock::now();
	view->Draw(BRect(0, 0, view->Frame().Width(), view->RowsHeight()));
	const double all = Milliseconds(allStart, Clock::now());
	view->SetDrawingRecorder(nullptr);
	window->Unlock();

	printf("records in store      %d (rows shown %d)\n", records, static_cast<int>(rows));
	printf("open, read, draw      %.1f ms (store read %.1f, run put first %.1f, shown %.1f)\n",
	       Milliseconds(start, shown), Milliseconds(start, made), Milliseconds(made, filled),
	       Milliseconds(filled, shown));
	printf("  of which this process's processor time %.1f ms\n", cpuOpen);
	printf("full redraw (median)  %.2f ms of %d (min %.2f, max %.2f)\n",
	       times.empty() ? 0 : times[times.size() / 2], redraws, times.empty() ? 0 : times.front(),
	       times.empty() ? 0 : times.back());
	printf("every row, recorded   %.1f ms (%d calls)\n", all,
	       static_cast<int>(recorder.CountCalls()));
	printf("peak resident memory  %.1f MB (%.1f MB before the window)\n", PeakKilobytes() / 1024.0,
	       baseline / 1024.0);

	window->Lock();
	window->Quit();
	std::string remove = std::string("rm -rf ") + scratch;
	return system(remove.c_str()) == 0 ? 0 : 1;
}
