// The rules of the value check, one by one.

#include <gmock/gmock.h>

#include "description.h"

using testing::ElementsAre;

namespace {

struct Case
{
    const char* name;
    Description description;
    const char* value;
    long result;
    const char* after = nullptr;  // the value behind the check, where it differs
};

std::ostream& operator<<(std::ostream& out, const Case& tested)
{
    for (const auto& [name, text] : tested.description.attributes)
        out << name << '=' << text << ' ';
    return out << "<- \"" << tested.value << '"';
}

class ValueCheck : public testing::TestWithParam<Case>
{
};

TEST_P(ValueCheck, Value_getsItsResult)
{
    const Case& tested = GetParam();
    const Verdict verdict = check(tested.description, tested.value);
    EXPECT_EQ(verdict.result, tested.result);
    EXPECT_EQ(verdict.value, tested.after ? tested.after : tested.value);
}

const Description none = {};
const Description rates = {{{"type", "Enum"}}, {"3/fast", "4/very/fast", "slow", "/nothing"}};
const Description boolean = {{{"type", "BOOL"}}};
const Description freeText = {{{"type", "string"}, {"min", "5"}}};
const Description grid = {{{"type", "long"}, {"min", "10"}, {"max", "100"}, {"step", "5"}}};
const Description fromMinus = {{{"type", "int"}, {"min", "-10"}, {"max", "10"}, {"step", "4"}}};
const Description maxOnly = {{{"type", "word"}, {"max", "100"}}};
const Description minOnly = {{{"type", "word"}, {"min", "10"}}};
const Description hexadecimal = {{{"type", "dword"}, {"base", "16"}, {"min", "0"}, {"max", "ff"}}};
const Description wholeDword = {{{"type", "dword"}, {"min", "0"}, {"max", "4294967295"}}};
const Description withDefault = {{{"type", "word"}, {"min", "1"}, {"max", "100"}, {"default", "42"}}};
const Description unknownType = {{{"type", "colour"}, {"min", "1"}}};
const Description emptyType = {{{"type", ""}, {"min", "1"}}};

Description stepOf(const char* step)
{
    return {{{"type", "word"}, {"min", "0"}, {"step", step}}};
}

const Case cases[] = {
    {"noDescription", none, "anything", 0},
    {"noDescriptionAndEmpty", none, "", 0},

    {"enumValue", rates, "3", 0},
    {"enumText_isNoValue", rates, "fast", 8050},
    {"enumItemWithSeveralSlashes", rates, "4", 0},
    {"enumItemWithoutText", rates, "SLOW", 0},
    {"enumPartOfAValue", rates, "slo", 8050},
    {"enumEmptyValue_isThatOfAnItemWithoutOne", rates, "", 0},
    {"enumWithoutItems", {{{"type", "enum"}}}, "3", 8050},
    {"enumMin_isNoSymbol", {{{"type", "enum"}, {"min", "3"}}, {"3/x"}}, "min", 8050},

    {"boolTrue", boolean, "tRuE", 0},
    {"boolFalse", boolean, "FALSE", 0},
    {"boolOne", boolean, "1", 8052},
    {"boolEmpty", boolean, "", 8052},

    {"string", freeText, "1", 0},
    {"stringEmpty", freeText, "", 0},
    {"stringMin_stays", freeText, "min", 0},

    {"onTheGrid", grid, "15", 0},
    {"offTheGrid", grid, "12", 8058},
    {"belowTheMinimum", grid, "9", 8054},
    {"aboveTheMaximum", grid, "101", 8056},
    {"theMinimum", grid, "10", 0},
    {"theMaximum", grid, "100", 0},
    {"negativeOnTheGrid", fromMinus, "-6", 0},
    {"negativeOffTheGrid", fromMinus, "-7", 8058},
    {"gridBeginsAtTheMinimum", fromMinus, "0", 8058},
    {"textBehindTheDigits_isIgnored", grid, "15 km", 0},
    {"noDigits_is0", grid, "abc", 8054},

    {"withoutMinimum_theMaximumIsNotSeen", maxOnly, "500", 0},
    {"withoutMinimum_aNegativeMaximumIs", {{{"type", "int"}, {"max", "-1"}}}, "-5", 8056},
    {"withoutMaximum", minOnly, "4294967295", 0},
    {"withoutMaximum_minimumCounts", minOnly, "9", 8054},
    {"minimumAboveMaximum_minimumFirst", {{{"type", "int"}, {"min", "9"}, {"max", "1"}}}, "5", 8054},

    {"hexadecimal", hexadecimal, "ff", 0},
    {"hexadecimalAbove", hexadecimal, "100", 8056},
    {"hexadecimalWithPrefix", hexadecimal, "0xFF", 0},
    {"unsignedAboveTheSignedRange", wholeDword, "4294967295", 0},
    {"unsignedOverflow_isTheLargest", wholeDword, "99999999999", 0},
    {"unsignedMinus1_isTheLargest", hexadecimal, "-1", 8056},
    {"signedMinus1_isBelow0", {{{"type", "LONG"}, {"min", "0"}}}, "-1", 8054},

    {"max_isReplaced", {{{"type", "word"}, {"min", "1"}, {"max", "100"}}}, "MAX", 0, "100"},
    {"min_isReplaced", grid, "Min", 0, "10"},
    {"default_isReplaced", withDefault, "default", 0, "42"},
    {"defaultOffTheRange_isReplacedAndRefused",
     {{{"type", "word"}, {"min", "1"}, {"max", "9"}, {"default", "42"}}},
     "default",
     8056,
     "42"},
    {"missingMin", maxOnly, "min", 87, ""},
    {"missingMax", minOnly, "max", 87, ""},
    {"missingDefault", grid, "DEFAULT", 87, ""},
    {"emptyNumber", grid, "", 87},
    {"maximum_isNoSymbol", withDefault, "maximum", 8054},

    {"step2", stepOf("2"), "3", 8058},
    {"step1_isNotChecked", stepOf("1"), "3", 0},
    {"step0_isNotChecked", stepOf("0"), "3", 0},
    {"stepWithoutDigits_isNotChecked", stepOf("x"), "3", 0},
    {"stepWithoutMinimum_isNotChecked", {{{"type", "word"}, {"step", "5"}}}, "3", 0},

    {"unknownType_isANumber", unknownType, "0", 8054},
    {"emptyType_isANumber", emptyType, "0", 8054},
};

INSTANTIATE_TEST_SUITE_P(Rules, ValueCheck, testing::ValuesIn(cases),
                         [](const auto& tested) { return std::string(tested.param.name); });

// Each attribute is a request to the server.
std::vector<std::string> asked(const Description& description, const char* value)
{
    const LocalCall call("LogDeviceCheckValue: ");
    WrittenDescription written(description);
    CString text = value;
    checkValue(call, "parameter", written, text);
    return written.asked;
}

TEST(ValueCheckRequests, NoDescription_theTypeAlone)
{
    EXPECT_THAT(asked(none, "1"), ElementsAre("type"));
}

TEST(ValueCheckRequests, Enum_theTypeAndTheItems)
{
    EXPECT_THAT(asked(rates, "3"), ElementsAre("type", "items"));
}

TEST(ValueCheckRequests, Number_itsLimitsInOrder)
{
    EXPECT_THAT(asked(grid, "15"), ElementsAre("type", "min", "max", "step", "base"));
}

TEST(ValueCheckRequests, Default_onlyWhenItIsMeant)
{
    EXPECT_THAT(asked(withDefault, "default"), ElementsAre("type", "min", "max", "step", "base", "default"));
}

}  // namespace
