#include "Message.h"

#include <cctype>
#include <cstdio>
#include <cstring>
#include <set>
#include <string_view>

// Values are stored as their bytes in memory order; the flattened form is
// little-endian, which every machine this runs on is.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "flattened messages are little-endian");

namespace {

const char kMagic[4] = {'Q', 'M', 'F', '1'};
const size_t kHeaderSize = 16;
const size_t kFieldHeaderSize = 16;
const uint32 kFixedSizeFlag = 1;
// Deeper nesting than this in a flattened message is taken as corrupt input
// rather than risking the stack.
const int32 kMaxNesting = 64;


size_t
FixedSizeOf(type_code type)
{
	switch (type) {
		case B_INT8_TYPE:
		case B_UINT8_TYPE:
		case B_CHAR_TYPE:
		case B_BOOL_TYPE:
			return 1;
		case B_INT16_TYPE:
		case B_UINT16_TYPE:
			return 2;
		case B_INT32_TYPE:
		case B_UINT32_TYPE:
		case B_FLOAT_TYPE:
		case B_RGB_COLOR_TYPE:
			return 4;
		case B_INT64_TYPE:
		case B_UINT64_TYPE:
		case B_DOUBLE_TYPE:
		case B_POINT_TYPE:
			return 8;
		case B_RECT_TYPE:
			return 16;
		case B_POINTER_TYPE:
			return sizeof(void*);
		default:
			return 0;
	}
}


uint32
Read32(const char* data)
{
	const unsigned char* bytes = reinterpret_cast<const unsigned char*>(data);
	return uint32(bytes[0]) | uint32(bytes[1]) << 8 | uint32(bytes[2]) << 16 |
	       uint32(bytes[3]) << 24;
}


char*
Write32(char* out, uint32 value)
{
	for (int i = 0; i < 4; i++)
		out[i] = char((value >> (8 * i)) & 0xff);
	return out + 4;
}


// Prints a type or what-code as 'ABCD' when its four bytes are printable.
void
PrintCode(uint32 code)
{
	char text[5];
	for (int i = 0; i < 4; i++) {
		text[i] = char((code >> (8 * (3 - i))) & 0xff);
		if (!isprint(static_cast<unsigned char>(text[i]))) {
			fprintf(stderr, "%u", code);
			return;
		}
	}
	text[4] = '\0';
	fprintf(stderr, "'%s'", text);
}

} // namespace


BMessage::BMessage() : what(0)
{
}


BMessage::BMessage(uint32 whatCode) : what(whatCode)
{
}


BMessage::BMessage(const BMessage& other) = default;


BMessage::~BMessage() = default;


BMessage&
BMessage::operator=(const BMessage& other)
{
	if (this != &other) {
		what = other.what;
		fFields = other.fFields;
	}
	return *this;
}


const BMessage::Field*
BMessage::FindField(const char* name) const
{
	for (const Field& field : fFields) {
		if (field.name == name)
			return &field;
	}
	return nullptr;
}


BMessage::Field*
BMessage::FindField(const char* name)
{
	return const_cast<Field*>(static_cast<const BMessage*>(this)->FindField(name));
}


status_t
BMessage::GetInfo(type_code typeRequested, int32 index, const char** nameFound,
                  type_code* typeFound, int32* countFound) const
{
	if (index < 0)
		return B_BAD_INDEX;
	bool anyOfType = false;
	for (const Field& field : fFields) {
		if (typeRequested != B_ANY_TYPE && field.type != typeRequested)
			continue;
		anyOfType = true;
		if (index-- > 0)
			continue;
		if (nameFound != nullptr)
			*nameFound = field.name.c_str();
		if (typeFound != nullptr)
			*typeFound = field.type;
		if (countFound != nullptr)
			*countFound = int32(field.values.size());
		return B_OK;
	}
	return anyOfType ? B_BAD_INDEX : B_BAD_TYPE;
}


status_t
BMessage::GetInfo(type_code typeRequested, int32 index, char** nameFound, type_code* typeFound,
                  int32* countFound) const
{
	const char* name = nullptr;
	status_t status = GetInfo(typeRequested, index, &name, typeFound, countFound);
	if (status == B_OK && nameFound != nullptr)
		*nameFound = const_cast<char*>(name);
	return status;
}


