// The table of the requests of boards, adapters and scanning.

#include "callsTest.h"

namespace {

const ExchangeRow rows[] = {
    {.name = "DCFG_GetBoardAttribute",
     .traceName = "DCFG_GetBoardAttribute:",
     .call = [](Outputs& out) { return DCFG_GetBoardAttribute("*TVRA002", "Unit", out.texts[0], out.texts[0]); },
     .request = Message(161).str("*TVRA002").str("Unit").u32(300).u32(1).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "Ger\xE4t 7"}},
     .entry = {">> lpszDeviceId=*TVRA002 lpszParameter=Unit"}},
    {.name = "DCFG_BoardGetValueRaw",
     .traceName = "DCFG_BoardGetValueRaw:",
     .call = [](Outputs& out) { return DCFG_BoardGetValueRaw("CP 4", "Params", "Unit", out.texts[0], out.texts[0]); },
     .request = Message(96).str("CP 4").str("Params").str("Unit").u32(300).bytes(),
     .otherKind = 30,
     .outputs = {{OutField::userText, "Ger\xE4t 7"}},
     .entry = {">> lpszProtocol CP 4 Path Params Param Unit"},
     .shortForm = true},
    {.name = "DCFG_EnumConfiguration",
     .traceName = "DCFG_EnumConfiguration:",
     .call =
         [](Outputs& out) {
             auto& texts = out.texts;
             return DCFG_EnumConfiguration(2, "CP 4", "s2", "s3", "s4", texts[0], texts[0], texts[1], texts[1],
                                           texts[2], texts[2], texts[3], texts[3]);
         },
     .request =
         Message(196).u32(2).str("CP 4").str("s2").str("s3").str("s4").u32(300).u32(301).u32(302).u32(303).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "Line 1"},
                 {OutField::plainText, "PB"},
                 {OutField::plainText, "L4"},
                 {OutField::plainText, "7"}},
     .entry = {">> iValue=2 lpszBoardName=CP 4"},
     .otherKindText = "<< return ERROR DCFG_INVALID_RESPONSE (0x5)",
     .resultLines = {"result= 0x0 rr=0", "logdevice=0x0 Line 1", "protocol=0x0 PB", "L4protocol=0x0 L4",
                     "unit =0x0 7", "<< return 0x0"},
     .shortLines = {"<< result= 0x6f ", "result= 0x6f rr=111"}},
    {.name = "DCFG_GetBoardInfo",
     .traceName = "DCFG_GetBoardInfo:",
     .call = [](Outputs& out) { return DCFG_GetBoardInfo(9, "s1", "s2", "s3", "s4", out.texts[0], out.texts[0]); },
     .request = Message(195).u32(9).str("s1").str("s2").str("s3").str("s4").u32(300).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "CP 4"}},
     .entry = {">> infoType=9 "},
     .otherKindText = "<< return ERROR DCFG_INVALID_RESPONSE (0x5)",
     .resultLines = {"result= 0x0 rr=0", "BoardName=0x0 CP 4", "<< return 0x0"},
     .shortLines = {"<< result= 0x6f ", "result= 0x6f rr=111"}},
    {.name = "DCFG_GetBoardInfoEx",
     .traceName = "DCFG_GetBoardInfoEx:",
     .call =
         [](Outputs& out) {
             return DCFG_GetBoardInfoEx(9, "CP 4", "map", "PCI\\1", static_cast<char*>(out.texts[0]), out.texts[0]);
         },
     .request = Message(207).u32(9).str("CP 4").str("map").str("PCI\\1").u32(300).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::block, std::string("\x01\x00\xFFxyz", 6)}},
     .entry = {">>infoType=9 lpszBoardName=CP 4 lpszBoardMap=map lpszHardwareInstanceId=PCI\\1"}},
    {.name = "DCFG_EnumInstBoard",
     .traceName = "DCFG_EnumInstBoard:",
     .call =
         [](Outputs& out) {
             auto& t = out.texts;
             return DCFG_EnumInstBoard(2, t[0], t[0], t[1], t[1], t[2], t[2], t[3], t[3], t[4], t[4], t[5], t[5],
                                       &out.numbers[0]);
         },
     .request = Message(192).u32(2).u32(300).u32(301).u32(302).u32(303).u32(304).u32(305).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "CP 4"},
                 {OutField::plainText, "*TVRA002"},
                 {OutField::plainText, "MPI"},
                 {OutField::plainText, "PCI\\VEN_1"},
                 {OutField::plainText, "PCI\\1"},
                 {OutField::plainText, "map"},
                 {.kind = OutField::number, .value = {}, .numeric = 0x11223344}},
     .entry = {">> iValue=2 "},
     .otherKindText = "<< return ERROR DCFG_INVALID_RESPONSE (0x5)",
     .resultLines = {"result= 0x0 rr=0", "BoardName=0x0 CP 4", "DeviceId=0x0 *TVRA002", "NetType=0x0 MPI",
                     "HardwareId=0x0 PCI\\VEN_1", "HardwareInstanceId=0x0 PCI\\1", "BoardMap=0x0 map",
                     "State=0x0 0x11223344", "<< return 0x0"},
     .shortLines = {"<< result= 0x6f ", "result= 0x6f rr=111"}},
    {.name = "DCFG_BoardGetMapEx",
     .traceName = "DCFG_BoardGetMapEx:",
     .call = [](Outputs& out) { return DCFG_BoardGetMapEx("*TVRA002", "LAN", "s3", out.texts[0], out.texts[0]); },
     .request = Message(163).str("*TVRA002").str("LAN").str("s3").u32(300).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "map"}},
     .entry = {">>lpszDeviceID=*TVRA002 lpszAdapter=LAN"}},
    {.name = "DCFG_EnumAdapters",
     .traceName = "DCFG_EnumAdapters:",
     .call =
         [](Outputs& out) {
             return DCFG_EnumAdapters(2, out.texts[0], out.texts[0], out.texts[1], out.texts[1], &out.numbers[0]);
         },
     .request = Message(197).u32(2).u32(300).u32(301).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "LAN"},
                 {OutField::plainText, "{1}"},
                 {.kind = OutField::byte, .value = {}, .numeric = 0xFE}},
     .entry = {">>iValue=2 pcbAdapterNameLen=300 pcbAdapterIdLen=301"}},
    {.name = "DCFG_EnumAvailableBoards",
     .traceName = "DCFG_EnumAvailableBoards:",
     .call =
         [](Outputs& out) {
             return DCFG_EnumAvailableBoards(2, out.texts[0], out.texts[0], out.texts[1], out.texts[1],
                                             &out.numbers[0]);
         },
     .request = Message(194).u32(2).u32(300).u32(301).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "CP 4"},
                 {OutField::plainText, "*TVRA002"},
                 {.kind = OutField::number, .value = {}, .numeric = 0x11223344}},
     .entry = {">> iValue=2 "}},
    {.name = "DCFG_BoardGetEnum2",
     .traceName = "DCFG_BoardGetEnum2:",
     .call =
         [](Outputs& out) {
             auto& t = out.texts;
             return DCFG_BoardGetEnum2("*TVRA002", 2, t[0], t[0], t[1], t[1], t[2], t[2], true);
         },
     .request = Message(193).str("*TVRA002").u32(2).u32(300).u32(301).u32(302).u32(1).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "CP 4"}, {OutField::plainText, "s2"}, {OutField::plainText, "s3"}},
     .entryElsewhere = true},
    {.name = "DCFG_Scan",
     .traceName = "DCFG_BoardScan:",
     .call = [](Outputs&) { return DCFG_Scan(); },
     .request = Message(199).bytes(),
     .otherKind = 0,
     .entry = {">> start"},
     .otherKindText = "<< return 0x0"},
    {.name = "DCFG_UpdateLogdevicesForDevice",
     .traceName = "DCFG_UpdateLogdevicesForDevice:",
     .call = [](Outputs&) { return DCFG_UpdateLogdevicesForDevice("*TVRA002", "PCI\\1"); },
     .request = Message(200).str("*TVRA002").str("PCI\\1").bytes(),
     .otherKind = 0,
     .entry = {">> DevId *TVRA002 Hwid PCI\\1 PID " + std::to_string(GetCurrentProcessId()) + " TID " +
               std::to_string(GetCurrentThreadId())},
     .otherKindText = "<< return 0x0"},
    {.name = "DCFG_CreateAllLogdevices",
     .traceName = "DCFG_CreateAllLogdevices:",
     .call = [](Outputs&) { return DCFG_CreateAllLogdevices(); },
     .request = Message(201).bytes(),
     .otherKind = 30,
     .entry = {">> start"},
     .shortForm = true},
    {.name = "DCFG_HasUninitializedInstances",
     .traceName = "DCFG_HasUninitializedInstances:",
     .call = [](Outputs&) { return DCFG_HasUninitializedInstances(); },
     .request = Message(88).bytes(),
     .otherKind = 30,
     .entry = {">> start"},
     .shortForm = true},
    {.name = "DCFG_SilentRestart",
     .traceName = "DCFG_SilentRestart:",
     .call = [](Outputs&) { return DCFG_SilentRestart("CP 4"); },
     .request = Message(288).str("CP 4").bytes(),
     .otherKind = 8621,
     .entry = {">>DevName = CP 4"}},
};

