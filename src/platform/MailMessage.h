// A mail message of the mail kit: header fields, a text and files enclosed,
// sent at once. On Linux the message is an RFC 5322 message with the files as
// base64 MIME enclosures, handed to "sendmail -t -oi" where one is installed
// (along PATH, then /usr/sbin and /usr/lib); without sendmail the user's mail
// program is opened through "xdg-email" with the text and the files attached.
// Send fails when neither tool exists.
#ifndef MAIL_MESSAGE_H
#define MAIL_MESSAGE_H

#include <string>
#include <vector>

#include "SupportDefs.h"

// Field names as the mail kit spells them.
constexpr const char* B_MAIL_TO = "To: ";
constexpr const char* B_MAIL_CC = "Cc: ";
constexpr const char* B_MAIL_SUBJECT = "Subject: ";

class BMailMessage
{
public:
	BMailMessage();
	~BMailMessage();

	BMailMessage(const BMailMessage&) = delete;
	BMailMessage& operator=(const BMailMessage&) = delete;

	// fieldName as "To: " (the colon and blank may be left out). A second value
	// for a field is added after ", " unless clobber replaces it. B_BAD_VALUE
	// for a name that is no field name or a text with a line break in it.
	status_t AddHeaderField(const char* fieldName, const char* text, bool clobber = false);
	// The message's text: length bytes of text (fewer at a NUL); clobber
	// replaces what was added before, otherwise the text is appended.
	status_t AddContent(const char* text, int32 length, bool clobber = false);
	// Encloses the file as it is now (a regular file of at most
	// kMaxEnclosureSize bytes); clobber drops the files enclosed before.
	status_t AddEnclosure(const char* path, bool clobber = false);

	// Hands the message over. sendNow is the only way here: the message goes
	// at once. B_ENTRY_NOT_FOUND when neither sendmail nor xdg-email exists,
	// B_NO_INIT without a "To: " field, B_ERROR when the tool failed,
	// B_TIMED_OUT when sendmail had not finished after kSendTimeout.
	status_t Send(bool sendNow = false, bool removeWhenDone = false);

	// The message as sendmail receives it.
	std::string Text() const;

	static const int64 kMaxEnclosureSize = 16 * 1024 * 1024;
	static const bigtime_t kSendTimeout = 30000000;

private:
	struct Field {
		std::string name;
		std::string value;
	};
	struct Enclosure {
		std::string path;
		std::string name;
		std::string type;
		std::string data;
	};

	const Field* FindField(const char* name) const;
	status_t SendThroughSendmail(const std::string& tool) const;
	status_t SendThroughXdgEmail(const std::string& tool) const;

	std::vector<Field> fFields;
	std::string fContent;
	std::vector<Enclosure> fEnclosures;
};

#endif // MAIL_MESSAGE_H
