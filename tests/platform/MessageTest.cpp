#include <Message.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

const uint32 kMsgStatus = 'BmkS';
const uint32 kMsgDone = 'LThC';


// A message with every kind of field, several values under some names and
// two levels of nesting.
BMessage
MakeFullMessage()
{
	BMessage inner('innr');
	inner.AddString("name", "inner");
	BMessage innermost('deep');
	innermost.AddInt32("level", 2);
	inner.AddMessage("child", &innermost);

	BMessage message(kMsgDone);
	message.AddString("results", "first record");
	message.AddString("results", "");
	message.AddString("results", "third \xc3\xa9 record");
	message.AddInt8("i8", INT8_MIN);
	message.AddInt8("i8", INT8_MAX);
	message.AddInt16("i16", -12345);
	message.AddInt32("status", INT32_MIN);
	message.AddInt32("status", 5);
	message.AddInt64("i64", INT64_MAX);
	message.AddBool("flag", true);
	message.AddBool("flag", false);
	message.AddFloat("f", 1.5f);
	message.AddDouble("d", -2.25e300);
	message.AddPointer("p", &message);
	entry_ref directory("/tmp/results dir");
	message.AddRef("directory", &directory);
	message.AddMessage("nested", &inner);
	message.AddMessage("nested", &innermost);
	const char raw[] = {'a', '\0', 'b', '\xff'};
	message.AddData("raw", B_RAW_TYPE, raw, sizeof(raw), false);
	message.AddData("raw", B_RAW_TYPE, raw, 1, false);
	return message;
}


// The value at index of a field, through the given Find member.
template <typename T>
T
Found(const BMessage& message, status_t (BMessage::*find)(const char*, int32, T*) const,
      const char* name, int32 index = 0)
{
	T value{};
	EXPECT_EQ(B_OK, (message.*find)(name, index, &value)) << name << "[" << index << "]";
	return value;
}


void
ExpectFullMessage(const BMessage& message)
{
	EXPECT_EQ(kMsgDone, message.what);
	EXPECT_STREQ("first record", Found(message, &BMessage::FindString, "results"));
	EXPECT_STREQ("", Found(message, &BMessage::FindString, "results", 1));
	EXPECT_STREQ("third \xc3\xa9 record", Found(message, &BMessage::FindString, "results", 2));
	const char* text = nullptr;
	EXPECT_EQ(B_BAD_INDEX, message.FindString("results", 3, &text));
	EXPECT_EQ(INT8_MIN, Found(message, &BMessage::FindInt8, "i8"));
	EXPECT_EQ(INT8_MAX, Found(message, &BMessage::FindInt8, "i8", 1));
	EXPECT_EQ(-12345, Found(message, &BMessage::FindInt16, "i16"));
	EXPECT_EQ(INT32_MIN, Found(message, &BMessage::FindInt32, "status"));
	EXPECT_EQ(5, Found(message, &BMessage::FindInt32, "status", 1));
	EXPECT_EQ(INT64_MAX, Found(message, &BMessage::FindInt64, "i64"));
	EXPECT_TRUE(Found(message, &BMessage::FindBool, "flag"));
	EXPECT_FALSE(Found(message, &BMessage::FindBool, "flag", 1));
	EXPECT_EQ(1.5f, Found(message, &BMessage::FindFloat, "f"));
	EXPECT_EQ(-2.25e300, Found(message, &BMessage::FindDouble, "d"));
	EXPECT_NE(nullptr, Found(message, &BMessage::FindPointer, "p"));
	EXPECT_EQ("/tmp/results dir", Found(message, &BMessage::FindRef, "directory").path);

	BMessage inner = Found(message, &BMessage::FindMessage, "nested");
	EXPECT_EQ(uint32('innr'), inner.what);
	EXPECT_STREQ("inner", Found(inner, &BMessage::FindString, "name"));
	BMessage innermost = Found(inner, &BMessage::FindMessage, "child");
	EXPECT_EQ(2, Found(innermost, &BMessage::FindInt32, "level"));
	EXPECT_EQ(uint32('deep'), Found(message, &BMessage::FindMessage, "nested", 1).what);

	const void* data = nullptr;
	ssize_t size = 0;
	ASSERT_EQ(B_OK, message.FindData("raw", B_RAW_TYPE, 0, &data, &size));
	ASSERT_EQ(4, size);
	EXPECT_EQ(0, memcmp(data, "a\0b\xff", 4));
	ASSERT_EQ(B_OK, message.FindData("raw", B_ANY_TYPE, 1, &data, &size));
	EXPECT_EQ(1, size);
}


