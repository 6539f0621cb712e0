// Boards: what differs from the table.

#include <array>
#include <cstring>

#include "callsTest.h"

namespace {

class BoardCalls : public CallsTest
{
};

Bytes listReply(const std::vector<std::string>& texts)
{
    return resultReply(0).list(texts).bytes();
}

// The list of what a board does not support.
class NotSupported : public BoardCalls
{
 protected:
    NotSupported() { forget(); }
    ~NotSupported() override { forget(); }

    void forget()
    {
        channel.answer(listReply({}));
        at(~0ul);
        channel.reset();
    }
    long at(unsigned long i, const char* board = "CP 4")
    {
        out.texts[0].reset(300);
        return DCFG_BoardGetNotSupported(i, board, out.texts[0], out.texts[0]);
    }
    std::string entry() const { return out.texts[0].bytes.data() + OutText::guard; }
    static Bytes request(const char* board = "CP 4") { return Message(164).str(board).u32(2048).bytes(); }
    static TraceLine line(const char* level, const char* text) { return {level, "DCFG_BoardGetNotSupported:", text}; }
};

TEST_F(NotSupported, Run_fetchesOnceAndHandsOutEntriesInOrder)
{
    channel.answer(listReply({"a", "b"}));
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(entry(), "a");
    EXPECT_EQ(out.texts[0].length, 300u) << "the capacity stays";
    EXPECT_EQ(at(1), 0);
    EXPECT_EQ(entry(), "b");
    EXPECT_EQ(at(2), 259);
    EXPECT_EQ(channel.requests(), std::vector<Bytes>{request()});
}

TEST_F(NotSupported, ClosingEmptyText_isNoEntryAndAnInnerOneIs)
{
    channel.answer(listReply({"a", "", "b", ""}));
    EXPECT_EQ(at(1), 0);
    EXPECT_EQ(entry(), "");
    EXPECT_EQ(at(2), 0);
    EXPECT_EQ(entry(), "b");
    EXPECT_EQ(at(3), 259);
}

TEST_F(NotSupported, ListOfItsTerminatorAlone_is259AndIsForgotten)
{
    channel.answer(listReply({""}));
    channel.answer(listReply({"c"}));
    EXPECT_EQ(at(0), 259);
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(entry(), "c");
}

TEST_F(NotSupported, RefusingServer_isAListOf2047EmptyEntries)
{
    channel.answer(failure(8012));
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(entry(), "");
    EXPECT_EQ(at(2046), 0);
    EXPECT_EQ(entry(), "");
    EXPECT_EQ(at(2047), 259);
    EXPECT_EQ(channel.requests().size(), 1u);
}

TEST_F(NotSupported, RefusalsResult_isTracedOnly)
{
    channel.answer(failure(8012));
    const TraceCapture capture("0x88");
    EXPECT_EQ(at(0), 0);
    const std::vector<TraceLine> lines = capture.of("DCFG_BoardGetNotSupported:");
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[0], line("FA", ">> BoardName=CP 4 "));
    EXPECT_EQ(lines[1], line("FE", "<< return 0x1f4c"));
}

TEST_F(NotSupported, AbandonedRun_servesTheNextBoardFromItsList)
{
    channel.answer(listReply({"a", "b"}));
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(at(0, "CP 5"), 0);
    EXPECT_EQ(entry(), "a");
    EXPECT_EQ(channel.requests(), std::vector<Bytes>{request()});
}

TEST_F(NotSupported, EachEntryPassed_isADetailLine)
{
    channel.answer(listReply({"a", "b", "c"}));
    const TraceCapture capture("0x40");
    at(1);
    EXPECT_EQ(capture.of("DCFG_BoardGetNotSupported:"),
              (std::vector<TraceLine>{line("FM", "1:i=0 LogDev=a "), line("FM", "1:i=1 LogDev=b ")}));
}

TEST_F(NotSupported, AnotherKindOfReply_is8621AndKeepsNothing)
{
    channel.answer(otherKind());
    const TraceCapture capture("0x80");
    EXPECT_EQ(at(0), 8621);
    EXPECT_EQ(capture.of("DCFG_BoardGetNotSupported:"),
              (std::vector<TraceLine>{line("FE", "<< return - Error DCFG_INVALID_RESPONSE (0x5)")}));
    channel.answer(listReply({"a"}));
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(entry(), "a");
}

TEST_F(NotSupported, ReplyThatCannotBeRead_isReturnedAndKeepsNothing)
{
    const Bytes replies[] = {{}, {4}, {4, 0, 0}, resultReply(0).u16(8).bytes()};
    const long results[] = {30, 111, 111, 111};
    for (int i = 0; i < 4; ++i) {
        channel.answer(replies[i]);
        EXPECT_EQ(at(0), results[i]) << i;
    }
    EXPECT_EQ(channel.requests().size(), 4u);
}

