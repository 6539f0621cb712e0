// The enumerations that fetch a whole list and hand it out one index at a time: two of value pairs, two of names.

#include "callsTest.h"

namespace {

// Ways in which the request for the whole list fails.
struct Failure
{
    const char* name;
    std::function<void(FakeChannel&)> answer;
};

const Failure failures[] = {
    {"anotherKind", [](FakeChannel& channel) { channel.answer(otherKind()); }},
    {"failingResult", [](FakeChannel& channel) { channel.answer(failure(8012)); }},
    {"failedExchange", [](FakeChannel& channel) { channel.fail(9); }},
    {"emptyReply", [](FakeChannel& channel) { channel.answer({}); }},
    {"cutInItsKind", [](FakeChannel& channel) { channel.answer({4}); }},
    {"cutInItsResult",
     [](FakeChannel& channel) {
         channel.answer({4, 0, 0});
     }},
    {"cutInItsList", [](FakeChannel& channel) { channel.answer(resultReply(0).u16(8).bytes()); }},
};

Bytes listReply(const std::vector<std::string>& texts)
{
    return resultReply(0).list(texts).bytes();
}

// Value pairs of a logical device or of a logical name.
struct PairList
{
    const char* name;
    long (*call)(const char*, const char*, unsigned long, char*, unsigned long*, char*, unsigned long*);
    std::uint16_t opcode;
    std::uint32_t capacity;
    std::uint16_t single;
    const char* traceName;
    const char* entry;
};

std::ostream& operator<<(std::ostream& out, const PairList& list)
{
    return out << list.name;
}

class PairListTest : public CallsTest, public testing::WithParamInterface<PairList>
{
 protected:
    PairListTest() { forget(); }
    ~PairListTest() override { forget(); }