std::string
Flat(const BMessage& message)
{
	std::string flat;
	EXPECT_EQ(B_OK, message.Flatten(&flat));
	return flat;
}


void
Append32(std::string* out, uint32 value)
{
	for (int i = 0; i < 4; i++)
		out->push_back(char(value >> (8 * i)));
}


// Builds by hand a flattened message with one field "c" holding flat.
std::string
WrapInField(const std::string& flat)
{
	std::string out("QMF1");
	Append32(&out, uint32(16 + 16 + 1 + 4 + flat.size()));
	Append32(&out, 'node');
	Append32(&out, 1);
	Append32(&out, B_MESSAGE_TYPE);
	Append32(&out, 0);
	Append32(&out, 1);
	Append32(&out, 1);
	out += "c";
	Append32(&out, uint32(flat.size()));
	out += flat;
	return out;
}

} // namespace


TEST(MessageTest, FlattenRoundTripKeepsEveryTypeValueAndOrder)
{
	BMessage original = MakeFullMessage();
	ExpectFullMessage(original);
	std::string flat = Flat(original);
	ASSERT_EQ(original.FlattenedSize(), ssize_t(flat.size()));

	BMessage copy(kMsgStatus);
	copy.AddString("stale", "gone after unflatten");
	ASSERT_EQ(B_OK, copy.Unflatten(flat.data(), ssize_t(flat.size())));
	ExpectFullMessage(copy);
	EXPECT_FALSE(copy.HasString("stale"));
	// Same names, types, counts and order: flattening again gives the same bytes.
	EXPECT_EQ(flat, Flat(copy));

	BMessage unsized;
	ASSERT_EQ(B_OK, unsized.Unflatten(flat.data()));
	ExpectFullMessage(unsized);
}


TEST(MessageTest, FlattenWritesTheDocumentedLittleEndianLayout)
{
	BMessage message(kMsgStatus);
	message.AddString("status", "ab");
	message.AddInt32("n", 0x01020304);
	const unsigned char expected[] = {
	    'Q', 'M', 'F', '1', 70, 0, 0, 0, 'S', 'k', 'm', 'B', 2, 0, 0, 0,
	    // "status": CSTR, variable size, six name bytes, one value "ab\0"
	    'R', 'T', 'S', 'C', 0, 0, 0, 0, 6, 0, 0, 0, 1, 0, 0, 0, 's', 't', 'a', 't', 'u', 's', 3, 0,
	    0, 0, 'a', 'b', 0,
	    // "n": LONG, fixed size, one value
	    'G', 'N', 'O', 'L', 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 'n', 4, 0, 0, 0, 4, 3, 2, 1};
	std::string flat = Flat(message);
	ASSERT_EQ(sizeof(expected), flat.size());
	EXPECT_EQ(0, memcmp(expected, flat.data(), sizeof(expected)));

	std::vector<char> small(flat.size() - 1);
	EXPECT_EQ(B_BUFFER_OVERFLOW, message.Flatten(small.data(), ssize_t(small.size())));
}


