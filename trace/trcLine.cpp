#include "trcLine.h"

#include <cstdio>

namespace trc {
namespace {

class Record
{
 public:
    Record(int format, const LineParts& parts) noexcept
    {
        static constexpr const char* letters[] = {"", "S", "L", "T", ""};
        if (format != formatText) put(0, 2, "%.*s", 1, letters[format]);
        put(2, 9, "%*.*s", 8, 8, parts.traceId);
        put(32, 4, "%*.*s", 3, 3, parts.module);
        put(36, 3, "%*.*s", 2, 2, levelTag(parts.level));
        putResult(parts);
        putTime(format, parts);
        if (format == formatLong) {
            put(78, 13, "%.*s", 12, baseName(parts.sourceFile));
            put(91, 6, "%0*.*d", 5, 5, parts.line);
        }
        put(97, 35, "%.*s", 34, parts.function);
        put(132, 257, "%.*s", 256, parts.text);
    }

    const char* operator[](std::size_t offset) const noexcept { return bytes_ + offset; }

 private:
    template <typename... Values>
    void put(std::size_t offset, std::size_t size, const char* format, Values... values) noexcept
    {
        std::snprintf(bytes_ + offset, size, format, values...);
    }

    // Only result and error lines show a result; 0, 1 and -1 are states, all else is a code.
    void putResult(const LineParts& parts) noexcept
    {
        if ((parts.level & (128 | 4)) == 0) {
            put(39, 13, "%s", "  ");
            put(52, 13, "%s", "      ");
        } else if (parts.result <= 1 || parts.result == 0xFFFFFFFF) {
            put(39, 13, "%2d", static_cast<int>(parts.result));
            put(52, 13, "  %04x", static_cast<unsigned int>(parts.subCode));
        } else {
            put(39, 13, "%08x", static_cast<unsigned int>(parts.result));
            put(52, 13, "%s", "");
        }
    }

    void putTime(int format, const LineParts& parts) noexcept
    {
        if (format == formatTime) {
            put(65, 32, "%027.6f", parts.seconds);
        } else if (format == formatLong && parts.timeOfDay) {
            put(65, 10, "%s", parts.timeOfDay);
            put(73, 5, ",%03.3d", parts.milliseconds);
        } else if (format == formatLong) {
            put(65, 13, "%s", "00:00:00,000");
        }
    }

    char bytes_[389] = {};
};

}  // namespace

const char* levelTag(std::uint32_t level) noexcept
{
    switch (level) {
        case 0: return "##";
        case 1: return "PA";
        case 2: return "PX";
        case 4: return "PE";
        case 8: return "FA";
        case 16: return "FR";
        case 32: return "FW";
        case 64: return "FM";
        case 128: return "FE";
        case 0x1000000: return "L7";
        case 0x10000000: return "AI";
        case 0x20000000: return "L2";
        case 0x40000000: return "L4";
        case 0xFFFFFFFF: return "--";
        default: return "??";
    }
}

const char* baseName(const char* path) noexcept
{
    const char* name = path;
    for (const char* c = path; *c; ++c) {
        if (*c == '\\' || *c == '/') name = c + 1;
    }
    return name;
}

std::size_t buildLine(char (&line)[lineCapacity], int format, const LineParts& parts) noexcept
{
    const Record r(format, parts);
    int length = 0;
    switch (format) {
        case formatShort:
            length = std::snprintf(line, sizeof line, "%s %s %s %s %s%s %s %s", r[0], r[2], r[36], r[32], r[39],
                                   r[52], r[97], r[132]);
            break;
        case formatTime:
            // The time starts 15 characters into the seconds value: its last 5 digits and the decimals.
            length = std::snprintf(line, sizeof line, "%s %s %s %s %s%s %s %s %s", r[0], r[2], r[36], r[32], r[39],
                                   r[52], r[80], r[97], r[132]);
            break;
        case formatText:
            length = std::snprintf(line, sizeof line, "%s %s ", r[97], r[132]);
            break;
        default:
            length = std::snprintf(line, sizeof line, "%s %s P%09dT%09d %s %s %s%s %s %s,%s %s %s", r[0], r[2],
                                   static_cast<int>(parts.processId), static_cast<int>(parts.threadId), r[36], r[32],
                                   r[39], r[52], r[65], r[78], r[91], r[97], r[132]);
    }
    const bool fits = length > 0 && static_cast<std::size_t>(length) < sizeof line;
    return fits ? static_cast<std::size_t>(length) : 0;
}

}  // namespace trc
