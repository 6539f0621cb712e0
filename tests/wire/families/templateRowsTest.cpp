// The table of the template and metadata requests.

#include "callsTest.h"

namespace {

// The call cuts a protocol's path in the buffer that it is given.
long enumValue(const char* type, std::string name, unsigned long i, Outputs& out)
{
    return TemplateGetEnumValue(type, name.data(), i, out.texts[0], out.texts[0], out.texts[1], out.texts[1]);
}

long getValue(const char* type, std::string name, Outputs& out)
{
    return TemplateGetValue(type, name.data(), "Unit", out.texts[0], out.texts[0]);
}

ExchangeRow enumRow(const char* name, const char* type, const char* path, const Message& request)
{
    return {.name = name,
            .traceName = "TemplateGetEnumValue:",
            .call = [=](Outputs& out) { return enumValue(type, path, 2, out); },
            .request = Message(request).u32(2).u32(260).u32(260).bytes(),
            .otherKind = 30,
            .outputs = {{OutField::userText, "Unit"}, {OutField::userText, "Ger\xE4t 7"}},
            .entry = {std::string(">> type ") + type + " tempate " + path + " index=2"}};
}

ExchangeRow valueRow(const char* name, const char* type, const char* path, const Message& request)
{
    return {.name = name,
            .traceName = "TemplateGetValue:",
            .call = [=](Outputs& out) { return getValue(type, path, out); },
            .request = Message(request).str("Unit").u32(260).u32(1).bytes(),
            .otherKind = 30,
            .outputs = {{OutField::userText, "Ger\xE4t 7"}},
            .entry = {std::string(">> type ") + type + " tempate " + path + " parameter Unit"}};
}

const ExchangeRow rows[] = {
    {.name = "TemplateGetEnum",
     .traceName = "TemplateGetEnum:",
     .call = [](Outputs& out) { return TemplateGetEnum("Boards", 3, out.texts[0], out.texts[0]); },
     .request = Message(128).str("Boards").u32(3).u32(260).bytes(),
     .otherKind = 30,
     .outputs = {{OutField::userText, "CP 4"}},
     .entry = {">> type Boards index=3"},
     .result = "<< return 0 - template CP 4"},
    {.name = "TemplateExists",
     .traceName = "TemplateExists:",
     .call = [](Outputs&) { return TemplateExists("Boards", "CP 4", 0x11223344); },
     .request = Message(133).str("Boards").str("CP 4").u32(0x11223344).bytes(),
     .otherKind = 30,
     .entry = {">> type Boards template CP 4"}},
    enumRow("TemplateGetEnumValue_DefaultLogdevices", "DefaultLogdevices", "MPI board",
            Message(144).str("MPI board")),
    enumRow("TemplateGetEnumValue_Boards", "Boards", "CP 4", Message(160).str("CP 4")),
    enumRow("TemplateGetEnumValue_Protocols", "Protocols", "PB\\Params\\x",
            Message(176).str("PB").str("Params").str("x").str("").str("")),
    enumRow("TemplateGetEnumValue_unknownType", "Cables", "a\\b", Message(0).str("a\\b")),
    valueRow("TemplateGetValue_DefaultLogdevices", "DefaultLogdevices", "MPI board", Message(145).str("MPI board")),
    valueRow("TemplateGetValue_Boards", "Boards", "CP 4", Message(161).str("CP 4")),
    valueRow("TemplateGetValue_Protocols", "Protocols", "PB\\Params\\x",
             Message(177).str("PB").str("Params").str("x").str("").str("")),
    valueRow("TemplateGetValue_unknownType", "Cables", "a\\b", Message(0).str("a\\b")),
    {.name = "DCFG_GetParameterMetaData",
     .traceName = "DCFG_GetParameterMetaData:",
     .call =
         [](Outputs& out) {
             return DCFG_GetParameterMetaData("Boards", "CP 4", "text", "Unit", out.texts[0], out.texts[0]);
         },
     .request = Message(202).str("Boards").str("CP 4").str("text").str("Unit").u32(300).bytes(),
     .otherKind = 30,
     .outputs = {{OutField::plainText, "Ger\xE4t"}},
     .entry = {">> folder Boards subfolder CP 4 parameter Unit"},
     .details = {"value Ger\xE4t ", "lResult 0 neededBufLen 5 "}},
    {.name = "DCFG_SetParameterMetaData",
     .traceName = "DCFG_SetParameterMetaData:",
     .call = [](Outputs&) { return DCFG_SetParameterMetaData("Boards", "CP 4", "text", "Unit", "Ger\xE4t"); },
     .request = Message(203).str("Boards").str("CP 4").str("text").str("Unit").str("Ger\xE4t").bytes(),
     .otherKind = 30,
     .entry = {">>  subfolder CP 4 parameter Unit val Ger\xE4t"}},
};

INSTANTIATE_TEST_SUITE_P(Template, ExchangeTest, testing::ValuesIn(rows), rowName);

const RequestRow requests[] = {
    {"types_areFoundInAnyCase_boards", [](Outputs& out) { return getValue("bOARDS", "x", out); },
     Message(161).str("x").str("Unit").u32(260).u32(1).bytes()},
    {"types_areFoundInAnyCase_protocols", [](Outputs& out) { return enumValue("PROTOCOLS", "x", 0, out); },
     Message(176).str("x").str("").str("").str("").str("").u32(0).u32(260).u32(260).bytes()},
    {"types_areFoundInAnyCase_devices", [](Outputs& out) { return getValue("DefaultLogDevices", "x", out); },
     Message(145).str("x").str("Unit").u32(260).u32(1).bytes()},
    {"path_beyondFivePartsIsLeftOut", [](Outputs& out) { return getValue("Protocols", "a\\b\\c\\d\\e\\f\\g", out); },
     Message(177).str("a").str("b").str("c").str("d").str("e").str("Unit").u32(260).u32(1).bytes()},
    {"path_emptyPartsAreSkipped", [](Outputs& out) { return enumValue("Protocols", "\\a\\\\b\\", 0, out); },
     Message(176).str("a").str("b").str("").str("").str("").u32(0).u32(260).u32(260).bytes()},
    {"path_longPartIsCutAt259",
     [](Outputs& out) { return getValue("Protocols", std::string(300, 'x') + "\\b", out); },
     Message(177).str(std::string(259, 'x')).str("b").str("").str("").str("").str("Unit").u32(260).u32(1).bytes()},
    {"path_ofBackslashesAloneIsFiveEmptyParts", [](Outputs& out) { return getValue("Protocols", "\\\\", out); },
     Message(177).str("").str("").str("").str("").str("").str("Unit").u32(260).u32(1).bytes()},
    {"TemplateGetEnum_nullBuffer", [](Outputs& out) { return TemplateGetEnum("Boards", 0, nullptr, out.texts[0]); },
     Message(128).str("Boards").u32(0).u32(260).bytes()},
    {"TemplateGetEnumValue_nullBuffers",
     [](Outputs& out) {
         char name[] = "x";
         return TemplateGetEnumValue("Boards", name, 0, nullptr, out.texts[0], nullptr, out.texts[1]);
     },
     Message(160).str("x").u32(0).u32(260).u32(260).bytes()},
    {"TemplateGetValue_nullBuffer",
     [](Outputs& out) {
         char name[] = "x";
         return TemplateGetValue("Boards", name, "Unit", nullptr, out.texts[0]);
     },
     Message(161).str("x").str("Unit").u32(260).u32(1).bytes()},
    {"DCFG_GetParameterMetaData_nulls",
     [](Outputs& out) { return DCFG_GetParameterMetaData("f", nullptr, nullptr, "p", nullptr, out.texts[0]); },
     Message(202).str("f").nullStr().nullStr().str("p").u32(300).bytes()},
    {"DCFG_SetParameterMetaData_nulls",
     [](Outputs&) { return DCFG_SetParameterMetaData(nullptr, nullptr, "i", nullptr, nullptr); },
     Message(203).nullStr().nullStr().str("i").nullStr().nullStr().bytes()},
};

INSTANTIATE_TEST_SUITE_P(Template, RequestTest, testing::ValuesIn(requests), requestName);

// A refused call: its entry alone is traced.
RefusedRow refusedEnumValue(const char* name, const char* type, const char* path, bool nameLength = true,
                            bool valueLength = true)
{
    const auto shown = [](const char* text) { return std::string(text ? text : "(null)"); };
    return {.name = name,
            .call =
                [=](Outputs& out) {
                    std::string copy(path ? path : "");
                    return TemplateGetEnumValue(type, path ? copy.data() : nullptr, 1, out.texts[0],
                                                nameLength ? static_cast<unsigned long*>(out.texts[0]) : nullptr,
                                                out.texts[1],
                                                valueLength ? static_cast<unsigned long*>(out.texts[1]) : nullptr);
                },
            .lines = {
                {"FA", "TemplateGetEnumValue:", ">> type " + shown(type) + " tempate " + shown(path) + " index=1"}}};
}

RefusedRow refusedValue(const char* name, const char* type, const char* path, const char* parameter,
                        bool length = true)
{
    const auto shown = [](const char* text) { return std::string(text ? text : "(null)"); };
    return {.name = name,
            .call =
                [=](Outputs& out) {
                    std::string copy(path ? path : "");
                    return TemplateGetValue(type, path ? copy.data() : nullptr, parameter, out.texts[0],
                                            length ? static_cast<unsigned long*>(out.texts[0]) : nullptr);
                },
            .lines = {{"FA", "TemplateGetValue:",
                       ">> type " + shown(type) + " tempate " + shown(path) + " parameter " + shown(parameter)}}};
}

const RefusedRow refused[] = {
    refusedEnumValue("GetEnumValue_nullType", nullptr, "x"),
    refusedEnumValue("GetEnumValue_emptyType", "", "x"),
    refusedEnumValue("GetEnumValue_nullTemplate", "Boards", nullptr),
    refusedEnumValue("GetEnumValue_emptyTemplate", "Boards", ""),
    refusedEnumValue("GetEnumValue_nullNameLength", "Boards", "x", false),
    refusedEnumValue("GetEnumValue_nullValueLength", "Boards", "x", true, false),
    refusedValue("GetValue_nullType", nullptr, "x", "p"),
    refusedValue("GetValue_emptyType", "", "x", "p"),
    refusedValue("GetValue_nullTemplate", "Boards", nullptr, "p"),
    refusedValue("GetValue_emptyTemplate", "Boards", "", "p"),
    refusedValue("GetValue_nullParameter", "Boards", "x", nullptr),
    refusedValue("GetValue_emptyParameter", "Boards", "x", ""),
    refusedValue("GetValue_nullLength", "Boards", "x", "p", false),
    {.name = "GetEnum_nullType",
     .call = [](Outputs& out) { return TemplateGetEnum(nullptr, 1, out.texts[0], out.texts[0]); },
     .lines = {{"FA", "TemplateGetEnum:", ">> type (null) index=1"}}},
    {.name = "GetEnum_emptyType",
     .call = [](Outputs& out) { return TemplateGetEnum("", 1, out.texts[0], out.texts[0]); },
     .lines = {{"FA", "TemplateGetEnum:", ">> type  index=1"}}},
    {.name = "GetEnum_nullLength",
     .call = [](Outputs& out) { return TemplateGetEnum("Boards", 1, out.texts[0], nullptr); },
     .lines = {{"FA", "TemplateGetEnum:", ">> type Boards index=1"}}},
    {.name = "Exists_nullType",
     .call = [](Outputs&) { return TemplateExists(nullptr, "x", 0); },
     .lines = {{"FA", "TemplateExists:", ">> type (null) template x"}}},
    {.name = "Exists_emptyType",
     .call = [](Outputs&) { return TemplateExists("", "x", 0); },
     .lines = {{"FA", "TemplateExists:", ">> type  template x"}}},
    {.name = "Exists_nullTemplate",
     .call = [](Outputs&) { return TemplateExists("Boards", nullptr, 0); },
     .lines = {{"FA", "TemplateExists:", ">> type Boards template (null)"}}},
    {.name = "Exists_emptyTemplate",
     .call = [](Outputs&) { return TemplateExists("Boards", "", 0); },
     .lines = {{"FA", "TemplateExists:", ">> type Boards template "}}},
    {.name = "GetMetaData_nullFolder",
     .call =
         [](Outputs& out) { return DCFG_GetParameterMetaData(nullptr, "s", "i", "p", out.texts[0], out.texts[0]); },
     .lines = {{"FA", "DCFG_GetParameterMetaData:", ">> folder (null) subfolder s parameter p"}}},
    {.name = "GetMetaData_emptyFolder",
     .call = [](Outputs& out) { return DCFG_GetParameterMetaData("", "s", "i", "p", out.texts[0], out.texts[0]); },
     .lines = {{"FA", "DCFG_GetParameterMetaData:", ">> folder  subfolder s parameter p"}}},
    {.name = "GetMetaData_nullParameter",
     .call =
         [](Outputs& out) { return DCFG_GetParameterMetaData("f", "s", "i", nullptr, out.texts[0], out.texts[0]); },
     .lines = {{"FA", "DCFG_GetParameterMetaData:", ">> folder f subfolder s parameter (null)"}}},
    {.name = "GetMetaData_emptyParameter",
     .call = [](Outputs& out) { return DCFG_GetParameterMetaData("f", "s", "i", "", out.texts[0], out.texts[0]); },
     .lines = {{"FA", "DCFG_GetParameterMetaData:", ">> folder f subfolder s parameter "}}},
    {.name = "GetMetaData_nullLength",
     .call = [](Outputs& out) { return DCFG_GetParameterMetaData("f", "s", "i", "p", out.texts[0], nullptr); },
     .lines = {{"FA", "DCFG_GetParameterMetaData:", ">> folder f subfolder s parameter p"}}},
    {.name = "SetMetaData_nullItem",
     .call = [](Outputs&) { return DCFG_SetParameterMetaData("f", "s", nullptr, "p", "v"); },
     .lines = {{"FA", "DCFG_SetParameterMetaData:", ">>  subfolder s parameter p val v"}}},
    {.name = "SetMetaData_emptyItem",
     .call = [](Outputs&) { return DCFG_SetParameterMetaData("f", "s", "", "p", "v"); },
     .lines = {{"FA", "DCFG_SetParameterMetaData:", ">>  subfolder s parameter p val v"}}},
};

INSTANTIATE_TEST_SUITE_P(Template, RefusedTest, testing::ValuesIn(refused), refusedName);

}  // namespace
