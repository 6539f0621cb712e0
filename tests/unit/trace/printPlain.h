// Names of table rows that every test tool takes: letters, digits and underlines.
#pragma once

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <ostream>
#include <string_view>

inline void printPlain(std::ostream& out, std::string_view text)
{
    for (const char c : text)
        out << (std::isalnum(static_cast<unsigned char>(c)) ? c : '_');
}

inline void printHex(std::ostream& out, std::uint32_t number)
{
    char digits[16];
    std::snprintf(digits, sizeof digits, "0x%x", static_cast<unsigned int>(number));
    out << digits;
}