status_t
BMessage::GetInfo(const char* name, type_code* typeFound, int32* countFound) const
{
	if (name == nullptr)
		return B_BAD_VALUE;
	const Field* field = FindField(name);
	if (field == nullptr)
		return B_NAME_NOT_FOUND;
	if (typeFound != nullptr)
		*typeFound = field->type;
	if (countFound != nullptr)
		*countFound = int32(field->values.size());
	return B_OK;
}


status_t
BMessage::GetInfo(const char* name, type_code* typeFound, bool* fixedSize) const
{
	status_t status = GetInfo(name, typeFound, static_cast<int32*>(nullptr));
	if (status == B_OK && fixedSize != nullptr)
		*fixedSize = FindField(name)->fixedSize;
	return status;
}


int32
BMessage::CountNames(type_code type) const
{
	int32 count = 0;
	for (const Field& field : fFields) {
		if (type == B_ANY_TYPE || field.type == type)
			count++;
	}
	return count;
}


bool
BMessage::IsEmpty() const
{
	return fFields.empty();
}


status_t
BMessage::MakeEmpty()
{
	fFields.clear();
	return B_OK;
}


status_t
BMessage::Rename(const char* oldName, const char* newName)
{
	if (oldName == nullptr || newName == nullptr || newName[0] == '\0')
		return B_BAD_VALUE;
	Field* field = FindField(oldName);
	if (field == nullptr)
		return B_NAME_NOT_FOUND;
	if (strcmp(oldName, newName) == 0)
		return B_OK;
	if (FindField(newName) != nullptr)
		return B_NAME_IN_USE;
	field->name = newName;
	return B_OK;
}


// #pragma mark - printing


void
BMessage::PrintToStream() const
{
	Print(0);
}


void
BMessage::Print(int32 indent) const
{
	fprintf(stderr, "BMessage(");
	PrintCode(what);
	fprintf(stderr, ") {\n");
	for (const Field& field : fFields) {
		for (size_t i = 0; i < field.values.size(); i++) {
			const std::string& value = *field.values[i];
			const char* data = value.data();
			fprintf(stderr, "%*s%s", int(indent + 1) * 4, "", field.name.c_str());
			if (field.values.size() > 1)
				fprintf(stderr, "[%zu]", i);
			fprintf(stderr, " = ");
			union {
				int8 i8;
				int16 i16;
				int32 i32;
				int64 i64;
				float f;
				double d;
				void* p;
			} number;
			if (value.size() <= sizeof(number))
				memcpy(&number, data, value.size());
			switch (field.type) {
				case B_STRING_TYPE:
					fprintf(stderr, "string(\"%s\", %zu bytes)\n", data, value.size() - 1);
					break;
				case B_REF_TYPE:
					fprintf(stderr, "entry_ref(path = \"%s\")\n", data);
					break;
				case B_INT8_TYPE:
					fprintf(stderr, "int8(%d or 0x%x)\n", number.i8, uint8(number.i8));
					break;
				case B_INT16_TYPE:
					fprintf(stderr, "int16(%d or 0x%x)\n", number.i16, uint16(number.i16));
					break;
				case B_INT32_TYPE:
					fprintf(stderr, "int32(%d or 0x%x)\n", number.i32, uint32(number.i32));
					break;
				case B_INT64_TYPE:
					fprintf(stderr, "int64(%lld or 0x%llx)\n", static_cast<long long>(number.i64),
					        static_cast<unsigned long long>(number.i64));
					break;
				case B_BOOL_TYPE:
					fprintf(stderr, "bool(%s)\n", data[0] != 0 ? "true" : "false");
					break;
				case B_FLOAT_TYPE:
					fprintf(stderr, "float(%.4f)\n", double(number.f));
					break;
				case B_DOUBLE_TYPE:
					fprintf(stderr, "double(%.8f)\n", number.d);
					break;
				case B_POINTER_TYPE:
					fprintf(stderr, "pointer(%p)\n", number.p);
					break;
				case B_MESSAGE_TYPE: {
					BMessage nested;
					size_t used = 0;
					if (nested.Parse(data, value.size(), 0, &used) == B_OK) {
						nested.Print(indent + 1);
						break;
					}
					fprintf(stderr, "BMessage(unreadable)\n");
					break;
				}
				default: {
					PrintCode(field.type);
					fprintf(stderr, ", %zu bytes:", value.size());
					const size_t kShown = 32;
					for (size_t byte = 0; byte < value.size() && byte < kShown; byte++)
						fprintf(stderr, " %02x", static_cast<unsigned char>(data[byte]));
					fprintf(stderr, value.size() > kShown ? " ...\n" : "\n");
					break;
				}
			}
		}
	}
	fprintf(stderr, "%*s}\n", int(indent) * 4, "");
}


