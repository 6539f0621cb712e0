// The codes of languages, both ways, in both forms.

#include <gmock/gmock.h>

#include "kxframework.h"
#include "kxovaapi.h"
#include "traceCapture.h"

using testing::ElementsAre;

namespace {

struct Code
{
    const char* name;
    const char* in;
    long result;
    const char* out;  // what the output is afterwards; it was "before"
};

std::ostream& operator<<(std::ostream& stream, const Code& code)
{
    return stream << '"' << code.in << '"';
}

std::string codeName(const testing::TestParamInfo<Code>& info)
{
    return info.param.name;
}

class OsToTalun : public testing::TestWithParam<Code>
{
};

TEST_P(OsToTalun, StringForm_convertsOrLeavesTheOutput)
{
    CString out = "before";
    EXPECT_EQ(ConvertOsToTALUNLanguage(GetParam().in, &out), GetParam().result);
    EXPECT_STREQ(out, GetParam().out);
}

TEST_P(OsToTalun, BufferForm_copiesWhatThereIs)
{
    char out[8] = "before";
    EXPECT_EQ(ConvertOsToTALUNLang(GetParam().in, out), GetParam().result);
    EXPECT_STREQ(out, GetParam().result == 0 ? GetParam().out : "");
}

constexpr Code osCodes[] = {
    {"germanCode", "DE", 0, "A"},
    {"germanAbbreviation", "DEU", 0, "A"},
    {"germanName", "German", 0, "A"},
    {"swissGerman", "des", 0, "A"},
    {"english", "ENU", 0, "B"},
    {"englishName", "ENGLISH", 0, "B"},
    {"french", "fra", 0, "C"},
    {"spanish", "ESP", 0, "D"},
    {"italian", "ITA", 0, "E"},
    {"japaneseCode", "ja", 0, "J"},
    {"japaneseAbbreviation", "JPN", 0, "J"},
    {"simplifiedChinese", "CHS", 0, "K"},
    {"simplifiedChineseInAnyCase", "chs", 0, "K"},
    {"traditionalChinese", "CHT", 0, "B"},
    {"chineseCode", "ZH", 0, "B"},
    {"chineseCodeWithRegion", "zh-CN", 0, "B"},
    {"longerThanChs", "CHSX", 0, "B"},
    {"polish", "PLK", 8012, "before"},
    {"oneLetter", "D", 8012, "before"},
    {"germanInTheMiddle", "XDE", 8012, "before"},
    {"empty", "", 87, "before"},
};
INSTANTIATE_TEST_SUITE_P(Codes, OsToTalun, testing::ValuesIn(osCodes), codeName);

class TalunToOs : public testing::TestWithParam<Code>
{
};

TEST_P(TalunToOs, StringForm_convertsOrLeavesTheOutput)
{
    CString out = "before";
    EXPECT_EQ(ConvertTALUNToOsLanguage(GetParam().in, &out), GetParam().result);
    EXPECT_STREQ(out, GetParam().out);
}

TEST_P(TalunToOs, BufferForm_copiesWhatThereIs)
{
    char out[8] = "before";
    EXPECT_EQ(ConvertTALUNToOsLang(GetParam().in, out), GetParam().result);
    EXPECT_STREQ(out, GetParam().result == 0 ? GetParam().out : "");
}

constexpr Code extensions[] = {
    {"A", "A", 0, "DE"},         {"B", "B", 0, "EN"},
    {"C", "C", 0, "FR"},         {"D", "D", 0, "ES"},
    {"E", "E", 0, "IT"},         {"J", "J", 0, "JA"},
    {"K", "K", 0, "ZH"},         {"lowerCase", "k", 0, "ZH"},
    {"F", "F", 8012, "before"},  {"digit", "1", 8012, "before"},
    {"two", "AB", 87, "before"}, {"blankBehind", "A ", 87, "before"},
    {"empty", "", 87, "before"},
};
INSTANTIATE_TEST_SUITE_P(Codes, TalunToOs, testing::ValuesIn(extensions), codeName);

TEST(LanguageCodes, BufferForms_takeNull)
{
    char out[4] = "xy";
    EXPECT_EQ(ConvertOsToTALUNLang(nullptr, out), 87);
    EXPECT_STREQ(out, "");
    EXPECT_EQ(ConvertOsToTALUNLang("DEU", nullptr), 0);
    EXPECT_EQ(ConvertTALUNToOsLang(nullptr, nullptr), 87);
}

// Callers hand in a buffer for a letter or a code; nothing behind the terminator may be written.
TEST(LanguageCodes, BufferForms_writeTextAndTerminatorAlone)
{
    char out[4] = {'#', '#', '#', '#'};
    ConvertOsToTALUNLang("DEU", out);
    EXPECT_EQ(std::string(out, 4), std::string("A\0##", 4));
    ConvertTALUNToOsLang("B", out);
    EXPECT_EQ(std::string(out, 4), std::string("EN\0#", 4));
}

TEST(LanguageCodes, StringForms_takeNullOutputs)
{
    EXPECT_EQ(ConvertOsToTALUNLanguage("DEU", nullptr), 87);
    EXPECT_EQ(ConvertTALUNToOsLanguage("A", nullptr), 87);
}

TEST(LanguageCodes, Trace_osToTalun)
{
    constexpr char function[] = "ConvertOsToTALUNLanguage:";
    const TraceCapture capture;
    CString out;
    ConvertOsToTALUNLanguage("DEU", &out);
    ConvertOsToTALUNLanguage("PLK", &out);
    EXPECT_THAT(capture.of(function), ElementsAre(TraceLine{"FA", function, ">> sOsLaguage=DEU"},
                                                  TraceLine{"FE", function, "<< return  sAppLaguageExt=A"},
                                                  TraceLine{"FA", function, ">> sOsLaguage=PLK"}));
}

TEST(LanguageCodes, Trace_talunToOs)
{
    constexpr char function[] = "ConvertTALUNToOsLanguage:";
    const TraceCapture capture;
    CString out;
    ConvertTALUNToOsLanguage("k", &out);
    EXPECT_THAT(capture.of(function), ElementsAre(TraceLine{"FA", function, ">> sAppLaguageExt=k"}));
}

}  // namespace
