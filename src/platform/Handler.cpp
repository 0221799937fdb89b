#include "Handler.h"

#include "Looper.h"

namespace {

std::atomic<int64> sNextToken(1);

} // namespace


BHandler::BHandler(const char* name)
    : fName(name != nullptr ? name : ""), fLooper(nullptr), fNextHandler(nullptr),
      fToken(sNextToken++)
{
}


BHandler::~BHandler()
{
	// A looper's own handler part needs no removal; any other handler still
	// attached leaves its looper so that nothing is dispatched to it.
	BLooper* looper = fLooper.load();
	if (looper != nullptr && looper != this)
		looper->RemoveHandler(this);
}


void
BHandler::MessageReceived(BMessage* message)
{
	if (fNextHandler != nullptr)
		fNextHandler->MessageReceived(message);
}


BLooper*
BHandler::Looper() const
{
	return fLooper.load();
}


void
BHandler::SetName(const char* name)
{
	fName = name != nullptr ? name : "";
}


const char*
BHandler::Name() const
{
	return fName.c_str();
}


void
BHandler::SetNextHandler(BHandler* handler)
{
	fNextHandler = handler;
}


BHandler*
BHandler::NextHandler() const
{
	return fNextHandler;
}