TEST_F(NotSupported, ListBeyond2048Bytes_isItsConversionsError)
{
    channel.answer(listReply({std::string(2100, 'x')}));
    EXPECT_EQ(at(0), ERROR_INSUFFICIENT_BUFFER);
}

TEST_F(NotSupported, SmallBuffer_cutsTheEntry)
{
    channel.answer(listReply({"abcdef"}));
    out.texts[0].reset(4);
    EXPECT_EQ(DCFG_BoardGetNotSupported(0, "CP 4", out.texts[0], out.texts[0]), 0);
    EXPECT_EQ(entry(), "abc");
    EXPECT_TRUE(out.texts[0].guardsIntact());
}

// Raw data about a board.

TEST_F(BoardCalls, GetBoardInfoEx_replyRulesHowMuchIsCopied)
{
    std::array<unsigned char, 16> data{};
    unsigned long length = 2;
    channel.answer(resultReply(0).u32(5).raw({1, 2, 0, 4, 5}).bytes());
    EXPECT_EQ(DCFG_GetBoardInfoEx(9, "b", "m", "h", data.data(), &length), 0);
    EXPECT_EQ(length, 5u);
    EXPECT_EQ(data, (std::array<unsigned char, 16>{1, 2, 0, 4, 5}));
}

TEST_F(BoardCalls, GetBoardInfoEx_noBytesIsNoError)
{
    unsigned char data = 7;
    unsigned long length = 1;
    channel.answer(resultReply(0).u32(0).bytes());
    EXPECT_EQ(DCFG_GetBoardInfoEx(9, "b", "m", "h", &data, &length), 0);
    EXPECT_EQ(length, 0u);
    EXPECT_EQ(data, 7);
}

TEST_F(BoardCalls, GetBoardInfoEx_lengthBeyondTheReplyIs111AndCopiesNothing)
{
    unsigned char data = 7;
    unsigned long length = 1;
    channel.answer(resultReply(0).u32(0x7FFFFFFF).raw({1, 2}).bytes());
    EXPECT_EQ(DCFG_GetBoardInfoEx(9, "b", "m", "h", &data, &length), 111);
    EXPECT_EQ(data, 7);
}

// The record form of the installed boards.

DcfgEnumInstBoardInfo recordOf(Outputs& out)
{
    auto& t = out.texts;
    DcfgEnumInstBoardInfo info;
    std::memset(&info, 0x5A, sizeof info);
    info.size = 72;
    info.BoardName = t[0];
    info.BoardNameLength = 300;
    info.BoardMap = t[1];
    info.BoardMapLength = 301;
    info.DeviceId = t[2];
    info.DeviceIdLength = 302;
    info.NetType = t[3];
    info.NetTypeLength = 303;
    info.HardwareId = t[4];
    info.HardwareIdLength = 304;
    info.HardwareInstanceId = t[5];
    info.HardwareInstanceIdLength = 305;
    return info;
}

TEST_F(BoardCalls, EnumInstBoardEx_recordIs72BytesInItsOrder)
{
    EXPECT_EQ(sizeof(DcfgEnumInstBoardInfo), 72u);
    EXPECT_EQ(offsetof(DcfgEnumInstBoardInfo, BoardMap), 12u);
    EXPECT_EQ(offsetof(DcfgEnumInstBoardInfo, DeviceId), 20u);
    EXPECT_EQ(offsetof(DcfgEnumInstBoardInfo, NetType), 28u);
    EXPECT_EQ(offsetof(DcfgEnumInstBoardInfo, HardwareId), 36u);
    EXPECT_EQ(offsetof(DcfgEnumInstBoardInfo, HardwareInstanceId), 44u);
    EXPECT_EQ(offsetof(DcfgEnumInstBoardInfo, State), 60u);
}

TEST_F(BoardCalls, EnumInstBoardEx_fillsTheRecord)
{
    channel.answer(resultReply(0)
                       .text("name")
                       .text("device")
                       .text("net")
                       .text("hardware")
                       .text("instance")
                       .text("map")
                       .u32(0x11223344)
                       .bytes());
    DcfgEnumInstBoardInfo info = recordOf(out);
    EXPECT_EQ(DCFG_EnumInstBoardEx(2, &info), 0);
    EXPECT_STREQ(info.BoardName, "name");
    EXPECT_STREQ(info.DeviceId, "device");
    EXPECT_STREQ(info.NetType, "net");
    EXPECT_STREQ(info.HardwareId, "hardware");
    EXPECT_STREQ(info.HardwareInstanceId, "instance");
    EXPECT_STREQ(info.BoardMap, "map");
    EXPECT_EQ(info.BoardNameLength, 4u);
    EXPECT_EQ(info.DeviceIdLength, 6u);
    EXPECT_EQ(info.NetTypeLength, 3u);
    EXPECT_EQ(info.HardwareIdLength, 8u);
    EXPECT_EQ(info.HardwareInstanceIdLength, 8u);
    EXPECT_EQ(info.BoardMapLength, 3u);
    EXPECT_EQ(info.State, 0x11223344u);
}

