// What the tests of single calls share: a channel that remembers nothing, room for outputs, and the ids in traces.
#pragma once

#include <string>

#include "exchangeRow.h"
#include "kxovaapi.h"

inline const std::string pidTid =
    " - Pid " + std::to_string(GetCurrentProcessId()) + " Tid " + std::to_string(GetCurrentThreadId());

inline std::string hexText(unsigned long value)
{
    char text[16];
    std::snprintf(text, sizeof text, "%lx", value);
    return text;
}

// An answer that is a result and a text.
inline Bytes textReply(const std::string& text)
{
    return resultReply(0).text(text).bytes();
}

inline Bytes failure(std::uint32_t result)
{
    return resultReply(result).bytes();
}

// A reply of a kind that no function expects.
inline Bytes otherKind()
{
    return Message(5).u32(0).bytes();
}

// The request that reads a value of a logical device as it is stored.
inline Bytes rawRead(const std::string& device, const std::string& parameter, std::uint32_t capacity = 260)
{
    return Message(217).str(device).nullStr().u32(0).str(parameter).u32(capacity).bytes();
}

class CallsTest : public testing::Test
{
 protected:
    CallsTest() : channel(*fakeChannel()) { channel.reset(); }
    FakeChannel& channel;
    Outputs out;
};
