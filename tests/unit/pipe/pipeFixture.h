// What the pipe client's tests share.
#pragma once

#include <gtest/gtest.h>

#include "channel/kxovacpipe.h"
#include "scriptedPipe.h"

using Bytes = ScriptedPipe::Bytes;

inline sendData requestOf(const Bytes& bytes)
{
    sendData request;
    EXPECT_EQ(request.PutBytes(bytes.data(), static_cast<std::uint32_t>(bytes.size())), 0u);
    return request;
}

inline Bytes contentOf(receivedData& reply)
{
    Bytes bytes(reply.length());
    const std::uint32_t count = reply.length();
    EXPECT_EQ(reply.ReadBytes(bytes.data(), &count), 0u);
    return bytes;
}

// The result of one exchange, the reply dropped.
inline std::uint32_t exchange(Kxovapipe& client, const Bytes& request = {2, 0})
{
    receivedData reply;
    return client.Exchange(requestOf(request), reply);
}

constexpr char startEventName[] = "_KxOvaSRVStartSRVEvent";
constexpr char pipeMutexName[] = "Global\\KXRTS_OVAAPI_64_WOW_MUTEX";

// A kernel object that the test owns.
class Owned
{
 public:
    explicit Owned(HANDLE handle) : handle_(handle) { EXPECT_NE(handle, nullptr) << GetLastError(); }
    ~Owned() { CloseHandle(handle_); }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    operator HANDLE() const { return handle_; }

 private:
    HANDLE handle_;
};
