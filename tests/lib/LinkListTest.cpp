#include "lib/LinkList.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// An element that counts its live instances and its destructions, so the
// tests see every element deleted exactly once.
class Counted
{
public:
	Counted() : fValue(0) { sLive++; }
	explicit Counted(int value) : fValue(value) { sLive++; }
	Counted(const Counted& other) : fValue(other.fValue) { sLive++; }
	virtual ~Counted()
	{
		sLive--;
		sDestroyed++;
	}
	Counted& operator=(const Counted& other)
	{
		fValue = other.fValue;
		return *this;
	}
	bool operator==(const Counted& other) const { return fValue == other.fValue; }

	int fValue;
	static int sLive;
	static int sDestroyed;
};

int Counted::sLive = 0;
int Counted::sDestroyed = 0;


class LinkListTest : public testing::Test
{
protected:
	void SetUp() override
	{
		Counted::sLive = 0;
		Counted::sDestroyed = 0;
	}
	void TearDown() override { EXPECT_EQ(Counted::sLive, 0); }

	static void Fill(LinkList<Counted>& list, int count)
	{
		for (int i = 0; i < count; i++)
			list.Insert(new Counted(i));
	}

	// The values in list order, read through the cursor.
	static std::vector<int> Values(LinkList<Counted>& list)
	{
		std::vector<int> values;
		for (Counted* c = list.First(); c != nullptr; c = list.Next())
			values.push_back(c->fValue);
		return values;
	}

	// The values read backwards by index, which exercises Position from
	// the tail and from the cursor.
	static std::vector<int> ValuesBackwards(LinkList<Counted>& list)
	{
		std::vector<int> values;
		for (long i = list.Size() - 1; i >= 0; i--)
			values.insert(values.begin(), list.Get(i)->fValue);
		return values;
	}
};


TEST_F(LinkListTest, EmptyListAnswersNull)
{
	LinkList<Counted> list;
	EXPECT_EQ(list.CurrentIndex(), -1);
	EXPECT_EQ(list.Get(0L), nullptr);
	EXPECT_EQ(list.Position(0), nullptr);
	EXPECT_EQ(list.First(), nullptr);
	EXPECT_EQ(list.Next(), nullptr);
	EXPECT_FALSE(list.Remove());
}


TEST_F(LinkListTest, InsertAppendsWithoutMovingCursor)
{
	LinkList<Counted> list;
	Fill(list, 3);
	list.Get(1L);
	list.Insert(new Counted(7));
	EXPECT_EQ(list.CurrentIndex(), 1);
	EXPECT_EQ(list.Position(1)->fData->fValue, 1);
	EXPECT_EQ(Values(list), (std::vector<int>{0, 1, 2, 7}));
	EXPECT_EQ(list.Size(), 4);
}


TEST_F(LinkListTest, PositionClampsIntoList)
{
	LinkList<Counted> list;
	Fill(list, 5);
	EXPECT_EQ(list.Position(-5)->fData->fValue, 0);
	EXPECT_EQ(list.CurrentIndex(), 0);
	EXPECT_EQ(list.Position(5 + 3)->fData->fValue, 4);
	EXPECT_EQ(list.CurrentIndex(), 4);
	EXPECT_EQ(list.Get(100L)->fValue, 4);
}


TEST_F(LinkListTest, PositionReachesEveryIndexFromEveryStart)
{
	// Each start and target pair covers the three walks: from the cursor
	// both ways, from the tail and from the head.
	const int count = 9;
	LinkList<Counted> list;
	Fill(list, count);
	for (int start = -1; start < count; start++) {
		for (int target = 0; target < count; target++) {
			if (start < 0) {
				Counted missing(-1);
				list.Get(&missing);
			} else {
				list.Position(start);
			}
			ListNode<Counted>* node = list.Position(target);
			ASSERT_NE(node, nullptr);
			EXPECT_EQ(node->fData->fValue, target) << "from " << start;
			EXPECT_EQ(list.CurrentIndex(), target);
			// The cursor must really rest there: Next goes on from it.
			Counted* next = list.Next();
			if (target + 1 < count) {
				ASSERT_NE(next, nullptr);
				EXPECT_EQ(next->fValue, target + 1);
			} else {
				EXPECT_EQ(next, nullptr);
			}
		}
	}
}


