// The comparison store: the runs of other machines, kept as "results" record
// strings of one message in the attribute "kw:benchmark" of the desktop
// program's executable (or, where that file takes no attributes or does not
// exist, in the per-user store under its path). Both front ends share it.
#ifndef COMPARE_STORE_H
#define COMPARE_STORE_H

#include <SupportDefs.h>

#include "lib/LibString.h"

class BMessage;
class ResultList;

extern const char* kCompareStoreAttribute;
extern const char* kCompareTableName;

class CompareStore
{
public:
	explicit CompareStore(const char* executablePath);

	const char* Path() const { return fPath; }

	// Appends every stored run to list (isCurrent false), in stored order.
	// No store yet is an empty store (B_OK). A stored record without fields
	// adds nothing. On an error the list is left as it was.
	status_t Read(ResultList& list) const;
	// What Read does with the store's message once it has it: appends a run
	// for every "results" record that has fields.
	static void AddRecords(const BMessage& store, ResultList& list);
	// Replaces the store with every row of list except the current run. On an
	// error the store keeps what it held.
	status_t Write(ResultList& list);
	// Where the last Write went, and why the executable itself refused it.
	bool LastWriteInFallback() const { return fInFallback; }
	status_t LastRefusal() const { return fRefusal; }

	// Whether the rows whose build is known come from two different builds;
	// if so, one and other name two of them.
	static bool MixedPrograms(ResultList& list, LibString& one, LibString& other);

	// The tab-separated table of list at path: headings and units from the
	// first row, the first row's line, then every row's line (the first row's
	// thus twice, as the comparison window has always written it).
	// B_BAD_VALUE for an empty list; an open failure's status otherwise.
	static status_t ExportTable(ResultList& list, const char* path);

private:
	LibString fPath;
	bool fInFallback;
	status_t fRefusal;
};

#endif // COMPARE_STORE_H
