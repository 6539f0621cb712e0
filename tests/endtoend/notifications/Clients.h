// This process as one client, another as the second, and the server.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <memory>
#include <string>

#include "kxovaapi.h"
#include "Process.h"

inline constexpr DWORD longest = 30'000;

// The server's program, serving when the constructor returns.
class ServerProgram
{
 public:
    ServerProgram() { start(); }
    ~ServerProgram() { stop(); }

    void start()
    {
        process_ = std::make_unique<Process>(L"..\\..\\x64\\bin\\kxovasrvx.exe", L"run --quiet");
        EXPECT_TRUE(process_->prints("kxovasrvx: ready")) << process_->output();
    }
    void stop()
    {
        if (!process_) return;
        // Without a console there is nothing to interrupt it through.
        if (process_->interrupt()) {
            EXPECT_EQ(process_->exitStatus(), 0) << process_->output();
        }
        process_.reset();
    }
    void kill() { process_.reset(); }

 private:
    std::unique_ptr<Process> process_;
};

// An event that is registered for changes.
class Registered
{
 public:
    using Notify = decltype(LogDeviceNotifyChange);
    using Unregister = decltype(LogDeviceUnregisterNotifyChange);

    explicit Registered(const char* name, const char* subject = nullptr, Notify* notify = LogDeviceNotifyChange,
                        Unregister* end = LogDeviceUnregisterNotifyChange)
        : name_(name), subject_(subject), end_(end)
    {
        result_ = notify(subject, 0, 0, name, &event_, &event_);
    }
    ~Registered()
    {
        unregister();
        CloseHandle(event_);
    }
    Registered(const Registered&) = delete;
    Registered& operator=(const Registered&) = delete;

    unsigned long result() const { return result_; }
    unsigned long unregister() const { return end_(subject_, name_, &event_); }
    bool wakes(DWORD milliseconds = longest) const
    {
        return WaitForSingleObject(event_, milliseconds) == WAIT_OBJECT_0;
    }

 private:
    const char* name_;
    const char* subject_;
    Unregister* end_;
    HANDLE event_ = nullptr;
    unsigned long result_;
};

class Clients : public testing::Test
{
 protected:
    static void SetUpTestSuite()
    {
        server = std::make_unique<ServerProgram>();
        // Registrations need the library's window, which comes up on a thread of its own.
        LogDeviceExists("Dummy", 0);
        for (const DWORD start = GetTickCount(); GetTickCount() - start < longest; Sleep(1))
            if (Registered("e2e start").result() == 0) break;
        LogDeviceDel(device);
        ASSERT_EQ(LogDeviceCreateFromDef(device, "NX3110.MPI"), 0);
    }
    static void TearDownTestSuite()
    {
        LogDeviceDel(device);
        server.reset();
    }

    static std::string other(const std::wstring& command)
    {
        Process client(L"notify_client.exe", command);
        client.exitStatus();
        return client.output().substr(0, client.output().find_first_of("\r\n"));
    }
    // The device's value, set by the other process.
    static void otherSets(const std::wstring& value)
    {
        ASSERT_EQ(other(L"set \"e2e device\" note " + value), "result 0");
    }

    // What "kxovasrvx hardware" ends with.
    static int plug(const std::wstring& command)
    {
        Process program(L"..\\..\\x64\\bin\\kxovasrvx.exe", L"hardware " + command);
        return program.exitStatus();
    }

    static constexpr char device[] = "e2e device";
    static inline std::unique_ptr<ServerProgram> server;
};
