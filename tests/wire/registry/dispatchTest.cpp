// The dispatch table where a row is more than one request over the channel.

#include "exchangeRow.h"
#include "keys.h"
#include "kxframework.h"
#include "kxovaapi.h"
#include "scriptedPipe.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Dispatch : public testing::Test
{
 protected:
    Dispatch() : channel(*fakeChannel()) { channel.reset(); }

    FakeChannel& channel;
    ScriptedPipe pipe;
    OutText first;
    OutText second;
    CString text = "before";
    const std::string device = keys::logDevices + R"(\Line 1)";
    const std::string name = keys::logNames + R"(\NXONLINE)";
};

// Paths that belong to nobody

TEST_F(Dispatch, EnumKey_otherPathGoesOverThePipe)
{
    pipe.answer(resultReply(0).text("sub").bytes());
    EXPECT_EQ(DCFG_RegGetEnumKey("SYSTEM\\X", 3, first, first), 0);
    EXPECT_EQ(first.text(), "sub");
    EXPECT_THAT(pipe.requests(), ElementsAre(Message(21).str("SYSTEM\\X").u32(3).bytes()));
    EXPECT_THAT(channel.requests(), IsEmpty());
}

TEST_F(Dispatch, EnumKey_keyAboveTheConfigurationIsAnOtherPath)
{
    DCFG_RegGetEnumKey(R"(SOFTWARE\TAVRONE\NORIX)", 0, first, first);
    EXPECT_THAT(pipe.requests(),
                ElementsAre(Message(21).str(R"(software\wow6432node\TAVRONE\NORIX)").u32(0).bytes()));
}

TEST_F(Dispatch, EnumKey_keyOneLetterShortIsAnOtherPath)
{
    DCFG_RegGetEnumKey(keys::logDevices.substr(0, keys::logDevices.size() - 1).c_str(), 0, first, first);
    EXPECT_EQ(pipe.requests().size(), 1u);
}

TEST_F(Dispatch, EnumKey_pathThatGoesOnWithoutABackslashBelongsToTheDevicesToo)
{
    DCFG_RegGetEnumKey((keys::logDevices + "Old").c_str(), 0, first, first);
    EXPECT_THAT(pipe.requests(), IsEmpty());
    EXPECT_EQ(channel.requests().size(), 1u);
}

TEST_F(Dispatch, EnumKey_pathInThe64BitViewIsAnOtherPath)
{
    DCFG_RegGetEnumKey(R"(SOFTWARE\WOW6432Node\TAVRONE\NORIX\LogDevices)", 0, first, first);
    EXPECT_EQ(pipe.requests().size(), 1u);
}

TEST_F(Dispatch, EnumValue_otherPathGoesOverThePipe)
{
    pipe.answer(resultReply(0).text("a").text("b").bytes());
    EXPECT_EQ(DCFG_RegGetEnumValue("SYSTEM\\X", 3, first, first, second, second), 0);
    EXPECT_EQ(first.text() + second.text(), "ab");
    EXPECT_THAT(pipe.requests(), ElementsAre(Message(23).str("SYSTEM\\X").u32(3).bytes()));
}

TEST_F(Dispatch, KeyExists_otherPathAsksNobody)
{
    EXPECT_EQ(DCFG_RegKeyExists(R"(SOFTWARE\TAVRONE)", 0), 8018);
    EXPECT_THAT(pipe.requests(), IsEmpty());
    EXPECT_THAT(channel.requests(), IsEmpty());
}

TEST_F(Dispatch, GetValue_otherPathGoesOverThePipe)
{
    pipe.answer(resultReply(0).text("7").bytes());
    EXPECT_EQ(DCFG_RegGetValue("SYSTEM\\X", "v", &text), 0);
    EXPECT_STREQ(text, "7");
    EXPECT_THAT(pipe.requests(), ElementsAre(Message(22).str("SYSTEM\\X").str("v").bytes()));
}

TEST_F(Dispatch, GetValue_definitionGoesOverThePipe)
{
    pipe.answer(resultReply(0).text("7").bytes());
    EXPECT_EQ(DCFG_RegGetValue((keys::definitions + R"(\CP_TYPE\MPI)").c_str(), "v", &text), 0);
    EXPECT_THAT(
        pipe.requests(),
        ElementsAre(
            Message(22).str(R"(software\wow6432node\TAVRONE\NORIX\DefDevices\CP_TYPE\MPI)").str("v").bytes()));
}

// Results and traces

