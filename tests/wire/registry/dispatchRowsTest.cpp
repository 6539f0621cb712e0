// The rows of the dispatch table whose answer is one request over the channel: the request of the object function,
// and its treatment of replies.

#include "exchangeRow.h"
#include "keys.h"
#include "kxovaapi.h"

namespace {

const std::string pidTid =
    " - Pid " + std::to_string(GetCurrentProcessId()) + " Tid " + std::to_string(GetCurrentThreadId());

auto enumKey(const std::string& key, unsigned long index)
{
    return [=](Outputs& out) { return DCFG_RegGetEnumKey(key.c_str(), index, out.texts[0], out.texts[0]); };
}

auto enumValue(const std::string& key, unsigned long index)
{
    return [=](Outputs& out) {
        return DCFG_RegGetEnumValue(key.c_str(), index, out.texts[0], out.texts[0], out.texts[1], out.texts[1]);
    };
}

// One row of the enumeration of a template class.
ExchangeRow templates(const std::string& name, const std::string& key, const Message& request)
{
    return {.name = "DCFG_RegGetEnumKey_" + name,
            .traceName = "DCFG_TemplateGetEnumNoPrefix:",
            .call = enumKey(key, 3),
            .request = request.bytes(),
            .otherKind = 8621,
            .outputs = {{OutField::plainText, "MPI"}},
            .entry = {">> lpszFolder=" + (name == "noClass" ? std::string("(null)") : name) + " index=3"}};
}

const ExchangeRow rows[] = {
    {.name = "DCFG_RegGetEnumKey_logDevices",
     .traceName = "LogDeviceGetEnum:",
     .call = enumKey(keys::logDevices, 3),
     .request = Message(36).nullStr().u32(3).u32(260).bytes(),
     .otherKind = 30,
     .outputs = {{OutField::userText, "Line 4"}},
     .entry = {">>lpszNetTypeName=NULL iValue=3" + pidTid}},
    {.name = "DCFG_RegGetEnumKey_logDevicesFurtherDownInLowerCase",
     .traceName = "LogDeviceGetEnum:",
     .call = enumKey(R"(software\tavrone\norix\logdevices\Line 1)", 0),
     .request = Message(36).nullStr().u32(0).u32(260).bytes(),
     .otherKind = 30,
     .outputs = {{OutField::userText, "Line 1"}},
     .entry = {">>lpszNetTypeName=NULL iValue=0" + pidTid}},
    {.name = "DCFG_RegGetEnumKey_logNamesInLowerCase",
     .traceName = "LogNameGetEnum:",
     .call = enumKey(R"(software\tavrone\norix\lognames)", 3),
     .request = Message(72).u32(3).u32(260).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::userText, "NXONLINE"}},
     .entry = {">>iValue=3 "}},
    templates("Boards", keys::definitions + R"(\DeviceID)", Message(129).str("Boards").u32(3).u32(300)),
    templates("Protocols", keys::definitions + R"(\cp_type\x)", Message(129).str("Protocols").u32(3).u32(300)),
    templates("DefaultLogDevices", keys::definitions + R"(\DefaultLogDevices)",
              Message(129).str("DefaultLogDevices").u32(3).u32(300)),
    templates("noClass", keys::definitions + R"(\Other)", Message(129).nullStr().u32(3).u32(300)),

    {.name = "DCFG_RegGetEnumValue_logDevice",
     .traceName = "LogDeviceGetEnumValue:",
     .call = enumValue(keys::logDevices + R"(\Line 1)", 2),
     .request = Message(37).str("Line 1").u32(2).u32(260).u32(260).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::userText, "baudrate"}, {OutField::userText, "187500"}},
     .entry = {">>lpszLogDevice=Line 1 iValue=2" + pidTid}},
    {.name = "DCFG_RegGetEnumValue_logName",
     .traceName = "LogNameGetEnumValue:",
     .call = enumValue(keys::logNames + R"(\NXONLINE)", 2),
     .request = Message(73).str("NXONLINE").u32(2).u32(260).u32(260).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::userText, "LogDevice"}, {OutField::userText, "Line 1"}},
     .entry = {">>iValue=2 "}},
    {.name = "DCFG_RegGetEnumValue_board",
     .traceName = "DCFG_BoardGetEnumValue:",
     .call = enumValue(keys::definitions + R"(\DeviceID\*TVRA010)", 2),
     .request = Message(160).str("*TVRA010").u32(2).u32(300).u32(301).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "Alias"}, {OutField::plainText, "NX 1"}},
     .entry = {">> iValue=2 "}},
    {.name = "DCFG_RegGetEnumValue_protocol",
     .traceName = "DCFG_ProtocolGetEnumValue:",
     .call = enumValue(keys::definitions + R"(\CP_TYPE\MPI\Params\busparam)", 2),
     .request =
         Message(176).str("MPI").str("Params").str("busparam").str("").str("").u32(2).u32(300).u32(301).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "ttr"}, {OutField::plainText, "10000"}},
     .entry = {">> lpszCP_Type=MPI iValue=2 "}},
    {.name = "DCFG_RegGetEnumValue_protocolPathOfSevenParts",
     .traceName = "DCFG_ProtocolGetEnumValue:",
     .call = enumValue(keys::definitions + R"(\CP_TYPE\\a\b\c\\d\e\f\g)", 0),
     .request = Message(176).str("a").str("b").str("c").str("d").str("e").u32(0).u32(300).u32(301).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "ttr"}, {OutField::plainText, "10000"}},
     .entry = {">> lpszCP_Type=a iValue=0 "}},
    {.name = "DCFG_RegGetEnumValue_defaultLogDevice",
     .traceName = "DCFG_DefaultLogDeviceGetEnumValue:",
     .call = enumValue(keys::definitions + R"(\DefaultLogDevices\Default MPI)", 2),
     .request = Message(144).str("Default MPI").u32(2).u32(300).u32(301).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "Unit"}, {OutField::plainText, "1"}},
     .entry = {">> iValue=2 "}},

    {.name = "DCFG_RegKeyExists_logDevice",
     .traceName = "LogDeviceExist:",
     .call = [](Outputs&) { return DCFG_RegKeyExists((keys::logDevices + R"(\Line 1)").c_str(), 1); },
     .request = Message(42).str("Line 1").u32(0).bytes(),
     .otherKind = 8621,
     .entry = {">>lpszLogDevice=Line 1"}},
    {.name = "DCFG_RegKeyExists_logDeviceWithoutAName",
     .traceName = "LogDeviceExist:",
     .call = [](Outputs&) { return DCFG_RegKeyExists((keys::logDevices + R"(\)").c_str(), 1); },
     .request = Message(42).str("").u32(0).bytes(),
     .otherKind = 8621,
     .entry = {">>lpszLogDevice="}},
    {.name = "DCFG_RegKeyExists_theKeyOfTheLogDevicesItself",
     .traceName = "LogDeviceExist:",
     .call = [](Outputs&) { return DCFG_RegKeyExists(keys::logDevices.c_str(), 1); },
     .request = Message(42).str("LogDevices").u32(0).bytes(),
     .otherKind = 8621,
     .entry = {">>lpszLogDevice=LogDevices"}},
    {.name = "DCFG_RegKeyExists_logName",
     .traceName = "LogNameExists:",
     .call = [](Outputs&) { return DCFG_RegKeyExists((keys::logNames + R"(\NXONLINE)").c_str(), 1); },
     .request = Message(75).str("NXONLINE").u32(0).bytes(),
     .otherKind = 30,
     .entry = {">>lpszLogName=NXONLINE "},
     .result = "<< result= 0x0",
     .failureText = "<< result= 0x1f4c",
     .shortForm = true},

    {.name = "DCFG_RegGetValue_logDevice",
     .traceName = "DCFG_GetBoardAttribute:",
     .call =
         [](Outputs& out) {
             return DCFG_RegGetValue(R"(software\tavrone\norix\logdevices\Line 1)", "Alias", out.texts[0],
                                     out.texts[0]);
         },
     .request = Message(161).str("Line 1").str("Alias").u32(260).u32(1).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::strictText, "NX 1"}},
     .entry = {">> lpszDeviceId=Line 1 lpszParameter=Alias"}},
    {.name = "DCFG_RegGetValue_logName",
     .traceName = "LogNameGetValue:",
     .call =
         [](Outputs& out) {
             return DCFG_RegGetValue((keys::logNames + R"(\NXONLINE)").c_str(), "LogDevice", out.texts[0],
                                     out.texts[0]);
         },
     .request = Message(66).str("NXONLINE").str("LogDevice").u32(260).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::strictText, "Line 1"}},
     .entry = {">>lpszLogName=NXONLINE  lpszParameter=LogDevice"}},
};

