#include "buffers/receivedData.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

// Builds a reply field by field, the way the server lays it out.
class ReplyBytes
{
 public:
    ReplyBytes& u8(std::uint8_t value) { return raw({value}); }
    ReplyBytes& u16(std::uint16_t value) { return number(value, 2); }
    ReplyBytes& u32(std::uint32_t value) { return number(value, 4); }
    ReplyBytes& raw(const Bytes& bytes)
    {
        bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
        return *this;
    }
    ReplyBytes& text(const std::u16string& text)
    {
        u32(static_cast<std::uint32_t>(2 * text.size()));
        return units(text).u32(0xDEADBEEF);
    }
    ReplyBytes& units(const std::u16string& text)
    {
        for (const char16_t unit : text)
            u16(unit);
        return *this;
    }
    ReplyBytes& list(const std::vector<std::u16string>& texts)
    {
        std::u16string all;
        for (const auto& entry : texts)
            all.append(entry).push_back(u'\0');
        u32(static_cast<std::uint32_t>(2 * all.size())).units(all);
        return all.empty() ? *this : u32(0xDEADBEEF);
    }

    const Bytes& bytes() const { return bytes_; }

    void fill(receivedData& reply) const { fill(reply, static_cast<std::uint32_t>(bytes_.size())); }
    void fill(receivedData& reply, std::uint32_t length) const
    {
        Bytes block(8192, 0);
        std::copy(bytes_.begin(), bytes_.end(), block.begin());
        reply.Fill(block.data(), length);
    }

 private:
    ReplyBytes& number(std::uint32_t value, int width)
    {
        for (int i = 0; i < width; ++i)
            bytes_.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        return *this;
    }

    Bytes bytes_;
};

// A caller's buffer between guard bytes.
struct Buffer
{
    explicit Buffer(std::uint32_t capacity) : bytes(capacity + 32, 0x5A), size(capacity) {}
    char* text() { return reinterpret_cast<char*>(bytes.data()) + 16; }
    bool untouched() const
    {
        return std::all_of(bytes.begin(), bytes.end(), [](auto b) { return b == 0x5A; });
    }
    bool guardsIntact(std::uint32_t capacity) const
    {
        const auto isGuard = [](auto b) { return b == 0x5A; };
        return std::all_of(bytes.begin(), bytes.begin() + 16, isGuard) &&
               std::all_of(bytes.begin() + 16 + capacity, bytes.end(), isGuard);
    }

    Bytes bytes;
    std::uint32_t size;
};

TEST(ReceivedData, New_hasNothingToRead)
{
    receivedData reply;
    std::uint8_t u8 = 7;
    std::uint16_t u16 = 7;
    std::uint32_t u32 = 7;
    EXPECT_EQ(reply.ReadU8(&u8), 111u);
    EXPECT_EQ(reply.ReadU16(&u16), 111u);
    EXPECT_EQ(reply.ReadU32(&u32), 111u);
    EXPECT_EQ(u8 + u16 + u32, 21u);
}

TEST(ReceivedData, Numbers_areReadInOrder)
{
    receivedData reply;
    ReplyBytes().u16(0x1234).u32(0x89ABCDEF).u8(0x7F).fill(reply);
    std::uint16_t u16 = 0;
    std::uint32_t u32 = 0;
    std::uint8_t u8 = 0;
    EXPECT_EQ(reply.ReadU16(&u16), 0u);
    EXPECT_EQ(reply.ReadU32(&u32), 0u);
    EXPECT_EQ(reply.ReadU8(&u8), 0u);
    EXPECT_EQ(u16, 0x1234);
    EXPECT_EQ(u32, 0x89ABCDEFu);
    EXPECT_EQ(u8, 0x7F);
    EXPECT_EQ(reply.cursor(), 7u);
}