TEST(MessageTest, UnflattenRejectsEveryTruncationWithoutReadingPastTheEnd)
{
	std::string flat = Flat(MakeFullMessage());
	BMessage target('keep');
	target.AddInt32("kept", 1);
	for (size_t length = 0; length < flat.size(); length++) {
		// An exact-size heap copy lets the address sanitizer see any over-read.
		std::vector<char> prefix(flat.begin(), flat.begin() + length);
		status_t status = target.Unflatten(prefix.data(), ssize_t(length));
		EXPECT_TRUE(status == B_BAD_DATA || status == B_NOT_A_MESSAGE)
		    << "length " << length << " status " << status;
	}
	EXPECT_EQ(uint32('keep'), target.what);
	EXPECT_TRUE(target.HasInt32("kept"));
	EXPECT_EQ(1, target.CountNames());
}


TEST(MessageTest, UnflattenRejectsCorruptFields)
{
	BMessage message(kMsgStatus);
	message.AddString("status", "ab");
	message.AddBool("flag", true);
	message.AddInt32("n", 7);
	message.AddInt32("n", 8);
	const std::string good = Flat(message);
	// Offsets in the layout above: "status" field at 16, its value size at 38,
	// its bytes at 42; "flag" field at 45, its value byte at 69; "n" at 70.
	ASSERT_EQ(ssize_t(good.size()), message.FlattenedSize());
	ASSERT_EQ('s', good[32]);
	ASSERT_EQ('f', good[61]);
	ASSERT_EQ('n', good[86]);

	struct Corruption {
		const char* what;
		size_t offset;
		char value;
		status_t expected;
	} corruptions[] = {
	    {"magic", 0, 'X', B_NOT_A_MESSAGE},
	    {"total size larger", 4, char(good.size() + 1), B_BAD_DATA},
	    {"total size smaller", 4, char(good.size() - 1), B_BAD_DATA},
	    {"one field too many", 12, 4, B_BAD_DATA},
	    {"one field too few", 12, 2, B_BAD_DATA},
	    {"unknown flag", 20, 2, B_BAD_DATA},
	    {"empty name", 24, 0, B_BAD_DATA},
	    {"no values", 28, 0, B_BAD_DATA},
	    {"NUL inside a name", 33, 0, B_BAD_DATA},
	    {"string without its NUL", 44, 'c', B_BAD_DATA},
	    {"string value size past the end", 38, 100, B_BAD_DATA},
	    {"bool neither 0 nor 1", 69, 2, B_BAD_DATA},
	};
	for (const Corruption& corruption : corruptions) {
		std::vector<char> bad(good.begin(), good.end());
		bad[corruption.offset] = corruption.value;
		BMessage target;
		EXPECT_EQ(corruption.expected, target.Unflatten(bad.data(), ssize_t(bad.size())))
		    << corruption.what;
		EXPECT_TRUE(target.IsEmpty()) << corruption.what;
	}

	BMessage twoNames;
	twoNames.AddInt32("x", 1);
	twoNames.AddInt32("y", 2);
	std::string duplicate = Flat(twoNames);
	ASSERT_EQ('y', duplicate[16 + 16 + 1 + 4 + 4 + 16]);
	duplicate[16 + 16 + 1 + 4 + 4 + 16] = 'x';
	BMessage duplicated;
	EXPECT_EQ(B_BAD_DATA, duplicated.Unflatten(duplicate.data(), ssize_t(duplicate.size())));

	// Every single-byte change either still reads or is refused; none crashes
	// or reads outside the buffer.
	std::string full = Flat(MakeFullMessage());
	for (size_t offset = 0; offset < full.size(); offset++) {
		std::vector<char> bad(full.begin(), full.end());
		bad[offset] ^= 0x5a;
		BMessage target;
		status_t status = target.Unflatten(bad.data(), ssize_t(bad.size()));
		EXPECT_TRUE(status == B_OK || status == B_BAD_DATA || status == B_NOT_A_MESSAGE);
	}
}


