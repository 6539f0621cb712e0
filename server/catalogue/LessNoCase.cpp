#include "LessNoCase.h"

#include <windows.h>

namespace catalogue {

namespace {

int compareNoCase(std::wstring_view left, std::wstring_view right) noexcept
{
    // A null pointer is an error to the system even with length 0.
    const wchar_t* const a = left.empty() ? L"" : left.data();
    const wchar_t* const b = right.empty() ? L"" : right.data();
    return CompareStringOrdinal(a, static_cast<int>(left.size()), b, static_cast<int>(right.size()), TRUE);
}

}  // namespace

bool LessNoCase::operator()(std::wstring_view left, std::wstring_view right) const noexcept
{
    return compareNoCase(left, right) == CSTR_LESS_THAN;
}

bool equalNoCase(std::wstring_view left, std::wstring_view right) noexcept
{
    return left.size() == right.size() && compareNoCase(left, right) == CSTR_EQUAL;
}

}  // namespace catalogue
