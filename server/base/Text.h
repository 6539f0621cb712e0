// Conversions of text. Inside the server all text is UTF-16; the log is UTF-8; capacities that clients send count
// bytes of the ANSI code page.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace srv {

std::string utf8(std::wstring_view text);
std::wstring fromUtf8(std::string_view text);

// How many bytes the text has in the ANSI code page, without terminator.
std::size_t ansiLength(std::wstring_view text) noexcept;

// The text in the ANSI code page, with the system's substitute for characters that it lacks.
std::string toAnsi(std::wstring_view text);

// For the log: in double quotes, control characters as \xNN, cut with "..." after 80 characters.
std::string inQuotes(std::wstring_view text);

// What the system says about an error number, in one line without a full stop: "Access denied (5)".
std::string systemMessage(unsigned long error);

}  // namespace srv
