#include "trcSettings.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "trcText.h"

namespace trc {
namespace {

constexpr std::string_view defaultPath = "C:\\Tmp\\";
constexpr std::string_view defaultFileName = "KxFile";

int digitOf(char c) noexcept
{
    if (c >= '0' && c <= '9') return c - '0';
    const char letter = lower(c);
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : 16;
}

// A sign and digits of the base, saturated far beyond every number that is wanted. Written out, because the C
// library's functions would change errno.
std::int64_t numberOf(std::string_view text, int base) noexcept
{
    constexpr std::int64_t limit = std::numeric_limits<std::uint32_t>::max();
    const std::size_t first = text.find_first_not_of(" \t");
    text.remove_prefix(first == std::string_view::npos ? text.size() : first);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    if (base == 0) {
        base = 10;
        if (text.size() > 2 && text[0] == '0' && lower(text[1]) == 'x' && digitOf(text[2]) < 16) {
            base = 16;
            text.remove_prefix(2);
        } else if (text.starts_with('0')) {
            base = 8;
        }
    }
    std::int64_t number = 0;
    for (const char c : text) {
        if (digitOf(c) >= base) break;
        number = std::min(number * base + digitOf(c), limit);
    }
    return negative ? -number : number;
}

// Counts from 1 upward only.
template <typename Number>
Number sizeOf(std::string_view text) noexcept
{
    const std::int64_t number = numberOf(text, 10);
    return number < 1 ? Number{0}
                      : static_cast<Number>(std::min<std::int64_t>(number, std::numeric_limits<Number>::max()));
}

class Values
{
 public:
    Values(ReadValue read, void* source) noexcept : read_(read), source_(source) {}

    // The value, empty when it is missing; valid until the next one is read.
    std::string_view operator[](const char* name) noexcept
    {
        if (!read_(source_, name, value_)) return {};
        return bounded(value_, valueSize);
    }

 private:
    ReadValue read_;
    void* source_;
    Value value_;
};

}  // namespace

int formatOf(std::string_view text) noexcept
{
    if (equalsNoCase(text, "SHORT")) return formatShort;
    if (equalsNoCase(text, "TIME")) return formatTime;
    if (equalsNoCase(text, "TEXT")) return formatText;
    return formatLong;
}

int outputOf(std::string_view text) noexcept
{
    static constexpr std::string_view names[] = {"VXD", "COM1", "COM2", "PIPE", "FILE", "SM", "DBG", "KXTRACEENGINE"};
    for (int output = outputVxd; output <= outputEngine; ++output) {
        if (equalsNoCase(text, names[output])) return output;
    }
    return outputFile;
}

std::uint32_t levelOf(std::string_view text) noexcept
{
    return static_cast<std::uint32_t>(numberOf(text, 0));
}

int decimalOf(std::string_view text) noexcept
{
    return static_cast<int>(std::clamp<std::int64_t>(numberOf(text, 10), std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

bool composeFileBase(char (&base)[fileBaseSize], std::string_view path, std::string_view fileName) noexcept
{
    if (path.empty()) path = defaultPath;
    fileName = fileName.empty() ? defaultFileName : fileName.substr(0, fileName.find('.'));
    const std::string_view separator = path.ends_with('\\') ? "" : "\\";
    if (path.size() + separator.size() + fileName.size() >= fileBaseSize) return false;
    char* end = std::copy(path.begin(), path.end(), base);
    end = std::copy(separator.begin(), separator.end(), end);
    *std::copy(fileName.begin(), fileName.end(), end) = 0;
    return true;
}

Settings readSettings(ReadValue read, void* source) noexcept
{
    Values values(read, source);
    Settings settings;
    // An interval below zero has no meaning; taken as it is, it would read the registry with every line.
    settings.consult = std::max(decimalOf(values["Consult"]), 0);
    settings.functions = FilterList(values["FctName"]);
    settings.modules = FilterList(values["Module"]);
    settings.texts = FilterList(values["String"]);
    settings.traceIds = FilterList(values["TraceId"]);
    settings.format = formatOf(values["Format"]);
    settings.level = levelOf(values["Level"]);
    const std::string_view output = values["Output"];
    settings.output = outputOf(output);
    // Any other text merely falls back to the file output; the files' values are read only when it is asked for.
    const bool file = equalsNoCase(output, "FILE");
    if (settings.output == outputSm) settings.smSize = sizeOf<std::uint32_t>(values["sm_size"]);
    if (file) {
        settings.bytesPerFile = sizeOf<std::int32_t>(values["Byte/File"]);
        char path[valueSize];
        copyCut(path, values["Path"]);
        const std::string_view fileName = values["FileName"];
        if (path[0] == 0 && fileName.empty()) return settings;
        if (!composeFileBase(settings.fileBase, bounded(path, valueSize), fileName)) settings.fileBase[0] = 0;
    }
    return settings;
}

}  // namespace trc
