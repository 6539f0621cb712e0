// Comparing, searching and taking parts: what leaves the text as it is.
#include <algorithm>
#include <cstring>

#include "AnsiCodePage.h"
#include "CString.h"

const char CString::whiteSpace[] = " \t\n\v\f\r";

namespace {

const char* orEmpty(const char* text) noexcept
{
    return text ? text : "";
}

int sign(int value) noexcept
{
    return (value > 0) - (value < 0);
}

int collate(DWORD flags, const char* left, const char* right) noexcept
{
    return CompareStringA(LOCALE_USER_DEFAULT, flags | SORT_STRINGSORT, left, -1, orEmpty(right), -1) - CSTR_EQUAL;
}

}  // namespace

int CString::Compare(const char* other) const noexcept
{
    return sign(std::strcmp(text_, orEmpty(other)));
}

int CString::CompareNoCase(const char* other) const noexcept
{
    return AnsiCodePage::system().compareNoCase(text_, orEmpty(other));
}

int CString::Collate(const char* other) const noexcept
{
    return collate(0, text_, other);
}

int CString::CollateNoCase(const char* other) const noexcept
{
    return collate(NORM_IGNORECASE, text_, other);
}

bool operator==(const CString& left, const CString& right) noexcept
{
    return left.text_ == right.text_ || left.Compare(right.text_) == 0;
}

bool operator==(const CString& left, char right) noexcept
{
    return left.GetLength() == 1 && left.text_[0] == right;
}

std::strong_ordering operator<=>(const CString& left, const CString& right) noexcept
{
    return left.Compare(right.text_) <=> 0;
}

std::strong_ordering operator<=>(const CString& left, const char* right) noexcept
{
    return left.Compare(right) <=> 0;
}

int CString::Find(char character, int start) const noexcept
{
    if (start < 0 || start >= GetLength()) return -1;
    const char* found = AnsiCodePage::system().findChar(text_ + start, character);
    return found ? static_cast<int>(found - text_) : -1;
}

int CString::Find(const char* text, int start) const noexcept
{
    if (!text || start < 0 || start > GetLength()) return -1;
    const char* found = AnsiCodePage::system().findText(text_ + start, text);
    return found ? static_cast<int>(found - text_) : -1;
}

int CString::ReverseFind(char character) const noexcept
{
    const char* found = AnsiCodePage::system().findLastChar(text_, character);
    return found ? static_cast<int>(found - text_) : -1;
}

int CString::FindOneOf(const char* set) const noexcept
{
    const char* found = AnsiCodePage::system().findOneOf(text_, orEmpty(set));
    return found ? static_cast<int>(found - text_) : -1;
}

// first and count lie within the text.
CString CString::part(int first, int count) const
{
    if (first == 0 && count == GetLength()) return *this;
    CString result(data()->pStringMgr->Clone());
    result.SetString(text_ + first, count);
    return result;
}

CString CString::Mid(int first) const
{
    return Mid(first, GetLength());
}

CString CString::Mid(int first, int count) const
{
    first = std::clamp(first, 0, GetLength());
    return part(first, std::clamp(count, 0, GetLength() - first));
}

CString CString::Left(int count) const
{
    return part(0, std::clamp(count, 0, GetLength()));
}

CString CString::Right(int count) const
{
    count = std::clamp(count, 0, GetLength());
    return part(GetLength() - count, count);
}

CString CString::SpanIncluding(const char* set) const
{
    return Left(static_cast<int>(AnsiCodePage::system().skip(text_, orEmpty(set)) - text_));
}

CString CString::SpanExcluding(const char* set) const
{
    const int end = FindOneOf(set);
    return end < 0 ? *this : Left(end);
}

CString CString::Tokenize(const char* separators, int& start) const
{
    const auto& page = AnsiCodePage::system();
    if (start >= 0 && start < GetLength()) {
        const char* token = page.skip(text_ + start, orEmpty(separators));
        const char* end = page.findOneOf(token, orEmpty(separators));
        if (!end) end = text_ + GetLength();
        if (token < end) {
            start = static_cast<int>(end - text_) + 1;
            return part(static_cast<int>(token - text_), static_cast<int>(end - token));
        }
    }
    start = -1;
    return CString(data()->pStringMgr->Clone());
}
