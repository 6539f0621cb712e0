// Changing the text in place.
#include <algorithm>
#include <cstring>
#include <utility>

#include "AnsiCodePage.h"
#include "CString.h"

namespace {

// A one-character set for the members that take sets.
struct Set
{
    explicit Set(char character) noexcept : text{character, '\0'} {}
    char text[2];
};

}  // namespace

CString& CString::MakeUpper()
{
    AnsiCodePage::system().makeUpper(GetBuffer());
    return *this;
}

CString& CString::MakeLower()
{
    AnsiCodePage::system().makeLower(GetBuffer());
    return *this;
}

CString& CString::MakeReverse()
{
    char* buffer = GetBuffer();
    std::reverse(buffer, buffer + GetLength());
    return *this;
}

CString& CString::TrimLeft(char character)
{
    return TrimLeft(Set(character).text);
}

CString& CString::TrimLeft(const char* set)
{
    if (set) erase(0, static_cast<int>(AnsiCodePage::system().skip(text_, set) - text_));
    return *this;
}

CString& CString::TrimRight(char character)
{
    return TrimRight(Set(character).text);
}

CString& CString::TrimRight(const char* set)
{
    if (!set) return *this;
    const auto& page = AnsiCodePage::system();
    const char* end = text_;  // behind the last character that stays
    for (const char* at = page.skip(text_, set); *at; at = page.skip(at, set))
        end = at = page.next(at);
    const int length = static_cast<int>(end - text_);
    if (length < GetLength()) Truncate(length);
    return *this;
}

CString& CString::Trim(const char* set)
{
    return TrimRight(set).TrimLeft(set);
}

int CString::Replace(char from, char to)
{
    if (from == to) return 0;
    int count = 0;
    for (int at = Find(from); at >= 0; at = Find(from, at + 1)) {
        SetAt(at, to);
        ++count;
    }
    return count;
}

int CString::Replace(const char* from, const char* to)
{
    const int length = StringLength(from);
    if (length == 0) return 0;
    int count = 0;
    int copied = 0;
    CString result(data()->pStringMgr->Clone());
    for (int at = Find(from); at >= 0; at = Find(from, copied)) {
        result.Append(text_ + copied, at - copied);
        result.Append(to);
        copied = at + length;
        ++count;
    }
    if (count == 0) return 0;
    result.Append(text_ + copied, GetLength() - copied);
    *this = std::move(result);
    return count;
}

int CString::Remove(char character)
{
    int count = 0;
    for (int at = Find(character); at >= 0; at = Find(character, at)) {
        erase(at, 1);
        ++count;
    }
    return count;
}

int CString::Insert(int index, char character)
{
    insert(std::clamp(index, 0, GetLength()), &character, 1);
    return GetLength();
}

int CString::Insert(int index, const char* text)
{
    insert(std::clamp(index, 0, GetLength()), text, StringLength(text));
    return GetLength();
}

int CString::Delete(int index, int count)
{
    index = std::clamp(index, 0, GetLength());
    erase(index, std::clamp(count, 0, GetLength() - index));
    return GetLength();
}
