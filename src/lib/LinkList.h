// The program's one container: a doubly linked list of owned heap elements
// with a built-in cursor through which every iteration is done.
#ifndef LINK_LIST_H
#define LINK_LIST_H

#include <new>

#include <SupportDefs.h>

#include "lib/ListNode.h"

// The list owns its elements: Remove() and Clear() delete them through their
// virtual destructors. The element type needs a default constructor and
// assignment (for copies) and operator== (for Get by element).
//
// The cursor belongs to the list, so a nested iteration over the same list or
// a Get() inside a loop moves the loop's position. Copying a list walks the
// source with the source's own cursor and leaves it past the end (no current
// node, current index equal to the count); call First() before iterating it.
template <class T> class LinkList
{
public:
	LinkList();
	LinkList(const LinkList& other);
	virtual ~LinkList();

	LinkList& operator=(const LinkList& other);

	bool Insert(T* element);
	bool InsertBefore(T* element, long index);
	bool Insert(LinkList& other);

	ListNode<T>* Position(long index);
	T* Get(long index);
	T* Get(const T* element);
	T* First();
	T* Next();

	bool Remove();
	bool Remove(long first, long last);
	virtual void Clear();
	virtual int32 Size() const;

	int32 CurrentIndex() const { return fCurrentIndex; }

protected:
	ListNode<T>* fHead;
	ListNode<T>* fTail;
	// The cursor may be moved by a copy from a list the caller holds as const.
	mutable ListNode<T>* fCurrent;
	int32 fCount;
	mutable int32 fCurrentIndex;
	// Kept for the record layout; no operation uses it.
	int32 fSpareIndex;

private:
	void RemoveAll();
};


template <class T>
LinkList<T>::LinkList()
    : fHead(nullptr), fTail(nullptr), fCurrent(nullptr), fCount(0), fCurrentIndex(-1),
      fSpareIndex(-1)
{
}


template <class T> LinkList<T>::LinkList(const LinkList& other) : LinkList()
{
	Insert(const_cast<LinkList&>(other));
}


template <class T> LinkList<T>::~LinkList()
{
	RemoveAll();
}


template <class T>
LinkList<T>&
LinkList<T>::operator=(const LinkList& other)
{
	if (&other != this) {
		Clear();
		// Only the source's cursor (mutable) is moved by the copy.
		Insert(const_cast<LinkList&>(other));
	}
	return *this;
}


template <class T>
bool
LinkList<T>::Insert(T* element)
{
	ListNode<T>* node = new (std::nothrow) ListNode<T>(element);
	if (node == nullptr)
		return false;

	if (fTail == nullptr) {
		fHead = fTail = node;
	} else {
		node->fPrev = fTail;
		fTail->fNext = node;
		fTail = node;
	}
	fCount++;
	return true;
}


template <class T>
bool
LinkList<T>::InsertBefore(T* element, long index)
{
	if (fCount == 0 && index == 0)
		return Insert(element);

	ListNode<T>* at = Position(index);
	if (at == nullptr)
		return false;

	ListNode<T>* node = new (std::nothrow) ListNode<T>(element);
	if (node == nullptr)
		return false;

	node->fPrev = at->fPrev;
	node->fNext = at;
	if (at->fPrev != nullptr)
		at->fPrev->fNext = node;
	else
		fHead = node;
	at->fPrev = node;
	fCount++;

	// The new node takes the index the cursor had.
	fCurrent = node;
	return true;
}


// Appends a copy of every element of other. The answer is always false;
// callers do not look at it.
template <class T>
bool
LinkList<T>::Insert(LinkList& other)
{
	// Bounded by the source's size so that copying a list into itself ends.
	int32 remaining = other.fCount;
	for (T* element = other.First(); element != nullptr && remaining > 0;
	     element = other.Next(), remaining--) {
		T* copy = new (std::nothrow) T;
		if (copy == nullptr)
			continue;
		*copy = *element;
		if (!Insert(copy))
			delete copy;
	}
	if (&other == this) {
		fCurrent = nullptr;
		fCurrentIndex = fCount;
	}
	return false;
}


