// The table of the path functions: each row over the pipe, with everything that can be wrong with a reply.

#include "exchangeRow.h"
#include "keys.h"
#include "kxovaapi.h"
#include "scriptedPipe.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr char key[] = R"(SOFTWARE\TAVRONE\NORIX\X)";
const std::string mapped = R"(software\wow6432node\TAVRONE\NORIX\X)";

const ExchangeRow rows[] = {
    {.name = "KxRegDelKey",
     .traceName = "KxRegDelKey:",
     .call = [](Outputs&) { return KxRegDelKey(key); },
     .request = Message(1).str(mapped).bytes(),
     .otherKind = 8621,
     .entry = {R"(>> lpszKey=SOFTWARE\TAVRONE\NORIX\X )"}},
    {.name = "KxRegDelValue",
     .traceName = "KxRegDelValue:",
     .call = [](Outputs&) { return KxRegDelValue(key, "Unit"); },
     .request = Message(1).str(mapped).str("Unit").bytes(),
     .otherKind = 8621,
     .entry = {R"(>> lpszKey=SOFTWARE\TAVRONE\NORIX\X lpszParameter=Unit )"}},
    {.name = "KxRegCreateKey",
     .traceName = "KxRegCreateKey:",
     .call = [](Outputs&) { return KxRegCreateKey(key); },
     .request = Message(2).str(mapped).bytes(),
     .otherKind = 8621,
     .entry = {R"(>> lpszKey=SOFTWARE\TAVRONE\NORIX\X )"}},
    {.name = "KxRegSetValue",
     .traceName = "KxRegSetValue:",
     .call = [](Outputs&) { return KxRegSetValue(key, "Unit", "Ger\xE4t 7"); },
     .request = Message(3).str(mapped).str("Unit").str("Ger\xE4t 7").bytes(),
     .otherKind = 8621,
     .entry = {">> lpszKey=SOFTWARE\\TAVRONE\\NORIX\\X lpszParameter=Unit lpszValue=Ger\xE4t 7 "}},
    {.name = "KxRegSetValue_emptyTexts",
     .traceName = "KxRegSetValue:",
     .call = [](Outputs&) { return KxRegSetValue("", "", ""); },
     .request = Message(3).str("").str("").str("").bytes(),
     .otherKind = 8621,
     .entry = {">> lpszKey= lpszParameter= lpszValue= "}},
    {.name = "KxRegEnumKey",
     .traceName = "KxRegEnumKey:",
     .call = [](Outputs& out) { return KxRegEnumKey(key, 0x11223344, out.texts[0], out.texts[0]); },
     .request = Message(21).str(mapped).u32(0x11223344).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "Line 1"}},
     .entry = {R"(>> lpszKey=SOFTWARE\TAVRONE\NORIX\X iValue=287454020 )"}},
    {.name = "KxRegGetValue",
     .traceName = "KxRegGetValue:",
     .call = [](Outputs& out) { return KxRegGetValue(key, "Unit", out.texts[0], out.texts[0]); },
     .request = Message(22).str(mapped).str("Unit").bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "Ger\xE4t 7"}},
     .entry = {R"(>> lpszKey=SOFTWARE\TAVRONE\NORIX\X lpszParameter=Unit )"}},
    {.name = "KxRegEnumValue",
     .traceName = "KxRegEnumValue:",
     .call =
         [](Outputs& out) { return KxRegEnumValue(key, 2, out.texts[0], out.texts[0], out.texts[1], out.texts[1]); },
     .request = Message(23).str(mapped).u32(2).bytes(),
     .otherKind = 8621,
     .outputs = {{OutField::plainText, "baudrate"}, {OutField::plainText, "187500"}},
     .entry = {R"(>> lpszKey=SOFTWARE\TAVRONE\NORIX\X iValue=2 )"}},
};

class PathTest : public testing::TestWithParam<ExchangeRow>
{
 protected:
    const ExchangeRow& row() const { return GetParam(); }

    Bytes goodReply() const
    {
        Message reply = resultReply(0);
        for (const OutField& field : row().outputs)
            reply.text(field.value);
        return reply.bytes();
    }

    long callWithReply(const Bytes& reply)
    {
        pipe.answer(reply);
        return row().call(out);
    }

