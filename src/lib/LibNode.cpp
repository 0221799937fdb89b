#include "lib/LibNode.h"

#include <string>

#include <Message.h>
#include <Node.h>
#include <TypeConstants.h>

status_t
LibNode::ReadMessageAttr(const char* path, const char* attribute, BMessage* message)
{
	BNode node(path);
	return ReadMessageAttr(&node, attribute, message);
}


status_t
LibNode::ReadMessageAttr(BNode* node, const char* attribute, BMessage* message)
{
	if (node == nullptr || message == nullptr)
		return B_BAD_VALUE;
	attr_info info;
	status_t status = node->GetAttrInfo(attribute, &info);
	if (status != B_OK)
		return status;
	if (info.type != B_MESSAGE_TYPE)
		return B_BAD_TYPE;
	std::string flat(info.size, '\0');
	ssize_t count = node->ReadAttr(attribute, B_MESSAGE_TYPE, 0, &flat[0], flat.size());
	if (count < 0)
		return count;
	return message->Unflatten(flat.data(), count);
}


status_t
LibNode::WriteMessageAttr(const char* path, const char* attribute, const BMessage* message)
{
	BNode node(path);
	return WriteMessageAttr(&node, attribute, message);
}


status_t
LibNode::WriteMessageAttr(BNode* node, const char* attribute, const BMessage* message)
{
	if (node == nullptr || message == nullptr)
		return B_BAD_VALUE;
	std::string flat;
	status_t status = message->Flatten(&flat);
	if (status != B_OK)
		return status;
	ssize_t written = node->WriteAttr(attribute, B_MESSAGE_TYPE, 0, flat.data(), flat.size());
	return written < 0 ? static_cast<status_t>(written) : B_OK;
}
