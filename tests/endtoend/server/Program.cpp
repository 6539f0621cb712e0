#include "Program.h"

#include <filesystem>

#include "main/options.h"

namespace {

constexpr DWORD longest = 30'000;

}  // namespace

Program::Program(const std::wstring& arguments)
{
    const std::filesystem::path program = srv::programFile().replace_filename(L"kxovasrvx.exe");
    std::wstring commandLine = L'"' + program.wstring() + L"\" " + arguments;

    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    srv::Handle writing;
    CreatePipe(reading_.put(), writing.put(), &inheritable, 0);
    SetHandleInformation(reading_.get(), HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = writing.get();
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &started)) {
        return;
    }
    process_.reset(started.hProcess);
    CloseHandle(started.hThread);
}

// Waits for more output; false at its end, or when there is none for too long.
bool Program::readMore()
{
    for (const DWORD start = GetTickCount(); GetTickCount() - start < longest;) {
        DWORD available = 0;
        if (!PeekNamedPipe(reading_.get(), nullptr, 0, nullptr, &available, nullptr)) return false;
        if (available > 0) {
            char buffer[4096];
            DWORD length = 0;
            if (!ReadFile(reading_.get(), buffer, sizeof buffer, &length, nullptr) || length == 0) return false;
            output_.append(buffer, length);
            return true;
        }
        Sleep(1);
    }
    return false;
}

bool Program::prints(const std::string& text)
{
    while (output_.find(text) == std::string::npos)
        if (!readMore()) return false;
    return true;
}

int Program::exitStatus()
{
    // What it has printed is there once it has ended. Programs that the system started meanwhile may hold the pipe
    // open much longer.
    for (const DWORD start = GetTickCount();;) {
        const bool ended = WaitForSingleObject(process_.get(), 1) == WAIT_OBJECT_0;
        DWORD available = 0;
        while (PeekNamedPipe(reading_.get(), nullptr, 0, nullptr, &available, nullptr) && available > 0)
            if (!readMore()) break;
        if (ended) break;
        if (GetTickCount() - start > longest) return -1;
    }
    DWORD status = 0;
    GetExitCodeProcess(process_.get(), &status);
    return static_cast<int>(status);
}

void Program::kill()
{
    if (!process_) return;
    TerminateProcess(process_.get(), 99);
    WaitForSingleObject(process_.get(), longest);
}

Finished run(const std::wstring& arguments)
{
    Program program(arguments);
    const int status = program.exitStatus();
    return {status, program.output()};
}