TEST(MessageTest, UnflattenRejectsCorruptNestedMessagesAndRunawayNesting)
{
	BMessage inner('innr');
	inner.AddString("s", "x");
	BMessage outer('outr');
	outer.AddMessage("inner", &inner);
	std::string flat = Flat(outer);
	// The inner string's NUL is the last byte of the whole message.
	ASSERT_EQ('\0', flat.back());
	flat.back() = 'y';
	BMessage target;
	EXPECT_EQ(B_BAD_DATA, target.Unflatten(flat.data(), ssize_t(flat.size())));

	// Nesting is refused past a fixed depth, both when building a message and
	// when reading bytes that were put together by hand.
	BMessage deep('leaf');
	int depth = 0;
	while (depth < 1000) {
		BMessage parent('node');
		if (parent.AddMessage("child", &deep) != B_OK)
			break;
		deep = parent;
		depth++;
	}
	EXPECT_GT(depth, 8);
	EXPECT_LT(depth, 1000);
	std::string deepFlat = Flat(deep);
	ASSERT_EQ(B_OK, target.Unflatten(deepFlat.data(), ssize_t(deepFlat.size())));
	std::string wrapped = WrapInField(deepFlat);
	EXPECT_EQ(B_BAD_DATA, target.Unflatten(wrapped.data(), ssize_t(wrapped.size())));
}


TEST(MessageTest, FindAddAndReplaceReportTheirErrors)
{
	BMessage message(kMsgStatus);
	ASSERT_EQ(B_OK, message.AddString("status", "Testing"));
	const char* text = nullptr;
	int32 number = 0;
	EXPECT_EQ(B_NAME_NOT_FOUND, message.FindString("missing", &text));
	EXPECT_EQ(B_BAD_TYPE, message.FindInt32("status", &number));
	EXPECT_EQ(B_BAD_INDEX, message.FindString("status", 1, &text));
	EXPECT_EQ(B_BAD_INDEX, message.FindString("status", -1, &text));
	EXPECT_EQ(B_BAD_VALUE, message.FindString(nullptr, &text));
	EXPECT_EQ(B_BAD_VALUE, message.FindString("status", static_cast<const char**>(nullptr)));
	EXPECT_EQ(nullptr, text);

	EXPECT_EQ(B_BAD_TYPE, message.AddInt32("status", 1));
	EXPECT_EQ(B_BAD_VALUE, message.AddString("other", nullptr));
	EXPECT_EQ(B_BAD_VALUE, message.AddData("raw", B_STRING_TYPE, "abc", 3));
	EXPECT_EQ(B_BAD_VALUE, message.AddData("n", B_INT32_TYPE, "abc", 3));
	ASSERT_EQ(B_OK, message.AddData("fixed", 'FIXD', "abcd", 4, true));
	EXPECT_EQ(B_BAD_VALUE, message.AddData("fixed", 'FIXD', "abc", 3, true));
	EXPECT_EQ(B_BAD_VALUE, message.ReplaceData("fixed", 'FIXD', "abcde", 5));
	EXPECT_EQ(B_OK, message.AddData("fixed", 'FIXD', "efgh", 4, true));

	EXPECT_EQ(B_NAME_NOT_FOUND, message.ReplaceString("missing", "x"));
	EXPECT_EQ(B_BAD_TYPE, message.ReplaceInt32("status", 1));
	EXPECT_EQ(B_BAD_INDEX, message.ReplaceString("status", 1, "x"));
	EXPECT_EQ(B_NAME_NOT_FOUND, message.RemoveData("missing"));
	EXPECT_EQ(B_BAD_INDEX, message.RemoveData("status", 1));
	EXPECT_EQ(B_NAME_NOT_FOUND, message.RemoveName("missing"));

	type_code type = 0;
	int32 count = 0;
	EXPECT_EQ(B_NAME_NOT_FOUND, message.GetInfo("missing", &type, &count));
	char* name = nullptr;
	EXPECT_EQ(B_BAD_TYPE, message.GetInfo(B_DOUBLE_TYPE, 0, &name, &type, &count));
	EXPECT_EQ(B_BAD_INDEX, message.GetInfo(B_STRING_TYPE, 1, &name, &type, &count));
	EXPECT_EQ(B_OK, message.GetInfo('FIXD', 0, &name, &type, &count));
	EXPECT_STREQ("fixed", name);
	EXPECT_EQ(2, count);
}


