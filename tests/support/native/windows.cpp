#include "windows.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iterator>

namespace {

thread_local DWORD lastError = 0;

// What the code page has at 0x80 to 0x9F.
constexpr std::uint16_t specials[32] = {0x20AC, 0x81,   0x201A, 0x192,  0x201E, 0x2026, 0x2020, 0x2021,
                                        0x2C6,  0x2030, 0x160,  0x2039, 0x152,  0x8D,   0x17D,  0x8F,
                                        0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                        0x2DC,  0x2122, 0x161,  0x203A, 0x153,  0x9D,   0x17E,  0x178};

wchar_t widen(char character)
{
    const auto byte = static_cast<unsigned char>(character);
    return static_cast<wchar_t>(byte >= 0x80 && byte < 0xA0 ? specials[byte - 0x80] : byte);
}

bool narrow(wchar_t unit, char& character)
{
    const auto value = static_cast<std::uint32_t>(unit);
    if (value < 0x80 || (value >= 0xA0 && value < 0x100)) {
        character = static_cast<char>(value);
        return true;
    }
    const auto* const special = std::find(std::begin(specials), std::end(specials), value);
    const bool known = special != std::end(specials);
    character = known ? static_cast<char>(0x80 + (special - specials)) : '?';
    return known;
}

template <typename Unit>
int lengthOf(const Unit* text)
{
    const Unit* end = text;
    while (*end)
        ++end;
    return static_cast<int>(end - text) + 1;
}

bool isLetterOfLatin1(wchar_t unit)
{
    return unit >= 0xC0 && unit <= 0xFE && unit != 0xD7 && unit != 0xDF && unit != 0xF7;
}

wchar_t upper(wchar_t unit)
{
    if (unit >= 'a' && unit <= 'z') return static_cast<wchar_t>(unit - 32);
    return isLetterOfLatin1(unit) && unit >= 0xE0 ? static_cast<wchar_t>(unit - 32) : unit;
}

wchar_t lower(wchar_t unit)
{
    if (unit >= 'A' && unit <= 'Z') return static_cast<wchar_t>(unit + 32);
    return isLetterOfLatin1(unit) && unit < 0xE0 ? static_cast<wchar_t>(unit + 32) : unit;
}

template <typename Unit, typename Convert>
int compare(const Unit* left, int leftLength, const Unit* right, int rightLength, Convert convert)
{
    for (int i = 0; i < std::min(leftLength, rightLength); ++i)
        if (convert(left[i]) != convert(right[i]))
            return convert(left[i]) < convert(right[i]) ? CSTR_LESS_THAN : CSTR_GREATER_THAN;
    return leftLength == rightLength ? CSTR_EQUAL : leftLength < rightLength ? CSTR_LESS_THAN : CSTR_GREATER_THAN;
}

// Room for `needed`; 0 asks how much that is.
bool fits(int needed, int capacity)
{
    if (needed <= capacity) return true;
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return false;
}

int answer(const char* text, char* data, int capacity)
{
    const int length = static_cast<int>(std::strlen(text)) + 1;
    if (!fits(length, capacity)) return 0;
    std::memcpy(data, text, static_cast<std::size_t>(length));
    return length;
}

}  // namespace

DWORD GetLastError()
{
    return lastError;
}

void SetLastError(DWORD error)
{
    lastError = error;
}

DWORD GetCurrentProcessId()
{
    return 1;
}

DWORD GetCurrentThreadId()
{
    return 1;
}

UINT GetACP()
{
    return 1252;
}

BOOL IsDBCSLeadByteEx(UINT, BYTE)
{
    return FALSE;
}

char* CharNextA(const char* text)
{
    return const_cast<char*>(*text ? text + 1 : text);
}

DWORD CharUpperBuffW(wchar_t* text, DWORD length)
{
    std::transform(text, text + length, text, upper);
    return length;
}

DWORD CharLowerBuffW(wchar_t* text, DWORD length)
{
    std::transform(text, text + length, text, lower);
    return length;
}

int MultiByteToWideChar(UINT, DWORD, const char* text, int length, wchar_t* wide, int capacity)
{
    if (length < 0) length = lengthOf(text);
    if (capacity == 0) return length;
    if (!fits(length, capacity)) return 0;
    std::transform(text, text + length, wide, widen);
    return length;
}

// As the system does, it fills what room there is before it fails.
int WideCharToMultiByte(UINT, DWORD, const wchar_t* wide, int length, char* text, int capacity, const char*,
                        BOOL* replaced)
{
    if (length < 0) length = lengthOf(wide);
    if (capacity == 0) return length;
    for (int i = 0; i < std::min(length, capacity); ++i)
        if (!narrow(wide[i], text[i]) && replaced) *replaced = TRUE;
    return fits(length, capacity) ? length : 0;
}

int CompareStringA(LCID, DWORD flags, const char* left, int leftLength, const char* right, int rightLength)
{
    if (leftLength < 0) leftLength = lengthOf(left) - 1;
    if (rightLength < 0) rightLength = lengthOf(right) - 1;
    return compare(left, leftLength, right, rightLength, [flags](char character) {
        return flags & NORM_IGNORECASE ? lower(widen(character)) : widen(character);
    });
}

int CompareStringOrdinal(const wchar_t* left, int leftLength, const wchar_t* right, int rightLength, BOOL ignoreCase)
{
    return compare(left, leftLength, right, rightLength,
                   [ignoreCase](wchar_t unit) { return ignoreCase ? upper(unit) : unit; });
}

char* _strlwr(char* text)
{
    for (char* at = text; *at; ++at)
        *at = static_cast<char>(std::tolower(static_cast<unsigned char>(*at)));
    return text;
}

int _splitpath_s(const char*, char* drive, std::size_t driveSize, char* directory, std::size_t directorySize,
                 char* file, std::size_t fileSize, char* extension, std::size_t extensionSize)
{
    std::snprintf(drive, driveSize, "C:");
    std::snprintf(directory, directorySize, "\\Programs\\");
    std::snprintf(file, fileSize, "kxovatsx");
    std::snprintf(extension, extensionSize, ".exe");
    return 0;
}

LANGID GetUserDefaultUILanguage()
{
    return 0x407;
}

int GetLocaleInfoA(LCID locale, DWORD, char* data, int capacity)
{
    return answer(locale == 0x407 ? "DEU" : "ENU", data, capacity);
}

DWORD GetModuleFileNameA(HINSTANCE, char* path, DWORD size)
{
    return static_cast<DWORD>(std::max(0, answer("C:\\Programs\\kxovatsx.exe", path, static_cast<int>(size)) - 1));
}

const char* GetCommandLineA()
{
    return "\"C:\\Programs\\kxovatsx.exe\" LangExt=A";
}
