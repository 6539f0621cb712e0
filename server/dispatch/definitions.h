// Looks up what the catalogue defines by the names under which clients ask for it.
#pragma once

#include <optional>
#include <string_view>

#include "catalogue/Catalogue.h"

namespace srv {

// The types of templates. Clients name them "Boards", "Protocols" and "DefaultLogdevices", in any case.
enum class TemplateType { Boards, Protocols, DefaultLogicalDevices };

std::optional<TemplateType> templateTypeNamed(std::wstring_view name) noexcept;

// The name of the template at a position; nullptr past the last.
const std::wstring* templateAt(const catalogue::Catalogue& catalogue, TemplateType type, std::size_t index) noexcept;

// The values in the key at a path below a template ("" is the template itself); nullptr if there is no such template
// or key. A default logical device has one key, "Ndi".
const catalogue::Values* templateValues(const catalogue::Catalogue& catalogue, TemplateType type,
                                        std::wstring_view name, std::wstring_view path);

// The board with this device id, name or alias.
const catalogue::Board* boardNamed(const catalogue::Catalogue& catalogue, std::wstring_view name);

// Two parts of a path in one; either may be empty.
std::wstring joined(std::wstring_view path, std::wstring_view rest);

// Cuts a path behind its first part, or before its last one; empty parts do not count.
struct PathParts
{
    std::wstring_view first;
    std::wstring_view rest;
};
PathParts splitFirst(std::wstring_view path) noexcept;

struct PathEnd
{
    std::wstring_view path;
    std::wstring_view last;
};
PathEnd splitLast(std::wstring_view path) noexcept;

}  // namespace srv
