// Bus profiles and linked values.

#include "exchangeRow.h"
#include "keys.h"
#include "kxframework.h"
#include "kxovaapi.h"
#include "scriptedPipe.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const ExchangeRow rows[] = {
    {.name = "DCFG_ProfileCollectionExists",
     .traceName = "DCFG_ProfileCollectionExists:",
     .call = [](Outputs&) { return DCFG_ProfileCollectionExists("MPI", R"(x\busparam\dp\a)", "1"); },
     .request = Message(87).str("MPI").str(R"(x\busparam\0\a)").str("1").bytes(),
     .otherKind = 8621,
     .entry = {R"(>>lpszProfile=MPI lpszParameter=x\busparam\dp\a lpszValue=1)",
               R"(>>lpszProfile=MPI lpszParameter=x\busparam\0\a lpszValue=1)"}},
    {.name = "DCFG_ProfileCollectionExists_nullArguments",
     .traceName = "DCFG_ProfileCollectionExists:",
     .call = [](Outputs&) { return DCFG_ProfileCollectionExists(nullptr, nullptr, nullptr); },
     .request = Message(87).nullStr().nullStr().nullStr().bytes(),
     .otherKind = 8621,
     .entry = {">>lpszProfile=(null) lpszParameter=(null) lpszValue=(null)",
               ">>lpszProfile=(null) lpszParameter=(null) lpszValue=(null)"}},
};

INSTANTIATE_TEST_SUITE_P(Profile, ExchangeTest, testing::ValuesIn(rows), rowName);

struct Rewrite
{
    const char* name;
    const char* path;
    const char* sent;
};

std::ostream& operator<<(std::ostream& out, const Rewrite& rewrite)
{
    return out << rewrite.path;
}

class RewriteTest : public testing::TestWithParam<Rewrite>
{
};

TEST_P(RewriteTest, Path_isSentRewritten)
{
    fakeChannel()->reset();
    EXPECT_EQ(DCFG_ProfileCollectionExists("p", GetParam().path, "v"), 0);
    EXPECT_THAT(fakeChannel()->requests(), ElementsAre(Message(87).str("p").str(GetParam().sent).str("v").bytes()));
}

INSTANTIATE_TEST_SUITE_P(
    Paths, RewriteTest,
    testing::Values(Rewrite{"dp", R"(x\busparam\dp\a)", R"(x\busparam\0\a)"},
                    Rewrite{"std", R"(busparam\std\)", R"(busparam\1\)"},
                    Rewrite{"uni", R"(busparam\uni\a)", R"(busparam\2\a)"},
                    Rewrite{"user", R"(busparam\user\a)", R"(busparam\3\a)"},
                    Rewrite{"longerWord", R"(x\busparam\dpx)", R"(x\busparam\dpx)"},
                    Rewrite{"nothingBehind", R"(x\busparam\dp)", R"(x\busparam\dp)"},
                    Rewrite{"elsewhere", R"(x\dp\a)", R"(x\dp\a)"},
                    Rewrite{"markerElsewhere", R"(busparam\a\dp\b)", R"(busparam\a\dp\b)"},
                    Rewrite{"markerElsewhereAndLongerWord", R"(y\dp\busparam\dpx)", R"(y\dp\busparam\0x)"},
                    Rewrite{"otherCase", R"(busparam\DP\a)", R"(busparam\DP\a)"},
                    Rewrite{"two", R"(busparam\dp\busparam\user\a)", R"(busparam\0\busparam\3\a)"},
                    Rewrite{"empty", "", ""}),
    [](const auto& tested) { return std::string(tested.param.name); });

class Profiles : public testing::Test
{
 protected:
    Profiles() : channel(*fakeChannel()) { channel.reset(); }