    // A list that an earlier step left is walked to its end.
    void forget()
    {
        channel.answer(listReply({}));
        at(~0ul);
        channel.reset();
    }
    long at(unsigned long i)
    {
        return GetParam().call("Line 1", "Sub", i, out.texts[0], &(out.texts[0].length = 300), out.texts[1],
                               &(out.texts[1].length = 300));
    }
    std::string pair() const { return out.texts[0].text() + "=" + out.texts[1].text(); }
    Bytes whole() const
    {
        return Message(GetParam().opcode).str("Line 1").str("Sub").nullStr().u32(0).u32(GetParam().capacity).bytes();
    }
    Bytes single(std::uint32_t i) const
    {
        return Message(GetParam().single).str("Line 1").u32(i).u32(260).u32(260).bytes();
    }
};

INSTANTIATE_TEST_SUITE_P(Values, PairListTest,
                         testing::Values(PairList{"logDevice", DCFG_LogDeviceGetEnumValue, 215, 4080, 37,
                                                  "DCFG_LogDeviceGetEnumValue:", ">>lpszLogDevice=Line 1 iValue="},
                                         PairList{"logName", DCFG_LogNameGetEnumValue, 219, 8160, 73,
                                                  "DCFG_LogNameGetEnumValue:", ">>lpszLogName Line 1 iValue="}),
                         [](const auto& row) { return row.param.name; });

TEST_P(PairListTest, Run_fetchesOnceAndHandsOutPairsInOrder)
{
    channel.answer(listReply({"a", "1", "b", "2"}));
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(pair(), "a=1");
    EXPECT_EQ(at(1), 0);
    EXPECT_EQ(pair(), "b=2");
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(pair(), "a=1");
    EXPECT_EQ(channel.requests(), std::vector<Bytes>{whole()});
}

TEST_P(PairListTest, EndOfTheList_is259AndTheNextRunFetchesAnew)
{
    channel.answer(listReply({"a", "1"}));
    channel.answer(listReply({"c", "3"}));
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(at(1), 259);
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(pair(), "c=3");
    EXPECT_EQ(channel.requests(), (std::vector<Bytes>{whole(), whole()}));
}

TEST_P(PairListTest, OtherArgumentsInTheMiddleOfARun_getTheSameList)
{
    channel.answer(listReply({"a", "1", "b", "2"}));
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(GetParam().call("Line 2", nullptr, 1, out.texts[2], out.texts[2], out.texts[3], out.texts[3]), 0);
    EXPECT_EQ(out.texts[2].text(), "b");
    EXPECT_EQ(channel.requests().size(), 1u);
}

TEST_P(PairListTest, NullNames_areSentAsSuch)
{
    channel.answer(listReply({}));
    GetParam().call(nullptr, nullptr, 0, out.texts[0], out.texts[0], out.texts[1], out.texts[1]);
    EXPECT_EQ(channel.requests().at(0),
              Message(GetParam().opcode).nullStr().nullStr().nullStr().u32(0).u32(GetParam().capacity).bytes());
}

TEST_P(PairListTest, EmptyTexts_keepTheirPlace)
{
    channel.answer(listReply({"a", "", "b", "2"}));
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(pair(), "a=");
    EXPECT_EQ(at(1), 0);
    EXPECT_EQ(pair(), "b=2");
}

TEST_P(PairListTest, NameWithoutValueAtTheEnd_isNoPair)
{
    channel.answer(listReply({"a", "1", "b"}));
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(at(1), 259);
}

TEST_P(PairListTest, EmptyList_is259)
{
    channel.answer(listReply({}));
    EXPECT_EQ(at(0), 259);
    EXPECT_EQ(channel.requests(), std::vector<Bytes>{whole()});
}

TEST_P(PairListTest, ServerThatDoesNotList_isAskedPairByPair)
{
    for (const Failure& failed : failures) {
        SCOPED_TRACE(failed.name);
        forget();
        failed.answer(channel);
        channel.answer(resultReply(0).text("x").text("1").bytes());
        channel.answer(resultReply(0).text("y").text("2").bytes());
        channel.answer(failure(259));
        EXPECT_EQ(at(1), 0);
        EXPECT_EQ(pair(), "y=2");
        EXPECT_EQ(channel.requests(), (std::vector<Bytes>{whole(), single(0), single(1), single(2)}));
        EXPECT_EQ(at(2), 259);
    }
}

TEST_P(PairListTest, RequestThatDoesNotFit_isAnEmptyList)
{
    const std::string longName(2100, 'x');
    EXPECT_EQ(GetParam().call(longName.c_str(), nullptr, 0, out.texts[0], out.texts[0], out.texts[1], out.texts[1]),
              259);
    EXPECT_TRUE(channel.requests().empty());
}

TEST_P(PairListTest, BufferTooShort_is234WithNothingWrittenAndTheListStays)
{
    channel.answer(listReply({"name", "value"}));
    out.texts[0].reset(4);
    EXPECT_EQ(GetParam().call("Line 1", "Sub", 0, out.texts[0], out.texts[0], out.texts[1], out.texts[1]), 234);
    EXPECT_TRUE(out.texts[0].bufferUntouched());
    out.texts[0].reset(5);
    out.texts[1].reset(5);
    EXPECT_EQ(GetParam().call("Line 1", "Sub", 0, out.texts[0], out.texts[0], out.texts[1], out.texts[1]), 234);
    EXPECT_TRUE(out.texts[1].bufferUntouched());
    out.texts[0].reset(5);
    out.texts[1].reset(6);
    EXPECT_EQ(GetParam().call("Line 1", "Sub", 0, out.texts[0], out.texts[0], out.texts[1], out.texts[1]), 0);
    EXPECT_EQ(pair(), "name=value");
    EXPECT_EQ(channel.requests().size(), 1u);
}

TEST_P(PairListTest, Trace_entryPairAndEnd)
{
    channel.answer(listReply({"a", "1"}));
    const TraceCapture capture("0x88");
    at(0);
    at(1);
    const auto line = [](const char* level, const std::string& text) {
        return TraceLine{level, GetParam().traceName, text};
    };
    const std::vector<TraceLine> expected = {
        line("FA", GetParam().entry + ("0" + pidTid)), line("FE", "<< return ok Parameter a Value 1 "),
        line("FA", GetParam().entry + ("1" + pidTid)), line("FE", "<< return DCFG_ERR_NO_MORE_ITEMS")};
    EXPECT_EQ(capture.of(GetParam().traceName), expected);
}

TEST_F(CallsTest, LogDeviceValues_moreThanTheListHoldsIsAskedPairByPair)
{
    channel.answer(listReply({std::string(4080, 'x')}));
    channel.answer(resultReply(0).text("x").text("1").bytes());
    channel.answer(failure(259));
    EXPECT_EQ(DCFG_LogDeviceGetEnumValue("d", nullptr, 0, out.texts[0], out.texts[0], out.texts[1], out.texts[1]), 0);
    EXPECT_EQ(out.texts[0].text(), "x");
    EXPECT_EQ(DCFG_LogDeviceGetEnumValue("d", nullptr, 9, out.texts[0], out.texts[0], out.texts[1], out.texts[1]),
              259);
}

TEST_F(CallsTest, LogDeviceValuesAndLogNameValues_haveListsOfTheirOwn)
{
    channel.answer(listReply({"a", "1"}));
    channel.answer(listReply({"b", "2"}));
    EXPECT_EQ(DCFG_LogDeviceGetEnumValue("d", nullptr, 0, out.texts[0], out.texts[0], out.texts[1], out.texts[1]), 0);
    EXPECT_EQ(DCFG_LogNameGetEnumValue("n", nullptr, 0, out.texts[2], out.texts[2], out.texts[3], out.texts[3]), 0);
    EXPECT_EQ(out.texts[0].text(), "a");
    EXPECT_EQ(out.texts[2].text(), "b");
    DCFG_LogDeviceGetEnumValue("d", nullptr, 1, out.texts[0], out.texts[0], out.texts[1], out.texts[1]);
    DCFG_LogNameGetEnumValue("n", nullptr, 1, out.texts[0], out.texts[0], out.texts[1], out.texts[1]);
}

TEST_F(CallsTest, LogDeviceValues_nullOutputsAre234AndTheListStays)
{
    channel.answer(listReply({"a", "1"}));
    EXPECT_EQ(DCFG_LogDeviceGetEnumValue("d", nullptr, 0, nullptr, nullptr, nullptr, nullptr), 234);
    EXPECT_EQ(DCFG_LogDeviceGetEnumValue("d", nullptr, 0, out.texts[0], out.texts[0], out.texts[1], out.texts[1]), 0);
    EXPECT_EQ(DCFG_LogDeviceGetEnumValue("d", nullptr, 1, out.texts[0], out.texts[0], out.texts[1], out.texts[1]),
              259);
    EXPECT_EQ(channel.requests().size(), 1u);
}

// Names of logical devices or of logical names.
struct NameList
{
    const char* name;
    long (*call)(unsigned long, char*, unsigned long*);
    std::uint16_t opcode;
    std::function<Bytes(std::uint32_t)> single;
    const char* traceName;
};

std::ostream& operator<<(std::ostream& out, const NameList& list)
{
    return out << list.name;
}

class NameListTest : public CallsTest, public testing::WithParamInterface<NameList>
{
 protected:
    NameListTest() { forget(); }
    ~NameListTest() override { forget(); }

