// A server that goes away, and one that comes back.
#include "channel_fixture.h"

#include <thread>

namespace {

using std::chrono_literals::operator""s;

using LostServer = ChannelTest;

void closeConnection(PipeServer::Connection& connection, const Bytes&)
{
    connection.close();
}

TEST_F(LostServer, RestartBetweenCalls_isNotNoticedByTheCaller)
{
    const OpenChannel channel(name);
    ASSERT_EQ(call(channel, frames::request(33)).result, 0);
    server.restart();

    const Bytes request = frames::request(34, {7});
    EXPECT_EQ(call(channel, request), answered(frames::echo(request)));
    EXPECT_EQ(server.received(), (std::vector<Bytes>{frames::request(33), request}));
}

TEST_F(LostServer, ManyRestarts_eachIsMetWithOneNewConnection)
{
    const OpenChannel channel(name);
    for (std::size_t restarts = 1; restarts <= 20; ++restarts) {
        server.restart();
        ASSERT_EQ(call(channel, frames::request(33)).result, 0);
        ASSERT_EQ(server.connections(), 1 + restarts);
    }
}

TEST_F(LostServer, GoneForGood_isAbsentAtOnce)
{
    const OpenChannel channel(name);
    server.stop();
    const Stopwatch watch;
    EXPECT_EQ(call(channel, frames::request(33)), failed(KXONLINX_SERVER_ABSENT));
    EXPECT_EQ(call(channel, frames::request(33)), failed(KXONLINX_SERVER_ABSENT));
    EXPECT_LT(watch.elapsed(), 10s);  // half of the bound of a call
}

TEST_F(LostServer, BackAfterAFailedCall_isFoundByTheSameHandle)
{
    const OpenChannel channel(name);
    server.stop();
    ASSERT_EQ(call(channel, frames::request(33)).error, KXONLINX_SERVER_ABSENT);
    server.start();

    const Bytes request = frames::request(34);
    EXPECT_EQ(call(channel, request), answered(frames::echo(request)));
}

TEST_F(LostServer, ConnectionClosedInsteadOfAnAnswer_isLostAndTheRequestSentOnce)
{
    const OpenChannel channel(name);
    server.then(closeConnection);
    EXPECT_EQ(call(channel, frames::request(33)), failed(KXONLINX_CONNECTION_LOST));
    EXPECT_EQ(server.received().size(), 1u);
    EXPECT_EQ(server.connections(), 1u);
}

TEST_F(LostServer, StopDuringACall_endsTheCallAndTheNextOneConnects)
{
    const OpenChannel channel(name);
    server.then([](PipeServer::Connection&, const Bytes&) {});
    Outcome outcome{};
    std::thread caller([&] { outcome = call(channel, frames::request(33)); });
    server.awaitReceived(1);
    server.restart();
    caller.join();
    EXPECT_EQ(outcome, failed(KXONLINX_CONNECTION_LOST));

    const Bytes request = frames::request(34);
    EXPECT_EQ(call(channel, request), answered(frames::echo(request)));
    EXPECT_EQ(server.received(), (std::vector<Bytes>{frames::request(33), request}));
}

TEST_F(LostServer, AnswerThenClose_answerIsDeliveredAndTheNextCallConnects)
{
    const OpenChannel channel(name);
    const platform::KernelObject closed(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    server.then([&](PipeServer::Connection& connection, const Bytes& request) {
        connection.write(frames::echo(request));
        connection.close();
        SetEvent(closed.get());
    });
    const Bytes request = frames::request(33, {5});
    EXPECT_EQ(call(channel, request), answered(frames::echo(request)));
    WaitForSingleObject(closed.get(), INFINITE);

    const Bytes next = frames::request(33, {6});
    EXPECT_EQ(call(channel, next), answered(frames::echo(next)));
}

}  // namespace
