// The table of the logical-device requests.

#include "exchangeRow.h"
#include "kxovaapi.h"

namespace {

const std::string pidTid =
    " - Pid " + std::to_string(GetCurrentProcessId()) + " Tid " + std::to_string(GetCurrentThreadId());

const ExchangeRow rows[] = {
    {.name = "LogDeviceExists",
     .traceName = "LogDeviceExist:",
     .call = [](Outputs&) { return LogDeviceExists("Line 1", 0x11223344); },
     .request = Message(42).str("Line 1").u32(0x11223344).bytes(),
     .otherKind = 8621,
     .entry = {">>lpszLogDevice=Line 1"}},
    {.name = "LogDeviceCreateFromDef",
     .traceName = "LogDeviceCreateFromDef:",
     .call = [](Outputs&) { return LogDeviceCreateFromDef("Line 1", "MPI board"); },
     .request = Message(43).str("Line 1").str("MPI board").bytes(),
     .otherKind = 30,
     .entry = {">> lpszLogDevice=Line 1"}},
    {.name = "LogDeviceDel",
     .traceName = "LogDeviceDel:",
     .call = [](Outputs&) { return LogDeviceDel("Line 1"); },
     .request = Message(50).str("Line 1").u32(0).bytes(),
     .otherKind = 30,
     .entry = {"lpszLogDevice=Line 1 "}},
    {.name = "LogDeviceGetValue",
     .traceName = "LogDeviceGetValue:",
     .call = [](Outputs& out) { return LogDeviceGetValue("Line 1", "Unit", out.texts[0], out.texts[0]); },
     .request = Message(33).str("Line 1").str("Unit").u32(260).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::strictText, "Ger\xE4t 7"}},
     .entry = {"lpszLogDevice=Line 1 lpszParameter=Unit" + pidTid}},
    {.name = "LogDeviceGetValue_translated",
     .traceName = "LogDeviceGetValue:",
     .call = [](Outputs& out) { return LogDeviceGetValue("Line 1", "BUSPARAM", out.texts[0], out.texts[0]); },
     .request = Message(33).str("Line 1").str("BUSPARAM").u32(260).bytes(),
     .otherKind = 8621,
     .outputs = {{.kind = OutField::strictText, .value = "3", .delivered = "USER"}},
     .entry = {"lpszLogDevice=Line 1 lpszParameter=BUSPARAM" + pidTid}},
    {.name = "LogDeviceSetValue",
     .traceName = "LogDeviceSetValue:",
     .call = [](Outputs&) { return LogDeviceSetValue("Line 1", "Unit", "7"); },
     .request = Message(34).str("Line 1").str("Unit").str("7").bytes(),
     .otherKind = 30,
     .entry = {"lpszLogDevice=Line 1 lpszParameter=Unit lpszValue=7"}},
    {.name = "LogDeviceSetValue_nullArguments",
     .traceName = "LogDeviceSetValue:",
     .call = [](Outputs&) { return LogDeviceSetValue(nullptr, nullptr, nullptr); },
     .request = Message(34).nullStr().nullStr().nullStr().bytes(),
     .otherKind = 30,
     .entry = {"lpszLogDevice=(null) lpszParameter=(null) lpszValue=(null)"}},
    {.name = "LogDeviceGetEnum",
     .traceName = "LogDeviceGetEnum:",
     .call = [](Outputs& out) { return LogDeviceGetEnum("MPI", 3, out.texts[0], out.texts[0]); },
     .request = Message(36).str("MPI").u32(3).u32(260).bytes(),
     .otherKind = 30,
     .outputs = {{OutField::userText, "Line 4"}},
     .entry = {">>lpszNetTypeName=MPI iValue=3" + pidTid}},
    {.name = "LogDeviceGetEnum_allNetTypes",
     .traceName = "LogDeviceGetEnum:",
     .call = [](Outputs& out) { return LogDeviceGetEnum(nullptr, 0, out.texts[0], out.texts[0]); },
     .request = Message(36).nullStr().u32(0).u32(260).bytes(),
     .otherKind = 30,
     .outputs = {{OutField::userText, "Line 1"}},
     .entry = {">>lpszNetTypeName=NULL iValue=0" + pidTid}},
    {.name = "LogDeviceGetEnumValue",
     .traceName = "LogDeviceGetEnumValue:",
     .call =
         [](Outputs& out) {
             return LogDeviceGetEnumValue("Line 1", 2, out.texts[0], out.texts[0], out.texts[1], out.texts[1]);
         },
     .request = Message(37).str("Line 1").u32(2).u32(260).u32(260).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::userText, "baudrate"}, {OutField::userText, "187500"}},
     .entry = {">>lpszLogDevice=Line 1 iValue=2" + pidTid}},
};

INSTANTIATE_TEST_SUITE_P(LogDevice, ExchangeTest, testing::ValuesIn(rows), rowName);

