// The table of the logical-name requests.

#include "callsTest.h"

namespace {

constexpr char invalidParams[] = "<< return ERROR invalid params";

Bytes readEnableDelete()
{
    return Message(66).str("Name 1").str("enable_delete").u32(260).bytes();
}

const ExchangeRow rows[] = {
    {.name = "LogNameSetValue",
     .traceName = "LogNameSetValue:",
     .call = [](Outputs&) { return LogNameSetValue("Name 1", "LogDevice", "Line 1"); },
     .request = Message(65).str("Name 1").str("LogDevice").str("Line 1").bytes(),
     .otherKind = 30,
     .entry = {">>lpszLogName=Name 1  lpszParameter=LogDevice lpszValue=Line 1"},
     .result = "<< result= 0x0 ",
     .failureText = "<< result= 0x1f4c ",
     .shortForm = true},
    {.name = "LogNameGetValue",
     .traceName = "LogNameGetValue:",
     .call = [](Outputs& out) { return LogNameGetValue("Name 1", "LogDevice", out.texts[0], out.texts[0]); },
     .request = Message(66).str("Name 1").str("LogDevice").u32(260).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::userText, "Ger\xE4t"}},
     .entry = {">>lpszLogName=Name 1  lpszParameter=LogDevice"}},
    {.name = "LogNameGetLogDevice",
     .traceName = "LogNameGetValue:",
     .call = [](Outputs& out) { return LogNameGetLogDevice("Name 1", out.texts[0], out.texts[0]); },
     .request = Message(66).str("Name 1").str("LogDevice").u32(260).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::userText, "Line 1"}},
     .entry = {">>lpszLogName=Name 1  lpszParameter=LogDevice"}},
    {.name = "LogNameDelValue",
     .traceName = "LogNameDelValue:",
     .call = [](Outputs&) { return LogNameDelValue("Name 1", "LogDevice"); },
     .request = Message(67).str("Name 1").str("LogDevice").bytes(),
     .otherKind = 30,
     .entry = {">>lpszLogName Name 1 lpszParameter LogDevice"},
     .result = "<< result= 0x0 ",
     .failureText = "<< result= 0x1f4c ",
     .shortForm = true},
    {.name = "LogNameCreate",
     .traceName = "LogNameCreate:",
     .call = [](Outputs&) { return LogNameCreate("Name 1"); },
     .request = Message(68).str("Name 1").bytes(),
     .otherKind = 30,
     .entry = {">>lpszLogName=Name 1 "},
     .result = "<< result= 0x0",
     .failureText = "<< result= 0x1f4c",
     .shortForm = true,
     .after = {Message(65).str("Name 1").str("enable_delete").str("true").bytes()}},
    {.name = "LogNameDel",
     .traceName = "LogNameDel:",
     .call = [](Outputs&) { return LogNameDel("Name 1"); },
     .request = Message(69).str("Name 1").bytes(),
     .otherKind = 30,
     .entry = {">>lpszLogName=Name 1 "},
     .result = "<< result= 0x0",
     .failureText = "<< result= 0x1f4c",
     .shortForm = true,
     .before = {{readEnableDelete(), textReply("TRUE")}}},
    {.name = "LogNameGetEnum",
     .traceName = "LogNameGetEnum:",
     .call = [](Outputs& out) { return LogNameGetEnum(3, out.texts[0], out.texts[0]); },
     .request = Message(72).u32(3).u32(260).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::userText, "Name 4"}},
     .entry = {">>iValue=3 "}},
    {.name = "LogNameGetEnumValue",
     .traceName = "LogNameGetEnumValue:",
     .call =
         [](Outputs& out) {
             return LogNameGetEnumValue("Name 1", 2, out.texts[0], out.texts[0], out.texts[1], out.texts[1]);
         },
     .request = Message(73).str("Name 1").u32(2).u32(260).u32(260).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::userText, "LogDevice"}, {OutField::userText, "Line 1"}},
     .entry = {">>iValue=2 "}},
    {.name = "LogNameExists",
     .traceName = "LogNameExists:",
     .call = [](Outputs&) { return LogNameExists("Name 1"); },
     .request = Message(75).str("Name 1").u32(0).bytes(),
     .otherKind = 30,
     .entry = {">>lpszLogName=Name 1 "},
     .result = "<< result= 0x0",
     .failureText = "<< result= 0x1f4c",
     .shortForm = true},
};

INSTANTIATE_TEST_SUITE_P(LogName, ExchangeTest, testing::ValuesIn(rows), rowName);

const RequestRow requests[] = {
    {"SetValue_nulls", [](Outputs&) { return LogNameSetValue(nullptr, nullptr, nullptr); },
     Message(65).nullStr().nullStr().nullStr().bytes()},
    {"GetValue_nulls", [](Outputs&) { return LogNameGetValue(nullptr, nullptr, nullptr, nullptr); },
     Message(66).nullStr().nullStr().u32(260).bytes()},
    {"GetEnum_nulls", [](Outputs&) { return LogNameGetEnum(1, nullptr, nullptr); },
     Message(72).u32(1).u32(260).bytes()},
    {"GetEnumValue_nulls",
     [](Outputs&) { return LogNameGetEnumValue(nullptr, 1, nullptr, nullptr, nullptr, nullptr); },
     Message(73).nullStr().u32(1).u32(260).u32(260).bytes()},
    {"Exists_null", [](Outputs&) { return LogNameExists(nullptr); }, Message(75).nullStr().u32(0).bytes()},
    {"SetLogDevice_nullName", [](Outputs&) { return LogNameSetLogDevice(nullptr, ""); },
     Message(65).nullStr().str("LogDevice").str("").bytes()},
};

