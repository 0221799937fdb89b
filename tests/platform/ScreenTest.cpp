#include <cstdlib>
#include <string>

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <PlatformTest.h>
#include <Screen.h>

namespace {

class ScreenTest : public testing::Test
{
protected:
	void SetUp() override
	{
		const char* display = getenv("DISPLAY");
		fHadDisplay = display != nullptr;
		if (fHadDisplay)
			fDisplay = display;
	}
	void TearDown() override
	{
		platform_set_screen(nullptr, B_NO_COLOR_SPACE);
		if (fHadDisplay)
			setenv("DISPLAY", fDisplay.c_str(), 1);
		else
			unsetenv("DISPLAY");
	}

	bool fHadDisplay = false;
	std::string fDisplay;
};

TEST_F(ScreenTest, WithoutDisplayTheFrameIsEmpty)
{
	unsetenv("DISPLAY");
	BScreen screen(B_MAIN_SCREEN_ID);
	EXPECT_FALSE(screen.IsValid());
	EXPECT_EQ(BRect(0, 0, -1, -1), screen.Frame());
	EXPECT_EQ(B_NO_COLOR_SPACE, screen.ColorSpace());

	setenv("DISPLAY", ":59999", 1); // nobody listens there
	BScreen unreachable;
	EXPECT_FALSE(unreachable.IsValid());
	EXPECT_EQ(BRect(0, 0, -1, -1), unreachable.Frame());
}

TEST_F(ScreenTest, SubstituteScreenIsAnsweredUntilCleared)
{
	unsetenv("DISPLAY");
	BRect frame(0, 0, 1023, 767);
	platform_set_screen(&frame, B_CMAP8);
	BScreen screen;
	EXPECT_TRUE(screen.IsValid());
	EXPECT_EQ(frame, screen.Frame());
	EXPECT_EQ(B_CMAP8, screen.ColorSpace());
	// Only the main screen exists.
	EXPECT_FALSE(BScreen(screen_id{1}).IsValid());

	platform_set_screen(nullptr, B_NO_COLOR_SPACE);
	EXPECT_EQ(B_NO_COLOR_SPACE, BScreen().ColorSpace());
}

// Starts a virtual X server of the given depth and answers its display name;
// empty when Xvfb is not installed or does not come up.
class VirtualServer
{
public:
	explicit VirtualServer(int depth)
	{
		if (access("/usr/bin/Xvfb", X_OK) != 0)
			return;
		for (int number = 70 + depth; number < 400; number += 37) {
			std::string lock = "/tmp/.X" + std::to_string(number) + "-lock";
			if (access(lock.c_str(), F_OK) == 0)
				continue;
			std::string name = ":" + std::to_string(number);
			std::string geometry = "640x480x" + std::to_string(depth);
			fPid = fork();
			if (fPid == 0) {
				freopen("/dev/null", "w", stderr);
				execl("/usr/bin/Xvfb", "Xvfb", name.c_str(), "-screen", "0", geometry.c_str(),
				      "-nolisten", "tcp", static_cast<char*>(nullptr));
				_exit(127);
			}
			std::string socket = "/tmp/.X11-unix/X" + std::to_string(number);
			for (int wait = 0; wait < 100; wait++) {
				if (access(socket.c_str(), F_OK) == 0) {
					fName = name;
					return;
				}
				usleep(50000);
			}
			Stop();
			return;
		}
	}
	~VirtualServer() { Stop(); }

	const std::string& Name() const { return fName; }

private:
	void Stop()
	{
		if (fPid > 0) {
			kill(fPid, SIGTERM);
			waitpid(fPid, nullptr, 0);
			fPid = -1;
		}
	}

	pid_t fPid = -1;
	std::string fName;
};

TEST_F(ScreenTest, DepthOfARealDisplayGivesTheColorSpace)
{
	struct {
		int depth;
		color_space space;
	} cases[] = {{8, B_CMAP8}, {16, B_RGB16}, {24, B_RGB32}};
	for (const auto& c : cases) {
		VirtualServer server(c.depth);
		if (server.Name().empty())
			GTEST_SKIP() << "no Xvfb";
		setenv("DISPLAY", server.Name().c_str(), 1);
		BScreen screen;
		EXPECT_TRUE(screen.IsValid());
		EXPECT_EQ(BRect(0, 0, 639, 479), screen.Frame());
		EXPECT_EQ(c.space, screen.ColorSpace()) << c.depth;
	}
}

} // namespace
