#include "catalogue/ParameterDescription.h"

#include <gmock/gmock.h>

using catalogue::EnumItem;
using catalogue::Language;
using catalogue::ParameterDescription;
using Type = ParameterDescription::Type;

namespace {

ParameterDescription number(Type type, catalogue::Values attributes)
{
    return {type, std::move(attributes), {}};
}

}  // namespace

TEST(ParameterDescription, Number_isBoundByItsType)
{
    const ParameterDescription word = number(Type::Word, {});
    EXPECT_TRUE(word.accepts(L"0"));
    EXPECT_TRUE(word.accepts(L"65535"));
    EXPECT_FALSE(word.accepts(L"65536"));
    EXPECT_FALSE(word.accepts(L"-1"));
    EXPECT_TRUE(number(Type::Dword, {}).accepts(L"4294967295"));
    EXPECT_FALSE(number(Type::Dword, {}).accepts(L"4294967296"));
    EXPECT_TRUE(number(Type::Long, {}).accepts(L"-2147483648"));
    EXPECT_FALSE(number(Type::Int, {}).accepts(L"2147483648"));
}

TEST(ParameterDescription, Number_isBoundByItsLimits)
{
    const ParameterDescription description = number(Type::Int, {{L"min", L"-5"}, {L"max", L"5"}});
    EXPECT_TRUE(description.accepts(L"-5"));
    EXPECT_TRUE(description.accepts(L"5"));
    EXPECT_FALSE(description.accepts(L"-6"));
    EXPECT_FALSE(description.accepts(L"6"));
}

TEST(ParameterDescription, StepGrid_startsAtTheMinimum)
{
    const ParameterDescription description = number(Type::Long, {{L"min", L"-7"}, {L"step", L"5"}});
    EXPECT_TRUE(description.accepts(L"-7"));
    EXPECT_TRUE(description.accepts(L"3"));
    EXPECT_FALSE(description.accepts(L"0"));
}

TEST(ParameterDescription, StepWithoutMinimum_isNoBound)
{
    EXPECT_TRUE(number(Type::Long, {{L"step", L"5"}}).accepts(L"3"));
}

TEST(ParameterDescription, Number_isReadInItsBase)
{
    const ParameterDescription description =
        number(Type::Word, {{L"base", L"16"}, {L"min", L"200"}, {L"max", L"3F8"}, {L"step", L"8"}});
    EXPECT_TRUE(description.accepts(L"3f0"));
    EXPECT_FALSE(description.accepts(L"3f1"));
    EXPECT_FALSE(description.accepts(L"3G0"));
    EXPECT_FALSE(description.accepts(L"0x3f0"));
}

TEST(ParameterDescription, TextThatIsNoNumber_isRefused)
{
    for (const wchar_t* const text : {L"", L"-", L" 1", L"1 ", L"+1", L"1.0", L"99999999999999999999999999"})
        EXPECT_FALSE(number(Type::Long, {}).accepts(text)) << text;
}

TEST(ParameterDescription, Bool_takesTwoWordsInAnyCase)
{
    const ParameterDescription description{Type::Bool, {}, {}};
    EXPECT_TRUE(description.accepts(L"TRUE"));
    EXPECT_TRUE(description.accepts(L"False"));
    EXPECT_FALSE(description.accepts(L"1"));
    EXPECT_FALSE(description.accepts(L""));
}

TEST(ParameterDescription, String_takesEverything)
{
    EXPECT_TRUE((ParameterDescription{Type::String, {}, {}}.accepts(L"")));
}

TEST(ParameterDescription, Enum_takesItsValuesInAnyCaseButNotTheirTexts)
{
    const ParameterDescription description{Type::Enum, {}, {{L"com1", {}}, {L"2", {{Language::En, L"two"}}}}};
    EXPECT_TRUE(description.accepts(L"COM1"));
    EXPECT_TRUE(description.accepts(L"2"));
    EXPECT_FALSE(description.accepts(L"two"));
    EXPECT_FALSE(description.accepts(L"2/two"));
}

TEST(EnumItem, Text_isValueAndTextInTheLanguage)
{
    const EnumItem item{L"3", {{Language::De, L"drei"}, {Language::En, L"three"}}};
    EXPECT_EQ(item.text(Language::De), L"3/drei");
    EXPECT_EQ(item.text(Language::Zh), L"3/three");
}

TEST(EnumItem, TextWithoutTexts_isTheValueAlone)
{
    EXPECT_EQ((EnumItem{L"3", {}}.text(Language::De)), L"3");
}
