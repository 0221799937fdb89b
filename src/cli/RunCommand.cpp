// quickstep-cli run: one benchmark run without windows. The same worker as the
// desktop program runs on its own thread and reports to a looper here; progress
// goes to standard error, the results to standard output.
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <strings.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <FindDirectory.h>
#include <Looper.h>
#include <Message.h>
#include <Messenger.h>
#include <OS.h>

#include "cli/Commands.h"
#include "cli/GraphicsHost.h"
#include "cli/RunReport.h"
#include "engine/Benchmark.h"
#include "engine/MachineCheck.h"
#include "lib/LibBuildInfo.h"
#include "results/Metric.h"
#include "results/RelatedDevices.h"
#include "results/Results.h"
#include "results/ResultsFile.h"

namespace {

// The main window's check boxes: label, the worker's flag and the seconds each
// adds to the estimate of one pass.
struct CheckBox {
	const char* label;
	int32 test;
	int32 seconds;
};

const CheckBox kCheckBoxes[] = {
    {"Graphics", Benchmark::kGraphics, 80},
    {"Strings", Benchmark::kStrings, 4},
    {"Memory", Benchmark::kMemory, 2},
    {"Savage", Benchmark::kSavage, 2},
    {"Ackerman", Benchmark::kAckerman, 2},
    {"Fourier", Benchmark::kFourier, 4},
    {"Whetstone", Benchmark::kWhetstone, 2},
    {"Sieve", Benchmark::kSieve, 4},
    {"LifeCycle", Benchmark::kFileLifeCycle, 11},
    {"Input/Output", Benchmark::kFileIO, 8},
};

const char* kRunUsage =
    "usage: quickstep-cli run TESTS [--save FILE [--pack]] [--json] [--repeat N [--max-cv PCT]\n"
    "  [--max-runs M]] [--scaling]\n"
    "  TESTS: comma-separated, any case: all, Graphics, Strings, Memory, Savage,\n"
    "  Ackerman, Dhrystone, Fourier, Whetstone, Sieve, LifeCycle (Disk LifeCycle),\n"
    "  Input/Output (Disk Input/Output); all is every box of the main window\n"
    "  (not Dhrystone); Graphics draws in a window and needs an X display\n";

const int kExitInterrupted = 130;

struct RunOptions {
	std::string tests;
	std::string saveFile;
	bool pack = false;
	bool json = false;
	RunSettings settings;
};


std::string
Trimmed(const std::string& text)
{
	const size_t first = text.find_first_not_of(" \t");
	if (first == std::string::npos)
		return "";
	const size_t last = text.find_last_not_of(" \t");
	return text.substr(first, last - first + 1);
}


// The flag a test name stands for: a check-box label or a display name of the
// status line; -1 when none.
int32
TestFromName(const std::string& name)
{
	for (const CheckBox& box : kCheckBoxes) {
		if (strcasecmp(name.c_str(), box.label) == 0)
			return box.test;
	}
	for (int32 test = 0; test < Benchmark::kTestCount; test++) {
		if (strcasecmp(name.c_str(), Benchmark::TestName(test)) == 0)
			return test;
	}
	return -1;
}


// Fills selected from the list; answers 0 or the exit status after saying why.
int
SelectTests(const std::string& list, bool selected[Benchmark::kTestCount])
{
	std::fill(selected, selected + Benchmark::kTestCount, false);
	size_t start = 0;
	for (;;) {
		const size_t comma = list.find(',', start);
		const std::string name = Trimmed(list.substr(start, comma - start));
		if (strcasecmp(name.c_str(), "all") == 0) {
			for (const CheckBox& box : kCheckBoxes)
				selected[box.test] = true;
		} else {
			const int32 test = TestFromName(name);
			if (test < 0) {
				fprintf(stderr, "quickstep-cli run: unknown test '%s'\n%s", name.c_str(),
				        kRunUsage);
				return 2;
			}
			selected[test] = true;
		}
		if (comma == std::string::npos)
			return 0;
		start = comma + 1;
	}
}


// The main window's estimate: the seconds of every selected box, once per
// configuration.
float
EstimateSeconds(const bool selected[Benchmark::kTestCount], int32 configurations)
{
	float total = 0;
	for (const CheckBox& box : kCheckBoxes) {
		if (selected[box.test])
			total += box.seconds;
	}
	return total * configurations;
}


std::string
MinutesSeconds(float seconds)
{
	const int minutes = static_cast<int>(seconds / 60);
	char text[32];
	snprintf(text, sizeof(text), "%d:%2.2d", minutes, static_cast<int>(seconds - 60 * minutes));
	return text;
}


// Receives the worker's status lines and its completion on its own thread.
class RunLooper : public BLooper
{
public:
	// host, when there is one, runs the graphics test's window and is
	// stopped with the run.
	RunLooper(float estimate, GraphicsHost* host)
	    : BLooper("run progress"), fEstimate(estimate), fHost(host), fStart(system_time()),
	      fDone(false), fStatus(0)
	{
	}

