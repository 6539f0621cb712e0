#include "trcLine.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "printPlain.h"

namespace {

using trc::Record;

trc::LineParts sampleParts()
{
    trc::LineParts parts{};
    parts.traceId = "KXOVATDX";
    parts.function = "LogDeviceDel: ";
    parts.module = "CFP";
    parts.sourceFile = "ovaapi/kxovaapi/LogDevSS.cpp";
    parts.text = ">> lpszLogDevice=PLC";
    parts.level = 8;
    parts.line = 42;
    parts.time = {true, 9, 5, 7, 3};
    parts.seconds = 12345678.123456;
    return parts;
}

Record recordOf(const trc::LineParts& parts, int format = trc::formatLong)
{
    Record record;
    trc::buildRecord(record, format, parts);
    return record;
}

std::string lineOf(const trc::LineParts& parts, int format, std::uint32_t pid = 32, std::uint32_t tid = 36)
{
    char line[trc::maxLine + 1];
    const Record record = recordOf(parts, format);
    const std::size_t length = trc::buildLine(line, format, record, pid, tid);
    EXPECT_EQ(std::strlen(line), length);
    return line;
}

// Level tags

struct Tag
{
    std::uint32_t level;
    const char* tag;
};

void PrintTo(const Tag& tag, std::ostream* out)
{
    printHex(*out, tag.level);
}

class LevelTag : public testing::TestWithParam<Tag>
{
};

TEST_P(LevelTag, OfALevel_asTheTableSays)
{
    EXPECT_STREQ(trc::levelTag(GetParam().level), GetParam().tag);
}

INSTANTIATE_TEST_SUITE_P(Table, LevelTag,
                         testing::Values(Tag{0, "##"}, Tag{1, "PA"}, Tag{2, "PX"}, Tag{4, "PE"}, Tag{8, "FA"},
                                         Tag{16, "FR"}, Tag{32, "FW"}, Tag{64, "FM"}, Tag{128, "FE"},
                                         Tag{0x1000000, "L7"}, Tag{0x10000000, "AI"}, Tag{0x20000000, "L2"},
                                         Tag{0x40000000, "L4"}, Tag{0xFFFFFFFF, "--"}, Tag{3, "??"}, Tag{256, "??"},
                                         Tag{8 | 128, "??"}, Tag{0x80000000, "??"}));

// Record columns

TEST(Record, FormatLetter_oneForEachFormatAndNoneForText)
{
    EXPECT_STREQ(recordOf(sampleParts(), trc::formatShort)[0], "S");
    EXPECT_STREQ(recordOf(sampleParts(), trc::formatLong)[0], "L");
    EXPECT_STREQ(recordOf(sampleParts(), trc::formatTime)[0], "T");
    EXPECT_STREQ(recordOf(sampleParts(), trc::formatText)[0], "");
}

TEST(Record, TraceId_exactly8CharactersPaddedOnTheLeft)
{
    trc::LineParts parts = sampleParts();
    parts.traceId = "ABC";
    EXPECT_STREQ(recordOf(parts)[2], "     ABC");
    parts.traceId = "ABCDEFGHIJ";
    EXPECT_STREQ(recordOf(parts)[2], "ABCDEFGH");
}

TEST(Record, Module_exactly3CharactersPaddedOnTheLeft)
{
    trc::LineParts parts = sampleParts();
    parts.module = "X";
    EXPECT_STREQ(recordOf(parts)[32], "  X");
    parts.module = "OVAAPI64";
    EXPECT_STREQ(recordOf(parts)[32], "OVA");
}

TEST(Record, LevelTag_atItsColumn)
{
    EXPECT_STREQ(recordOf(sampleParts())[36], "FA");
}

TEST(Record, TimeOfDay_twoDigitsEachAndThreeOfMilliseconds)
{
    EXPECT_STREQ(recordOf(sampleParts())[65], "09:05:07,003");
    EXPECT_STREQ(recordOf(sampleParts())[73], ",003");
    trc::LineParts parts = sampleParts();
    parts.time = {true, 23, 59, 58, 987};
    EXPECT_STREQ(recordOf(parts)[65], "23:59:58,987");
}

TEST(Record, TimeOfDayUnknown_zeros)
{
    trc::LineParts parts = sampleParts();
    parts.time = {false, 1, 2, 3, 4};
    EXPECT_STREQ(recordOf(parts)[65], "00:00:00,000");
}

TEST(Record, Seconds_27CharactersWithLeadingZeros)
{
    EXPECT_STREQ(recordOf(sampleParts(), trc::formatTime)[65], "00000000000012345678.123456");
}

TEST(Record, SourceFile_withoutFolderAndAtMost12Characters)
{
    trc::LineParts parts = sampleParts();
    EXPECT_STREQ(recordOf(parts)[78], "LogDevSS.cpp");
    parts.sourceFile = "kxovaDataAccessWow.cpp";
    EXPECT_STREQ(recordOf(parts)[78], "kxovaDataAcc");
    parts.sourceFile = "";
    EXPECT_STREQ(recordOf(parts)[78], "");
}

TEST(Record, SourceFile_cutBehindTheLastSeparatorOfEitherKind)
{
    EXPECT_EQ(trc::withoutFolder("c:\\src\\a.cpp"), "a.cpp");
    EXPECT_EQ(trc::withoutFolder("src/sub/a.cpp"), "a.cpp");
    EXPECT_EQ(trc::withoutFolder("c:\\src/sub\\a.cpp"), "a.cpp");
    EXPECT_EQ(trc::withoutFolder("c:\\src\\sub/a.cpp"), "a.cpp");
    EXPECT_EQ(trc::withoutFolder("a.cpp"), "a.cpp");
    EXPECT_EQ(trc::withoutFolder("src/"), "");
}

TEST(Record, LineNumber_5DigitsWithLeadingZeros)
{
    trc::LineParts parts = sampleParts();
    EXPECT_STREQ(recordOf(parts)[91], "00042");
    parts.line = 99999;
    EXPECT_STREQ(recordOf(parts)[91], "99999");
    parts.line = 0;
    EXPECT_STREQ(recordOf(parts)[91], "00000");
}

TEST(Record, LineNumberTooLongOrNegative_staysInItsColumn)
{
    trc::LineParts parts = sampleParts();
    parts.line = 1234567;
    EXPECT_EQ(std::strlen(recordOf(parts)[91]), 5u);
    parts.line = -2147483647 - 1;
    EXPECT_EQ(std::strlen(recordOf(parts)[91]), 5u);
    EXPECT_STREQ(recordOf(parts)[97], "LogDeviceDel: ");
}

TEST(Record, SourceFileAndLine_inTheLongFormatOnly)
{
    for (const int format : {trc::formatShort, trc::formatText}) {
        EXPECT_STREQ(recordOf(sampleParts(), format)[78], "") << format;
        EXPECT_STREQ(recordOf(sampleParts(), format)[91], "") << format;
    }
}

TEST(Record, Function_atMost34Characters)
{
    trc::LineParts parts = sampleParts();
    const std::string name = "1234567890123456789012345678901234567890";
    parts.function = name;
    EXPECT_EQ(recordOf(parts)[97], name.substr(0, 34));
}

TEST(Record, Text_atMost256Characters)
{
    trc::LineParts parts = sampleParts();
    const std::string text = std::string(256, 'x') + "y";
    parts.text = text;
    EXPECT_EQ(recordOf(parts)[132], std::string(256, 'x'));
}

TEST(Record, AllPartsEmpty_everyColumnTerminated)
{
    const Record record = recordOf(trc::LineParts{});
    EXPECT_STREQ(record[2], "        ");
    EXPECT_STREQ(record[32], "   ");
    EXPECT_STREQ(record[97], "");
    EXPECT_STREQ(record[132], "");
}

// Result and sub-code columns

struct Result
{
    std::uint32_t level;
    std::uint32_t result;
    std::uint16_t subCode;
    const char* resultColumn;
    const char* subCodeColumn;
};

void PrintTo(const Result& result, std::ostream* out)
{
    printHex(*out << "level_", result.level);
    printHex(*out << "_result_", result.result);
    printHex(*out << "_sub_", result.subCode);
}

class ResultColumns : public testing::TestWithParam<Result>
{
};

TEST_P(ResultColumns, OfLevelAndResult_asTheRuleSays)
{
    trc::LineParts parts = sampleParts();
    parts.level = GetParam().level;
    parts.result = GetParam().result;
    parts.subCode = GetParam().subCode;
    EXPECT_STREQ(recordOf(parts)[39], GetParam().resultColumn);
    EXPECT_STREQ(recordOf(parts)[52], GetParam().subCodeColumn);
}

INSTANTIATE_TEST_SUITE_P(Table, ResultColumns,
                         testing::Values(Result{128, 0, 0, " 0", "  0000"}, Result{128, 1, 0, " 1", "  0000"},
                                         Result{128, 0xFFFFFFFF, 0, "-1", "  0000"},
                                         Result{128, 0, 0xBEEF, " 0", "  beef"}, Result{4, 1, 0x0A, " 1", "  000a"},
                                         Result{128, 0x21AD, 7, "000021ad", ""},
                                         Result{4, 0xDEADBEEF, 7, "deadbeef", ""}, Result{128, 2, 0, "00000002", ""},
                                         Result{128, 0xFFFFFFFE, 0, "fffffffe", ""},
                                         Result{8 | 4, 0x21AD, 0, "000021ad", ""},
                                         Result{0xFFFFFFFF, 0, 0, " 0", "  0000"},
                                         Result{8, 0x21AD, 7, "  ", "      "}, Result{64, 0, 7, "  ", "      "},
                                         Result{0, 1, 0, "  ", "      "}, Result{2, 0x21AD, 0, "  ", "      "}));

// Lines

TEST(Line, Short_itsColumns)
{
    EXPECT_EQ(lineOf(sampleParts(), trc::formatShort),
              "S KXOVATDX FA CFP          LogDeviceDel:  >> lpszLogDevice=PLC");
}

TEST(Line, Long_itsColumns)
{
    EXPECT_EQ(lineOf(sampleParts(), trc::formatLong),
              "L KXOVATDX P000000032T000000036 FA CFP          09:05:07,003 LogDevSS.cpp,00042 LogDeviceDel:  "
              ">> lpszLogDevice=PLC");
}

TEST(Line, Time_itsColumnsWithTheCutSeconds)
{
    EXPECT_EQ(lineOf(sampleParts(), trc::formatTime),
              "T KXOVATDX FA CFP          45678.123456 LogDeviceDel:  >> lpszLogDevice=PLC");
}

TEST(Line, Text_functionAndTextWithABlankBehindEach)
{
    EXPECT_EQ(lineOf(sampleParts(), trc::formatText), "LogDeviceDel:  >> lpszLogDevice=PLC ");
}

TEST(Line, ResultOfALevelWithResult_codeWithoutSubCode)
{
    trc::LineParts parts = sampleParts();
    parts.level = 128;
    parts.result = 0x21AD;
    EXPECT_EQ(lineOf(parts, trc::formatShort), "S KXOVATDX FE CFP 000021ad LogDeviceDel:  >> lpszLogDevice=PLC");
}

TEST(Line, ResultZero_stateAndSubCode)
{
    trc::LineParts parts = sampleParts();
    parts.level = 128;
    EXPECT_EQ(lineOf(parts, trc::formatShort), "S KXOVATDX FE CFP  0  0000 LogDeviceDel:  >> lpszLogDevice=PLC");
}

TEST(Line, ProcessAndThreadId_9DigitsOrMore)
{
    EXPECT_NE(lineOf(sampleParts(), trc::formatLong, 1234567890, 123456789).find(" P1234567890T123456789 "),
              std::string::npos);
    EXPECT_NE(lineOf(sampleParts(), trc::formatLong, 0, 0xFFFFFFFF).find(" P000000000T-00000001 "),
              std::string::npos);
}

TEST(Line, EverythingAtItsLongest_fitsInEveryFormat)
{
    trc::LineParts parts = sampleParts();
    const std::string longText(300, 'x');
    parts.traceId = parts.function = parts.module = parts.sourceFile = parts.text = longText;
    parts.level = 128;
    parts.result = 0x21AD;
    parts.line = 2147483647;
    parts.seconds = 1e19;
    for (const int format : {trc::formatShort, trc::formatLong, trc::formatTime, trc::formatText}) {
        const std::string line = lineOf(parts, format, 0x80000000, 0x80000000);
        EXPECT_GT(line.size(), 290u) << format;
        EXPECT_LE(line.size(), trc::maxLine) << format;
    }
}

TEST(Line, DoesNotFit_isDropped)
{
    const Record record = recordOf(sampleParts(), trc::formatText);
    const std::size_t length = lineOf(sampleParts(), trc::formatText).size();
    char line[100];
    std::memset(line, 'z', sizeof line);
    EXPECT_EQ(trc::buildLine({line, length}, trc::formatText, record, 1, 1), 0u);
    EXPECT_STREQ(line, "");
    EXPECT_EQ(line[length], 'z');
    EXPECT_EQ(trc::buildLine({line, length + 1}, trc::formatText, record, 1, 1), length);
    EXPECT_EQ(trc::buildLine({line, 0}, trc::formatText, record, 1, 1), 0u);
}

}  // namespace