    static Bytes readsValue(const char* parameter)
    {
        return Message(217).str("Line 1").nullStr().u32(0).str(parameter).u32(260).bytes();
    }
    static Bytes busprofile(std::uint32_t index) { return Message(178).str("MPI").u32(index).u32(260).bytes(); }
    static Bytes baudrate(const char* profile, std::uint32_t index)
    {
        return Message(179).str("MPI").str(profile).u32(index).u32(260).bytes();
    }
    void answerText(const char* reply) { channel.answer(resultReply(0).text(reply).bytes()); }
    void answerResult(std::uint32_t result) { channel.answer(resultReply(result).bytes()); }

    std::vector<std::string> items() const
    {
        std::vector<std::string> all;
        for (POSITION at = list.GetHeadPosition(); at;)
            all.emplace_back(list.GetNext(at).GetString());
        return all;
    }

    FakeChannel& channel;
    OutText out;
    CString text = "before";
    CStringList list;
    const Bytes set = Message(34).str("Line 1").str("baudrate").str("187500").bytes();
};

// The texts of the profiles

TEST_F(Profiles, EnumLang_isTheTextOfTheProfile)
{
    answerText("1");
    answerText("Standard");
    EXPECT_EQ(DCFG_ProtocolGetEnumBusprofilesLang("MPI", 2, "DE", out, out), 0);
    EXPECT_EQ(out.text(), "Standard");
    EXPECT_THAT(
        channel.requests(),
        ElementsAre(
            busprofile(2),
            Message(134).str("Protocols").str("MPI").str(R"(BusparamResource\1)").str("DE").u32(300).u32(1).bytes()));
}

TEST_F(Profiles, EnumLang_profileWithoutATextIsShownByItsName)
{
    answerText("1");
    answerResult(8012);
    EXPECT_EQ(DCFG_ProtocolGetEnumBusprofilesLang("MPI", 2, "DE", out, out), 0);
    EXPECT_EQ(out.text(), "1");
}

TEST_F(Profiles, EnumLang_endOfTheListIs259AndAsksForNoText)
{
    answerResult(259);
    EXPECT_EQ(DCFG_ProtocolGetEnumBusprofilesLang("MPI", 2, "DE", out, out), 259);
    EXPECT_EQ(channel.requests().size(), 1u);
    EXPECT_TRUE(out.bufferUntouched());
}

TEST_F(Profiles, EnumLang_textThatDoesNotFitIs234AndSaysTheRoomItNeeds)
{
    out.reset(8);
    answerText("1");
    answerText("Standard");
    EXPECT_EQ(DCFG_ProtocolGetEnumBusprofilesLang("MPI", 2, "DE", out, out), 234);
    EXPECT_EQ(out.length, 9u);
    EXPECT_TRUE(out.guardsIntact());
}

TEST_F(Profiles, EnumLang_nullArgumentsAre87)
{
    EXPECT_EQ(DCFG_ProtocolGetEnumBusprofilesLang(nullptr, 2, "DE", out, out), 87);
    EXPECT_EQ(DCFG_ProtocolGetEnumBusprofilesLang("MPI", 2, "DE", nullptr, out), 87);
    EXPECT_EQ(DCFG_ProtocolGetEnumBusprofilesLang("MPI", 2, "DE", out, nullptr), 87);
    EXPECT_THAT(channel.requests(), IsEmpty());
}

// Setting a value with its profile

const Bytes setProfile =
    Message(121).str("Line 1").str(R"(SOFTWARE\TAVRONE\NORIX\DefDevices\CP_TYPE\MPI\Params)").str("baudrate").bytes();

TEST_F(Profiles, EnumSetProfile_setsTheValueAndThenTheProfileOfItsProtocol)
{
    answerResult(0);
    answerText("MPI");
    answerResult(0);
    const TraceCapture capture("0x88");
    EXPECT_EQ(DCFG_LogDeviceEnumSetProfile("Line 1", "baudrate", "187500"), 0);
    EXPECT_THAT(channel.requests(), ElementsAre(set, readsValue("CP_TYPE"), setProfile));
    EXPECT_THAT(
        capture.of("DCFG_LogDeviceEnumSetProfile:"),
        ElementsAre(
            TraceLine{"FA", "DCFG_LogDeviceEnumSetProfile:", ">> lpszLogDevice=Line 1 lpszParameter=baudrate"},
            TraceLine{"FE", "DCFG_LogDeviceEnumSetProfile:", "<< return 0"}));
}

