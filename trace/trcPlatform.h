// What the trace asks of the machine and tests replace: the driver, the engine's folder, the event log.
#pragma once

#include <windows.h>

namespace trc {

struct Platform
{
    DWORD lockTimeout;  // milliseconds that a line waits for the machine's trace mutex

    HANDLE (*openDriver)(const char* name);
    BOOL (*sendToDriver)(HANDLE driver, DWORD code, const void* bytes, DWORD count);
    bool (*commonProgramFiles)(char (&folder)[MAX_PATH]);
    void (*reportEvent)(WORD type, DWORD event, const char* const* texts, WORD count);
};

// The real machine; tests change entries before the trace starts.
Platform& platform() noexcept;

}  // namespace trc