TEST(ReceivedData, Numbers_oneByteShortConsumeNothing)
{
    receivedData reply;
    ReplyBytes().u32(1).fill(reply, 3);
    std::uint32_t u32 = 7;
    EXPECT_EQ(reply.ReadU32(&u32), 111u);
    EXPECT_EQ(u32, 7u);
    EXPECT_EQ(reply.cursor(), 0u);
}

TEST(ReceivedData, Numbers_nullOutputIsRefused)
{
    receivedData reply;
    ReplyBytes().u32(1).fill(reply);
    EXPECT_EQ(reply.ReadU8(nullptr), 111u);
    EXPECT_EQ(reply.ReadU32(nullptr), 111u);
    EXPECT_EQ(reply.cursor(), 0u);
}

TEST(ReceivedData, Bytes_copiesAndRefuses)
{
    receivedData reply;
    ReplyBytes().raw({1, 2, 3, 4}).fill(reply);
    Bytes out(4, 0);
    const std::uint32_t three = 3;
    const std::uint32_t huge = 0xFFFFFFFF;
    EXPECT_EQ(reply.ReadBytes(out.data(), &three), 0u);
    EXPECT_EQ(out, (Bytes{1, 2, 3, 0}));
    EXPECT_EQ(reply.ReadBytes(out.data(), &three), 111u);
    EXPECT_EQ(reply.ReadBytes(out.data(), &huge), 111u);
    EXPECT_EQ(reply.ReadBytes(out.data(), nullptr), 111u);
    EXPECT_EQ(reply.cursor(), 3u);
}

TEST(ReceivedData, Released_refusesEveryRead)
{
    receivedData reply;
    ReplyBytes().u32(0).u32(0).fill(reply);
    reply.Release();
    std::uint32_t u32 = 0;
    Buffer buffer(10);
    EXPECT_EQ(reply.ReadU32(&u32), 111u);
    EXPECT_EQ(reply.ReadString(buffer.text(), &buffer.size), 111u);
    EXPECT_EQ(reply.ReadMultiString(buffer.text(), &buffer.size), 111u);
    EXPECT_TRUE(buffer.untouched());
}

TEST(ReceivedData, LengthBeyondTheBlock_countsAsTheBlock)
{
    receivedData reply;
    ReplyBytes().fill(reply, 60000);
    EXPECT_EQ(reply.length(), 8192u);
}

// ReadString

TEST(ReadString, Text_isDeliveredWithTrailerConsumed)
{
    receivedData reply;
    ReplyBytes().text(u"\u00E4\u20AC!").u8(9).fill(reply);
    Buffer buffer(4);
    EXPECT_EQ(reply.ReadString(buffer.text(), &buffer.size), 0u);
    EXPECT_STREQ(buffer.text(), "\xE4\x80!");
    EXPECT_EQ(buffer.size, 3u);
    EXPECT_EQ(reply.cursor(), 4u + 6 + 4);
    EXPECT_TRUE(buffer.guardsIntact(4));
}

TEST(ReadString, EmptyText_consumesLengthAndTrailer)
{
    receivedData reply;
    ReplyBytes().text(u"").u8(9).fill(reply);
    Buffer buffer(5);
    EXPECT_EQ(reply.ReadString(buffer.text(), &buffer.size), 0u);
    EXPECT_STREQ(buffer.text(), "");
    EXPECT_EQ(buffer.size, 0u);
    EXPECT_EQ(reply.cursor(), 8u);
}

TEST(ReadString, EmptyTextIntoNoRoom_writesNothing)
{
    receivedData reply;
    ReplyBytes().text(u"").fill(reply);
    Buffer buffer(0);
    EXPECT_EQ(reply.ReadString(buffer.text(), &buffer.size), 0u);
    EXPECT_TRUE(buffer.untouched());
}

TEST(ReadString, EmptyTextWithoutOutputs_succeeds)
{
    receivedData reply;
    ReplyBytes().text(u"").fill(reply);
    EXPECT_EQ(reply.ReadString(nullptr, nullptr), 0u);
    EXPECT_EQ(reply.cursor(), 8u);
}

