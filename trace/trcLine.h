// The record of one trace call and the line that is made of it. Pure: the caller brings time and ids.
//
//   offset  size  content of the record
//   0       2     format letter
//   2       9     trace id, exactly 8 characters
//   32      4     module, exactly 3 characters
//   36      3     level tag
//   39      13    result
//   52      13    sub-code
//   65      13    time of day, milliseconds from 73; in the time format 32 bytes of seconds, shown from 80
//   78      13    source file, at most 12 characters (long format only)
//   91      6     line number, 5 digits (long format only)
//   97      35    function, at most 34 characters
//   132     257   text, at most 256 characters
//
// Every field is terminated in place.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace trc {

enum Format : int {
    formatShort = 1,
    formatLong = 2,
    formatTime = 3,
    formatText = 4,
};

inline constexpr std::size_t maxLine = 388;  // characters, without what an output adds at the end

struct TimeOfDay
{
    bool known;
    int hour, minute, second, millisecond;
};

// What a trace call says, and when it was made.
struct LineParts
{
    std::string_view traceId, function, module, sourceFile, text;
    std::uint32_t level, result;
    std::uint16_t subCode;
    int line;
    TimeOfDay time;
    double seconds;  // of the performance counter; used by the time format only
};

struct Record
{
    static constexpr std::size_t letter = 0, traceId = 2, module = 32, levelTag = 36, result = 39, subCode = 52,
                                 time = 65, milliseconds = 73, sourceFile = 78, shownSeconds = 80, line = 91,
                                 function = 97, text = 132, size = 389;

    char bytes[size];

    const char* operator[](std::size_t field) const noexcept { return bytes + field; }
};

// Two characters; "??" for a level that has no tag. The level is compared as a whole.
const char* levelTag(std::uint32_t level) noexcept;

// What follows the last separator of folders.
std::string_view withoutFolder(std::string_view path) noexcept;

void buildRecord(Record& record, int format, const LineParts& parts) noexcept;

// Writes the terminated line and returns its length; 0 when it does not fit and is to be dropped.
std::size_t buildLine(std::span<char> line, int format, const Record& record, std::uint32_t processId,
                      std::uint32_t threadId) noexcept;

}  // namespace trc
