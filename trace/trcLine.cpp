#include "trcLine.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace trc {
namespace {

// Fields are put together by hand: the general formatter takes longer than it takes to hand the line to the ring.

void putCut(Record& record, std::size_t field, std::string_view text, std::size_t limit) noexcept
{
    const std::size_t length = std::min(text.size(), limit);
    if (length != 0) std::memcpy(record.bytes + field, text.data(), length);
    record.bytes[field + length] = 0;
}

// Exactly `width` characters: blanks on the left of a short text, a long one cut.
void putPadded(Record& record, std::size_t field, std::string_view text, std::size_t width) noexcept
{
    const std::size_t length = std::min(text.size(), width);
    std::memset(record.bytes + field, ' ', width - length);
    putCut(record, field + width - length, text, length);
}

void putHex(Record& record, std::size_t field, std::uint32_t value, std::size_t digits) noexcept
{
    record.bytes[field + digits] = 0;
    for (std::size_t i = digits; i != 0; value >>= 4)
        record.bytes[field + --i] = "0123456789abcdef"[value & 15];
}

void putTwoDigits(Record& record, std::size_t offset, int value) noexcept
{
    record.bytes[offset] = static_cast<char>('0' + value / 10 % 10);
    record.bytes[offset + 1] = static_cast<char>('0' + value % 10);
}

// A signed number with leading zeros, at least `width` characters with the sign.
class Decimal
{
 public:
    Decimal(int value, std::size_t width) noexcept
    {
        char* digit = text_ + sizeof text_;
        auto rest = static_cast<std::uint32_t>(value);
        if (value < 0) rest = 0 - rest;
        do {
            *--digit = static_cast<char>('0' + rest % 10);
            rest /= 10;
        } while (rest != 0);
        char* const padded = text_ + sizeof text_ - width + (value < 0 ? 1 : 0);
        while (digit > padded)
            *--digit = '0';
        if (value < 0) *--digit = '-';
        begin_ = digit;
    }
    Decimal(const Decimal&) = delete;
    Decimal& operator=(const Decimal&) = delete;

    operator std::string_view() const noexcept
    {
        return {begin_, static_cast<std::size_t>(text_ + sizeof text_ - begin_)};
    }

 private:
    char text_[12];
    const char* begin_;
};

// Only result and error lines show a result: 0, 1 and -1 are states, all else is a code.
void putResult(Record& record, const LineParts& parts) noexcept
{
    constexpr std::uint32_t levelsWithResult = 128 | 4;
    if ((parts.level & levelsWithResult) == 0) {
        putCut(record, Record::result, "  ", 2);
        putCut(record, Record::subCode, "      ", 6);
    } else if (parts.result <= 1 || parts.result == 0xFFFFFFFF) {
        const char* const state = parts.result == 0 ? " 0" : parts.result == 1 ? " 1" : "-1";
        putCut(record, Record::result, state, 2);
        putCut(record, Record::subCode, "  ", 2);
        putHex(record, Record::subCode + 2, parts.subCode, 4);
    } else {
        putHex(record, Record::result, parts.result, 8);
        putCut(record, Record::subCode, {}, 0);
    }
}

void putTimeOfDay(Record& record, const TimeOfDay& time) noexcept
{
    putCut(record, Record::time, "00:00:00,000", 12);
    if (!time.known) return;
    putTwoDigits(record, Record::time, time.hour);
    putTwoDigits(record, Record::time + 3, time.minute);
    putTwoDigits(record, Record::time + 6, time.second);
    record.bytes[Record::milliseconds + 1] = static_cast<char>('0' + time.millisecond / 100 % 10);
    putTwoDigits(record, Record::milliseconds + 2, time.millisecond);
}

// A line that is being put together; once something did not fit, nothing does.
class Line
{
 public:
    explicit Line(std::span<char> room) noexcept : room_(room), fits_(!room.empty()) {}

    Line& operator<<(std::string_view text) noexcept
    {
        fits_ = fits_ && text.size() < room_.size() - length_;
        if (!fits_) return *this;
        std::memcpy(room_.data() + length_, text.data(), text.size());
        length_ += text.size();
        return *this;
    }

    std::size_t finish() noexcept
    {
        if (!fits_) length_ = 0;
        if (!room_.empty()) room_[length_] = 0;
        return length_;
    }

 private:
    std::span<char> room_;
    std::size_t length_ = 0;
    bool fits_;
};

}  // namespace

const char* levelTag(std::uint32_t level) noexcept
{
    // clang-format off
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
    // clang-format on
}

std::string_view withoutFolder(std::string_view path) noexcept
{
    // Compilers name source files with either separator.
    const std::size_t separator = path.find_last_of("\\/");
    return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

void buildRecord(Record& record, int format, const LineParts& parts) noexcept
{
    std::memset(record.bytes, 0, sizeof record.bytes);
    if (format == formatShort) putCut(record, Record::letter, "S", 1);
    if (format == formatLong) putCut(record, Record::letter, "L", 1);
    if (format == formatTime) putCut(record, Record::letter, "T", 1);
    putPadded(record, Record::traceId, parts.traceId, 8);
    putPadded(record, Record::module, parts.module, 3);
    putCut(record, Record::levelTag, levelTag(parts.level), 2);
    putResult(record, parts);
    if (format == formatTime) {
        std::snprintf(record.bytes + Record::time, Record::function - Record::time, "%027.6f", parts.seconds);
    } else {
        putTimeOfDay(record, parts.time);
    }
    if (format == formatLong) {
        putCut(record, Record::sourceFile, withoutFolder(parts.sourceFile), 12);
        putCut(record, Record::line, Decimal(parts.line, 5), 5);
    }
    putCut(record, Record::function, parts.function, 34);
    putCut(record, Record::text, parts.text, 256);
}

std::size_t buildLine(std::span<char> line, int format, const Record& r, std::uint32_t processId,
                      std::uint32_t threadId) noexcept
{
    Line out(line);
    const auto origin = [&]() -> Line& {
        return out << r[Record::levelTag] << " " << r[Record::module] << " " << r[Record::result]
                   << r[Record::subCode] << " ";
    };
    if (format != formatText) out << r[Record::letter] << " " << r[Record::traceId] << " ";
    switch (format) {
        case formatShort:
            origin();
            break;
        case formatTime:
            // Cut on purpose: the last five digits of whole seconds and the decimals tell lines apart.
            origin() << r[Record::shownSeconds] << " ";
            break;
        case formatText:
            break;
        default:
            out << "P" << Decimal(static_cast<int>(processId), 9) << "T" << Decimal(static_cast<int>(threadId), 9)
                << " ";
            origin() << r[Record::time] << " " << r[Record::sourceFile] << "," << r[Record::line] << " ";
    }
    out << r[Record::function] << " " << r[Record::text];
    if (format == formatText) out << " ";
    return out.finish();
}

}  // namespace trc
