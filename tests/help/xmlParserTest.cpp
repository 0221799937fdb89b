#include "help/xmlParser.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
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
	void TearDown() override
	{
		if (!fPath.empty())
			unlink(fPath.c_str());
	}

	// Writes text to a fresh temporary file and opens the parser on it.
	void Load(const std::string& text)
	{
		if (fPath.empty()) {
			std::string pattern = testing::TempDir() + "xmlParserTestXXXXXX";
			int fd = mkstemp(&pattern[0]);
			ASSERT_GE(fd, 0);
			close(fd);
			fPath = pattern;
		}
		FILE* file = fopen(fPath.c_str(), "w");
		ASSERT_NE(file, nullptr);
		fwrite(text.data(), 1, text.size(), file);
		fclose(file);
		ASSERT_TRUE(fParser.Open(fPath.c_str()));
	}

	static std::string Field(const xmlTag& tag, const char* name, int32 index = 0)
	{
		const char* value = nullptr;
		if (tag.Modifiers().FindString(name, index, &value) != B_OK)
			return "<missing>";
		return value;
	}

	std::string fPath;
	ProbeParser fParser;
};


TEST_F(xmlParserTest, AdvanceJoinsLinesAndSkipsEmptyOnes)
{
	Load("ab\n\n\ncd\n");
	std::string seen;
	std::string lookaheads;
	while (fParser.Advance()) {
		seen += fParser.At();
		lookaheads += fParser.Lookahead() != '\0' ? fParser.Lookahead() : '.';
	}
	EXPECT_EQ(seen, "abcd");
	// A line end is no character: the lookahead at a line's last character is empty.
	EXPECT_EQ(lookaheads, "b.d.");
	EXPECT_EQ(fParser.Line(), 4);
	EXPECT_FALSE(fParser.Advance());
}


TEST_F(xmlParserTest, LongLinesArriveInPieces)
{
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
	ASSERT_TRUE(fParser.NextTag(name, hasModifiers));
	// Only the single "!" is skipped, not a comment's "!--".
	EXPECT_STREQ(name, "!--");
	EXPECT_TRUE(hasModifiers);
	ASSERT_TRUE(fParser.NextTag(name, hasModifiers));
	EXPECT_STREQ(name, "PAGE");
	EXPECT_TRUE(hasModifiers);
	EXPECT_EQ(fParser.At(), ' ');
	ASSERT_TRUE(fParser.NextTag(name, hasModifiers));
	EXPECT_STREQ(name, "/PAGE");
	EXPECT_FALSE(hasModifiers);
	EXPECT_EQ(fParser.At(), '>');
	ASSERT_TRUE(fParser.NextTag(name, hasModifiers));
	EXPECT_STREQ(name, "BR/");
	ASSERT_TRUE(fParser.NextTag(name, hasModifiers));
	EXPECT_STREQ(name, "END");
	EXPECT_FALSE(fParser.NextTag(name, hasModifiers));
	EXPECT_STREQ(name, "");
}


TEST_F(xmlParserTest, DerivedParserChoosesTagsToSkip)
{
	class CommentParser : public xmlParser
	{
	public:
		bool SkipTag(const char* name) override
		{
			return xmlParser::SkipTag(name) || strcmp(name, "!--") == 0;
		}
	};
	Load("<?xml version=\"1.0\"?><!-- c --><A>x</A>");
	CommentParser parser;
	ASSERT_TRUE(parser.Open(fPath.c_str()));
	char name[xmlParser::kNameSize];
	bool hasModifiers = false;
	ASSERT_TRUE(parser.NextTag(name, hasModifiers));
	EXPECT_STREQ(name, "A");
}


TEST_F(xmlParserTest, ContentJoinsLinesAndTrimsSpaces)
{
	Load("<?xml version=\"1.0\"?>\n<P>Hello\nworld</P>\n<Q>   \tone  two\n  three   </Q>");
	xmlTag tag;
	ASSERT_TRUE(fParser.FindTag("P", tag));
	EXPECT_STREQ(tag.Name(), "P");
	EXPECT_STREQ(tag.Contents(), "Helloworld");
	ASSERT_TRUE(fParser.FindTag("Q", tag));
	EXPECT_STREQ(tag.Contents(), "one  two  three");
}


