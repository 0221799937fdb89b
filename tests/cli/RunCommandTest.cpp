// quickstep-cli run, as a user starts it: the built program in a child process.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include "CommandOutput.h"
#include "platform/TempDirectory.h"

extern char** environ;

namespace {

struct Outcome {
	int exitStatus = -1;
	std::string out;
	std::string err;
};

// The number after key in text, from position from on; NaN without the key.
double
NumberAfter(const std::string& text, const std::string& key, size_t from = 0)
{
	const size_t at = text.find(key, from);
	return at == std::string::npos ? std::nan("") : strtod(text.c_str() + at + key.size(), nullptr);
}

class RunCommandTest : public testing::Test
{
protected:
	void SetUp() override
	{
		ASSERT_TRUE(fDirectory.Valid());
		fTemp = fDirectory.Path();
		ASSERT_EQ(mkdir((fTemp + "/tmp").c_str(), 0700), 0);
	}

	// Starts quickstep-cli with the arguments, its temporary directory in the
	// test's tree, standard output and error into files.
	pid_t Start(const std::vector<std::string>& arguments)
	{
		std::vector<std::string> all = {fProgram};
		all.insert(all.end(), arguments.begin(), arguments.end());
		std::vector<char*> argv;
		for (std::string& argument : all)
			argv.push_back(&argument[0]);
		argv.push_back(nullptr);

		std::vector<std::string> variables = {"TMPDIR=" + fTemp + "/tmp"};
		if (!fDisplay.empty())
			variables.push_back("DISPLAY=" + fDisplay);
		if (!fPath.empty())
			variables.push_back("PATH=" + fPath);
		for (char** variable = environ; *variable != nullptr; variable++) {
			const std::string text = *variable;
			const std::string name = text.substr(0, text.find('=') + 1);
			if (name != "TMPDIR=" && name != "DISPLAY=" && (fPath.empty() || name != "PATH="))
				variables.push_back(text);
		}
		std::vector<char*> envp;
		for (std::string& variable : variables)
			envp.push_back(&variable[0]);
		envp.push_back(nullptr);

		posix_spawn_file_actions_t actions;
		posix_spawn_file_actions_init(&actions);
		posix_spawn_file_actions_addopen(&actions, 1, (fTemp + "/out").c_str(),
		                                 O_WRONLY | O_CREAT | O_TRUNC, 0600);
		posix_spawn_file_actions_addopen(&actions, 2, (fTemp + "/err").c_str(),
		                                 O_WRONLY | O_CREAT | O_TRUNC, 0600);
		pid_t child = -1;
		EXPECT_EQ(posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), envp.data()), 0);
		posix_spawn_file_actions_destroy(&actions);
		return child;
	}

	Outcome Finish(pid_t child)
	{
		Outcome outcome;
		int status = 0;
		if (waitpid(child, &status, 0) == child && WIFEXITED(status))
			outcome.exitStatus = WEXITSTATUS(status);
		outcome.out = FileText(fTemp + "/out");
		outcome.err = FileText(fTemp + "/err");
		return outcome;
	}

	Outcome Run(const std::vector<std::string>& arguments) { return Finish(Start(arguments)); }

	std::string fProgram = QS_BIN_DIR "/quickstep-cli";

	// What the run left in its temporary directory, one name a line.
	std::string TempLeft() const { return CommandOutput("ls -A '" + fTemp + "/tmp'"); }

	TempDirectory fDirectory;
	std::string fTemp;
	// DISPLAY for the child; empty: none at all.
	std::string fDisplay;
	// PATH for the child; empty: the test's own.
	std::string fPath;
};


