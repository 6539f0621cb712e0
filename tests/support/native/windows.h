// The little of Windows that the message buffers use, for building them natively: for measurements beside native
// libraries, and for fuzzing with sanitizers. To be compiled with -fshort-wchar, because texts are UTF-16.
#pragma once

#include <cstddef>
#include <cstdint>

using BOOL = int;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
struct SECURITY_ATTRIBUTES;

inline constexpr DWORD ERROR_SUCCESS = 0;
inline constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
inline constexpr DWORD ERROR_INVALID_PARAMETER = 87;
inline constexpr DWORD ERROR_BUFFER_OVERFLOW = 111;
inline constexpr DWORD ERROR_INSUFFICIENT_BUFFER = 122;
inline constexpr DWORD ERROR_MORE_DATA = 234;

inline constexpr UINT CP_ACP = 0;

DWORD GetLastError() noexcept;

// Code page 1252, with '?' for what it lacks; flags and the default character are not looked at.
int MultiByteToWideChar(UINT codePage, DWORD flags, const char* text, int length, wchar_t* wide, int room) noexcept;
int WideCharToMultiByte(UINT codePage, DWORD flags, const wchar_t* wide, int length, char* text, int room,
                        const char* defaultCharacter, BOOL* defaultUsed) noexcept;
