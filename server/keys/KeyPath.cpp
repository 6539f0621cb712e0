#include "keys/KeyPath.h"

#include <algorithm>
#include <initializer_list>

#include "catalogue/LessNoCase.h"
#include "store/Names.h"

namespace srv {

namespace {

using catalogue::equalNoCase;
using Parts = std::vector<std::wstring>;

constexpr std::wstring_view otherView = L"Wow6432Node";

bool isPart(std::wstring_view part)
{
    // Nobody calls a key "." or "..": who writes that wants to get somewhere else.
    return part.size() <= maxName && part != L"." && part != L".." && part.find(L'\0') == std::wstring_view::npos;
}

// Nothing if one of the parts cannot be a key's name.
std::optional<Parts> split(std::wstring_view path)
{
    Parts parts;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find(L'\\'), path.size());
        if (!isPart(path.substr(0, end))) return std::nullopt;
        if (end > 0) parts.emplace_back(path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return parts;
}

bool beginsWith(const Parts& parts, std::initializer_list<std::wstring_view> beginning)
{
    return parts.size() >= beginning.size() &&
           std::equal(beginning.begin(), beginning.end(), parts.begin(),
                      [](std::wstring_view wanted, const std::wstring& part) { return equalNoCase(wanted, part); });
}

KeyPath::Rights rightsBelowProduct(const Parts& parts)
{
    using Rights = KeyPath::Rights;
    if (parts.empty()) return Rights::Write;
    if (!equalNoCase(parts[0], L"NORIX")) return Rights::All;
    if (parts.size() == 1) return Rights::Write;
    // What the server keeps for itself, and what the catalogue alone decides.
    for (const std::wstring_view own : {L"Journal", L"DefDevices", L"Hardware", L"Instances"})
        if (equalNoCase(parts[1], own)) return Rights::Read;
    return Rights::All;
}

}  // namespace

std::wstring KeyPath::joined() const
{
    std::wstring path;
    for (const std::wstring& part : parts) {
        if (!path.empty()) path += L'\\';
        path += part;
    }
    return path;
}

std::optional<KeyPath> allowedPath(std::wstring_view path)
{
    std::optional<Parts> parts = split(path);
    if (!parts) return std::nullopt;
    if (beginsWith(*parts, {L"HARDWARE", L"DEVICEMAP"}) ||
        beginsWith(*parts, {L"SYSTEM", L"CurrentControlSet", L"Services", L"kxopusbx64", L"Enum"})) {
        return KeyPath{KeyPath::Place::Machine, KeyPath::Rights::Read, std::move(*parts)};
    }
    if (!beginsWith(*parts, {L"SOFTWARE", otherView, L"TAVRONE"})) return std::nullopt;
    parts->erase(parts->begin(), parts->begin() + 3);
    // The system leads such a key back to one that has another path.
    if (std::any_of(parts->begin(), parts->end(), [](const auto& part) { return equalNoCase(part, otherView); }))
        return std::nullopt;
    const KeyPath::Rights rights = rightsBelowProduct(*parts);
    return KeyPath{KeyPath::Place::Product, rights, std::move(*parts)};
}

}  // namespace srv
