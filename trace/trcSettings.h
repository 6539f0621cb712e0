// The values below "TrcParams" and what they mean. Pure: where the values come from is the caller's business.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "trcFilter.h"
#include "trcLine.h"

namespace trc {

enum Output : int {
    outputVxd = 0,
    outputCom1 = 1,
    outputCom2 = 2,
    outputPipe = 3,
    outputFile = 4,
    outputSm = 5,
    outputDbg = 6,
    outputEngine = 7,
};

inline constexpr std::size_t valueSize = 260;     // bytes that a value may have, with its terminator
inline constexpr std::size_t fileBaseSize = 260;  // of the trace files' common name, with terminator

struct Settings
{
    std::uint32_t level = 0;
    int format = formatLong;
    int output = outputFile;
    int consult = 0;                   // seconds; 0: the configuration is not read again by time
    std::int32_t bytesPerFile = 0;     // 0: not given, the size in force stays
    std::uint32_t smSize = 0;          // 0: not given, the size in force stays
    char fileBase[fileBaseSize] = {};  // empty: not given, the name in force stays
    FilterList traceIds, modules, functions, texts;
};

// One more than a value, so that one without terminator can be given one.
using Value = char[valueSize + 1];

// Reads one value as terminated text; false when it is missing, empty or no text.
using ReadValue = bool (*)(void* source, const char* name, Value& value);

Settings readSettings(ReadValue read, void* source) noexcept;

// The parts, each by itself.
int formatOf(std::string_view text) noexcept;
int outputOf(std::string_view text) noexcept;

// A number whose base follows its prefix (0x hexadecimal, 0 octal, else decimal) up to the first character that does
// not belong to it; 0 when there is none, the largest number when it is too large.
std::uint32_t levelOf(std::string_view text) noexcept;

// A decimal number, 0 when the text has none, cut to what an int holds.
int decimalOf(std::string_view text) noexcept;

// Folder and name, either of which may be empty for its default; false when the whole does not fit.
bool composeFileBase(char (&base)[fileBaseSize], std::string_view path, std::string_view fileName) noexcept;

}  // namespace trc
