#include "Source.h"

#include <windows.h>

#include <algorithm>

namespace catalogue {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool between(char byte, unsigned lowest, unsigned highest)
{
    const auto value = static_cast<unsigned char>(byte);
    return value >= lowest && value <= highest;
}

bool isContinuation(char byte)
{
    return between(byte, 0x80, 0xBF);
}

}  // namespace

std::size_t utf8Length(std::string_view text)
{
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x80) return 1;
    // What the second byte may be keeps out overlong forms, surrogates and what lies beyond U+10FFFF.
    std::size_t length = 0;
    unsigned lowest = 0x80;
    unsigned highest = 0xBF;
    if (first >= 0xC2 && first <= 0xDF) {
        length = 2;
    } else if (first >= 0xE0 && first <= 0xEF) {
        length = 3;
        if (first == 0xE0) lowest = 0xA0;
        if (first == 0xED) highest = 0x9F;
    } else if (first >= 0xF0 && first <= 0xF4) {
        length = 4;
        if (first == 0xF0) lowest = 0x90;
        if (first == 0xF4) highest = 0x8F;
    }
    if (length == 0 || text.size() < length || !between(text[1], lowest, highest)) return 0;
    for (std::size_t i = 2; i < length; ++i)
        if (!isContinuation(text[i])) return 0;
    return length;
}

std::wstring wideFromUtf8(std::string_view utf8)
{
    if (utf8.empty()) return {};
    const int size = static_cast<int>(utf8.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), length);
    return wide;
}

Source::Source(std::string_view utf8, std::filesystem::path name) : name_(std::move(name)), text_(utf8)
{
    if (text_.starts_with(byteOrderMark)) text_.remove_prefix(byteOrderMark.size());
    lineStarts_.push_back(0);
    for (std::size_t i = 0; i < text_.size(); ++i)
        if (text_[i] == '\n') lineStarts_.push_back(i + 1);
}

Position Source::positionOf(std::size_t offset) const
{
    offset = std::min(offset, text_.size());
    const auto next = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), offset);
    const std::size_t line = static_cast<std::size_t>(next - lineStarts_.begin());
    const std::string_view before = text_.substr(*(next - 1), offset - *(next - 1));
    const auto characters =
        std::count_if(before.begin(), before.end(), [](char byte) { return !isContinuation(byte); });
    return {line, static_cast<std::size_t>(characters) + 1};
}

std::vector<std::size_t> Source::invalidBytes() const
{
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < text_.size();) {
        if (const std::size_t length = utf8Length(text_.substr(i))) {
            i += length;
            continue;
        }
        found.push_back(i);
        const std::size_t end = text_.find('\n', i);
        if (end == std::string_view::npos) break;
        i = end + 1;
    }
    return found;
}

}  // namespace catalogue
