// Versions, settings and the time.

#include "importHook.h"
#include "refusedKey.h"
#include "registryText.h"
#include "requests.h"
#include "scriptedPipe.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// Plausibility check

const ExchangeRow rows[] = {
    {.name = "Ova_Plausibilitaet",
     .traceName = "Ova_Plausibilitaet:",
     .call = [](Outputs&) { return Ova_Plausibilitaet(); },
     .request = Message(292).bytes(),
     .otherKind = 30,
     .entry = {">> start"},
     .result = "<< return - 0x0 ",
     .otherKindText = "<< return - Error 0x1e ",
     .failureText = "<< return - 0x1f4c ",
     .shortLines = {"<< return - Error 0x6f "}},
};

INSTANTIATE_TEST_SUITE_P(Machine, ExchangeTest, testing::ValuesIn(rows), rowName);

TEST(Plausibility, FailedExchange_isTracedAsAnError)
{
    fakeChannel()->reset();
    fakeChannel()->answer({});
    const TraceCapture capture("0x80");
    EXPECT_EQ(Ova_Plausibilitaet(), 30);
    EXPECT_THAT(capture.of("Ova_Plausibilitaet:"),
                ElementsAre(TraceLine{"FE", "Ova_Plausibilitaet:", "<< return - Error 0x1e "}));
}

// Versions of the runtime

class RuntimeVersion : public RequestsTest
{
 protected:
    static constexpr char function[] = "GetKXRTSVersion:";
    static constexpr std::size_t slot = 260;

    static Message versions(std::initializer_list<const char*> texts)
    {
        Message reply = resultReply(0);
        for (const char* const text : texts)
            reply.text(text);
        return reply;
    }
    std::string at(std::size_t index) const { return buffer.data() + index * slot; }

    std::vector<char> buffer = std::vector<char>(5 * slot + 1, 'U');
};

TEST_F(RuntimeVersion, Request_hasNoFields)
{
    GetKXRTSVersion(buffer.data());
    EXPECT_THAT(channel.requests(), ElementsAre(Message(214).bytes()));
}

TEST_F(RuntimeVersion, FiveTexts_fillTheSlotsInOrder)
{
    channel.answer(versions({"1.0", "2.0", "", "4.0.0.1", "five"}).bytes());
    EXPECT_EQ(GetKXRTSVersion(buffer.data()), 0);
    EXPECT_EQ(at(0), "1.0");
    EXPECT_EQ(at(1), "2.0");
    EXPECT_EQ(at(2), "");
    EXPECT_EQ(at(3), "4.0.0.1");
    EXPECT_EQ(at(4), "five");
    EXPECT_EQ(buffer.back(), 'U');
}

TEST_F(RuntimeVersion, LongestText_staysInItsSlot)
{
    const std::string longest(259, 'x');
    channel.answer(versions({"1", "2", "3", "4", longest.c_str()}).bytes());
    EXPECT_EQ(GetKXRTSVersion(buffer.data()), 0);
    EXPECT_EQ(at(4), longest);
    EXPECT_EQ(buffer.back(), 'U');
}

TEST_F(RuntimeVersion, TextBeyondItsSlot_is234)
{
    channel.answer(versions({std::string(260, 'x').c_str(), "2", "3", "4", "5"}).bytes());
    EXPECT_EQ(GetKXRTSVersion(buffer.data()), 234);
    EXPECT_EQ(buffer[slot], 'U');
}

TEST_F(RuntimeVersion, MissingTexts_are111)
{
    channel.answer(versions({"1", "2"}).bytes());
    EXPECT_EQ(GetKXRTSVersion(buffer.data()), 111);
}

TEST_F(RuntimeVersion, OtherKind_is30)
{
    const TraceCapture capture("0x80");
    channel.answer(Message(5).u32(0).bytes());
    EXPECT_EQ(GetKXRTSVersion(buffer.data()), 30);
    EXPECT_EQ(buffer[0], 'U');
    EXPECT_THAT(capture.of(function),
                ElementsAre(TraceLine{"FE", function, "<< result= ERROR_READ_FAULT because ucHeader != 4"}));
}

TEST_F(RuntimeVersion, FailingResult_readsNothing)
{
    channel.answer(failure(8012));
    EXPECT_EQ(GetKXRTSVersion(buffer.data()), 8012);
    EXPECT_EQ(buffer[0], 'U');
}

TEST_F(RuntimeVersion, Null_is87WithoutARequest)
{
    const TraceCapture capture;
    EXPECT_EQ(GetKXRTSVersion(nullptr), 87);
    EXPECT_THAT(channel.requests(), IsEmpty());
    EXPECT_THAT(capture.of(function),
                ElementsAre(TraceLine{"FA", function, ">> Start"},
                            TraceLine{"FE", function, "<< GetKXRTSVersion failed! Input Parameter == NULL"}));
}

