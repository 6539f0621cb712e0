// Numbers by type and base.

#include <gmock/gmock.h>

#include "kxLegacy/valueCheck.h"

namespace {

struct Number
{
    const char* name;
    const char* text;
    const char* type;
    const char* base;
    double value;
};

std::ostream& operator<<(std::ostream& out, const Number& number)
{
    return out << number.text << " as " << number.type << " in base " << number.base;
}

class Numbers : public testing::TestWithParam<Number>
{
};

TEST_P(Numbers, Text_isRead)
{
    EXPECT_EQ(parseNumber(GetParam().text, GetParam().type, GetParam().base), GetParam().value);
}

constexpr Number numbers[] = {
    {"decimal", "17", "word", "10", 17},
    {"leadingZeros_areDecimal", "017", "word", "10", 17},
    {"binary", "101", "word", "2", 5},
    {"base35", "y", "word", "35", 34},
    {"base36_isRefused", "12", "word", "36", 12},
    {"base1_isRefused", "12", "word", "1", 12},
    {"base0_isRefused", "0x12", "word", "0", 0},
    {"negativeBase_isRefused", "12", "word", "-16", 12},
    {"emptyBase_is10", "12", "word", "", 12},
    {"baseWithoutDigits_is10", "12", "word", "hex", 12},
    {"baseFollowedByText", "ff", "word", "16x", 255},
    {"digitsOfALargerBase_end", "19", "word", "8", 1},
    {"blanksBefore", "  12", "word", "10", 12},
    {"plus", "+12", "word", "10", 12},
    {"signedMinus", "-12", "int", "10", -12},
    {"signedInAnyCase", "-12", "LoNg", "10", -12},
    {"unsignedMinus_wraps", "-12", "dword", "10", 4294967284.0},
    {"shortIsUnsigned", "-1", "short", "10", 4294967295.0},
    {"signedLargest", "2147483647", "int", "10", 2147483647.0},
    {"signedOverflow_isTheLargest", "2147483648", "int", "10", 2147483647.0},
    {"signedUnderflow_isTheSmallest", "-99999999999", "int", "10", -2147483648.0},
    {"unsignedAboveTheSignedRange", "2147483648", "dword", "10", 2147483648.0},
    {"unsignedLargest", "FFFFFFFF", "dword", "16", 4294967295.0},
    {"unsignedOverflow_isTheLargest", "4294967296", "dword", "10", 4294967295.0},
    {"unsignedUnderflow_isCutAndThenWraps", "-99999999999", "dword", "10", 1},
    {"decimalPlaces_areIgnored", "1.9", "int", "10", 1},
    {"empty", "", "int", "10", 0},
};

INSTANTIATE_TEST_SUITE_P(TypesAndBases, Numbers, testing::ValuesIn(numbers),
                         [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace
