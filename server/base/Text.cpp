#include "Text.h"

#include <windows.h>

#include <algorithm>

namespace srv {

namespace {

constexpr std::size_t longestQuoted = 80;

std::string convert(UINT codePage, std::wstring_view text)
{
    if (text.empty()) return {};
    const int units = static_cast<int>(text.size());
    const int length = WideCharToMultiByte(codePage, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(std::max(length, 0)), '\0');
    WideCharToMultiByte(codePage, 0, text.data(), units, result.data(), length, nullptr, nullptr);
    return result;
}

}  // namespace

std::string utf8(std::wstring_view text)
{
    return convert(CP_UTF8, text);
}

std::wstring fromUtf8(std::string_view text)
{
    if (text.empty()) return {};
    const int bytes = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, nullptr, 0);
    std::wstring result(static_cast<std::size_t>(std::max(length, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, result.data(), length);
    return result;
}

std::size_t ansiLength(std::wstring_view text) noexcept
{
    // Nearly all text here is plain ASCII, for which the answer is known without asking the code page.
    if (std::all_of(text.begin(), text.end(), [](wchar_t unit) { return unit < 0x80; })) return text.size();
    const int length =
        WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr);
    return static_cast<std::size_t>(std::max(length, 0));
}

std::string toAnsi(std::wstring_view text)
{
    return convert(CP_ACP, text);
}

std::string inQuotes(std::wstring_view text)
{
    const bool cut = text.size() > longestQuoted;
    std::string result = "\"";
    for (const char byte : utf8(text.substr(0, longestQuoted))) {
        const auto value = static_cast<unsigned char>(byte);
        if (value >= 0x20 && value != 0x7F) {
            result += byte;
            continue;
        }
        constexpr char digits[] = "0123456789ABCDEF";
        result += "\\x";
        result += digits[value >> 4];
        result += digits[value & 15];
    }
    return result + (cut ? "...\"" : "\"");
}

std::string systemMessage(unsigned long error)
{
    wchar_t text[256] = L"";
    DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
                       nullptr, error, 0, text, static_cast<DWORD>(std::size(text)), nullptr);
    while (length > 0 && (text[length - 1] == L' ' || text[length - 1] == L'.'))
        --length;
    const std::string number = "(" + std::to_string(error) + ")";
    return length == 0 ? "system error " + number : utf8({text, length}) + " " + number;
}

}  // namespace srv
