// Texts of the interface are in the ANSI code page, what this program prints is UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>

std::string toUtf8(std::string_view ansi);

// Throws a Failure for a text with characters that the ANSI code page does not have: the interface cannot carry it.
std::string toAnsi(std::string_view utf8);

// The number of bytes that a text takes in the ANSI code page; nothing when it cannot be written in it.
std::optional<std::size_t> ansiLength(std::string_view utf8);

std::wstring toWide(std::string_view utf8);

// What all spellings of a name have in common: names do not tell upper from lower case.
std::wstring folded(std::string_view utf8);

// The number of columns a UTF-8 text takes, one per character.
std::size_t columns(std::string_view utf8);