	void MessageReceived(BMessage* message) override
	{
		if (message->what == kMsgBenchmarkStatus) {
			const char* text = nullptr;
			if (message->FindString("status", &text) == B_OK)
				PrintProgress(text);
		} else if (message->what == kMsgThreadCompleted) {
			std::lock_guard<std::mutex> guard(fLock);
			fDone = true;
			message->FindInt32("status", &fStatus);
			fEnd = system_time();
			fChanged.notify_all();
			if (fHost != nullptr)
				fHost->Stop();
		} else {
			BLooper::MessageReceived(message);
		}
	}

	// Waits for the worker's completion; answers the run's wall time in seconds.
	double WaitForCompletion()
	{
		std::unique_lock<std::mutex> guard(fLock);
		fChanged.wait(guard, [this] { return fDone; });
		return (fEnd - fStart) / 1000000.0;
	}

private:
	void PrintProgress(const char* text)
	{
		int current = 0;
		int total = 0;
		const char* counts = strstr(text, "(cpu ");
		if (counts == nullptr || sscanf(counts, "(cpu %d/%d)", &current, &total) != 2)
			current = total = 0;
		const float elapsed = (system_time() - fStart) / 1000000.0f;
		fprintf(stderr, "pass %d of %d  %s  %s of ~%s\n", total - current + 1, total, text,
		        MinutesSeconds(elapsed).c_str(), MinutesSeconds(fEstimate).c_str());
	}

	float fEstimate;
	GraphicsHost* fHost;
	bigtime_t fStart;
	bigtime_t fEnd = 0;
	std::mutex fLock;
	std::condition_variable fChanged;
	bool fDone;
	int32 fStatus;
};


// Ctrl-C and termination: SIGINT and SIGTERM are blocked in every thread (the
// mask is set before any thread starts and inherited) and taken here, on a
// thread of their own, where any call is safe.
class Interruption
{
public:
	explicit Interruption(Benchmark* benchmark)
	    : fBenchmark(benchmark), fStarted(false), fFinished(false)
	{
		sigemptyset(&fSignals);
		sigaddset(&fSignals, SIGINT);
		sigaddset(&fSignals, SIGTERM);
		pthread_sigmask(SIG_BLOCK, &fSignals, nullptr);
		fThread = std::thread([this] { Wait(); });
	}

	~Interruption()
	{
		fFinished = true;
		pthread_kill(fThread.native_handle(), SIGTERM);
		fThread.join();
	}

	// The worker has been started: from now on it can be stopped.
	void Started() { fStarted = true; }

private:
	void Wait()
	{
		int signal = 0;
		while (sigwait(&fSignals, &signal) != 0) {
		}
		if (fFinished)
			return;
		static const char kMessage[] = "\nquickstep-cli: interrupted; switching the processors "
		                               "back on and removing the disk tests' files\n";
		ssize_t written = write(STDERR_FILENO, kMessage, sizeof(kMessage) - 1);
		(void)written;

		// Stop whatever could switch a processor off or make a file again,
		// and remove what the disk tests made.
		if (fStarted)
			fBenchmark->Abandon();
		else
			Benchmark::RemoveDiskFiles();

		system_info info;
		if (get_system_info(&info) == B_OK) {
			for (int32 cpu = info.cpu_count - 1; cpu > 0; cpu--)
				_kset_cpu_state_(cpu, true);
		}

		// The worker is parked mid-test: end the process without running
		// anyone's destructors.
		_exit(kExitInterrupted);
	}

