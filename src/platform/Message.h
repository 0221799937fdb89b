// A message: a what-code plus named, typed fields, each holding one or more
// values. Messages travel between loopers and are stored flattened in files
// and attributes.
//
// Rules kept from the BeOS kit:
// - A name holds values of one type only; adding or finding under another type
//   answers B_BAD_TYPE. A missing name answers B_NAME_NOT_FOUND, an index past
//   the last value B_BAD_INDEX, a null name or out-pointer B_BAD_VALUE.
// - Fields keep the order in which their names were first added; values keep
//   the order in which they were added.
// - Pointers handed out by FindString, FindData and GetInfo point into the
//   message and stay valid until that value or its field is replaced or
//   removed, or the message is emptied, assigned or destroyed. Adding values
//   leaves earlier pointers valid.
// - Not thread-safe: one thread uses a message at a time. Copies share no
//   mutable state, so a copy may go to another thread.
//
// Flattened form, all integers little-endian:
//   header   char[4] "QMF1"  uint32 totalSize (bytes, header included)
//            uint32 what     uint32 fieldCount
//   field    uint32 type     uint32 flags (bit 0: every value has the same size)
//            uint32 nameLength (bytes, no NUL, at least 1)  uint32 valueCount (at least 1)
//            name bytes, then per value: uint32 size and size bytes
// Strings and refs (a path) are stored with their terminating NUL, numbers in
// their natural width, bools as one byte 0 or 1, nested messages flattened.
#ifndef MESSAGE_H
#define MESSAGE_H

#include <sys/types.h>

#include <memory>
#include <string>
#include <vector>

#include "StorageDefs.h"
#include "SupportDefs.h"
#include "TypeConstants.h"

class BMessage
{
public:
	BMessage();
	explicit BMessage(uint32 what);
	BMessage(const BMessage& other);
	virtual ~BMessage();

	BMessage& operator=(const BMessage& other);

	// Finds the index-th field (in field order) whose type is typeRequested,
	// or of any type for B_ANY_TYPE. B_BAD_TYPE when no field has that type,
	// B_BAD_INDEX when index is past the last such field.
	status_t GetInfo(type_code typeRequested, int32 index, char** nameFound, type_code* typeFound,
	                 int32* countFound = nullptr) const;
	status_t GetInfo(type_code typeRequested, int32 index, const char** nameFound,
	                 type_code* typeFound, int32* countFound = nullptr) const;
	status_t GetInfo(const char* name, type_code* typeFound, int32* countFound = nullptr) const;
	status_t GetInfo(const char* name, type_code* typeFound, bool* fixedSize) const;
	int32 CountNames(type_code type = B_ANY_TYPE) const;
	bool IsEmpty() const;
	status_t MakeEmpty();
	// Moves a field to a new name; B_NAME_IN_USE when that name exists.
	status_t Rename(const char* oldName, const char* newName);

	// Writes a readable dump to standard error, nested messages indented.
	void PrintToStream() const;

	ssize_t FlattenedSize() const;
	// B_BUFFER_OVERFLOW when size is less than FlattenedSize().
	status_t Flatten(char* buffer, ssize_t size) const;
	status_t Flatten(std::string* out) const;
	// Replaces this message by the flattened one. B_NOT_A_MESSAGE when the
	// bytes do not start like a flattened message, B_BAD_DATA when they are
	// truncated or inconsistent; on failure the message is left unchanged.
	// The sized form never reads past buffer + size; the other trusts the
	// total size written in the header.
	status_t Unflatten(const char* buffer, ssize_t size);
	status_t Unflatten(const char* buffer);

	// Adds raw bytes. The first value decides whether the field is of fixed
	// size; later values of another size answer B_BAD_VALUE then. Values of
	// the known types must be well-formed (a string ends with its NUL, an
	// int32 has four bytes, a message is flattened) or B_BAD_VALUE answers.
	// count is a capacity hint and may be ignored.
	status_t AddData(const char* name, type_code type, const void* data, ssize_t numBytes,
	                 bool isFixedSize = true, int32 count = 1);
	status_t AddString(const char* name, const char* string);
	status_t AddInt8(const char* name, int8 value);
	status_t AddInt16(const char* name, int16 value);
	status_t AddInt32(const char* name, int32 value);
	status_t AddInt64(const char* name, int64 value);
	status_t AddBool(const char* name, bool value);
	status_t AddFloat(const char* name, float value);
	status_t AddDouble(const char* name, double value);
	status_t AddPointer(const char* name, const void* pointer);
	status_t AddRef(const char* name, const entry_ref* ref);
	status_t AddMessage(const char* name, const BMessage* message);

	// Removing the last value of a name removes the name.
	status_t RemoveData(const char* name, int32 index = 0);
	status_t RemoveName(const char* name);

