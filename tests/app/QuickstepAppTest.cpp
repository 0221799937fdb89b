#include "app/QuickstepApp.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include <Box.h>
#include <File.h>
#include <FindDirectory.h>
#include <PlatformTest.h>
#include <Resources.h>
#include <Screen.h>
#include <StringView.h>

#include "app/AppTestSupport.h"
#include "app/QuickstepWin.h"
#include "help/HelpFile.h"
#include "lib/LibWindow.h"
#include "platform/TempDirectory.h"
#include "results/ResultsWin.h"

using apptest::RunUntil;

namespace {

class QuickstepAppTest : public testing::Test
{
protected:
	void SetUp() override
	{
		QS_REQUIRE_DISPLAY();
		fApp = apptest::SharedApp();
	}


	// Calls ArgvReceived with these arguments; answers what it printed.
	std::string Arguments(std::vector<const char*> arguments)
	{
		std::vector<char*> argv;
		for (const char* argument : arguments)
			argv.push_back(const_cast<char*>(argument));
		testing::internal::CaptureStderr();
		fApp->ArgvReceived(static_cast<int32>(argv.size()), argv.data());
		return testing::internal::GetCapturedStderr();
	}

	std::string Line(BWindow* window, const char* name)
	{
		window->Lock();
		BStringView* view = dynamic_cast<BStringView*>(window->FindView(name));
		std::string text = view != nullptr ? view->Text() : "<no view>";
		window->Unlock();
		return text;
	}

	QuickstepApp* fApp = nullptr;
};

} // namespace

TEST_F(QuickstepAppTest, ScmpAloneAllowsSavingComparisonsThroughToTheResults)
{
	// Started without it, the main window shows and saves nothing.
	fApp->ReadyToRun();
	QuickstepWin* main = fApp->MainWindow();
	ASSERT_NE(main, nullptr);
	EXPECT_TRUE(RunUntil([&] { return !main->IsHidden(); }));
	EXPECT_FALSE(main->AllowCompareSave());
	apptest::CloseMainWindow(main);

	EXPECT_EQ(Arguments({"quickstep", "-scmp", "extra"}), "");
	EXPECT_FALSE(fApp->AllowCompareSave());
	EXPECT_EQ(Arguments({"quickstep", "-SCMP"}), "");
	EXPECT_FALSE(fApp->AllowCompareSave());
	EXPECT_EQ(Arguments({"quickstep", "-scmp"}), "Allowed to save comparisons\n");
	EXPECT_TRUE(fApp->AllowCompareSave());

	fApp->ReadyToRun();
	main = fApp->MainWindow();
	ASSERT_NE(main, nullptr);
	EXPECT_TRUE(main->AllowCompareSave());
	// The end of a run hands the flag to the results window.
	main->PostMessage(kMsgThreadCompleted);
	ResultsWin* results = main->ResultsWindow();
	ASSERT_TRUE(RunUntil([&] { return !results->IsHidden(); }));
	EXPECT_TRUE(results->CompareFlag());
	apptest::CloseMainWindow(main);
}

TEST_F(QuickstepAppTest, HelpWithoutAFileIsReportedAndIgnored)
{
	EXPECT_EQ(Arguments({"quickstep", "-help"}), "Help file requred\n");
	EXPECT_EQ(Arguments({"quickstep", "-help", "a", "b"}), "Help file requred\n");
	// Other arguments are ignored silently.
	EXPECT_EQ(Arguments({"quickstep", "-unknown"}), "");
}

