// The reader of command-line parameters.

#include <gmock/gmock.h>

#include "kxframework.h"
#include "kxovaapi.h"
#include "program.h"
#include "traceCapture.h"

using testing::ElementsAre;

namespace {

constexpr char path[] = R"(C:\Program Files\Kx\kxovatsx.exe)";
const std::string quotedPath = std::string("\"") + path + "\" ";
constexpr char function[] = "DCFG_GetCmdLineParameter:";

long parameter(const std::string& commandLine, const char* name, CString& value, int index = 0)
{
    const Program program(path, "");
    return DCFG_GetCmdLineParameter(commandLine.c_str(), name, value, index);
}

struct Line
{
    const char* name;
    std::string commandLine;
    const char* parameter;
    const char* value;  // NULL: the parameter is not there
    int index = 0;
};

std::ostream& operator<<(std::ostream& stream, const Line& line)
{
    return stream << line.commandLine << "  [" << line.parameter << ']';
}

class CommandLine : public testing::TestWithParam<Line>
{
};

TEST_P(CommandLine, Parameter_isFoundWithItsValueOrTheStringStays)
{
    CString value = "before";
    const long result = parameter(GetParam().commandLine, GetParam().parameter, value, GetParam().index);
    EXPECT_EQ(result, GetParam().value ? 0 : 259);
    EXPECT_STREQ(value, GetParam().value ? GetParam().value : "before");
}

const Line lines[] = {
    // Where the parameters begin
    {"quotedPath", quotedPath + "App=Talun", "App=", "Talun"},
    {"barePath", std::string(path) + " App=Talun", "App=", "Talun"},
    {"quoteWithoutBlankBehindThePath", std::string("\"") + path + "\"App=Talun", "App=", "Talun"},
    {"severalBlanksBehindThePath", quotedPath + "   App=Talun", "App=", "Talun"},
    {"pathAlone", std::string("\"") + path + "\"", "App=", nullptr},
    {"pathWithNothingBehind", path, "App=", nullptr},
    {"pathTwice_firstCounts", quotedPath + "\"" + path + "\" App=Talun", "App=", "Talun"},
    {"programWithoutItsPath", "kxovatsx App=Talun", "App=", "Talun"},
    {"empty", "", "App=", nullptr},

    // Names
    {"nameInAnyCase", quotedPath + "APP=Talun", "app=", "Talun"},
    {"nameInTheMiddleOfAWord", quotedPath + "MyApp=Talun", "App=", nullptr},
    {"nameBehindADash", quotedPath + "-App=Talun", "App=", nullptr},
    {"nameWithoutValue", quotedPath + "App= LangExt=C", "App=", ""},
    {"nameAlone_isNotTheOneWithEquals", quotedPath + "App Talun", "App=", nullptr},
    {"emptyName", quotedPath + "App=Talun", "", nullptr},
    {"second", quotedPath + "-x LangExt=C App=Talun", "LangExt=", "C"},
    {"valueWithEquals", quotedPath + "App=a=b", "App=", "a=b"},
    {"equalsAlone_isAName", quotedPath + "= x", "=", "x"},

    // The value is the next word
    {"nextWord", quotedPath + "WinLang ENU", "WinLang", "ENU"},
    {"nextWordBehindSeveralBlanks", quotedPath + "WinLang   ENU", "WinLang", "ENU"},
    {"nextWordWithADash", quotedPath + "WinLang -q", "WinLang", ""},
    {"noNextWord", quotedPath + "-q WinLang", "WinLang", ""},
    {"longerWordThatBeginsWithTheName", quotedPath + "WinLanguage ENU", "WinLang", "ENU"},
    {"nameFollowedByEquals", quotedPath + "WinLang=DEU ENU", "WinLang", "ENU"},

    // Quotes
    {"quotedValue", quotedPath + "App=\"My Program\" x", "App=", "My Program"},
    {"quotedValueOfOneWord", quotedPath + "App=\"Talun\" x", "App=", "Talun"},
    {"quotedValueOfThreeWords", quotedPath + "App=\"a b c\" x", "App=", "a b c"},
    {"quotedValueKeepsItsBlanks", quotedPath + "App=\"a  b\" x", "App=", "a  b"},
    {"quotedEmptyValue", quotedPath + "App=\"\" x", "App=", ""},
    {"quotedValueWithoutEnd", quotedPath + "App=\"a b", "App=", "a b"},
    {"quotedValueAtTheEnd", quotedPath + "App=\"a b\"", "App=", "a b"},
    {"quotedNextWord", quotedPath + "WinLang \"E N U\" x", "WinLang", "E N U"},
    {"quotedNextWordWithADash", quotedPath + "WinLang \"-E N\" x", "WinLang", "-E N"},
    {"behindAQuotedValue", quotedPath + "App=\"a b\" LangExt=C", "LangExt=", "C"},

    // Index
    {"indexZero", quotedPath + "f=1 f=2 f=3", "f=", "1", 0},
    {"indexOne", quotedPath + "f=1 f=2 f=3", "f=", "2", 1},
    {"indexTwo", quotedPath + "f=1 f=2 f=3", "f=", "3", 2},
    {"indexBeyond", quotedPath + "f=1 f=2 f=3", "f=", nullptr, 3},
    {"indexBelowZero", quotedPath + "f=1 f=2", "f=", "1", -1},
};
INSTANTIATE_TEST_SUITE_P(Lines, CommandLine, testing::ValuesIn(lines),
                         [](const auto& tested) { return std::string(tested.param.name); });

std::vector<TraceLine> details(const std::vector<std::string>& texts)
{
    std::vector<TraceLine> all;
    for (const std::string& text : texts)
        all.push_back({"FM", function, text});
    return all;
}

TEST(CommandLineTrace, Found)
{
    const TraceCapture capture;
    CString value;
    parameter(quotedPath + "-q App=Talun x", "App=", value);
    std::vector<TraceLine> expected = details({
        "lpszCommandLine=" + quotedPath + "-q App=Talun x",
        "strCmdLine=" + quotedPath + "-q App=Talun x komplett",
        "strCmdLine= -q App=Talun x ohne Modulename len=15",
        "strCmdLine= -q App=Talun x vor TrimLeft",
        "strCmdLine=-q App=Talun x nach TrimLeft",
        "vor while-Schleife 1 strCmdLine=-q App=Talun x",
        "strCmdLine=App=Talun x strCmd=-q strHlp=-q",
        "strCmdLine=x strCmd=App=Talun strHlp=App=",
        "found bMoreFollws=0",
    });
    expected.insert(expected.begin(), TraceLine{"FA", function, ">> strParameter=App= iIndex=0"});
    expected.push_back({"FE", function, "<< return ok strValue = Talun"});
    EXPECT_EQ(capture.of(function), expected);
}

TEST(CommandLineTrace, ValueInTheNextWord)
{
    const TraceCapture capture("0x40");
    CString value;
    parameter(quotedPath + "WinLang ENU", "WinLang", value);
    EXPECT_THAT(capture.of(function), testing::Contains(TraceLine{"FM", function, "found bMoreFollws=1"}));
}

TEST(CommandLineTrace, Absent)
{
    const TraceCapture capture("0x80");
    CString value;
    parameter(quotedPath, "App=", value);
    EXPECT_THAT(capture.of(function), ElementsAre(TraceLine{"FE", function, "<< return DCFG_ERR_NO_MORE_ITEMS"}));
}

TEST(CommandLineTrace, EmptyCommandLine)
{
    const TraceCapture capture;
    CString value;
    parameter("", "App=", value, 2);
    EXPECT_THAT(capture.of(function), ElementsAre(TraceLine{"FA", function, ">> strParameter=App= iIndex=2"},
                                                  TraceLine{"FM", function, "lpszCommandLine="},
                                                  TraceLine{"FE", function, "<< return DCFG_ERR_NO_MORE_ITEMS"}));
}

TEST(CommandLineTrace, ForeignProgram_isNotedAndReadAllTheSame)
{
    const TraceCapture capture("0x40");
    const Program program(R"(C:\x\tool.exe)", "");
    CString value;
    EXPECT_EQ(DCFG_GetCmdLineParameter(R"(C:\x\tool.exe App=Talun)", "App=", value, 0), 0);
    EXPECT_THAT(capture.of(function),
                testing::Contains(TraceLine{"FM", function, "Achtung: Aufruf nicht von kxovatsx!!"}));
}

TEST(CommandLineTrace, OwnProgramInAnyCase_isNotNoted)
{
    const TraceCapture capture("0x40");
    const Program program(R"(C:\x\KXOVATSX.EXE)", "");
    CString value;
    EXPECT_EQ(DCFG_GetCmdLineParameter(R"(C:\x\KXOVATSX.EXE App=Talun)", "App=", value, 0), 0);
    EXPECT_THAT(capture.of(function),
                testing::Not(testing::Contains(TraceLine{"FM", function, "Achtung: Aufruf nicht von kxovatsx!!"})));
}

TEST(CommandLinePath, ServerUnderAnotherSpelling_hasNoParameters)
{
    const Program program(R"(C:\Kx\kxovasrvx.exe)", "");
    CString value = "before";
    EXPECT_EQ(DCFG_GetCmdLineParameter("kxovasrvx run App=Talun", "App=", value, 0), 259);
    EXPECT_STREQ(value, "before");
}

TEST(CommandLinePath, ServerUnderItsPath_hasParameters)
{
    const Program program(R"(C:\Kx\kxovasrvx.exe)", "");
    CString value;
    EXPECT_EQ(DCFG_GetCmdLineParameter(R"("C:\Kx\kxovasrvx.exe" run App=Talun)", "App=", value, 0), 0);
    EXPECT_STREQ(value, "Talun");
}

TEST(CommandLinePath, PathThatCannotBeSplit_isTheSplittersError)
{
    const TraceCapture capture("0x80");
    const std::string longExtension = R"(C:\x\tool.)" + std::string(64, 'e');
    const Program program(longExtension.c_str(), "");
    CString value = "before";
    EXPECT_EQ(DCFG_GetCmdLineParameter((longExtension + " App=Talun").c_str(), "App=", value, 0), ERANGE);
    EXPECT_STREQ(value, "before");
    EXPECT_THAT(capture.of(function), ElementsAre(TraceLine{"FE", function, "<< return ERROR 34"}));
}

}  // namespace
