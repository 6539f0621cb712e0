// Values with requests of their own, and the replication entries.

#include "exchangeRow.h"
#include "kxovaapi.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const ExchangeRow rows[] = {
    {.name = "DCFG_SpecialSetValue",
     .traceName = "DCFG_SpecialSetValue:",
     .call = [](Outputs&) { return DCFG_SpecialSetValue("DCFG_CurrentLogName", "NXONLINE"); },
     .request = Message(138).str("DCFG_CurrentLogName").str("NXONLINE").bytes(),
     .otherKind = 30,
     .entry = {">> lpszParameter=DCFG_CurrentLogName lpszValue=NXONLINE"},
     .shortForm = true},
    {.name = "DCFG_GetBoardAttributeLang",
     .traceName = "DCFG_GetBoardAttribute:",
     .call =
         [](Outputs& out) {
             return DCFG_GetBoardAttributeLang("*TVRA010", "DescText", "DE", out.texts[0], out.texts[0]);
         },
     .request = Message(162).str("*TVRA010").str("DescText").str("DE").u32(1).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "Ger\xE4t"}},
     .entry = {">> lpszDeviceId=*TVRA010 lpszParameter=DescText"}},
    {.name = "DCFG_GetBoardAttributeLang_anyLanguage",
     .traceName = "DCFG_GetBoardAttribute:",
     .call =
         [](Outputs& out) {
             return DCFG_GetBoardAttributeLang("*TVRA010", "DescText", nullptr, out.texts[0], out.texts[0]);
         },
     .request = Message(162).str("*TVRA010").str("DescText").nullStr().u32(1).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "device"}},
     .entry = {">> lpszDeviceId=*TVRA010 lpszParameter=DescText"}},
    {.name = "DCFG_GetDefaultLogDeviceValue",
     .traceName = "DCFG_GetDefaultLogDeviceValue:",
     .call =
         [](Outputs& out) {
             return DCFG_GetDefaultLogDeviceValue("Default MPI", "Unit", out.texts[0], out.texts[0]);
         },
     .request = Message(145).str("Default MPI").str("Unit").u32(300).u32(1).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "12"}},
     .entry = {">> lpszDefaultLogdevice=Default MPI lpszParameter=Unit"}},
};

INSTANTIATE_TEST_SUITE_P(Special, ExchangeTest, testing::ValuesIn(rows), rowName);

const RefusedRow refused[] = {
    {.name = "DCFG_SpecialSetValue_parameter",
     .call = [](Outputs&) { return DCFG_SpecialSetValue(nullptr, "x"); },
     .lines = {{"FA", "DCFG_SpecialSetValue:", ">> lpszParameter=(null) lpszValue=x"}}},
    {.name = "DCFG_SpecialSetValue_value",
     .call = [](Outputs&) { return DCFG_SpecialSetValue("x", nullptr); },
     .lines = {{"FA", "DCFG_SpecialSetValue:", ">> lpszParameter=x lpszValue=(null)"}}},
    {.name = "DCFG_GetBoardAttributeLang_deviceId",
     .call = [](Outputs& out) { return DCFG_GetBoardAttributeLang(nullptr, "x", "DE", out.texts[0], out.texts[0]); },
     .lines = {{"FA", "DCFG_GetBoardAttribute:", ">> lpszDeviceId=(null) lpszParameter=x"}}},
    {.name = "DCFG_GetBoardAttributeLang_parameter",
     .call = [](Outputs& out) { return DCFG_GetBoardAttributeLang("x", nullptr, "DE", out.texts[0], out.texts[0]); },
     .lines = {{"FA", "DCFG_GetBoardAttribute:", ">> lpszDeviceId=x lpszParameter=(null)"}}},
    {.name = "DCFG_GetBoardAttributeLang_buffer",
     .call = [](Outputs& out) { return DCFG_GetBoardAttributeLang("x", "x", "DE", nullptr, out.texts[0]); },
     .lines = {{"FA", "DCFG_GetBoardAttribute:", ">> lpszDeviceId=x lpszParameter=x"}}},
    {.name = "DCFG_GetDefaultLogDeviceValue_name",
     .call = [](Outputs& out) { return DCFG_GetDefaultLogDeviceValue(nullptr, "x", out.texts[0], out.texts[0]); },
     .lines = {{"FA", "DCFG_GetDefaultLogDeviceValue:", ">> lpszDefaultLogdevice=(null) lpszParameter=x"}}},
    {.name = "DCFG_GetDefaultLogDeviceValue_parameter",
     .call = [](Outputs& out) { return DCFG_GetDefaultLogDeviceValue("x", nullptr, out.texts[0], out.texts[0]); },
     .lines = {{"FA", "DCFG_GetDefaultLogDeviceValue:", ">> lpszDefaultLogdevice=x lpszParameter=(null)"}}},
    {.name = "DCFG_GetDefaultLogDeviceValue_buffer",
     .call = [](Outputs& out) { return DCFG_GetDefaultLogDeviceValue("x", "x", nullptr, out.texts[0]); },
     .lines = {{"FA", "DCFG_GetDefaultLogDeviceValue:", ">> lpszDefaultLogdevice=x lpszParameter=x"}}},
};

