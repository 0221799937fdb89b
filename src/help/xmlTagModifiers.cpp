#include "help/xmlTagModifiers.h"


xmlTagModifiers::xmlTagModifiers() : BMessage()
{
}


xmlTagModifiers::xmlTagModifiers(const xmlTagModifiers& other) : BMessage(other)
{
}


xmlTagModifiers::~xmlTagModifiers()
{
}


xmlTagModifiers&
xmlTagModifiers::operator=(const xmlTagModifiers& other)
{
	if (&other != this)
		BMessage::operator=(other);
	return *this;
}


bool
xmlTagModifiers::operator==(const xmlTagModifiers&) const
{
	return false;
}


void
xmlTagModifiers::Clear()
{
	MakeEmpty();
}
