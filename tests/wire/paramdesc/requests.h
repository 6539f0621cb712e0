// The requests that ask about parameters, and answers to them.
#pragma once

#include <string>
#include <vector>

#include "exchangeRow.h"
#include "kxframework.h"
#include "kxovaapi.h"

using Texts = std::vector<std::string>;

inline Bytes descRequest(const std::string& device, const std::string& parameter, const std::string& attribute)
{
    return Message(44).str(device).str(parameter).str(attribute).u32(260).bytes();
}

inline Bytes specializedRequest(const std::string& device, const std::string& parameter)
{
    return Message(119).str(device).str(parameter).u32(2048).bytes();
}

inline Bytes rawRequest(const std::string& device, const std::string& parameter)
{
    return Message(217).str(device).nullStr().u32(0).str(parameter).u32(260).bytes();
}

inline Bytes resourceRequest(const Texts& path, const std::string& language)
{
    return Message(134).str(path[0]).str(path[1]).str(path[2]).str(language).u32(260).u32(1).bytes();
}

inline Bytes textReply(const std::string& text)
{
    return resultReply(0).text(text).bytes();
}

// A list as the server sends it: an empty text closes it.
inline Bytes listReply(Texts texts)
{
    texts.emplace_back();
    return resultReply(0).list(texts).bytes();
}

inline Bytes failure(std::uint32_t result)
{
    return resultReply(result).bytes();
}

inline Texts itemsOf(const CStringList& list)
{
    Texts items;
    for (POSITION at = list.GetHeadPosition(); at;)
        items.emplace_back(list.GetNext(at).GetString());
    return items;
}

class ParamTest : public testing::Test
{
 protected:
    ParamTest() : channel(*fakeChannel()) { channel.reset(); }
    FakeChannel& channel;
};
