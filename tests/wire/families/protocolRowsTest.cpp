// The table of the requests of protocols, profiles and raw values.

#include "callsTest.h"

namespace {

const ExchangeRow rows[] = {
    {.name = "DCFG_ProtocolGetValueRaw",
     .traceName = "DCFG_ProtocolGetValueRaw:",
     .call = [](Outputs& out) { return DCFG_ProtocolGetValueRaw("PB", "Params", "x", out.texts[0], out.texts[0]); },
     .request = Message(97).str("PB").str("Params").str("x").u32(260).bytes(),
     .otherKind = 30,
     .outputs = {{OutField::userText, "Ger\xE4t"}},
     .entry = {">> lpszProtocol PBPath Params Param x"},
     .shortForm = true},
    {.name = "DCFG_DefDeviceGetValueRaw",
     .traceName = "DCFG_DefDeviceGetValueRaw:",
     .call = [](Outputs& out) { return DCFG_DefDeviceGetValueRaw("MPI", "Params", "x", out.texts[0], out.texts[0]); },
     .request = Message(98).str("MPI").str("Params").str("x").u32(260).bytes(),
     .otherKind = 30,
     .outputs = {{OutField::userText, "Ger\xE4t"}},
     .entry = {">> lpszDefDevice MPIPath Params Param x"},
     .shortForm = true},
    {.name = "DCFG_TemplateGetEnumValueRaw",
     .traceName = "DCFG_TemplateGetEnumValueRaw:",
     .call =
         [](Outputs& out) {
             return DCFG_TemplateGetEnumValueRaw("Boards", "CP 4", "x", 2, out.texts[0], out.texts[0]);
         },
     .request = Message(99).str("Boards").str("CP 4").str("x").u32(2).u32(260).bytes(),
     .otherKind = 30,
     .outputs = {{OutField::userText, "Ger\xE4t"}},
     .entry = {">> lpszFolder Boards file CP 4 Param x i 2"},
     .shortForm = true},
    {.name = "DCFG_TemplateKeyExists",
     .traceName = "DCFG_TemplateKeyExists:",
     .call = [](Outputs&) { return DCFG_TemplateKeyExists("Boards", "CP 4", "Params", "x"); },
     .request = Message(135).str("Boards").str("CP 4").str("Params").str("x").bytes(),
     .otherKind = 30,
     .entry = {">> lpszFolderName file Boards CP 4Path Params Param x"},
     .shortForm = true},
    {.name = "DCFG_LogDeviceGetValue",
     .traceName = "DCFG_LogDeviceGetValue:",
     .call = [](Outputs& out) { return DCFG_LogDeviceGetValue("Line 1", "busparam", out.texts[0], out.texts[0]); },
     .request = rawRead("Line 1", "busparam", 300),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "3"}},
     .entry = {">> lpszLogDevice=Line 1 lpszParameter=busparam"}},
    {.name = "DCFG_ProtocolGetEnumBaudrate",
     .traceName = "DCFG_ProtocolGetEnumBaudrate:",
     .call = [](Outputs& out) { return DCFG_ProtocolGetEnumBaudrate("PB", "DP", 2, out.texts[0], out.texts[0]); },
     .request = Message(179).str("PB").str("DP").u32(2).u32(260).bytes(),
     .otherKind = 30,
     .outputs = {{OutField::userText, "187500"}},
     .entry = {">> ProtocolFile PB Profile DP index=2 "},
     .shortForm = true},
    {.name = "DCFG_ProtocolGetEnumBusprofiles",
     .traceName = "DCFG_ProtocolGetEnumBusprofiles:",
     .call = [](Outputs& out) { return DCFG_ProtocolGetEnumBusprofiles("PB", 2, out.texts[0], out.texts[0]); },
     .request = Message(178).str("PB").u32(2).u32(260).bytes(),
     .otherKind = 30,
     .outputs = {{OutField::userText, "DP"}},
     .entry = {">> ProtocolFile PB index=2 "},
     .shortForm = true},
    {.name = "DCFG_CanSaveParameters",
     .traceName = "DCFG_CanSaveParameters:",
     .call = [](Outputs&) { return DCFG_CanSaveParameters(); },
     .request = Message(81).bytes(),
     .otherKind = 30,
     .entry = {">> start"},
     .sendAndReceive = true},
    {.name = "DCFG_SpecialGetValue",
     .traceName = "DCFG_SpecialGetValue:",
     .call = [](Outputs& out) { return DCFG_SpecialGetValue("DCFG_CurrentLogName", out.texts[0], out.texts[0]); },
     .request = Message(139).str("DCFG_CurrentLogName").u32(300).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "Name 1"}},
     .entry = {">> lpszParameter=DCFG_CurrentLogName"}},
    {.name = "DCFG_TemplateGetEnumNoPrefix",
     .traceName = "DCFG_TemplateGetEnumNoPrefix:",
     .call = [](Outputs& out) { return DCFG_TemplateGetEnumNoPrefix("Boards", 2, out.texts[0], out.texts[0]); },
     .request = Message(129).str("Boards").u32(2).u32(300).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "CP 4"}},
     .entry = {">> lpszFolder=Boards index=2"}},
    {.name = "DCFG_TemplateExistsEx",
     .traceName = "DCFG_TemplateExistsEx:",
     .call = [](Outputs&) { return DCFG_TemplateExistsEx("Boards", "CP 4", "Params", "s4"); },
     .request = Message(37).str("Boards").str("CP 4").str("Params").str("s4").bytes(),
     .otherKind = 30,
     .entry = {">> lpszFolder=Boards lpszTemplate=CP 4 lpszParameterPath Params"},
     .shortForm = true},
    {.name = "DCFG_TemplateExists",
     .traceName = "DCFG_TemplateExists:",
     .call = [](Outputs&) { return DCFG_TemplateExists("Boards", "CP 4", 0x11223344); },
     .request = Message(133).str("Boards").str("CP 4").u32(0x11223344).bytes(),
     .otherKind = 30,
     .entry = {">> lpszFolder=Boards lpszTemplate=CP 4"},
     .sendAndReceive = true},
};

