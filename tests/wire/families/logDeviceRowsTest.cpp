// The table of the logical-device requests that the example rows leave out.

#include "callsTest.h"

namespace {

const std::string processAndThread =
    "ProcId=0x" + hexText(GetCurrentProcessId()) + " ThreadId=0x" + hexText(GetCurrentThreadId());

const ExchangeRow rows[] = {
    {.name = "LogDeviceCreateTemp",
     .traceName = "LogDeviceCreateTemp:",
     .call = [](Outputs& out) { return LogDeviceCreateTemp("Line 1", out.texts[0], out.texts[0]); },
     .request = Message(45).str("Line 1").u32(300).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "Line 1~1"}},
     .entry = {">> lpszLogDevice=Line 1"}},
    {.name = "LogDeviceDelTemp",
     .traceName = "LogDeviceDelTemp:",
     .call = [](Outputs&) { return LogDeviceDelTemp("Line 1~1"); },
     .request = Message(47).str("Line 1~1").bytes(),
     .otherKind = 0,
     .entry = {">> lpszLogDevice=Line 1~1"},
     .result = "<< return - Error ret=0 ",
     .otherKindText = "<< return - Error ret=0 ",
     .failureText = "<< return - Error ret=1f4c ",
     .details = {"LogDeviceDelTemp=ret=0 lpszLogDevice=Line 1~1 "}},
    {.name = "LogDeviceUpdateWithTemp",
     .traceName = "LogDeviceUpdateWithTemp:",
     .call = [](Outputs&) { return LogDeviceUpdateWithTemp("Line 1~1", "Line 1"); },
     .request = Message(40).str("Line 1~1").str("Line 1").bytes(),
     .otherKind = 1000,
     .entry = {"lpszTempLogDevice=Line 1~1 lpszLogDevice Line 1 "},
     .result = "<< return - Error ret=0 ",
     .otherKindText = "<< return - Error ret=3e8 ",
     .failureText = "<< return - Error ret=1f4c ",
     .details = {"LogDeviceUpdateWithTemp=ret=0 lpszLogDevice=Line 1 "}},
    {.name = "LogDeviceCopy",
     .traceName = "LogDeviceCopy:",
     .call = [](Outputs&) { return LogDeviceCopy("Line 1", "Line 2"); },
     .request = Message(49).str("Line 1").str("Line 2").bytes(),
     .otherKind = 0,
     .entry = {">> copyfrom=Line 1 to= Line 2"},
     .otherKindText = "<< return 0x0",
     .shortResult = 0},
    {.name = "LogDeviceDelValue",
     .traceName = "LogDeviceDelValue:",
     .call = [](Outputs&) { return LogDeviceDelValue("Line 1", "Unit"); },
     .request = Message(35).str("Line 1").str("Unit").bytes(),
     .otherKind = 30,
     .entry = {"lpszLogDevice=Line 1 lpszParameter Unit "}},
    {.name = "LogDeviceSetBusparams",
     .traceName = "LogDeviceSetBusparams:",
     .call = [](Outputs&) { return LogDeviceSetBusparams("Line 1", "DP"); },
     .request = Message(51).str("Line 1").str("DP").bytes(),
     .otherKind = 30,
     .entry = {">> LogDev=Line 1 val=DP"}},
    {.name = "LogDeviceGetNdiValue",
     .traceName = "LogDeviceGetNdiValue:",
     .call = [](Outputs& out) { return LogDeviceGetNdiValue("Line 1", "hidden", out.texts[0], out.texts[0]); },
     .request = Message(114).str("Line 1").str("hidden").u32(260).u32(1).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::userText, "f\xE4lsch"}},
     .entry = {"lpszLogDevice=Line 1 lpszParameter=hidden "}},
    {.name = "LogDeviceSetNdiValue",
     .traceName = "LogDeviceSetNdiValue:",
     .call = [](Outputs&) { return LogDeviceSetNdiValue("Line 1", "hidden", "true"); },
     .request = Message(115).str("Line 1").str("hidden").str("true").u32(1).bytes(),
     .otherKind = 8621,
     .entry = {"lpszLogDevice=Line 1 lpszParameter=hidden value true", processAndThread}},
    {.name = "LogDeviceDelNdiValue",
     .traceName = "LogDeviceDelNdiValue:",
     .call = [](Outputs&) { return LogDeviceDelNdiValue("Line 1", "hidden"); },
     .request = Message(116).str("Line 1").str("hidden").u32(1).bytes(),
     .otherKind = 8621,
     .entry = {"lpszLogDevice=Line 1 lpszParameter=hidden "}},
    {.name = "LogDeviceGetEnumNdiValue",
     .traceName = "LogDeviceGetEnumNdiValue64x:",
     .call =
         [](Outputs& out) {
             return LogDeviceGetEnumNdiValue("Line 1", 2, out.texts[0], out.texts[0], out.texts[1], out.texts[1]);
         },
     .request = Message(118).str("Line 1").u32(2).u32(260).u32(260).u32(1).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::userText, "hidden"}, {OutField::userText, "true"}},
     .entry = {">>lpszLogDevice=Line 1 iValue=2 "}},
    {.name = "LogDeviceGetValueLang",
     .traceName = "LogDeviceGetValueLang:",
     .call = [](Outputs& out) { return LogDeviceGetValueLang("Line 1", "Unit", "DE", out.texts[0], out.texts[0]); },
     .request = Message(122).str("Line 1").str("Unit").str("DE").u32(1).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "Ger\xE4t 7"}},
     .entry = {"lpszLogDevice=Line 1 lpszParameter=Unit "},
     .resultLines = {"<< return lpszLogDevice=Line 1 lpszParameter=Unit lpszValue=Ger\xE4t 7", "<< return 0x0"}},
};

