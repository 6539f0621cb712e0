// A private channel with its server, and the exported functions in a form that tests read well.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <string>

#include "frames.h"
#include "kxonlinx.h"
#include "pipe_server.h"

using frames::Bytes;

struct Outcome
{
    int result;
    int error;    // of SCP_get_errno
    Bytes reply;  // when result is 0
};

inline bool operator==(const Outcome& left, const Outcome& right)
{
    return left.result == right.result && left.error == right.error && left.reply == right.reply;
}

inline std::ostream& operator<<(std::ostream& out, const Outcome& outcome)
{
    return out << "{result " << outcome.result << ", errno " << outcome.error << ", reply of " << outcome.reply.size()
               << " bytes}";
}

inline Outcome call(int handle, Bytes request, std::size_t capacity = frames::largest)
{
    Bytes reply(capacity, 0xEE);
    unsigned short length = 0;
    const int result = SCP_send_receive(handle, static_cast<unsigned short>(request.size()), request.data(),
                                        static_cast<unsigned short>(capacity), reply.data(), &length);
    reply.resize(result == 0 ? length : 0);
    return {result, SCP_get_errno(), reply};
}

inline Outcome answered(const Bytes& reply)
{
    return {0, KXONLINX_OK, reply};
}

inline Outcome failed(kxonlinx_error error)
{
    return {-1, error, {}};
}

class OpenChannel
{
 public:
    explicit OpenChannel(const std::wstring& name) : handle_(SCP_openW(name.c_str())) {}
    ~OpenChannel() { SCP_close(handle_); }
    OpenChannel(const OpenChannel&) = delete;
    OpenChannel& operator=(const OpenChannel&) = delete;
    operator int() const { return handle_; }

 private:
    int handle_;
};

// For channels opened while it lives.
class CallBound
{
 public:
    explicit CallBound(const wchar_t* milliseconds) { SetEnvironmentVariableW(L"KXONLINX_TIMEOUT_MS", milliseconds); }
    ~CallBound() { SetEnvironmentVariableW(L"KXONLINX_TIMEOUT_MS", nullptr); }
    CallBound(const CallBound&) = delete;
    CallBound& operator=(const CallBound&) = delete;
};

class Stopwatch
{
 public:
    std::chrono::milliseconds elapsed() const
    {
        return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start_);
    }

 private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

class ChannelTest : public testing::Test
{
 protected:
    ChannelTest() : name(L"kxonlinx-test-" + std::to_wstring(GetCurrentProcessId())), server(name) {}

    const std::wstring name;
    PipeServer server;
};
