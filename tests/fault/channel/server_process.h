// A scripted server in a process of its own: it can be killed, and its handles are not the test's. What it does with
// a request, the operation code says.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

#include "pipe_server.h"
#include "support/win_handle.h"

namespace serverProcess {

inline constexpr unsigned noAnswer = 0x7001;
inline constexpr unsigned closeConnection = 0x7002;
inline constexpr unsigned garbage = 0x7003;
// Every other code is echoed.

inline std::wstring readyEventName(const std::wstring& channel)
{
    return channel + L"-ready";
}

}  // namespace serverProcess

class ServerProcess
{
 public:
    explicit ServerProcess(std::wstring channel) : channel_(std::move(channel)) { start(); }
    ~ServerProcess() { kill(); }
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    // The channel can be opened when this returns.
    void start()
    {
        const platform::KernelObject ready(
            CreateEventW(nullptr, TRUE, FALSE, serverProcess::readyEventName(channel_).c_str()));
        ResetEvent(ready.get());  // another server of the channel may still have it
        std::wstring command = L"channel_test_server.exe " + channel_ + L" " +
                               std::to_wstring(GetCurrentProcessId()) +
                               (testedCarrier == Carrier::Memory ? L" memory" : L" pipe");
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION information{};
        if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                            &information)) {
            throw std::runtime_error("channel_test_server.exe cannot be started");
        }
        CloseHandle(information.hThread);
        process_.reset(information.hProcess);
        const HANDLE ends[] = {ready.get(), process_.get()};
        if (WaitForMultipleObjects(2, ends, FALSE, INFINITE) != WAIT_OBJECT_0) {
            throw std::runtime_error("channel_test_server.exe ended");
        }
    }

    // Stops it from running, while it stays there.
    void suspend()
    {
        using Suspend = LONG WINAPI(HANDLE);
        const HMODULE system = GetModuleHandleW(L"ntdll.dll");
        reinterpret_cast<Suspend*>(reinterpret_cast<void*>(GetProcAddress(system, "NtSuspendProcess")))(
            process_.get());
    }

    // Without warning, whatever it is doing; its pipes are gone when this returns.
    void kill()
    {
        if (!process_) return;
        TerminateProcess(process_.get(), 1);
        WaitForSingleObject(process_.get(), INFINITE);
        process_.reset();
    }

 private:
    const std::wstring channel_;
    platform::KernelObject process_;
};