INSTANTIATE_TEST_SUITE_P(Protocol, ExchangeTest, testing::ValuesIn(rows), rowName);

const RequestRow requests[] = {
    {"ProtocolGetValueRaw_largerBufferAndNulls",
     [](Outputs& out) {
         out.texts[0].reset(1000);
         return DCFG_ProtocolGetValueRaw(nullptr, nullptr, nullptr, out.texts[0], out.texts[0]);
     },
     Message(97).nullStr().nullStr().nullStr().u32(260).bytes()},
    {"DefDeviceGetValueRaw_nulls",
     [](Outputs&) { return DCFG_DefDeviceGetValueRaw(nullptr, nullptr, nullptr, nullptr, nullptr); },
     Message(98).nullStr().nullStr().nullStr().u32(260).bytes()},
    {"TemplateGetEnumValueRaw_nulls",
     [](Outputs&) { return DCFG_TemplateGetEnumValueRaw(nullptr, nullptr, nullptr, 1, nullptr, nullptr); },
     Message(99).nullStr().nullStr().nullStr().u32(1).u32(260).bytes()},
    {"LogDeviceGetValue_nulls", [](Outputs&) { return DCFG_LogDeviceGetValue(nullptr, nullptr, nullptr, nullptr); },
     Message(217).nullStr().nullStr().u32(0).nullStr().u32(0).bytes()},
    {"SpecialGetValue_nullLength", [](Outputs& out) { return DCFG_SpecialGetValue("p", out.texts[0], nullptr); },
     Message(139).str("p").u32(0).bytes()},
    {"TemplateGetEnumNoPrefix_nullLength",
     [](Outputs& out) { return DCFG_TemplateGetEnumNoPrefix("f", 1, out.texts[0], nullptr); },
     Message(129).str("f").u32(1).u32(0).bytes()},
};

