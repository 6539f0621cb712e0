#include "trcPlatform.h"

namespace trc {
namespace {

constexpr char eventSource[] = "Kxotrc";
constexpr int csidlProgramFilesCommon = 43;

HANDLE openDriver(const char* name)
{
    return CreateFileA(name, 0, 0, nullptr, OPEN_EXISTING, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
}

BOOL sendToDriver(HANDLE driver, DWORD code, const void* bytes, DWORD count)
{
    DWORD returned = 0;
    return DeviceIoControl(driver, code, const_cast<void*>(bytes), count, nullptr, 0, &returned, nullptr);
}

// The shell library is loaded only by processes that are configured for the trace engine.
bool commonProgramFiles(char (&folder)[MAX_PATH])
{
    const HMODULE shell = LoadLibraryA("shell32.dll");
    if (!shell) return false;
    using GetFolderPath = HRESULT(WINAPI*)(HWND, int, HANDLE, DWORD, char*);
    const auto getFolderPath =
        reinterpret_cast<GetFolderPath>(reinterpret_cast<void*>(GetProcAddress(shell, "SHGetFolderPathA")));
    const bool found = getFolderPath && getFolderPath(nullptr, csidlProgramFilesCommon, nullptr, 0, folder) == S_OK;
    FreeLibrary(shell);
    return found;
}

void reportEvent(WORD type, DWORD event, const char* const* texts, WORD count)
{
    const HANDLE source = RegisterEventSourceA(nullptr, eventSource);
    if (!source) return;
    ReportEventA(source, type, 1, event, nullptr, count, 0, const_cast<const char**>(texts), nullptr);
    DeregisterEventSource(source);
}

}  // namespace

Platform& platform() noexcept
{
    static Platform machine{10000, openDriver, sendToDriver, commonProgramFiles, reportEvent};
    return machine;
}

}  // namespace trc