INSTANTIATE_TEST_SUITE_P(Special, RefusedTest, testing::ValuesIn(refused), refusedName);

TEST(DefaultLogDeviceValue, NullLength_isSentAs0AndEndsWith234)
{
    fakeChannel()->reset();
    fakeChannel()->answer(resultReply(0).text("12").bytes());
    OutText out;
    EXPECT_EQ(DCFG_GetDefaultLogDeviceValue("Default MPI", "Unit", out, nullptr), 234);
    EXPECT_THAT(fakeChannel()->requests(),
                ElementsAre(Message(145).str("Default MPI").str("Unit").u32(0).u32(1).bytes()));
    EXPECT_TRUE(out.bufferUntouched());
}

class ReplicateEntry : public testing::Test
{
 protected:
    ReplicateEntry() : channel(*fakeChannel()) { channel.reset(); }

    FakeChannel& channel;
    const std::string device = "DCFG_TEMP_LOG_DEVICE____REPLICATION";
    const std::string key = R"(SOFTWARE\TAVRONE\NORIX\LogDevices\)" + device;
    const Bytes exists = Message(42).str(key).u32(0).bytes();
    const Bytes set = Message(34).str(device).str("Unit").str("7").bytes();
};

TEST_F(ReplicateEntry, Device_isAskedForByItsPathAndGetsTheValueByItsName)
{
    const TraceCapture capture("0xC8");
    EXPECT_EQ(DCFG_ReplicateEntry("Unit", "7"), 0);
    EXPECT_THAT(channel.requests(), ElementsAre(exists, set));
    EXPECT_THAT(capture.of("DCFG_ReplicateEntry:"),
                ElementsAre(TraceLine{"FA", "DCFG_ReplicateEntry:", ">>lpszEntryName Unit lpszEntryValue 7 "},
                            TraceLine{"FM", "DCFG_ReplicateEntry:", "<< return lRet=0x0"}));
}

TEST_F(ReplicateEntry, DeviceMissing_isTracedAndTheValueSentAllTheSame)
{
    channel.answer(resultReply(8012).bytes());
    const TraceCapture capture("0x40");
    EXPECT_EQ(DCFG_ReplicateEntry("Unit", "7"), 0);
    EXPECT_THAT(channel.requests(), ElementsAre(exists, set));
    EXPECT_THAT(capture.of("DCFG_ReplicateEntry:"),
                ElementsAre(TraceLine{"FM", "DCFG_ReplicateEntry:", "create Repl-Key=" + key},
                            TraceLine{"FM", "DCFG_ReplicateEntry:", "<< return lRet=0x0"}));
}

TEST_F(ReplicateEntry, ValueRefused_is0AllTheSame)
{
    channel.answer(resultReply(0).bytes());
    channel.answer(resultReply(5).bytes());
    EXPECT_EQ(DCFG_ReplicateEntry("Unit", "7"), 0);
}

TEST_F(ReplicateEntry, NullTexts_areSentAsSuch)
{
    EXPECT_EQ(DCFG_ReplicateEntry(nullptr, nullptr), 0);
    EXPECT_EQ(channel.requests().back(), Message(34).str(device).nullStr().nullStr().bytes());
}

}  // namespace