TEST_F(BoardCalls, EnumInstBoardEx_sendsEachBuffersCapacityInTheRequestsOrder)
{
    DcfgEnumInstBoardInfo info = recordOf(out);
    DCFG_EnumInstBoardEx(2, &info);
    EXPECT_EQ(channel.requests(),
              std::vector<Bytes>{Message(192).u32(2).u32(300).u32(302).u32(303).u32(304).u32(305).u32(301).bytes()});
}

TEST_F(BoardCalls, EnumInstBoardEx_reservedWordsComeBackUnchanged)
{
    DcfgEnumInstBoardInfo info = recordOf(out);
    channel.answer(failure(259));
    EXPECT_EQ(DCFG_EnumInstBoardEx(2, &info), 259);
    EXPECT_EQ(info.reserved14, 0x5A5A5A5Au);
    EXPECT_EQ(info.reserved15, 0x5A5A5A5Au);
    EXPECT_EQ(info.reserved17, 0x5A5A5A5Au);
    EXPECT_EQ(info.reserved18, 0x5A5A5A5Au);
    EXPECT_EQ(info.State, 0x5A5A5A5Au);
}

TEST_F(BoardCalls, EnumInstBoardEx_otherSizesAreRefused)
{
    for (const unsigned long size : {0ul, 68ul, 71ul, 73ul, 76ul}) {
        DcfgEnumInstBoardInfo info = recordOf(out);
        info.size = size;
        EXPECT_EQ(DCFG_EnumInstBoardEx(0, &info), 87) << size;
    }
    EXPECT_TRUE(channel.requests().empty());
}

TEST_F(BoardCalls, EnumAvailableBoards_valueMayBeLeftOut)
{
    channel.answer(resultReply(0).text("a").text("b").u32(7).bytes());
    EXPECT_EQ(DCFG_EnumAvailableBoards(0, out.texts[0], out.texts[0], out.texts[1], out.texts[1], nullptr), 0);
    EXPECT_EQ(out.texts[1].text(), "b");
}

TEST_F(BoardCalls, EnumAvailableBoards_unreadableTextLeavesTheValue)
{
    out.texts[1].reset(1);
    out.numbers[0] = 9;
    channel.answer(resultReply(0).text("a").text("bb").u32(7).bytes());
    EXPECT_EQ(DCFG_EnumAvailableBoards(0, out.texts[0], out.texts[0], out.texts[1], out.texts[1], &out.numbers[0]),
              234);
    EXPECT_EQ(out.numbers[0], 9u);
}

TEST_F(BoardCalls, EnumConfiguration_failedExchangeIsTracedInItsOwnWords)
{
    channel.fail(9);
    const TraceCapture capture("0x80");
    EXPECT_EQ(DCFG_EnumConfiguration(1, "b", "", "", "", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                     nullptr, nullptr),
              30);
    EXPECT_EQ(capture.of("DCFG_EnumConfiguration:"),
              (std::vector<TraceLine>{{"FE", "DCFG_EnumConfiguration:", "<< Receive= 0x1e "}}));
}

TEST_F(BoardCalls, EnumConfiguration_firstFailedTextEndsTheReading)
{
    channel.answer(resultReply(0).text("device").text("protocol").text("l4").text("unit").bytes());
    out.texts[1].reset(3);
    EXPECT_EQ(DCFG_EnumConfiguration(1, "b", "", "", "", out.texts[0], out.texts[0], out.texts[1], out.texts[1],
                                     out.texts[2], out.texts[2], out.texts[3], out.texts[3]),
              234);
    EXPECT_EQ(out.texts[0].text(), "device");
    EXPECT_TRUE(out.texts[2].bufferUntouched());
}

TEST_F(BoardCalls, BoardGetEnum2_tracesTheAddressOfTheName)
{
    const TraceCapture capture("0x08");
    char* const name = out.texts[0];
    DCFG_BoardGetEnum2("d", 2, name, out.texts[0], nullptr, nullptr, nullptr, nullptr, false);
    const std::string address = hexText(reinterpret_cast<ULONG_PTR>(name));
    EXPECT_EQ(capture.of("DCFG_BoardGetEnum2:"),
              (std::vector<TraceLine>{{"FA", "DCFG_BoardGetEnum2:",
                                       ">>lpszDeviceID=d iValue=2 lpszBoardName=" + address + " bAutoNewMap 0 "}}));
}

TEST_F(BoardCalls, Scan_tracesItsOwnEntryAndResult)
{
    channel.answer(failure(8012));
    const TraceCapture capture("0x88");
    EXPECT_EQ(DCFG_Scan(), 8012);
    EXPECT_EQ(capture.of("DCFG_Scan:"),
              (std::vector<TraceLine>{{"FA", "DCFG_Scan:", ">> start"}, {"FE", "DCFG_Scan:", "<< return 8012"}}));
}

}  // namespace
