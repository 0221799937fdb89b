#include "help/xmlParser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <string>
#include <unistd.h>

#include "help/xmlTag.h"
#include "help/xmlTagModifiers.h"

namespace {

// Exposes where the reader stands, as a derived parser sees it.
class ProbeParser : public xmlParser
{
public:
	int32 Line() const { return fLine; }
	char At() const { return Current(); }
	char Lookahead() const { return fLookahead; }
};


class xmlParserTest : public testing::Test
{
protected:
	void TearDown() override { unlink(fPath.c_str()); }

	// Writes text to the test's temporary file and opens the parser on it.
	void Load(const std::string& text)
	{
		fPath = testing::TempDir() + "xmlParserTest" + std::to_string(getpid());
		std::ofstream(fPath) << text;
		ASSERT_TRUE(fParser.Open(fPath.c_str()));
	}

	static std::string Field(const xmlTag& tag, const char* name, int32 index = 0)
	{
		const char* value = nullptr;
		return tag.Modifiers().FindString(name, index, &value) == B_OK ? value : "<missing>";
	}

	static void ExpectTag(const xmlTag* tag, const char* name, const char* contents, int32 location)
	{
		ASSERT_NE(tag, nullptr);
		EXPECT_EQ(std::string(tag->Name()), name);
		EXPECT_STREQ(tag->Contents(), contents);
		EXPECT_EQ(tag->ParentLocation(), location);
	}

