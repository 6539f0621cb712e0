#include "CStringList.h"

#include <new>
#include <utility>

#include "Exceptions.h"

struct CStringList::Node
{
    template <typename Text>
    Node(Node* before, Node* behind, const Text& content) : previous(before), next(behind), text(content)
    {}

    static void* operator new(std::size_t size)
    {
        auto* memory = HeapAlloc(GetProcessHeap(), 0, size);
        if (!memory) AfxThrowMemoryException();
        return memory;
    }
    static void operator delete(void* memory) noexcept { HeapFree(GetProcessHeap(), 0, memory); }

    Node* previous;
    Node* next;
    CString text;
};

CStringList::Node* CStringList::node(POSITION at)
{
    if (!at) AfxThrowInvalidArgException();
    return reinterpret_cast<Node*>(at);
}

CString& CStringList::GetAt(POSITION at)
{
    return node(at)->text;
}

const CString& CStringList::GetAt(POSITION at) const
{
    return node(at)->text;
}

CString& CStringList::GetNext(POSITION& at)
{
    auto* item = node(at);
    at = position(item->next);
    return item->text;
}

const CString& CStringList::GetNext(POSITION& at) const
{
    auto* item = node(at);
    at = position(item->next);
    return item->text;
}

CString& CStringList::GetPrev(POSITION& at)
{
    auto* item = node(at);
    at = position(item->previous);
    return item->text;
}

const CString& CStringList::GetPrev(POSITION& at) const
{
    auto* item = node(at);
    at = position(item->previous);
    return item->text;
}

template <typename Text>
POSITION CStringList::add(Node* previous, Node* next, const Text& text)
{
    auto* item = new Node(previous, next, text);
    (previous ? previous->next : head_) = item;
    (next ? next->previous : tail_) = item;
    ++count_;
    return position(item);
}

template <typename Text>
POSITION CStringList::insertBefore(POSITION at, const Text& text)
{
    if (!at) return AddHead(text);
    auto* item = node(at);
    return add(item->previous, item, text);
}

template <typename Text>
POSITION CStringList::insertAfter(POSITION at, const Text& text)
{
    if (!at) return AddTail(text);
    auto* item = node(at);
    return add(item, item->next, text);
}

using Chars = const char*;
template POSITION CStringList::add(Node*, Node*, const Chars&);
template POSITION CStringList::add(Node*, Node*, const CString&);
template POSITION CStringList::insertBefore(POSITION, const Chars&);
template POSITION CStringList::insertBefore(POSITION, const CString&);
template POSITION CStringList::insertAfter(POSITION, const Chars&);
template POSITION CStringList::insertAfter(POSITION, const CString&);

void CStringList::AddHead(const CStringList* list)
{
    if (!list) AfxThrowInvalidArgException();
    POSITION at = list->GetTailPosition();
    for (int left = list->GetCount(); left > 0; --left)
        AddHead(list->GetPrev(at));
}

void CStringList::AddTail(const CStringList* list)
{
    if (!list) AfxThrowInvalidArgException();
    POSITION at = list->GetHeadPosition();
    for (int left = list->GetCount(); left > 0; --left)
        AddTail(list->GetNext(at));
}

void CStringList::unlink(Node* item) noexcept
{
    (item->previous ? item->previous->next : head_) = item->next;
    (item->next ? item->next->previous : tail_) = item->previous;
    --count_;
    delete item;
}

CString CStringList::take(Node* item)
{
    if (!item) AfxThrowInvalidArgException();
    CString text = std::move(item->text);
    unlink(item);
    return text;
}

CString CStringList::RemoveHead()
{
    return take(head_);
}

CString CStringList::RemoveTail()
{
    return take(tail_);
}

void CStringList::RemoveAt(POSITION at)
{
    unlink(node(at));
}

void CStringList::RemoveAll() noexcept
{
    while (head_)
        unlink(head_);
}

POSITION CStringList::Find(const char* text, POSITION after) const
{
    for (Node* item = after ? node(after)->next : head_; item; item = item->next)
        if (item->text == text) return position(item);
    return nullptr;
}

POSITION CStringList::FindIndex(int index) const noexcept
{
    if (index < 0 || index >= count_) return nullptr;
    Node* item = head_;
    while (index-- > 0)
        item = item->next;
    return position(item);
}
