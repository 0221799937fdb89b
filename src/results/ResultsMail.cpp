#include "results/ResultsMail.h"

#include <cstring>
#include <string>

#include <MailMessage.h>

const char* const kSupportAddress = "quickstep-results@quickstep-linux.org";
const char* const kResultsSubject = "Quickstep results";


status_t
MailResults(const char* path, const char* config)
{
	std::string description = config != nullptr ? config : "";
	if (description.size() > static_cast<size_t>(kMaxConfigLength)) {
		// Cut before a character, not inside one.
		size_t length = kMaxConfigLength;
		while (length > 0 && (static_cast<unsigned char>(description[length]) & 0xC0) == 0x80)
			length--;
		description.resize(length);
	}
	std::string body = "Results for : " + description + ".";

	BMailMessage message;
	status_t status = message.AddContent(body.c_str(), static_cast<int32>(body.size()));
	if (status == B_OK)
		status = message.AddHeaderField(B_MAIL_TO, kSupportAddress);
	if (status == B_OK)
		status = message.AddHeaderField(B_MAIL_SUBJECT, kResultsSubject);
	if (status == B_OK)
		status = message.AddEnclosure(path);
	if (status != B_OK)
		return status;
	return message.Send(true);
}
