// The table of the panel and LLDP requests, and what differs from it.

#include "callsTest.h"

namespace {

const ExchangeRow rows[] = {
    {.name = "Panel_SendInstall",
     .traceName = "SendInstall:",
     .call = [](Outputs&) { return Panel_SendInstall("*TVRA002", "s2"); },
     .request = Message(5).str("*TVRA002").str("s2").bytes(),
     .otherKind = 30,
     .entry = {">> lpszDeviceID=*TVRA002 "},
     .shortForm = true},
    {.name = "Panel_SendDeinstall",
     .traceName = "SendDeinstall:",
     .call = [](Outputs&) { return Panel_SendDeinstall("*TVRA002", "s2", "s3"); },
     .request = Message(6).str("*TVRA002").str("s2").str("s3").bytes(),
     .otherKind = 30,
     .entry = {">> lpszDeviceID=*TVRA002 "},
     .shortForm = true},
    {.name = "Panel_LldpDelValue",
     .traceName = "DCFG_LldpDelValue:",
     .call = [](Outputs&) { return Panel_LldpDelValue("x"); },
     .request = Message(204).nullStr().str("LLDP").str("x").bytes(),
     .otherKind = 30,
     .entry = {">> parameter x"},
     .result = "<< result= 0x0 ",
     .failureText = "<< result= 0x1f4c "},
    {.name = "Panel_LldpGetEnumValue",
     .traceName = "DCFG_LldpGetValue:",
     .call =
         [](Outputs& out) {
             return Panel_LldpGetEnumValue(2, out.texts[0], out.texts[0], out.texts[1], out.texts[1]);
         },
     .request = Message(205).str("data").nullStr().str("LLDP").u32(2).u32(260).u32(260).bytes(),
     .otherKind = 30,
     .outputs = {{OutField::userText, "x"}, {OutField::userText, "Ger\xE4t"}},
     .entryElsewhere = true},
    {.name = "LogNameGetValueLang",
     .traceName = "LogNameGetValueLang:",
     .call = [](Outputs& out) { return LogNameGetValueLang("Name 1", "Unit", "DE", out.texts[0], out.texts[0]); },
     .request = Message(90).str("Name 1").str("Unit").str("DE").u32(300).u32(1).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "Ger\xE4t"}},
     .entry = {"lpszLogName=Name 1 lpszParameter=Unit "},
     .result = "<< return ret=0 lpszLogName=Name 1 lpszParameter=Unit lpszValue=Ger\xE4t",
     .failureText = "<< return ret=1f4c lpszLogName=Name 1 lpszParameter=Unit lpszValue="},
};

INSTANTIATE_TEST_SUITE_P(Panel, ExchangeTest, testing::ValuesIn(rows), rowName);

const RequestRow requests[] = {
    {"SendInstall_nulls", [](Outputs&) { return Panel_SendInstall(nullptr, nullptr); },
     Message(5).nullStr().nullStr().bytes()},
    {"SendDeinstall_nulls", [](Outputs&) { return Panel_SendDeinstall(nullptr, nullptr, nullptr); },
     Message(6).nullStr().nullStr().nullStr().bytes()},
    {"SendGetList_theCallersOperation",
     [](Outputs& out) { return Panel_SendGetList(42, "s", out.texts[0], out.texts[0]); },
     Message(42).str("s").u32(300).bytes()},
    {"SendGetList_highOperationIsNotSignExtended",
     [](Outputs& out) { return Panel_SendGetList(static_cast<char>(0xD0), nullptr, out.texts[0], out.texts[0]); },
     Message(0xD0).nullStr().u32(300).bytes()},
    {"SendGetList_nullLength", [](Outputs& out) { return Panel_SendGetList(42, "s", out.texts[0], nullptr); },
     Message(42).str("s").u32(0).bytes()},
    {"LldpGetEnumValue_nullName",
     [](Outputs& out) { return Panel_LldpGetEnumValue(2, nullptr, out.texts[0], nullptr, out.texts[1]); },
     Message(205).str("data").nullStr().str("LLDP").u32(2).u32(260).u32(260).bytes()},
    {"LogNameGetValueLang_nulls",
     [](Outputs&) { return LogNameGetValueLang(nullptr, nullptr, nullptr, nullptr, nullptr); },
     Message(90).nullStr().nullStr().nullStr().u32(0).u32(1).bytes()},
};

INSTANTIATE_TEST_SUITE_P(Panel, RequestTest, testing::ValuesIn(requests), requestName);