TEST_F(QuickstepAppTest, AboutWindowIsReusedUntilItCloses)
{
	fApp->PostMessage(kMsgShowAbout);
	ASSERT_TRUE(RunUntil([&] { return fApp->AboutWindow() != nullptr; }));
	LibWindow* about = fApp->AboutWindow();
	ASSERT_TRUE(RunUntil([&] { return !about->IsHidden(); }));
	EXPECT_EQ(Line(about, "about_version"), "Version 1.2.2");
	EXPECT_EQ(Line(about, "about_built"), "Built 15 Feb 1999");
	apptest::Screenshot("about-window");

	fApp->PostMessage(kMsgShowAbout);
	apptest::RunFor(0.3);
	EXPECT_EQ(fApp->AboutWindow(), about);
	int32 windows = fApp->CountWindows();

	// Its "OK" closes it, and the application forgets it.
	about->PostMessage(B_QUIT_REQUESTED);
	ASSERT_TRUE(RunUntil([&] { return fApp->AboutWindow() == nullptr; }));
	EXPECT_TRUE(RunUntil([&] { return fApp->CountWindows() == windows - 1; }));

	fApp->PostMessage(kMsgShowAbout);
	ASSERT_TRUE(RunUntil([&] { return fApp->AboutWindow() != nullptr; }));
	EXPECT_TRUE(RunUntil([&] { return !fApp->AboutWindow()->IsHidden(); }));
	fApp->AboutWindow()->PostMessage(B_QUIT_REQUESTED);
	RunUntil([&] { return fApp->AboutWindow() == nullptr; });
}

TEST_F(QuickstepAppTest, SystemWindowShowsTheProfileAndIsRebuiltAfterClosing)
{
	system_info info;
	get_system_info(&info);
	info.cpu_count = 2;
	info.cpu_type = static_cast<cpu_type>(0x1063);
	info.cpu_revision = 5;
	info.cpu_clock_speed = 400500001;
	info.platform_type = static_cast<platform_type>(2);
	platform_set_system_info(&info);
	BRect screen(0, 0, 1023, 767);
	platform_set_screen(&screen, B_CMAP8);

	fApp->PostMessage(kMsgShowSystem);
	ASSERT_TRUE(RunUntil([&] { return fApp->SystemWindow() != nullptr; }));
	LibWindow* system = fApp->SystemWindow();
	ASSERT_TRUE(RunUntil([&] { return !system->IsHidden(); }));
	system->Lock();
	EXPECT_STREQ(system->Title(), "About BeOS System");
	const std::pair<const char*, const char*> boxes[] = {
	    {"machine", "Machine"}, {"monitor", "Monitor"}, {"cpu", "CPU"}};
	for (const auto& [name, label] : boxes) {
		BBox* box = dynamic_cast<BBox*>(system->FindView(name));
		ASSERT_NE(box, nullptr) << name;
		EXPECT_STREQ(box->Label(), label);
	}
	system->Unlock();

	// The host name line stays empty whenever the machine answers its name.
	EXPECT_EQ(Line(system, "hostname"), "");
	EXPECT_EQ(Line(system, "platform"), "Platform : AT Clone");
	EXPECT_EQ(Line(system, "kernel_built").rfind("OS Built : ", 0), 0u);
	EXPECT_EQ(Line(system, "kernel_version").rfind("OS Version : ", 0), 0u);
	EXPECT_EQ(Line(system, "color_bits"), "Color : 8 bit color");
	EXPECT_EQ(Line(system, "screen_size"), "Size : 1024 x 768");
	EXPECT_EQ(Line(system, "nbr_cpu"), "Quantity : 2");
	EXPECT_EQ(Line(system, "cpu_type"), "Type : Intel Pentium II");
	EXPECT_EQ(Line(system, "cpu_revision"), "Revision : 5");
	EXPECT_EQ(Line(system, "cpu_clock_speed"), "Clock Speed : 401 MHz");
	apptest::Screenshot("system-window");

	// Asking again brings the same window forward; its profile stays.
	info.cpu_count = 4;
	platform_set_system_info(&info);
	fApp->PostMessage(kMsgShowSystem);
	apptest::RunFor(0.3);
	EXPECT_EQ(fApp->SystemWindow(), system);
	EXPECT_EQ(Line(system, "nbr_cpu"), "Quantity : 2");

	// Closed, it is forgotten; the next one reads the machine anew.
	system->PostMessage(B_QUIT_REQUESTED);
	ASSERT_TRUE(RunUntil([&] { return fApp->SystemWindow() == nullptr; }));
	fApp->PostMessage(kMsgShowSystem);
	ASSERT_TRUE(RunUntil([&] { return fApp->SystemWindow() != nullptr; }));
	EXPECT_EQ(Line(fApp->SystemWindow(), "nbr_cpu"), "Quantity : 4");
	fApp->SystemWindow()->PostMessage(B_QUIT_REQUESTED);
	RunUntil([&] { return fApp->SystemWindow() == nullptr; });

	platform_set_system_info(nullptr);
	platform_set_screen(nullptr, B_NO_COLOR_SPACE);
}

