// What SCP_openW meets when there is no server, or not one that takes the connection.
#include <thread>

#include "channel_fixture.h"

namespace {

using std::chrono_literals::operator""s;

const std::wstring name = L"kxonlinx-test-connect-" + std::to_wstring(GetCurrentProcessId());

platform::File makePipe(DWORD access, DWORD type)
{
    return platform::File(
        CreateNamedPipeW((L"\\\\.\\pipe\\" + name).c_str(), access, type, 1, 4096, 4096, 0, nullptr));
}

TEST(OpenChannel, NoServer_isAbsentAtOnce)
{
    const Stopwatch watch;
    EXPECT_EQ(SCP_openW(name.c_str()), -1);
    EXPECT_EQ(SCP_get_errno(), KXONLINX_SERVER_ABSENT);
    EXPECT_LT(watch.elapsed(), 10s);  // half of the bound of a call
}

TEST(OpenChannel, EveryConnectionTaken_isBusyAfterTheBound)
{
    PipeServer server(name, 1);
    const OpenChannel first(name);
    ASSERT_GT(first, 0);

    const CallBound bound(L"200");
    const Stopwatch watch;
    EXPECT_EQ(SCP_openW(name.c_str()), -1);
    EXPECT_EQ(SCP_get_errno(), KXONLINX_SERVER_BUSY);
    EXPECT_LT(watch.elapsed(), 10s);
}

TEST(OpenChannel, ConnectionGetsFree_isConnected)
{
    PipeServer server(name, 1);
    const int first = SCP_openW(name.c_str());
    ASSERT_GT(first, 0);

    int second = -1;
    std::thread opener([&] { second = SCP_openW(name.c_str()); });
    EXPECT_EQ(SCP_close(first), 0);
    opener.join();

    const Bytes request = frames::request(33);
    EXPECT_EQ(call(second, request), answered(frames::echo(request)));
    SCP_close(second);
}

TEST(OpenChannel, PipeThatMayOnlyBeWritten_isAccessDenied)
{
    const platform::File pipe = makePipe(PIPE_ACCESS_INBOUND, PIPE_TYPE_MESSAGE);
    ASSERT_TRUE(pipe);
    EXPECT_EQ(SCP_openW(name.c_str()), -1);
    EXPECT_EQ(SCP_get_errno(), KXONLINX_ACCESS_DENIED);
}

TEST(OpenChannel, PipeOfBytes_isNotAChannel)
{
    const platform::File pipe = makePipe(PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE);
    ASSERT_TRUE(pipe);
    EXPECT_EQ(SCP_openW(name.c_str()), -1);
    EXPECT_EQ(SCP_get_errno(), KXONLINX_NOT_A_CHANNEL);
}

TEST(OpenChannel, FailedOpen_isOpenedByTheNextTry)
{
    ASSERT_EQ(SCP_openW(name.c_str()), -1);
    PipeServer server(name);
    const OpenChannel channel(name);
    EXPECT_GT(channel, 0);
    EXPECT_EQ(SCP_get_errno(), KXONLINX_OK);
}

}  // namespace
