#include "help/MetaStringItem.h"

#include <cstring>


MetaStringItem::MetaStringItem(const char* label, uint32 outlineLevel, bool expanded)
    : BStringItem(label, outlineLevel, expanded)
{
}


MetaStringItem::~MetaStringItem()
{
}


const char*
MetaStringItem::Page() const
{
	const char* page = nullptr;
	return fMeta.FindString("PAGE", &page) == B_OK ? page : nullptr;
}


bool
MetaStringItem::HasView(const char* key) const
{
	const char* view = nullptr;
	for (int32 i = 0; fMeta.FindString("VIEW", i, &view) == B_OK; i++) {
		if (strcmp(view, key) == 0)
			return true;
	}
	return false;
}
