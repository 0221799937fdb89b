// The type of a file's contents, as a MIME string ("text/plain"). On Linux it
// is worked out from the contents by libmagic every time it is asked: no
// type is stored with the file.
#ifndef NODE_INFO_H
#define NODE_INFO_H

#include "SupportDefs.h"

class BNode;

const int32 B_MIME_TYPE_LENGTH = 256;

class BNodeInfo
{
public:
	BNodeInfo();
	explicit BNodeInfo(BNode* node);
	virtual ~BNodeInfo();

	status_t SetTo(BNode* node);
	status_t InitCheck() const { return fStatus; }

	// type must have room for B_MIME_TYPE_LENGTH bytes. B_NO_INIT without a
	// node, B_ENTRY_NOT_FOUND or B_PERMISSION_DENIED when the file cannot be
	// read, B_ERROR when libmagic cannot tell.
	status_t GetType(char* type) const;

private:
	BNode* fNode;
	status_t fStatus;
};

#endif // NODE_INFO_H
