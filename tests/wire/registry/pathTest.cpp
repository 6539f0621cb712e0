// What the path functions have in common: the mapping of the path, the string forms, an absent server.

#include "exchangeRow.h"
#include "keys.h"
#include "kxframework.h"
#include "kxovaapi.h"
#include "scriptedPipe.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct Mapping
{
    const char* name;
    const char* path;
    const char* sent;
};

std::ostream& operator<<(std::ostream& out, const Mapping& mapping)
{
    return out << mapping.path;
}

class MappingTest : public testing::TestWithParam<Mapping>
{
};

TEST_P(MappingTest, Path_isSentMappedAndTracedBeforeAndBehind)
{
    ScriptedPipe pipe;
    const TraceCapture capture("0x88");
    EXPECT_EQ(KxRegCreateKey(GetParam().path), 0);
    EXPECT_THAT(pipe.requests(), ElementsAre(Message(2).str(GetParam().sent).bytes()));
    EXPECT_THAT(capture.of("getWoW64Node:"),
                ElementsAre(TraceLine{"FA", "getWoW64Node:", std::string(">> Begin(): ") + GetParam().path},
                            TraceLine{"FE", "getWoW64Node:", std::string("<< End(): ") + GetParam().sent}));
}

INSTANTIATE_TEST_SUITE_P(
    Paths, MappingTest,
    testing::Values(Mapping{"software", R"(SOFTWARE\TAVRONE\NORIX\LogDevices)",
                            R"(software\wow6432node\TAVRONE\NORIX\LogDevices)"},
                    Mapping{"mixedCase", R"(Software\X)", R"(software\wow6432node\X)"},
                    Mapping{"lowerCase", R"(software\x)", R"(software\wow6432node\x)"},
                    Mapping{"nothingBehind", R"(software\)", R"(software\wow6432node\)"},
                    Mapping{"withoutBackslash", "SOFTWARE", "SOFTWARE"},
                    Mapping{"longerWord", R"(softwares\X)", R"(softwares\X)"},
                    Mapping{"theNodeItself", R"(SOFTWARE\WOW6432Node\X)", R"(SOFTWARE\WOW6432Node\X)"},
                    Mapping{"theNodeFurtherDown", R"(SOFTWARE\A\Wow6432NODE)", R"(SOFTWARE\A\Wow6432NODE)"},
                    Mapping{"theNodeInsideAWord", R"(SOFTWARE\xwow6432nodex)", R"(SOFTWARE\xwow6432nodex)"},
                    Mapping{"hardware", R"(Hardware\DeviceMap\SerialComm)", R"(Hardware\DeviceMap\SerialComm)"},
                    Mapping{"system", R"(SYSTEM\CurrentControlSet\software\X)",
                            R"(SYSTEM\CurrentControlSet\software\X)"},
                    Mapping{"leadingBackslash", R"(\software\X)", R"(\software\X)"},  //
                    Mapping{"empty", "", ""}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(PathFunctions, DeletingKeyAndValue_differInTheNumberOfTextsAlone)
{
    ScriptedPipe pipe;
    KxRegDelKey("k");
    KxRegDelValue("k", "v");
    EXPECT_THAT(pipe.requests(), ElementsAre(Message(1).str("k").bytes(), Message(1).str("k").str("v").bytes()));
}

TEST(PathFunctions, CallersKey_staysAsItIs)
{
    ScriptedPipe pipe;
    const std::string key = R"(SOFTWARE\X)";
    KxRegCreateKey(key.c_str());
    EXPECT_EQ(key, R"(SOFTWARE\X)");
}

TEST(PathFunctions, TextLongerThanAPath_arrivesWhole)
{
    ScriptedPipe pipe;
    const std::string longText(2000, 'x');
    pipe.answer(resultReply(0).text(longText).bytes());
    OutText out(4000);
    EXPECT_EQ(KxRegGetValue("k", "v", out, out), 0);
    EXPECT_EQ(out.text(), longText);
}

TEST(PathFunctions, TextBeyondTheRequest_is111AndSendsNothing)
{
    ScriptedPipe pipe;
    const TraceCapture capture("0x80");
    EXPECT_EQ(KxRegSetValue("k", "v", std::string(2100, 'x').c_str()), 111);
    EXPECT_THAT(pipe.requests(), IsEmpty());
    EXPECT_THAT(capture.of("KxRegSetValue:"), ElementsAre(TraceLine{"FE", "KxRegSetValue:", "<< result= 0x6f "}));
}

TEST(PathFunctions, ServerAbsent_isTheErrorOfTheWriteAndTracedSo)
{
    KxRegCreateKey("k");  // gives up what is left of another test's server
    const TraceCapture capture("0x80");
    EXPECT_EQ(KxRegCreateKey("k"), 6);
    EXPECT_THAT(textsAt(capture.of("KxRegCreateKey:"), "FE"), ElementsAre("<< result= 0x6 "));
}

TEST(PathFunctions, ServerAppears_theNextCallFindsIt)
{
    EXPECT_NE(KxRegCreateKey("k"), 0);
    const ScriptedPipe pipe;
    EXPECT_EQ(KxRegCreateKey("k"), 0);
}

TEST(PathFunctions, ServerRestarted_theNextCallFindsTheNewOne)
{
    {
        const ScriptedPipe first;
        EXPECT_EQ(KxRegCreateKey("k"), 0);
    }
    const ScriptedPipe second;
    EXPECT_EQ(KxRegDelKey("k"), 0);
    EXPECT_THAT(second.requests(), ElementsAre(Message(1).str("k").bytes()));
}

// String forms

class PathStrings : public testing::Test
{
 protected:
    ScriptedPipe pipe;
    CString text = "before";
    CString second = "before";
};

TEST_F(PathStrings, GetValue_assigns)
{
    pipe.answer(resultReply(0).text("Ger\xE4t 7").bytes());
    EXPECT_EQ(KxRegGetValue(R"(SOFTWARE\X)", "v", text), 0);
    EXPECT_STREQ(text, "Ger\xE4t 7");
    EXPECT_THAT(pipe.requests(), ElementsAre(Message(22).str(R"(software\wow6432node\X)").str("v").bytes()));
}

TEST_F(PathStrings, GetValue_failureLeavesTheString)
{
    pipe.answer(resultReply(2).bytes());
    EXPECT_EQ(KxRegGetValue("k", "v", text), 2);
    EXPECT_STREQ(text, "before");
}

TEST_F(PathStrings, GetValue_emptyTextIsAssigned)
{
    pipe.answer(resultReply(0).text("").bytes());
    EXPECT_EQ(KxRegGetValue("k", "v", text), 0);
    EXPECT_STREQ(text, "");
}

TEST_F(PathStrings, GetValue_259CharactersFitAnd260DoNot)
{
    pipe.answer(resultReply(0).text(std::string(259, 'x')).bytes());
    EXPECT_EQ(KxRegGetValue("k", "v", text), 0);
    EXPECT_EQ(text.GetLength(), 259);
    pipe.answer(resultReply(0).text(std::string(260, 'y')).bytes());
    EXPECT_EQ(KxRegGetValue("k", "v", text), 234);
    EXPECT_EQ(text[0], 'x');
}

TEST_F(PathStrings, EnumKey_assigns)
{
    pipe.answer(resultReply(0).text("Line 1").bytes());
    EXPECT_EQ(KxRegEnumKey("k", 4, text), 0);
    EXPECT_STREQ(text, "Line 1");
    EXPECT_THAT(pipe.requests(), ElementsAre(Message(21).str("k").u32(4).bytes()));
}

TEST_F(PathStrings, EnumKey_endOfTheListLeavesTheString)
{
    pipe.answer(resultReply(259).bytes());
    EXPECT_EQ(KxRegEnumKey("k", 4, text), 259);
    EXPECT_STREQ(text, "before");
}

TEST_F(PathStrings, EnumValue_assignsBoth)
{
    pipe.answer(resultReply(0).text("COM1").text("Port").bytes());
    EXPECT_EQ(KxRegEnumValue("k", 5, text, second), 0);
    EXPECT_STREQ(text, "COM1");
    EXPECT_STREQ(second, "Port");
    EXPECT_THAT(pipe.requests(), ElementsAre(Message(23).str("k").u32(5).bytes()));
}

TEST_F(PathStrings, EnumValue_failureOfTheSecondTextLeavesBoth)
{
    pipe.answer(resultReply(0).text("COM1").u32(40).bytes());
    EXPECT_EQ(KxRegEnumValue("k", 5, text, second), 111);
    EXPECT_STREQ(text, "before");
    EXPECT_STREQ(second, "before");
}

TEST_F(PathStrings, NullArguments_are87)
{
    EXPECT_EQ(KxRegGetValue(nullptr, "v", text), 87);
    EXPECT_EQ(KxRegGetValue("k", nullptr, text), 87);
    EXPECT_EQ(KxRegEnumKey(nullptr, 0, text), 87);
    EXPECT_EQ(KxRegEnumValue(nullptr, 0, text, second), 87);
    EXPECT_THAT(pipe.requests(), IsEmpty());
}

}  // namespace