INSTANTIATE_TEST_SUITE_P(LogDevice, ExchangeTest, testing::ValuesIn(rows), rowName);

const RequestRow requests[] = {
    {"CreateTemp_nullLength", [](Outputs& out) { return LogDeviceCreateTemp("x", out.texts[0], nullptr); },
     Message(45).str("x").u32(0).bytes()},
    {"Copy_nullTarget", [](Outputs&) { return LogDeviceCopy("x", nullptr); }, Message(49).str("x").nullStr().bytes()},
    {"DelValue_nullParameter", [](Outputs&) { return LogDeviceDelValue("x", nullptr); },
     Message(35).str("x").nullStr().bytes()},
    {"DelValue_emptyTexts", [](Outputs&) { return LogDeviceDelValue("", ""); }, Message(35).str("").str("").bytes()},
    {"SetBusparams_nulls", [](Outputs&) { return LogDeviceSetBusparams(nullptr, nullptr); },
     Message(51).nullStr().nullStr().bytes()},
    {"GetNdiValue_nulls", [](Outputs&) { return LogDeviceGetNdiValue(nullptr, nullptr, nullptr, nullptr); },
     Message(114).nullStr().nullStr().u32(260).u32(1).bytes()},
    {"SetNdiValue_nulls", [](Outputs&) { return LogDeviceSetNdiValue(nullptr, nullptr, nullptr); },
     Message(115).nullStr().nullStr().nullStr().u32(1).bytes()},
    {"DelNdiValue_nulls", [](Outputs&) { return LogDeviceDelNdiValue(nullptr, nullptr); },
     Message(116).nullStr().nullStr().u32(1).bytes()},
    {"GetEnumNdiValue_nullNameLength",
     [](Outputs& out) { return LogDeviceGetEnumNdiValue("x", 0, out.texts[0], nullptr, out.texts[1], out.texts[1]); },
     Message(118).str("x").u32(0).u32(260).u32(260).u32(1).bytes()},
    {"GetEnumValue_nulls",
     [](Outputs&) { return LogDeviceGetEnumValue(nullptr, 1, nullptr, nullptr, nullptr, nullptr); },
     Message(37).nullStr().u32(1).u32(260).u32(260).bytes()},
    {"GetValueLang_nulls",
     [](Outputs&) { return LogDeviceGetValueLang(nullptr, nullptr, nullptr, nullptr, nullptr); },
     Message(122).nullStr().nullStr().nullStr().u32(1).bytes()},
};

INSTANTIATE_TEST_SUITE_P(LogDevice, RequestTest, testing::ValuesIn(requests), requestName);

