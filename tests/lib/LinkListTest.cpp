#include "lib/LinkList.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// An element that counts its live instances and its destructions, so the
// tests see every element deleted exactly once.
struct Counted {
	Counted() { sLive++; }
	explicit Counted(int value) : fValue(value) { sLive++; }
	Counted(const Counted& other) : fValue(other.fValue) { sLive++; }
	virtual ~Counted()
	{
		sLive--;
		sDestroyed++;
	}
	Counted& operator=(const Counted& other) = default;
	bool operator==(const Counted& other) const { return fValue == other.fValue; }

	int fValue = 0;
	static int sLive, sDestroyed;
};

int Counted::sLive = 0;
int Counted::sDestroyed = 0;

using Values = std::vector<int>;

class LinkListTest : public testing::Test
{
protected:
	void SetUp() override { Counted::sLive = Counted::sDestroyed = 0; }
	void TearDown() override { EXPECT_EQ(Counted::sLive, 0); }

	static void Fill(LinkList<Counted>& list, int count)
	{
		for (int i = 0; i < count; i++)
			list.Insert(new Counted(i));
	}

	// The values read forwards through the cursor and backwards by index
	// (Position from the tail), so a broken link either way shows.
	static void ExpectValues(LinkList<Counted>& list, const Values& expected)
	{
		Values forwards;
		for (Counted* c = list.First(); c != nullptr; c = list.Next())
			forwards.push_back(c->fValue);
		EXPECT_EQ(forwards, expected);
		Values backwards;
		for (long i = list.Size() - 1; i >= 0; i--)
			backwards.insert(backwards.begin(), list.Get(i)->fValue);
		EXPECT_EQ(backwards, expected);
	}
};


TEST_F(LinkListTest, EmptyListAndMissingCursorChangeNothing)
{
	LinkList<Counted> list;
	EXPECT_EQ(list.CurrentIndex(), -1);
	EXPECT_EQ(list.Get(0L), nullptr);
	EXPECT_EQ(list.Position(0), nullptr);
	EXPECT_EQ(list.First(), nullptr);
	EXPECT_EQ(list.Next(), nullptr);
	EXPECT_FALSE(list.Remove());

	Fill(list, 3);
	Counted missing(42);
	EXPECT_EQ(list.Get(&missing), nullptr);
	EXPECT_EQ(list.CurrentIndex(), -1);
	EXPECT_FALSE(list.Remove());
	EXPECT_EQ(list.Size(), 3);
	EXPECT_EQ(Counted::sDestroyed, 0);
}


TEST_F(LinkListTest, InsertAppendsWithoutMovingCursorGetMovesIt)
{
	LinkList<Counted> list;
	Fill(list, 3);
	list.Get(1L);
	list.Insert(new Counted(7));
	EXPECT_EQ(list.CurrentIndex(), 1);
	EXPECT_EQ(list.Next()->fValue, 2);
	ExpectValues(list, {0, 1, 2, 7});

	// Get by element finds an equal one and moves the cursor to it.
	Counted wanted(2);
	Counted* found = list.Get(&wanted);
	ASSERT_NE(found, nullptr);
	EXPECT_NE(found, &wanted);
	EXPECT_EQ(list.CurrentIndex(), 2);
	EXPECT_EQ(list.Next()->fValue, 7);
}


TEST_F(LinkListTest, PositionClampsAndReachesEveryIndexFromEveryStart)
{
	const int count = 9;
	LinkList<Counted> list;
	Fill(list, count);
	EXPECT_EQ(list.Position(-5)->fData->fValue, 0);
	EXPECT_EQ(list.CurrentIndex(), 0);
	EXPECT_EQ(list.Get(100L)->fValue, count - 1);
	EXPECT_EQ(list.CurrentIndex(), count - 1);

	// Each start and target pair covers the three walks: from the cursor
	// both ways, from the tail and from the head.
	for (int start = -1; start < count; start++) {
		for (int target = 0; target < count; target++) {
			SCOPED_TRACE(testing::Message() << start << " to " << target);
			Counted missing(-1);
			if (start < 0)
				list.Get(&missing);
			else
				list.Position(start);
			ListNode<Counted>* node = list.Position(target);
			ASSERT_NE(node, nullptr);
			EXPECT_EQ(node->fData->fValue, target);
			EXPECT_EQ(list.CurrentIndex(), target);
			// The cursor must really rest there: Next goes on from it.
			Counted* next = list.Next();
			EXPECT_EQ(next != nullptr ? next->fValue : count, target + 1);
		}
	}
}