// An X server of the test's own, so that the test can take it away.
class PrivateDisplay
{
public:
	PrivateDisplay() : fServer(-1)
	{
		if (std::system("command -v Xvfb >/dev/null 2>&1") != 0)
			return;
		int pipeEnds[2];
		if (pipe(pipeEnds) != 0)
			return;
		const std::string fd = std::to_string(pipeEnds[1]);
		std::vector<std::string> all = {"Xvfb", "-displayfd",  fd,          "-screen",
		                                "0",    "1024x768x24", "-nolisten", "tcp"};
		std::vector<char*> argv;
		for (std::string& argument : all)
			argv.push_back(&argument[0]);
		argv.push_back(nullptr);
		posix_spawn_file_actions_t actions;
		posix_spawn_file_actions_init(&actions);
		posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
		posix_spawn_file_actions_addclose(&actions, pipeEnds[0]);
		if (posix_spawnp(&fServer, "Xvfb", &actions, nullptr, argv.data(), environ) != 0)
			fServer = -1;
		posix_spawn_file_actions_destroy(&actions);
		close(pipeEnds[1]);
		// The server writes its number once it takes connections.
		char number[16] = {};
		FILE* reader = fdopen(pipeEnds[0], "r");
		if (reader != nullptr && fgets(number, sizeof(number), reader) != nullptr &&
		    number[0] >= '0' && number[0] <= '9')
			fName = std::string(":") + std::to_string(atoi(number));
		if (reader != nullptr)
			fclose(reader);
	}

	~PrivateDisplay() { Stop(); }

	// ":N", or empty when no server could be started.
	const std::string& Name() const { return fName; }

	void Stop()
	{
		if (fServer <= 0)
			return;
		kill(fServer, SIGKILL);
		waitpid(fServer, nullptr, 0);
		fServer = -1;
	}

private:
	pid_t fServer;
	std::string fName;
};


TEST_F(RunCommandTest, RefusesUnknownTestsAndLeavesGraphicsOutWithoutADisplay)
{
	Outcome unknown = Run({"run", "strings,Bogus"});
	EXPECT_EQ(unknown.exitStatus, 2);
	EXPECT_NE(unknown.err.find("unknown test 'Bogus'"), std::string::npos) << unknown.err;
	EXPECT_NE(unknown.err.find("usage: quickstep-cli run"), std::string::npos);
	EXPECT_TRUE(unknown.out.empty());

	// No display: one line says why, the other tests named still run, and
	// the status says whether anything ran.
	Outcome alone = Run({"run", "GRAPHICS"});
	EXPECT_EQ(alone.exitStatus, 1);
	EXPECT_NE(alone.err.find("graphics test needs an X display"), std::string::npos) << alone.err;
	EXPECT_EQ(std::count(alone.err.begin(), alone.err.end(), '\n'), 1) << alone.err;
	EXPECT_TRUE(alone.out.empty());

	Outcome mixed = Run({"run", "graphics,ackerman", "--json"});
	EXPECT_EQ(mixed.exitStatus, 0) << mixed.err;
	EXPECT_NE(mixed.err.find("graphics test needs an X display"), std::string::npos);
	EXPECT_NE(mixed.out.find("\"index\": 400"), std::string::npos) << mixed.out;
	EXPECT_EQ(mixed.out.find("Graphics"), std::string::npos);
}


// quickstep-cli loads no window library: a run with the graphics test hands
// itself over to the program with windows, and where that is missing says so
// and runs the rest.
TEST_F(RunCommandTest, GraphicsRunWithoutTheProgramWithWindowsSaysSoAndRunsTheRest)
{
	const std::string companion = QS_BIN_DIR "/../libexec/quickstep/quickstep-cli-graphics";
	if (access(companion.c_str(), X_OK) != 0)
		GTEST_SKIP() << "a build without windows";
	const std::string list = CommandOutput("ldd " QS_BIN_DIR "/quickstep-cli");
	EXPECT_NE(list.find("libX11"), std::string::npos) << list;
	EXPECT_EQ(list.find("libfltk"), std::string::npos) << list;
	EXPECT_EQ(list.find("libXft"), std::string::npos) << list;

	const std::string lone = fTemp + "/lone";
	const std::string copy =
	    "mkdir '" + lone + "' && cp " QS_BIN_DIR "/quickstep-cli '" + lone + "'";
	ASSERT_EQ(std::system(copy.c_str()), 0);
	fProgram = lone + "/quickstep-cli";
	fDisplay = ":97";
	Outcome outcome = Run({"run", "graphics,ackerman", "--json"});
	EXPECT_EQ(outcome.exitStatus, 0) << outcome.err;
	EXPECT_NE(outcome.err.find("cannot start " + lone +
	                           "/../libexec/quickstep/quickstep-cli-graphics: No such file"),
	          std::string::npos)
	    << outcome.err;
	EXPECT_NE(outcome.err.find("graphics test needs quickstep-cli-graphics, which could not be "
	                           "started; it is left out"),
	          std::string::npos)
	    << outcome.err;
	EXPECT_NE(outcome.out.find("\"index\": 400"), std::string::npos) << outcome.out;
	EXPECT_EQ(outcome.out.find("Graphics"), std::string::npos);
}


