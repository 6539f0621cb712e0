// Names that differ only in case are one name here, as they are in the registry.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace catalogue {

// Ordinal order without regard to case, by the operating system's own case table: the same on every machine and in
// every locale, and equal to what the registry takes for one name.
struct LessNoCase
{
    using is_transparent = void;
    bool operator()(std::wstring_view left, std::wstring_view right) const noexcept;
};

bool equalNoCase(std::wstring_view left, std::wstring_view right) noexcept;

template <typename T>
using Map = std::map<std::wstring, T, LessNoCase>;

using Values = Map<std::wstring>;

// The entry of a name, or nullptr.
template <typename T>
const T* find(const Map<T>& map, std::wstring_view name)
{
    const auto at = map.find(name);
    return at == map.end() ? nullptr : &at->second;
}

}  // namespace catalogue
