#include "channel/scpFrame.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes frameBytes(requestFrame& frame)
{
    const auto* bytes = static_cast<const std::uint8_t*>(frame.bytes());
    return Bytes(bytes, bytes + frame.length());
}

TEST(RequestFrame, Header_isLaidOutByteForByte)
{
    sendData request;
    request.PutU16(0x0122);
    request.PutU32(0xA1B2C3D4);
    requestFrame frame(request);

    Bytes expected{0x00, 0x00, 0x00, 0x00,  // 0
                   0x50,                    // 4: header length
                   0x7B, 0x00,              // 5: 123
                   0x02,                    // 7
                   0x22, 0x01,              // 8: operation code
                   0x00,                    // 10
                   0x02,                    // 11
                   0x00, 0x00,              // 12, 13
                   0xFF, 0x00,              // 14: 255
                   0x06, 0x00,              // 16: payload length
                   0x00,                    // 18
                   0x00, 0x20,              // 19: 8192
                   0x50, 0x00};             // 21: 80
    expected.resize(80, 0);
    expected.insert(expected.end(), {0x22, 0x01, 0xD4, 0xC3, 0xB2, 0xA1});
    EXPECT_EQ(frameBytes(frame), expected);
}

TEST(RequestFrame, FullRequest_isSentWithALengthOf8272)
{
    sendData request;
    const Bytes payload(8192, 0x11);
    ASSERT_EQ(request.PutBytes(payload.data(), 8192), 0u);
    requestFrame frame(request);
    EXPECT_EQ(frame.length(), 8272);
    EXPECT_EQ(frameBytes(frame)[16], 0x00);
    EXPECT_EQ(frameBytes(frame)[17], 0x20);
    EXPECT_EQ(frameBytes(frame).back(), 0x11);
}

TEST(RequestFrame, RefusedText_sendsNoMoreThanTheBlock)
{
    sendData request;
    ASSERT_EQ(request.PutWideString(std::wstring(6000, L'x').c_str()), 111u);
    requestFrame frame(request);
    EXPECT_EQ(frame.length(), 8272);
}

TEST(ReplyFrame, PayloadLength_isWhatFollowsTheHeader)
{
    EXPECT_EQ(replyFrame::payloadLength(8272), 8192u);
    EXPECT_EQ(replyFrame::payloadLength(81), 1u);
    EXPECT_EQ(replyFrame::payloadLength(80), 0u);
    EXPECT_EQ(replyFrame::payloadLength(79), 0u);
    EXPECT_EQ(replyFrame::payloadLength(0), 0u);
}

}  // namespace
