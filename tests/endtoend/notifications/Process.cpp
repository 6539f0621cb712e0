#include "Process.h"

namespace {

constexpr DWORD longest = 30'000;

std::wstring folder()
{
    wchar_t file[MAX_PATH];
    const std::wstring path(file, GetModuleFileNameW(nullptr, file, MAX_PATH));
    return path.substr(0, path.rfind(L'\\') + 1);
}

}  // namespace

Process::Process(const std::wstring& program, const std::wstring& arguments)
{
    std::wstring commandLine = L'"' + folder() + program + L"\" " + arguments;
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    platform::KernelObject writing;
    CreatePipe(reading_.put(), writing.put(), &inheritable, 0);
    SetHandleInformation(reading_.get(), HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = writing.get();
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, CREATE_NEW_PROCESS_GROUP, nullptr,
                        nullptr, &startup, &started)) {
        return;
    }
    process_.reset(started.hProcess);
    id_ = started.dwProcessId;
    CloseHandle(started.hThread);
}

bool Process::readMore()
{
    for (const DWORD start = GetTickCount(); GetTickCount() - start < longest; Sleep(1)) {
        DWORD available = 0;
        if (!PeekNamedPipe(reading_.get(), nullptr, 0, nullptr, &available, nullptr)) return false;
        if (available == 0) continue;
        char buffer[4096];
        DWORD length = 0;
        if (!ReadFile(reading_.get(), buffer, sizeof buffer, &length, nullptr) || length == 0) return false;
        output_.append(buffer, length);
        return true;
    }
    return false;
}

bool Process::prints(const std::string& text)
{
    std::size_t at;
    while ((at = output_.find(text, seen_)) == std::string::npos)
        if (!readMore()) return false;
    seen_ = at + text.size();
    return true;
}

int Process::exitStatus()
{
    while (readMore()) {
    }
    DWORD status = 0;
    if (WaitForSingleObject(process_.get(), longest) != WAIT_OBJECT_0) return -1;
    GetExitCodeProcess(process_.get(), &status);
    return static_cast<int>(status);
}

bool Process::interrupt() const
{
    return GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, id_) != FALSE;
}

void Process::suspend() const
{
    using Suspend = LONG(WINAPI*)(HANDLE);
    const FARPROC function = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtSuspendProcess");
    reinterpret_cast<Suspend>(reinterpret_cast<void*>(function))(process_.get());
}

void Process::kill()
{
    if (!process_) return;
    TerminateProcess(process_.get(), 99);
    WaitForSingleObject(process_.get(), longest);
}
