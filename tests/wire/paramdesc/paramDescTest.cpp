// One attribute of a description.

#include "program.h"
#include "requests.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr char function[] = "LogDeviceGetParamDesc:";

class ParamDesc : public ParamTest
{
 protected:
    long read(const char* parameter = "baudrate", const char* attribute = "max")
    {
        return LogDeviceGetParamDesc("Line 1", parameter, attribute, &value);
    }
    std::string entry(const char* parameter = "baudrate", const char* attribute = "max") const
    {
        char text[200];
        std::snprintf(text, sizeof text, "lpszLogDevice=Line 1 lpszParameter=%s lpszValue=%s psParamValue=0x%08X",
                      parameter, attribute, static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(&value)));
        return text;
    }

    CString value = "before";
};

TEST_F(ParamDesc, Request_isByteForByte)
{
    read();
    EXPECT_THAT(channel.requests(), ElementsAre(descRequest("Line 1", "baudrate", "max")));
}

TEST_F(ParamDesc, Text_isAssigned)
{
    channel.answer(textReply("Ger\xE4t 7"));
    EXPECT_EQ(read(), 0);
    EXPECT_STREQ(value, "Ger\xE4t 7");
}

TEST_F(ParamDesc, Text_of259CharactersFitsAnd260DoNot)
{
    channel.answer(textReply(std::string(259, 'x')));
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(value.GetLength(), 259);
    channel.answer(textReply(std::string(260, 'y')));
    EXPECT_EQ(read(), 234);
    EXPECT_EQ(value[0], 'x');
}

TEST_F(ParamDesc, Failures_leaveTheString)
{
    channel.answer(failure(8012));
    EXPECT_EQ(read(), 8012);
    channel.answer(Message(5).u32(0).bytes());
    EXPECT_EQ(read(), 8621);
    channel.answer({4, 0, 0, 0});
    EXPECT_EQ(read(), 111);
    channel.answer({});
    EXPECT_EQ(read(), 30);
    channel.answer(resultReply(0).u32(40).bytes());
    EXPECT_EQ(read(), 111);
    EXPECT_STREQ(value, "before");
}

TEST_F(ParamDesc, NullArguments_are87WithoutARequest)
{
    EXPECT_EQ(LogDeviceGetParamDesc(nullptr, "p", "max", &value), 87);
    EXPECT_EQ(LogDeviceGetParamDesc("Line 1", nullptr, "max", &value), 87);
    EXPECT_EQ(LogDeviceGetParamDesc("Line 1", "p", nullptr, &value), 87);
    EXPECT_EQ(LogDeviceGetParamDesc("Line 1", "p", "max", nullptr), 87);
    EXPECT_THAT(channel.requests(), IsEmpty());
}

TEST_F(ParamDesc, Trace_success)
{
    const TraceCapture capture;
    channel.answer(textReply("100"));
    read();
    EXPECT_THAT(capture.of(function),
                ElementsAre(TraceLine{"FA", function, entry()}, TraceLine{"FE", function, "<< return 0x0"}));
}

TEST_F(ParamDesc, Trace_failures)
{
    const TraceCapture capture("0x80");
    channel.answer(failure(8012));
    read();
    channel.answer({4, 0, 0, 0});
    read();
    channel.answer(Message(5).u32(0).bytes());
    read();
    EXPECT_THAT(
        capture.of(function),
        ElementsAre(TraceLine{"FE", function, "<< return 0x1f4c"}, TraceLine{"FE", function, "<< result= 0x6f "},
                    TraceLine{"FE", function, "<< return - Error DCFG_INVALID_RESPONSE (0x5)"}));
}

// A parameter that is named by a path

class ParamPath : public ParamDesc
{
 protected:
    static constexpr char program_[] = R"(C:\Kx\tool.exe)";
    const Program program{program_, R"(C:\Kx\tool.exe LangExt=A)"};
};

TEST_F(ParamPath, Choice_isFollowedByItsText)
{
    channel.answer(textReply("3"));
    channel.answer(listReply({"2", "3"}));
    channel.answer(textReply("*TVRA010"));
    channel.answer(textReply("MPI"));
    channel.answer(textReply("19,2 kBit/s"));
    channel.answer(textReply("187,5 kBit/s"));
    EXPECT_EQ(read(R"(busparam\dp\baudrate)", "default"), 0);
    EXPECT_STREQ(value, "3/187,5 kBit/s");
    EXPECT_THAT(channel.requests(),
                ElementsAre(descRequest("Line 1", R"(busparam\dp\baudrate)", "default"),
                            specializedRequest("Line 1", "baudrate"), rawRequest("Line 1", "DeviceID"),
                            rawRequest("Line 1", "CP_TYPE"),
                            resourceRequest({"Boards", "*TVRA010", R"(BaudrateResource\2)"}, "DE"),
                            resourceRequest({"Boards", "*TVRA010", R"(BaudrateResource\3)"}, "DE")));
}

TEST_F(ParamPath, NoChoice_isTheBareValue)
{
    channel.answer(textReply("long"));
    channel.answer(listReply({"2/slow"}));
    channel.answer(failure(8012));
    EXPECT_EQ(read(R"(busparam\dp\baudrate)", "type"), 0);
    EXPECT_STREQ(value, "long");
}

TEST_F(ParamPath, NoList_isTheBareValue)
{
    channel.answer(textReply("7"));
    channel.answer(failure(8012));
    EXPECT_EQ(read(R"(a\b)", "max"), 0);
    EXPECT_STREQ(value, "7");
}

TEST_F(ParamPath, MissingAttribute_asksForNoText)
{
    channel.answer(failure(8012));
    EXPECT_EQ(read(R"(a\b)", "max"), 8012);
    EXPECT_EQ(channel.requests().size(), 1u);
}

}  // namespace