	Benchmark* fBenchmark;
	sigset_t fSignals;
	std::atomic<bool> fStarted;
	std::atomic<bool> fFinished;
	std::thread fThread;
};


void
PrintTable(Results& results, int32 configurations, const MetricSamples& samples)
{
	printf("%s\n\n", results.Description());
	printf("%-28s %-14s", "Test", "Units");
	const int width = 10 + (samples.IsEmpty() ? 0 : kSpreadColumns);
	for (int32 cpus = configurations; cpus >= 1; cpus--) {
		char heading[16];
		snprintf(heading, sizeof(heading), "%d CPU", static_cast<int>(cpus));
		printf(" %*s", width, heading);
	}
	printf("\n");
	for (Metric* metric = results.First(); metric != nullptr; metric = results.Next()) {
		printf("%-28s %-14s", metric->Description(), metric->Units());
		for (int32 i = 0; i < metric->Count(); i++)
			printf(" %10.1f%s", metric->Rate(i), SpreadText(samples, *metric, i).c_str());
		printf("\n");
	}
	printf("\nDevices\n");
	LinkList<RelatedDevices>& devices = results.Devices();
	for (RelatedDevices* device = devices.First(); device != nullptr; device = devices.Next()) {
		printf("  %-8s %s\n", RelatedDevices::ClassLabel(device->ClassId()), device->Description());
	}
}


void
PrintJson(Results& results, int32 configurations, double wallSeconds, const RunOptions& options,
          const Benchmark& benchmark, const MachineCheck& check)
{
	nlohmann::ordered_json record;
	record["program"] = ProgramJson(options.settings, check);
	record["machine"] = MachineJson(check);
	record["description"] = results.Description();
	record["cpus"] = results.NbrCpus();
	record["configurations"] = configurations;
	record["wall_seconds"] = wallSeconds;
	nlohmann::ordered_json devices = nlohmann::ordered_json::array();
	LinkList<RelatedDevices>& lines = results.Devices();
	for (RelatedDevices* device = lines.First(); device != nullptr; device = lines.Next())
		devices.push_back({{"class", device->ClassId()}, {"description", device->Description()}});
	record["devices"] = devices;
	nlohmann::ordered_json metrics = nlohmann::ordered_json::array();
	for (Metric* metric = results.First(); metric != nullptr; metric = results.Next()) {
		nlohmann::ordered_json times = nlohmann::ordered_json::array();
		nlohmann::ordered_json rates = nlohmann::ordered_json::array();
		for (int32 i = 0; i < metric->Count(); i++) {
			times.push_back(metric->TimeAt(i));
			rates.push_back(metric->Rate(i));
		}
		nlohmann::ordered_json entry = {{"index", metric->Index()}, {"name", metric->Description()},
		                                {"units", metric->Units()}, {"cycles", metric->NbrCycles()},
		                                {"times", times},           {"rates", rates}};
		nlohmann::ordered_json spread = SpreadJson(benchmark.Samples(), *metric, configurations);
		if (!spread.is_null())
			entry["spread"] = spread;
		if (options.settings.scaling)
			entry["scaling"] = ScalingJson(*metric, configurations);
		metrics.push_back(entry);
	}
	record["metrics"] = metrics;
	// Replaces bytes that are not UTF-8 (a device name) instead of failing.
	printf("%s\n",
	       record.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace).c_str());
}


// The options of repeated measurement. Each test runs N times per
// configuration and the record keeps the median; --max-cv adds runs while the
// spread is too large, up to --max-runs.
void
AddRepeatOptions(CLI::App* command, RunSettings& settings)
{
	static const int32 kMaxRepeat = 100;
	CLI::Option* repeat =
	    command
	        ->add_option("--repeat", settings.repeat,
	                     "Run each test N times per CPU configuration; record the median time")
	        ->check(CLI::Range(1, kMaxRepeat))
	        ->type_name("N");
	CLI::Option* maxCv =
	    command
	        ->add_option("--max-cv", settings.maxCv,
	                     "With --repeat: run again while a metric's coefficient of variation is "
	                     "above PCT per cent")
	        ->check(CLI::Range(0.0, 1000.0))
	        ->type_name("PCT");
	command
	    ->add_option("--max-runs", settings.maxRuns,
	                 "With --max-cv: at most M runs per test and configuration (default: 3 x N, "
	                 "at least 10)")
	    ->check(CLI::Range(1, kMaxRepeat))
	    ->type_name("M")
	    ->needs(maxCv);
	maxCv->needs(repeat);
	command->add_flag("--scaling", settings.scaling,
	                  "Also show each configuration's speed-up over one CPU");
}


