// The requests about devices, boards and templates that the functions under test send, and answers to them.
#pragma once

#include <string>

#include "exchangeRow.h"
#include "kxframework.h"
#include "kxovaapi.h"

inline Bytes rawRequest(const std::string& device, const std::string& parameter)
{
    return Message(217).str(device).nullStr().u32(0).str(parameter).u32(260).bytes();
}

inline Bytes setRequest(const std::string& device, const std::string& parameter, const std::string& value)
{
    return Message(34).str(device).str(parameter).str(value).bytes();
}

inline Bytes ndiRequest(const std::string& device, const std::string& parameter)
{
    return Message(114).str(device).str(parameter).u32(260).u32(1).bytes();
}

inline Bytes setNdiRequest(const std::string& device, const std::string& parameter, const std::string& value)
{
    return Message(115).str(device).str(parameter).str(value).u32(1).bytes();
}

inline Bytes templateRequest(std::uint32_t index)
{
    return Message(128).str("Boards").u32(index).u32(260).bytes();
}

inline Bytes attributeRequest(const std::string& deviceId, const std::string& attribute)
{
    return Message(161).str(deviceId).str(attribute).u32(260).u32(1).bytes();
}

inline Bytes textReply(const std::string& text)
{
    return resultReply(0).text(text).bytes();
}

inline Bytes failure(std::uint32_t result)
{
    return resultReply(result).bytes();
}

class RequestsTest : public testing::Test
{
 protected:
    RequestsTest() : channel(*fakeChannel()) { channel.reset(); }
    FakeChannel& channel;
};