const RefusedRow refused[] = {
    {.name = "LldpDelValue_null",
     .call = [](Outputs&) { return Panel_LldpDelValue(nullptr); },
     .lines = {{"FA", "DCFG_LldpDelValue:", ">> parameter (null)"}}},
    {.name = "LldpDelValue_empty",
     .call = [](Outputs&) { return Panel_LldpDelValue(""); },
     .lines = {{"FA", "DCFG_LldpDelValue:", ">> parameter "}}},
    {.name = "LldpGetEnumValue_nullNameLength",
     .call = [](Outputs& out) { return Panel_LldpGetEnumValue(2, nullptr, nullptr, out.texts[1], out.texts[1]); },
     .lines = {{"FA", "DCFG_LldpGetValue:", ">> folder data index 2 parameter (null)"}}},
    {.name = "LldpGetEnumValue_nullValueLength",
     .call = [](Outputs& out) { return Panel_LldpGetEnumValue(2, nullptr, out.texts[0], out.texts[1], nullptr); },
     .lines = {{"FA", "DCFG_LldpGetValue:", ">> folder data index 2 parameter (null)"}}},
};

INSTANTIATE_TEST_SUITE_P(Panel, RefusedTest, testing::ValuesIn(refused), refusedName);

TEST_F(CallsTest, LldpGetEnumValue_entryShowsNothingBehindTheNameBuffer)
{
    const TraceCapture capture("0x8");
    out.texts[0].reset(3);
    Panel_LldpGetEnumValue(2, out.texts[0], out.texts[0], out.texts[1], out.texts[1]);
    EXPECT_EQ(capture.of("DCFG_LldpGetValue:"),
              (std::vector<TraceLine>{{"FA", "DCFG_LldpGetValue:", ">> folder data index 2 parameter UUU"}}));
}

TEST_F(CallsTest, LldpGetEnumValue_entryShowsWhatTheNameBufferHolds)
{
    char name[16] = "before";
    unsigned long length = sizeof name;
    const TraceCapture capture("0x08");
    Panel_LldpGetEnumValue(2, name, &length, out.texts[1], out.texts[1]);
    EXPECT_EQ(capture.of("DCFG_LldpGetValue:"),
              (std::vector<TraceLine>{{"FA", "DCFG_LldpGetValue:", ">> folder data index 2 parameter before"}}));
}

class PanelList : public CallsTest
{
 protected:
    long get() { return Panel_SendGetList(42, "s", out.texts[0], out.texts[0]); }
    std::vector<TraceLine> lines(const TraceCapture& capture) { return capture.of("SendLogDeviceGetList:"); }
    static TraceLine line(const char* level, const char* text) { return {level, "SendLogDeviceGetList:", text}; }
};

TEST_F(PanelList, Texts_followOneAnotherEachWithItsZero)
{
    channel.answer(resultReply(0).list({"a", "bc"}).bytes());
    const TraceCapture capture("0x88");
    EXPECT_EQ(get(), 0);
    EXPECT_EQ(out.texts[0].text(), std::string("a\0bc\0", 5));
    EXPECT_EQ(lines(capture),
              (std::vector<TraceLine>{line("FA", ">> start "), line("FE", "<< return 0x0 neededBufLen=5l")}));
}

TEST_F(PanelList, EmptyList_isNoBytesAndAZero)
{
    channel.answer(resultReply(0).list({}).bytes());
    EXPECT_EQ(get(), 0);
    EXPECT_EQ(out.texts[0].length, 0u);
    EXPECT_EQ(out.texts[0].at(0), 0);
}

TEST_F(PanelList, FailingResult_leavesBufferAndLength)
{
    channel.answer(failure(8012));
    const TraceCapture capture("0x80");
    EXPECT_EQ(get(), 8012);
    EXPECT_TRUE(out.texts[0].bufferUntouched());
    EXPECT_EQ(lines(capture), (std::vector<TraceLine>{line("FE", "<< return 0x1f4c neededBufLen=300l")}));
}

TEST_F(PanelList, AnotherKind_is8621)
{
    channel.answer(otherKind());
    const TraceCapture capture("0x80");
    EXPECT_EQ(get(), 8621);
    EXPECT_TRUE(out.texts[0].bufferUntouched());
    EXPECT_EQ(lines(capture), (std::vector<TraceLine>{line("FE", "<< return - Error DCFG_INVALID_RESPONSE (0x5)")}));
}

TEST_F(PanelList, CutReply_is111)
{
    for (const Bytes& reply : {Bytes{4}, Bytes{4, 0, 0}, resultReply(0).u16(8).bytes()}) {
        channel.answer(reply);
        EXPECT_EQ(get(), 111);
        EXPECT_TRUE(out.texts[0].bufferUntouched());
    }
}

TEST_F(PanelList, FailedExchange_is30)
{
    channel.fail(9);
    EXPECT_EQ(get(), 30);
    EXPECT_TRUE(out.texts[0].bufferUntouched());
}

TEST_F(PanelList, BufferTooShort_isTheConversionsError)
{
    channel.answer(resultReply(0).list({"abcdef"}).bytes());
    out.texts[0].reset(4);
    EXPECT_EQ(get(), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_TRUE(out.texts[0].guardsIntact());
}

}  // namespace
