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

	LibString a("x");
	LibString b = "<" + a + ">" + LibString("!");
	EXPECT_STREQ(b, "<x>!");
	b += 'y';
	EXPECT_EQ(b, "<x>!y");

	LibString c("hello");
	c = c.String() + 2;
	EXPECT_STREQ(c, "llo");
	c = c;
	EXPECT_STREQ(c, "llo");
}


TEST(LibStringTest, ComparisonsBothWays)
{
	LibString apple("apple");
	LibString pear("pear");
	EXPECT_TRUE(apple < pear);
	EXPECT_TRUE(apple < "pear");
	EXPECT_TRUE("pear" > apple);
	EXPECT_TRUE(apple <= "apple");
	EXPECT_TRUE(apple >= "apple");
	EXPECT_FALSE(apple != "apple");
	// A literal on the left must compare contents, not addresses.
	char buffer[] = "apple";
	EXPECT_TRUE(buffer == apple);
	EXPECT_FALSE("apple" != apple);

	LibString upper("APPLE");
	EXPECT_NE(upper.Compare(apple), 0);
	EXPECT_EQ(upper.Compare(apple, false), 0);
	EXPECT_LT(LibString("Apple").Compare("banana", false), 0);
	EXPECT_GT(LibString("Banana").Compare("apple", false), 0);
}


TEST(LibStringTest, FormatGrowsAndReplaces)
{
	LibString s("old content");
	std::string longText(5000, 'z');
	s.Format("%s-%d", longText.c_str(), 42);
	EXPECT_EQ(s.Length(), 5003);
	EXPECT_EQ(std::string(s.String()), longText + "-42");

	s.Format("%d", 7);
	EXPECT_STREQ(s, "7");

	// Arguments taken from the string being formatted.
	LibString t("abc");
	t.Format("%s%s%s%s%s%s", t.String(), t.String(), t.String(), t.String(), t.String(),
	         t.String());
	EXPECT_STREQ(t, "abcabcabcabcabcabc");

	LibString f = LibString::Formatted("%s (%d-%s@%d/%dMHz) %dMB RAM", "x86", 2, "P", 100, 33, 64);
	EXPECT_STREQ(f, "x86 (2-P@100/33MHz) 64MB RAM");
}


TEST(LibStringTest, IndexAndContain)
{
	LibString s("abcabc");
	EXPECT_EQ(s.Index("bc"), 1);
	EXPECT_EQ(s.Index("bc", 2), 4);
	EXPECT_EQ(s.Index("bc", 5), -1);
	EXPECT_EQ(s.Index("bc", 100), -1);
	EXPECT_EQ(s.Index("a", -3), 0);
	EXPECT_TRUE(s.Contain("cab"));
	EXPECT_FALSE(s.Contain("cba"));
}


TEST(LibStringTest, ExtractInsertRemoveClamp)
{
	LibString s("0123456789");
	EXPECT_STREQ(s.Extract(7, 10), "789");
	EXPECT_STREQ(s.Extract(12, 2), "");
	EXPECT_STREQ(s.Extract(-2, 3), "012");
	EXPECT_STREQ(s.Extract(3, -1), "3456789");

	LibString r(s);
	r.Remove(8, 50);
	EXPECT_STREQ(r, "01234567");
	r.Remove(20, 1);
	EXPECT_STREQ(r, "01234567");
	r.Remove(2, 3);
	EXPECT_STREQ(r, "01567");
	EXPECT_EQ(r.Length(), 5);

	r.Insert("ab", 0).Insert("yz", 99).Insert("-", 3);
	EXPECT_STREQ(r, "ab0-1567yz");
	r.Insert(r.String() + 8, 1);
	EXPECT_STREQ(r, "ayzb0-1567yz");
}


TEST(LibStringTest, ReplaceEdgeCases)
{
	LibString s("aaaa");
	EXPECT_EQ(s.Replace("aa", "b"), 2);
	EXPECT_STREQ(s, "bb");

	LibString t("aaa");
	EXPECT_EQ(t.Replace("aa", "b"), 1);
	EXPECT_STREQ(t, "ba");

	// The replacement text is not searched again.
	LibString u("a.a");
	EXPECT_EQ(u.Replace("a", "aa"), 2);
	EXPECT_STREQ(u, "aa.aa");

	LibString v("x-x-x");
	EXPECT_EQ(v.Replace("x", "", false), 1);
	EXPECT_STREQ(v, "-x-x");
	EXPECT_EQ(v.Replace("", "y"), 0);
	EXPECT_STREQ(v, "-x-x");
	EXPECT_EQ(v.Replace("q", "y"), 0);

	LibString w("abab");
	EXPECT_EQ(w.Replace(w.String() + 2, w.String()), 2);
	EXPECT_STREQ(w, "ababab"
	                "ab");
}


TEST(LibStringTest, WordsSkipAnyWhiteSpace)
{
	LibString s("  \tfirst second\t\tthird  ");
	EXPECT_EQ(s.Words(), 3);
	EXPECT_STREQ(s.Word(0), "first");
	EXPECT_STREQ(s.Word(2), "third");
	EXPECT_STREQ(s.Word(3), "");
	EXPECT_STREQ(s.Word(-1), "");
	EXPECT_EQ(LibString("one").Words(), 1);
}


TEST(LibStringTest, CaseAndStripping)
{
	LibString s(" \tMixed Case 9 \n");
	LibString lower(s);
	lower.ToLower();
	EXPECT_STREQ(lower, " \tmixed case 9 \n");
	LibString upper(s);
	upper.ToUpper();
	EXPECT_STREQ(upper, " \tMIXED CASE 9 \n");

	LibString a(s), b(s), c(s), d(s);
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
	EXPECT_FALSE(LibString("42abc").GetInt32(i));
	EXPECT_EQ(i, -42);
	EXPECT_FALSE(LibString("").GetInt32(i));
	EXPECT_FALSE(LibString("4.5").GetInt32(i));
	EXPECT_FALSE(LibString("99999999999").GetInt32(i));
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

	EXPECT_TRUE(LibString("17").IsNumeric());
	EXPECT_TRUE(LibString("-0.5").IsNumeric());
	EXPECT_FALSE(LibString("MHz").IsNumeric());
	EXPECT_FALSE(LibString(" ").IsNumeric());
}


TEST(LibStringTest, ListsFindStringsByContent)
{
	LinkList<LibString> list;
	list.Insert(new LibString("alpha"));
	list.Insert(new LibString("beta"));
	LinkList<LibString> copy;
	copy = list;
	LibString wanted("beta");
	LibString* found = copy.Get(&wanted);
	ASSERT_NE(found, nullptr);
	EXPECT_EQ(copy.CurrentIndex(), 1);
	EXPECT_STREQ(*found, "beta");
}

} // namespace