INSTANTIATE_TEST_SUITE_P(Dispatch, ExchangeTest, testing::ValuesIn(rows), rowName);

const RefusedRow refused[] = {
    {.name = "DCFG_RegGetEnumKey_null",
     .call = [](Outputs& out) { return DCFG_RegGetEnumKey(nullptr, 1, out.texts[0], out.texts[0]); },
     .lines = {{"FA", "DCFG_RegGetEnumKey:", ">>lpszKey=(null) iValue=1"}}},
    {.name = "DCFG_RegGetEnumValue_null",
     .call =
         [](Outputs& out) {
             return DCFG_RegGetEnumValue(nullptr, 1, out.texts[0], out.texts[0], out.texts[1], out.texts[1]);
         },
     .lines = {{"FA", "DCFG_RegGetEnumValue:", ">>lpszKey=(null) iValue=1"}}},
    {.name = "DCFG_RegGetEnumValue_noClass",
     .call = enumValue(R"(SOFTWARE\TAVRONE\NORIX\DefDevices\Other)", 1),
     .lines = {{"FA", "DCFG_RegGetEnumValue:", R"(>>lpszKey=SOFTWARE\TAVRONE\NORIX\DefDevices\Other iValue=1)"},
               {"FE", "DCFG_RegGetEnumValue:", "<< return 0x57"}}},
    {.name = "DCFG_RegKeyExists_null",
     .call = [](Outputs&) { return DCFG_RegKeyExists(nullptr, 0); },
     .lines = {{"FA", "DCFG_RegKeyExists:", ">>lpszKey=(null)"}}},
    {.name = "DCFG_RegKeyExists_otherPath",
     .call = [](Outputs&) { return DCFG_RegKeyExists("SYSTEM\\X", 0); },
     .result = 8018,
     .lines = {{"FA", "DCFG_RegKeyExists:", ">>lpszKey=SYSTEM\\X"},
               {"FE", "DCFG_RegKeyExists:", ">> return nErr=8018"}}},
    {.name = "DCFG_RegSetValue_null",
     .call = [](Outputs&) { return DCFG_RegSetValue(nullptr, "a", "b"); },
     .lines = {{"FA", "DCFG_RegSetValue:", ">>lpszKey=(null) lpszParameter=a lpszValue=b"}}},
    {.name = "DCFG_RegSetValue_definition",
     .call = [](Outputs&) { return DCFG_RegSetValue((keys::definitions + R"(\CP_TYPE\MPI)").c_str(), "a", "b"); },
     .result = 0,
     .lines = {{"FA", "DCFG_RegSetValue:",
                R"(>>lpszKey=SOFTWARE\TAVRONE\NORIX\DefDevices\CP_TYPE\MPI lpszParameter=a lpszValue=b)"},
               {"FE", "DCFG_RegSetValue:", "->return nErr=0 lRet=0"}}},
    {.name = "DCFG_RegGetValue_nullKey",
     .call = [](Outputs& out) { return DCFG_RegGetValue(nullptr, "x", out.texts[0], out.texts[0]); }},
    {.name = "DCFG_RegGetValue_nullName",
     .call = [](Outputs& out) { return DCFG_RegGetValue("x", nullptr, out.texts[0], out.texts[0]); }},
    {.name = "DCFG_RegGetValue_nullBuffer",
     .call =
         [](Outputs& out) {
             return DCFG_RegGetValue("x", "x", static_cast<char*>(nullptr),
                                     static_cast<unsigned long*>(out.texts[0]));
         }},
    {.name = "DCFG_RegGetValue_nullLength",
     .call = [](Outputs& out) { return DCFG_RegGetValue("x", "x", static_cast<char*>(out.texts[0]), nullptr); }},
};

INSTANTIATE_TEST_SUITE_P(Dispatch, RefusedTest, testing::ValuesIn(refused), refusedName);

}  // namespace
