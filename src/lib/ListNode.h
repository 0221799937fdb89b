// One link of a LinkList: the neighbours and the element it carries.
#ifndef LIST_NODE_H
#define LIST_NODE_H

// A node is a plain record that only its list touches. It does not own its
// element: the list deletes the element itself just before it deletes the node.
template <class T> class ListNode
{
public:
	ListNode() : fPrev(nullptr), fData(nullptr), fNext(nullptr) {}
	explicit ListNode(T* data) : fPrev(nullptr), fData(data), fNext(nullptr) {}
	virtual ~ListNode() {}

	ListNode(const ListNode&) = delete;
	ListNode& operator=(const ListNode&) = delete;

	ListNode* fPrev;
	T* fData;
	ListNode* fNext;
};

#endif // LIST_NODE_H