TEST_F(LinkListTest, RemoveAtHeadMovesCursorToNewHead)
{
	LinkList<Counted> list;
	Fill(list, 3);
	list.First();
	EXPECT_TRUE(list.Remove());
	EXPECT_EQ(list.CurrentIndex(), 0);
	EXPECT_EQ(list.Position(0)->fData->fValue, 1);
	EXPECT_EQ(Counted::sDestroyed, 1);
	EXPECT_EQ(Values(list), (std::vector<int>{1, 2}));
	EXPECT_EQ(ValuesBackwards(list), (std::vector<int>{1, 2}));
}


TEST_F(LinkListTest, RemoveInsideAndAtTailStepsBack)
{
	LinkList<Counted> list;
	Fill(list, 4);
	list.Get(2L);
	EXPECT_TRUE(list.Remove());
	EXPECT_EQ(list.CurrentIndex(), 1);
	EXPECT_EQ(list.Next()->fValue, 3);

	list.Get(2L);
	EXPECT_TRUE(list.Remove());
	EXPECT_EQ(list.CurrentIndex(), 1);
	EXPECT_EQ(list.Next(), nullptr);
	// The tail must now be the former second node.
	list.Insert(new Counted(9));
	EXPECT_EQ(Values(list), (std::vector<int>{0, 1, 9}));
	EXPECT_EQ(ValuesBackwards(list), (std::vector<int>{0, 1, 9}));
}


TEST_F(LinkListTest, RemoveWithoutCursorChangesNothing)
{
	LinkList<Counted> list;
	Fill(list, 3);
	Counted missing(42);
	EXPECT_EQ(list.Get(&missing), nullptr);
	EXPECT_EQ(list.CurrentIndex(), -1);
	EXPECT_FALSE(list.Remove());
	EXPECT_EQ(list.Size(), 3);
	EXPECT_EQ(Counted::sDestroyed, 0);

	list.Clear();
	EXPECT_FALSE(list.Remove());
	EXPECT_EQ(list.Size(), 0);
}


TEST_F(LinkListTest, GetByElementMovesCursor)
{
	LinkList<Counted> list;
	Fill(list, 4);
	Counted wanted(2);
	Counted* found = list.Get(&wanted);
	ASSERT_NE(found, nullptr);
	EXPECT_NE(found, &wanted);
	EXPECT_EQ(found->fValue, 2);
	EXPECT_EQ(list.CurrentIndex(), 2);
	EXPECT_EQ(list.Next()->fValue, 3);
}


TEST_F(LinkListTest, InsertBeforeOnEmptyAndAtHead)
{
	LinkList<Counted> list;
	EXPECT_TRUE(list.InsertBefore(new Counted(5), 0));
	EXPECT_EQ(list.Size(), 1);

	EXPECT_TRUE(list.InsertBefore(new Counted(4), 0));
	EXPECT_EQ(list.CurrentIndex(), 0);
	EXPECT_EQ(list.Next()->fValue, 5);
	EXPECT_EQ(Values(list), (std::vector<int>{4, 5}));
	EXPECT_EQ(ValuesBackwards(list), (std::vector<int>{4, 5}));

	Counted* refused = new Counted(1);
	LinkList<Counted> empty;
	EXPECT_FALSE(empty.InsertBefore(refused, 3));
	delete refused;
}


TEST_F(LinkListTest, InsertBeforeInsideTakesCursorIndex)
{
	LinkList<Counted> list;
	Fill(list, 3);
	EXPECT_TRUE(list.InsertBefore(new Counted(8), 2));
	EXPECT_EQ(list.CurrentIndex(), 2);
	EXPECT_EQ(list.Position(2)->fData->fValue, 8);
	EXPECT_EQ(Values(list), (std::vector<int>{0, 1, 8, 2}));
	EXPECT_EQ(ValuesBackwards(list), (std::vector<int>{0, 1, 8, 2}));
}


