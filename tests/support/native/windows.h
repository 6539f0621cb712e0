// As much of Windows as the fuzzed sources name, for a build on the machine itself: types of the same meaning, the
// system's numbers, and functions that behave as the system's do in the Western European code page.
#pragma once

#include <strings.h>

#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#define __declspec(attribute)
#define WINAPI
#define CALLBACK

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using LONG = std::int32_t;
using LSTATUS = long;
using LCID = std::uint32_t;
using LANGID = std::uint16_t;
using HANDLE = void*;
using HINSTANCE = void*;
using HWND = void*;
using HKEY = void*;
using REGSAM = DWORD;
using LPWSTR = wchar_t*;
using LPCWSTR = const wchar_t*;
struct SECURITY_ATTRIBUTES;

constexpr BOOL FALSE = 0;
constexpr BOOL TRUE = 1;
constexpr std::size_t MAX_PATH = 260;

enum : long {
    ERROR_SUCCESS = 0,
    ERROR_NOT_ENOUGH_MEMORY = 8,
    ERROR_INVALID_PARAMETER = 87,
    ERROR_BUFFER_OVERFLOW = 111,
    ERROR_INSUFFICIENT_BUFFER = 122,
    ERROR_MORE_DATA = 234,
    ERROR_INTERNAL_ERROR = 1359,
};

DWORD GetLastError();
void SetLastError(DWORD error);
DWORD GetCurrentProcessId();
DWORD GetCurrentThreadId();

// Memory
inline void __stosd(DWORD* target, DWORD value, std::size_t count)
{
    while (count-- > 0)
        *target++ = value;
}
inline HANDLE GetProcessHeap()
{
    return nullptr;
}
inline void* HeapAlloc(HANDLE, DWORD, std::size_t size)
{
    return std::malloc(size);
}
inline BOOL HeapFree(HANDLE, DWORD, void* memory)
{
    std::free(memory);
    return TRUE;
}

// Texts
constexpr UINT CP_ACP = 0;
constexpr DWORD MB_ERR_INVALID_CHARS = 8;
constexpr DWORD WC_NO_BEST_FIT_CHARS = 0x400;
constexpr int CSTR_LESS_THAN = 1;
constexpr int CSTR_EQUAL = 2;
constexpr int CSTR_GREATER_THAN = 3;
constexpr DWORD NORM_IGNORECASE = 1;
constexpr DWORD SORT_STRINGSORT = 0x1000;

UINT GetACP();
BOOL IsDBCSLeadByteEx(UINT codePage, BYTE byte);
char* CharNextA(const char* text);
DWORD CharUpperBuffW(wchar_t* text, DWORD length);
DWORD CharLowerBuffW(wchar_t* text, DWORD length);
int MultiByteToWideChar(UINT codePage, DWORD flags, const char* text, int length, wchar_t* wide, int capacity);
int WideCharToMultiByte(UINT codePage, DWORD flags, const wchar_t* wide, int length, char* text, int capacity,
                        const char* standIn, BOOL* replaced);
int CompareStringA(LCID locale, DWORD flags, const char* left, int leftLength, const char* right, int rightLength);
int CompareStringOrdinal(const wchar_t* left, int leftLength, const wchar_t* right, int rightLength, BOOL ignoreCase);

inline int _stricmp(const char* left, const char* right)
{
    return strcasecmp(left, right);
}
inline int _strnicmp(const char* left, const char* right, std::size_t count)
{
    return strncasecmp(left, right, count);
}
char* _strlwr(char* text);
int _splitpath_s(const char* path, char* drive, std::size_t driveSize, char* directory, std::size_t directorySize,
                 char* file, std::size_t fileSize, char* extension, std::size_t extensionSize);

// The process and its language
constexpr LCID LOCALE_USER_DEFAULT = 0x400;
constexpr LCID LOCALE_SYSTEM_DEFAULT = 0x800;
constexpr DWORD LOCALE_SABBREVLANGNAME = 3;
constexpr DWORD LOCALE_USE_CP_ACP = 0x40000000;
constexpr DWORD SORT_DEFAULT = 0;
constexpr LCID MAKELCID(LANGID language, DWORD sorting)
{
    return sorting << 16 | language;
}
LANGID GetUserDefaultUILanguage();
int GetLocaleInfoA(LCID locale, DWORD type, char* data, int capacity);
DWORD GetModuleFileNameA(HINSTANCE module, char* path, DWORD size);
const char* GetCommandLineA();

// A registry without keys
inline const HKEY HKEY_LOCAL_MACHINE = nullptr;
constexpr REGSAM KEY_READ = 0x20019;
constexpr DWORD REG_NONE = 0;
constexpr DWORD REG_SZ = 1;
constexpr DWORD REG_EXPAND_SZ = 2;
inline LSTATUS RegOpenKeyExA(HKEY, const char*, DWORD, REGSAM, HKEY*)
{
    return 2;
}
inline LSTATUS RegQueryValueExA(HKEY, const char*, DWORD*, DWORD*, BYTE*, DWORD*)
{
    return 2;
}
inline LSTATUS RegCloseKey(HKEY)
{
    return 0;
}
