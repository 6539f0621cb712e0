// Values that are shown in words: what is read for each stored text, and what is sent for each word.

#include <cctype>

#include "exchangeRow.h"
#include "kxovaapi.h"

namespace {

struct Translation
{
    const char* parameter;
    const char* from;
    const char* to;
};

std::ostream& operator<<(std::ostream& out, const Translation& row)
{
    return out << row.parameter << ": " << row.from << " -> " << row.to;
}

std::string translationName(const testing::TestParamInfo<Translation>& info)
{
    return std::string(info.param.parameter) + "_" + info.param.from + "_" + std::to_string(info.index);
}

class TranslationTest : public testing::TestWithParam<Translation>
{
 protected:
    TranslationTest() : channel(*fakeChannel()) { channel.reset(); }
    FakeChannel& channel;
};

using ShownTest = TranslationTest;
using StoredTest = TranslationTest;

TEST_P(ShownTest, StoredText_isReadAsWord)
{
    OutText out;
    channel.answer(resultReply(0).text(GetParam().from).bytes());
    EXPECT_EQ(LogDeviceGetValue("d", GetParam().parameter, out, out), 0);
    EXPECT_EQ(out.text(), GetParam().to);
}

TEST_P(StoredTest, Word_isSentAsStoredText)
{
    EXPECT_EQ(LogDeviceSetValue("d", GetParam().parameter, GetParam().from), 0);
    EXPECT_EQ(channel.requests().at(0), Message(34).str("d").str(GetParam().parameter).str(GetParam().to).bytes());
}

INSTANTIATE_TEST_SUITE_P(Rows, ShownTest,
                         testing::Values(Translation{"soft_entry", "0", "no"},             //
                                         Translation{"soft_entry", "1", "yes"},            //
                                         Translation{"soft_entry", "2", "get_config"},     //
                                         Translation{"soft_entry", "3", "get_config_go"},  //
                                         Translation{"soft_entry", "4", "search_baud"},    //
                                         Translation{"soft_entry", "5", "5"},              //
                                         Translation{"Soft_Entry", "1", "yes"},            //
                                         Translation{"DP_MODE", "false", "NO"},            //
                                         Translation{"DP_MODE", "true", "YES"},            //
                                         Translation{"dp_mode", "TRUE", "YES"},            //
                                         Translation{"DP_MODE", "1", "1"},                 //
                                         Translation{"busparam", "0", "DP"},               //
                                         Translation{"busparam", "1", "STD"},              //
                                         Translation{"busparam", "2", "UNI"},              //
                                         Translation{"busparam", "3", "USER"},             //
                                         Translation{"busparam", "4", "4"},                //
                                         Translation{"subnet_typ", "1", "DP"},             //
                                         Translation{"subnet_typ", "0", "MPI"},            //
                                         Translation{"subnet_typ", "2", "2"},              //
                                         Translation{"busparams", "3", "3"}),
                         translationName);

INSTANTIATE_TEST_SUITE_P(Rows, StoredTest,
                         testing::Values(Translation{"soft_entry", "true", "1"},           //
                                         Translation{"soft_entry", "false", "0"},          //
                                         Translation{"soft_entry", "yes", "1"},            //
                                         Translation{"soft_entry", "no", "0"},             //
                                         Translation{"soft_entry", "search_baud", "4"},    //
                                         Translation{"soft_entry", "get_config", "2"},     //
                                         Translation{"soft_entry", "get_config_go", "3"},  //
                                         Translation{"SOFT_ENTRY", "YES", "1"},            //
                                         Translation{"soft_entry", "maybe", "maybe"},      //
                                         Translation{"DP_MODE", "YES", "true"},            //
                                         Translation{"DP_MODE", "NO", "false"},            //
                                         Translation{"DP_MODE", "true", "true"},           //
                                         Translation{"busparam", "DP", "0"},               //
                                         Translation{"busparam", "STD", "1"},              //
                                         Translation{"busparam", "UNI", "2"},              //
                                         Translation{"busparam", "user", "3"},             //
                                         Translation{"subnet_typ", "DP", "1"},             //
                                         Translation{"subnet_typ", "MPI", "0"},            //
                                         Translation{"subnet_typ", "PPI", "PPI"}),
                         translationName);

TEST(LogDeviceGetValueBuffer, TranslationLongerThanTheBuffer_is234AndLeavesTheLength)
{
    fakeChannel()->reset();
    fakeChannel()->answer(resultReply(0).text("3").bytes());
    OutText out(4);
    EXPECT_EQ(LogDeviceGetValue("d", "busparam", out, out), 234);
    EXPECT_EQ(out.length, 4u);
    EXPECT_TRUE(out.guardsIntact());
}

TEST(LogDeviceGetValueBuffer, TextWithoutRoomForItsTerminator_is234AndTracedSo)
{
    fakeChannel()->reset();
    fakeChannel()->answer(resultReply(0).text("abcd").bytes());
    const TraceCapture capture("0x80");
    OutText out(4);
    EXPECT_EQ(LogDeviceGetValue("d", "Unit", out, out), 234);
    const std::vector<TraceLine> lines = capture.of("LogDeviceGetValue:");
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.front().text, "<< return Error=DCFG_ERR_BUFFER_TOO_SHORT");
}

TEST(LogDeviceGetValueBuffer, NullLength_is234)
{
    fakeChannel()->reset();
    fakeChannel()->answer(resultReply(0).text("abcd").bytes());
    OutText out;
    EXPECT_EQ(LogDeviceGetValue("d", "Unit", out, nullptr), 234);
}

}  // namespace