TraceLine ndiEntry(const char* device)
{
    return {"FA", "LogDeviceGetEnumNdiValue64x:", std::string(">>lpszLogDevice=") + device + " iValue=2 "};
}

const RefusedRow refused[] = {
    {.name = "CreateTemp_nullName",
     .call = [](Outputs& out) { return LogDeviceCreateTemp(nullptr, out.texts[0], out.texts[0]); },
     .lines = {{"FA", "LogDeviceCreateTemp:", ">> lpszLogDevice=(null)"}}},
    {.name = "CreateTemp_nullBuffer",
     .call = [](Outputs& out) { return LogDeviceCreateTemp("x", nullptr, out.texts[0]); },
     .lines = {{"FA", "LogDeviceCreateTemp:", ">> lpszLogDevice=x"}}},
    {.name = "DelTemp_null",
     .call = [](Outputs&) { return LogDeviceDelTemp(nullptr); },
     .lines = {{"FA", "LogDeviceDelTemp:", ">> lpszLogDevice=(null)"}}},
    {.name = "UpdateWithTemp_nullTemp",
     .call = [](Outputs&) { return LogDeviceUpdateWithTemp(nullptr, "x"); },
     .lines = {{"FA", "LogDeviceUpdateWithTemp:", "lpszTempLogDevice=(null) lpszLogDevice x "}}},
    {.name = "UpdateWithTemp_nullName",
     .call = [](Outputs&) { return LogDeviceUpdateWithTemp("x", nullptr); },
     .lines = {{"FA", "LogDeviceUpdateWithTemp:", "lpszTempLogDevice=x lpszLogDevice (null) "}}},
    {.name = "Copy_nullSource",
     .call = [](Outputs&) { return LogDeviceCopy(nullptr, "x"); },
     .lines = {{"FA", "LogDeviceCopy:", ">> copyfrom=(null) to= x"}}},
    {.name = "DelValue_nullName",
     .call = [](Outputs&) { return LogDeviceDelValue(nullptr, "x"); },
     .lines = {{"FA", "LogDeviceDelValue:", "lpszLogDevice=(null) lpszParameter x "}}},
    {.name = "GetEnumNdiValue_nullName",
     .call =
         [](Outputs& out) {
             return LogDeviceGetEnumNdiValue(nullptr, 2, out.texts[0], out.texts[0], out.texts[1], out.texts[1]);
         },
     .lines = {ndiEntry("(null)")}},
    {.name = "GetEnumNdiValue_nullNameBuffer",
     .call =
         [](Outputs& out) {
             return LogDeviceGetEnumNdiValue("x", 2, nullptr, out.texts[0], out.texts[1], out.texts[1]);
         },
     .lines = {ndiEntry("x")}},
    {.name = "GetEnumNdiValue_nullValueBuffer",
     .call =
         [](Outputs& out) {
             return LogDeviceGetEnumNdiValue("x", 2, out.texts[0], out.texts[0], nullptr, out.texts[1]);
         },
     .lines = {ndiEntry("x")}},
    {.name = "GetEnumNdiValue_nullValueLength",
     .call =
         [](Outputs& out) {
             return LogDeviceGetEnumNdiValue("x", 2, out.texts[0], out.texts[0], out.texts[1], nullptr);
         },
     .lines = {ndiEntry("x")}},
    {.name = "Lock",
     .call = [](Outputs&) { return LogDeviceLock("x"); },
     .result = 120,
     .lines = {{"FA", "LogDeviceLock:", ">>lpszLogDevice=x"},
               {"FE", "LogDeviceLock:", "<< ERROR_CALL_NOT_IMPLEMENTED"}}},
    {.name = "Unlock",
     .call = [](Outputs&) { return LogDeviceUnlock("x", 0xAB); },
     .result = 120,
     .lines = {{"FA", "LogDeviceUnlock:", ">>lpszLogDevice=x nIgnore=0xab"},
               {"FE", "LogDeviceUnlock:", "<< ERROR_CALL_NOT_IMPLEMENTED"}}},
};

INSTANTIATE_TEST_SUITE_P(LogDevice, RefusedTest, testing::ValuesIn(refused), refusedName);

}  // namespace