// #pragma mark - flattening


ssize_t
BMessage::FlattenedSize() const
{
	size_t size = kHeaderSize;
	for (const Field& field : fFields) {
		size += kFieldHeaderSize + field.name.size();
		for (const Value& value : field.values)
			size += 4 + value->size();
	}
	return ssize_t(size);
}


status_t
BMessage::Flatten(char* buffer, ssize_t size) const
{
	if (buffer == nullptr || size < 0)
		return B_BAD_VALUE;
	ssize_t needed = FlattenedSize();
	if (uint64(needed) > UINT32_MAX)
		return B_BAD_VALUE;
	if (size < needed)
		return B_BUFFER_OVERFLOW;

	char* out = buffer;
	memcpy(out, kMagic, sizeof(kMagic));
	out = Write32(out + sizeof(kMagic), uint32(needed));
	out = Write32(out, what);
	out = Write32(out, uint32(fFields.size()));
	for (const Field& field : fFields) {
		out = Write32(out, field.type);
		out = Write32(out, field.fixedSize ? kFixedSizeFlag : 0);
		out = Write32(out, uint32(field.name.size()));
		out = Write32(out, uint32(field.values.size()));
		memcpy(out, field.name.data(), field.name.size());
		out += field.name.size();
		for (const Value& value : field.values) {
			out = Write32(out, uint32(value->size()));
			memcpy(out, value->data(), value->size());
			out += value->size();
		}
	}
	return B_OK;
}


status_t
BMessage::Flatten(std::string* out) const
{
	if (out == nullptr)
		return B_BAD_VALUE;
	std::string buffer(size_t(FlattenedSize()), '\0');
	status_t status = Flatten(&buffer[0], ssize_t(buffer.size()));
	if (status == B_OK)
		out->swap(buffer);
	return status;
}


status_t
BMessage::Unflatten(const char* buffer, ssize_t size)
{
	if (size < 0 || (buffer == nullptr && size > 0))
		return B_BAD_VALUE;
	size_t used = 0;
	return Parse(buffer, size_t(size), 0, &used);
}


status_t
BMessage::Unflatten(const char* buffer)
{
	if (buffer == nullptr)
		return B_BAD_VALUE;
	if (memcmp(buffer, kMagic, sizeof(kMagic)) != 0)
		return B_NOT_A_MESSAGE;
	size_t used = 0;
	return Parse(buffer, Read32(buffer + sizeof(kMagic)), 0, &used);
}


