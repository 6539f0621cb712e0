// The rows of the tables whose functions serve others inside the library and are not exported.

#include "channel/ovaScpLock.h"
#include "exchangeRow.h"
#include "frame/internal.h"
#include "Kxotrc.h"

// The start-of-call hook, from the library's other half.
extern "C" long DCFG_StopServer(void)
{
    return 0;
}

namespace {

// What the library does at its start, as far as an exchange needs it.
class LibraryStart : public testing::Environment
{
 public:
    void SetUp() override
    {
        TrcStart(&attributes_);
        createOvaScpLock();
    }
    void TearDown() override
    {
        closeOvaScpLock();
        TrcStop();
    }

 private:
    SECURITY_ATTRIBUTES attributes_ = {sizeof attributes_, nullptr, TRUE};
};

[[maybe_unused]] testing::Environment* const libraryStart = testing::AddGlobalTestEnvironment(new LibraryStart);

const ExchangeRow rows[] = {
    {.name = "DCFG_BoardGetResourceString",
     .traceName = "DCFG_BoardGetResourceString:",
     .call =
         [](Outputs& out) {
             return DCFG_BoardGetResourceString("Protocols", "PB", "42", "DE", out.texts[0], out.texts[0]);
         },
     .request = Message(134).str("Protocols").str("PB").str("42").str("DE").u32(300).u32(1).bytes(),
     .otherKind = 30,
     .outputs = {{OutField::plainText, "Ger\xE4t"}},
     .entry = {">>Folder Protocols Subfolder PB StringID 42 Language DE"},
     .details = {"value Ger\xE4t ", "lResult 0 ValueLen 5 "}},
    {.name = "DCFG_BoardGetEnumValue",
     .traceName = "DCFG_BoardGetEnumValue:",
     .call =
         [](Outputs& out) {
             return DCFG_BoardGetEnumValue("CP 4", 2, out.texts[0], out.texts[0], out.texts[1], out.texts[1]);
         },
     .request = Message(160).str("CP 4").u32(2).u32(300).u32(301).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "Unit"}, {OutField::plainText, "7"}},
     .entry = {">> iValue=2 "}},
    {.name = "DCFG_ProtocolGetEnumValue",
     .traceName = "DCFG_ProtocolGetEnumValue:",
     .call =
         [](Outputs& out) {
             return DCFG_ProtocolGetEnumValue("PB", "s2", "s3", "s4", "s5", 2, out.texts[0], out.texts[0],
                                              out.texts[1], out.texts[1]);
         },
     .request = Message(176).str("PB").str("s2").str("s3").str("s4").str("s5").u32(2).u32(300).u32(301).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "Unit"}, {OutField::plainText, "7"}},
     .entry = {">> lpszCP_Type=PB iValue=2 "}},
    {.name = "DCFG_DefaultLogDeviceGetEnumValue",
     .traceName = "DCFG_DefaultLogDeviceGetEnumValue:",
     .call =
         [](Outputs& out) {
             return DCFG_DefaultLogDeviceGetEnumValue("MPI", 2, out.texts[0], out.texts[0], out.texts[1],
                                                      out.texts[1]);
         },
     .request = Message(144).str("MPI").u32(2).u32(300).u32(301).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "Unit"}, {OutField::plainText, "7"}},
     .entry = {">> iValue=2 "}},
    {.name = "DCFG_LogDeviceSetProfileR",
     .traceName = "DCFG_LogDeviceSetProfileR:",
     .call = [](Outputs&) { return DCFG_LogDeviceSetProfileR("Line 1", "SOFTWARE\\x", "busparam"); },
     .request = Message(121).str("Line 1").str("SOFTWARE\\x").str("busparam").bytes(),
     .otherKind = 8621,
     .entry = {">> lpszLogDevice=Line 1 lpszProfilePath=SOFTWARE\\x lpszParameter=busparam "}},
    {.name = "LogDeviceGetValueRaw_secondName",
     .traceName = "DCFG_LogDeviceGetValue:",
     .call =
         [](Outputs& out) { return logDeviceGetValueRaw("Line 1", "second", "Unit", out.texts[0], out.texts[0]); },
     .request = Message(217).str("Line 1").str("second").u32(0).str("Unit").u32(300).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "7"}},
     .entry = {">> lpszLogDevice=Line 1 lpszParameter=Unit"}},
};

