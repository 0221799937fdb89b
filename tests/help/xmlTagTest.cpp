#include "help/xmlTag.h"

#include <gtest/gtest.h>

#include "help/xmlTagModifiers.h"

namespace {

xmlTag
MakeTag(const char* name, const char* text)
{
	xmlTag tag;
	tag.SetName(name);
	for (const char* c = text; *c != '\0'; c++)
		tag.AddContent(*c);
	return tag;
}


TEST(xmlTagTest, CopiesAreDeepAndListsFindByName)
{
	xmlTag parent = MakeTag("P", "text  ");
	parent.Modifiers().AddString("k", "v");
	xmlTag child = MakeTag("B", "bold");
	child.SetParentLocation(4);
	parent.AddChild(child);
	child.SetName("changed");

	xmlTag copy(parent);
	xmlTag assigned;
	assigned = parent;
	parent.Clear();
	EXPECT_TRUE(parent.Name().IsEmpty());
	EXPECT_EQ(parent.Children().Size(), 0);
	EXPECT_TRUE(parent.Modifiers().IsEmpty());

	for (xmlTag* tag : {&copy, &assigned}) {
		EXPECT_STREQ(tag->Name(), "P");
		ASSERT_EQ(tag->Children().Size(), 1);
		EXPECT_STREQ(tag->Children().First()->Name(), "B");
		EXPECT_EQ(tag->Children().First()->ParentLocation(), 4);
		const char* value = nullptr;
		ASSERT_EQ(tag->Modifiers().FindString("k", &value), B_OK);
		EXPECT_STREQ(value, "v");
	}

	xmlTag& same = copy;
	copy = same;
	EXPECT_EQ(copy.Children().Size(), 1);
	copy.StripTrailingContent();
	EXPECT_STREQ(copy.Contents(), "text");

	// Lists find tags by name only.
	LinkList<xmlTag> tags;
	tags.Insert(new xmlTag(MakeTag("A", "one")));
	tags.Insert(new xmlTag(MakeTag("B", "two")));
	xmlTag wanted = MakeTag("B", "different text");
	xmlTag* found = tags.Get(&wanted);
	ASSERT_NE(found, nullptr);
	EXPECT_STREQ(found->Contents(), "two");
}


TEST(xmlTagTest, ModifierSetsNeverCompareEqual)
{
	xmlTagModifiers a;
	EXPECT_FALSE(a == a);
	xmlTagModifiers b(a);
	EXPECT_FALSE(a == b);

	a.AddString("k", "v");
	xmlTagModifiers& same = a;
	a = same;
	const char* value = nullptr;
	EXPECT_EQ(a.FindString("k", &value), B_OK);
	b = a;
	a.Clear();
	EXPECT_TRUE(a.IsEmpty());
	EXPECT_EQ(b.FindString("k", &value), B_OK);

	LinkList<xmlTagModifiers> list;
	list.Insert(new xmlTagModifiers(b));
	EXPECT_EQ(list.Get(&b), nullptr);
	EXPECT_EQ(list.CurrentIndex(), -1);
}

} // namespace
