// The value check against a server: what it asks for, and that it answers by the rules that its own tests go through.

#include "requests.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr char function[] = "LogDeviceCheckValue:";

class CheckValue : public ParamTest
{
 protected:
    // Answers attributes by what their requests ask for.
    void describe(std::vector<std::pair<std::string, std::string>> attributes, Texts items = {})
    {
        channel.answerAll([=, this](const Bytes& request) {
            if (request == specializedRequest("Line 1", parameter)) return listReply(items);
            for (const auto& [name, text] : attributes) {
                if (request == descRequest("Line 1", parameter, name)) return textReply(text);
            }
            return failure(8012);
        });
    }
    long check(const char* given)
    {
        value = given;
        return LogDeviceCheckValue("Line 1", parameter.c_str(), value);
    }

    std::string parameter = "baudrate";
    CString value;
};

TEST_F(CheckValue, NoDescription_isAcceptedAfterOneRequest)
{
    describe({});
    EXPECT_EQ(check("anything"), 0);
    EXPECT_THAT(channel.requests(), ElementsAre(descRequest("Line 1", "baudrate", "type")));
}

TEST_F(CheckValue, NoServer_isAcceptedToo)
{
    channel.answer({});
    EXPECT_EQ(check("anything"), 0);
}

TEST_F(CheckValue, Number_isAskedAboutInOrder)
{
    describe({{"type", "long"}, {"min", "10"}, {"max", "100"}, {"step", "5"}});
    EXPECT_EQ(check("15"), 0);
    EXPECT_THAT(channel.requests(),
                ElementsAre(descRequest("Line 1", "baudrate", "type"), descRequest("Line 1", "baudrate", "min"),
                            descRequest("Line 1", "baudrate", "max"), descRequest("Line 1", "baudrate", "step"),
                            descRequest("Line 1", "baudrate", "base")));
    EXPECT_EQ(check("12"), 8058);
    EXPECT_EQ(check("9"), 8054);
    EXPECT_EQ(check("101"), 8056);
    EXPECT_EQ(check(""), 87);
}

TEST_F(CheckValue, SymbolicValue_isReplacedInTheCallersString)
{
    describe({{"type", "word"}, {"min", "1"}, {"max", "100"}});
    EXPECT_EQ(check("MAX"), 0);
    EXPECT_STREQ(value, "100");
}

TEST_F(CheckValue, Base_isTheDescriptions)
{
    describe({{"type", "dword"}, {"base", "16"}, {"min", "0"}, {"max", "fe"}});
    EXPECT_EQ(check("fe"), 0);
    EXPECT_EQ(check("ff"), 8056);
}

TEST_F(CheckValue, Enum_isAskedAboutInTheDevicesOwnList)
{
    describe({{"type", "enum"}}, {"3/fast", "4"});
    EXPECT_EQ(check("3"), 0);
    EXPECT_THAT(channel.requests(),
                ElementsAre(descRequest("Line 1", "baudrate", "type"), specializedRequest("Line 1", "baudrate")));
    EXPECT_EQ(check("fast"), 8050);
}

TEST_F(CheckValue, Bool_isTrueOrFalse)
{
    describe({{"type", "bool"}});
    EXPECT_EQ(check("TRUE"), 0);
    EXPECT_EQ(check("yes"), 8052);
}

// A display text behind an attribute would get into the value that it replaces.
TEST_F(CheckValue, ParameterNamedByAPath_isCheckedWithBareAttributes)
{
    parameter = R"(busparam\dp\ttr)";
    describe({{"type", "word"}, {"min", "1"}, {"max", "9"}});
    EXPECT_EQ(check("max"), 0);
    EXPECT_STREQ(value, "9");
    EXPECT_EQ(channel.requests().size(), 5u);
}

TEST_F(CheckValue, NullArguments_are87WithoutARequest)
{
    EXPECT_EQ(LogDeviceCheckValue(nullptr, "p", value), 87);
    EXPECT_EQ(LogDeviceCheckValue("Line 1", nullptr, value), 87);
    EXPECT_THAT(channel.requests(), IsEmpty());
}

TEST_F(CheckValue, Trace_entryAndRules)
{
    const TraceCapture capture;
    describe({{"type", "bool"}});
    check("yes");
    EXPECT_THAT(
        capture.of(function),
        ElementsAre(
            TraceLine{"FA", function, "lpszLogDevice=Line 1 lpszParameter=baudrate sValue=yes"},
            TraceLine{"FM", function, "für den Entry=baudrate liegt die ParamDesc=bool vor"},
            TraceLine{"FM", function, "ParamDesc ist Boolscher Wert-> prüfe ob Wert TRUE oder FALSE enthält"},
            TraceLine{"FE", function, "->return Error:übergebner Wert ist kein boolscher Wert (TRUE oder FALSE)"}));
}

TEST_F(CheckValue, Trace_noDescription)
{
    const TraceCapture capture("0x40");
    describe({});
    check("1");
    EXPECT_THAT(capture.of(function),
                ElementsAre(TraceLine{"FM", function,
                                      "continue : Keine ParamDesc für Parameter baudrate vorahnden - setze Wert ohne "
                                      "Parameterkontrolle"}));
}

}  // namespace
