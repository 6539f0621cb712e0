// What may be stored: the rules for names and values that come from clients.
#pragma once

#include <cstddef>
#include <string_view>

namespace srv {

// Longest text that any reader can be given: clients read into 260 bytes of the ANSI code page.
inline constexpr std::size_t maxAnsiText = 259;

// Longest name of a registry key.
inline constexpr std::size_t maxName = 255;

// A name of a logical device or logical name: 1 to 255 characters, no backslash, no control characters.
bool isObjectName(std::wstring_view name) noexcept;

// Temporary devices are called this and a number.
inline constexpr std::wstring_view temporaryPrefix = L"DCFG_TEMP_LOG_DEVICE____";

// Whether a name is one that temporary devices get; stored devices cannot have such a name.
bool isTemporaryName(std::wstring_view name) noexcept;

// A name of a value: 1 to 255 characters, no control characters.
bool isValueName(std::wstring_view name) noexcept;

// A value: at most 259 ANSI characters, none of them zero; may be empty.
bool isValueText(std::wstring_view text) noexcept;

}  // namespace srv
