// What the trace asks of the machine and tests replace: the lock's patience, the driver, writing to a trace file, the
// folder of the trace engine, the event log, the clock of Consult. The functions have the shape of those of Windows that
// they stand for.
#pragma once

#include <windows.h>

namespace trc {

struct Platform
{
    DWORD lockWait;  // milliseconds that a line waits for the machine's trace mutex

    // The driver only; files and objects are opened on the machine itself.
    HANDLE(*createFile)
    (const char* name, DWORD access, DWORD share, SECURITY_ATTRIBUTES*, DWORD disposition, DWORD flags,
     HANDLE templateFile);
    BOOL(*deviceIoControl)
    (HANDLE, DWORD code, void* in, DWORD inSize, void* out, DWORD outSize, DWORD* returned, OVERLAPPED*);

    // A trace file's line.
    BOOL (*writeFile)(HANDLE, const void* bytes, DWORD count, DWORD* written, OVERLAPPED*);

    // The common program-files folder of 32-bit programs; false when it cannot be had.
    bool (*commonProgramFiles)(char (&folder)[MAX_PATH]);

    HANDLE (*registerEventSource)(const char* server, const char* source);
    BOOL(*reportEvent)
    (HANDLE, WORD type, WORD category, DWORD event, void* user, WORD strings, DWORD dataSize, const char** texts,
     void* data);
    BOOL (*deregisterEventSource)(HANDLE);

    ULONGLONG (*milliseconds)();  // since some begin; never goes back
};

// The real machine; tests change entries while nothing is traced.
extern Platform trcPlatform;

}  // namespace trc
