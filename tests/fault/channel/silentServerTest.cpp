// A server that does not answer, or too late, or more than once.
#include <thread>

#include "channel_fixture.h"

namespace {

using std::chrono_literals::operator""s;

platform::KernelObject makeEvent()
{
    return platform::KernelObject(CreateEventW(nullptr, TRUE, FALSE, nullptr));
}

void noAnswer(PipeServer::Connection&, const Bytes&) {}

using SilentServer = ChannelTest;

TEST_F(SilentServer, NoAnswer_timesOutWithinTheBound)
{
    const CallBound bound(L"200");
    const OpenChannel channel(name);
    server.then(noAnswer);
    const Stopwatch watch;
    EXPECT_EQ(call(channel, frames::request(33)), failed(KXONLINX_TIMED_OUT));
    EXPECT_LT(watch.elapsed(), 10s);
}

TEST_F(SilentServer, NoAnswer_leavesTheCallersBuffersAlone)
{
    const CallBound bound(L"200");
    const OpenChannel channel(name);
    server.then(noAnswer);
    Bytes request = frames::request(33);
    Bytes reply(frames::largest, 0xEE);
    unsigned short length = 4711;
    ASSERT_EQ(SCP_send_receive(channel, static_cast<unsigned short>(request.size()), request.data(),
                               static_cast<unsigned short>(reply.size()), reply.data(), &length),
              -1);
    EXPECT_EQ(length, 4711);
    EXPECT_EQ(reply, Bytes(frames::largest, 0xEE));
}

TEST_F(SilentServer, AfterTimeOut_nextCallConnectsAnewAndGetsItsAnswer)
{
    const CallBound bound(L"2000");
    const OpenChannel channel(name);
    server.then(noAnswer);
    ASSERT_EQ(call(channel, frames::request(33)).error, KXONLINX_TIMED_OUT);

    const Bytes next = frames::request(33, {1, 2, 3});
    EXPECT_EQ(call(channel, next), answered(frames::echo(next)));
    EXPECT_EQ(server.connections(), 2u);
}

TEST_F(SilentServer, TimedOutRequest_isSentOnce)
{
    const CallBound bound(L"200");
    const OpenChannel channel(name);
    server.then(noAnswer);
    ASSERT_EQ(call(channel, frames::request(33)).error, KXONLINX_TIMED_OUT);
    EXPECT_EQ(server.received().size(), 1u);
}

TEST_F(SilentServer, LateAnswer_isNeverTakenForTheNextOne)
{
    const CallBound bound(L"2000");
    const OpenChannel channel(name);
    const auto timedOut = makeEvent();
    const auto written = makeEvent();
    server.then([&](PipeServer::Connection& connection, const Bytes& request) {
        connection.await(timedOut.get());
        connection.write(frames::echo(request));
        SetEvent(written.get());
    });
    ASSERT_EQ(call(channel, frames::request(33, {1})).error, KXONLINX_TIMED_OUT);
    SetEvent(timedOut.get());
    WaitForSingleObject(written.get(), INFINITE);

    const Bytes next = frames::request(33, {2});
    EXPECT_EQ(call(channel, next), answered(frames::echo(next)));
}

TEST_F(SilentServer, SecondAnswerToOneRequest_isNeverTakenForTheNextOne)
{
    const OpenChannel channel(name);
    const auto written = makeEvent();
    server.then([&](PipeServer::Connection& connection, const Bytes& request) {
        connection.write(frames::echo(request));
        connection.write(frames::echo(request));
        SetEvent(written.get());
    });
    const Bytes first = frames::request(33, {1});
    // In memory the second may have come before the first was looked at: then neither counts.
    EXPECT_THAT(call(channel, first), testing::AnyOf(answered(frames::echo(first)), failed(KXONLINX_BAD_REPLY)));
    WaitForSingleObject(written.get(), INFINITE);

    const Bytes next = frames::request(33, {2});
    EXPECT_EQ(call(channel, next), answered(frames::echo(next)));
    EXPECT_EQ(server.received().size(), 2u);
}

TEST_F(SilentServer, CallsThatQueueOnOneHandle_shareTheBound)
{
    const CallBound bound(L"1000");
    const OpenChannel channel(name);
    constexpr int callers = 8;
    for (int i = 0; i < callers; ++i)
        server.then(noAnswer);

    std::vector<Outcome> outcomes(callers);
    std::vector<std::thread> threads;
    const Stopwatch watch;
    for (Outcome& outcome : outcomes) {
        threads.emplace_back([&] { outcome = call(channel, frames::request(33)); });
    }
    for (std::thread& thread : threads)
        thread.join();

    EXPECT_LT(watch.elapsed(), 6s);  // one after the other would take 8 s
    for (const Outcome& outcome : outcomes) {
        // Whoever gets the turn at the last moment may not even get a connection.
        EXPECT_THAT(outcome, testing::AnyOf(failed(KXONLINX_TIMED_OUT), failed(KXONLINX_CHANNEL_BUSY),
                                            failed(KXONLINX_SERVER_BUSY)));
    }
}

TEST_F(SilentServer, CloseDuringACall_endsTheCallAtOnce)
{
    const int channel = SCP_openW(name.c_str());
    server.then(noAnswer);
    Outcome outcome{};
    const Stopwatch watch;
    std::thread caller([&] { outcome = call(channel, frames::request(33)); });
    server.awaitReceived(1);
    EXPECT_EQ(SCP_close(channel), 0);
    caller.join();
    EXPECT_EQ(outcome, failed(KXONLINX_NOT_OPEN));
    EXPECT_LT(watch.elapsed(), 10s);  // half of the bound of a call
}

TEST_F(SilentServer, HangingCallOnOneHandle_doesNotHoldUpAnother)
{
    const int hanging = SCP_openW(name.c_str());
    const OpenChannel other(name);
    server.then(noAnswer);
    Outcome outcome{};
    std::thread caller([&] { outcome = call(hanging, frames::request(33)); });
    server.awaitReceived(1);

    const Bytes request = frames::request(34);
    EXPECT_EQ(call(other, request), answered(frames::echo(request)));

    SCP_close(hanging);
    caller.join();
    EXPECT_EQ(outcome.error, KXONLINX_NOT_OPEN);
}

}  // namespace
