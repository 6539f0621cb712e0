#include "wire/ReplyWriter.h"

#include <gtest/gtest.h>

#include "Bytes.h"

using namespace bytes;
using srv::ListWriter;
using srv::ReplyWriter;

namespace {

struct ReplyWriterTest : testing::Test
{
    Bytes space = Bytes(8192, 0xEE);
    ReplyWriter reply{space};

    Bytes finish(srv::Result result = 0)
    {
        const auto payload = reply.finish(result);
        return {payload.begin(), payload.end()};
    }
};

TEST_F(ReplyWriterTest, ResultAlone_isKindAndResult)
{
    EXPECT_EQ(finish(8012), (Bytes{0x04, 0x00, 0x4C, 0x1F, 0x00, 0x00}));
}

TEST_F(ReplyWriterTest, Text_isLengthUnitsAndTrailer)
{
    reply.text(L"AB");
    EXPECT_EQ(finish(), (Bytes{4, 0, 0, 0, 0, 0,  // kind, result
                               4, 0, 0, 0,        // length
                               'A', 0, 'B', 0,    //
                               0, 0, 0, 0}));     // trailer
}

TEST_F(ReplyWriterTest, EmptyText_hasATrailerToo)
{
    reply.text(L"");
    EXPECT_EQ(finish(), (Bytes{4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(ReplyWriterTest, Numbers_areLittleEndian)
{
    reply.u8(0x12);
    reply.u16(0x3456);
    reply.u32(0x789ABCDE);
    EXPECT_EQ(finish(), (Bytes{4, 0, 0, 0, 0, 0, 0x12, 0x56, 0x34, 0xDE, 0xBC, 0x9A, 0x78}));
}

TEST_F(ReplyWriterTest, ResultOtherThan0_takesTheFieldsBack)
{
    reply.text(L"written too early");
    EXPECT_EQ(finish(5), (Bytes{4, 0, 5, 0, 0, 0}));
}

TEST_F(ReplyWriterTest, TextThatFillsTheReply_isWhole)
{
    reply.text(std::wstring((8192 - 6 - 4 - 4) / 2, L'x'));
    EXPECT_EQ(finish().size(), 8192u);
}

TEST_F(ReplyWriterTest, TextOneUnitTooLong_becomesResult234WithoutFields)
{
    reply.text(std::wstring((8192 - 6 - 4 - 4) / 2 + 1, L'x'));
    EXPECT_EQ(finish(), (Bytes{4, 0, 234, 0, 0, 0}));
}

TEST_F(ReplyWriterTest, MoreSpaceThanAReplyMayHave_isNotUsed)
{
    Bytes large(20000);
    ReplyWriter writer(large);
    writer.text(std::wstring(5000, L'x'));
    EXPECT_EQ(writer.finish(0).size(), 6u);
}

TEST_F(ReplyWriterTest, TextWithCapacity_needsRoomForItsTerminator)
{
    EXPECT_EQ(reply.text(L"12345", 5), 234u);
    EXPECT_EQ(reply.text(L"12345", 6), 0u);
    EXPECT_EQ(finish(), bytes::reply(0, replyStr(u"12345")));
}

TEST_F(ReplyWriterTest, CapacityCountsAnsiBytes)
{
    EXPECT_EQ(reply.text(L"\u00E4\u00F6\u00FC", 4), 0u);  // three characters, one byte each in the code page
}

TEST_F(ReplyWriterTest, List_isLengthTerminatedStringsAndTrailer)
{
    ListWriter list(reply, 4080);
    list.add(L"a");
    list.add(L"bc");
    EXPECT_EQ(list.finish(), 0u);
    EXPECT_EQ(finish(), (Bytes{4,   0, 0,   0, 0, 0,  // kind, result
                               10,  0, 0,   0,        // length
                               'a', 0, 0,   0,        //
                               'b', 0, 'c', 0, 0, 0,  //
                               0,   0, 0,   0}));     // trailer
}

TEST_F(ReplyWriterTest, EmptyList_hasNoTrailer)
{
    ListWriter list(reply, 4080);
    EXPECT_EQ(list.finish(), 0u);
    EXPECT_EQ(finish(), (Bytes{4, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(ReplyWriterTest, ListWhoseLastStringIsEmpty_hasOneMoreTerminator)
{
    ListWriter list(reply, 4080);
    list.add(L"n");
    list.add(L"");
    EXPECT_EQ(list.finish(), 0u);
    EXPECT_EQ(finish(), bytes::reply(0, bytes::list(item(u"n") + item(u"") + item(u""))));
}

TEST_F(ReplyWriterTest, ListThatFillsTheCapacity_isWhole)
{
    ListWriter list(reply, 6);
    EXPECT_TRUE(list.add(L"ab"));
    EXPECT_TRUE(list.add(L"cd"));
    EXPECT_EQ(list.finish(), 0u);
}

TEST_F(ReplyWriterTest, ListOneByteTooLong_is234AndNeverACutList)
{
    ListWriter list(reply, 5);
    EXPECT_TRUE(list.add(L"ab"));
    EXPECT_FALSE(list.add(L"cd"));
    EXPECT_EQ(list.finish(), 234u);
    EXPECT_EQ(finish(234), (Bytes{4, 0, 234, 0, 0, 0}));
}

TEST_F(ReplyWriterTest, ListLongerThanAReply_is234WhateverTheCapacity)
{
    ListWriter list(reply, 8160);
    bool fits = true;
    for (int i = 0; i < 41 && fits; ++i)
        fits = list.add(std::wstring(100, L'x'));
    EXPECT_FALSE(fits);
    EXPECT_EQ(list.finish(), 234u);
}

}  // namespace
