#include "results/RelatedDevices.h"

RelatedDevices::RelatedDevices() : fClassId(0)
{
}


RelatedDevices::~RelatedDevices()
{
}


bool
RelatedDevices::operator==(const RelatedDevices& other) const
{
	return fClassId == other.fClassId;
}


void
RelatedDevices::Description(const int& classId, const char* text)
{
	fClassId = classId;
	fDescription = text;
}


// Seven characters at most, trailing blanks included: they are drawn as such.
const char*
RelatedDevices::ClassLabel(int32 classId)
{
	switch (classId) {
		case kScreenClassId:
			return "Screen";
		case 0:
			return "Early";
		case 1:
			return "Storage";
		case 2:
			return "Network";
		case 3:
			return "Display";
		case 4:
			return "M Media";
		case 5:
			return "Memory";
		case 6:
			return "Bridge ";
		case 7:
			return "S. Comm";
		case 8:
			return "Periphl";
		case 9:
			return "Input";
		case 10:
			return "DockSta";
		case 11:
			return "Procesr";
		case 12:
			return "Serial ";
		case 255:
			return "Undefin";
		default:
			return "";
	}
}
