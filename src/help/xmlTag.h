// One element read from a tagged file: its name, attributes, own text and
// child elements, each child remembering where in this text it stood.
#ifndef XML_TAG_H
#define XML_TAG_H

#include <SupportDefs.h>

#include "help/xmlTagModifiers.h"
#include "lib/LibString.h"
#include "lib/LinkList.h"

class xmlTag
{
public:
	xmlTag();
	xmlTag(const xmlTag& other);
	virtual ~xmlTag();

	xmlTag& operator=(const xmlTag& other);
	// Tags are looked up in lists by name only.
	bool operator==(const xmlTag& other) const;

	virtual void PrintToStream();

	void SetName(const char* name);
	void AddContent(const char& character);
	// Appends a copy; the caller keeps its tag.
	void AddChild(const xmlTag& child);
	// Appends child itself, which this tag then owns.
	void AdoptChild(xmlTag* child);
	void SetParentLocation(long location);
	void StripTrailingContent();
	void Clear();

	const LibString& Name() const { return fName; }
	const LibString& Contents() const { return fContents; }
	// Length of the parent's text at the point where this element began.
	int32 ParentLocation() const { return fParentLocation; }
	// Iterating the children moves the list's own cursor.
	LinkList<xmlTag>& Children() { return fChildren; }
	xmlTagModifiers& Modifiers() { return fModifiers; }
	const xmlTagModifiers& Modifiers() const { return fModifiers; }

private:
	LibString fName;
	LibString fContents;
	int32 fParentLocation;
	LinkList<xmlTag> fChildren;
	xmlTagModifiers fModifiers;
};

#endif // XML_TAG_H