// Moves the cursor to index, clamped into the list, by the shortest of three
// walks: from the cursor, backwards from the tail, or from the head.
template <class T>
ListNode<T>*
LinkList<T>::Position(long index)
{
	if (fCount == 0)
		return nullptr;

	if (index < 0)
		index = 0;
	if (index > fCount - 1)
		index = fCount - 1;

	long fromCurrent = index - fCurrentIndex;
	if (fromCurrent < 0)
		fromCurrent = -fromCurrent;

	if (fCurrent != nullptr && fromCurrent < index) {
		while (fCurrentIndex < index) {
			fCurrent = fCurrent->fNext;
			fCurrentIndex++;
		}
		while (fCurrentIndex > index) {
			fCurrent = fCurrent->fPrev;
			fCurrentIndex--;
		}
	} else if (fCount - index < index) {
		fCurrent = fTail;
		for (long i = fCount - 1; i > index; i--)
			fCurrent = fCurrent->fPrev;
	} else {
		fCurrent = fHead;
		for (long i = 0; i < index; i++)
			fCurrent = fCurrent->fNext;
	}
	fCurrentIndex = static_cast<int32>(index);
	return fCurrent;
}


template <class T>
T*
LinkList<T>::Get(long index)
{
	ListNode<T>* node = Position(index);
	return node != nullptr ? node->fData : nullptr;
}


// Searches from the head with the element type's operator==. On a match the
// cursor rests on it; on a miss there is no cursor and the index is -1.
template <class T>
T*
LinkList<T>::Get(const T* element)
{
	int32 index = 0;
	for (ListNode<T>* node = fHead; node != nullptr; node = node->fNext, index++) {
		if (element != nullptr && node->fData != nullptr && *node->fData == *element) {
			fCurrent = node;
			fCurrentIndex = index;
			return node->fData;
		}
	}
	fCurrent = nullptr;
	fCurrentIndex = -1;
	return nullptr;
}


template <class T>
T*
LinkList<T>::First()
{
	fCurrent = fHead;
	fCurrentIndex = 0;
	return fHead != nullptr ? fHead->fData : nullptr;
}


template <class T>
T*
LinkList<T>::Next()
{
	// Callers must not step without a cursor; answering the end here only
	// keeps a wrong call from crashing, and leaves the list as it was.
	if (fCurrent == nullptr)
		return nullptr;

	fCurrent = fCurrent->fNext;
	fCurrentIndex++;
	return fCurrent != nullptr ? fCurrent->fData : nullptr;
}


// Deletes the cursor's element and node. The cursor steps back to the
// previous node; when the head goes, it rests on the new head at index 0.
template <class T>
bool
LinkList<T>::Remove()
{
	ListNode<T>* node = fCurrent;
	if (node == nullptr)
		return false;

	if (node->fNext != nullptr)
		node->fNext->fPrev = node->fPrev;
	else
		fTail = node->fPrev;

	if (node->fPrev != nullptr) {
		node->fPrev->fNext = node->fNext;
		fCurrent = node->fPrev;
		fCurrentIndex--;
	} else {
		fHead = node->fNext;
		fCurrent = fHead;
		fCurrentIndex = 0;
	}
	fCount--;

	delete node->fData;
	delete node;
	return true;
}


// Removes the nodes first to last inclusive and leaves the cursor on the node
// before them (on the new head when the stretch began at the head). A
// stretch that starts beyond the end removes nothing; one that runs past the
// end stops at the tail.
template <class T>
bool
LinkList<T>::Remove(long first, long last)
{
	if (last < first)
		return false;
	if (fCount == 0 || first >= fCount)
		return false;

	ListNode<T>* node = Position(first);
	int32 index = fCurrentIndex;
	ListNode<T>* before = node->fPrev;

	for (long n = last - first + 1; n > 0; n--) {
		ListNode<T>* target = before != nullptr ? before->fNext : fHead;
		if (target == nullptr)
			break;
		fCurrent = target;
		fCurrentIndex = index;
		Remove();
	}
	return true;
}


template <class T>
void
LinkList<T>::Clear()
{
	RemoveAll();
}


template <class T>
int32
LinkList<T>::Size() const
{
	return fCount;
}


// Leaves head, tail and cursor null, the count 0 and the current index 0.
template <class T>
void
LinkList<T>::RemoveAll()
{
	First();
	while (Remove()) {
	}
}

#endif // LINK_LIST_H
