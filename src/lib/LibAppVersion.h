// The version record of an application's own executable: read as display text
// and written at start-up.
#ifndef LIB_APP_VERSION_H
#define LIB_APP_VERSION_H

#include "lib/LibString.h"

// "major.middle.minor" of the file at path (null: the running program) with
// the variety's suffix (" Dev", " Alpha", " Beta", " Gamma", " Gold"; nothing
// for a final release). Empty when the record cannot be read.
LibString LibGetAppVersion(const char* path = nullptr);

// Writes the running program's version record. shortInfo and longInfo may be
// null (an empty text); they are cut to the record's sizes. Errors are ignored.
void LibSetAppVersion(const unsigned long& major, const unsigned long& middle,
                      const unsigned long& minor, const char* shortInfo, const char* longInfo,
                      const unsigned long& variety, const unsigned long& internal);

#endif // LIB_APP_VERSION_H
