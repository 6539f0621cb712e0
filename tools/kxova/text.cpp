#include "text.h"

#include <windows.h>

#include <algorithm>

#include "results.h"

namespace {

std::wstring widen(std::string_view text, UINT codePage)
{
    if (text.empty()) return {};
    const int size = static_cast<int>(text.size());
    std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(codePage, 0, text.data(), size, nullptr, 0)), 0);
    MultiByteToWideChar(codePage, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string narrow(const std::wstring& wide, UINT codePage, DWORD flags = 0, BOOL* replaced = nullptr)
{
    if (wide.empty()) return {};
    const int size = static_cast<int>(wide.size());
    const int length = WideCharToMultiByte(codePage, flags, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(length), 0);
    WideCharToMultiByte(codePage, flags, wide.data(), size, text.data(), length, nullptr, replaced);
    return text;
}

// Without characters that merely look alike.
std::optional<std::string> exactAnsi(std::string_view utf8)
{
    BOOL replaced = FALSE;
    std::string ansi = narrow(widen(utf8, CP_UTF8), CP_ACP, WC_NO_BEST_FIT_CHARS, &replaced);
    if (replaced) return std::nullopt;
    return ansi;
}

}  // namespace

std::string toUtf8(std::string_view ansi)
{
    return narrow(widen(ansi, CP_ACP), CP_UTF8);
}

std::string toAnsi(std::string_view utf8)
{
    std::optional<std::string> ansi = exactAnsi(utf8);
    if (!ansi) throw Failure("use \"" + std::string(utf8) + "\"", ERROR_NO_UNICODE_TRANSLATION);
    return *std::move(ansi);
}

std::optional<std::size_t> ansiLength(std::string_view utf8)
{
    const std::optional<std::string> ansi = exactAnsi(utf8);
    if (!ansi) return std::nullopt;
    return ansi->size();
}

std::wstring toWide(std::string_view utf8)
{
    return widen(utf8, CP_UTF8);
}

std::wstring folded(std::string_view utf8)
{
    std::wstring name = toWide(utf8);
    CharUpperBuffW(name.data(), static_cast<DWORD>(name.size()));
    return name;
}

std::size_t columns(std::string_view utf8)
{
    return static_cast<std::size_t>(
        std::count_if(utf8.begin(), utf8.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}