INSTANTIATE_TEST_SUITE_P(Internal, ExchangeTest, testing::ValuesIn(rows), rowName);

const RequestRow requests[] = {
    {"BoardGetResourceString_nullTexts",
     [](Outputs& out) {
         return DCFG_BoardGetResourceString(nullptr, nullptr, nullptr, nullptr, nullptr, out.texts[0]);
     },
     Message(134).nullStr().nullStr().nullStr().nullStr().u32(300).u32(1).bytes()},
    {"BoardGetEnumValue_nullOutputs",
     [](Outputs&) { return DCFG_BoardGetEnumValue("x", 1, nullptr, nullptr, nullptr, nullptr); },
     Message(160).str("x").u32(1).u32(0).u32(0).bytes()},
    {"ProtocolGetEnumValue_nullOutputs",
     [](Outputs&) {
         return DCFG_ProtocolGetEnumValue("x", nullptr, nullptr, nullptr, nullptr, 1, nullptr, nullptr, nullptr,
                                          nullptr);
     },
     Message(176).str("x").nullStr().nullStr().nullStr().nullStr().u32(1).u32(0).u32(0).bytes()},
    {"DefaultLogDeviceGetEnumValue_nullOutputs",
     [](Outputs&) { return DCFG_DefaultLogDeviceGetEnumValue("x", 1, nullptr, nullptr, nullptr, nullptr); },
     Message(144).str("x").u32(1).u32(0).u32(0).bytes()},
};

INSTANTIATE_TEST_SUITE_P(Internal, RequestTest, testing::ValuesIn(requests), requestName);

const RefusedRow refused[] = {
    {.name = "BoardGetEnumValue_null",
     .call =
         [](Outputs& out) {
             return DCFG_BoardGetEnumValue(nullptr, 2, out.texts[0], out.texts[0], out.texts[1], out.texts[1]);
         },
     .lines = {{"FA", "DCFG_BoardGetEnumValue:", ">> iValue=2 "}}},
    {.name = "ProtocolGetEnumValue_null",
     .call =
         [](Outputs& out) {
             return DCFG_ProtocolGetEnumValue(nullptr, "", "", "", "", 2, out.texts[0], out.texts[0], out.texts[1],
                                              out.texts[1]);
         },
     .lines = {{"FA", "DCFG_ProtocolGetEnumValue:", ">> lpszCP_Type=(null) iValue=2 "}}},
    {.name = "DefaultLogDeviceGetEnumValue_null",
     .call =
         [](Outputs& out) {
             return DCFG_DefaultLogDeviceGetEnumValue(nullptr, 2, out.texts[0], out.texts[0], out.texts[1],
                                                      out.texts[1]);
         },
     .lines = {{"FA", "DCFG_DefaultLogDeviceGetEnumValue:", ">> iValue=2 "}}},
    {.name = "LogDeviceSetProfileR_nullDevice",
     .call = [](Outputs&) { return DCFG_LogDeviceSetProfileR(nullptr, "p", "x"); },
     .lines = {{"FA", "DCFG_LogDeviceSetProfileR:", ">> lpszLogDevice=(null) lpszProfilePath=p lpszParameter=x "}}},
    {.name = "LogDeviceSetProfileR_nullPath",
     .call = [](Outputs&) { return DCFG_LogDeviceSetProfileR("d", nullptr, "x"); },
     .lines = {{"FA", "DCFG_LogDeviceSetProfileR:", ">> lpszLogDevice=d lpszProfilePath=(null) lpszParameter=x "}}},
    {.name = "LogDeviceSetProfileR_nullParameter",
     .call = [](Outputs&) { return DCFG_LogDeviceSetProfileR("d", "p", nullptr); },
     .lines = {{"FA", "DCFG_LogDeviceSetProfileR:", ">> lpszLogDevice=d lpszProfilePath=p lpszParameter=(null) "}}},
};

INSTANTIATE_TEST_SUITE_P(Internal, RefusedTest, testing::ValuesIn(refused), refusedName);

}  // namespace