// Reads one flattened message from the start of buffer (size bytes
// readable) into this one; *used is the message's total size.
status_t
BMessage::Parse(const char* buffer, size_t size, int32 depth, size_t* used)
{
	if (depth > kMaxNesting)
		return B_BAD_DATA;
	if (size < sizeof(kMagic) || memcmp(buffer, kMagic, sizeof(kMagic)) != 0)
		return B_NOT_A_MESSAGE;
	if (size < kHeaderSize)
		return B_BAD_DATA;
	size_t total = Read32(buffer + 4);
	if (total < kHeaderSize || total > size)
		return B_BAD_DATA;
	uint32 whatValue = Read32(buffer + 8);
	uint32 fieldCount = Read32(buffer + 12);

	std::vector<Field> fields;
	std::set<std::string_view> names;
	size_t position = kHeaderSize;
	for (uint32 i = 0; i < fieldCount; i++) {
		if (total - position < kFieldHeaderSize)
			return B_BAD_DATA;
		Field field;
		field.type = Read32(buffer + position);
		uint32 flags = Read32(buffer + position + 4);
		size_t nameLength = Read32(buffer + position + 8);
		size_t valueCount = Read32(buffer + position + 12);
		position += kFieldHeaderSize;
		if ((flags & ~kFixedSizeFlag) != 0 || nameLength == 0 || nameLength > total - position)
			return B_BAD_DATA;
		std::string_view name(buffer + position, nameLength);
		if (name.find('\0') != std::string_view::npos || !names.insert(name).second)
			return B_BAD_DATA;
		field.name.assign(name);
		field.fixedSize = (flags & kFixedSizeFlag) != 0;
		position += nameLength;
		if (valueCount == 0 || valueCount > (total - position) / 4)
			return B_BAD_DATA;
		field.values.reserve(valueCount);
		for (size_t v = 0; v < valueCount; v++) {
			if (total - position < 4)
				return B_BAD_DATA;
			size_t valueSize = Read32(buffer + position);
			position += 4;
			if (valueSize > total - position)
				return B_BAD_DATA;
			const char* data = buffer + position;
			if (!IsWellFormed(field.type, data, valueSize, depth))
				return B_BAD_DATA;
			if (field.fixedSize && v > 0 && valueSize != field.values[0]->size())
				return B_BAD_DATA;
			field.values.push_back(std::make_shared<const std::string>(data, valueSize));
			position += valueSize;
		}
		fields.push_back(std::move(field));
	}
	if (position != total)
		return B_BAD_DATA;

	what = whatValue;
	fFields.swap(fields);
	*used = total;
	return B_OK;
}


bool
BMessage::IsWellFormed(type_code type, const char* data, size_t size, int32 depth)
{
	switch (type) {
		case B_STRING_TYPE:
		case B_REF_TYPE:
			return size > 0 && data[size - 1] == '\0';
		case B_BOOL_TYPE:
			return size == 1 && (data[0] == 0 || data[0] == 1);
		case B_MESSAGE_TYPE: {
			BMessage nested;
			size_t used = 0;
			return nested.Parse(data, size, depth + 1, &used) == B_OK && used == size;
		}
		default: {
			size_t fixed = FixedSizeOf(type);
			return fixed == 0 || size == fixed;
		}
	}
}


// #pragma mark - adding and removing


status_t
BMessage::AddData(const char* name, type_code type, const void* data, ssize_t numBytes,
                  bool isFixedSize, int32 count)
{
	(void)count;
	if (name == nullptr || name[0] == '\0' || numBytes < 0 || (data == nullptr && numBytes > 0) ||
	    type == B_ANY_TYPE) {
		return B_BAD_VALUE;
	}
	const char* bytes = static_cast<const char*>(data);
	if (!IsWellFormed(type, bytes, size_t(numBytes), 0))
		return B_BAD_VALUE;
	// The value is copied before the field changes: data may point into this
	// very message.
	Value value = std::make_shared<const std::string>(bytes, size_t(numBytes));

	Field* field = FindField(name);
	if (field == nullptr) {
		fFields.push_back(Field{name, type, isFixedSize, {std::move(value)}});
		return B_OK;
	}
	if (field->type != type)
		return B_BAD_TYPE;
	if (field->fixedSize && field->values[0]->size() != size_t(numBytes))
		return B_BAD_VALUE;
	field->values.push_back(std::move(value));
	return B_OK;
}


status_t
BMessage::AddString(const char* name, const char* string)
{
	if (string == nullptr)
		return B_BAD_VALUE;
	return AddData(name, B_STRING_TYPE, string, ssize_t(strlen(string) + 1), false);
}


status_t
BMessage::AddInt8(const char* name, int8 value)
{
	return AddData(name, B_INT8_TYPE, &value, sizeof(value));
}


