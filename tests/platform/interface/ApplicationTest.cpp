// The application's loop: start, quitting with its windows' consent.
#include "InterfaceSupport.h"

#include <atomic>
#include <thread>

#include <AppDefs.h>
#include <AppFileInfo.h>
#include <Messenger.h>
#include <OS.h>
#include <Path.h>
#include <Window.h>

namespace {

// Refuses to quit until told otherwise; counts how often it was asked (in a
// counter that outlives it).
class StubbornWindow : public BWindow
{
public:
	StubbornWindow(std::atomic<int32>& asked, std::atomic<bool>& agree)
	    : BWindow(BRect(20, 20, 119, 69), "Stubborn", B_TITLED_WINDOW, 0), fAsked(asked),
	      fAgree(agree)
	{
	}

	bool QuitRequested() override
	{
		fAsked++;
		return fAgree;
	}

private:
	std::atomic<int32>& fAsked;
	std::atomic<bool>& fAgree;
};

} // namespace


TEST(ApplicationTest, RunEndsOnlyWhenEveryWindowAgreesToQuit)
{
	REQUIRE_DISPLAY();
	TestApplication* application = TestApp();
	std::atomic<int32> asked(0);
	std::atomic<bool> agree(false);
	StubbornWindow* window = new StubbornWindow(asked, agree);
	window->Run();
	BMessenger windowMessenger(window);
	int32 windowsBefore = application->CountWindows();

	std::atomic<bool> running(true);
	std::thread other([&] {
		BMessenger messenger(application);
		EXPECT_EQ(B_OK, messenger.SendMessage('hell'));
		// Refused: the loop goes on and still takes messages.
		messenger.SendMessage(B_QUIT_REQUESTED);
		for (int i = 0; i < 500 && asked.load() == 0; i++)
			snooze(10000);
		messenger.SendMessage('agn1');
		for (int i = 0; i < 500 && application->Received().size() < 2; i++)
			snooze(10000);
		EXPECT_TRUE(running.load());
		agree = true;
		messenger.SendMessage(B_QUIT_REQUESTED);
	});
	thread_id thread = application->Run();
	running = false;
	other.join();

	EXPECT_GT(thread, 0);
	EXPECT_EQ(1, application->ReadyCount());
	EXPECT_EQ(2, asked.load()) << "asked once per request";
	std::vector<BMessage> received = application->Received();
	ASSERT_EQ(2u, received.size());
	EXPECT_EQ(static_cast<uint32>('hell'), received[0].what);
	EXPECT_EQ(static_cast<uint32>('agn1'), received[1].what);
	// The window that agreed has quit; the application is still there.
	EXPECT_FALSE(windowMessenger.IsValid());
	EXPECT_EQ(windowsBefore - 1, application->CountWindows());
	EXPECT_EQ(application, be_app);

	// Arguments came from the process's own command line.
	std::vector<std::string> arguments = application->Arguments();
	if (!arguments.empty()) {
		EXPECT_NE(std::string::npos, arguments[0].find("test_platform_interface"));
		EXPECT_GT(arguments.size(), 1u);
	}
}


TEST(ApplicationTest, AppInfoNamesTheExecutable)
{
	REQUIRE_DISPLAY();
	app_info info;
	ASSERT_EQ(B_OK, TestApp()->GetAppInfo(&info));
	BPath path;
	ASSERT_EQ(B_OK, get_app_path(&path));
	EXPECT_EQ(std::string(path.Path()), info.ref.path);
	EXPECT_STREQ("application/x-vnd.Quickstep-test", info.signature);
	EXPECT_EQ(B_BAD_VALUE, TestApp()->GetAppInfo(nullptr));
}