TEST_F(RunCommandTest, GraphicsOnADisplayRecordsItsThirteenMetrics)
{
	PrivateDisplay display;
	if (display.Name().empty())
		GTEST_SKIP() << "Xvfb is not installed";
	fDisplay = display.Name();
	const std::string saved = fTemp + "/run.results";
	Outcome outcome = Run({"run", "graphics", "--json", "--save", saved});
	ASSERT_EQ(outcome.exitStatus, 0) << outcome.err;
	EXPECT_NE(outcome.err.find("Testing Graphics (cpu 1/"), std::string::npos) << outcome.err;
	const std::string file = FileText(saved);
	for (int index :
	     {1010, 1011, 1020, 1021, 1022, 1030, 1031, 1032, 1040, 1041, 1042, 1050, 1051}) {
		const std::string key = "\"index\": " + std::to_string(index) + ",";
		EXPECT_NE(outcome.out.find(key), std::string::npos) << index;
		EXPECT_NE(file.find(std::to_string(index) + ":"), std::string::npos) << index;
	}
	EXPECT_NE(outcome.out.find("\"units\": \"KiloChars/sec\""), std::string::npos);
}


TEST_F(RunCommandTest, GraphicsRunEndsWhenItsDisplayGoesOrItIsInterrupted)
{
	for (bool displayGoes : {true, false}) {
		PrivateDisplay display;
		if (display.Name().empty())
			GTEST_SKIP() << "Xvfb is not installed";
		fDisplay = display.Name();
		pid_t child = Start({"run", "graphics"});
		// Until the window draws.
		for (int i = 0;
		     i < 200 && FileText(fTemp + "/err").find("Testing Graphics") == std::string::npos; i++)
			std::this_thread::sleep_for(std::chrono::milliseconds(20));
		std::this_thread::sleep_for(std::chrono::milliseconds(300));
		if (displayGoes)
			display.Stop();
		else
			kill(child, SIGTERM);
		// Not waiting for ever: a child still there after 20 s has hung.
		int status = 0;
		pid_t ended = 0;
		for (int i = 0; i < 400 && ended == 0; i++) {
			ended = waitpid(child, &status, WNOHANG);
			if (ended == 0)
				std::this_thread::sleep_for(std::chrono::milliseconds(50));
		}
		if (ended == 0) {
			kill(child, SIGKILL);
			waitpid(child, &status, 0);
			ADD_FAILURE() << (displayGoes ? "display gone" : "interrupted") << ": still running";
			continue;
		}
		ASSERT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
		EXPECT_EQ(WEXITSTATUS(status), displayGoes ? 1 : 130) << FileText(fTemp + "/err");
	}
}


