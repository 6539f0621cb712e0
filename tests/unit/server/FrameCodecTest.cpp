#include "wire/FrameCodec.h"

#include <gtest/gtest.h>

#include "Bytes.h"

using namespace bytes;
using srv::parseFrame;

TEST(FrameCodec, WellFormedFrame_givesItsPayload)
{
    const Bytes message = frame(u16(42) + str(u"x") + u32(0));
    const srv::RequestFrame parsed = parseFrame(message);
    EXPECT_EQ(parsed.fault, nullptr);
    EXPECT_EQ(parsed.opcode, 42);
    EXPECT_EQ(Bytes(parsed.payload.begin(), parsed.payload.end()), u16(42) + str(u"x") + u32(0));
}

TEST(FrameCodec, LongestFrame_isWellFormed)
{
    Bytes payload(8192);
    payload[0] = 33;
    EXPECT_EQ(parseFrame(frame(payload)).fault, nullptr);
}

TEST(FrameCodec, HeaderBytesWithoutMeaning_areNotLookedAt)
{
    Bytes message = frame(u16(42));
    message[0] = message[10] = message[12] = message[18] = message[23] = message[79] = 0xFF;
    EXPECT_EQ(parseFrame(message).fault, nullptr);
}

struct Fault
{
    const char* name;
    Bytes message;
};

namespace {

Bytes with(std::size_t at, std::uint8_t value)
{
    Bytes message = frame(u16(42) + u32(0));
    message[at] = value;
    return message;
}

Bytes cut(std::size_t length)
{
    Bytes message = frame(u16(42) + u32(0));
    message.resize(length);
    return message;
}

}  // namespace

class FrameCodecFault : public testing::TestWithParam<Fault>
{
};

TEST_P(FrameCodecFault, IsNamedAndGivesNoPayload)
{
    const srv::RequestFrame parsed = parseFrame(GetParam().message);
    EXPECT_NE(parsed.fault, nullptr);
    EXPECT_TRUE(parsed.payload.empty());
}

INSTANTIATE_TEST_SUITE_P(Rows, FrameCodecFault,
                         testing::Values(Fault{"empty", {}}, Fault{"oneByte", {80}}, Fault{"cutHeader", cut(79)},
                                         Fault{"cutPayload", cut(85)}, Fault{"noOpcode", frame({}, 42)},
                                         Fault{"halfAnOpcode", frame({42}, 42)}, Fault{"headerLength", with(4, 79)},
                                         Fault{"magic", with(5, 0)}, Fault{"magicHighByte", with(6, 1)},
                                         Fault{"version", with(7, 3)}, Fault{"kind", with(11, 0)},
                                         Fault{"mask", with(14, 0)}, Fault{"payloadShorterThanSaid", with(16, 7)},
                                         Fault{"payloadLongerThanSaid", with(16, 5)},
                                         Fault{"payloadTooLong", with(17, 0x21)},
                                         Fault{"largestPayload", with(20, 1)}, Fault{"payloadStart", with(21, 81)},
                                         Fault{"otherOpcode", with(8, 43)}),
                         [](const auto& row) { return row.param.name; });

TEST(FrameCodec, OpcodeOfAFaultyFrame_isStillKnown)
{
    EXPECT_EQ(parseFrame(with(5, 0)).opcode, 42);
}

TEST(FrameCodec, ReplyHeader_isTheRequestsHeaderWithTheReplysLength)
{
    Bytes written(80, 0xEE);
    srv::writeReplyHeader(written, 42, 6);
    Bytes expected = frame(reply(0), 42);
    expected.resize(80);
    EXPECT_EQ(written, expected);
}
