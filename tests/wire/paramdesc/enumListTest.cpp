// The lists of what a parameter may be set to.

#include "requests.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct ListRow
{
    const char* name;
    void (*call)(const char*, const char*, CStringList*);
    Bytes request;
    std::size_t capacity;
    const char* traceName;  // cut to the room that the trace has
};

std::ostream& operator<<(std::ostream& out, const ListRow& row)
{
    return out << row.name;
}

const ListRow rows[] = {
    {"DCFG_LogDeviceGetMostSpecializedEnumList", DCFG_LogDeviceGetMostSpecializedEnumList,
     Message(119).str("Line 1").str("baudrate").u32(2048).bytes(), 2048, "DCFG_LogDeviceGetMostSpecializedEn"},
    {"DCFG_LogDeviceGetAverageEnumList", DCFG_LogDeviceGetAverageEnumList,
     Message(120).str("Line 1").str("baudrate").u32(8160).bytes(), 8160, "DCFG_LogDeviceGetAverageEnumList:"},
};

class EnumList : public testing::TestWithParam<ListRow>
{
 protected:
    EnumList() : channel(*fakeChannel()) { channel.reset(); }
    Texts callWith(const Bytes& reply)
    {
        channel.answer(reply);
        GetParam().call("Line 1", "baudrate", &list);
        return itemsOf(list);
    }
    std::vector<TraceLine> lines(const TraceCapture& capture) const { return capture.of(GetParam().traceName); }
    TraceLine result(const char* text) const { return {"FE", GetParam().traceName, text}; }

    FakeChannel& channel;
    CStringList list;
};

TEST_P(EnumList, Request_isByteForByte)
{
    callWith(listReply({}));
    EXPECT_THAT(channel.requests(), ElementsAre(GetParam().request));
}

TEST_P(EnumList, Items_areAppendedInTheirOrder)
{
    list.AddTail("before");
    EXPECT_THAT(callWith(listReply({"3/fast", "1", "2/Ger\xE4t"})),
                ElementsAre("before", "3/fast", "1", "2/Ger\xE4t"));
}

TEST_P(EnumList, ListWithoutAClosingText_isTakenWhole)
{
    EXPECT_THAT(callWith(resultReply(0).list({"3/fast", "1"}).bytes()), ElementsAre("3/fast", "1"));
}

TEST_P(EnumList, EmptyList_appendsNothing)
{
    EXPECT_THAT(callWith(resultReply(0).list({}).bytes()), IsEmpty());
}

TEST_P(EnumList, Failures_appendNothing)
{
    for (const Bytes& reply : {failure(8012), Message(5).u32(0).bytes(), Bytes{4, 0, 0}, Bytes{}})
        EXPECT_THAT(callWith(reply), IsEmpty());
}

TEST_P(EnumList, NullArguments_sendNothing)
{
    GetParam().call(nullptr, "baudrate", &list);
    GetParam().call("Line 1", nullptr, &list);
    GetParam().call("Line 1", "baudrate", nullptr);
    EXPECT_THAT(channel.requests(), IsEmpty());
}

TEST_P(EnumList, Trace_success)
{
    const TraceCapture capture;
    callWith(listReply({"1"}));
    EXPECT_THAT(lines(capture),
                ElementsAre(TraceLine{"FA", GetParam().traceName, ">>lpszLogDevice=Line 1 lpszParameter=baudrate"},
                            result("<< return 0x0")));
}

TEST_P(EnumList, Trace_failures)
{
    const TraceCapture capture("0x80");
    callWith(failure(8012));
    callWith({4, 0, 0});
    callWith(Message(5).u32(0).bytes());
    EXPECT_THAT(lines(capture), ElementsAre(result("<< return 0x1f4c"), result("<< result= 0x6f "),
                                            result("<< return - Error DCFG_INVALID_RESPONSE (0x5)")));
}

INSTANTIATE_TEST_SUITE_P(Lists, EnumList, testing::ValuesIn(rows),
                         [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace
