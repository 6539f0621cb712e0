#include "store/Names.h"

#include <algorithm>

#include "base/Text.h"
#include "catalogue/LessNoCase.h"

namespace srv {

namespace {

bool isControl(wchar_t unit) noexcept
{
    return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F);
}

}  // namespace

bool isValueName(std::wstring_view name) noexcept
{
    return !name.empty() && name.size() <= maxName && std::none_of(name.begin(), name.end(), isControl) &&
           ansiLength(name) <= maxAnsiText;
}

bool isObjectName(std::wstring_view name) noexcept
{
    return isValueName(name) && name.find(L'\\') == std::wstring_view::npos;
}

bool isTemporaryName(std::wstring_view name) noexcept
{
    constexpr std::size_t length = temporaryPrefix.size();
    const auto isDigit = [](wchar_t unit) { return unit >= L'0' && unit <= L'9'; };
    return name.size() > length && catalogue::equalNoCase(name.substr(0, length), temporaryPrefix) &&
           std::all_of(name.begin() + length, name.end(), isDigit);
}

bool isValueText(std::wstring_view text) noexcept
{
    return text.size() <= maxAnsiText && text.find(L'\0') == std::wstring_view::npos &&
           ansiLength(text) <= maxAnsiText;
}

}  // namespace srv
