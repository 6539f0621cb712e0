// What this process holds that a leak would show in.
#pragma once

#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

#include "handle_count.h"

struct Holdings
{
    std::size_t handles = handleCount();
    std::size_t threads = threadCount();
    std::size_t privateBytes = privateByteCount();

    static std::size_t threadCount()
    {
        const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
        THREADENTRY32 thread{};
        thread.dwSize = sizeof thread;
        std::size_t count = 0;
        for (BOOL more = Thread32First(all, &thread); more; more = Thread32Next(all, &thread))
            count += thread.th32OwnerProcessID == GetCurrentProcessId();
        CloseHandle(all);
        return count;
    }

    static std::size_t privateByteCount()
    {
        PROCESS_MEMORY_COUNTERS counters{};
        counters.cb = sizeof counters;
        K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
        return counters.PagefileUsage;
    }
};
