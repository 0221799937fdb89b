// A control: a labelled view with a value that invokes its message when the
// user changes it. The message sent carries pointer "source" (the control),
// int32 "be:value" and int64 "when", and goes to the target, or to the
// window when none is set.
#ifndef CONTROL_H
#define CONTROL_H

#include <string>

#include "Invoker.h"
#include "View.h"

enum {
	B_CONTROL_OFF = 0,
	B_CONTROL_ON = 1,
};

class BControl : public BView, public BInvoker
{
public:
	BControl(BRect frame, const char* name, const char* label, BMessage* message,
	         uint32 resizingMode, uint32 flags);
	~BControl() override;

	void AttachedToWindow() override;
	virtual void SetLabel(const char* label);
	const char* Label() const;
	virtual void SetValue(int32 value);
	int32 Value() const { return fValue; }
	virtual void SetEnabled(bool enabled);
	bool IsEnabled() const { return fEnabled; }
	status_t Invoke(BMessage* message = nullptr) override;
	// Sizes the control to fit its label; width and height answered.
	virtual void GetPreferredSize(float* width, float* height);
	void ResizeToPreferred();

protected:
	BMessenger DefaultTarget() const override;
	// Brings the native widget in line with label, value and enabled state.
	virtual void UpdateNative();
	// The user changed the native widget: the default takes its value (for
	// controls with one) through SetValue and invokes.
	virtual void NativeChanged();
	// Sets up a native widget of a control (font, callback) and installs it.
	void InstallNative(Fl_Widget* widget);

private:
	static void NativeCallback(Fl_Widget* widget, void* data);

	std::string fLabel;
	int32 fValue;
	bool fEnabled;
};

#endif // CONTROL_H
