// Display texts of enumerations, in the language of the process.

#include "program.h"
#include "requests.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr char function[] = "DCFG_LogDeviceGetEnumStringLang:";
constexpr char tool[] = R"(C:\Kx\tool.exe)";

class EnumText : public ParamTest
{
 protected:
    long lookUp(const char* parameter, const char* value)
    {
        const Program program(tool, commandLine);
        return DCFG_LogDeviceGetEnumStringLang("Line 1", parameter, value, &text);
    }
    void answerDevice()
    {
        channel.answer(textReply("*TVRA010"));
        channel.answer(textReply("MPI"));
    }

    const char* commandLine = R"(C:\Kx\tool.exe LangExt=C)";
    CString text = "before";
};

TEST_F(EnumText, Baudrate_isTheBoards)
{
    channel.answer(listReply({"2"}));
    answerDevice();
    channel.answer(textReply("187,5 kBit/s"));
    EXPECT_EQ(lookUp("BAUDRATE", "2"), 0);
    EXPECT_STREQ(text, "187,5 kBit/s");
    EXPECT_THAT(channel.requests(),
                ElementsAre(specializedRequest("Line 1", "BAUDRATE"), rawRequest("Line 1", "DeviceID"),
                            rawRequest("Line 1", "CP_TYPE"),
                            resourceRequest({"Boards", "*TVRA010", R"(BaudrateResource\2)"}, "FR")));
}

TEST_F(EnumText, Busparam_isTheProtocols)
{
    channel.answer(listReply({"1"}));
    answerDevice();
    channel.answer(textReply("Standard"));
    EXPECT_EQ(lookUp("busparam", "1"), 0);
    EXPECT_STREQ(text, "Standard");
    EXPECT_EQ(channel.requests().back(), resourceRequest({"Protocols", "MPI", R"(BusparamResource\1)"}, "FR"));
}

TEST_F(EnumText, OtherParameter_asksWithoutAResource)
{
    channel.answer(listReply({"1/one"}));
    answerDevice();
    channel.answer(textReply("un"));
    EXPECT_EQ(lookUp("retries", "1"), 0);
    EXPECT_STREQ(text, "un");
    EXPECT_EQ(channel.requests().back(), resourceRequest({"", "", ""}, "FR"));
}

TEST_F(EnumText, NoDisplayText_isTheItemsOwn)
{
    channel.answer(listReply({"1/one", "2/two/three"}));
    answerDevice();
    channel.answer(failure(8012));
    channel.answer(failure(8012));
    EXPECT_EQ(lookUp("retries", "2"), 0);
    EXPECT_STREQ(text, "two/three");
}

TEST_F(EnumText, NoTextAtAll_isEmpty)
{
    channel.answer(listReply({"1"}));
    answerDevice();
    channel.answer(failure(8012));
    EXPECT_EQ(lookUp("retries", "1"), 0);
    EXPECT_STREQ(text, "");
}

TEST_F(EnumText, LanguageWithoutACode_asksWithNone)
{
    commandLine = R"(C:\Kx\tool.exe LangExt=X)";
    channel.answer(listReply({"1"}));
    answerDevice();
    lookUp("busparam", "1");
    EXPECT_EQ(channel.requests().back(), resourceRequest({"Protocols", "MPI", R"(BusparamResource\1)"}, ""));
}

TEST_F(EnumText, ItemsWithoutAKey_areSkipped)
{
    channel.answer(resultReply(0).list({"", "/x", "1", ""}).bytes());
    answerDevice();
    channel.answer(textReply("one"));
    EXPECT_EQ(lookUp("busparam", "1"), 0);
    EXPECT_EQ(channel.requests().size(), 4u);
}

TEST_F(EnumText, DeviceWithoutBoard_hasTheItemsOwnTexts)
{
    channel.answer(listReply({"1/one"}));
    channel.answer(failure(8012));
    EXPECT_EQ(lookUp("busparam", "1"), 0);
    EXPECT_STREQ(text, "one");
    EXPECT_EQ(channel.requests().size(), 2u);
}

TEST_F(EnumText, DeviceWithoutProtocol_hasTheItemsOwnTexts)
{
    channel.answer(listReply({"1/one"}));
    channel.answer(textReply("*TVRA010"));
    channel.answer(failure(8012));
    EXPECT_EQ(lookUp("busparam", "1"), 0);
    EXPECT_STREQ(text, "one");
}

TEST_F(EnumText, ValueThatIsNoChoice_is259)
{
    channel.answer(listReply({"1/one"}));
    answerDevice();
    channel.answer(failure(8012));
    EXPECT_EQ(lookUp("busparam", "one"), 259);
    EXPECT_STREQ(text, "before");
}

TEST_F(EnumText, NoValue_isTheOneThatTheDeviceHas)
{
    channel.answer(textReply("2"));
    channel.answer(listReply({"1/one", "2/two"}));
    EXPECT_EQ(lookUp("retries", nullptr), 0);
    EXPECT_EQ(channel.requests().front(), rawRequest("Line 1", "retries"));
}

TEST_F(EnumText, NoValueAnywhere_isTheReadersResult)
{
    channel.answer(failure(8012));
    EXPECT_EQ(lookUp("retries", nullptr), 8012);
    EXPECT_EQ(channel.requests().size(), 1u);
}

TEST_F(EnumText, NoList_isTheServersResult)
{
    channel.answer(failure(8012));
    EXPECT_EQ(lookUp("retries", "1"), 8012);
    channel.answer(Message(5).u32(0).bytes());
    EXPECT_EQ(lookUp("retries", "1"), 8621);
    EXPECT_STREQ(text, "before");
}

TEST_F(EnumText, NullArguments_are87)
{
    EXPECT_EQ(DCFG_LogDeviceGetEnumStringLang(nullptr, "p", "1", &text), 87);
    EXPECT_EQ(DCFG_LogDeviceGetEnumStringLang("Line 1", nullptr, "1", &text), 87);
    EXPECT_EQ(DCFG_LogDeviceGetEnumStringLang("Line 1", "p", "1", nullptr), 87);
    EXPECT_THAT(channel.requests(), IsEmpty());
}

TEST_F(EnumText, Trace_found)
{
    const TraceCapture capture;
    channel.answer(textReply("2"));
    channel.answer(listReply({"1/one", "2/two"}));
    channel.answer(failure(8012));
    lookUp("retries", nullptr);
    EXPECT_THAT(
        capture.of(function),
        ElementsAre(TraceLine{"FA", function, ">>lpszLogDevice=Line 1 lpszParameter=retries"},
                    TraceLine{"FM", function, "lRet 0 sIsValue=2"}, TraceLine{"FM", function, "sValue 1 sIsValue=2"},
                    TraceLine{"FM", function, "sValue 2 sIsValue=2"}, TraceLine{"FE", function, "<< ok"}));
    EXPECT_THAT(capture.of("DCFG_TranslateValueList:"),
                ElementsAre(TraceLine{"PA", "DCFG_TranslateValueList:", ">>LogDevice Line 1 Parameter retries"}));
}

TEST_F(EnumText, Trace_notFound)
{
    const TraceCapture capture("0x80");
    channel.answer(listReply({"1/one"}));
    lookUp("retries", "7");
    EXPECT_THAT(capture.of(function), ElementsAre(TraceLine{"FE", function, "<< DCFG_ERR_NO_MORE_ITEMS"}));
}

}  // namespace
