#include "help/xmlTag.h"

#include <cstdio>


xmlTag::xmlTag() : fParentLocation(0)
{
}


xmlTag::xmlTag(const xmlTag& other)
    : fName(other.fName), fContents(other.fContents), fParentLocation(other.fParentLocation),
      fChildren(other.fChildren), fModifiers(other.fModifiers)
{
}


xmlTag::~xmlTag()
{
}


xmlTag&
xmlTag::operator=(const xmlTag& other)
{
	if (&other != this) {
		fName = other.fName;
		fContents = other.fContents;
		fParentLocation = other.fParentLocation;
		fChildren = other.fChildren;
		fModifiers = other.fModifiers;
	}
	return *this;
}


bool
xmlTag::operator==(const xmlTag& other) const
{
	return fName == other.fName;
}


void
xmlTag::PrintToStream()
{
	fprintf(stderr, "xmlTag: <%s>\n", fName.String());
	fprintf(stderr, "\tcontents <%s>\n", fContents.String());
	fprintf(stderr, "\tParent Local : %ld\n", static_cast<long>(fParentLocation));
	fModifiers.PrintToStream();
	for (xmlTag* child = fChildren.First(); child != nullptr; child = fChildren.Next())
		child->PrintToStream();
}


void
xmlTag::SetName(const char* name)
{
	fName = name;
}


void
xmlTag::AddContent(const char& character)
{
	fContents += character;
}


void
xmlTag::AddChild(const xmlTag& child)
{
	xmlTag* copy = new (std::nothrow) xmlTag(child);
	if (copy != nullptr && !fChildren.Insert(copy))
		delete copy;
}


void
xmlTag::AdoptChild(xmlTag* child)
{
	if (child != nullptr && !fChildren.Insert(child))
		delete child;
}


void
xmlTag::SetParentLocation(long location)
{
	fParentLocation = static_cast<int32>(location);
}


void
xmlTag::StripTrailingContent()
{
	fContents.StripTrailingSpaces();
}


void
xmlTag::Clear()
{
	fName = "";
	fContents = "";
	fParentLocation = 0;
	fChildren.Clear();
	fModifiers.Clear();
}