INSTANTIATE_TEST_SUITE_P(Protocol, RequestTest, testing::ValuesIn(requests), requestName);

const RefusedRow refused[] = {
    {.name = "ProtocolGetEnumBaudrate_nullProtocol",
     .call = [](Outputs& out) { return DCFG_ProtocolGetEnumBaudrate(nullptr, "DP", 2, out.texts[0], out.texts[0]); },
     .lines = {{"FA", "DCFG_ProtocolGetEnumBaudrate:", ">> ProtocolFile (null) Profile DP index=2 "}}},
    {.name = "ProtocolGetEnumBaudrate_nullProfile",
     .call = [](Outputs& out) { return DCFG_ProtocolGetEnumBaudrate("PB", nullptr, 2, out.texts[0], out.texts[0]); },
     .lines = {{"FA", "DCFG_ProtocolGetEnumBaudrate:", ">> ProtocolFile PB Profile (null) index=2 "}}},
    {.name = "ProtocolGetEnumBusprofiles_null",
     .call = [](Outputs& out) { return DCFG_ProtocolGetEnumBusprofiles(nullptr, 2, out.texts[0], out.texts[0]); },
     .lines = {{"FA", "DCFG_ProtocolGetEnumBusprofiles:", ">> ProtocolFile (null) index=2 "}}},
    {.name = "SpecialGetValue_null",
     .call = [](Outputs& out) { return DCFG_SpecialGetValue(nullptr, out.texts[0], out.texts[0]); },
     .lines = {{"FA", "DCFG_SpecialGetValue:", ">> lpszParameter=(null)"}}},
};

INSTANTIATE_TEST_SUITE_P(Protocol, RefusedTest, testing::ValuesIn(refused), refusedName);

// What SendAndReceive says about an exchange, at levels of its own.

class SendAndReceiveTrace : public CallsTest
{
 protected:
    std::vector<TraceLine> linesFor(const Bytes& reply)
    {
        const TraceCapture capture("0x6");
        channel.answer(reply);
        DCFG_CanSaveParameters();
        return capture.of("SendAndReceive:");
    }
    static std::vector<TraceLine> started(const char* level, const char* end)
    {
        return {{"PE", "SendAndReceive:", ">> Start SendData-" + pidTid.substr(2)}, {level, "SendAndReceive:", end}};
    }
};

TEST_F(SendAndReceiveTrace, Result)
{
    EXPECT_EQ(linesFor(failure(8012)), started("PE", "<< return - 0x1f4c "));
}

TEST_F(SendAndReceiveTrace, FailedExchange)
{
    EXPECT_EQ(linesFor({}), started("PE", "<< return - Error  0x1e "));
}

TEST_F(SendAndReceiveTrace, CutInKindOrResult)
{
    EXPECT_EQ(linesFor({4}), started("PE", "<< return - Error 0x6f "));
    EXPECT_EQ(linesFor({4, 0, 0}), started("PE", "<< return - Error 0x6f "));
}

TEST_F(SendAndReceiveTrace, AnotherKind)
{
    EXPECT_EQ(linesFor(otherKind()), started("PX", "<< result ERROR_READ_FAULT (0x5)"));
}

TEST_F(CallsTest, SendAndReceive_requestThatDoesNotFitIs111)
{
    const std::string longText(2100, 'x');
    EXPECT_EQ(DCFG_TemplateExists(longText.c_str(), "x", 0), 111);
    EXPECT_TRUE(channel.requests().empty());
}

TEST_F(CallsTest, ShortForm_requestThatDoesNotFitIs111AndTracedAsEverywhere)
{
    const TraceCapture capture("0x80");
    const std::string longText(2100, 'x');
    EXPECT_EQ(LogNameCreate(longText.c_str()), 111);
    EXPECT_TRUE(channel.requests().empty());
    EXPECT_EQ(capture.of("LogNameCreate:"), (std::vector<TraceLine>{{"FE", "LogNameCreate:", "<< result= 0x6f "}}));
}

}  // namespace