TEST_F(RunCommandTest, NamesAnyCaseByLabelOrDisplayNameAndPrintsJson)
{
	const std::string saved = fTemp + "/run.results";
	Outcome outcome = Run({"run", " ackerman , Disk LifeCycle", "--json", "--save", saved});
	ASSERT_EQ(outcome.exitStatus, 0) << outcome.err;
	EXPECT_NE(outcome.out.find("\"index\": 400"), std::string::npos) << outcome.out;
	EXPECT_NE(outcome.out.find("\"name\": \"Disk File Creation\""), std::string::npos);
	EXPECT_NE(outcome.out.find("\"units\": \"files/second\""), std::string::npos);
	EXPECT_EQ(outcome.out.find("Savage"), std::string::npos);
	EXPECT_NE(outcome.out.find("\"devices\""), std::string::npos);
	// The build that made the record, so that records of two builds differ.
	EXPECT_NE(outcome.out.find("\"program\": {\n    \"name\": \"Quickstep\",\n    \"version\": "
	                           "\"1.2.2\",\n    \"commit\": \""),
	          std::string::npos);
	EXPECT_NE(outcome.err.find("Testing Ackerman (cpu 1/"), std::string::npos) << outcome.err;
	EXPECT_NE(outcome.err.find("Testing Disk LifeCycle"), std::string::npos);
	EXPECT_EQ(TempLeft(), "");

	// The configurations the record reports are the passes the worker ran.
	const double configurations = NumberAfter(outcome.out, "\"configurations\": ");
	int passes = 0;
	for (size_t line = outcome.err.find("Testing Ackerman"); line != std::string::npos;
	     line = outcome.err.find("Testing Ackerman", line + 1))
		passes++;
	EXPECT_GE(configurations, 1) << outcome.out;
	EXPECT_EQ(passes, configurations) << outcome.err;

	// The results file: version, length, and the record with every metric.
	const std::string file = FileText(saved);
	EXPECT_EQ(file.rfind("1.0\n", 0), 0u) << file;
	EXPECT_NE(file.find("\t400:6000/"), std::string::npos) << file;
	EXPECT_NE(file.find(";900:1000/"), std::string::npos) << file;
	EXPECT_NE(file.find(";901:1000/"), std::string::npos) << file;
}


TEST_F(RunCommandTest, VersionNamesTheReleaseCommitAndCompiler)
{
	Outcome outcome = Run({"--version"});
	EXPECT_EQ(outcome.exitStatus, 0);
	EXPECT_EQ(outcome.out.rfind("quickstep-cli 1.2.2 (commit ", 0), 0u) << outcome.out;
	EXPECT_EQ(outcome.out.find("commit unknown"), std::string::npos) << "built from a checkout";
	EXPECT_NE(outcome.out.find(", GNU "), std::string::npos) << outcome.out;
}


TEST_F(RunCommandTest, SaveToAnUnwritablePlaceFails)
{
	Outcome outcome = Run({"run", "memory", "--save", fTemp + "/missing/run.results"});
	EXPECT_EQ(outcome.exitStatus, 1);
	EXPECT_NE(outcome.err.find("missing/run.results: "), std::string::npos) << outcome.err;
	EXPECT_NE(outcome.out.find("Memory"), std::string::npos) << "the table comes first";
}


TEST_F(RunCommandTest, InterruptionCleansUpAndExits130)
{
	for (int signal : {SIGINT, SIGTERM}) {
		pid_t child = Start({"run", "lifecycle,input/output,sieve"});
		// Somewhere inside the disk tests or the sieve.
		std::this_thread::sleep_for(std::chrono::milliseconds(300));
		kill(child, signal);
		Outcome outcome = Finish(child);
		EXPECT_EQ(outcome.exitStatus, 130) << outcome.err;
		EXPECT_NE(outcome.err.find("interrupted"), std::string::npos);
		EXPECT_EQ(TempLeft(), "");
	}
}

// Packing and mailing from the command line: the same archive as the
// window's, and the message a fake sendmail along PATH receives.
typedef RunCommandTest PackCommandTest;


TEST_F(PackCommandTest, PackedRunIsTheWindowsArchive)
{
	// The fixed names are the real /tmp ones here: never disturb a user's.
	if (access("/tmp/results", F_OK) == 0 || access("/tmp/Quickstep.tar", F_OK) == 0)
		GTEST_SKIP() << "/tmp/results or /tmp/Quickstep.tar exists";
	if (std::system("command -v zip unzip > /dev/null") != 0)
		GTEST_SKIP() << "zip and unzip are needed";

	Outcome refused = Run({"run", "ackerman", "--pack"});
	EXPECT_EQ(refused.exitStatus, 2) << "--pack needs --save";

	const std::string saved = fTemp + "/run.results";
	Outcome outcome = Run({"run", "ackerman", "--save", saved, "--pack"});
	ASSERT_EQ(outcome.exitStatus, 0) << outcome.err;
	EXPECT_NE(outcome.err.find("quickstep-cli mail " + saved + ".zip"), std::string::npos)
	    << outcome.err;
	EXPECT_NE(access(saved.c_str(), F_OK), 0);
	EXPECT_NE(access("/tmp/results", F_OK), 0);
	EXPECT_NE(access("/tmp/Quickstep.tar", F_OK), 0);
	const std::string listing = CommandOutput("unzip -p '" + saved + ".zip' | tar -tf -");
	EXPECT_NE(listing.find("results/run.results\n"), std::string::npos) << listing;
	const std::string file =
	    CommandOutput("unzip -p '" + saved + ".zip' | tar -xOf - results/run.results");
	EXPECT_NE(file.find("\t400:6000/"), std::string::npos) << file;
}


TEST_F(PackCommandTest, MailSendsThePackedRunOrSaysWhyNot)
{
	const std::string packed = fTemp + "/run.results.zip";
	FILE* file = fopen(packed.c_str(), "w");
	ASSERT_NE(file, nullptr);
	fputs("PK archive", file);
	fclose(file);

	Outcome missing = Run({"mail", fTemp + "/none.zip"});
	EXPECT_EQ(missing.exitStatus, 1);
	EXPECT_NE(missing.err.find("none.zip: No such file"), std::string::npos) << missing.err;
	Outcome tooLong = Run({"mail", packed, "--config", std::string(201, 'x')});
	EXPECT_EQ(tooLong.exitStatus, 2);

	ASSERT_EQ(mkdir((fTemp + "/bin").c_str(), 0755), 0);
	const std::string sendmail = fTemp + "/bin/sendmail";
	file = fopen(sendmail.c_str(), "w");
	ASSERT_NE(file, nullptr);
	fprintf(file, "#!/bin/sh\ncat > '%s/message'\n", fTemp.c_str());
	fclose(file);
	ASSERT_EQ(chmod(sendmail.c_str(), 0755), 0);
	const char* path = getenv("PATH");
	fPath = fTemp + "/bin:" + (path != nullptr ? path : "");
	Outcome sent = Run({"mail", packed, "--config", "Dual PII 400 BX"});
	ASSERT_EQ(sent.exitStatus, 0) << sent.err;
	const std::string message = FileText(fTemp + "/message");
	EXPECT_NE(message.find("\nTo: quickstep-results@"), std::string::npos) << message;
	EXPECT_NE(message.find("\n\nResults for : Dual PII 400 BX.\n"), std::string::npos);
	EXPECT_NE(message.find("filename=\"run.results.zip\""), std::string::npos);

	// With neither tool nothing is sent; a machine with a real sendmail in
	// its system directories would send for real, so it is left out there.
	if (access("/usr/sbin/sendmail", F_OK) == 0 || access("/usr/lib/sendmail", F_OK) == 0)
		return;
	std::remove((fTemp + "/message").c_str());
	std::remove(sendmail.c_str());
	fPath = fTemp + "/bin";
	Outcome unsent = Run({"mail", packed});
	EXPECT_EQ(unsent.exitStatus, 1);
	EXPECT_NE(unsent.err.find("neither sendmail nor xdg-email"), std::string::npos) << unsent.err;
	EXPECT_NE(access((fTemp + "/message").c_str(), F_OK), 0);
}


