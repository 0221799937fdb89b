#include "results/QstepAlert.h"

#include <atomic>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <vector>

#include <Application.h>
#include <Box.h>
#include <Button.h>
#include <Invoker.h>
#include <Looper.h>
#include <TextControl.h>
#include <TextView.h>

#include "app/AppTestSupport.h"

using apptest::RunUntil;

namespace {

// Keeps what it is sent.
class Recorder : public BLooper
{
public:
	Recorder() : BLooper("recorder") {}

	void MessageReceived(BMessage* message) override
	{
		std::lock_guard<std::mutex> guard(fMutex);
		fWhats.push_back(message->what);
		const char* config = nullptr;
		if (message->FindString("config", &config) == B_OK)
			fConfig = config;
		int32 which = -1;
		if (message->FindInt32("which", &which) == B_OK)
			fWhich = which;
	}

	std::vector<uint32> Whats()
	{
		std::lock_guard<std::mutex> guard(fMutex);
		return fWhats;
	}

	std::mutex fMutex;
	std::vector<uint32> fWhats;
	std::string fConfig;
	std::atomic<int32> fWhich{-1};
};

class QstepAlertTest : public testing::Test
{
protected:
	void SetUp() override
	{
		QS_REQUIRE_DISPLAY();
		fApp = apptest::SharedApp();
		fTarget = new Recorder;
		fTarget->Run();
	}

	void TearDown() override
	{
		if (fTarget != nullptr) {
			fTarget->Lock();
			fTarget->Quit();
		}
	}

	// Shows the alert without waiting; the answer goes to the recorder.
	QstepAlert* Show()
	{
		QstepAlert* alert = new QstepAlert(fTarget);
		alert->Go(new BInvoker(new BMessage('answ'), fTarget));
		RunUntil([&] { return !alert->IsHidden(); }, 5);
		return alert;
	}

	void Answer(QstepAlert* alert, int32 which)
	{
		BMessage click(B_ALERT_BUTTON_MESSAGE);
		click.AddInt32("which", which);
		alert->PostMessage(&click);
		RunUntil([&] { return fTarget->fWhich == which; }, 5);
	}

	BApplication* fApp = nullptr;
	Recorder* fTarget = nullptr;
};

} // namespace

TEST_F(QstepAlertTest, AsksToSaveOrMailWithAConfigurationLine)
{
	QstepAlert* alert = Show();
	alert->Lock();
	EXPECT_STREQ(alert->Title(), "alert");
	ASSERT_EQ(alert->CountButtons(), 2);
	EXPECT_STREQ(alert->ButtonAt(0)->Label(), "Save");
	EXPECT_STREQ(alert->ButtonAt(1)->Label(), "E-mail");
	EXPECT_NE(std::string(alert->TextView()->Text())
	              .find("You may send the file yourself, or you can e-mail it now."),
	          std::string::npos);
	BTextControl* config = dynamic_cast<BTextControl*>(alert->FindView("config"));
	ASSERT_NE(config, nullptr);
	EXPECT_EQ(config->MaxBytes(), 32);
	BBox* box = dynamic_cast<BBox*>(config->Parent());
	ASSERT_NE(box, nullptr);
	EXPECT_STREQ(box->Label(), "Configuration");
	// The field lies between the text and the buttons.
	BRect field = config->ConvertToScreen(config->Bounds());
	BRect text = alert->TextView()->ConvertToScreen(alert->TextView()->Bounds());
	BRect button = alert->ButtonAt(0)->ConvertToScreen(alert->ButtonAt(0)->Bounds());
	EXPECT_GT(field.top, text.top);
	EXPECT_LT(field.bottom, button.top);
	EXPECT_LE(button.bottom, alert->Frame().bottom);
	alert->Unlock();

	ASSERT_TRUE(apptest::ClickView(config, BPoint(10, 8)));
	ASSERT_TRUE(apptest::RunCommand("xdotool type --delay 20 'Dual PII 400 BX'"));
	apptest::Screenshot("mail-notice");
	Answer(alert, 1);

	EXPECT_EQ(fTarget->fWhich, 1);
	ASSERT_TRUE(RunUntil([&] { return fTarget->Whats().size() == 2; }, 5));
	std::vector<uint32> whats = fTarget->Whats();
	// The mail request first, then the alert's own answer.
	EXPECT_EQ(whats[0], kMsgEmailResults);
	EXPECT_EQ(whats[1], static_cast<uint32>('answ'));
	EXPECT_EQ(fTarget->fConfig, "Dual PII 400 BX");
}

TEST_F(QstepAlertTest, SaveSendsNoMailRequest)
{
	QstepAlert* alert = Show();
	Answer(alert, 0);
	apptest::RunFor(0.3);
	std::vector<uint32> whats = fTarget->Whats();
	ASSERT_EQ(whats.size(), 1u);
	EXPECT_EQ(whats[0], static_cast<uint32>('answ'));
}
