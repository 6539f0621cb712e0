// CStringList: a list of strings, doubly linked, read and changed at positions.
//
// A POSITION names one item until that item is removed; NULL names none and ends every walk:
//
//     for (POSITION at = list.GetHeadPosition(); at;) use(list.GetNext(at));
//
// The items' memory is the process heap's, so one module may fill a list and another empty it. Reading at no position
// or from an empty list throws CInvalidArgException, no memory CMemoryException; the list is then unchanged. A list
// is used by one thread at a time.
#pragma once

#include "CString.h"

struct __POSITION;  // never defined
using POSITION = __POSITION*;

class CStringList
{
 public:
    explicit CStringList(int /*blockSize*/ = 10) noexcept {}  // items are not taken in blocks here
    CStringList(const CStringList&) = delete;
    CStringList& operator=(const CStringList&) = delete;
    ~CStringList() { RemoveAll(); }

    int GetCount() const noexcept { return count_; }
    int GetSize() const noexcept { return count_; }
    bool IsEmpty() const noexcept { return count_ == 0; }

    CString& GetHead() { return GetAt(GetHeadPosition()); }
    const CString& GetHead() const { return GetAt(GetHeadPosition()); }
    CString& GetTail() { return GetAt(GetTailPosition()); }
    const CString& GetTail() const { return GetAt(GetTailPosition()); }

    // Walking: the item at the position, which moves to the next (previous) one.
    POSITION GetHeadPosition() const noexcept { return position(head_); }
    POSITION GetTailPosition() const noexcept { return position(tail_); }
    CString& GetNext(POSITION& at);
    const CString& GetNext(POSITION& at) const;
    CString& GetPrev(POSITION& at);
    const CString& GetPrev(POSITION& at) const;

    CString& GetAt(POSITION at);
    const CString& GetAt(POSITION at) const;
    void SetAt(POSITION at, const char* text) { GetAt(at) = text; }
    void SetAt(POSITION at, const CString& text) { GetAt(at) = text; }

    // Adding: the new item's position. A list is added whole, in its order; it may be this one.
    POSITION AddHead(const char* text) { return add(nullptr, head_, text); }
    POSITION AddHead(const CString& text) { return add(nullptr, head_, text); }
    void AddHead(const CStringList* list);
    POSITION AddTail(const char* text) { return add(tail_, nullptr, text); }
    POSITION AddTail(const CString& text) { return add(tail_, nullptr, text); }
    void AddTail(const CStringList* list);
    // Before the head, or behind the tail, when the position is NULL.
    POSITION InsertBefore(POSITION at, const char* text) { return insertBefore(at, text); }
    POSITION InsertBefore(POSITION at, const CString& text) { return insertBefore(at, text); }
    POSITION InsertAfter(POSITION at, const char* text) { return insertAfter(at, text); }
    POSITION InsertAfter(POSITION at, const CString& text) { return insertAfter(at, text); }

    CString RemoveHead();
    CString RemoveTail();
    void RemoveAt(POSITION at);
    void RemoveAll() noexcept;

    // The first item with exactly this text behind the given position, from the head for NULL; NULL: none.
    POSITION Find(const char* text, POSITION after = nullptr) const;
    POSITION FindIndex(int index) const noexcept;  // NULL: no such item

 private:
    struct Node;

    static POSITION position(Node* node) noexcept { return reinterpret_cast<POSITION>(node); }
    static Node* node(POSITION at);

    template <typename Text>
    POSITION add(Node* previous, Node* next, const Text& text);
    template <typename Text>
    POSITION insertBefore(POSITION at, const Text& text);
    template <typename Text>
    POSITION insertAfter(POSITION at, const Text& text);
    CString take(Node* item);
    void unlink(Node* item) noexcept;

    Node* head_ = nullptr;
    Node* tail_ = nullptr;
    int count_ = 0;
};