INSTANTIATE_TEST_SUITE_P(Board, ExchangeTest, testing::ValuesIn(rows), rowName);

const RequestRow requests[] = {
    {"GetBoardAttribute_nullLength",
     [](Outputs& out) { return DCFG_GetBoardAttribute("d", "p", out.texts[0], nullptr); },
     Message(161).str("d").str("p").u32(0).u32(1).bytes()},
    {"BoardGetValueRaw_nulls",
     [](Outputs&) { return DCFG_BoardGetValueRaw(nullptr, nullptr, nullptr, nullptr, nullptr); },
     Message(96).nullStr().nullStr().nullStr().u32(0).bytes()},
    {"EnumConfiguration_nulls",
     [](Outputs&) {
         return DCFG_EnumConfiguration(1, "b", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                       nullptr, nullptr, nullptr);
     },
     Message(196).u32(1).str("b").nullStr().nullStr().nullStr().u32(0).u32(0).u32(0).u32(0).bytes()},
    {"GetBoardInfo_nulls",
     [](Outputs&) { return DCFG_GetBoardInfo(1, "s", nullptr, nullptr, nullptr, nullptr, nullptr); },
     Message(195).u32(1).str("s").nullStr().nullStr().nullStr().u32(0).bytes()},
    {"EnumInstBoard_nulls",
     [](Outputs& out) {
         return DCFG_EnumInstBoard(1, out.texts[0], nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                   nullptr, nullptr, nullptr, nullptr, nullptr);
     },
     Message(192).u32(1).u32(0).u32(0).u32(0).u32(0).u32(0).u32(0).bytes()},
    {"BoardGetMapEx_nulls", [](Outputs&) { return DCFG_BoardGetMapEx(nullptr, nullptr, nullptr, nullptr, nullptr); },
     Message(163).nullStr().nullStr().nullStr().u32(0).bytes()},
    {"EnumAvailableBoards_nulls",
     [](Outputs& out) { return DCFG_EnumAvailableBoards(1, out.texts[0], nullptr, nullptr, nullptr, nullptr); },
     Message(194).u32(1).u32(0).u32(0).bytes()},
    {"BoardGetEnum2_nullsWithoutANewMap",
     [](Outputs&) { return DCFG_BoardGetEnum2("d", 1, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, false); },
     Message(193).str("d").u32(1).u32(0).u32(0).u32(0).u32(0).bytes()},
    {"UpdateLogdevicesForDevice_nulls", [](Outputs&) { return DCFG_UpdateLogdevicesForDevice(nullptr, nullptr); },
     Message(200).nullStr().nullStr().bytes()},
};