// The bound on runs when none was given; answers 0 or the exit status after
// saying what is wrong.
int
CompleteRepeatSettings(RunSettings& settings)
{
	if (settings.repeat > 0 && settings.maxRuns == 0)
		settings.maxRuns = settings.maxCv > 0 ? std::max(3 * settings.repeat, 10) : settings.repeat;
	if (settings.maxRuns < settings.repeat) {
		fprintf(stderr, "quickstep-cli run: --max-runs %d is below --repeat %d\n%s",
		        static_cast<int>(settings.maxRuns), static_cast<int>(settings.repeat), kRunUsage);
		return 2;
	}
	return 0;
}

int
RunTests(RunOptions& options)
{
	bool selected[Benchmark::kTestCount];
	int status = SelectTests(options.tests, selected);
	if (status == 0)
		status = CompleteRepeatSettings(options.settings);
	if (status != 0)
		return status;
	// Before any thread starts: a display answering also readies Xlib for
	// threads.
	if (selected[Benchmark::kGraphics])
		GraphicsHandOver();
	if (selected[Benchmark::kGraphics] && !GraphicsTestAvailable()) {
		fprintf(stderr, "quickstep-cli run: the graphics test %s; it is left out\n",
		        GraphicsUnavailableReason());
		selected[Benchmark::kGraphics] = false;
		if (std::find(selected, selected + Benchmark::kTestCount, true) ==
		    selected + Benchmark::kTestCount)
			return 1;
	}

	// The worker's record has just taken the machine's profile: its CPU count
	// is the one the run will use, without reading the profile once more.
	Benchmark benchmark;
	const int32 configurations =
	    std::min<int32>(benchmark.RunResults().NbrCpus(), Benchmark::kMaxConfigurations);
	for (int32 test = 0; test < Benchmark::kTestCount; test++)
		benchmark.SetTest(test, selected[test]);
	const RunSettings& settings = options.settings;
	benchmark.SetRepeats(settings.repeat, settings.maxCv, settings.maxRuns);
	MachineCheck check;
	check.Start();
	const size_t warned = PrintMachineWarnings(check, 0);
	benchmark.SetMachineCheck(&check);

	// Before any other thread of this command starts: they inherit the mask.
	Interruption interruption(&benchmark);
	// The graphics window needs this thread as its interface thread.
	std::unique_ptr<GraphicsHost> host;
	if (selected[Benchmark::kGraphics])
		host.reset(new GraphicsHost);
	RunLooper* looper = new RunLooper(EstimateSeconds(selected, configurations), host.get());
	looper->Run();
	benchmark.Go("benchmark", new BMessenger(looper), 20);
	interruption.Started();
	if (host != nullptr)
		host->Run();
	const double wallSeconds = looper->WaitForCompletion();
	fprintf(stderr, "done in %s\n", MinutesSeconds(static_cast<float>(wallSeconds)).c_str());
	looper->Lock();
	looper->Quit();
	PrintMachineWarnings(check, warned);

	Results& results = benchmark.RunResults();
	if (options.json) {
		PrintJson(results, configurations, wallSeconds, options, benchmark, check);
	} else {
		PrintTable(results, configurations, benchmark.Samples());
		if (settings.scaling)
			PrintScaling(results, configurations);
	}

	if (!options.saveFile.empty()) {
		const ResultsFileStatus saved = ResultsFile::Write(options.saveFile.c_str(), results);
		if (saved != kResultsFileOK) {
			const char* why =
			    saved == kResultsFileCannotOpen ? strerror(errno) : ResultsFile::StatusText(saved);
			fprintf(stderr, "quickstep-cli run: %s: %s\n", options.saveFile.c_str(), why);
			return 1;
		}
		if (options.pack)
			return PackSavedRun(options.saveFile.c_str());
	}
	return 0;
}

} // namespace


void
AddRunCommand(CLI::App& app, CommandTable& commands)
{
	static RunOptions options;
	CLI::App* command =
	    app.add_subcommand("run", "Run benchmark tests, once per CPU configuration");
	command
	    ->add_option("tests", options.tests,
	                 "Comma-separated tests (check-box labels or display names), or all")
	    ->required();
	CLI::Option* save =
	    command->add_option("--save", options.saveFile, "Write the run to this results file");
	command
	    ->add_flag("--pack", options.pack,
	               "Pack the results file with the report of unknown devices for mailing "
	               "(FILE becomes FILE.zip)")
	    ->needs(save);
	command->add_flag("--json", options.json, "Print the run as JSON instead of a table");
	AddRepeatOptions(command, options.settings);
	commands.Add(command, [] { return RunTests(options); });
}