status_t
BMessage::AddInt16(const char* name, int16 value)
{
	return AddData(name, B_INT16_TYPE, &value, sizeof(value));
}


status_t
BMessage::AddInt32(const char* name, int32 value)
{
	return AddData(name, B_INT32_TYPE, &value, sizeof(value));
}


status_t
BMessage::AddInt64(const char* name, int64 value)
{
	return AddData(name, B_INT64_TYPE, &value, sizeof(value));
}


status_t
BMessage::AddBool(const char* name, bool value)
{
	int8 byte = value ? 1 : 0;
	return AddData(name, B_BOOL_TYPE, &byte, sizeof(byte));
}


status_t
BMessage::AddFloat(const char* name, float value)
{
	return AddData(name, B_FLOAT_TYPE, &value, sizeof(value));
}


status_t
BMessage::AddDouble(const char* name, double value)
{
	return AddData(name, B_DOUBLE_TYPE, &value, sizeof(value));
}


status_t
BMessage::AddPointer(const char* name, const void* pointer)
{
	return AddData(name, B_POINTER_TYPE, &pointer, sizeof(pointer));
}


status_t
BMessage::AddRef(const char* name, const entry_ref* ref)
{
	if (ref == nullptr)
		return B_BAD_VALUE;
	return AddData(name, B_REF_TYPE, ref->path.c_str(), ssize_t(ref->path.size() + 1), false);
}


status_t
BMessage::AddMessage(const char* name, const BMessage* message)
{
	if (message == nullptr)
		return B_BAD_VALUE;
	std::string flat;
	status_t status = message->Flatten(&flat);
	if (status != B_OK)
		return status;
	return AddData(name, B_MESSAGE_TYPE, flat.data(), ssize_t(flat.size()), false);
}


status_t
BMessage::RemoveData(const char* name, int32 index)
{
	if (name == nullptr)
		return B_BAD_VALUE;
	if (index < 0)
		return B_BAD_INDEX;
	for (auto field = fFields.begin(); field != fFields.end(); ++field) {
		if (field->name != name)
			continue;
		if (size_t(index) >= field->values.size())
			return B_BAD_INDEX;
		field->values.erase(field->values.begin() + index);
		if (field->values.empty())
			fFields.erase(field);
		return B_OK;
	}
	return B_NAME_NOT_FOUND;
}


status_t
BMessage::RemoveName(const char* name)
{
	if (name == nullptr)
		return B_BAD_VALUE;
	for (auto field = fFields.begin(); field != fFields.end(); ++field) {
		if (field->name == name) {
			fFields.erase(field);
			return B_OK;
		}
	}
	return B_NAME_NOT_FOUND;
}


// #pragma mark - finding


status_t
BMessage::FindValue(const char* name, type_code type, int32 index, const Value** value) const
{
	if (name == nullptr)
		return B_BAD_VALUE;
	const Field* field = FindField(name);
	if (field == nullptr)
		return B_NAME_NOT_FOUND;
	if (type != B_ANY_TYPE && field->type != type)
		return B_BAD_TYPE;
	if (index < 0 || size_t(index) >= field->values.size())
		return B_BAD_INDEX;
	*value = &field->values[size_t(index)];
	return B_OK;
}


status_t
BMessage::FindFixed(const char* name, type_code type, int32 index, void* out, size_t size) const
{
	if (out == nullptr)
		return B_BAD_VALUE;
	const Value* value = nullptr;
	status_t status = FindValue(name, type, index, &value);
	if (status != B_OK)
		return status;
	// Well-formedness was checked when the value was stored.
	memcpy(out, (*value)->data(), size);
	return B_OK;
}


status_t
BMessage::FindData(const char* name, type_code type, int32 index, const void** data,
                   ssize_t* numBytes) const
{
	if (data == nullptr)
		return B_BAD_VALUE;
	const Value* value = nullptr;
	status_t status = FindValue(name, type, index, &value);
	if (status != B_OK)
		return status;
	*data = (*value)->data();
	if (numBytes != nullptr)
		*numBytes = ssize_t((*value)->size());
	return B_OK;
}


