// One trace line from its parts. Free of Windows state.
//
// The record holds every part in a field of its own, each zero-terminated in place; the four formats pick from it.
//
//   offset  size  content
//   0       2     format letter
//   2       9     trace id, exactly 8 characters
//   32      4     module, exactly 3 characters
//   36      3     level tag
//   39      13    result
//   52      13    sub-code
//   65      13    time of day with milliseconds at 73; the seconds value of the time format takes 32 bytes
//   78      13    source file, at most 12 characters
//   91      6     line number, 5 digits
//   97      35    function, at most 34 characters
//   132     257   text, at most 256 characters
#pragma once

#include <cstddef>
#include <cstdint>

namespace trc {

enum Format : int
{
    formatShort = 1,
    formatLong = 2,
    formatTime = 3,
    formatText = 4,
};

inline constexpr std::size_t lineCapacity = 389;  // with terminator

struct LineParts
{
    const char* traceId;
    const char* function;
    std::uint32_t level;
    const char* module;
    std::uint32_t result;
    std::uint16_t subCode;
    const char* sourceFile;
    int line;
    const char* text;
    std::uint32_t processId;
    std::uint32_t threadId;
    // Time of day, NULL when it cannot be had, and the seconds of the performance counter.
    const char* timeOfDay;
    int milliseconds;
    double seconds;
};

const char* levelTag(std::uint32_t level) noexcept;

// The file name without its folder.
const char* baseName(const char* path) noexcept;

// Writes the line and returns its length, 0 when it does not fit.
std::size_t buildLine(char (&line)[lineCapacity], int format, const LineParts& parts) noexcept;

}  // namespace trc
