// Mailing a packed run to the vendor: the support mailbox, the subject and the
// message the results window's E-mail sends.
#ifndef RESULTS_MAIL_H
#define RESULTS_MAIL_H

#include <SupportDefs.h>

// Where users send their results (also named in the mailing notice).
extern const char* const kSupportAddress;
extern const char* const kResultsSubject;

// The user's description of the machine is cut to this many bytes in the
// message's text.
const int32 kMaxConfigLength = 200;

// Mails the file at path with the body "Results for : <config>.". The message
// goes only when every part of it could be added; B_OK when it was handed
// over, otherwise why not (B_ENTRY_NOT_FOUND: no mail tool, or no file).
status_t MailResults(const char* path, const char* config);

#endif // RESULTS_MAIL_H
