// The channel of a process: opened on demand, kept, tried again; what the frame exchange makes of its failures.

#include <gmock/gmock.h>

#include "loadedLibrary.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::SizeIs;

constexpr char exchange[] = "kxOvascp::sendReceive";
constexpr char init[] = "kxOvascp::Init()";

Bytes resultReplyFrame(std::size_t length)
{
    Bytes frame(length, 0);
    if (length > 80) frame[80] = 4;
    return frame;
}

TEST_F(LifecycleTest, FirstCall_opensTheChannelByItsName)
{
    const TraceCapture capture("0x40");
    const LoadedLibrary library;
    EXPECT_EQ(library.deleteDevice("x"), 0);
    EXPECT_THAT(channel.opened(), ElementsAre(L"KXOVASCP"));
    const std::vector<TraceLine> lines = capture.of(init);
    ASSERT_THAT(lines, SizeIs(4));
    EXPECT_EQ(lines[0].text, ">> entered");
    EXPECT_EQ(lines[1].text.substr(0, 18), "SCP_open returned ");
    EXPECT_EQ(lines[2].text.substr(0, 17), "Using scp handle ");
    EXPECT_EQ(lines[3].text, "<< return 1");
}

TEST_F(LifecycleTest, LaterCalls_keepTheChannel)
{
    const LoadedLibrary library;
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(library.deleteDevice("x"), 0);
    EXPECT_THAT(channel.opened(), SizeIs(1));
}

TEST_F(LifecycleTest, NoServer_everyCallIs30AndTriesAgain)
{
    const TraceCapture capture("0x40");
    channel.openFails(true);
    const LoadedLibrary library;
    EXPECT_EQ(library.deleteDevice("x"), 30);
    EXPECT_EQ(library.deleteDevice("x"), 30);
    EXPECT_THAT(channel.opened(), SizeIs(2));
    EXPECT_THAT(channel.frames(), SizeIs(0));
    EXPECT_THAT(capture.lines(), Contains(TraceLine{"FM", init, "SCP_open returned -1"}));
    EXPECT_THAT(capture.lines(), Contains(TraceLine{"FM", exchange, "error: SCP_ERR_CHANNELS_NOT_OPEN ..."}));

    channel.openFails(false);
    EXPECT_EQ(library.deleteDevice("x"), 0);
    EXPECT_THAT(channel.opened(), SizeIs(3));
}

TEST_F(LifecycleTest, Exchange_isTracedAtItsLevels)
{
    const TraceCapture capture;
    const LoadedLibrary library;
    library.deleteDevice("x");
    EXPECT_THAT(capture.of(exchange), ElementsAre(TraceLine{"FA", exchange, "Start scp communication"},
                                                  TraceLine{"FM", exchange, "SCP_send_receive was successful ..."}));
}

TEST_F(LifecycleTest, FailedExchange_is30AndItsNumberIsTraced)
{
    const TraceCapture capture;
    const LoadedLibrary library;
    channel.fail(1234);
    EXPECT_EQ(library.deleteDevice("x"), 30);
    EXPECT_THAT(capture.of(exchange),
                Contains(TraceLine{"FM", exchange, "SCP_send_receive was not successful! SCP_get_errno: 1234 "}));
    EXPECT_EQ(library.deleteDevice("x"), 0) << "the channel stays usable";
}

struct ReplyLength
{
    std::uint16_t reported;
    long result;
};

class ReplyLengthTest : public LifecycleTest, public testing::WithParamInterface<ReplyLength>
{
};

TEST_P(ReplyLengthTest, Frame_ofThisLengthYieldsTheRowsResult)
{
    const LoadedLibrary library;
    channel.answerFrame(resultReplyFrame(8272), GetParam().reported);
    EXPECT_EQ(library.deleteDevice("x"), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(Rows, ReplyLengthTest,
                         testing::Values(ReplyLength{0, 30},      // nothing at all
                                         ReplyLength{79, 30},     // less than a header
                                         ReplyLength{80, 30},     // a header alone
                                         ReplyLength{81, 111},    // half a kind
                                         ReplyLength{82, 111},    // no result
                                         ReplyLength{85, 111},    // one byte short
                                         ReplyLength{86, 0},      // kind and result
                                         ReplyLength{8272, 0},    // a full frame
                                         ReplyLength{8273, 0},    // more than was asked for
                                         ReplyLength{65535, 0}),  //
                         [](const auto& row) { return std::to_string(row.param.reported); });

TEST_F(LifecycleTest, Frame_carriesHeaderAndPayload)
{
    const LoadedLibrary library;
    library.deleteDevice("AB");
    ASSERT_THAT(channel.frames(), SizeIs(1));
    const Bytes& frame = channel.frames()[0];
    EXPECT_EQ(frame.size(), 80u + 14);
    EXPECT_EQ(frame[4], 80);
    EXPECT_EQ(frame[8], 50);
    EXPECT_EQ(frame[16], 14);
    EXPECT_EQ(Bytes(frame.begin() + 80, frame.end()), (Bytes{50, 0, 4, 0, 0, 0, 'A', 0, 'B', 0, 0, 0, 0, 0}));
}

TEST_F(LifecycleTest, Client_isMadeOnceAndTracesIt)
{
    const TraceCapture capture("0x10");
    const LoadedLibrary library;
    library.deleteDevice("x");
    library.deleteDevice("x");
    const auto lines = capture.of("kxOvascp::kxOvascp(void)");
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_EQ(lines[0].level, "FR");
    EXPECT_EQ(lines[0].text.substr(0, 23), "CreateMutex returned 0x");
}

}  // namespace
