#include "text.h"

#include <windows.h>

#include <algorithm>

namespace {

std::wstring widen(std::string_view text, UINT codePage)
{
    if (text.empty()) return {};
    const int size = static_cast<int>(text.size());
    std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(codePage, 0, text.data(), size, nullptr, 0)), 0);
    MultiByteToWideChar(codePage, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string narrow(const std::wstring& wide, UINT codePage)
{
    if (wide.empty()) return {};
    const int size = static_cast<int>(wide.size());
    std::string text(
        static_cast<std::size_t>(WideCharToMultiByte(codePage, 0, wide.data(), size, nullptr, 0, nullptr, nullptr)),
        0);
    WideCharToMultiByte(codePage, 0, wide.data(), size, text.data(), static_cast<int>(text.size()), nullptr, nullptr);
    return text;
}

}  // namespace

std::string toUtf8(std::string_view ansi)
{
    return narrow(widen(ansi, CP_ACP), CP_UTF8);
}

std::string toAnsi(std::string_view utf8)
{
    return narrow(widen(utf8, CP_UTF8), CP_ACP);
}

std::size_t columns(std::string_view utf8)
{
    return static_cast<std::size_t>(
        std::count_if(utf8.begin(), utf8.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}
