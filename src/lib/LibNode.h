// Messages kept in file attributes: a BMessage flattened into one attribute of
// type B_MESSAGE_TYPE. The path forms work for a file that does not exist
// yet: its attributes live in the platform's per-user store under its path.
#ifndef LIB_NODE_H
#define LIB_NODE_H

#include <SupportDefs.h>

class BMessage;
class BNode;

class LibNode
{
public:
	// B_ENTRY_NOT_FOUND when there is no such attribute, B_BAD_TYPE when it
	// holds no message, the unflattening's status when its bytes are damaged;
	// the message is left unchanged on any failure.
	static status_t ReadMessageAttr(const char* path, const char* attribute, BMessage* message);
	static status_t ReadMessageAttr(BNode* node, const char* attribute, BMessage* message);
	// The node form lets the caller ask the node where the bytes went
	// (BNode::LastAttrInFallback).
	static status_t WriteMessageAttr(const char* path, const char* attribute,
	                                 const BMessage* message);
	static status_t WriteMessageAttr(BNode* node, const char* attribute, const BMessage* message);
};

#endif // LIB_NODE_H