TEST_F(QuickstepAppTest, HelpMenuOpensTheManualInTheBrowser)
{
	TempDirectory temp;
	ASSERT_TRUE(temp.Valid());
	apptest::FakeBrowser browser(temp.Path());
	std::filesystem::create_directories(temp.Path("doc/Quickstep"));
	std::ofstream(temp.Path("doc/Quickstep/QuickstepSUM"));
	platform_set_directory(B_COMMON_DOCUMENTATION_DIRECTORY, temp.Path("doc").c_str());

	fApp->PostMessage(kMsgHelpDocument);
	RunUntil([&] { return std::filesystem::exists(browser.Log()); }, 5);
	platform_set_directory(B_COMMON_DOCUMENTATION_DIRECTORY, nullptr);
	EXPECT_EQ(browser.Opened(0), "file://" + temp.Path("doc/Quickstep/QuickstepSUM") + "\n");
}

namespace {

struct Outcome {
	int status = -1;
	std::string err;
};

// Runs a program with arguments and an environment change; collects its
// standard error and exit status.
Outcome
RunProgram(const std::string& program, const std::string& arguments, const std::string& env)
{
	Outcome outcome;
	outcome.err =
	    CommandOutput(env + " " + program + " " + arguments + " 2>&1 >/dev/null", &outcome.status);
	return outcome;
}

// Starts the program from a shell script, waits for its main window to
// show, then runs body; the script's exit status is the outcome.
Outcome
RunScript(const TempDirectory& temp, const std::string& body, const char* timeout)
{
	const std::string script = temp.Path("script.sh");
	std::ofstream(script) << std::string(QS_BIN_DIR) << "/quickstep & pid=$!\n"
	                      << "for i in $(seq 1 200); do\n"
	                         "  xdotool search --onlyvisible --name '^Quickstep$' >/dev/null "
	                         "2>&1 && break\n"
	                         "  sleep 0.05\n"
	                         "done\n"
	                      << body;
	return RunProgram("sh", script, std::string("timeout ") + timeout);
}

} // namespace

TEST(QuickstepProgramTest, WithoutADisplayItSaysSoAndEndsWithStatusOne)
{
	std::string program = std::string(QS_BIN_DIR) + "/quickstep";
	for (const char* env : {"env -u DISPLAY", "env DISPLAY=:4711"}) {
		Outcome outcome = RunProgram(program, "", env);
		EXPECT_EQ(outcome.status, 1) << env;
		// One line, naming the program to use instead.
		ASSERT_FALSE(outcome.err.empty()) << env;
		EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1) << outcome.err;
		EXPECT_NE(outcome.err.find("quickstep-cli"), std::string::npos) << outcome.err;
	}
}

