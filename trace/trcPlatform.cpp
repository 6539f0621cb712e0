#include "trcPlatform.h"

namespace trc {
namespace {

HANDLE createFile(const char* name, DWORD access, DWORD share, SECURITY_ATTRIBUTES* attributes, DWORD disposition,
                  DWORD flags, HANDLE templateFile)
{
    return CreateFileA(name, access, share, attributes, disposition, flags, templateFile);
}

BOOL deviceIoControl(HANDLE device, DWORD code, void* in, DWORD inSize, void* out, DWORD outSize, DWORD* returned,
                     OVERLAPPED* overlapped)
{
    return DeviceIoControl(device, code, in, inSize, out, outSize, returned, overlapped);
}

BOOL writeFile(HANDLE file, const void* bytes, DWORD count, DWORD* written, OVERLAPPED* overlapped)
{
    return WriteFile(file, bytes, count, written, overlapped);
}

// The shell library is loaded by hand, so that only processes that are configured for the trace engine pay for it.
bool commonProgramFiles(char (&folder)[MAX_PATH])
{
    constexpr int csidlProgramFilesCommon = 43;
    using GetFolderPath = HRESULT(WINAPI*)(HWND, int, HANDLE, DWORD, char*);
    const HMODULE shell = LoadLibraryA("shell32.dll");
    if (!shell) return false;
    const auto getFolderPath =
        reinterpret_cast<GetFolderPath>(reinterpret_cast<void*>(GetProcAddress(shell, "SHGetFolderPathA")));
    const bool found = getFolderPath && getFolderPath(nullptr, csidlProgramFilesCommon, nullptr, 0, folder) == S_OK;
    FreeLibrary(shell);
    return found;
}

HANDLE registerEventSource(const char* server, const char* source)
{
    return RegisterEventSourceA(server, source);
}

BOOL reportEvent(HANDLE log, WORD type, WORD category, DWORD event, void* user, WORD strings, DWORD dataSize,
                 const char** texts, void* data)
{
    return ReportEventA(log, type, category, event, user, strings, dataSize, texts, data);
}

BOOL deregisterEventSource(HANDLE log)
{
    return DeregisterEventSource(log);
}

ULONGLONG milliseconds()
{
    return GetTickCount64();
}

}  // namespace

constinit Platform trcPlatform{10000,
                               createFile,
                               deviceIoControl,
                               writeFile,
                               commonProgramFiles,
                               registerEventSource,
                               reportEvent,
                               deregisterEventSource,
                               milliseconds};

}  // namespace trc
