// What a check traces.

#include <gmock/gmock.h>

#include "description.h"
#include "recordedTrace.h"

namespace {

constexpr std::uint32_t detail = 64;
constexpr std::uint32_t result = 128;

struct Traced
{
    const char* name;
    Description description;
    const char* value;
    std::vector<std::pair<std::uint32_t, std::string>> lines;
};

std::ostream& operator<<(std::ostream& out, const Traced& tested)
{
    return out << tested.name;
}

class ValueCheckTrace : public testing::TestWithParam<Traced>
{
};

TEST_P(ValueCheckTrace, Lines_areTheRules)
{
    const RecordedTrace trace;
    check(GetParam().description, GetParam().value);
    std::vector<std::pair<std::uint32_t, std::string>> lines;
    for (const RecordedLine& line : trace.lines()) {
        EXPECT_EQ(line.function, "LogDeviceCheckValue: ");
        lines.emplace_back(line.level, line.text);
    }
    EXPECT_EQ(lines, GetParam().lines);
}

std::pair<std::uint32_t, std::string> typeLine(const char* type)
{
    return {detail, std::string("für den Entry=parameter liegt die ParamDesc=") + type + " vor"};
}

const std::pair<std::uint32_t, std::string> numberLine = {
    detail, "anderer Typ(long,word,dword) -> zulässigkeit des Wertes wird über Min,Max,Step,Base bestimmt"};
const Description grid = {{{"type", "long"}, {"min", "10"}, {"max", "100"}, {"step", "5"}}};

const Traced traced[] = {
    {"noDescription",
     {},
     "1",
     {{detail, "continue : Keine ParamDesc für Parameter parameter vorahnden - setze Wert ohne Parameterkontrolle"}}},
    {"enumeration",
     {{{"type", "enum"}}, {"1/x"}},
     "2",
     {typeLine("enum"), {detail, "ParamDesc ist enumerierte Liste-> prüfe ob Wert in Liste enthalten ist"}}},
    {"boolAccepted",
     {{{"type", "bool"}}},
     "true",
     {typeLine("bool"), {detail, "ParamDesc ist Boolscher Wert-> prüfe ob Wert TRUE oder FALSE enthält"}}},
    {"boolRefused",
     {{{"type", "bool"}}},
     "1",
     {typeLine("bool"),
      {detail, "ParamDesc ist Boolscher Wert-> prüfe ob Wert TRUE oder FALSE enthält"},
      {result, "->return Error:übergebner Wert ist kein boolscher Wert (TRUE oder FALSE)"}}},
    {"string",
     {{{"type", "string"}}},
     "x",
     {typeLine("string"), {detail, "Typ String -> keine weitere Beschränkungen"}}},
    {"numberAccepted", grid, "15", {typeLine("long"), numberLine}},
    {"numberEmpty",
     grid,
     "",
     {typeLine("long"), numberLine, {result, "Leerer Wert oder Min-, Max-, Standartwert nicht gefunden"}}},
    {"numberBelow", grid, "9", {typeLine("long"), numberLine, {result, "->return Error DCFG_SET_VAL_LESS_THAN_MIN"}}},
    {"numberAbove",
     grid,
     "101",
     {typeLine("long"), numberLine, {result, "->return Error DCFG_SET_VAL_BIGGER_THAN_MAX"}}},
    {"numberOffTheGrid", grid, "12", {typeLine("long"), numberLine, {result, "->return Error DCFG_NOT_IN_STEP"}}},
};

INSTANTIATE_TEST_SUITE_P(Rules, ValueCheckTrace, testing::ValuesIn(traced),
                         [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace
