// quickstep-cli run, as a user starts it: the built program in a child process.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

extern char** environ;

namespace {

struct Outcome {
	int exitStatus = -1;
	std::string out;
	std::string err;
};

std::string
ReadAll(const std::string& path)
{
	std::string text;
	FILE* file = fopen(path.c_str(), "r");
	if (file == nullptr)
		return text;
	char buffer[4096];
	size_t length;
	while ((length = fread(buffer, 1, sizeof(buffer), file)) > 0)
		text.append(buffer, length);
	fclose(file);
	return text;
}

class RunCommandTest : public testing::Test
{
protected:
	void SetUp() override
	{
		char pattern[] = "/tmp/quickstep_run_XXXXXX";
		ASSERT_NE(mkdtemp(pattern), nullptr);
		fTemp = pattern;
		mkdir((fTemp + "/tmp").c_str(), 0700);
	}

	void TearDown() override
	{
		std::string command = "rm -rf '" + fTemp + "'";
		EXPECT_EQ(std::system(command.c_str()), 0);
	}

	// Starts quickstep-cli with the arguments, its temporary directory in the
	// test's tree, standard output and error into files.
	pid_t Start(const std::vector<std::string>& arguments)
	{
		std::vector<std::string> all = {QS_BIN_DIR "/quickstep-cli"};
		all.insert(all.end(), arguments.begin(), arguments.end());
		std::vector<char*> argv;
		for (std::string& argument : all)
			argv.push_back(&argument[0]);
		argv.push_back(nullptr);

		std::vector<std::string> variables = {"TMPDIR=" + fTemp + "/tmp"};
		if (!fDisplay.empty())
			variables.push_back("DISPLAY=" + fDisplay);
		for (char** variable = environ; *variable != nullptr; variable++) {
			const std::string text = *variable;
			if (text.rfind("TMPDIR=", 0) != 0 && text.rfind("DISPLAY=", 0) != 0)
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
		outcome.out = ReadAll(fTemp + "/out");
		outcome.err = ReadAll(fTemp + "/err");
		return outcome;
	}

	Outcome Run(const std::vector<std::string>& arguments) { return Finish(Start(arguments)); }

	std::vector<std::string> TempEntries() const
	{
		std::vector<std::string> names;
		DIR* directory = opendir((fTemp + "/tmp").c_str());
		if (directory == nullptr)
			return names;
		while (dirent* entry = readdir(directory)) {
			std::string name = entry->d_name;
			if (name != "." && name != "..")
				names.push_back(name);
		}
		closedir(directory);
		return names;
	}

	std::string fTemp;
	// DISPLAY for the child; empty: none at all.
	std::string fDisplay;
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
	const std::string file = ReadAll(saved);
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
		     i < 200 && ReadAll(fTemp + "/err").find("Testing Graphics") == std::string::npos; i++)
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
		EXPECT_EQ(WEXITSTATUS(status), displayGoes ? 1 : 130) << ReadAll(fTemp + "/err");
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
	EXPECT_TRUE(TempEntries().empty());

	// The configurations the record reports are the passes the worker ran.
	const size_t at = outcome.out.find("\"configurations\": ");
	ASSERT_NE(at, std::string::npos) << outcome.out;
	const int configurations = std::atoi(outcome.out.c_str() + at + 18);
	int passes = 0;
	for (size_t line = outcome.err.find("Testing Ackerman"); line != std::string::npos;
	     line = outcome.err.find("Testing Ackerman", line + 1))
		passes++;
	EXPECT_GE(configurations, 1);
	EXPECT_EQ(passes, configurations) << outcome.err;

	// The results file: version, length, and the record with every metric.
	const std::string file = ReadAll(saved);
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
		EXPECT_TRUE(TempEntries().empty()) << TempEntries().size() << " files left";
	}
}

} // namespace
