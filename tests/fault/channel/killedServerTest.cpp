// A server process that is killed, at rest and at work, and started again.
#include <thread>

#include "channel_fixture.h"
#include "server_process.h"

namespace {

class KilledServer : public testing::Test
{
 protected:
    const std::wstring name = L"kxonlinx-test-killed-" + std::to_wstring(GetCurrentProcessId());
    ServerProcess server{name};
    const Bytes request = frames::request(33, {1, 2, 3});
};

TEST_F(KilledServer, KilledAndStartedBetweenCalls_isNotNoticedByTheCaller)
{
    const OpenChannel channel(name);
    ASSERT_EQ(call(channel, request), answered(frames::echo(request)));
    server.kill();
    server.start();
    EXPECT_EQ(call(channel, request), answered(frames::echo(request)));
}

TEST_F(KilledServer, KilledBetweenCalls_isAbsent)
{
    const OpenChannel channel(name);
    server.kill();
    EXPECT_EQ(call(channel, request), failed(KXONLINX_SERVER_ABSENT));
}

TEST_F(KilledServer, KilledDuringACall_isLostAndFoundAgain)
{
    const OpenChannel channel(name);
    Outcome outcome{};
    std::thread caller([&] { outcome = call(channel, frames::request(serverProcess::noAnswer)); });
    server.kill();
    caller.join();
    // The kill may come before the request has been sent.
    EXPECT_THAT(outcome, testing::AnyOf(failed(KXONLINX_CONNECTION_LOST), failed(KXONLINX_SERVER_ABSENT)));

    server.start();
    EXPECT_EQ(call(channel, request), answered(frames::echo(request)));
}

TEST_F(KilledServer, Suspended_timesOutWithinTheBound)
{
    const CallBound bound(L"300");
    const OpenChannel channel(name);
    ASSERT_EQ(call(channel, request), answered(frames::echo(request)));
    server.suspend();
    EXPECT_EQ(call(channel, request), failed(KXONLINX_TIMED_OUT));
}

#ifdef KXONLINX_TEST_OVER_MEMORY
// The pipe's system would not say whether a request was begun; the memory does.
TEST_F(KilledServer, KilledBeforeItBegan_theNextServerIsAsked)
{
    const OpenChannel channel(name);
    ASSERT_EQ(call(channel, request), answered(frames::echo(request)));
    server.suspend();
    Outcome outcome{};
    std::thread caller([&] { outcome = call(channel, request); });
    ServerProcess next(name);
    server.kill();
    caller.join();
    EXPECT_EQ(outcome, answered(frames::echo(request)));
}
#endif

}  // namespace