const RefusedRow refused[] = {
    {.name = "LogDeviceExists_null", .call = [](Outputs&) { return LogDeviceExists(nullptr, 0); }},
    {.name = "LogDeviceCreateFromDef_nullName",
     .call = [](Outputs&) { return LogDeviceCreateFromDef(nullptr, "x"); },
     .lines = {{"FA", "LogDeviceCreateFromDef:", ">> lpszLogDevice=(null)"}}},
    {.name = "LogDeviceCreateFromDef_nullDefinition",
     .call = [](Outputs&) { return LogDeviceCreateFromDef("x", nullptr); },
     .lines = {{"FA", "LogDeviceCreateFromDef:", ">> lpszLogDevice=x"}}},
    {.name = "LogDeviceDel_null",
     .call = [](Outputs&) { return LogDeviceDel(nullptr); },
     .lines = {{"FA", "LogDeviceDel:", "lpszLogDevice=(null) "}}},
    {.name = "LogDeviceGetValue_nullName",
     .call = [](Outputs& out) { return LogDeviceGetValue(nullptr, "x", out.texts[0], out.texts[0]); },
     .lines = {{"FA", "LogDeviceGetValue:", "lpszLogDevice=(null) lpszParameter=x" + pidTid}}},
    {.name = "LogDeviceGetValue_emptyName",
     .call = [](Outputs& out) { return LogDeviceGetValue("", "x", out.texts[0], out.texts[0]); },
     .lines = {{"FA", "LogDeviceGetValue:", "lpszLogDevice= lpszParameter=x" + pidTid}}},
    {.name = "LogDeviceGetValue_nullParameter",
     .call = [](Outputs& out) { return LogDeviceGetValue("x", nullptr, out.texts[0], out.texts[0]); },
     .lines = {{"FA", "LogDeviceGetValue:", "lpszLogDevice=x lpszParameter=(null)" + pidTid}}},
    {.name = "LogDeviceGetValue_emptyParameter",
     .call = [](Outputs& out) { return LogDeviceGetValue("x", "", out.texts[0], out.texts[0]); },
     .lines = {{"FA", "LogDeviceGetValue:", "lpszLogDevice=x lpszParameter=" + pidTid}}},
};

INSTANTIATE_TEST_SUITE_P(LogDevice, RefusedTest, testing::ValuesIn(refused), refusedName);

class LogDeviceCalls : public testing::Test
{
 protected:
    LogDeviceCalls() : channel(*fakeChannel()) { channel.reset(); }
    FakeChannel& channel;
    Outputs out;
};

TEST_F(LogDeviceCalls, Exists_dummyStartsTheChannelAndSendsNothing)
{
    const TraceCapture capture("0x88");
    EXPECT_EQ(LogDeviceExists("Dummy", 0), -1);
    EXPECT_TRUE(channel.requests().empty());
    const std::vector<TraceLine> expected = {
        {"FA", "LogDeviceExist:", ">>lpszLogDevice=Dummy"},
        {"FA", "LogDeviceExist:", "dummy call - initializing OvaScp synchronously"},
        {"FE", "LogDeviceExist:", "dummy call - return"},
    };
    EXPECT_EQ(capture.of("LogDeviceExist:"), expected);
}

TEST_F(LogDeviceCalls, Exists_dummyInAnotherCaseIsAName)
{
    EXPECT_EQ(LogDeviceExists("dummy", 0), 0);
    EXPECT_EQ(channel.requests().size(), 1u);
}

TEST_F(LogDeviceCalls, GetEnum_endOfTheListEmptiesTheLength)
{
    channel.answer(resultReply(259).bytes());
    const TraceCapture capture("0x80");
    EXPECT_EQ(LogDeviceGetEnum(nullptr, 9, out.texts[0], out.texts[0]), 259);
    EXPECT_EQ(out.texts[0].length, 0u);
    EXPECT_EQ(capture.of("LogDeviceGetEnum:"),
              (std::vector<TraceLine>{{"FE", "LogDeviceGetEnum:", "<< return 0x103"}}));
}

TEST_F(LogDeviceCalls, GetEnum_endOfTheListWithoutLengthIsHarmless)
{
    channel.answer(resultReply(259).bytes());
    EXPECT_EQ(LogDeviceGetEnum(nullptr, 9, nullptr, nullptr), 259);
}

TEST_F(LogDeviceCalls, AnyCall_textBeyondTheRequestIs111AndSendsNothing)
{
    const TraceCapture capture("0x80");
    EXPECT_EQ(LogDeviceDel(std::string(2100, 'x').c_str()), 111);
    EXPECT_TRUE(channel.requests().empty());
    EXPECT_EQ(capture.of("LogDeviceDel:"), (std::vector<TraceLine>{{"FE", "LogDeviceDel:", "<< result= 0x6f "}}));
}

TEST_F(LogDeviceCalls, AnyCall_withoutAChannelIs30AndOpensAgainEachTime)
{
    // The channel of this process may be open already; a process that never gets one is tried in the fault tests.
    channel.fail(99);
    EXPECT_EQ(LogDeviceDel("x"), 30);
}

}  // namespace