TEST_F(xmlParserTest, AttributesQuotedAndUnquoted)
{
	Load("<A a=1 b=\"x y\" c='p q' d=last>text</A>");
	xmlTag tag;
	ASSERT_TRUE(fParser.FindTag("A", tag));
	EXPECT_EQ(Field(tag, "a"), "1");
	EXPECT_EQ(Field(tag, "b"), "x y");
	EXPECT_EQ(Field(tag, "c"), "p q");
	EXPECT_EQ(Field(tag, "d"), "last");
	EXPECT_STREQ(tag.Contents(), "text");
}


TEST_F(xmlParserTest, AttributeConsequencesKeptAsWritten)
{
	Load("<A q=\"v\" u=one two\" k=1 k=2>x</A>\n<B e=\"\"z\">y</B>");
	xmlTag tag;
	ASSERT_TRUE(fParser.FindTag("A", tag));
	EXPECT_EQ(Field(tag, "q"), "v");
	// After a quoted value its quote ends later unquoted values, not a space.
	EXPECT_EQ(Field(tag, "u"), "one two");
	// With '"' in force a space no longer ends a value, and a second '='
	// only ends the name again: the value runs on to the '>'.
	EXPECT_EQ(Field(tag, "k"), "1 k2");
	EXPECT_EQ(tag.Modifiers().CountNames(B_ANY_TYPE), 3);

	ASSERT_TRUE(fParser.FindTag("B", tag));
	// A quoted value cannot be empty: the closing quote is its first character.
	EXPECT_EQ(Field(tag, "e"), "\"z");
	EXPECT_STREQ(tag.Contents(), "y");
}


TEST_F(xmlParserTest, RepeatedAttributeAddsSecondString)
{
	Load("<A k=1 k=2>x</A>");
	xmlTag tag;
	ASSERT_TRUE(fParser.FindTag("A", tag));
	EXPECT_EQ(Field(tag, "k", 0), "1");
	EXPECT_EQ(Field(tag, "k", 1), "2");
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
	EXPECT_STREQ(bold->Name(), "B");
	EXPECT_EQ(bold->ParentLocation(), 12);
	EXPECT_STREQ(bold->Contents(), "bold  end");
	EXPECT_EQ(Field(*bold, "x"), "1");
	ASSERT_EQ(bold->Children().Size(), 1);
	xmlTag* italic = bold->Children().First();
	EXPECT_STREQ(italic->Name(), "I");
	EXPECT_STREQ(italic->Contents(), "it");
	EXPECT_EQ(italic->ParentLocation(), 5);

	xmlTag* brk = children.Next();
	EXPECT_STREQ(brk->Name(), "BR");
	EXPECT_EQ(brk->ParentLocation(), 17);
	EXPECT_TRUE(brk->Contents().IsEmpty());
}


TEST_F(xmlParserTest, EmptyElementWithSpaceRunsToNextClosingTag)
{
	Load("<P>ab<BR />cd</P>more</X>after");
	xmlTag tag;
	ASSERT_TRUE(fParser.FindTag("P", tag));
	EXPECT_STREQ(tag.Contents(), "abmore");
	ASSERT_EQ(tag.Children().Size(), 1);
	xmlTag* child = tag.Children().First();
	EXPECT_STREQ(child->Name(), "BR");
	EXPECT_STREQ(child->Contents(), "cd");
	EXPECT_EQ(child->ParentLocation(), 2);
}