TEST(MessageTest, ReplaceAndRemoveKeepTheOtherValuesInPlace)
{
	BMessage modifiers;
	modifiers.AddString("VIEW", "a");
	modifiers.AddString("PAGE", "p");
	modifiers.AddString("VIEW", "b");
	modifiers.AddString("VIEW", "c");
	EXPECT_EQ(2, modifiers.CountNames(B_STRING_TYPE));

	ASSERT_EQ(B_OK, modifiers.ReplaceString("VIEW", 1, "a much longer replacement value"));
	ASSERT_EQ(B_OK, modifiers.RemoveData("VIEW", 0));
	const char* text = nullptr;
	ASSERT_EQ(B_OK, modifiers.FindString("VIEW", 0, &text));
	EXPECT_STREQ("a much longer replacement value", text);
	ASSERT_EQ(B_OK, modifiers.FindString("VIEW", 1, &text));
	EXPECT_STREQ("c", text);

	ASSERT_EQ(B_OK, modifiers.RemoveData("PAGE"));
	EXPECT_FALSE(modifiers.HasString("PAGE"));
	EXPECT_EQ(1, modifiers.CountNames());
	EXPECT_EQ(B_OK, modifiers.Rename("VIEW", "PAGE"));
	EXPECT_TRUE(modifiers.HasString("PAGE", 1));

	ASSERT_EQ(B_OK, modifiers.MakeEmpty());
	EXPECT_TRUE(modifiers.IsEmpty());
	EXPECT_EQ(B_OK, modifiers.AddInt32("PAGE", 3));
}


TEST(MessageTest, FoundStringsSurviveLaterAdds)
{
	BMessage message;
	message.AddString("name", "short");
	const char* first = nullptr;
	ASSERT_EQ(B_OK, message.FindString("name", &first));
	for (int i = 0; i < 100; i++) {
		// Adding a value taken from the message itself must copy it first.
		ASSERT_EQ(B_OK, message.AddString("name", first));
		ASSERT_EQ(B_OK, message.AddInt32(("n" + std::to_string(i)).c_str(), i));
	}
	EXPECT_STREQ("short", first);
	const char* last = nullptr;
	ASSERT_EQ(B_OK, message.FindString("name", 100, &last));
	EXPECT_STREQ("short", last);
}


TEST(MessageTest, CopiesAreIndependent)
{
	BMessage original = MakeFullMessage();
	BMessage copy(original);
	copy.what = kMsgStatus;
	copy.ReplaceString("results", 0, "changed");
	copy.AddString("results", "added");
	copy.RemoveName("status");
	ExpectFullMessage(original);

	BMessage assigned('asgn');
	assigned.AddString("old", "value");
	assigned = original;
	EXPECT_FALSE(assigned.HasString("old"));
	original.MakeEmpty();
	ExpectFullMessage(assigned);

	BMessage& self = assigned;
	assigned = self;
	ExpectFullMessage(assigned);
}


TEST(MessageTest, PrintToStreamShowsFieldsAndNestedMessages)
{
	BMessage inner('innr');
	inner.AddString("name", "benchmark");
	BMessage message(kMsgDone);
	message.AddInt32("status", 5);
	message.AddMessage("nested", &inner);
	message.AddString("VIEW", "one");
	message.AddString("VIEW", "two");
	testing::internal::CaptureStderr();
	message.PrintToStream();
	std::string printed = testing::internal::GetCapturedStderr();
	EXPECT_NE(std::string::npos, printed.find("BMessage('LThC')")) << printed;
	EXPECT_NE(std::string::npos, printed.find("status = int32(5")) << printed;
	EXPECT_NE(std::string::npos, printed.find("BMessage('innr')")) << printed;
	EXPECT_NE(std::string::npos, printed.find("        name = string(\"benchmark\"")) << printed;
	EXPECT_NE(std::string::npos, printed.find("VIEW[1] = string(\"two\"")) << printed;
}