TEST_F(Profiles, EnumSetProfile_profilesResultIsPassedOn)
{
    answerResult(0);
    answerText("MPI");
    answerResult(8012);
    const TraceCapture capture("0x80");
    EXPECT_EQ(DCFG_LogDeviceEnumSetProfile("Line 1", "baudrate", "187500"), 8012);
    EXPECT_THAT(capture.of("DCFG_LogDeviceEnumSetProfile:"),
                ElementsAre(TraceLine{"FE", "DCFG_LogDeviceEnumSetProfile:", "<< return 8012"}));
}

TEST_F(Profiles, EnumSetProfile_valueRefusedIs8062AndNothingElseIsAsked)
{
    answerResult(5);
    const TraceCapture capture("0x80");
    EXPECT_EQ(DCFG_LogDeviceEnumSetProfile("Line 1", "baudrate", "187500"), 8062);
    EXPECT_THAT(channel.requests(), ElementsAre(set));
    EXPECT_THAT(
        capture.of("DCFG_LogDeviceEnumSetProfile:"),
        ElementsAre(TraceLine{"FE", "DCFG_LogDeviceEnumSetProfile:", "<< return ERROR DCFG_PROFILE_NO_VALUE"}));
}

TEST_F(Profiles, EnumSetProfile_deviceWithoutAProtocolIs8062)
{
    answerResult(0);
    answerResult(8012);
    const TraceCapture capture("0x80");
    EXPECT_EQ(DCFG_LogDeviceEnumSetProfile("Line 1", "baudrate", "187500"), 8062);
    EXPECT_THAT(channel.requests(), ElementsAre(set, readsValue("CP_TYPE")));
    EXPECT_THAT(
        capture.of("DCFG_LogDeviceEnumSetProfile:"),
        ElementsAre(TraceLine{"FE", "DCFG_LogDeviceEnumSetProfile:", "<< return ERROR DCFG_PROFILE_NO_VALUE"}));
}

TEST_F(Profiles, EnumSetProfile_nullArgumentsAreSentAsSuch)
{
    answerResult(5);
    EXPECT_EQ(DCFG_LogDeviceEnumSetProfile(nullptr, nullptr, nullptr), 8062);
    EXPECT_THAT(channel.requests(), ElementsAre(Message(34).nullStr().nullStr().nullStr().bytes()));
}

TEST_F(Profiles, EnumSetProfileEx_isTheSame)
{
    answerResult(0);
    answerText("MPI");
    answerResult(0);
    EXPECT_EQ(DCFG_LogDeviceEnumSetProfileEx("Line 1", "baudrate", "187500"), 0);
    EXPECT_THAT(channel.requests(), ElementsAre(set, readsValue("CP_TYPE"), setProfile));
}

// Linked values

const std::string params = R"(software\wow6432node\TAVRONE\NORIX\DefDevices\CP_TYPE\MPI\Params)";

TEST_F(Profiles, LinkedValue_isTheOneOfTheProtocolsDefinition)
{
    ScriptedPipe pipe;
    answerText("MPI");
    pipe.answer(resultReply(0).text("126").bytes());
    EXPECT_EQ(DCFG_LogDeviceGetLinkedValue("Line 1", "highest_adr", &text), 0);
    EXPECT_STREQ(text, "126");
    EXPECT_THAT(channel.requests(), ElementsAre(readsValue("CP_TYPE")));
    EXPECT_THAT(pipe.requests(), ElementsAre(Message(22).str(params).str("highest_adr").bytes()));
}

TEST_F(Profiles, LinkedValue_ofADeviceWithoutAProtocolIsThatFailure)
{
    answerResult(8012);
    EXPECT_EQ(DCFG_LogDeviceGetLinkedValue("Line 1", "highest_adr", &text), 8012);
    EXPECT_STREQ(text, "before");
}

