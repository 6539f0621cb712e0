// For what another thread brings about.
#pragma once

#include <windows.h>

// Waits until something is so; false if it is not so for too long.
template <typename F>
bool comesTrue(F condition)
{
    for (const DWORD start = GetTickCount(); !condition(); SwitchToThread())
        if (GetTickCount() - start > 20'000) return false;
    return true;
}