	// B_ANY_TYPE finds a value of whatever type the field has.
	status_t FindData(const char* name, type_code type, const void** data, ssize_t* numBytes) const;
	status_t FindData(const char* name, type_code type, int32 index, const void** data,
	                  ssize_t* numBytes) const;
	status_t FindString(const char* name, const char** string) const;
	status_t FindString(const char* name, int32 index, const char** string) const;
	status_t FindInt8(const char* name, int8* value) const;
	status_t FindInt8(const char* name, int32 index, int8* value) const;
	status_t FindInt16(const char* name, int16* value) const;
	status_t FindInt16(const char* name, int32 index, int16* value) const;
	status_t FindInt32(const char* name, int32* value) const;
	status_t FindInt32(const char* name, int32 index, int32* value) const;
	status_t FindInt64(const char* name, int64* value) const;
	status_t FindInt64(const char* name, int32 index, int64* value) const;
	status_t FindBool(const char* name, bool* value) const;
	status_t FindBool(const char* name, int32 index, bool* value) const;
	status_t FindFloat(const char* name, float* value) const;
	status_t FindFloat(const char* name, int32 index, float* value) const;
	status_t FindDouble(const char* name, double* value) const;
	status_t FindDouble(const char* name, int32 index, double* value) const;
	status_t FindPointer(const char* name, void** pointer) const;
	status_t FindPointer(const char* name, int32 index, void** pointer) const;
	status_t FindRef(const char* name, entry_ref* ref) const;
	status_t FindRef(const char* name, int32 index, entry_ref* ref) const;
	status_t FindMessage(const char* name, BMessage* message) const;
	status_t FindMessage(const char* name, int32 index, BMessage* message) const;

	// Replacing keeps the value's place; a fixed-size field only takes a
	// value of its size.
	status_t ReplaceData(const char* name, type_code type, const void* data, ssize_t numBytes);
	status_t ReplaceData(const char* name, type_code type, int32 index, const void* data,
	                     ssize_t numBytes);
	status_t ReplaceString(const char* name, const char* string);
	status_t ReplaceString(const char* name, int32 index, const char* string);
	status_t ReplaceInt8(const char* name, int8 value);
	status_t ReplaceInt8(const char* name, int32 index, int8 value);
	status_t ReplaceInt16(const char* name, int16 value);
	status_t ReplaceInt16(const char* name, int32 index, int16 value);
	status_t ReplaceInt32(const char* name, int32 value);
	status_t ReplaceInt32(const char* name, int32 index, int32 value);
	status_t ReplaceInt64(const char* name, int64 value);
	status_t ReplaceInt64(const char* name, int32 index, int64 value);
	status_t ReplaceBool(const char* name, bool value);
	status_t ReplaceBool(const char* name, int32 index, bool value);
	status_t ReplaceFloat(const char* name, float value);
	status_t ReplaceFloat(const char* name, int32 index, float value);
	status_t ReplaceDouble(const char* name, double value);
	status_t ReplaceDouble(const char* name, int32 index, double value);
	status_t ReplacePointer(const char* name, const void* pointer);
	status_t ReplacePointer(const char* name, int32 index, const void* pointer);
	status_t ReplaceRef(const char* name, const entry_ref* ref);
	status_t ReplaceRef(const char* name, int32 index, const entry_ref* ref);
	status_t ReplaceMessage(const char* name, const BMessage* message);
	status_t ReplaceMessage(const char* name, int32 index, const BMessage* message);

	// True when the name holds a value of that type at that index.
	bool HasData(const char* name, type_code type, int32 index = 0) const;
	bool HasString(const char* name, int32 index = 0) const;
	bool HasInt8(const char* name, int32 index = 0) const;
	bool HasInt16(const char* name, int32 index = 0) const;
	bool HasInt32(const char* name, int32 index = 0) const;
	bool HasInt64(const char* name, int32 index = 0) const;
	bool HasBool(const char* name, int32 index = 0) const;
	bool HasFloat(const char* name, int32 index = 0) const;
	bool HasDouble(const char* name, int32 index = 0) const;
	bool HasPointer(const char* name, int32 index = 0) const;
	bool HasRef(const char* name, int32 index = 0) const;
	bool HasMessage(const char* name, int32 index = 0) const;

	uint32 what;

private:
	// Values are immutable once stored, so copies of a message share them.
	typedef std::shared_ptr<const std::string> Value;

	struct Field {
		std::string name;
		type_code type;
		bool fixedSize;
		std::vector<Value> values;
	};

	const Field* FindField(const char* name) const;
	Field* FindField(const char* name);
	status_t FindValue(const char* name, type_code type, int32 index, const Value** value) const;
	status_t FindFixed(const char* name, type_code type, int32 index, void* out, size_t size) const;
	status_t Parse(const char* buffer, size_t size, int32 depth, size_t* used);
	static bool IsWellFormed(type_code type, const char* data, size_t size, int32 depth);
	void Print(int32 indent) const;

	std::vector<Field> fFields;
};

#endif // MESSAGE_H
