// Logical names: the guard of their deletion, and the device that they stand for.

#include "callsTest.h"

namespace {

class LogNameCalls : public CallsTest
{
};

Bytes setValue(const char* parameter, const char* value)
{
    return Message(65).str("Name 1").str(parameter).str(value).bytes();
}

Bytes deviceExists()
{
    return Message(42).str("Line 1").u32(0).bytes();
}

TEST_F(LogNameCalls, Create_failedMarkIsNotReturned)
{
    channel.answer(failure(0));
    channel.answer(failure(5));
    EXPECT_EQ(LogNameCreate("Name 1"), 0);
    EXPECT_EQ(channel.requests().size(), 2u);
}

TEST_F(LogNameCalls, Create_failureMarksNothing)
{
    channel.answer(failure(8012));
    EXPECT_EQ(LogNameCreate("Name 1"), 8012);
    EXPECT_EQ(channel.requests().size(), 1u);
}

struct Guarded
{
    const char* name;
    Bytes reply;
    const char* trace;
};

TEST_F(LogNameCalls, Del_guardedNameIs8022AndSendsNoDelete)
{
    const Guarded cases[] = {
        {"protected", textReply("false"), "<< return EnableDelete=FALSE"},
        {"empty", textReply(""), "<< return EnableDelete=FALSE"},
        {"longer", textReply("true1"), "<< return EnableDelete=FALSE"},
        {"withoutTheValue", failure(8012), "<< return EnableDelete=n.v"},
        {"anotherKind", otherKind(), "<< return EnableDelete=n.v"},
        {"noAnswer", {}, "<< return EnableDelete=n.v"},
    };
    for (const Guarded& guarded : cases) {
        SCOPED_TRACE(guarded.name);
        channel.reset();
        channel.answer(guarded.reply);
        const TraceCapture capture("0x80");
        EXPECT_EQ(LogNameDel("Name 1"), 8022);
        EXPECT_EQ(channel.requests(),
                  std::vector<Bytes>{Message(66).str("Name 1").str("enable_delete").u32(260).bytes()});
        EXPECT_EQ(capture.of("LogNameDel:"), (std::vector<TraceLine>{{"FE", "LogNameDel:", guarded.trace}}));
    }
}

TEST_F(LogNameCalls, Del_trueInAnyCaseIsDeleted)
{
    for (const char* value : {"true", "True", "TRUE"}) {
        channel.reset();
        channel.answer(textReply(value));
        EXPECT_EQ(LogNameDel("Name 1"), 0) << value;
        EXPECT_EQ(channel.requests().size(), 2u);
    }
}

TEST_F(LogNameCalls, GetLogDevice_tracesItsOwnEntryOnly)
{
    const TraceCapture capture("0x88");
    channel.answer(textReply("Line 1"));
    LogNameGetLogDevice("Name 1", out.texts[0], out.texts[0]);
    EXPECT_EQ(capture.of("LogNameGetLogDevice:"),
              (std::vector<TraceLine>{{"FA", "LogNameGetLogDevice:", ">>lpszLogName=Name 1 "}}));
}

TEST_F(LogNameCalls, SetLogDevice_storesTheDeviceAndItsType)
{
    channel.answer(failure(0));
    channel.answer(failure(0));
    channel.answer(textReply("CP5611"));
    const TraceCapture capture("0xC8");
    EXPECT_EQ(LogNameSetLogDevice("Name 1", "Line 1"), 0);
    EXPECT_EQ(channel.requests(), (std::vector<Bytes>{deviceExists(), setValue("LogDevice", "Line 1"),
                                                      rawRead("Line 1", "CP_TYPE"), setValue("CP_TYPE", "CP5611")}));
    const std::vector<TraceLine> expected = {
        {"FA", "LogNameSetLogDevice:", ">>lpszLogName=Name 1  lpszLogDevice=Line 1"},
        {"FM", "LogNameSetLogDevice:", "LogNameSetValue 0 LN Name 1 -> LD Line 1"},
        {"FE", "LogNameSetLogDevice:", "<< return 0"}};
    EXPECT_EQ(capture.of("LogNameSetLogDevice:"), expected);
}

TEST_F(LogNameCalls, SetLogDevice_unknownDeviceIs8012AndChangesNothing)
{
    for (const Bytes& reply : {failure(8012), failure(5), otherKind(), Bytes{}}) {
        channel.reset();
        channel.answer(reply);
        EXPECT_EQ(LogNameSetLogDevice("Name 1", "Line 1"), 8012);
        EXPECT_EQ(channel.requests(), std::vector<Bytes>{deviceExists()});
    }
}

TEST_F(LogNameCalls, SetLogDevice_emptyDeviceIsStoredWithoutAType)
{
    EXPECT_EQ(LogNameSetLogDevice("Name 1", ""), 0);
    EXPECT_EQ(channel.requests(), std::vector<Bytes>{setValue("LogDevice", "")});
}

TEST_F(LogNameCalls, SetLogDevice_deviceWithoutTypeLeavesTheNames)
{
    channel.answer(failure(0));
    channel.answer(failure(0));
    channel.answer(failure(8012));
    EXPECT_EQ(LogNameSetLogDevice("Name 1", "Line 1"), 0);
    EXPECT_EQ(channel.requests().size(), 3u);
}

TEST_F(LogNameCalls, SetLogDevice_failedTypeIsNotReturned)
{
    channel.answer(failure(0));
    channel.answer(failure(0));
    channel.answer(textReply("CP5611"));
    channel.answer(failure(5));
    EXPECT_EQ(LogNameSetLogDevice("Name 1", "Line 1"), 0);
}

TEST_F(LogNameCalls, SetLogDevice_failedStoreIsReturnedAndTheTypeCopiedAllTheSame)
{
    channel.answer(failure(0));
    channel.answer(failure(5));
    channel.answer(textReply("CP5611"));
    const TraceCapture capture("0xC0");
    EXPECT_EQ(LogNameSetLogDevice("Name 1", "Line 1"), 5);
    EXPECT_EQ(channel.requests().size(), 4u);
    EXPECT_EQ(capture.of("LogNameSetLogDevice:"),
              (std::vector<TraceLine>{{"FE", "LogNameSetLogDevice:", "<< return 5"}}));
}

}  // namespace