TEST(ReadString, MissingTrailer_isNoError)
{
    receivedData reply;
    ReplyBytes().u32(2).u16('x').fill(reply);
    Buffer buffer(5);
    EXPECT_EQ(reply.ReadString(buffer.text(), &buffer.size), 0u);
    EXPECT_STREQ(buffer.text(), "x");
    EXPECT_EQ(reply.cursor(), 6u);
}

TEST(ReadString, LengthBeyondTheReply_consumesTheLengthFieldOnly)
{
    receivedData reply;
    ReplyBytes().u32(4).u16('x').fill(reply);
    Buffer buffer(5);
    EXPECT_EQ(reply.ReadString(buffer.text(), &buffer.size), 111u);
    EXPECT_EQ(reply.cursor(), 4u);
    EXPECT_EQ(buffer.size, 5u);
    EXPECT_TRUE(buffer.untouched());
}

TEST(ReadString, LengthThatWrapsTheCursor_isRefused)
{
    receivedData reply;
    ReplyBytes().u32(0xFFFFFFFC).u32(0).fill(reply);
    Buffer buffer(5);
    EXPECT_EQ(reply.ReadString(buffer.text(), &buffer.size), 111u);
    EXPECT_TRUE(buffer.untouched());
}

TEST(ReadString, LengthQuery_leavesTheTextForASecondRead)
{
    receivedData reply;
    ReplyBytes().text(u"abc").fill(reply);
    std::uint32_t needed = 0;
    EXPECT_EQ(reply.ReadString(nullptr, &needed), 234u);
    EXPECT_EQ(needed, 4u);
    EXPECT_EQ(reply.cursor(), 4u);
}

TEST(ReadString, NullSize_is234WithoutTouchingTheBuffer)
{
    receivedData reply;
    ReplyBytes().text(u"abc").fill(reply);
    Buffer buffer(10);
    EXPECT_EQ(reply.ReadString(buffer.text(), nullptr), 234u);
    EXPECT_TRUE(buffer.untouched());
    EXPECT_EQ(reply.cursor(), 4u);
}

TEST(ReadString, ShortBuffer_consumesTheTextButNotTheTrailer)
{
    receivedData reply;
    ReplyBytes().text(u"abc").fill(reply);
    Buffer buffer(3);
    EXPECT_EQ(reply.ReadString(buffer.text(), &buffer.size), 234u);
    EXPECT_EQ(buffer.size, 4u);
    EXPECT_EQ(reply.cursor(), 4u + 6);
    EXPECT_TRUE(buffer.untouched());
}

TEST(ReadString, ZeroInTheText_endsIt)
{
    receivedData reply;
    ReplyBytes().text(std::u16string(u"ab\0cd", 5)).fill(reply);
    Buffer buffer(10);
    EXPECT_EQ(reply.ReadString(buffer.text(), &buffer.size), 0u);
    EXPECT_STREQ(buffer.text(), "ab");
    EXPECT_EQ(buffer.size, 2u);
    EXPECT_EQ(reply.cursor(), 4u + 10 + 4);
}

TEST(ReadString, LongestTextOfABlock_isDelivered)
{
    receivedData reply;
    const std::u16string text((8192 - 8) / 2, u'x');
    ReplyBytes().text(text).fill(reply);
    Buffer buffer(8192);
    EXPECT_EQ(reply.ReadString(buffer.text(), &buffer.size), 0u);
    EXPECT_EQ(buffer.size, text.size());
    EXPECT_EQ(reply.cursor(), 8192u);
}

TEST(ReadString, OddByteLength_isReadWithoutRunningOver)
{
    receivedData reply;
    ReplyBytes().u32(3).raw({'a', 0, 'b'}).u32(0).fill(reply);
    Buffer buffer(10);
    EXPECT_EQ(reply.ReadString(buffer.text(), &buffer.size), 0u);
    EXPECT_STREQ(buffer.text(), "ab");
    EXPECT_EQ(reply.cursor(), 4u + 3 + 4);
}

