#include "trcSettings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <string>

#include "printPlain.h"

namespace {

using trc::Match;

using Values = std::map<std::string, std::string>;

bool readFrom(void* source, const char* name, trc::Value& value)
{
    const Values& values = *static_cast<const Values*>(source);
    const auto found = values.find(name);
    if (found == values.end() || found->second.empty()) return false;
    std::memset(value, 0, sizeof value);
    std::memcpy(value, found->second.data(), std::min(found->second.size(), sizeof value - 1));
    return true;
}

trc::Settings settingsOf(Values values)
{
    return trc::readSettings(readFrom, &values);
}

TEST(Settings, NoValues_defaults)
{
    const trc::Settings settings = settingsOf({});
    EXPECT_EQ(settings.level, 0u);
    EXPECT_EQ(settings.format, 2);
    EXPECT_EQ(settings.output, 4);
    EXPECT_EQ(settings.consult, 0);
    EXPECT_EQ(settings.bytesPerFile, 0);
    EXPECT_EQ(settings.smSize, 0u);
    EXPECT_STREQ(settings.fileBase, "");
    EXPECT_EQ(settings.traceIds.size(), 0u);
}

struct Text
{
    const char* text;
    int number;
};

void PrintTo(const Text& text, std::ostream* out)
{
    printPlain(*out, text.text);
}

class Format : public testing::TestWithParam<Text>
{
};

TEST_P(Format, OfAText_asTheTableSays)
{
    EXPECT_EQ(settingsOf({{"Format", GetParam().text}}).format, GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(Table, Format,
                         testing::Values(Text{"SHORT", 1}, Text{"LONG", 2}, Text{"TIME", 3}, Text{"TEXT", 4},
                                         Text{"short", 1}, Text{"Time", 3}, Text{"tExT", 4}, Text{"SHORT ", 2},
                                         Text{"SHOR", 2}, Text{"1", 2}));

class Output : public testing::TestWithParam<Text>
{
};

TEST_P(Output, OfAText_asTheTableSays)
{
    EXPECT_EQ(settingsOf({{"Output", GetParam().text}}).output, GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(Table, Output,
                         testing::Values(Text{"VXD", 0}, Text{"COM1", 1}, Text{"COM2", 2}, Text{"PIPE", 3},
                                         Text{"FILE", 4}, Text{"SM", 5}, Text{"DBG", 6}, Text{"KXTRACEENGINE", 7},
                                         Text{"vxd", 0}, Text{"Pipe", 3}, Text{"file", 4}, Text{"sm", 5},
                                         Text{"kxTraceEngine", 7}, Text{"COM3", 4}, Text{"5", 4}, Text{"SM ", 4}));

struct Level
{
    const char* text;
    std::uint32_t mask;
};

void PrintTo(const Level& level, std::ostream* out)
{
    printPlain(*out, level.text);
}

class LevelValue : public testing::TestWithParam<Level>
{
};

TEST_P(LevelValue, OfAText_baseFollowsThePrefix)
{
    EXPECT_EQ(settingsOf({{"Level", GetParam().text}}).level, GetParam().mask);
}

INSTANTIATE_TEST_SUITE_P(Table, LevelValue,
                         testing::Values(Level{"0x88", 0x88}, Level{"0XfF", 0xFF}, Level{"136", 136},
                                         Level{"0210", 0210}, Level{"0", 0}, Level{"0xFFFFFFFF", 0xFFFFFFFF},
                                         Level{"4294967295", 0xFFFFFFFF}, Level{"-1", 0xFFFFFFFF},
                                         Level{"99999999999999999999", 0xFFFFFFFF}, Level{" 12", 12},
                                         Level{"12abc", 12}, Level{"0x", 0}, Level{"0xg", 0}, Level{"089", 0},
                                         Level{"abc", 0}, Level{"+8", 8}, Level{"-", 0}, Level{" ", 0}));

TEST(Consult, Decimal_seconds)
{
    EXPECT_EQ(settingsOf({{"Consult", "10"}}).consult, 10);
    EXPECT_EQ(settingsOf({{"Consult", "0010"}}).consult, 10);
    EXPECT_EQ(settingsOf({{"Consult", "99999999999"}}).consult, 2147483647);
}

TEST(Consult, ZeroNegativeOrNoNumber_off)
{
    for (const char* text : {"0", "-5", "soon", "0x10"})
        EXPECT_EQ(settingsOf({{"Consult", text}}).consult, 0) << text;
}

TEST(BytesPerFile, FromOneUpward_taken)
{
    EXPECT_EQ(settingsOf({{"Output", "FILE"}, {"Byte/File", "1"}}).bytesPerFile, 1);
    EXPECT_EQ(settingsOf({{"Output", "file"}, {"Byte/File", "4096"}}).bytesPerFile, 4096);
    EXPECT_EQ(settingsOf({{"Output", "FILE"}, {"Byte/File", "9999999999"}}).bytesPerFile, 2147483647);
}

TEST(BytesPerFile, ZeroNegativeOrNoNumber_notTaken)
{
    for (const char* text : {"0", "-1", "many"}) {
        EXPECT_EQ(settingsOf({{"Output", "FILE"}, {"Byte/File", text}}).bytesPerFile, 0) << text;
    }
}

TEST(SmSize, FromOneUpward_taken)
{
    EXPECT_EQ(settingsOf({{"Output", "SM"}, {"sm_size", "1"}}).smSize, 1u);
    EXPECT_EQ(settingsOf({{"Output", "SM"}, {"sm_size", "3000000000"}}).smSize, 3000000000u);
    EXPECT_EQ(settingsOf({{"Output", "SM"}, {"sm_size", "9999999999"}}).smSize, 4294967295u);
}

TEST(SmSize, ZeroNegativeOrNoNumber_notTaken)
{
    for (const char* text : {"0", "-1", "big"}) {
        EXPECT_EQ(settingsOf({{"Output", "SM"}, {"sm_size", text}}).smSize, 0u) << text;
    }
}

TEST(Settings, ValuesOfAnotherOutput_areNotRead)
{
    const Values all = {{"Byte/File", "7"}, {"Path", "C:\\x"}, {"FileName", "y"}, {"sm_size", "9"}};
    for (const char* output : {"VXD", "COM1", "PIPE", "DBG", "KXTRACEENGINE", "unknown"}) {
        Values values = all;
        values["Output"] = output;
        const trc::Settings settings = settingsOf(values);
        EXPECT_EQ(settings.bytesPerFile, 0) << output;
        EXPECT_STREQ(settings.fileBase, "") << output;
        EXPECT_EQ(settings.smSize, 0u) << output;
    }
    Values values = all;
    values["Output"] = "SM";
    EXPECT_EQ(settingsOf(values).bytesPerFile, 0);
    values["Output"] = "FILE";
    EXPECT_EQ(settingsOf(values).smSize, 0u);
}

TEST(Settings, SizeThatReadsLikeAnOutput_changesNoOutput)
{
    const trc::Settings settings =
        settingsOf({{"Output", "SM"}, {"sm_size", "FILE"}, {"Path", "C:\\x"}, {"Byte/File", "7"}});
    EXPECT_EQ(settings.output, trc::outputSm);
    EXPECT_STREQ(settings.fileBase, "");
}

TEST(FileBase, PathAndName_joined)
{
    EXPECT_STREQ(settingsOf({{"Output", "FILE"}, {"Path", "C:\\Log"}, {"FileName", "Ova"}}).fileBase, "C:\\Log\\Ova");
}

TEST(FileBase, PathEndsWithSeparator_noSecondOne)
{
    EXPECT_STREQ(settingsOf({{"Output", "FILE"}, {"Path", "C:\\Log\\"}, {"FileName", "Ova"}}).fileBase,
                 "C:\\Log\\Ova");
}

TEST(FileBase, PathOnly_defaultName)
{
    EXPECT_STREQ(settingsOf({{"Output", "FILE"}, {"Path", "C:\\Log"}}).fileBase, "C:\\Log\\KxFile");
}

TEST(FileBase, NameOnly_defaultPath)
{
    EXPECT_STREQ(settingsOf({{"Output", "FILE"}, {"FileName", "Ova"}}).fileBase, "C:\\Tmp\\Ova");
}

TEST(FileBase, Name_cutAtItsFirstDot)
{
    EXPECT_STREQ(settingsOf({{"Output", "FILE"}, {"Path", "C:\\a.b"}, {"FileName", "Ova.1.txt"}}).fileBase,
                 "C:\\a.b\\Ova");
    EXPECT_STREQ(settingsOf({{"Output", "FILE"}, {"Path", "C:\\Log"}, {"FileName", ".txt"}}).fileBase, "C:\\Log\\");
}

TEST(FileBase, Neither_notGiven)
{
    EXPECT_STREQ(settingsOf({{"Output", "FILE"}}).fileBase, "");
}

TEST(FileBase, LongestThatFits_taken)
{
    const std::string path = "C:\\" + std::string(200, 'p');
    const std::string name(259 - path.size() - 1, 'n');
    EXPECT_EQ(settingsOf({{"Output", "FILE"}, {"Path", path}, {"FileName", name}}).fileBase, path + "\\" + name);
}

TEST(FileBase, OneCharacterTooLong_notTaken)
{
    const std::string path = "C:\\" + std::string(200, 'p');
    const std::string name(260 - path.size() - 1, 'n');
    EXPECT_STREQ(settingsOf({{"Output", "FILE"}, {"Path", path}, {"FileName", name}}).fileBase, "");
}

TEST(Filters, EachValue_itsOwnList)
{
    const trc::Settings settings = settingsOf({{"FctName", "f"}, {"Module", "m"}, {"String", "s"}, {"TraceId", "t"}});
    EXPECT_TRUE(settings.functions.passes("F", Match::whole));
    EXPECT_FALSE(settings.functions.passes("m", Match::whole));
    EXPECT_TRUE(settings.modules.passes("M", Match::whole));
    EXPECT_TRUE(settings.texts.passes("S", Match::whole));
    EXPECT_TRUE(settings.traceIds.passes("T", Match::whole));
}

}  // namespace