TEST(QuickstepProgramTest, HelpOptionStoresTheFileAndEndsWithoutAWindow)
{
	QS_REQUIRE_DISPLAY();
	TempDirectory temp;
	ASSERT_TRUE(temp.Valid());
	temp.UseAsDataHome();
	// A copy of the program, so the build's own executable keeps no help.
	std::string program = temp.Path("quickstep");
	std::filesystem::copy_file(std::string(QS_BIN_DIR) + "/quickstep", program);
	std::filesystem::permissions(program, std::filesystem::perms::owner_all);
	std::string help = temp.Path("QStp.help");
	FILE* out = fopen(help.c_str(), "w");
	ASSERT_NE(out, nullptr);
	fputs("<CONTENTS><Start PAGE=\"start\">Start</Start></CONTENTS>", out);
	fclose(out);

	std::string env = "env XDG_DATA_HOME=" + temp.Path("data") + " timeout 20";
	Outcome outcome = RunProgram(program, "-help " + help, env);
	EXPECT_EQ(outcome.status, 0);
	EXPECT_EQ(outcome.err, help + " added to application\n");

	BFile file(program.c_str(), B_READ_ONLY);
	BResources resources(&file);
	size_t length = 0;
	const void* data =
	    resources.LoadResource(HelpFile::kResourceType, HelpFile::kResourceId, &length);
	ASSERT_NE(data, nullptr);
	EXPECT_EQ(std::string(static_cast<const char*>(data), length),
	          "<CONTENTS><Start PAGE=\"start\">Start</Start></CONTENTS>");

	// Failures end with status 1 and say why; storing needs no display.
	outcome = RunProgram(program, "-help " + temp.Path("missing.help"), env);
	EXPECT_EQ(outcome.status, 1);
	EXPECT_EQ(outcome.err, temp.Path("missing.help") + " does not exist\n");
	outcome = RunProgram(program, "-help " + help, "env -u DISPLAY " + env);
	EXPECT_EQ(outcome.status, 0) << outcome.err;
	EXPECT_EQ(outcome.err, help + " added to application\n");

	// What cannot be a help file is not stored, and the stored one stays.
	const std::string folder = temp.Path("folder.help");
	std::filesystem::create_directory(folder);
	const std::string big = temp.Path("big.help");
	std::filesystem::copy_file(help, big);
	std::filesystem::resize_file(big, HelpFile::kMaxStoredBytes + 1);
	const std::pair<std::string, std::string> refused[] = {
	    {folder, folder + ": Is a directory\n"},
	    {"/dev/zero", "/dev/zero: not a regular file\n"},
	    {big, big + ": larger than a help file may be (4194304 bytes at most)\n"},
	};
	for (const auto& [path, message] : refused) {
		outcome = RunProgram(program, "-help " + path, "env -u DISPLAY " + env);
		EXPECT_EQ(outcome.status, 1) << path;
		EXPECT_EQ(outcome.err, path + " failed to add to application\n" + message);
	}
	BFile again(program.c_str(), B_READ_ONLY);
	BResources kept(&again);
	data = kept.LoadResource(HelpFile::kResourceType, HelpFile::kResourceId, &length);
	ASSERT_NE(data, nullptr);
	EXPECT_EQ(length, 54u);
}

TEST(QuickstepProgramTest, UsageAndVersionAnswerWithoutAWindow)
{
	std::string program = std::string(QS_BIN_DIR) + "/quickstep";
	for (const char* option : {"--help", "-h", "--version"}) {
		int status = -1;
		const std::string out =
		    CommandOutput("env -u DISPLAY " + program + " " + option + " 2>&1", &status);
		EXPECT_EQ(status, 0) << option << ": " << out;
		const char* expected = strcmp(option, "--version") == 0 ? "1.2.2" : "usage: quickstep";
		EXPECT_NE(out.find(expected), std::string::npos) << option << ": " << out;
	}
}

TEST(QuickstepProgramTest, QuitShortcutEndsTheProgram)
{
	QS_REQUIRE_DISPLAY();
	TempDirectory temp;
	ASSERT_TRUE(temp.Valid());
	// Ctrl+Q with the pointer inside the window.
	Outcome outcome =
	    RunScript(temp, "xdotool mousemove 150 150 sleep 0.2 key ctrl+q\nwait $pid\n", "20");
	EXPECT_EQ(outcome.status, 0) << outcome.err;
}


