#include "frame_check.h"

#include <gtest/gtest.h>

#include "frames.h"

namespace {

using frames::Bytes;
using kxonlinx::isReplyTo;
using kxonlinx::isRequest;

TEST(FrameCheck, SmallestAndLargestRequest_areFrames)
{
    EXPECT_TRUE(isRequest(frames::request(0x1234)));
    EXPECT_TRUE(isRequest(frames::request(0x1234, Bytes(8190))));
}

TEST(FrameCheck, RequestOutsideTheSizes_isNone)
{
    EXPECT_FALSE(isRequest(Bytes()));
    EXPECT_FALSE(isRequest(frames::frame(0x1234, {0x34})));
    EXPECT_FALSE(isRequest(frames::request(0x1234, Bytes(8191))));
}

TEST(FrameCheck, EveryTruncationOfARequest_isNone)
{
    const Bytes whole = frames::request(33, {1, 2, 3});
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(isRequest(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)))) << length;
    }
}

TEST(FrameCheck, EveryNamedHeaderByte_isLookedAt)
{
    const Bytes whole = frames::request(33, {1, 2, 3});
    for (const std::size_t offset : {4, 5, 6, 7, 8, 9, 11, 14, 15, 16, 17, 19, 20, 21, 22}) {
        Bytes changed = whole;
        changed[offset] ^= 0x80;
        EXPECT_FALSE(isRequest(changed)) << offset;
        EXPECT_FALSE(isReplyTo(whole, changed)) << offset;
    }
}

TEST(FrameCheck, ByteWithoutMeaning_isNotLookedAt)
{
    const Bytes whole = frames::request(33, {1, 2, 3});
    for (const std::size_t offset : {0, 3, 10, 12, 13, 18, 23, 79}) {
        Bytes changed = whole;
        changed[offset] = 1;
        EXPECT_TRUE(isRequest(changed)) << offset;
        EXPECT_TRUE(isReplyTo(whole, changed)) << offset;
    }
}

TEST(FrameCheck, ReplyWithoutPayload_isAReply)
{
    EXPECT_TRUE(isReplyTo(frames::request(33), frames::frame(33, {})));
}

TEST(FrameCheck, ReplyPayload_needsNoOperationCode)
{
    EXPECT_TRUE(isReplyTo(frames::request(33), frames::frame(33, {4, 0, 0, 0, 0, 0})));
}

TEST(FrameCheck, LargestReply_isAReplyAndOneByteMoreIsNone)
{
    EXPECT_TRUE(isReplyTo(frames::request(33), frames::frame(33, Bytes(8192))));
    EXPECT_FALSE(isReplyTo(frames::request(33), frames::frame(33, Bytes(8193))));
}

}  // namespace