status_t
BMessage::FindData(const char* name, type_code type, const void** data, ssize_t* numBytes) const
{
	return FindData(name, type, 0, data, numBytes);
}


status_t
BMessage::FindString(const char* name, int32 index, const char** string) const
{
	if (string == nullptr)
		return B_BAD_VALUE;
	const void* data = nullptr;
	status_t status = FindData(name, B_STRING_TYPE, index, &data, nullptr);
	if (status == B_OK)
		*string = static_cast<const char*>(data);
	return status;
}


status_t
BMessage::FindString(const char* name, const char** string) const
{
	return FindString(name, 0, string);
}


#define FIND_FIXED(Name, TYPE, Type)                                                               \
	status_t BMessage::Find##Name(const char* name, int32 index, Type* value) const                \
	{                                                                                              \
		return FindFixed(name, TYPE, index, value, sizeof(Type));                                  \
	}                                                                                              \
	status_t BMessage::Find##Name(const char* name, Type* value) const                             \
	{                                                                                              \
		return FindFixed(name, TYPE, 0, value, sizeof(Type));                                      \
	}

FIND_FIXED(Int8, B_INT8_TYPE, int8)
FIND_FIXED(Int16, B_INT16_TYPE, int16)
FIND_FIXED(Int32, B_INT32_TYPE, int32)
FIND_FIXED(Int64, B_INT64_TYPE, int64)
FIND_FIXED(Float, B_FLOAT_TYPE, float)
FIND_FIXED(Double, B_DOUBLE_TYPE, double)
FIND_FIXED(Pointer, B_POINTER_TYPE, void*)

#undef FIND_FIXED


status_t
BMessage::FindBool(const char* name, int32 index, bool* value) const
{
	int8 byte = 0;
	status_t status =
	    value != nullptr ? FindFixed(name, B_BOOL_TYPE, index, &byte, 1) : B_BAD_VALUE;
	if (status == B_OK)
		*value = byte != 0;
	return status;
}


status_t
BMessage::FindBool(const char* name, bool* value) const
{
	return FindBool(name, 0, value);
}


status_t
BMessage::FindRef(const char* name, int32 index, entry_ref* ref) const
{
	if (ref == nullptr)
		return B_BAD_VALUE;
	const void* data = nullptr;
	status_t status = FindData(name, B_REF_TYPE, index, &data, nullptr);
	if (status == B_OK)
		ref->path = static_cast<const char*>(data);
	return status;
}


status_t
BMessage::FindRef(const char* name, entry_ref* ref) const
{
	return FindRef(name, 0, ref);
}


status_t
BMessage::FindMessage(const char* name, int32 index, BMessage* message) const
{
	if (message == nullptr)
		return B_BAD_VALUE;
	const void* data = nullptr;
	ssize_t size = 0;
	status_t status = FindData(name, B_MESSAGE_TYPE, index, &data, &size);
	if (status != B_OK)
		return status;
	return message->Unflatten(static_cast<const char*>(data), size);
}


status_t
BMessage::FindMessage(const char* name, BMessage* message) const
{
	return FindMessage(name, 0, message);
}


// #pragma mark - replacing


status_t
BMessage::ReplaceData(const char* name, type_code type, int32 index, const void* data,
                      ssize_t numBytes)
{
	if (name == nullptr || numBytes < 0 || (data == nullptr && numBytes > 0))
		return B_BAD_VALUE;
	Field* field = FindField(name);
	if (field == nullptr)
		return B_NAME_NOT_FOUND;
	if (type != B_ANY_TYPE && field->type != type)
		return B_BAD_TYPE;
	if (index < 0 || size_t(index) >= field->values.size())
		return B_BAD_INDEX;
	const char* bytes = static_cast<const char*>(data);
	if (!IsWellFormed(field->type, bytes, size_t(numBytes), 0))
		return B_BAD_VALUE;
	if (field->fixedSize && field->values[0]->size() != size_t(numBytes))
		return B_BAD_VALUE;
	field->values[size_t(index)] = std::make_shared<const std::string>(bytes, size_t(numBytes));
	return B_OK;
}


