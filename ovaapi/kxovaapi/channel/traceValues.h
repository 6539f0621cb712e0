// Windows types as the printf formats of trace texts take them: %d wants int, %x unsigned int.
#pragma once

#include <windows.h>

#include <concepts>
#include <cstdint>

template <std::integral Number>
unsigned int hex(Number value) noexcept
{
    return static_cast<unsigned int>(value);
}

inline unsigned int hex(const void* handle) noexcept
{
    return static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(handle));
}

template <std::integral Number>
int dec(Number value) noexcept
{
    return static_cast<int>(value);
}

inline int dec(const void* handle) noexcept
{
    return static_cast<int>(reinterpret_cast<std::intptr_t>(handle));
}

inline int currentPid() noexcept
{
    return dec(GetCurrentProcessId());
}

inline int currentTid() noexcept
{
    return dec(GetCurrentThreadId());
}