TEST_F(Dispatch, EnumKey_tracesEntryAndTheObjectsResult)
{
    channel.answer(resultReply(259).bytes());
    const TraceCapture capture("0x88");
    EXPECT_EQ(DCFG_RegGetEnumKey(keys::logDevices.c_str(), 9, first, first), 259);
    EXPECT_THAT(capture.of("DCFG_RegGetEnumKey:"),
                ElementsAre(TraceLine{"FA", "DCFG_RegGetEnumKey:", ">>lpszKey=" + keys::logDevices + " iValue=9"},
                            TraceLine{"FE", "DCFG_RegGetEnumKey:", "<< return 0x103"}));
}

TEST_F(Dispatch, KeyExists_tracesTheObjectsResult)
{
    channel.answer(resultReply(8012).bytes());
    const TraceCapture capture("0x80");
    EXPECT_EQ(DCFG_RegKeyExists(name.c_str(), 0), 8012);
    EXPECT_THAT(capture.of("DCFG_RegKeyExists:"),
                ElementsAre(TraceLine{"FE", "DCFG_RegKeyExists:", ">> return nErr=8012"}));
}

struct DefinitionKey
{
    const char* name;
    const char* path;
    Bytes request;
};

std::ostream& operator<<(std::ostream& out, const DefinitionKey& key)
{
    return out << key.path;
}

class DefinitionExists : public Dispatch, public testing::WithParamInterface<DefinitionKey>
{
};

TEST_P(DefinitionExists, Template_isAskedForByClassAndName)
{
    EXPECT_EQ(DCFG_RegKeyExists((keys::definitions + GetParam().path).c_str(), 0), 0);
    EXPECT_THAT(channel.requests(), ElementsAre(GetParam().request));
}

TEST_P(DefinitionExists, Answer_isTheServersOr30)
{
    const std::string key = keys::definitions + GetParam().path;
    channel.answer(resultReply(8012).bytes());
    EXPECT_EQ(DCFG_RegKeyExists(key.c_str(), 0), 8012);
    channel.answer(Message(5).u32(0).bytes());
    EXPECT_EQ(DCFG_RegKeyExists(key.c_str(), 0), 30);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, DefinitionExists,
    testing::Values(
        DefinitionKey{"board", R"(\DEVICEID\*TVRA010)", Message(133).str("Boards").str("*TVRA010").u32(0).bytes()},
        DefinitionKey{"protocol", R"(\CP_TYPE\MPI)", Message(133).str("Protocols").str("MPI").u32(0).bytes()},
        DefinitionKey{"defaultLogDevice", R"(\DefaultLogDevices\Default MPI)",
                      Message(133).str("DefaultLogDevices").str("Default MPI").u32(0).bytes()},
        DefinitionKey{"noClass", R"(\Other\X)", Message(133).nullStr().str("X").u32(0).bytes()}),
    [](const auto& tested) { return std::string(tested.param.name); });

// Setting a value

TEST_F(Dispatch, SetValue_deviceGetsItAndTheCallerHearsNothingOfItsFailure)
{
    channel.answer(resultReply(8012).bytes());
    const TraceCapture capture("0x80");
    EXPECT_EQ(DCFG_RegSetValue(device.c_str(), "Unit", "7"), 0);
    EXPECT_THAT(channel.requests(), ElementsAre(Message(34).str("Line 1").str("Unit").str("7").bytes()));
    EXPECT_THAT(capture.of("DCFG_RegSetValue:"),
                ElementsAre(TraceLine{"FE", "DCFG_RegSetValue:", "->return nErr=0 lRet=8012"}));
}

TEST_F(Dispatch, SetValue_nameGetsItAndTheCallerHearsNothingOfItsFailure)
{
    channel.fail(99);
    const TraceCapture capture("0x80");
    EXPECT_EQ(DCFG_RegSetValue(name.c_str(), "LogDevice", "Line 1"), 0);
    EXPECT_THAT(channel.requests(), ElementsAre(Message(65).str("NXONLINE").str("LogDevice").str("Line 1").bytes()));
    EXPECT_THAT(capture.of("DCFG_RegSetValue:"),
                ElementsAre(TraceLine{"FE", "DCFG_RegSetValue:", "->return nErr=0 lRet=30"}));
}

TEST_F(Dispatch, SetValue_definitionIsAcceptedAndNobodyAsked)
{
    EXPECT_EQ(DCFG_RegSetValue((keys::definitions + R"(\CP_TYPE\MPI)").c_str(), "a", "b"), 0);
    EXPECT_THAT(channel.requests(), IsEmpty());
    EXPECT_THAT(pipe.requests(), IsEmpty());
}

