// When a channel connects, what it sends again and when it drops the connection, over a scripted transport.
#include "channel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <string>

#include "frames.h"

namespace {

using frames::Bytes;
using kxonlinx::Bounds;
using kxonlinx::Channel;
using kxonlinx::ExchangeResult;

// What was done with the transport, one word a step, and what it answers.
struct Script
{
    std::string log;
    std::deque<kxonlinx_error> connects;   // empty: connects
    std::deque<ExchangeResult> exchanges;  // empty: echoes
};

class ScriptedTransport final : public kxonlinx::Transport
{
 public:
    explicit ScriptedTransport(Script& script) : script_(script) {}

    kxonlinx_error connect(const Bounds&) noexcept override
    {
        script_.log += "connect ";
        const kxonlinx_error error = next(script_.connects, KXONLINX_OK);
        connected_ = error == KXONLINX_OK;
        return error;
    }

    bool connected() const noexcept override { return connected_; }

    ExchangeResult exchange(std::span<const std::uint8_t> request, std::span<std::uint8_t> reply,
                            const Bounds&) noexcept override
    {
        script_.log += "exchange ";
        std::copy(request.begin(), request.end(), reply.begin());
        return next(script_.exchanges, {KXONLINX_OK, request.size(), true});
    }

    void close() noexcept override
    {
        script_.log += "close ";
        connected_ = false;
    }

    bool reachable() const noexcept override { return true; }

 private:
    template <typename T>
    static T next(std::deque<T>& values, T otherwise)
    {
        if (values.empty()) return otherwise;
        const T value = values.front();
        values.pop_front();
        return value;
    }

    Script& script_;
    bool connected_ = false;
};

class ChannelRules : public testing::Test
{
 protected:
    kxonlinx_error send()
    {
        std::uint16_t length = 0;
        script.log.clear();
        return channel->sendReceive(request, reply, length);
    }

    const Bytes request = frames::request(33, {1, 2, 3});
    Bytes reply = Bytes(frames::largest);
    Script script;
    kxonlinx::Ref<Channel> channel = Channel::create(std::make_unique<ScriptedTransport>(script), 1000);
};

constexpr ExchangeResult notSent{KXONLINX_CONNECTION_LOST, 0, false};
constexpr ExchangeResult lost{KXONLINX_CONNECTION_LOST, 0, true};

TEST_F(ChannelRules, Open_connectsOnce)
{
    EXPECT_EQ(channel->open(), KXONLINX_OK);
    EXPECT_EQ(script.log, "connect ");
    EXPECT_EQ(send(), KXONLINX_OK);
    EXPECT_EQ(script.log, "exchange ");
}

TEST_F(ChannelRules, OpenFailed_isThatFailure)
{
    script.connects = {KXONLINX_SERVER_ABSENT};
    EXPECT_EQ(channel->open(), KXONLINX_SERVER_ABSENT);
}

TEST_F(ChannelRules, StandingConnectionBrokenBeforeSending_isSentOnceMoreOnANewOne)
{
    channel->open();
    script.exchanges = {notSent};
    EXPECT_EQ(send(), KXONLINX_OK);
    EXPECT_EQ(script.log, "exchange close connect exchange ");
}

TEST_F(ChannelRules, NewConnectionBrokenToo_isLost)
{
    channel->open();
    script.exchanges = {notSent, notSent};
    EXPECT_EQ(send(), KXONLINX_CONNECTION_LOST);
    EXPECT_EQ(script.log, "exchange close connect exchange close ");
}

TEST_F(ChannelRules, FreshConnectionBrokenBeforeSending_isNotTriedAgain)
{
    script.exchanges = {notSent};
    EXPECT_EQ(send(), KXONLINX_CONNECTION_LOST);
    EXPECT_EQ(script.log, "connect exchange close ");
}

TEST_F(ChannelRules, LostAfterSending_isNeverSentAgain)
{
    channel->open();
    script.exchanges = {lost};
    EXPECT_EQ(send(), KXONLINX_CONNECTION_LOST);
    EXPECT_EQ(script.log, "exchange close ");
}

TEST_F(ChannelRules, OtherFailureBeforeSending_isNotTriedAgain)
{
    channel->open();
    script.exchanges = {{KXONLINX_OUT_OF_MEMORY, 0, false}};
    EXPECT_EQ(send(), KXONLINX_OUT_OF_MEMORY);
    EXPECT_EQ(script.log, "exchange close ");
}

TEST_F(ChannelRules, ServerGoneWhenReconnecting_isAbsent)
{
    channel->open();
    script.exchanges = {notSent};
    script.connects = {KXONLINX_SERVER_ABSENT};
    EXPECT_EQ(send(), KXONLINX_SERVER_ABSENT);
    EXPECT_EQ(script.log, "exchange close connect close ");
}

TEST_F(ChannelRules, AfterAFailure_theNextCallConnects)
{
    channel->open();
    script.exchanges = {{KXONLINX_TIMED_OUT, 0, true}};
    ASSERT_EQ(send(), KXONLINX_TIMED_OUT);
    EXPECT_EQ(script.log, "exchange close ");
    EXPECT_EQ(send(), KXONLINX_OK);
    EXPECT_EQ(script.log, "connect exchange ");
}

TEST_F(ChannelRules, BadReply_dropsTheConnection)
{
    channel->open();
    script.exchanges = {{KXONLINX_OK, request.size() - 1, true}};
    EXPECT_EQ(send(), KXONLINX_BAD_REPLY);
    EXPECT_EQ(script.log, "exchange close ");
}

TEST_F(ChannelRules, ReplyThatDoesNotFit_keepsTheConnection)
{
    channel->open();
    reply.resize(request.size() - 1);
    EXPECT_EQ(send(), KXONLINX_REPLY_TOO_LONG);
    EXPECT_EQ(script.log, "exchange ");
}

TEST_F(ChannelRules, BadRequest_doesNotEvenConnect)
{
    std::uint16_t length = 0;
    EXPECT_EQ(channel->sendReceive(Bytes(80), reply, length), KXONLINX_BAD_FRAME);
    EXPECT_EQ(script.log, "");
}

TEST_F(ChannelRules, Closed_isNotOpen)
{
    channel->open();
    channel->close();
    EXPECT_EQ(send(), KXONLINX_NOT_OPEN);
    EXPECT_EQ(script.log, "");
}

}  // namespace
