// One line of a machine's hardware list: a PCI base class, or -1 for the
// screen, with the text shown for it.
#ifndef RELATED_DEVICES_H
#define RELATED_DEVICES_H

#include <SupportDefs.h>

#include "lib/LibString.h"

// The class id of the line that describes the screen.
const int32 kScreenClassId = -1;

class RelatedDevices
{
public:
	RelatedDevices();
	virtual ~RelatedDevices();

	// Lines are the same when their class ids are.
	bool operator==(const RelatedDevices& other) const;

	void Description(const int& classId, const char* text);

	int32 ClassId() const { return fClassId; }
	const char* Description() const { return fDescription; }
	// The label drawn in front of the line, "" for a class without one.
	static const char* ClassLabel(int32 classId);

private:
	int32 fClassId;
	LibString fDescription;
};

#endif // RELATED_DEVICES_H