TEST_F(LinkListTest, RemoveMovesCursorToNewHeadOrStepsBack)
{
	LinkList<Counted> list;
	Fill(list, 5);
	list.First();
	EXPECT_TRUE(list.Remove());
	EXPECT_EQ(list.CurrentIndex(), 0);
	EXPECT_EQ(list.Position(0)->fData->fValue, 1);
	EXPECT_EQ(Counted::sDestroyed, 1);

	list.Get(2L);
	EXPECT_TRUE(list.Remove());
	EXPECT_EQ(list.CurrentIndex(), 1);
	EXPECT_EQ(list.Next()->fValue, 4);

	list.Get(2L);
	EXPECT_TRUE(list.Remove());
	EXPECT_EQ(list.CurrentIndex(), 1);
	EXPECT_EQ(list.Next(), nullptr);
	// The tail must now be the former second node.
	list.Insert(new Counted(9));
	ExpectValues(list, {1, 2, 9});
}


TEST_F(LinkListTest, InsertBeforeTakesTheCursorIndex)
{
	LinkList<Counted> list;
	EXPECT_TRUE(list.InsertBefore(new Counted(5), 0));
	EXPECT_TRUE(list.InsertBefore(new Counted(4), 0));
	EXPECT_EQ(list.CurrentIndex(), 0);
	EXPECT_EQ(list.Next()->fValue, 5);
	ExpectValues(list, {4, 5});

	list.Insert(new Counted(6));
	EXPECT_TRUE(list.InsertBefore(new Counted(8), 2));
	EXPECT_EQ(list.CurrentIndex(), 2);
	EXPECT_EQ(list.Position(2)->fData->fValue, 8);
	ExpectValues(list, {4, 5, 8, 6});

	Counted refused(1);
	LinkList<Counted> empty;
	EXPECT_FALSE(empty.InsertBefore(&refused, 3));
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

	ExpectValues(copy, {-1, 0, 1, 2});
	// Deep copy: the elements are new objects.
	EXPECT_NE(copy.Get(1L), source.Get(0L));
	EXPECT_EQ(Counted::sLive, 7);

	// Into itself: the elements are doubled once.
	source.Insert(source);
	ExpectValues(source, {0, 1, 2, 0, 1, 2});
}


TEST_F(LinkListTest, AssignmentCopiesDeeplyAndSurvivesSelf)
{
	LinkList<Counted> a;
	Fill(a, 3);
	LinkList<Counted> b;
	Fill(b, 5);
	b = a;
	EXPECT_EQ(Counted::sDestroyed, 5);
	b.Get(0L)->fValue = 100;
	EXPECT_EQ(a.Get(0L)->fValue, 0);

	LinkList<Counted>& same = b;
	b = same;
	ExpectValues(b, {100, 1, 2});
	EXPECT_EQ(Counted::sLive, 6);

	LinkList<Counted> c(a);
	ExpectValues(c, {0, 1, 2});
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
	ExpectValues(list, {0, 1, 5});

	EXPECT_TRUE(list.Remove(0, 0));
	EXPECT_EQ(list.CurrentIndex(), 0);
	// A stretch running past the tail stops there.
	EXPECT_TRUE(list.Remove(1, 10));
	ExpectValues(list, {1});
	EXPECT_FALSE(list.Remove(5, 6));
	EXPECT_EQ(list.Size(), 1);
}


// A derived list overrides only the destructor; Clear through the base
// must still reach every element.
class CountedList : public LinkList<Counted>
{
public:
	~CountedList() override {}
};

TEST_F(LinkListTest, ClearAndDestructionDeleteEveryElementOnce)
{
	LinkList<Counted>* list = new CountedList;
	Fill(*list, 4);
	list->Get(2L);
	list->Clear();
	EXPECT_EQ(Counted::sDestroyed, 4);
	EXPECT_EQ(list->Size(), 0);
	EXPECT_EQ(list->CurrentIndex(), 0);
	EXPECT_EQ(list->First(), nullptr);
	EXPECT_FALSE(list->Remove());

	Fill(*list, 2);
	ExpectValues(*list, {0, 1});
	delete list;
	EXPECT_EQ(Counted::sDestroyed, 6);
}

} // namespace
