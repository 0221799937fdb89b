// The attributes of one tagged element: one string field per attribute, in
// the order they were written.
#ifndef XML_TAG_MODIFIERS_H
#define XML_TAG_MODIFIERS_H

#include <Message.h>

class xmlTagModifiers : public BMessage
{
public:
	xmlTagModifiers();
	xmlTagModifiers(const xmlTagModifiers& other);
	virtual ~xmlTagModifiers();

	xmlTagModifiers& operator=(const xmlTagModifiers& other);
	// Two attribute sets never compare equal, on purpose: a list of tags is
	// searched by name, never by attributes.
	bool operator==(const xmlTagModifiers& other) const;

	void Clear();
};

#endif // XML_TAG_MODIFIERS_H