    void expectUntouched() const
    {
        for (const OutText& text : out.texts)
            EXPECT_TRUE(text.bufferUntouched());
    }

    ScriptedPipe pipe;
    Outputs out;
};

TEST_P(PathTest, Request_isByteForByte)
{
    callWithReply(goodReply());
    EXPECT_THAT(pipe.requests(), ElementsAre(row().request));
}

TEST_P(PathTest, Request_goesToThePipeAlone)
{
    fakeChannel()->reset();
    callWithReply(goodReply());
    EXPECT_THAT(fakeChannel()->requests(), IsEmpty());
}

TEST_P(PathTest, GoodReply_deliversEveryOutput)
{
    EXPECT_EQ(callWithReply(goodReply()), 0);
    for (std::size_t i = 0; i < row().outputs.size(); ++i) {
        EXPECT_EQ(out.texts[i].text(), row().outputs[i].value);
        EXPECT_EQ(out.texts[i].bytes[OutText::guard + out.texts[i].length], 0) << "terminator";
    }
}

TEST_P(PathTest, OtherKind_is8621)
{
    Bytes reply = goodReply();
    reply[0] = 5;
    EXPECT_EQ(callWithReply(reply), 8621);
    expectUntouched();
}

TEST_P(PathTest, FailingResult_isPassedOnAndNothingElseIsRead)
{
    Bytes reply = goodReply();
    reply[2] = 2;
    EXPECT_EQ(callWithReply(reply), 2);
    expectUntouched();
}

TEST_P(PathTest, ReplyCutBeforeItsOutputs_is111)
{
    const Bytes reply = goodReply();
    for (int length = 1; length < 6; ++length)
        EXPECT_EQ(callWithReply(Bytes(reply.begin(), reply.begin() + length)), 111) << length << " bytes";
    expectUntouched();
}

// A trailer that is missing at the very end is no error; every byte before it counts.
TEST_P(PathTest, ReplyCutInItsOutputs_is111)
{
    const Bytes reply = goodReply();
    for (std::size_t length = 6; length + 4 < reply.size(); ++length) {
        for (OutText& text : out.texts)
            text.reset(300);
        EXPECT_EQ(callWithReply(Bytes(reply.begin(), reply.begin() + static_cast<int>(length))), 111)
            << length << " of " << reply.size() << " bytes";
    }
    for (const OutText& text : out.texts)
        EXPECT_TRUE(text.guardsIntact());
}

TEST_P(PathTest, BufferWithoutRoomForTheTerminator_is234AndTheLengthIsWhatIsNeeded)
{
    for (std::size_t i = 0; i < row().outputs.size(); ++i) {
        const auto length = static_cast<unsigned long>(row().outputs[i].value.size());
        for (OutText& text : out.texts)
            text.reset(300);
        out.texts[i].reset(length);
        EXPECT_EQ(callWithReply(goodReply()), 234);
        EXPECT_EQ(out.texts[i].length, length + 1);
        EXPECT_TRUE(out.texts[i].guardsIntact());
    }
}

TEST_P(PathTest, BufferThatFitsExactly_isFilled)
{
    for (std::size_t i = 0; i < row().outputs.size(); ++i) {
        for (OutText& text : out.texts)
            text.reset(300);
        out.texts[i].reset(static_cast<unsigned long>(row().outputs[i].value.size() + 1));
        EXPECT_EQ(callWithReply(goodReply()), 0);
        EXPECT_EQ(out.texts[i].text(), row().outputs[i].value);
        EXPECT_TRUE(out.texts[i].guardsIntact());
    }
}

TEST_P(PathTest, ServerThatHangsUp_isThePipesErrorNot30)
{
    pipe.hangUp();
    const long result = row().call(out);
    EXPECT_TRUE(result == ERROR_BROKEN_PIPE || result == ERROR_PIPE_NOT_CONNECTED) << result;
    expectUntouched();
}

TEST_P(PathTest, Trace_entryAndResult)
{
    const TraceCapture capture("0x88");
    callWithReply(goodReply());
    const auto lines = capture.of(row().traceName);
    EXPECT_EQ(textsAt(lines, "FA"), row().entry);
    EXPECT_THAT(textsAt(lines, "FE"), ElementsAre("<< return 0x0"));
}

