// Texts of the interface are in the ANSI code page, what this program prints is UTF-8.
#pragma once

#include <string>
#include <string_view>

std::string toUtf8(std::string_view ansi);
std::string toAnsi(std::string_view utf8);

// The number of columns a UTF-8 text takes, one per character.
std::size_t columns(std::string_view utf8);