status_t
BMessage::ReplaceData(const char* name, type_code type, const void* data, ssize_t numBytes)
{
	return ReplaceData(name, type, 0, data, numBytes);
}


status_t
BMessage::ReplaceString(const char* name, int32 index, const char* string)
{
	if (string == nullptr)
		return B_BAD_VALUE;
	return ReplaceData(name, B_STRING_TYPE, index, string, ssize_t(strlen(string) + 1));
}


status_t
BMessage::ReplaceString(const char* name, const char* string)
{
	return ReplaceString(name, 0, string);
}


#define REPLACE_FIXED(Name, TYPE, Type)                                                            \
	status_t BMessage::Replace##Name(const char* name, int32 index, Type value)                    \
	{                                                                                              \
		return ReplaceData(name, TYPE, index, &value, sizeof(value));                              \
	}                                                                                              \
	status_t BMessage::Replace##Name(const char* name, Type value)                                 \
	{                                                                                              \
		return ReplaceData(name, TYPE, 0, &value, sizeof(value));                                  \
	}

REPLACE_FIXED(Int8, B_INT8_TYPE, int8)
REPLACE_FIXED(Int16, B_INT16_TYPE, int16)
REPLACE_FIXED(Int32, B_INT32_TYPE, int32)
REPLACE_FIXED(Int64, B_INT64_TYPE, int64)
REPLACE_FIXED(Float, B_FLOAT_TYPE, float)
REPLACE_FIXED(Double, B_DOUBLE_TYPE, double)
REPLACE_FIXED(Pointer, B_POINTER_TYPE, const void*)

#undef REPLACE_FIXED


status_t
BMessage::ReplaceBool(const char* name, int32 index, bool value)
{
	int8 byte = value ? 1 : 0;
	return ReplaceData(name, B_BOOL_TYPE, index, &byte, sizeof(byte));
}


status_t
BMessage::ReplaceBool(const char* name, bool value)
{
	return ReplaceBool(name, 0, value);
}


status_t
BMessage::ReplaceRef(const char* name, int32 index, const entry_ref* ref)
{
	if (ref == nullptr)
		return B_BAD_VALUE;
	return ReplaceData(name, B_REF_TYPE, index, ref->path.c_str(), ssize_t(ref->path.size() + 1));
}


status_t
BMessage::ReplaceRef(const char* name, const entry_ref* ref)
{
	return ReplaceRef(name, 0, ref);
}


status_t
BMessage::ReplaceMessage(const char* name, int32 index, const BMessage* message)
{
	if (message == nullptr)
		return B_BAD_VALUE;
	std::string flat;
	status_t status = message->Flatten(&flat);
	if (status != B_OK)
		return status;
	return ReplaceData(name, B_MESSAGE_TYPE, index, flat.data(), ssize_t(flat.size()));
}


status_t
BMessage::ReplaceMessage(const char* name, const BMessage* message)
{
	return ReplaceMessage(name, 0, message);
}


// #pragma mark - presence


bool
BMessage::HasData(const char* name, type_code type, int32 index) const
{
	const Value* value = nullptr;
	return FindValue(name, type, index, &value) == B_OK;
}


#define HAS_TYPE(Name, TYPE)                                                                       \
	bool BMessage::Has##Name(const char* name, int32 index) const                                  \
	{                                                                                              \
		return HasData(name, TYPE, index);                                                         \
	}

HAS_TYPE(String, B_STRING_TYPE)
HAS_TYPE(Int8, B_INT8_TYPE)
HAS_TYPE(Int16, B_INT16_TYPE)
HAS_TYPE(Int32, B_INT32_TYPE)
HAS_TYPE(Int64, B_INT64_TYPE)
HAS_TYPE(Bool, B_BOOL_TYPE)
HAS_TYPE(Float, B_FLOAT_TYPE)
HAS_TYPE(Double, B_DOUBLE_TYPE)
HAS_TYPE(Pointer, B_POINTER_TYPE)
HAS_TYPE(Ref, B_REF_TYPE)
HAS_TYPE(Message, B_MESSAGE_TYPE)

#undef HAS_TYPE
