// Handles of the process over many uses of the channel; the server is another process.
#include "channel_fixture.h"
#include "handle_count.h"
#include "server_process.h"

namespace {

class Leak : public testing::Test
{
 protected:
    // The first rounds make what stays for the life of the process.
    template <typename Use>
    void expectNoHandleLeft(int rounds, Use use)
    {
        for (int i = 0; i < 5; ++i)
            use();
        const std::size_t before = handleCount();
        for (int i = 0; i < rounds && !HasFatalFailure(); ++i)
            use();
        EXPECT_EQ(handleCount(), before);
    }

    const std::wstring name = L"kxonlinx-test-leak-" + std::to_wstring(GetCurrentProcessId());
    ServerProcess server{name};
    const Bytes request = frames::request(33);
};

TEST_F(Leak, ThousandOpensAndCloses_leaveNoHandle)
{
    expectNoHandleLeft(1000, [&] {
        const OpenChannel channel(name);
        ASSERT_EQ(call(channel, request), answered(frames::echo(request)));
    });
}

TEST_F(Leak, TimedOutExchanges_leaveNoHandle)
{
    const CallBound bound(L"20");
    int timedOut = 0;  // on a busy machine so short a bound may end a call before it is sent
    expectNoHandleLeft(50, [&] {
        const OpenChannel channel(name);
        timedOut += call(channel, frames::request(serverProcess::noAnswer)).error == KXONLINX_TIMED_OUT;
    });
    EXPECT_GT(timedOut, 0);
}

TEST_F(Leak, FailedExchanges_leaveNoHandle)
{
    expectNoHandleLeft(200, [&] {
        const OpenChannel channel(name);
        ASSERT_EQ(call(channel, frames::request(serverProcess::closeConnection)).error, KXONLINX_CONNECTION_LOST);
        ASSERT_EQ(call(channel, frames::request(serverProcess::garbage)).error, KXONLINX_BAD_REPLY);
        ASSERT_EQ(call(channel, request, 80).error, KXONLINX_REPLY_TOO_LONG);
    });
}

TEST_F(Leak, AbsentServer_leavesNoHandle)
{
    const OpenChannel channel(name);
    server.kill();
    expectNoHandleLeft(1000, [&] {
        ASSERT_EQ(SCP_openW(name.c_str()), -1);
        ASSERT_EQ(call(channel, request).error, KXONLINX_SERVER_ABSENT);
    });
}

}  // namespace