TEST_F(Profiles, LinkedValue_nullArgumentsAre87)
{
    EXPECT_EQ(DCFG_LogDeviceGetLinkedValue(nullptr, "x", &text), 87);
    EXPECT_EQ(DCFG_LogDeviceGetLinkedValue("x", nullptr, &text), 87);
    EXPECT_EQ(DCFG_LogDeviceGetLinkedValue("x", "x", nullptr), 87);
    EXPECT_THAT(channel.requests(), IsEmpty());
}

// Lists of valid values

TEST_F(Profiles, ValidEnumList_ofBusparamIsTheProtocolsProfiles)
{
    answerText("MPI");
    answerText("1");
    answerText("3");
    answerResult(259);
    EXPECT_EQ(DCFG_LogDeviceGetValidEnumList("Line 1", "BUSPARAM", &list), 0);
    EXPECT_THAT(items(), ElementsAre("1", "3"));
    EXPECT_THAT(channel.requests(), ElementsAre(readsValue("CP_TYPE"), busprofile(0), busprofile(1), busprofile(2)));
}

TEST_F(Profiles, ValidEnumList_ofBaudrateIsTheRatesOfTheDevicesProfile)
{
    answerText("MPI");
    answerText("1");
    answerText("9600");
    answerResult(259);
    list.AddTail("before");
    EXPECT_EQ(DCFG_LogDeviceGetValidEnumList("Line 1", "baudrate", &list), 0);
    EXPECT_THAT(items(), ElementsAre("before", "9600"));
    EXPECT_THAT(channel.requests(),
                ElementsAre(readsValue("CP_TYPE"), readsValue("busparam"), baudrate("1", 0), baudrate("1", 1)));
}

TEST_F(Profiles, ValidEnumList_ofBaudrateWithoutAProfileAsksForTheProtocolsOwn)
{
    answerText("MPI");
    answerResult(8012);
    answerText("9600");
    answerResult(259);
    EXPECT_EQ(DCFG_LogDeviceGetValidEnumList("Line 1", "baudrate", &list), 0);
    EXPECT_THAT(items(), ElementsAre("9600"));
    EXPECT_EQ(channel.requests().back(), baudrate("", 1));
}

TEST_F(Profiles, ValidEnumList_enumerationThatFailsLeavesTheList)
{
    answerText("MPI");
    answerText("1");
    channel.fail(99);
    EXPECT_EQ(DCFG_LogDeviceGetValidEnumList("Line 1", "busparam", &list), 30);
    EXPECT_THAT(items(), IsEmpty());
}

TEST_F(Profiles, ValidEnumList_ofAnyOtherParameterIsTheItemsOfItsLinkedValue)
{
    ScriptedPipe pipe;
    answerText("MPI");
    pipe.answer(resultReply(0).text("a, b;;c ").bytes());
    EXPECT_EQ(DCFG_LogDeviceGetValidEnumList("Line 1", "mode", &list), 0);
    EXPECT_THAT(items(), ElementsAre("a", "b", "c"));
    EXPECT_THAT(pipe.requests(), ElementsAre(Message(22).str(params).str("mode").bytes()));
}

TEST_F(Profiles, ValidEnumList_withoutALinkedValueIsItsFailureAndLeavesTheList)
{
    ScriptedPipe pipe;
    answerText("MPI");
    pipe.answer(resultReply(2).bytes());
    EXPECT_EQ(DCFG_LogDeviceGetValidEnumList("Line 1", "mode", &list), 2);
    EXPECT_THAT(items(), IsEmpty());
}

TEST_F(Profiles, ValidEnumList_nullArgumentsAre87)
{
    EXPECT_EQ(DCFG_LogDeviceGetValidEnumList(nullptr, "x", &list), 87);
    EXPECT_EQ(DCFG_LogDeviceGetValidEnumList("x", nullptr, &list), 87);
    EXPECT_EQ(DCFG_LogDeviceGetValidEnumList("x", "x", nullptr), 87);
    EXPECT_THAT(channel.requests(), IsEmpty());
}

}  // namespace