// As a desktop meets the program, with and without a window manager: every
// window carries the program's WM_CLASS and icon, and Escape closes the About
// window.
TEST_F(QuickstepAppTest, WindowsCarryTheProgramsClassAndEscapeClosesTheAboutWindow)
{
	for (bool managed : {false, true}) {
		SCOPED_TRACE(managed ? "openbox" : "no window manager");
		std::unique_ptr<apptest::WindowManager> manager;
		if (managed) {
			manager = std::make_unique<apptest::WindowManager>();
			if (!manager->Running())
				continue;
		}
		fApp->PostMessage(kMsgShowAbout);
		ASSERT_TRUE(RunUntil([&] { return fApp->AboutWindow() != nullptr; }));
		LibWindow* about = fApp->AboutWindow();
		ASSERT_TRUE(RunUntil([&] { return !about->IsHidden(); }));
		apptest::RunFor(0.5);

		std::string id = apptest::WindowId(about->Title());
		ASSERT_FALSE(id.empty());
		const std::string text =
		    CommandOutput("xprop -id " + id + " WM_CLASS _NET_WM_ICON | head -3");
		EXPECT_NE(text.find("WM_CLASS(STRING) = \"quickstep\", \"Quickstep\""), std::string::npos)
		    << text;
		EXPECT_NE(text.find("Icon (16 x 16)"), std::string::npos) << text;

		// The window gets the keyboard from openbox when asked to activate
		// it, else from a click; then Escape.
		std::string keys = "xdotool windowactivate --sync " + id + " sleep 0.2 key Escape";
		if (!managed) {
			BRect frame = about->Frame();
			keys = "xdotool mousemove " + std::to_string(static_cast<int>(frame.left + 5)) + " " +
			       std::to_string(static_cast<int>(frame.bottom - 3)) +
			       " click 1 sleep 0.2 key Escape";
		}
		ASSERT_TRUE(apptest::RunCommand(keys));
		EXPECT_TRUE(RunUntil([&] { return fApp->AboutWindow() == nullptr; }, 5));
		if (fApp->AboutWindow() != nullptr) {
			fApp->AboutWindow()->PostMessage(B_QUIT_REQUESTED);
			RunUntil([&] { return fApp->AboutWindow() == nullptr; });
		}
	}
}


TEST(QuickstepProgramTest, QuitDuringTheGraphicsTestEndsTheProgramAndItsWindows)
{
	QS_REQUIRE_DISPLAY();
	TempDirectory temp;
	ASSERT_TRUE(temp.Valid());
	// All, Test, the alerts answered with Return (the pointer on each, as
	// focus follows it), then Ctrl+Q once the graphics window draws.
	const char* body =
	    "xdotool mousemove 150 150 sleep 0.2 key ctrl+a sleep 0.2 key ctrl+t\n"
	    "drawing=no\n"
	    "for i in $(seq 1 50); do\n"
	    "  if xdotool search --onlyvisible --name 'Flushed|Unflushed' >/dev/null 2>&1; then\n"
	    "    drawing=yes; break\n"
	    "  fi\n"
	    "  for w in $(xdotool search --onlyvisible --name '.*' 2>/dev/null); do\n"
	    "    eval $(xdotool getwindowgeometry --shell $w)\n"
	    "    [ \"$WIDTH\" -lt 700 ] && [ \"$(xdotool getwindowname $w)\" != Quickstep ] &&\n"
	    "      xdotool mousemove $((X+WIDTH/2)) $((Y+HEIGHT/2)) sleep 0.1 key Return\n"
	    "  done\n"
	    "  sleep 0.3\n"
	    "done\n"
	    "[ $drawing = yes ] || { kill $pid; echo 'no graphics window'; exit 3; }\n"
	    "sleep 0.3\n"
	    "xdotool mousemove 150 100 sleep 0.2 key ctrl+q\n"
	    "wait $pid || exit 4\n"
	    "n=$(xdotool search --onlyvisible --name 'Flushed|Unflushed|Test Graphics' | wc -l)\n"
	    "[ $n -eq 0 ] || { echo \"$n windows left\"; exit 5; }\n";
	Outcome outcome = RunScript(temp, body, "40");
	EXPECT_EQ(outcome.status, 0) << outcome.err;
}
