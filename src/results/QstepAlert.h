// The notice shown after the results are saved: it asks the user to send the
// file to the vendor, with a line describing the machine, and can mail it at
// once.
#ifndef QSTEP_ALERT_H
#define QSTEP_ALERT_H

#include <Alert.h>

class BLooper;
class BTextControl;

// Posted to the target when the user chooses "E-mail": string "config".
const uint32 kMsgEmailResults = 5000;

class QstepAlert : public BAlert
{
public:
	explicit QstepAlert(BLooper* target);
	~QstepAlert() override;

	// The user's description of the machine.
	const char* Configuration() const;
	void MessageReceived(BMessage* message) override;

	static constexpr int32 kConfigLength = 32;
	static const float kExtraHeight;

private:
	BTextControl* fConfig;
	BLooper* fTarget;
};

#endif // QSTEP_ALERT_H
