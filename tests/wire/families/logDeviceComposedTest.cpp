// Logical devices: what differs from the table, and calls that make several requests.

#include "callsTest.h"

namespace {

class LogDeviceCalls : public CallsTest
{
};

Bytes setNdi(const char* device, const char* parameter, const char* value)
{
    return Message(115).str(device).str(parameter).str(value).u32(1).bytes();
}

TEST_F(LogDeviceCalls, Copy_anotherKindOfReplyMarksTheTarget)
{
    channel.answer(otherKind());
    EXPECT_EQ(LogDeviceCopy("Line 1", "Line 2"), 0);
    const std::vector<Bytes> expected = {Message(49).str("Line 1").str("Line 2").bytes(),
                                         setNdi("Line 2", "enable_delete", "true"),
                                         setNdi("Line 2", "hidden", "false")};
    EXPECT_EQ(channel.requests(), expected);
}

TEST_F(LogDeviceCalls, Copy_markingReturnsTheSecondMarksResult)
{
    channel.answer(otherKind());
    channel.answer(failure(5));
    channel.answer(failure(8012));
    EXPECT_EQ(LogDeviceCopy("Line 1", "Line 2"), 8012);
    EXPECT_EQ(channel.requests().size(), 3u);
}

TEST_F(LogDeviceCalls, Copy_firstMarksFailureIsNotReturned)
{
    channel.answer(otherKind());
    channel.answer(failure(5));
    EXPECT_EQ(LogDeviceCopy("Line 1", "Line 2"), 0);
}

TEST_F(LogDeviceCalls, Copy_resultReplyMarksNothing)
{
    channel.answer(failure(8012));
    EXPECT_EQ(LogDeviceCopy("Line 1", "Line 2"), 8012);
    EXPECT_EQ(channel.requests().size(), 1u);
}

TEST_F(LogDeviceCalls, Copy_unreadableResultIsTracedAndCountsAsSuccess)
{
    const TraceCapture capture("0x80");
    channel.answer({4, 0, 9});
    EXPECT_EQ(LogDeviceCopy("Line 1", "Line 2"), 0);
    EXPECT_EQ(channel.requests().size(), 1u);
    const std::vector<TraceLine> expected = {{"FE", "LogDeviceCopy:", "<< return - Error 0x6f"},
                                             {"FE", "LogDeviceCopy:", "<< return 0x0"}};
    EXPECT_EQ(capture.of("LogDeviceCopy:"), expected);
}

// The type of a board's bus controller.

Bytes asicType(const char* deviceId, std::uint32_t capacity = 300)
{
    return Message(161).str(deviceId).str("Asic_Type").u32(capacity).u32(1).bytes();
}

TEST_F(LogDeviceCalls, GetAsicType_isTheBoardsAttribute)
{
    channel.answer(textReply("*TVRA002"));
    channel.answer(textReply("ASPC2"));
    const TraceCapture capture("0xC8");
    EXPECT_EQ(LogDeviceGetAsicType("Line 1", out.texts[0], out.texts[0]), 0);
    EXPECT_EQ(out.texts[0].text(), "ASPC2");
    EXPECT_EQ(channel.requests(), (std::vector<Bytes>{rawRead("Line 1", "DeviceID"), asicType("*TVRA002")}));
    const std::vector<TraceLine> expected = {{"FA", "LogDeviceGetAsicType:", "lpszLogDevice=Line 1"},
                                             {"FM", "LogDeviceGetAsicType:", "lRet=0 ASIC=ASPC2"},
                                             {"FE", "LogDeviceGetAsicType:", "<< return 0x0"}};
    EXPECT_EQ(capture.of("LogDeviceGetAsicType:"), expected);
}

TEST_F(LogDeviceCalls, GetAsicType_failureTracesNothingBehindTheCallersBuffer)
{
    channel.answer(textReply("*TVRA002"));
    channel.answer(resultReply(8012).bytes());
    const TraceCapture capture("0x40");
    out.texts[0].reset(3);
    EXPECT_EQ(LogDeviceGetAsicType("Line 1", out.texts[0], out.texts[0]), 8012);
    EXPECT_EQ(capture.of("LogDeviceGetAsicType:"),
              (std::vector<TraceLine>{{"FM", "LogDeviceGetAsicType:", "lRet=1f4c ASIC=UUU"}}));
}

TEST_F(LogDeviceCalls, GetAsicType_specialDeviceOfTheSpecialBoardHasItsOwn)
{
    channel.answer(textReply("*tvra010"));
    channel.answer(textReply("ASPC2"));
    channel.answer(textReply("255"));
    EXPECT_EQ(LogDeviceGetAsicType("Line 1", out.texts[0], out.texts[0]), 0);
    EXPECT_EQ(out.texts[0].text(), "IBC_16_B");
    EXPECT_EQ(channel.requests(),
              (std::vector<Bytes>{rawRead("Line 1", "DeviceID"), asicType("*tvra010"), rawRead("Line 1", "Device")}));
}

TEST_F(LogDeviceCalls, GetAsicType_otherDeviceOfTheSpecialBoardKeepsTheAttribute)
{
    channel.answer(textReply("*TVRA010"));
    channel.answer(textReply("ASPC2"));
    channel.answer(textReply("0255"));
    EXPECT_EQ(LogDeviceGetAsicType("Line 1", out.texts[0], out.texts[0]), 0);
    EXPECT_EQ(out.texts[0].text(), "ASPC2");
}

TEST_F(LogDeviceCalls, GetAsicType_specialBoardWithoutADeviceKeepsTheAttribute)
{
    channel.answer(textReply("*TVRA010"));
    channel.answer(textReply("ASPC2"));
    channel.answer(failure(8012));
    EXPECT_EQ(LogDeviceGetAsicType("Line 1", out.texts[0], out.texts[0]), 0);
    EXPECT_EQ(out.texts[0].text(), "ASPC2");
}

TEST_F(LogDeviceCalls, GetAsicType_ownTypeNeedsRoomForItsTerminator)
{
    for (const unsigned long capacity : {8ul, 9ul}) {
        channel.answer(textReply("*TVRA010"));
        channel.answer(textReply("A"));
        channel.answer(textReply("255"));
        out.texts[0].reset(capacity);
        EXPECT_EQ(LogDeviceGetAsicType("Line 1", out.texts[0], out.texts[0]), capacity > 8 ? 0 : 234);
        EXPECT_TRUE(out.texts[0].guardsIntact());
    }
    EXPECT_EQ(out.texts[0].text(), "IBC_16_B");
}

TEST_F(LogDeviceCalls, GetAsicType_failedDeviceIdIsReturned)
{
    channel.answer(failure(8012));
    EXPECT_EQ(LogDeviceGetAsicType("Line 1", out.texts[0], out.texts[0]), 8012);
    EXPECT_EQ(channel.requests().size(), 1u);
    EXPECT_TRUE(out.texts[0].bufferUntouched());
}

TEST_F(LogDeviceCalls, GetAsicType_failedAttributeIsReturned)
{
    channel.answer(textReply("*TVRA010"));
    channel.answer(failure(8012));
    EXPECT_EQ(LogDeviceGetAsicType("Line 1", out.texts[0], out.texts[0]), 8012);
    EXPECT_EQ(channel.requests().size(), 2u);
}

TEST_F(LogDeviceCalls, GetAsicType_withoutLengthIsRefused)
{
    EXPECT_EQ(LogDeviceGetAsicType("Line 1", out.texts[0], nullptr), 87);
    EXPECT_TRUE(channel.requests().empty());
}

// The logical devices of one board. The server: four devices, the second and the fourth on that board.

Bytes serveDevices(const Bytes& request)
{
    const char* const names[] = {"A", "B", "C", "D"};
    const auto is = [&](const Bytes& other) { return request == other; };
    for (std::uint32_t i = 0; i < 4; ++i) {
        if (is(Message(36).nullStr().u32(i).u32(260).bytes())) return textReply(names[i]);
    }
    if (is(rawRead("A", "DeviceID"))) return textReply("other");
    if (is(rawRead("B", "DeviceID"))) return textReply("BOARD 7");
    if (is(rawRead("D", "DeviceID"))) return textReply("board 7");
    if (is(rawRead("B", "Unit", 301))) return textReply("1");
    return failure(request[0] == 36 ? 259 : 8012);  // C has no device id, D no unit
}

class FromDeviceId : public LogDeviceCalls
{
 protected:
    FromDeviceId() { channel.answerAll(serveDevices); }
    long nth(unsigned long i)
    {
        return LogDeviceFromDeviceIDEnum("Board 7", i, out.texts[0], out.texts[0], out.texts[1], out.texts[1]);
    }
};

TEST_F(FromDeviceId, FirstMatch_isDeviceAndUnit)
{
    EXPECT_EQ(nth(0), 0);
    EXPECT_EQ(out.texts[0].text(), "B");
    EXPECT_EQ(out.texts[1].text(), "1");
}

TEST_F(FromDeviceId, MatchWithoutUnit_succeedsWithAnEmptyOne)
{
    EXPECT_EQ(nth(1), 0);
    EXPECT_EQ(out.texts[0].text(), "D");
    EXPECT_EQ(out.texts[1].length, 0u);
    EXPECT_EQ(out.texts[1].at(0), 0);
}

TEST_F(FromDeviceId, MatchWithoutUnitAndWithoutRoom_is234)
{
    out.texts[1].reset(0);
    EXPECT_EQ(nth(1), 234);
}

TEST_F(FromDeviceId, BeyondTheMatches_is259)
{
    EXPECT_EQ(nth(2), 259);
    EXPECT_EQ(channel.requests().size(), 9u) << "every device and its id, and the end";
}

TEST_F(FromDeviceId, Walk_asksForEachDeviceAndItsId)
{
    nth(0);
    const std::vector<Bytes> expected = {Message(36).nullStr().u32(0).u32(260).bytes(), rawRead("A", "DeviceID"),
                                         Message(36).nullStr().u32(1).u32(260).bytes(), rawRead("B", "DeviceID"),
                                         rawRead("B", "Unit", 301)};
    EXPECT_EQ(channel.requests(), expected);
}

TEST_F(FromDeviceId, Call_tracesNothingOfItsOwn)
{
    const TraceCapture capture("0xC8");
    nth(0);
    EXPECT_TRUE(capture.of("LogDeviceFromDeviceIDEnum:").empty());
}

// The device's own property sheet.

Bytes propSheet()
{
    return Message(114).str("Line 1").str("PropSheet").u32(260).u32(1).bytes();
}

std::vector<TraceLine> callDllLines(const char* result)
{
    return {{"FA", "LogDeviceCallDLL:", ">> lpszLogDevice=Line 1"}, {"FE", "LogDeviceCallDLL:", result}};
}

TEST_F(LogDeviceCalls, CallDLL_anySeparatorEndsWith8104)
{
    for (const char* value : {"PAGES.DLL,Open", "PAGES.DLL;Open", "PAGES.DLL Open"}) {
        channel.reset();
        channel.answer(textReply(value));
        const TraceCapture capture("0x88");
        EXPECT_EQ(LogDeviceCallDLL(nullptr, "Line 1"), 8104) << value;
        EXPECT_EQ(channel.requests(), std::vector<Bytes>{propSheet()});
        EXPECT_EQ(capture.of("LogDeviceCallDLL:"), callDllLines("<< return =8104 "));
    }
}

TEST_F(LogDeviceCalls, CallDLL_libraryWithAPathIs8102)
{
    channel.answer(textReply("C:\\x\\PAGES.DLL,Open"));
    const TraceCapture capture("0x88");
    EXPECT_EQ(LogDeviceCallDLL(nullptr, "Line 1"), 8102);
    EXPECT_EQ(capture.of("LogDeviceCallDLL:"), callDllLines("<< return =8102 "));
}

TEST_F(LogDeviceCalls, CallDLL_withoutSeparatorIs8100)
{
    channel.answer(textReply("PAGES.DLL"));
    const TraceCapture capture("0x88");
    EXPECT_EQ(LogDeviceCallDLL(nullptr, "Line 1"), 8100);
    EXPECT_EQ(capture.of("LogDeviceCallDLL:"), callDllLines("<< return ERROR=8100 DLL=PAGES.DLL"));
}

TEST_F(LogDeviceCalls, CallDLL_failedReadIsReturned)
{
    channel.answer(failure(8012));
    const TraceCapture capture("0x88");
    EXPECT_EQ(LogDeviceCallDLL(nullptr, "Line 1"), 8012);
    EXPECT_EQ(capture.of("LogDeviceCallDLL:"), callDllLines("<< return ERROR=8012 DLL="));
}

}  // namespace