TEST_F(RuntimeVersion, Trace)
{
    const TraceCapture capture;
    channel.answer(versions({"1", "2", "3", "4", "5"}).bytes());
    GetKXRTSVersion(buffer.data());
    EXPECT_THAT(capture.of(function),
                ElementsAre(TraceLine{"FA", function, ">> Start"}, TraceLine{"FE", function, "<< return 0x0"}));
}

// The default layer-7 time-out

class L7Timeout : public testing::Test
{
 protected:
    static constexpr char function[] = "GetDefaultL7Timeout:";
    static constexpr char key[] = R"(Software\TAVRONE\NORIX\LKM&BlockLibrary\DEFAULT_TIMEOUT)";

    ~L7Timeout() override { RegDeleteTreeA(HKEY_LOCAL_MACHINE, R"(Software\TAVRONE\NORIX\LKM&BlockLibrary)"); }

    const TraceCapture capture;
    char value[260] = "before";
    long length = sizeof value;
};

TEST_F(L7Timeout, UnnamedValue_isRead)
{
    const RegistryText timeout(key, "", "30000");
    EXPECT_EQ(GetDefaultL7Timeout(value, &length), 0);
    EXPECT_STREQ(value, "30000");
    EXPECT_EQ(length, 6);
}

TEST_F(L7Timeout, NothingConfigured_is2)
{
    EXPECT_EQ(GetDefaultL7Timeout(value, &length), 2);
}

TEST_F(L7Timeout, KeyThatRefuses_is5UntilItRefusesNoMore)
{
    const RegistryText timeout(key, "", "30000");
    RefusedKey refused(HKEY_LOCAL_MACHINE, LR"(Software\TAVRONE\NORIX\LKM&BlockLibrary)");
    EXPECT_EQ(GetDefaultL7Timeout(value, &length), ERROR_ACCESS_DENIED);
    EXPECT_STREQ(value, "before");
    refused.giveBack();
    EXPECT_EQ(GetDefaultL7Timeout(value, &length), 0);
    EXPECT_STREQ(value, "30000");
}

TEST_F(L7Timeout, ShortBuffer_isTheRegistrysResult)
{
    const RegistryText timeout(key, "", "30000");
    length = 3;
    EXPECT_EQ(GetDefaultL7Timeout(value, &length), ERROR_MORE_DATA);
}

TEST_F(L7Timeout, NullArguments_are87)
{
    EXPECT_EQ(GetDefaultL7Timeout(nullptr, &length), 87);
    EXPECT_EQ(GetDefaultL7Timeout(value, nullptr), 87);
}

TEST_F(L7Timeout, Trace)
{
    capture.clear();
    GetDefaultL7Timeout(value, &length);
    EXPECT_THAT(capture.of(function), ElementsAre(TraceLine{"FA", function,
                                                            ">> lpszKey=Software\\TAVRONE\\NORIX\\LKM&BlockLibrary "
                                                            "lpszParameter=DEFAULT_TIMEOUT pcbValue=260"}));
}

// Values that other functions read

TEST(UsbAdapter, FirstInstance_isReadFromItsDriver)
{
    ScriptedPipe pipe;
    pipe.answer(textReply(R"(USB\VID_0908&PID_0004\1)"));
    OutText out;
    EXPECT_EQ(GetKxOpusbxVid(out, out), 0);
    EXPECT_EQ(out.text(), R"(USB\VID_0908&PID_0004\1)");
    EXPECT_THAT(
        pipe.requests(),
        ElementsAre(Message(22).str(R"(SYSTEM\CurrentControlSet\Services\kxopusbx64\Enum)").str("0").bytes()));
}

class CurrentLogName : public RequestsTest
{
 protected:
    OutText out;
};

TEST_F(CurrentLogName, IsTheSpecialValue)
{
    channel.answer(textReply("NXONLINE"));
    EXPECT_EQ(GetCurrentLogName(out, out), 0);
    EXPECT_EQ(out.text(), "NXONLINE");
    EXPECT_THAT(channel.requests(), ElementsAre(Message(139).str("DCFG_CurrentLogName").u32(300).bytes()));
}

TEST_F(CurrentLogName, NullBuffer_is87WithoutARequest)
{
    EXPECT_EQ(GetCurrentLogName(nullptr, out), 87);
    EXPECT_THAT(channel.requests(), IsEmpty());
}

// The time

void WINAPI someTime(SYSTEMTIME* time)
{
    *time = {.wYear = 2026,
             .wMonth = 3,
             .wDayOfWeek = 0,
             .wDay = 9,
             .wHour = 5,
             .wMinute = 4,
             .wSecond = 7,
             .wMilliseconds = 42};
}

TEST(DateTime, IsTheLocalTimeWithItsMilliseconds)
{
    const ImportHook hook("GetLocalTime", someTime);
    EXPECT_STREQ(DCFG_CurrentDateTimeCreate(), "2026/03/09 05:04:07:042_");
}

}  // namespace