// Repeats: every sample, the spread and the settings in the JSON, the median
// in the record and the file; without the options, none of it.
TEST_F(RunCommandTest, RepeatKeepsEverySampleAndRecordsTheMedian)
{
	const std::string saved = fTemp + "/run.results";
	Outcome repeated =
	    Run({"run", "ackerman", "--json", "--repeat", "3", "--scaling", "--save", saved});
	ASSERT_EQ(repeated.exitStatus, 0) << repeated.err;
	const std::string& out = repeated.out;
	for (const char* field :
	     {"\"kernel\": \"", "\"repeat\": 3", "\"max_runs\": 3", "\"record\": \"median time\"",
	      "\"machine\": {", "\"warnings\": [", "\"spread\": [",
	      "\"cv_percent\": ", "\"median\": ", "\"min\": ", "\"max\": ", "\"scaling\": ["})
		EXPECT_NE(out.find(field), std::string::npos) << field << " in\n" << out;

	// Each configuration's recorded time is the median of its three samples.
	const size_t spread = out.find("\"spread\": [");
	const size_t seconds = out.find("\"seconds\": [", spread);
	ASSERT_NE(seconds, std::string::npos);
	std::vector<double> samples;
	const char* at = out.c_str() + seconds + strlen("\"seconds\": [");
	for (int i = 0; i < 3; i++) {
		char* end = nullptr;
		samples.push_back(strtod(at, &end));
		at = end + strspn(end, ", \n");
	}
	std::sort(samples.begin(), samples.end());
	ASSERT_LT(out.find("\"times\": ["), spread);
	EXPECT_FLOAT_EQ(static_cast<float>(NumberAfter(out, "\"times\": [")),
	                static_cast<float>(samples[1]));
	// The file keeps its form: one time per configuration.
	const std::string file = FileText(saved);
	const size_t record = file.find("400:6000/");
	ASSERT_NE(record, std::string::npos) << file;
	const std::string metric = file.substr(record, file.find(';', record) - record);
	EXPECT_EQ(std::count(metric.begin(), metric.end(), ',') + 1,
	          NumberAfter(out, "\"configurations\": "))
	    << metric;

	Outcome plain = Run({"run", "ackerman", "--json"});
	ASSERT_EQ(plain.exitStatus, 0) << plain.err;
	EXPECT_EQ(plain.out.find("\"spread\""), std::string::npos);
	EXPECT_EQ(plain.out.find("\"scaling\""), std::string::npos);
	EXPECT_NE(plain.out.find("\"repeat\": 1"), std::string::npos);
	EXPECT_NE(plain.out.find("\"record\": \"single time\""), std::string::npos);

	// The table shows the spread beside each value, and the speed-ups.
	Outcome table = Run({"run", "ackerman", "--repeat", "2", "--scaling"});
	ASSERT_EQ(table.exitStatus, 0) << table.err;
	EXPECT_NE(table.out.find(" %\n"), std::string::npos) << table.out;
	EXPECT_NE(table.out.find("± "), std::string::npos) << table.out;
	EXPECT_NE(table.out.find("Scaling: speed-up over 1 CPU"), std::string::npos);
	EXPECT_NE(table.out.find("1.00x"), std::string::npos) << table.out;
}


TEST_F(RunCommandTest, RepeatOptionsAreChecked)
{
	const std::vector<std::vector<std::string>> wrong = {
	    {"run", "memory", "--repeat", "0"},
	    {"run", "memory", "--repeat", "many"},
	    {"run", "memory", "--max-cv", "3"},
	    {"run", "memory", "--repeat", "5", "--max-cv", "3", "--max-runs", "4"},
	    {"run", "memory", "--repeat", "3", "--max-cv", "-1"},
	};
	for (const auto& arguments : wrong) {
		Outcome outcome = Run(arguments);
		EXPECT_EQ(outcome.exitStatus, 2) << arguments.back() << ": " << outcome.err;
		EXPECT_TRUE(outcome.out.empty());
	}
}

} // namespace