INSTANTIATE_TEST_SUITE_P(Board, RequestTest, testing::ValuesIn(requests), requestName);

long infoExWithNull(Outputs& out, int which)
{
    const auto unless = [&](int i, auto* pointer) { return which == i ? nullptr : pointer; };
    return DCFG_GetBoardInfoEx(9, unless(0, "b"), unless(1, "m"), unless(2, "h"),
                               unless(3, static_cast<char*>(out.texts[0])),
                               unless(4, static_cast<unsigned long*>(out.texts[0])));
}

TraceLine infoExEntry(const char* board, const char* map, const char* hardware)
{
    return {"FA", "DCFG_GetBoardInfoEx:",
            std::string(">>infoType=9 lpszBoardName=") + board + " lpszBoardMap=" + map +
                " lpszHardwareInstanceId=" + hardware};
}

long adaptersWithNull(Outputs& out, int which)
{
    const auto unless = [&](int i, auto* pointer) { return which == i ? nullptr : pointer; };
    return DCFG_EnumAdapters(2, unless(0, static_cast<char*>(out.texts[0])),
                             unless(1, static_cast<unsigned long*>(out.texts[0])),
                             unless(2, static_cast<char*>(out.texts[1])),
                             unless(3, static_cast<unsigned long*>(out.texts[1])), unless(4, &out.numbers[0]));
}

