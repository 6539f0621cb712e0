// Replies that are none, and replies that do not fit.
#include "channel_fixture.h"

namespace {

constexpr unsigned opcode = 33;

struct BadReply
{
    const char* name;
    Bytes bytes;
};

std::ostream& operator<<(std::ostream& out, const BadReply& reply)
{
    return out << reply.name;
}

Bytes withByte(std::size_t offset, std::uint8_t value)
{
    Bytes reply = frames::frame(opcode, {4, 0, 0, 0, 0, 0});
    reply.at(offset) = value;
    return reply;
}

Bytes withLength(std::size_t length)
{
    Bytes reply = frames::frame(opcode, {4, 0, 0, 0, 0, 0});
    reply.resize(length);
    return reply;
}

class MalformedReply : public ChannelTest, public testing::WithParamInterface<BadReply>
{
};

TEST_P(MalformedReply, Reply_isRefusedAndTheNextCallGetsItsOwn)
{
    const OpenChannel channel(name);
    server.thenReply([](const Bytes&) { return GetParam().bytes; });
    EXPECT_EQ(call(channel, frames::request(opcode)), failed(KXONLINX_BAD_REPLY));

    const Bytes next = frames::request(opcode, {9});
    EXPECT_EQ(call(channel, next), answered(frames::echo(next)));
    EXPECT_EQ(server.connections(), 2u);
}

INSTANTIATE_TEST_SUITE_P(Channel, MalformedReply,
                         testing::Values(BadReply{"empty", {}},                            //
                                         BadReply{"oneByte", {80}},                        //
                                         BadReply{"headerCut", withLength(79)},            //
                                         BadReply{"payloadMissing", withLength(80)},       //
                                         BadReply{"payloadCut", withLength(85)},           //
                                         BadReply{"payloadLonger", withLength(87)},        //
                                         BadReply{"headerLength", withByte(4, 79)},        //
                                         BadReply{"magic", withByte(5, 124)},              //
                                         BadReply{"magicHigh", withByte(6, 1)},            //
                                         BadReply{"version", withByte(7, 3)},              //
                                         BadReply{"otherOpcode", withByte(8, 34)},         //
                                         BadReply{"otherOpcodeHigh", withByte(9, 1)},      //
                                         BadReply{"kind", withByte(11, 1)},                //
                                         BadReply{"mask", withByte(14, 254)},              //
                                         BadReply{"payloadLength", withByte(16, 7)},       //
                                         BadReply{"payloadLengthHigh", withByte(17, 1)},   //
                                         BadReply{"maxPayload", withByte(20, 0x40)},       //
                                         BadReply{"payloadStart", withByte(21, 81)},       //
                                         BadReply{"payloadOf8193",                         //
                                                  frames::frame(opcode, Bytes(8193, 4))},  //
                                         BadReply{"text", Bytes(200, 'x')},                //
                                         BadReply{"ofManyFrames", Bytes(60000, 80)}),
                         [](const auto& test) { return test.param.name; });

using LongReply = ChannelTest;

TEST_F(LongReply, LongerThanTheBuffer_isRefusedAndTheConnectionKept)
{
    const OpenChannel channel(name);
    const Bytes request = frames::request(opcode, Bytes(20));
    EXPECT_EQ(call(channel, request, request.size() - 1), failed(KXONLINX_REPLY_TOO_LONG));

    const Bytes next = frames::request(opcode, {9});
    EXPECT_EQ(call(channel, next), answered(frames::echo(next)));
    EXPECT_EQ(server.connections(), 1u);
}

TEST_F(LongReply, LongerThanTheBuffer_leavesTheCallersBuffersAlone)
{
    const OpenChannel channel(name);
    Bytes request = frames::request(opcode, Bytes(20));
    Bytes reply(90, 0xEE);
    unsigned short length = 4711;
    ASSERT_EQ(SCP_send_receive(channel, static_cast<unsigned short>(request.size()), request.data(), 90, reply.data(),
                               &length),
              -1);
    EXPECT_EQ(length, 4711);
    EXPECT_EQ(reply, Bytes(90, 0xEE));
}

TEST_F(LongReply, AsLongAsTheBuffer_isDelivered)
{
    const OpenChannel channel(name);
    const Bytes request = frames::request(opcode, Bytes(20));
    EXPECT_EQ(call(channel, request, request.size()), answered(frames::echo(request)));
}

}  // namespace