TEST_P(PathTest, Trace_otherKind)
{
    const TraceCapture capture("0x80");
    Bytes reply = goodReply();
    reply[0] = 5;
    callWithReply(reply);
    EXPECT_THAT(textsAt(capture.of(row().traceName), "FE"),
                ElementsAre("<< return - Error DCFG_INVALID_RESPONSE (0x5)"));
}

TEST_P(PathTest, Trace_failures)
{
    const TraceCapture capture("0x80");
    callWithReply({4, 0});
    callWithReply(resultReply(8012).bytes());
    EXPECT_THAT(textsAt(capture.of(row().traceName), "FE"), ElementsAre("<< result= 0x6f ", "<< return 0x1f4c"));
}

INSTANTIATE_TEST_SUITE_P(Registry, PathTest, testing::ValuesIn(rows), rowName);

const RefusedRow refused[] = {
    {.name = "KxRegDelKey", .call = [](Outputs&) { return KxRegDelKey(nullptr); }},
    {.name = "KxRegDelValue_key", .call = [](Outputs&) { return KxRegDelValue(nullptr, "x"); }},
    {.name = "KxRegDelValue_name", .call = [](Outputs&) { return KxRegDelValue("x", nullptr); }},
    {.name = "KxRegCreateKey", .call = [](Outputs&) { return KxRegCreateKey(nullptr); }},
    {.name = "KxRegSetValue_key", .call = [](Outputs&) { return KxRegSetValue(nullptr, "x", "x"); }},
    {.name = "KxRegSetValue_name", .call = [](Outputs&) { return KxRegSetValue("x", nullptr, "x"); }},
    {.name = "KxRegSetValue_value", .call = [](Outputs&) { return KxRegSetValue("x", "x", nullptr); }},
    {.name = "KxRegEnumKey_key",
     .call = [](Outputs& out) { return KxRegEnumKey(nullptr, 0, out.texts[0], out.texts[0]); }},
    {.name = "KxRegEnumKey_buffer", .call = [](Outputs& out) { return KxRegEnumKey("x", 0, nullptr, out.texts[0]); }},
    {.name = "KxRegEnumKey_length", .call = [](Outputs& out) { return KxRegEnumKey("x", 0, out.texts[0], nullptr); }},
    {.name = "KxRegGetValue_key",
     .call = [](Outputs& out) { return KxRegGetValue(nullptr, "x", out.texts[0], out.texts[0]); }},
    {.name = "KxRegGetValue_name",
     .call = [](Outputs& out) { return KxRegGetValue("x", nullptr, out.texts[0], out.texts[0]); }},
    {.name = "KxRegGetValue_buffer",
     .call = [](Outputs& out) { return KxRegGetValue("x", "x", nullptr, out.texts[0]); }},
    {.name = "KxRegGetValue_length",
     .call = [](Outputs& out) { return KxRegGetValue("x", "x", out.texts[0], nullptr); }},
    {.name = "KxRegEnumValue_key",
     .call =
         [](Outputs& out) {
             return KxRegEnumValue(nullptr, 0, out.texts[0], out.texts[0], out.texts[1], out.texts[1]);
         }},
    {.name = "KxRegEnumValue_name",
     .call = [](Outputs& out) { return KxRegEnumValue("x", 0, nullptr, out.texts[0], out.texts[1], out.texts[1]); }},
    {.name = "KxRegEnumValue_nameLength",
     .call = [](Outputs& out) { return KxRegEnumValue("x", 0, out.texts[0], nullptr, out.texts[1], out.texts[1]); }},
    {.name = "KxRegEnumValue_value",
     .call = [](Outputs& out) { return KxRegEnumValue("x", 0, out.texts[0], out.texts[0], nullptr, out.texts[1]); }},
    {.name = "KxRegEnumValue_valueLength",
     .call = [](Outputs& out) { return KxRegEnumValue("x", 0, out.texts[0], out.texts[0], out.texts[1], nullptr); }},
};

TEST_P(RefusedTest, Call_asksNobodyOverThePipe)
{
    ScriptedPipe pipe;
    GetParam().call(out);
    EXPECT_THAT(pipe.requests(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(PathFunctions, RefusedTest, testing::ValuesIn(refused), refusedName);

}  // namespace
