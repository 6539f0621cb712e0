// The number of handles that this process holds, from the system's own table of all handles.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

inline std::ptrdiff_t handleCount()
{
    struct Entry
    {
        std::uint32_t process;
        std::uint8_t type;
        std::uint8_t flags;
        std::uint16_t handle;
        void* object;
        std::uint32_t access;
    };
    using Query = LONG(NTAPI*)(ULONG, void*, ULONG, ULONG*);
    constexpr ULONG systemHandles = 16;
    const auto query = reinterpret_cast<Query>(
        reinterpret_cast<void (*)()>(GetProcAddress(GetModuleHandleA("ntdll.dll"), "NtQuerySystemInformation")));
    std::vector<std::uint32_t> table(1 << 16);
    ULONG needed = 0;
    while (query(systemHandles, table.data(), static_cast<ULONG>(table.size() * sizeof table[0]), &needed) < 0)
        table.resize(table.size() * 2);
    const auto* first = reinterpret_cast<const Entry*>(table.data() + 1);
    const auto own = GetCurrentProcessId();
    return std::count_if(first, first + table[0], [own](const Entry& entry) { return entry.process == own; });
}
