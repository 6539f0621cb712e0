// The string form of the value reader, and the enumeration of net types.

#include "requests.h"
#include "scriptedPipe.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ValueString : public ParamTest
{
 protected:
    CString value = "before";
};

TEST_F(ValueString, Text_isAssignedAsTheBufferFormShowsIt)
{
    channel.answer(textReply("1"));
    EXPECT_EQ(LogDeviceGetValue("Line 1", "busparam", &value), 0);
    EXPECT_STREQ(value, "STD");
    EXPECT_THAT(channel.requests(), ElementsAre(Message(33).str("Line 1").str("busparam").u32(260).bytes()));
}

TEST_F(ValueString, Failure_leavesTheString)
{
    channel.answer(failure(8012));
    EXPECT_EQ(LogDeviceGetValue("Line 1", "Unit", &value), 8012);
    EXPECT_STREQ(value, "before");
}

TEST_F(ValueString, NullArguments_are87WithoutARequest)
{
    EXPECT_EQ(LogDeviceGetValue(nullptr, "Unit", &value), 87);
    EXPECT_EQ(LogDeviceGetValue("Line 1", nullptr, &value), 87);
    EXPECT_EQ(LogDeviceGetValue("Line 1", "Unit", nullptr), 87);
    EXPECT_THAT(channel.requests(), IsEmpty());
}

TEST_F(ValueString, Trace_followsTheBufferForms)
{
    const TraceCapture capture("0x40");
    channel.answer(failure(8012));
    LogDeviceGetValue("Line 1", "Unit", &value);
    EXPECT_EQ(capture.of("LogDeviceGetValue:").back(),
              (TraceLine{"FM", "LogDeviceGetValue:", "LogDeviceGetValue=ret=1f4c lpszLogDevice=Line 1"}));
}

const std::string netTypes = R"(software\wow6432node\TAVRONE\NORIX\DefDevices\CP_TYPE)";

TEST(NetTypes, BufferForm_readsTheDefinitionsSubkeys)
{
    ScriptedPipe pipe;
    pipe.answer(textReply("MPI"));
    OutText out;
    EXPECT_EQ(NetTypeGetEnum(3, out, out), 0);
    EXPECT_EQ(out.text(), "MPI");
    EXPECT_THAT(pipe.requests(), ElementsAre(Message(21).str(netTypes).u32(3).bytes()));
}

TEST(NetTypes, StringForm_isTheSame)
{
    ScriptedPipe pipe;
    pipe.answer(textReply("DP"));
    CString name;
    EXPECT_EQ(NetTypeGetEnum(0, &name), 0);
    EXPECT_STREQ(name, "DP");
    pipe.answer(failure(259));
    EXPECT_EQ(NetTypeGetEnum(1, &name), 259);
    EXPECT_STREQ(name, "DP");
}

TEST(NetTypes, NullArguments_are87)
{
    ScriptedPipe pipe;
    OutText out;
    EXPECT_EQ(NetTypeGetEnum(0, nullptr), 87);
    EXPECT_EQ(NetTypeGetEnum(0, nullptr, out), 87);
    EXPECT_EQ(NetTypeGetEnum(0, out, nullptr), 87);
    EXPECT_THAT(pipe.requests(), IsEmpty());
}

}  // namespace
