// One row of the help window's contents: a label, and a message holding the
// row's "PAGE" string (at most one) and its "VIEW" strings (any number).
#ifndef META_STRING_ITEM_H
#define META_STRING_ITEM_H

#include <ListItem.h>
#include <Message.h>

class MetaStringItem : public BStringItem
{
public:
	MetaStringItem(const char* label, uint32 outlineLevel = 0, bool expanded = true);
	~MetaStringItem() override;

	BMessage* Meta() { return &fMeta; }
	// The row's page, or null.
	const char* Page() const;
	// Whether one of the row's "VIEW" strings is key.
	bool HasView(const char* key) const;

private:
	BMessage fMeta;
};

#endif // META_STRING_ITEM_H