TraceLine adaptersEntry(const char* first, const char* second)
{
    return {"FA", "DCFG_EnumAdapters:",
            std::string(">>iValue=2 pcbAdapterNameLen=") + first + " pcbAdapterIdLen=" + second};
}

const RefusedRow refused[] = {
    {.name = "GetBoardAttribute_nullDevice",
     .call = [](Outputs& out) { return DCFG_GetBoardAttribute(nullptr, "p", out.texts[0], out.texts[0]); },
     .lines = {{"FA", "DCFG_GetBoardAttribute:", ">> lpszDeviceId=(null) lpszParameter=p"}}},
    {.name = "GetBoardAttribute_nullParameter",
     .call = [](Outputs& out) { return DCFG_GetBoardAttribute("d", nullptr, out.texts[0], out.texts[0]); },
     .lines = {{"FA", "DCFG_GetBoardAttribute:", ">> lpszDeviceId=d lpszParameter=(null)"}}},
    {.name = "GetBoardAttribute_nullBuffer",
     .call = [](Outputs& out) { return DCFG_GetBoardAttribute("d", "p", nullptr, out.texts[0]); },
     .lines = {{"FA", "DCFG_GetBoardAttribute:", ">> lpszDeviceId=d lpszParameter=p"}}},
    {.name = "EnumConfiguration_nullBoard",
     .call =
         [](Outputs& out) {
             return DCFG_EnumConfiguration(2, nullptr, "", "", "", out.texts[0], out.texts[0], out.texts[1],
                                           out.texts[1], out.texts[2], out.texts[2], out.texts[3], out.texts[3]);
         },
     .lines = {{"FA", "DCFG_EnumConfiguration:", ">> iValue=2 lpszBoardName=(null)"}}},
    {.name = "GetBoardInfo_null",
     .call = [](Outputs& out) { return DCFG_GetBoardInfo(9, nullptr, "", "", "", out.texts[0], out.texts[0]); },
     .lines = {{"FA", "DCFG_GetBoardInfo:", ">> infoType=9 "}}},
    {.name = "GetBoardInfoEx_nullBoard",
     .call = [](Outputs& out) { return infoExWithNull(out, 0); },
     .lines = {infoExEntry("(null)", "m", "h")}},
    {.name = "GetBoardInfoEx_nullMap",
     .call = [](Outputs& out) { return infoExWithNull(out, 1); },
     .lines = {infoExEntry("b", "(null)", "h")}},
    {.name = "GetBoardInfoEx_nullHardware",
     .call = [](Outputs& out) { return infoExWithNull(out, 2); },
     .lines = {infoExEntry("b", "m", "(null)")}},
    {.name = "GetBoardInfoEx_nullData",
     .call = [](Outputs& out) { return infoExWithNull(out, 3); },
     .lines = {infoExEntry("b", "m", "h")}},
    {.name = "GetBoardInfoEx_nullLength",
     .call = [](Outputs& out) { return infoExWithNull(out, 4); },
     .lines = {infoExEntry("b", "m", "h")}},
    {.name = "BoardGetNotSupported_null",
     .call = [](Outputs& out) { return DCFG_BoardGetNotSupported(0, nullptr, out.texts[0], out.texts[0]); },
     .lines = {{"FA", "DCFG_BoardGetNotSupported:", ">> BoardName=(null) "}}},
    {.name = "EnumInstBoard_null",
     .call =
         [](Outputs& out) {
             auto& t = out.texts;
             return DCFG_EnumInstBoard(2, nullptr, t[0], t[1], t[1], t[2], t[2], t[3], t[3], t[4], t[4], t[5], t[5],
                                       &out.numbers[0]);
         },
     .lines = {{"FA", "DCFG_EnumInstBoard:", ">> iValue=2 "}}},
    {.name = "EnumInstBoardEx_null", .call = [](Outputs&) { return DCFG_EnumInstBoardEx(0, nullptr); }},
    {.name = "EnumAdapters_nullName",
     .call = [](Outputs& out) { return adaptersWithNull(out, 0); },
     .lines = {adaptersEntry("300", "301")}},
    {.name = "EnumAdapters_nullNameLength",
     .call = [](Outputs& out) { return adaptersWithNull(out, 1); },
     .lines = {adaptersEntry("0", "301")}},
    {.name = "EnumAdapters_nullId",
     .call = [](Outputs& out) { return adaptersWithNull(out, 2); },
     .lines = {adaptersEntry("300", "301")}},
    {.name = "EnumAdapters_nullIdLength",
     .call = [](Outputs& out) { return adaptersWithNull(out, 3); },
     .lines = {adaptersEntry("300", "0")}},
    {.name = "EnumAdapters_nullFlag",
     .call = [](Outputs& out) { return adaptersWithNull(out, 4); },
     .lines = {adaptersEntry("300", "301")}},
    {.name = "EnumAvailableBoards_null",
     .call =
         [](Outputs& out) {
             return DCFG_EnumAvailableBoards(2, nullptr, out.texts[0], out.texts[1], out.texts[1], nullptr);
         },
     .lines = {{"FA", "DCFG_EnumAvailableBoards:", ">> iValue=2 "}}},
    {.name = "BoardGetEnum2_null",
     .call =
         [](Outputs& out) {
             return DCFG_BoardGetEnum2(nullptr, 2, nullptr, out.texts[0], out.texts[1], out.texts[1], out.texts[2],
                                       out.texts[2], true);
         },
     .lines = {{"FA", "DCFG_BoardGetEnum2:", ">>lpszDeviceID=(null) iValue=2 lpszBoardName=0 bAutoNewMap 1 "},
               {"FE", "DCFG_BoardGetEnum2:", "ERROR -> invalid Parameter"}}},
    {.name = "SilentRestart_null",
     .call = [](Outputs&) { return DCFG_SilentRestart(nullptr); },
     .lines = {{"FA", "DCFG_SilentRestart:", ">>DevName = (null)"}}},
};

INSTANTIATE_TEST_SUITE_P(Board, RefusedTest, testing::ValuesIn(refused), refusedName);

}  // namespace
