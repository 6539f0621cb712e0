#include "windows.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "Kxotrc.h"

static_assert(sizeof(wchar_t) == 2, "-fshort-wchar is missing");

// The trace is off, and stays so.
std::uint32_t trcLevelMask = 0;
std::uint32_t trcLastGeneration = 0;
static const volatile std::uint32_t noGeneration = 0;
const volatile std::uint32_t* trcGeneration = &noGeneration;
void TrcLine(const char*, std::uint32_t, const char*, const char*, int, const char*, ...) noexcept {}

// The C library's own counts units of four bytes.
extern "C" std::size_t wcslen(const wchar_t* text) noexcept
{
    const wchar_t* end = text;
    while (*end)
        ++end;
    return static_cast<std::size_t>(end - text);
}

namespace {

thread_local DWORD lastError = 0;

// 0x80 to 0x9F; 0x81, 0x8D, 0x8F, 0x90 and 0x9D stand for themselves.
constexpr wchar_t upperControls[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

wchar_t toUnit(char character) noexcept
{
    const auto byte = static_cast<unsigned char>(character);
    return byte >= 0x80 && byte < 0xA0 ? upperControls[byte - 0x80] : wchar_t{byte};
}

char toCharacter(wchar_t unit) noexcept
{
    if (unit < 0x80 || (unit >= 0xA0 && unit < 0x100)) return static_cast<char>(unit);
    const wchar_t* const found = std::find(std::begin(upperControls), std::end(upperControls), unit);
    return found == std::end(upperControls) ? '?' : static_cast<char>(0x80 + (found - upperControls));
}

// What both conversions do: a length of -1 takes the terminator along, no room asks for the length.
template <typename From, typename To, typename Convert>
int convert(const From* from, int length, std::size_t (*lengthOf)(const From*), To* to, int room,
            Convert one) noexcept
{
    if (!from || length == 0 || room < 0 || (room > 0 && !to)) {
        lastError = ERROR_INVALID_PARAMETER;
        return 0;
    }
    const int count = length < 0 ? static_cast<int>(lengthOf(from) + 1) : length;
    if (room == 0) return count;
    std::transform(from, from + std::min(count, room), to, one);
    if (count <= room) return count;
    lastError = ERROR_INSUFFICIENT_BUFFER;
    return 0;
}

}  // namespace

DWORD GetLastError() noexcept
{
    return lastError;
}

int MultiByteToWideChar(UINT, DWORD, const char* text, int length, wchar_t* wide, int room) noexcept
{
    return convert<char, wchar_t>(text, length, std::strlen, wide, room, toUnit);
}

int WideCharToMultiByte(UINT, DWORD, const wchar_t* wide, int length, char* text, int room, const char*,
                        BOOL*) noexcept
{
    return convert<wchar_t, char>(wide, length, wcslen, text, room, toCharacter);
}