// ReadStringAndCopyToUserBuffer

struct UserCopy
{
    std::uint32_t textLength;
    std::uint32_t capacity;
    std::uint32_t result;
    std::uint32_t size;
    bool terminated;
};

class ReadStringAndCopy : public testing::TestWithParam<UserCopy>
{
};

TEST_P(ReadStringAndCopy, Row)
{
    const UserCopy& row = GetParam();
    receivedData reply;
    ReplyBytes().text(std::u16string(row.textLength, u'x')).fill(reply);
    Buffer buffer(row.capacity);
    EXPECT_EQ(reply.ReadStringAndCopyToUserBuffer(buffer.text(), &buffer.size), row.result);
    EXPECT_EQ(buffer.size, row.size);
    if (row.result == 0) {
        EXPECT_EQ(std::string(buffer.text(), row.textLength), std::string(row.textLength, 'x'));
        EXPECT_EQ(buffer.text()[row.textLength] == 0, row.terminated);
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, ReadStringAndCopy,
                         testing::Values(UserCopy{5, 100, 0, 5, true},      // room to spare
                                         UserCopy{5, 6, 0, 5, true},        // exactly with terminator
                                         UserCopy{5, 5, 0, 5, false},       // exactly without one
                                         UserCopy{5, 4, 234, 5, false},     // one byte short
                                         UserCopy{5, 0, 234, 5, false},     //
                                         UserCopy{0, 1, 0, 0, true},        //
                                         UserCopy{0, 0, 0, 0, true},        // the terminator is written all the same
                                         UserCopy{259, 260, 0, 259, true},  // the longest text
                                         UserCopy{260, 1000, 234, 1000, false}));

TEST(ReadStringAndCopyToUserBuffer, TextOf260_emptiesTheBufferAndLeavesTheLength)
{
    receivedData reply;
    ReplyBytes().text(std::u16string(260, u'x')).fill(reply);
    Buffer buffer(1000);
    EXPECT_EQ(reply.ReadStringAndCopyToUserBuffer(buffer.text(), &buffer.size), 234u);
    EXPECT_EQ(buffer.text()[0], 0);
    EXPECT_EQ(buffer.size, 1000u);
}

TEST(ReadStringAndCopyToUserBuffer, ShortReply_emptiesTheBufferAndLeavesTheLength)
{
    receivedData reply;
    ReplyBytes().u16(1).fill(reply);
    Buffer buffer(10);
    EXPECT_EQ(reply.ReadStringAndCopyToUserBuffer(buffer.text(), &buffer.size), 111u);
    EXPECT_EQ(buffer.text()[0], 0);
    EXPECT_EQ(buffer.size, 10u);
}

TEST(ReadStringAndCopyToUserBuffer, NullSize_acceptsOnlyTheEmptyText)
{
    receivedData reply;
    ReplyBytes().text(u"x").text(u"").fill(reply);
    Buffer buffer(10);
    EXPECT_EQ(reply.ReadStringAndCopyToUserBuffer(buffer.text(), nullptr), 234u);
    EXPECT_EQ(reply.ReadStringAndCopyToUserBuffer(buffer.text(), nullptr), 0u);
    EXPECT_EQ(buffer.text()[0], 0);
}

TEST(ReadStringAndCopyToUserBuffer, NullBuffer_yieldsTheLength)
{
    receivedData reply;
    ReplyBytes().text(u"abc").fill(reply);
    std::uint32_t size = 10;
    EXPECT_EQ(reply.ReadStringAndCopyToUserBuffer(nullptr, &size), 0u);
    EXPECT_EQ(size, 3u);
}

// ReadMultiString

TEST(ReadMultiString, Texts_comeInOrderEachWithItsZero)
{
    receivedData reply;
    ReplyBytes().list({u"a", u"bc", u"\u00FC"}).u8(9).fill(reply);
    Buffer buffer(20);
    EXPECT_EQ(reply.ReadMultiString(buffer.text(), &buffer.size), 0u);
    EXPECT_EQ(std::string(buffer.text(), buffer.size), std::string("a\0bc\0\xFC\0", 7));
    EXPECT_EQ(reply.cursor(), 4u + 14 + 4);
}

TEST(ReadMultiString, EmptyList_consumesFourBytes)
{
    receivedData reply;
    ReplyBytes().list({}).u32(77).fill(reply);
    Buffer buffer(20);
    EXPECT_EQ(reply.ReadMultiString(buffer.text(), &buffer.size), 0u);
    EXPECT_EQ(buffer.text()[0], 0);
    EXPECT_EQ(buffer.size, 0u);
    EXPECT_EQ(reply.cursor(), 4u);
}

TEST(ReadMultiString, EmptyListWithoutSize_succeeds)
{
    receivedData reply;
    ReplyBytes().list({}).fill(reply);
    Buffer buffer(20);
    EXPECT_EQ(reply.ReadMultiString(buffer.text(), nullptr), 0u);
    EXPECT_EQ(buffer.text()[0], 0);
}

TEST(ReadMultiString, NullSize_leavesTheListUnread)
{
    receivedData reply;
    ReplyBytes().list({u"a"}).fill(reply);
    Buffer buffer(20);
    EXPECT_EQ(reply.ReadMultiString(buffer.text(), nullptr), 0u);
    EXPECT_TRUE(buffer.untouched());
    EXPECT_EQ(reply.cursor(), 4u);
}

TEST(ReadMultiString, EmptyLastText_yieldsADoubleZero)
{
    receivedData reply;
    ReplyBytes().list({u"a", u""}).fill(reply);
    Buffer buffer(20);
    EXPECT_EQ(reply.ReadMultiString(buffer.text(), &buffer.size), 0u);
    EXPECT_EQ(std::string(buffer.text(), buffer.size), std::string("a\0\0", 3));
}

TEST(ReadMultiString, ExactlyFullBuffer_dropsTheRestSilently)
{
    receivedData reply;
    ReplyBytes().list({u"ab", u"cd", u"ef"}).fill(reply);
    Buffer buffer(6);
    EXPECT_EQ(reply.ReadMultiString(buffer.text(), &buffer.size), 0u);
    EXPECT_EQ(std::string(buffer.text(), buffer.size), std::string("ab\0cd\0", 6));
    EXPECT_TRUE(buffer.guardsIntact(6));
}

TEST(ReadMultiString, TextThatDoesNotFit_isTheConversionsError)
{
    receivedData reply;
    ReplyBytes().list({u"ab", u"cd"}).fill(reply);
    Buffer buffer(5);
    EXPECT_EQ(reply.ReadMultiString(buffer.text(), &buffer.size), 122u);
    EXPECT_EQ(buffer.size, 3u);
    EXPECT_EQ(std::string(buffer.text(), 3), std::string("ab\0", 3));
    EXPECT_EQ(reply.cursor(), 4u + 6 + 4);  // behind the first text, then the trailer's four bytes
    EXPECT_TRUE(buffer.guardsIntact(5));
}

TEST(ReadMultiString, ListWithoutTerminatorAtTheEndOfTheBlock_staysInTheBlock)
{
    receivedData reply;
    ReplyBytes bytes;
    bytes.u32(0xFFFFFFF0);
    for (int i = 0; i < 4094; ++i)
        bytes.u16('x');
    bytes.fill(reply);
    Buffer buffer(8192);
    EXPECT_EQ(reply.ReadMultiString(buffer.text(), &buffer.size), 0u);
    EXPECT_EQ(buffer.size, 4095u);
}

TEST(ReadMultiString, MissingLengthField_is111)
{
    receivedData reply;
    ReplyBytes().u16(0).fill(reply);
    Buffer buffer(20);
    EXPECT_EQ(reply.ReadMultiString(buffer.text(), &buffer.size), 111u);
    EXPECT_TRUE(buffer.untouched());
}

}  // namespace
