// Keys: B_KEY_DOWN for the focus view, window shortcuts, Enter for the
// default button.
#include "InterfaceSupport.h"

#include <mutex>

#include <AppDefs.h>
#include <Button.h>
#include <InterfaceDefs.h>
#include <View.h>
#include <Window.h>

namespace {

struct KeyPress {
	std::string bytes;
	int32 key;
	int32 modifiers;
	int32 rawChar;
};


// Takes the keyboard focus and records its keys.
class KeyView : public BView
{
public:
	explicit KeyView(BRect frame) : BView(frame, "keys", B_FOLLOW_NONE, B_WILL_DRAW | B_NAVIGABLE)
	{
	}

	void KeyDown(const char* bytes, int32 numBytes) override
	{
		KeyPress press = {std::string(bytes, static_cast<size_t>(numBytes)), 0, 0, 0};
		BMessage* message = Window()->CurrentMessage();
		if (message != nullptr) {
			message->FindInt32("key", &press.key);
			message->FindInt32("modifiers", &press.modifiers);
			message->FindInt32("raw_char", &press.rawChar);
		}
		std::lock_guard<std::mutex> guard(fMutex);
		fPresses.push_back(press);
	}

	std::vector<KeyPress> Presses()
	{
		std::lock_guard<std::mutex> guard(fMutex);
		return fPresses;
	}

private:
	std::mutex fMutex;
	std::vector<KeyPress> fPresses;
};

} // namespace


TEST(KeyTest, FocusViewGetsKeyDownsShortcutsAndEnterGoToTheWindow)
{
	REQUIRE_XDOTOOL();
	RecordingWindow* window =
	    new RecordingWindow(BRect(300, 300, 499, 399), "Keys", {'shrt', 'dflt'});
	KeyView* view = new KeyView(BRect(10, 10, 109, 59));
	window->AddChild(view);
	BButton* button = new BButton(BRect(120, 60, 189, 83), "ok", "OK", new BMessage('dflt'));
	window->AddChild(button);
	button->MakeDefault(true);
	window->AddShortcut('x', B_SHIFT_KEY, new BMessage('shrt'));
	window->Show();
	platform_ui_run_for(300000);
	ASSERT_TRUE(MovePointerTo(view->ConvertToScreen(BPoint(20, 20))));
	window->Lock();
	view->MakeFocus(true);
	window->Unlock();
	EXPECT_EQ(view, window->CurrentFocus());

	ASSERT_TRUE(Xdotool("key q Escape shift+F3 ctrl+x ctrl+shift+x Return"));
	ASSERT_TRUE(platform_ui_run_until(
	    [&] { return view->Presses().size() >= 4 && window->record.Count() >= 2; }, 5000000));
	platform_ui_run_for(200000);

	std::vector<KeyPress> presses = view->Presses();
	// Ctrl+X without Shift matches no shortcut and reaches the view too.
	ASSERT_EQ(4u, presses.size());
	EXPECT_EQ("q", presses[0].bytes);
	EXPECT_EQ('q', presses[0].rawChar);
	EXPECT_EQ(0, presses[0].modifiers & (B_SHIFT_KEY | B_COMMAND_KEY));
	EXPECT_EQ(1, presses[1].key);
	EXPECT_EQ(B_ESCAPE, presses[1].rawChar);
	EXPECT_EQ(B_F3_KEY, presses[2].key);
	EXPECT_EQ(B_FUNCTION_KEY, presses[2].rawChar);
	EXPECT_NE(0, presses[2].modifiers & B_SHIFT_KEY);
	EXPECT_EQ('x', presses[3].rawChar);
	EXPECT_NE(0, presses[3].modifiers & B_COMMAND_KEY);

	// Ctrl+Shift+X is the shortcut; Return presses the default button.
	std::vector<BMessage> whats = window->record.Messages();
	ASSERT_EQ(2u, whats.size());
	EXPECT_EQ(uint32('shrt'), whats[0].what);
	EXPECT_EQ(uint32('dflt'), whats[1].what);
	QuitWindow(window);
}
