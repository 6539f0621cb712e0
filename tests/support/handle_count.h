// How many handles this process has open.
//
// Each value that can be a handle is tried. The system's own ways are of no use where the tests run:
// GetProcessHandleCount always answers 0 there, and listing the handles of all processes
// (NtQuerySystemInformation, class 16) makes Wine's server read past the empty handle table of a process that is
// just starting or ending, and crash.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

// What the run-time may keep after threads have met at one of its locks, once; a leak in a thousand uses is far
// above.
inline constexpr std::size_t handlesOfTheRunTime = 5;

inline std::size_t handleCount()
{
    constexpr std::uintptr_t step = 4;
    constexpr std::size_t longestGap =
        1024;  // the lowest free value is given first, so the values lie close together
    std::size_t count = 0;
    std::size_t gap = 0;
    for (std::uintptr_t value = step; gap < longestGap; value += step) {
        DWORD flags;
        if (GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) {
            ++count;
            gap = 0;
        } else {
            ++gap;
        }
    }
    return count;
}
