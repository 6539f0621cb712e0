// Storage: sharing, copying before writing, growing.
#include "CString.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <utility>

#include "Exceptions.h"

namespace {

CStringData* allocate(IAtlStringMgr* manager, int length)
{
    auto* block = manager->Allocate(length, sizeof(char));
    if (!block) AfxThrowMemoryException();
    return block;
}

int sum(int left, int right)
{
    if (left > INT_MAX - right) AfxThrowMemoryException();
    return left + right;
}

}  // namespace

int CString::StringLength(const char* text) noexcept
{
    return text ? static_cast<int>(std::strlen(text)) : 0;
}

CString::CString(IAtlStringMgr* manager) noexcept
{
    attach(manager->GetNilString());
}

CString::CString(const CString& other)
{
    attach(share(other.data()));
}

// The source gets its manager's empty string, so that it stays with that manager.
CString::CString(CString&& other) noexcept : text_(other.text_)
{
    other.attach(data()->pStringMgr->GetNilString());
}

CString::CString(const char* text) : CString(text, StringLength(text)) {}

CString::CString(const char* characters, int length) : CString()
{
    SetString(characters, length);
}

CString::CString(char character, int repeat) : CString()
{
    if (repeat < 0) AfxThrowInvalidArgException();
    if (repeat == 0) return;
    std::memset(prepareWrite(repeat), character, static_cast<std::size_t>(repeat));
    setLength(repeat);
}

// The block for one more string of this text: the block itself unless it is locked or its manager does not share.
CStringData* CString::share(CStringData* block)
{
    auto* manager = block->pStringMgr->Clone();
    if (manager == block->pStringMgr && !block->IsLocked()) {
        block->AddRef();
        return block;
    }
    auto* copy = allocate(manager, block->nDataLength);
    copy->nDataLength = block->nDataLength;
    std::memcpy(copy->data(), block->data(), static_cast<std::size_t>(block->nDataLength) + 1);
    return copy;
}

CString& CString::operator=(const CString& other)
{
    auto* mine = data();
    auto* theirs = other.data();
    if (mine == theirs) return *this;
    if (mine->IsLocked() || mine->pStringMgr != theirs->pStringMgr) {
        SetString(other.text_, other.GetLength());
    } else {
        attach(share(theirs));
        mine->Release();
    }
    return *this;
}

CString& CString::operator=(CString&& other)
{
    auto* mine = data();
    const auto* theirs = other.data();
    if (mine->IsLocked() || theirs->IsLocked() || mine->pStringMgr != theirs->pStringMgr)
        return *this = std::as_const(other);
    std::swap(text_, other.text_);
    return *this;
}

CString& CString::operator=(const char* text)
{
    SetString(text);
    return *this;
}

CString& CString::operator=(char character)
{
    SetString(&character, 1);
    return *this;
}

void CString::SetString(const char* text)
{
    SetString(text, StringLength(text));
}

void CString::SetString(const char* characters, int length)
{
    if (length < 0 || (length > 0 && !characters)) AfxThrowInvalidArgException();
    if (length == 0) return Empty();
    auto* mine = data();
    if (!mine->IsLocked() && (mine->IsShared() || mine->nAllocLength < length)) {
        auto* own = allocate(mine->pStringMgr->Clone(), length);
        std::memcpy(own->data(), characters, static_cast<std::size_t>(length));
        attach(own);
        mine->Release();  // only now: the characters may lie in this block
    } else {
        replace(0, GetLength(), characters, length);
    }
    setLength(length);
}

void CString::Append(const char* text)
{
    Append(text, StringLength(text));
}

void CString::Append(const char* characters, int length)
{
    if (length < 0 || (length > 0 && !characters)) AfxThrowInvalidArgException();
    replace(GetLength(), 0, characters, length);
}

CString& CString::operator+=(const CString& other)
{
    Append(other.text_, other.GetLength());
    return *this;
}

CString& CString::operator+=(const char* text)
{
    Append(text);
    return *this;
}

CString& CString::operator+=(char character)
{
    AppendChar(character);
    return *this;
}

namespace {

CString join(const char* left, int leftLength, const char* right, int rightLength)
{
    CString joined;
    if (leftLength == 0 && rightLength == 0) return joined;
    joined.Preallocate(sum(leftLength, rightLength));
    joined.Append(left, leftLength);
    joined.Append(right, rightLength);
    return joined;
}

}  // namespace

CString operator+(const CString& left, const CString& right)
{
    return join(left, left.GetLength(), right, right.GetLength());
}

CString operator+(const CString& left, const char* right)
{
    return join(left, left.GetLength(), right, CString::StringLength(right));
}

CString operator+(const char* left, const CString& right)
{
    return join(left, CString::StringLength(left), right, right.GetLength());
}