INSTANTIATE_TEST_SUITE_P(LogName, RequestTest, testing::ValuesIn(requests), requestName);

std::vector<TraceLine> invalid(const char* function, const char* entry)
{
    return {{"FA", function, entry}, {"FE", function, invalidParams}};
}

long valuesWithNull(Outputs& out, int which)
{
    const auto unless = [&](int i, auto* pointer) { return which == i ? nullptr : pointer; };
    return DCFG_LogNameGetEnumValue("x", nullptr, 0, unless(0, static_cast<char*>(out.texts[0])),
                                    unless(1, static_cast<unsigned long*>(out.texts[0])),
                                    unless(2, static_cast<char*>(out.texts[1])),
                                    unless(3, static_cast<unsigned long*>(out.texts[1])));
}

const TraceLine valuesEntry = {"FA", "DCFG_LogNameGetEnumValue:", ">>lpszLogName x iValue=0" + pidTid};

const RefusedRow refused[] = {
    {.name = "DelValue_nullName",
     .call = [](Outputs&) { return LogNameDelValue(nullptr, "p"); },
     .lines = invalid("LogNameDelValue:", ">>lpszLogName (null) lpszParameter p")},
    {.name = "DelValue_emptyName",
     .call = [](Outputs&) { return LogNameDelValue("", "p"); },
     .lines = invalid("LogNameDelValue:", ">>lpszLogName  lpszParameter p")},
    {.name = "DelValue_nullParameter",
     .call = [](Outputs&) { return LogNameDelValue("n", nullptr); },
     .lines = invalid("LogNameDelValue:", ">>lpszLogName n lpszParameter (null)")},
    {.name = "DelValue_emptyParameter",
     .call = [](Outputs&) { return LogNameDelValue("n", ""); },
     .lines = invalid("LogNameDelValue:", ">>lpszLogName n lpszParameter ")},
    {.name = "Create_null",
     .call = [](Outputs&) { return LogNameCreate(nullptr); },
     .lines = invalid("LogNameCreate:", ">>lpszLogName=(null) ")},
    {.name = "Del_null",
     .call = [](Outputs&) { return LogNameDel(nullptr); },
     .lines = invalid("LogNameDel:", ">>lpszLogName=(null) ")},
    {.name = "Del_empty",
     .call = [](Outputs&) { return LogNameDel(""); },
     .lines = invalid("LogNameDel:", ">>lpszLogName= ")},
    {.name = "GetLogDevice_null",
     .call = [](Outputs& out) { return LogNameGetLogDevice(nullptr, out.texts[0], out.texts[0]); },
     .lines = invalid("LogNameGetLogDevice:", ">>lpszLogName=(null) ")},
    {.name = "GetLogDevice_empty",
     .call = [](Outputs& out) { return LogNameGetLogDevice("", out.texts[0], out.texts[0]); },
     .lines = invalid("LogNameGetLogDevice:", ">>lpszLogName= ")},
    {.name = "SetLogDevice_nullDevice",
     .call = [](Outputs&) { return LogNameSetLogDevice("n", nullptr); },
     .lines = invalid("LogNameSetLogDevice:", ">>lpszLogName=n  lpszLogDevice=(null)")},
    {.name = "Values_nullName", .call = [](Outputs& out) { return valuesWithNull(out, 0); }, .lines = {valuesEntry}},
    {.name = "Values_nullNameLength",
     .call = [](Outputs& out) { return valuesWithNull(out, 1); },
     .lines = {valuesEntry}},
    {.name = "Values_nullValue", .call = [](Outputs& out) { return valuesWithNull(out, 2); }, .lines = {valuesEntry}},
    {.name = "Values_nullValueLength",
     .call = [](Outputs& out) { return valuesWithNull(out, 3); },
     .lines = {valuesEntry}},
    {.name = "Lock",
     .call = [](Outputs&) { return LogNameLock("n"); },
     .result = 120,
     .lines = {{"FA", "LogNameLock:", ">>lpszLogName=n "}, {"FE", "LogNameLock:", "ERROR_CALL_NOT_IMPLEMENTED"}}},
    {.name = "Unlock",
     .call = [](Outputs&) { return LogNameUnlock("n", 0xAB); },
     .result = 120,
     .lines = {{"FA", "LogNameUnlock:", ">>lpszLogName=n nIgnore=0xab"},
               {"FE", "LogNameUnlock:", "ERROR_CALL_NOT_IMPLEMENTED"}}},
};

INSTANTIATE_TEST_SUITE_P(LogName, RefusedTest, testing::ValuesIn(refused), refusedName);

}  // namespace