    void forget()
    {
        channel.answer(listReply({}));
        at(~0ul);
        channel.reset();
    }
    long at(unsigned long i) { return GetParam().call(i, out.texts[0], &(out.texts[0].length = 300)); }
    std::string name() const { return out.texts[0].text(); }
    Bytes whole() const { return Message(GetParam().opcode).u32(4080).bytes(); }
    TraceLine line(const char* level, const std::string& text) const { return {level, GetParam().traceName, text}; }
};

INSTANTIATE_TEST_SUITE_P(Names, NameListTest,
                         testing::Values(NameList{"logDevices", DCFG_LogDeviceGetEnum, 208,
                                                  [](std::uint32_t i) {
                                                      return Message(36).nullStr().u32(i).u32(260).bytes();
                                                  },
                                                  "DCFG_LogDeviceGetEnum:"},
                                         NameList{"logNames", DCFG_LogNameGetEnum, 209,
                                                  [](std::uint32_t i) { return Message(72).u32(i).u32(260).bytes(); },
                                                  "DCFG_LogNameGetEnum:"}),
                         [](const auto& row) { return row.param.name; });

TEST_P(NameListTest, Run_fetchesOnceAndHandsOutNamesInOrder)
{
    channel.answer(listReply({"Line 1", "L\xEDnea 2"}));
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(name(), "Line 1");
    EXPECT_EQ(at(1), 0);
    EXPECT_EQ(name(), "L\xEDnea 2");
    EXPECT_EQ(channel.requests(), std::vector<Bytes>{whole()});
}

TEST_P(NameListTest, EndOfTheList_is259AndTheNextRunFetchesAnew)
{
    channel.answer(listReply({"a", "b"}));
    channel.answer(listReply({"c"}));
    EXPECT_EQ(at(2), 259);
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(name(), "c");
    EXPECT_EQ(channel.requests(), (std::vector<Bytes>{whole(), whole()}));
}

TEST_P(NameListTest, EmptyTextThatClosesTheList_isNoName)
{
    channel.answer(listReply({"a", ""}));
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(at(1), 259);
}

TEST_P(NameListTest, ServerThatDoesNotList_isAskedNameByName)
{
    for (const Failure& failed : failures) {
        SCOPED_TRACE(failed.name);
        forget();
        failed.answer(channel);
        channel.answer(textReply("x"));
        channel.answer(textReply("y"));
        channel.answer(failure(8012));
        EXPECT_EQ(at(1), 0);
        EXPECT_EQ(name(), "y");
        EXPECT_EQ(channel.requests(),
                  (std::vector<Bytes>{whole(), GetParam().single(0), GetParam().single(1), GetParam().single(2)}));
        EXPECT_EQ(at(2), 259);
    }
}

TEST_P(NameListTest, BufferTooShort_is234AndTheListStays)
{
    channel.answer(listReply({"name"}));
    out.texts[0].reset(4);
    EXPECT_EQ(GetParam().call(0, out.texts[0], out.texts[0]), 234);
    EXPECT_TRUE(out.texts[0].bufferUntouched());
    out.texts[0].reset(5);
    EXPECT_EQ(GetParam().call(0, out.texts[0], out.texts[0]), 0);
    EXPECT_EQ(name(), "name");
    EXPECT_TRUE(out.texts[0].guardsIntact());
    EXPECT_EQ(channel.requests().size(), 1u);
}

TEST_P(NameListTest, NullOutputs_areRefusedAfterTheEntry)
{
    const TraceCapture capture("0x88");
    EXPECT_EQ(GetParam().call(3, nullptr, out.texts[0]), 87);
    EXPECT_EQ(GetParam().call(4, out.texts[0], nullptr), 87);
    EXPECT_TRUE(channel.requests().empty());
    EXPECT_EQ(capture.lines(), (std::vector<TraceLine>{line("FA", ">> iValue=3 "), line("FA", ">> iValue=4 ")}));
}

TEST_P(NameListTest, Trace_entryAndEachNamePassed)
{
    channel.answer(listReply({"a", "b", "c"}));
    const TraceCapture capture("0x48");
    at(1);
    const std::vector<TraceLine> expected = {line("FA", ">> iValue=1 "), line("FM", "1:i=0 LogDev=a "),
                                             line("FM", "1:i=1 LogDev=b ")};
    EXPECT_EQ(capture.of(GetParam().traceName), expected);
}

TEST_F(CallsTest, LogNames_serversRefusalIsTraced)
{
    channel.answer(failure(8012));
    channel.answer(failure(259));
    const TraceCapture capture("0x40");
    EXPECT_EQ(DCFG_LogNameGetEnum(0, out.texts[0], out.texts[0]), 259);
    EXPECT_EQ(capture.of("DCFG_LogNameGetEnum:"),
              (std::vector<TraceLine>{{"FM", "DCFG_LogNameGetEnum:", "server returned 0x1f4c"}}));
}

TEST_F(CallsTest, LogDevices_moreThanTheListHoldsIsAskedNameByName)
{
    channel.answer(listReply({std::string(4080, 'x')}));
    channel.answer(textReply("x"));
    channel.answer(failure(259));
    EXPECT_EQ(DCFG_LogDeviceGetEnum(0, out.texts[0], out.texts[0]), 0);
    EXPECT_EQ(out.texts[0].text(), "x");
    EXPECT_EQ(DCFG_LogDeviceGetEnum(1, out.texts[0], out.texts[0]), 259);
}

}  // namespace