CString operator+(const CString& left, char right)
{
    return join(left, left.GetLength(), &right, 1);
}

CString operator+(char left, const CString& right)
{
    return join(&left, 1, right, right.GetLength());
}

char CString::GetAt(int index) const
{
    if (index < 0 || index > GetLength()) AfxThrowInvalidArgException();
    return text_[index];
}

void CString::SetAt(int index, char character)
{
    if (index < 0 || index >= GetLength()) AfxThrowInvalidArgException();
    prepareWrite(GetLength())[index] = character;
}

void CString::Empty() noexcept
{
    auto* mine = data();
    if (mine->nDataLength == 0) return;
    if (mine->IsLocked()) {
        mine->nDataLength = 0;
        text_[0] = '\0';
    } else {
        attach(mine->pStringMgr->GetNilString());
        mine->Release();
    }
}

void CString::Truncate(int length)
{
    if (length < 0 || length > GetLength()) AfxThrowInvalidArgException();
    prepareWrite(length);
    setLength(length);
}

char* CString::GetBuffer()
{
    if (data()->IsShared()) fork(GetLength());
    return text_;
}

char* CString::GetBuffer(int minimum)
{
    return prepareWrite(minimum);
}

char* CString::GetBufferSetLength(int length)
{
    auto* buffer = prepareWrite(length);
    setLength(length);
    return buffer;
}

void CString::ReleaseBuffer(int length)
{
    if (length < 0) length = static_cast<int>(strnlen(text_, static_cast<std::size_t>(GetAllocLength())));
    ReleaseBufferSetLength(length);
}

void CString::ReleaseBufferSetLength(int length)
{
    if (length == 0 && GetAllocLength() == 0) return;  // the shared empty string is never written to
    setLength(length);
}

char* CString::LockBuffer()
{
    GetBuffer();
    data()->Lock();
    return text_;
}

void CString::FreeExtra()
{
    auto* mine = data();
    const int length = mine->nDataLength;
    if (mine->nAllocLength == length || mine->IsShared() || mine->IsLocked()) return;
    auto* smaller = mine->pStringMgr->Reallocate(mine, length, sizeof(char));
    if (smaller) attach(smaller);
}

// Gives this string a block of its own, with its text and room for length characters.
void CString::fork(int length)
{
    auto* shared = data();
    auto* own = allocate(shared->pStringMgr->Clone(), length);
    const int copied = std::min(shared->nDataLength, length);
    std::memcpy(own->data(), shared->data(), static_cast<std::size_t>(copied));
    own->data()[copied] = '\0';
    own->nDataLength = copied;
    attach(own);
    shared->Release();
}

// Makes the characters this string's alone, with room for the text that is there and for length characters.
char* CString::prepareWrite(int length)
{
    if (length < 0) AfxThrowInvalidArgException();
    auto* mine = data();
    length = std::max(length, mine->nDataLength);
    if (mine->IsShared()) {
        fork(length);
    } else if (mine->nAllocLength < length) {
        // Half as much again, so that a text that grows by single characters moves seldom; of large texts, 1 MiB.
        const int spare = std::min(mine->nAllocLength / 2, 1 << 20);
        const int grown =
            mine->nAllocLength > INT_MAX - spare ? length : std::max(length, mine->nAllocLength + spare);
        auto* moved = mine->pStringMgr->Reallocate(mine, grown, sizeof(char));
        if (!moved) AfxThrowMemoryException();
        attach(moved);
    }
    return text_;
}

void CString::setLength(int length)
{
    if (length < 0 || length > GetAllocLength()) AfxThrowInvalidArgException();
    data()->nDataLength = length;
    text_[length] = '\0';
}

// Puts characters in the place of others. They may lie within this string.
void CString::replace(int first, int count, const char* characters, int length)
{
    if (count == 0 && length == 0) return;
    const int oldLength = GetLength();
    const int newLength = sum(oldLength - count, length);
    const bool own = characters >= text_ && characters <= text_ + oldLength;
    CString source;  // keeps the characters where they are while this string's block changes
    if (own && length > 0) {
        source.prepareWrite(length);
        std::memcpy(source.text_, characters, static_cast<std::size_t>(length));
        characters = source.text_;
    }
    auto* buffer = prepareWrite(newLength);
    std::memmove(buffer + first + length, buffer + first + count,
                 static_cast<std::size_t>(oldLength - first - count));
    if (length > 0) std::memcpy(buffer + first, characters, static_cast<std::size_t>(length));
    setLength(newLength);
}

void CString::erase(int first, int count)
{
    replace(first, count, nullptr, 0);
}

void CString::insert(int index, const char* characters, int count)
{
    replace(index, 0, characters, count);
}
