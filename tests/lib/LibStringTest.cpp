#include "lib/LibString.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "lib/LinkList.h"

namespace {

TEST(LibStringTest, NullAndEmptyAreTheSame)
{
	LibString s(nullptr);
	EXPECT_STREQ(s.String(), "");
	EXPECT_TRUE(s.IsEmpty());
	s += nullptr;
	s.Insert(nullptr, 0);
	EXPECT_EQ(s.Compare(nullptr), 0);
	EXPECT_TRUE(s == "");
	EXPECT_EQ(s.Replace(nullptr, "x"), 0);
	EXPECT_EQ(s.Index(""), 0);
	EXPECT_EQ(s.Words(), 0);
	EXPECT_STREQ(s.Word(0), "");
}


TEST(LibStringTest, ConcatenationAndAliasing)
{
	LibString s("ab");
	s += s;
	EXPECT_STREQ(s, "abab");
	// Appending a tail of itself while the buffer has to grow.
	for (int i = 0; i < 6; i++)
		s += s.String() + 1;
	EXPECT_EQ(s.Length(), static_cast<int32>(strlen(s.String())));
	// Each step adds all but one character: 4, 7, 13, 25, 49, 97, 193.
	EXPECT_EQ(s.Length(), 193);
	EXPECT_STREQ(s.Extract(189, 4), "bbab");

	LibString b = "<" + LibString("x") + ">" + LibString("!");
	b += 'y';
	EXPECT_STREQ(b, "<x>!y");

	LibString c("hello");
	c = c.String() + 2;
	c = c;
	EXPECT_STREQ(c, "llo");
}


TEST(LibStringTest, ComparisonsBothWays)
{
	LibString apple("apple");
	EXPECT_TRUE(apple < LibString("pear"));
	EXPECT_TRUE("pear" > apple);
	EXPECT_TRUE(apple <= "apple");
	EXPECT_TRUE(apple >= "apple");
	// A literal on the left must compare contents, not addresses.
	char buffer[] = "apple";
	EXPECT_TRUE(buffer == apple);
	EXPECT_FALSE("apple" != apple);

	LibString upper("APPLE");
	EXPECT_NE(upper.Compare(apple), 0);
	EXPECT_EQ(upper.Compare(apple, false), 0);
	EXPECT_LT(LibString("Apple").Compare("banana", false), 0);
	EXPECT_GT(LibString("Banana").Compare("apple", false), 0);

	// Lists find strings by content.
	LinkList<LibString> list;
	list.Insert(new LibString("alpha"));
	list.Insert(new LibString("apple"));
	LibString* found = list.Get(&apple);
	EXPECT_NE(found, nullptr);
	EXPECT_NE(found, &apple);
	EXPECT_EQ(list.CurrentIndex(), 1);
}


TEST(LibStringTest, FormatGrowsAndReplaces)
{
	LibString s("old content");
	std::string longText(5000, 'z');
	s.Format("%s-%d", longText.c_str(), 42);
	EXPECT_EQ(std::string(s.String()), longText + "-42");
	s.Format("%d", 7);
	EXPECT_STREQ(s, "7");

	// Arguments taken from the string being formatted.
	LibString t("abc");
	t.Format("%s%s%s%s", t.String(), t.String(), t.String(), t.String());
	EXPECT_STREQ(t, "abcabcabcabc");

	LibString f = LibString::Formatted("%s (%d-%s@%d/%dMHz) %dMB RAM", "x86", 2, "P", 100, 33, 64);
	EXPECT_STREQ(f, "x86 (2-P@100/33MHz) 64MB RAM");
}


TEST(LibStringTest, IndexExtractInsertRemoveClamp)
{
	LibString s("0123456789");
	EXPECT_EQ(s.Index("45"), 4);
	EXPECT_EQ(LibString("abcabc").Index("bc", 2), 4);
	EXPECT_EQ(s.Index("9", 100), -1);
	EXPECT_EQ(s.Index("0", -3), 0);
	EXPECT_TRUE(s.Contain("234"));
	EXPECT_FALSE(s.Contain("43"));

	EXPECT_STREQ(s.Extract(7, 10), "789");
	EXPECT_STREQ(s.Extract(12, 2), "");
	EXPECT_STREQ(s.Extract(-2, 3), "012");
	EXPECT_STREQ(s.Extract(3, -1), "3456789");

	s.Remove(8, 50);
	s.Remove(20, 1);
	s.Remove(2, 3);
	EXPECT_STREQ(s, "01567");
	EXPECT_EQ(s.Length(), 5);

	s.Insert("ab", 0).Insert("yz", 99).Insert("-", 3);
	EXPECT_STREQ(s, "ab0-1567yz");
	s.Insert(s.String() + 8, 1);
	EXPECT_STREQ(s, "ayzb0-1567yz");
}


TEST(LibStringTest, ReplaceEdgeCases)
{
	struct Case {
		const char* text;
		const char* from;
		const char* to;
		bool all;
		int32 count;
		const char* result;
	} cases[] = {
	    {"aaaa", "aa", "b", true, 2, "bb"},
	    {"aaa", "aa", "b", true, 1, "ba"},
	    // The replacement text is not searched again.
	    {"a.a", "a", "aa", true, 2, "aa.aa"},
	    {"x-x-x", "x", "", false, 1, "-x-x"},
	    {"x-x", "", "y", true, 0, "x-x"},
	    {"x-x", "q", "y", true, 0, "x-x"},
	};
	for (const Case& c : cases) {
		SCOPED_TRACE(c.text);
		LibString s(c.text);
		EXPECT_EQ(s.Replace(c.from, c.to, c.all), c.count);
		EXPECT_STREQ(s, c.result);
	}

	LibString w("abab");
	EXPECT_EQ(w.Replace(w.String() + 2, w.String()), 2);
	EXPECT_STREQ(w, "abababab");
}


TEST(LibStringTest, WordsCaseAndStripping)
{
	LibString words("  \tfirst second\t\tthird  ");
	EXPECT_EQ(words.Words(), 3);
	EXPECT_STREQ(words.Word(0), "first");
	EXPECT_STREQ(words.Word(2), "third");
	EXPECT_STREQ(words.Word(3), "");
	EXPECT_STREQ(words.Word(-1), "");

	LibString s(" \tMixed Case 9 \n");
	LibString lower(s), upper(s), a(s), b(s), c(s), d(s);
	EXPECT_STREQ(lower.ToLower(), " \tmixed case 9 \n");
	EXPECT_STREQ(upper.ToUpper(), " \tMIXED CASE 9 \n");
	EXPECT_STREQ(a.StripSpaces(), "Mixed Case 9");
	EXPECT_STREQ(b.StripLeadingSpaces(), "Mixed Case 9 \n");
	EXPECT_STREQ(c.StripTrailingSpaces(), " \tMixed Case 9");
	EXPECT_STREQ(d.StripAllSpaces(), "MixedCase9");
	EXPECT_EQ(d.Length(), 10);

	LibString blank("   ");
	EXPECT_TRUE(blank.StripSpaces().IsEmpty());
	LibString none;
	EXPECT_TRUE(none.StripTrailingSpaces().StripLeadingSpaces().StripAllSpaces().IsEmpty());
}


TEST(LibStringTest, NumbersMustBeWholeString)
{
	int32 i = -1;
	EXPECT_TRUE(LibString(" -42 ").GetInt32(i));
	EXPECT_EQ(i, -42);
	for (const char* bad : {"42abc", "", "4.5", "99999999999"})
		EXPECT_FALSE(LibString(bad).GetInt32(i)) << bad;
	EXPECT_EQ(i, -42);
	EXPECT_EQ(LibString("12x").GetInt32(), 0);
	EXPECT_EQ(LibString("2147483647").GetInt32(), 2147483647);

	double d = 0;
	EXPECT_TRUE(LibString("1.5e3").GetDouble(d));
	EXPECT_DOUBLE_EQ(d, 1500.0);
	EXPECT_FALSE(LibString("1.5.3").GetDouble(d));
	EXPECT_FALSE(LibString("1e999").GetDouble(d));
	EXPECT_DOUBLE_EQ(LibString("3.25 kB").GetDouble(), 0.0);

	float f = 0;
	EXPECT_TRUE(LibString("0.25").GetFloat(f));
	EXPECT_FLOAT_EQ(f, 0.25f);
	EXPECT_FALSE(LibString("0.25f").GetFloat(f));
	EXPECT_FLOAT_EQ(LibString("-2").GetFloat(), -2.0f);

	EXPECT_TRUE(LibString("-0.5").IsNumeric());
	EXPECT_FALSE(LibString("MHz").IsNumeric());
	EXPECT_FALSE(LibString(" ").IsNumeric());
}

} // namespace
