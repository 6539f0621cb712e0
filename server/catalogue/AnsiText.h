// What clients get is 8-bit text of at most 259 bytes.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "Texts.h"

namespace catalogue {

constexpr std::size_t maximumValueLength = 259;  // bytes; a client's buffer holds 260 with the terminator
constexpr std::size_t maximumNameLength = 255;   // the registry's own limit of a key's name

// The length in the Windows code page of a language; nothing when a character of the text is not in it.
std::optional<std::size_t> ansiLength(std::wstring_view text, Language language);

}  // namespace catalogue