	std::string fPath;
	ProbeParser fParser;
};


TEST_F(xmlParserTest, AdvanceJoinsLinesSkipsEmptyOnesAndCutsLongOnes)
{
	Load("ab\n\n\ncd\n");
	std::string seen, lookaheads;
	while (fParser.Advance()) {
		seen += fParser.At();
		lookaheads += fParser.Lookahead() != '\0' ? fParser.Lookahead() : '.';
	}
	EXPECT_EQ(seen, "abcd");
	// A line end is no character: the lookahead at a line's last character is empty.
	EXPECT_EQ(lookaheads, "b.d.");
	EXPECT_EQ(fParser.Line(), 4);
	EXPECT_FALSE(fParser.Advance());

	Load("abc\n");
	fParser.Advance();
	fParser.Advance();
	testing::internal::CaptureStderr();
	fParser.PrintToStream();
	EXPECT_EQ(testing::internal::GetCapturedStderr(),
	          "xmlParser: line 1, column 1\nbuffer <abc>\n");

	// Long lines arrive in pieces.
	Load(std::string(2500, 'x') + "\nyz\n");
	ASSERT_TRUE(fParser.ReadLine());
	EXPECT_EQ(fParser.Line(), 1);
	int32 count = 0;
	while (fParser.Advance() && fParser.At() == 'x')
		count++;
	EXPECT_EQ(count, 2500 - 1);
	EXPECT_EQ(fParser.At(), 'y');
	EXPECT_EQ(fParser.Line(), 4);

	// A line of exactly the piece size leaves an empty piece behind.
	Load(std::string(1023, 'a') + "\nb\n");
	ASSERT_TRUE(fParser.ReadLine());
	ASSERT_TRUE(fParser.ReadLine());
	EXPECT_EQ(fParser.At(), '\0');
	ASSERT_TRUE(fParser.ReadLine());
	EXPECT_EQ(fParser.At(), 'b');
	EXPECT_EQ(fParser.Line(), 3);
}


TEST_F(xmlParserTest, NextTagTakesNamesAsTheyStand)
{
	Load("<?xml version=\"1.0\"?>\n<!-- note -->\n<PAGE NAME=x>t</PAGE><BR/><! skipped>\n<END>");
	char name[xmlParser::kNameSize];
	bool hasModifiers = false;
	std::string names, modifiers, at;
	while (fParser.NextTag(name, hasModifiers)) {
		names += std::string(name) + ",";
		modifiers += hasModifiers ? 'm' : '-';
		at += fParser.At();
	}
	// Only the single "!" is skipped, not a comment's "!--".
	EXPECT_EQ(names, "!--,PAGE,/PAGE,BR/,END,");
	EXPECT_EQ(modifiers.substr(0, 3), "mm-");
	EXPECT_EQ(at.substr(1, 2), " >");
	EXPECT_STREQ(name, "");

	// A derived parser chooses more tags to skip.
	class CommentParser : public xmlParser
	{
	public:
		bool SkipTag(const char* name) override
		{
			return xmlParser::SkipTag(name) || strcmp(name, "!--") == 0;
		}
	} parser;
	ASSERT_TRUE(parser.Open(fPath.c_str()));
	ASSERT_TRUE(parser.NextTag(name, hasModifiers));
	EXPECT_STREQ(name, "PAGE");
}


TEST_F(xmlParserTest, ContentsAsTheElementsStand)
{
	struct Case {
		const char* text;
		const char* tag;
		const char* contents;
		const char* child; // the one child's contents, when it has one
	} cases[] = {
	    // Lines are joined with nothing between them, spaces trimmed at the ends.
	    {"<?xml version=\"1.0\"?>\n<P>Hello\nworld</P>", "P", "Helloworld", nullptr},
	    {"<Q>   \tone  two\n  three   </Q>", "Q", "one  two  three", nullptr},
	    // A wrong closing tag still closes.
	    {"<P>text</Q> after</P><P>second</P>", "P", "text", nullptr},
	    // An empty element written with a space runs to the next closing tag.
	    {"<P>ab<BR />cd</P>more</X>after", "P", "abmore", "cd"},
	    {"<P>open text  ", "P", "open text", nullptr},
	};
	for (const Case& c : cases) {
		SCOPED_TRACE(c.text);
		Load(c.text);
		xmlTag tag;
		ASSERT_TRUE(fParser.FindTag(c.tag, tag));
		EXPECT_STREQ(tag.Name(), c.tag);
		EXPECT_STREQ(tag.Contents(), c.contents);
		ASSERT_EQ(tag.Children().Size(), c.child != nullptr ? 1 : 0);
		if (c.child != nullptr)
			ExpectTag(tag.Children().First(), "BR", c.child, 2);
	}
}


TEST_F(xmlParserTest, AttributesAndTheirKeptConsequences)
{
	Load("<A a=1 b=\"x y\" c='p q' d=last>text</A>\n<B k=1 k=2>x</B>\n"
	     "<C q=\"v\" u=one two\" k=1 k=2>x</C>\n<D e=\"\"z\">y</D>");
	xmlTag tag;
	ASSERT_TRUE(fParser.FindTag("A", tag));
	EXPECT_EQ(Field(tag, "a"), "1");
	EXPECT_EQ(Field(tag, "b"), "x y");
	EXPECT_EQ(Field(tag, "c"), "p q");
	EXPECT_EQ(Field(tag, "d"), "last");
	EXPECT_STREQ(tag.Contents(), "text");

	// A repeated attribute adds a second string.
	ASSERT_TRUE(fParser.FindTag("B", tag));
	EXPECT_EQ(Field(tag, "k", 0), "1");
	EXPECT_EQ(Field(tag, "k", 1), "2");

	ASSERT_TRUE(fParser.FindTag("C", tag));
	EXPECT_EQ(Field(tag, "q"), "v");
	// After a quoted value its quote ends later unquoted values, not a space.
	EXPECT_EQ(Field(tag, "u"), "one two");
	// With '"' in force a space no longer ends a value, and a second '='
	// only ends the name again: the value runs on to the '>'.
	EXPECT_EQ(Field(tag, "k"), "1 k2");
	EXPECT_EQ(tag.Modifiers().CountNames(B_ANY_TYPE), 3);

	ASSERT_TRUE(fParser.FindTag("D", tag));
	// A quoted value cannot be empty: the closing quote is its first character.
	EXPECT_EQ(Field(tag, "e"), "\"z");
	EXPECT_STREQ(tag.Contents(), "y");
}


TEST_F(xmlParserTest, ChildrenRememberParentLocation)
{
	Load("<P>  abcdefghijkl<B x=1>bold <I>it</I> end</B> tail<BR/>z</P>");
	xmlTag tag;
	ASSERT_TRUE(fParser.FindTag("P", tag));
	EXPECT_STREQ(tag.Contents(), "abcdefghijkl tailz");
	LinkList<xmlTag>& children = tag.Children();
	ASSERT_EQ(children.Size(), 2);

	xmlTag* bold = children.First();
	ExpectTag(bold, "B", "bold  end", 12);
	EXPECT_EQ(Field(*bold, "x"), "1");
	ASSERT_EQ(bold->Children().Size(), 1);
	ExpectTag(bold->Children().First(), "I", "it", 5);
	ExpectTag(children.Next(), "BR", "", 17);
}


TEST_F(xmlParserTest, FindTagScansForwardUntilRewind)
{
	Load("<DOC><PAGE NAME=one>1</PAGE>\n<SEC><PAGE NAME=two>2</PAGE></SEC></DOC>");
	xmlTag tag;
	ASSERT_TRUE(fParser.FindTag("PAGE", tag));
	EXPECT_EQ(Field(tag, "NAME"), "one");
	// Found at any depth, in file order.
	ASSERT_TRUE(fParser.FindTag("PAGE", tag));
	EXPECT_EQ(Field(tag, "NAME"), "two");

	EXPECT_FALSE(fParser.FindTag("PAGE", tag));
	EXPECT_TRUE(tag.Name().IsEmpty());
	EXPECT_FALSE(fParser.FindTag("DOC", tag));
	fParser.Rewind();
	EXPECT_EQ(fParser.Line(), 0);
	ASSERT_TRUE(fParser.FindTag("DOC", tag));
	EXPECT_STREQ(tag.Contents(), "");
	ASSERT_EQ(tag.Children().Size(), 2);
}


TEST_F(xmlParserTest, LongLinesAndNamesAreCutNotOverflowed)
{
	// The child's '<' is the last character of the first 1023-character
	// piece; its name continues in the next piece.
	Load("<P>" + std::string(1019, 'a') + "<B>b</B>" + std::string(1500, 'c') + "</P>");
	xmlTag tag;
	ASSERT_TRUE(fParser.FindTag("P", tag));
	EXPECT_EQ(tag.Contents().Length(), 1019 + 1500);
	EXPECT_EQ(tag.Children().Size(), 1);
	ExpectTag(tag.Children().First(), "B", "b", 1019);
	EXPECT_EQ(fParser.Line(), 3);

	std::string longName(200, 'N');
	std::string attribute(150, 'k');
	std::string value(300, 'v');
	Load("<" + longName + " " + attribute + "=\"" + value + "\">x</" + longName + ">\n<P>a<" +
	     longName + ">in</" + longName + ">b</P>");
	std::string cut(xmlParser::kNameSize - 1, 'N');
	ASSERT_TRUE(fParser.FindTag(cut.c_str(), tag));
	EXPECT_EQ(std::string(tag.Name()), cut);
	EXPECT_EQ(Field(tag, std::string(79, 'k').c_str()), std::string(79, 'v'));
	EXPECT_STREQ(tag.Contents(), "x");

	ASSERT_TRUE(fParser.FindTag("P", tag));
	EXPECT_STREQ(tag.Contents(), "ab");
	EXPECT_EQ(tag.Children().Size(), 1);
	ExpectTag(tag.Children().First(), cut.c_str(), "in", 1);
}


TEST_F(xmlParserTest, MissingFileAnswersFalseAndReopenStartsAfresh)
{
	xmlParser parser("/nonexistent/quickstep/help.file");
	EXPECT_FALSE(parser.IsValid());
	xmlTag tag;
	EXPECT_FALSE(parser.FindTag("P", tag));
	char name[xmlParser::kNameSize];
	bool hasModifiers = false;
	EXPECT_FALSE(parser.NextTag(name, hasModifiers));
	parser.Rewind();
	EXPECT_FALSE(parser.Advance());

	// Reopened, the parser starts at the new file.
	Load("<A>x<B>old</B></A>");
	ASSERT_TRUE(fParser.NextTag(name, hasModifiers));
	Load("<B>new</B>");
	EXPECT_TRUE(fParser.FindTag("B", tag));
	EXPECT_STREQ(tag.Contents(), "new");
}

} // namespace