TEST_F(LinkListTest, CopyInsertLeavesSourceCursorPastEnd)
{
	LinkList<Counted> source;
	Fill(source, 3);
	LinkList<Counted> copy;
	copy.Insert(new Counted(-1));
	EXPECT_FALSE(copy.Insert(source));
	EXPECT_EQ(source.CurrentIndex(), 3);
	EXPECT_EQ(source.Next(), nullptr);
	EXPECT_EQ(source.CurrentIndex(), 3);

	EXPECT_EQ(Values(copy), (std::vector<int>{-1, 0, 1, 2}));
	// Deep copy: the elements are new objects.
	EXPECT_NE(copy.Get(1L), source.Get(0L));
	EXPECT_EQ(Counted::sLive, 7);
}


TEST_F(LinkListTest, AssignmentCopiesDeeplyAndSurvivesSelf)
{
	LinkList<Counted> a;
	Fill(a, 3);
	LinkList<Counted> b;
	Fill(b, 5);
	b = a;
	EXPECT_EQ(Counted::sDestroyed, 5);
	EXPECT_EQ(Values(b), (std::vector<int>{0, 1, 2}));

	b.Get(0L)->fValue = 100;
	EXPECT_EQ(a.Get(0L)->fValue, 0);

	LinkList<Counted>& same = b;
	b = same;
	EXPECT_EQ(Values(b), (std::vector<int>{100, 1, 2}));
	EXPECT_EQ(Counted::sLive, 6);

	LinkList<Counted> c(a);
	EXPECT_EQ(Values(c), (std::vector<int>{0, 1, 2}));
}


TEST_F(LinkListTest, CopyInsertIntoItselfDoublesOnce)
{
	LinkList<Counted> list;
	Fill(list, 2);
	list.Insert(list);
	EXPECT_EQ(Values(list), (std::vector<int>{0, 1, 0, 1}));
}


TEST_F(LinkListTest, RemoveRangeLeavesCursorBeforeStretch)
{
	LinkList<Counted> list;
	Fill(list, 6);
	EXPECT_FALSE(list.Remove(3, 2));
	EXPECT_EQ(list.Size(), 6);

	EXPECT_TRUE(list.Remove(2, 4));
	EXPECT_EQ(Counted::sDestroyed, 3);
	EXPECT_EQ(list.CurrentIndex(), 1);
	EXPECT_EQ(list.Next()->fValue, 5);
	EXPECT_EQ(Values(list), (std::vector<int>{0, 1, 5}));
	EXPECT_EQ(ValuesBackwards(list), (std::vector<int>{0, 1, 5}));

	EXPECT_TRUE(list.Remove(0, 0));
	EXPECT_EQ(list.CurrentIndex(), 0);
	EXPECT_EQ(Values(list), (std::vector<int>{1, 5}));

	// A stretch running past the tail stops there.
	EXPECT_TRUE(list.Remove(1, 10));
	EXPECT_EQ(Values(list), (std::vector<int>{1}));
	EXPECT_FALSE(list.Remove(5, 6));
	EXPECT_EQ(list.Size(), 1);
}


TEST_F(LinkListTest, ClearDeletesEveryElementOnce)
{
	{
		LinkList<Counted> list;
		Fill(list, 4);
		list.Get(2L);
		list.Clear();
		EXPECT_EQ(Counted::sDestroyed, 4);
		EXPECT_EQ(list.Size(), 0);
		EXPECT_EQ(list.CurrentIndex(), 0);
		EXPECT_EQ(list.First(), nullptr);

		Fill(list, 2);
		EXPECT_EQ(Values(list), (std::vector<int>{0, 1}));
	}
	EXPECT_EQ(Counted::sDestroyed, 6);
}


// A derived list overrides only the destructor; Clear through the base
// must still reach every element.
class CountedList : public LinkList<Counted>
{
public:
	~CountedList() override {}
};

TEST_F(LinkListTest, DerivedListDestroysThroughBase)
{
	LinkList<Counted>* list = new CountedList;
	Fill(*list, 3);
	delete list;
	EXPECT_EQ(Counted::sDestroyed, 3);
}

} // namespace