TEST_F(Dispatch, SetValue_otherPathGoesOverThePipeAndItsFailureIsTheResult)
{
    pipe.answer(resultReply(5).bytes());
    const TraceCapture capture("0x88");
    EXPECT_EQ(DCFG_RegSetValue(R"(SOFTWARE\X)", "a", "b"), 5);
    EXPECT_THAT(pipe.requests(), ElementsAre(Message(3).str(R"(software\wow6432node\X)").str("a").str("b").bytes()));
    EXPECT_THAT(
        capture.of("DCFG_RegSetValue:"),
        ElementsAre(TraceLine{"FA", "DCFG_RegSetValue:", R"(>>lpszKey=SOFTWARE\X lpszParameter=a lpszValue=b)"},
                    TraceLine{"FE", "DCFG_RegSetValue:", "->return nErr=5 lRet=0"}));
}

// String forms

TEST_F(Dispatch, EnumKeyString_assigns)
{
    channel.answer(resultReply(0).text("Line 4").bytes());
    EXPECT_EQ(DCFG_RegGetEnumKey(keys::logDevices.c_str(), 3, &text), 0);
    EXPECT_STREQ(text, "Line 4");
}

TEST_F(Dispatch, EnumKeyString_takesLongNames)
{
    const std::string longName(3000, 'x');
    pipe.answer(resultReply(0).text(longName).bytes());
    EXPECT_EQ(DCFG_RegGetEnumKey("k", 0, &text), 0);
    EXPECT_EQ(text.GetString(), longName);
}

TEST_F(Dispatch, EnumKeyString_endOfTheListLeavesTheString)
{
    channel.answer(resultReply(259).bytes());
    EXPECT_EQ(DCFG_RegGetEnumKey(keys::logNames.c_str(), 3, &text), 259);
    EXPECT_STREQ(text, "before");
}

TEST_F(Dispatch, EnumKeyString_nullIs87)
{
    EXPECT_EQ(DCFG_RegGetEnumKey(nullptr, 3, &text), 87);
    EXPECT_EQ(DCFG_RegGetEnumKey("k", 3, nullptr), 87);
    EXPECT_THAT(pipe.requests(), IsEmpty());
}

TEST_F(Dispatch, GetValueString_assignsAndTracesItsText)
{
    channel.answer(resultReply(0).text("Line 1").bytes());
    const TraceCapture capture("0x88");
    EXPECT_EQ(DCFG_RegGetValue(name.c_str(), "LogDevice", &text), 0);
    EXPECT_STREQ(text, "Line 1");
    char pointer[16];
    std::snprintf(pointer, sizeof pointer, "%x", static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(&text)));
    EXPECT_THAT(
        capture.of("DCFG_RegGetValue:"),
        ElementsAre(
            TraceLine{"FA", "DCFG_RegGetValue:", ">>lpszKey=" + name + " lpszParameter=LogDevice psValue=" + pointer},
            TraceLine{"FE", "DCFG_RegGetValue:", ">> return psValue=Line 1 nErr=0"}));
}

TEST_F(Dispatch, GetValueString_failureLeavesTheString)
{
    channel.answer(resultReply(8012).bytes());
    const TraceCapture capture("0x80");
    EXPECT_EQ(DCFG_RegGetValue(device.c_str(), "Alias", &text), 8012);
    EXPECT_STREQ(text, "before");
    EXPECT_THAT(capture.of("DCFG_RegGetValue:"),
                ElementsAre(TraceLine{"FE", "DCFG_RegGetValue:", ">> return psValue=before nErr=1f4c"}));
}

TEST_F(Dispatch, GetValueString_nullIs87)
{
    EXPECT_EQ(DCFG_RegGetValue("k", "v", static_cast<CString*>(nullptr)), 87);
    EXPECT_EQ(DCFG_RegGetValue(nullptr, "v", &text), 87);
    EXPECT_EQ(DCFG_RegGetValue("k", nullptr, &text), 87);
    EXPECT_THAT(pipe.requests(), IsEmpty());
}

TEST_F(Dispatch, GetValueLang_isTheStringForm)
{
    channel.answer(resultReply(0).text("NX 1").bytes());
    EXPECT_EQ(DCFG_RegGetValueLang(device.c_str(), "Alias", text), 0);
    EXPECT_STREQ(text, "NX 1");
    EXPECT_THAT(channel.requests(), ElementsAre(Message(161).str("Line 1").str("Alias").u32(260).u32(1).bytes()));
}

TEST_F(Dispatch, OlderForms_areRetiredAndAskNobody)
{
    EXPECT_EQ(DCFG_RegGetValue("k", "v", nullptr, nullptr, nullptr), 8018);
    EXPECT_EQ(DCFG_RegSetValue("k", "v", "x", 1), 8018);
    EXPECT_EQ(KxRegCreateKey(HKEY_CURRENT_USER, "k"), 8018);
    EXPECT_EQ(DCFG_RegOpen(HKEY_CURRENT_USER, "k", nullptr, 0), 8018);
    EXPECT_THAT(pipe.requests(), IsEmpty());
    EXPECT_THAT(channel.requests(), IsEmpty());
}

}  // namespace