// Nesting is kept down to kMaxDepth levels; deeper elements are read past
// without recursion, so the text after them still lands in the right element
// and a hostile file cannot exhaust the stack.
TEST_F(xmlParserTest, NestingBeyondTheBoundIsReadPastWithOneLine)
{
	const int32 bound = xmlParser::kMaxDepth;
	struct Case {
		int32 levels; // <a> elements inside the DOC element
		bool closed;
		bool reported;
	} cases[] = {
	    {bound - 1, true, false}, // the deepest a is at level kMaxDepth: all kept
	    {bound + 36, true, true},
	    {6000, false, true}, // the reproducer: never closed
	};
	for (const Case& c : cases) {
		SCOPED_TRACE(c.levels);
		std::string text = "<DOC>";
		for (int32 i = 0; i < c.levels; i++)
			text += "<a>";
		text += "x";
		if (c.closed) {
			for (int32 i = 0; i < c.levels; i++)
				text += "</a>";
			text += "tail</DOC>";
		}
		Load(text);
		xmlTag doc;
		testing::internal::CaptureStderr();
		ASSERT_TRUE(fParser.FindTag("DOC", doc));
		const std::string printed = testing::internal::GetCapturedStderr();
		EXPECT_EQ(printed.find("nested deeper than 64 levels") != std::string::npos, c.reported)
		    << printed;

		int32 depth = 1;
		xmlTag* deepest = &doc;
		while (deepest->Children().Size() == 1) {
			deepest = deepest->Children().First();
			depth++;
		}
		EXPECT_EQ(deepest->Children().Size(), 0);
		EXPECT_EQ(depth, std::min(c.levels + 1, bound));
		EXPECT_STREQ(doc.Contents(), c.closed ? "tail" : "");
		EXPECT_STREQ(deepest->Contents(), c.levels < bound ? "x" : "");
	}
}


// A child element inside a kept element may open another: the depth is
// counted per path, not per file, and a second look-up reports again.
TEST_F(xmlParserTest, DeepSiblingsAreEachCutAndLaterElementsStillFound)
{
	std::string deep;
	for (int32 i = 0; i < 100; i++)
		deep += "<b>";
	for (int32 i = 0; i < 100; i++)
		deep += "</b>";
	Load("<DOC>" + deep + "mid" + deep + "end</DOC>\n<PAGE NAME=\"p\">after</PAGE>\n");
	xmlTag doc;
	testing::internal::CaptureStderr();
	ASSERT_TRUE(fParser.FindTag("DOC", doc));
	EXPECT_NE(testing::internal::GetCapturedStderr(), "");
	EXPECT_STREQ(doc.Contents(), "midend");
	EXPECT_EQ(doc.Children().Size(), 2);
	xmlTag page;
	ASSERT_TRUE(fParser.FindTag("PAGE", page));
	EXPECT_STREQ(page.Contents(), "after");
}
