// How many handles this process has open. (The system's ordinary function for it always answers 0 where the tests
// run.)
#pragma once

#include <windows.h>
#include <winternl.h>

#include <cstdint>
#include <stdexcept>
#include <vector>

inline std::size_t handleCount()
{
    struct Entry
    {
        ULONG process;
        UCHAR type;
        UCHAR flags;
        USHORT handle;
        void* object;
        ACCESS_MASK access;
    };
    constexpr int handleInformation = 16;
    constexpr NTSTATUS lengthMismatch = static_cast<NTSTATUS>(0xC0000004);

    using Query = NTSTATUS(NTAPI*)(int, void*, ULONG, ULONG*);
    const auto query = reinterpret_cast<Query>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("ntdll"), "NtQuerySystemInformation")));

    std::vector<Entry> buffer(4096);
    NTSTATUS status;
    while ((status = query(handleInformation, buffer.data(), static_cast<ULONG>(buffer.size() * sizeof(Entry)),
                           nullptr)) == lengthMismatch) {
        buffer.resize(buffer.size() * 2);
    }
    if (status < 0) throw std::runtime_error("the handles cannot be listed");

    // A count stands before the first entry, which is aligned as a pointer is.
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(buffer.data());
    const auto total = *reinterpret_cast<const ULONG*>(bytes);
    const auto* entries = reinterpret_cast<const Entry*>(bytes + sizeof(void*));
    std::size_t count = 0;
    for (ULONG i = 0; i < total; ++i)
        count += entries[i].process == GetCurrentProcessId();
    return count;
}
