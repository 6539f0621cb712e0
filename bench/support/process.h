// A second process of the same program.
#pragma once

#include <windows.h>

#include <string>

// Runs until it is destroyed.
class OtherProcess
{
 public:
    explicit OtherProcess(const std::string& arguments)
    {
        char file[MAX_PATH];
        GetModuleFileNameA(nullptr, file, MAX_PATH);
        std::string command = '"' + std::string(file) + "\" " + arguments;
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION started{};
        if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                            &started))
            return;
        CloseHandle(started.hThread);
        process_ = started.hProcess;
    }
    ~OtherProcess()
    {
        if (!process_) return;
        TerminateProcess(process_, 0);
        WaitForSingleObject(process_, 5000);
        CloseHandle(process_);
    }
    OtherProcess(OtherProcess&& other) noexcept : process_(other.process_) { other.process_ = nullptr; }
    OtherProcess& operator=(OtherProcess&&) = delete;
    OtherProcess(const OtherProcess&) = delete;

    explicit operator bool() const noexcept { return process_ != nullptr; }
    void suspend() const { control("NtSuspendProcess"); }
    void resume() const { control("NtResumeProcess"); }

 private:
    void control(const char* name) const
    {
        using Function = LONG(WINAPI*)(HANDLE);
        const FARPROC function = GetProcAddress(GetModuleHandleA("ntdll.dll"), name);
        reinterpret_cast<Function>(reinterpret_cast<void*>(function))(process_);
    }

    HANDLE process_ = nullptr;
};