TEST_F(xmlParserTest, WrongClosingTagStillCloses)
{
	Load("<P>text</Q> after</P><P>second</P>");
	xmlTag tag;
	ASSERT_TRUE(fParser.FindTag("P", tag));
	EXPECT_STREQ(tag.Contents(), "text");
	ASSERT_TRUE(fParser.FindTag("P", tag));
	EXPECT_STREQ(tag.Contents(), "second");
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
	EXPECT_STREQ(tag.Contents(), "2");

	EXPECT_FALSE(fParser.FindTag("PAGE", tag));
	EXPECT_TRUE(tag.Name().IsEmpty());
	EXPECT_FALSE(fParser.FindTag("DOC", tag));
	fParser.Rewind();
	EXPECT_EQ(fParser.Line(), 0);
	ASSERT_TRUE(fParser.FindTag("DOC", tag));
	EXPECT_STREQ(tag.Contents(), "");
	ASSERT_EQ(tag.Children().Size(), 2);
}


TEST_F(xmlParserTest, UnterminatedElementEndsAtEndOfInput)
{
	Load("<P>open text  ");
	xmlTag tag;
	ASSERT_TRUE(fParser.FindTag("P", tag));
	EXPECT_STREQ(tag.Contents(), "open text");
}


TEST_F(xmlParserTest, LongLineKeepsContentAndTags)
{
	// The child's '<' is the last character of the first 1023-character
	// piece; its name continues in the next piece.
	std::string text =
	    "<P>" + std::string(1019, 'a') + "<B>b</B>" + std::string(1500, 'c') + "</P>";
	Load(text);
	xmlTag tag;
	ASSERT_TRUE(fParser.FindTag("P", tag));
	EXPECT_EQ(tag.Contents().Length(), 1019 + 1500);
	ASSERT_EQ(tag.Children().Size(), 1);
	EXPECT_STREQ(tag.Children().First()->Name(), "B");
	EXPECT_STREQ(tag.Children().First()->Contents(), "b");
	EXPECT_EQ(tag.Children().First()->ParentLocation(), 1019);
	EXPECT_EQ(fParser.Line(), 3);
}


TEST_F(xmlParserTest, LongNamesAreCutNotOverflowed)
{
	std::string longName(200, 'N');
	std::string attribute(150, 'k');
	std::string value(300, 'v');
	Load("<" + longName + " " + attribute + "=\"" + value + "\">x</" + longName + ">\n<P>a<" +
	     longName + ">in</" + longName + ">b</P>");
	std::string cut(xmlParser::kNameSize - 1, 'N');
	xmlTag tag;
	ASSERT_TRUE(fParser.FindTag(cut.c_str(), tag));
	EXPECT_EQ(std::string(tag.Name()), cut);
	EXPECT_EQ(Field(tag, std::string(79, 'k').c_str()), std::string(79, 'v'));
	EXPECT_STREQ(tag.Contents(), "x");

	ASSERT_TRUE(fParser.FindTag("P", tag));
	EXPECT_STREQ(tag.Contents(), "ab");
	ASSERT_EQ(tag.Children().Size(), 1);
	EXPECT_EQ(std::string(tag.Children().First()->Name()), cut);
	EXPECT_STREQ(tag.Children().First()->Contents(), "in");
}


TEST_F(xmlParserTest, MissingFileAnswersFalseEverywhere)
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
}


TEST_F(xmlParserTest, ReopenStartsAtTheNewFile)
{
	Load("<A>x<B>old</B></A>");
	char name[xmlParser::kNameSize];
	bool hasModifiers = false;
	ASSERT_TRUE(fParser.NextTag(name, hasModifiers));
	Load("<B>new</B>");
	xmlTag tag;
	EXPECT_TRUE(fParser.FindTag("B", tag));
	EXPECT_STREQ(tag.Contents(), "new");
}


TEST_F(xmlParserTest, PrintToStreamShowsWhereItStands)
{
	Load("abc\n");
	fParser.Advance();
	fParser.Advance();
	testing::internal::CaptureStderr();
	fParser.PrintToStream();
	EXPECT_EQ(testing::internal::GetCapturedStderr(),
	          "xmlParser: line 1, column 1\nbuffer <abc>\n");
}

} // namespace
