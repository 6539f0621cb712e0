// What the exported functions refuse before anything is sent.
#include <thread>

#include "channel_fixture.h"

extern "C" int kxonlinx_open_in_c(const wchar_t* name);

namespace {

class MessageWindow
{
 public:
    MessageWindow()
        : window_(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr))
    {}
    ~MessageWindow() { DestroyWindow(window_); }
    MessageWindow(const MessageWindow&) = delete;
    MessageWindow& operator=(const MessageWindow&) = delete;
    operator HWND() const { return window_; }

 private:
    HWND window_;
};

int openError(const wchar_t* name)
{
    return SCP_openW(name) == -1 ? SCP_get_errno() : KXONLINX_OK;
}

TEST(OpenName, Null_isRefused)
{
    EXPECT_EQ(openError(nullptr), KXONLINX_BAD_ARGUMENT);
}

TEST(OpenName, Empty_isRefused)
{
    EXPECT_EQ(openError(L""), KXONLINX_BAD_ARGUMENT);
}

TEST(OpenName, WithBackslashOrSlash_isRefused)
{
    EXPECT_EQ(openError(L"..\\server"), KXONLINX_BAD_ARGUMENT);
    EXPECT_EQ(openError(L"a/b"), KXONLINX_BAD_ARGUMENT);
}

TEST(OpenName, LongestName_isTriedAndOneLongerRefused)
{
    EXPECT_EQ(openError(std::wstring(247, L'n').c_str()), KXONLINX_SERVER_ABSENT);
    EXPECT_EQ(openError(std::wstring(248, L'n').c_str()), KXONLINX_BAD_ARGUMENT);
}

TEST(OpenName, FromC_givesTheSameErrors)
{
    EXPECT_EQ(kxonlinx_open_in_c(L""), KXONLINX_BAD_ARGUMENT);
}

TEST(Handle, NeverGiven_isBad)
{
    for (const int handle : {-1, 0, 1, 63, 0x7FFFFFFF, -0x7FFFFFFF - 1}) {
        EXPECT_EQ(call(handle, frames::request(33)), failed(KXONLINX_BAD_HANDLE)) << handle;
        EXPECT_EQ(SCP_close(handle), -1) << handle;
        EXPECT_EQ(SCP_get_errno(), KXONLINX_BAD_HANDLE) << handle;
    }
}

using Arguments = ChannelTest;

TEST_F(Arguments, ClosedHandle_isNotOpenEvenWhenItsPlaceIsTaken)
{
    const int closed = SCP_openW(name.c_str());
    ASSERT_EQ(SCP_close(closed), 0);
    const OpenChannel other(name);
    EXPECT_EQ(call(closed, frames::request(33)), failed(KXONLINX_NOT_OPEN));
    EXPECT_EQ(SCP_close(closed), -1);
    EXPECT_EQ(SCP_get_errno(), KXONLINX_NOT_OPEN);
}

TEST_F(Arguments, NullPointers_areRefusedAndNothingIsSent)
{
    const OpenChannel channel(name);
    Bytes frame = frames::request(33);
    const auto length = static_cast<unsigned short>(frame.size());
    Bytes reply(frames::largest);
    unsigned short replyLength = 0;
    EXPECT_EQ(SCP_send_receive(channel, length, nullptr, frames::largest, reply.data(), &replyLength), -1);
    EXPECT_EQ(SCP_get_errno(), KXONLINX_BAD_ARGUMENT);
    EXPECT_EQ(SCP_send_receive(channel, length, frame.data(), frames::largest, nullptr, &replyLength), -1);
    EXPECT_EQ(SCP_get_errno(), KXONLINX_BAD_ARGUMENT);
    EXPECT_EQ(SCP_send_receive(channel, length, frame.data(), frames::largest, reply.data(), nullptr), -1);
    EXPECT_EQ(SCP_get_errno(), KXONLINX_BAD_ARGUMENT);
    EXPECT_TRUE(server.received().empty());
}

TEST_F(Arguments, RoomForNoReply_isRefusedAndNothingIsSent)
{
    const OpenChannel channel(name);
    EXPECT_EQ(call(channel, frames::request(33), 79), failed(KXONLINX_BAD_ARGUMENT));
    EXPECT_TRUE(server.received().empty());
}

TEST_F(Arguments, MalformedRequest_isRefusedAndNothingIsSent)
{
    const OpenChannel channel(name);
    Bytes otherOpcode = frames::request(33);
    otherOpcode[8] = 34;
    Bytes cut = frames::request(33, {1, 2, 3});
    cut.pop_back();
    for (const Bytes& bad : {Bytes(1), Bytes(80), Bytes(8272), frames::frame(33, {}), frames::frame(33, {33}),
                             frames::frame(33, Bytes(8193, 33)), otherOpcode, cut}) {
        EXPECT_EQ(call(channel, bad), failed(KXONLINX_BAD_FRAME)) << bad.size();
    }
    EXPECT_TRUE(server.received().empty());
}

TEST_F(Arguments, SixtyFifthChannel_isRefusedUntilOneIsClosed)
{
    std::vector<int> channels;
    for (int i = 0; i < 64; ++i)
        channels.push_back(SCP_openW(name.c_str()));
    EXPECT_EQ(openError(name.c_str()), KXONLINX_TOO_MANY_CHANNELS);
    EXPECT_EQ(SCP_close(channels.back()), 0);
    channels.back() = SCP_openW(name.c_str());
    EXPECT_GT(channels.back(), 0);
    for (const int channel : channels)
        EXPECT_EQ(SCP_close(channel), 0);
}

TEST_F(Arguments, ErrorNumber_isTheCallingThreadsOwn)
{
    ASSERT_EQ(openError(L""), KXONLINX_BAD_ARGUMENT);
    int before = -1;
    int after = -1;
    std::thread([&] {
        before = SCP_get_errno();
        SCP_close(-1);
        after = SCP_get_errno();
    }).join();
    EXPECT_EQ(before, KXONLINX_OK);
    EXPECT_EQ(after, KXONLINX_BAD_HANDLE);
    EXPECT_EQ(SCP_get_errno(), KXONLINX_BAD_ARGUMENT);
}

TEST_F(Arguments, ErrorNumberAfterSuccess_is0)
{
    ASSERT_EQ(openError(L""), KXONLINX_BAD_ARGUMENT);
    const OpenChannel channel(name);
    EXPECT_EQ(SCP_get_errno(), KXONLINX_OK);
}

TEST_F(Arguments, NotificationWindowOfThisProcess_isAccepted)
{
    const OpenChannel channel(name);
    const MessageWindow window;
    EXPECT_EQ(SetNorixHWndMsg(channel, window, 1036), 0);
    EXPECT_EQ(SetNorixHWndMsg(channel, window, 1024), 0);
    EXPECT_EQ(SetNorixHWndMsg(channel, window, 0xFFFF), 0);
}

TEST_F(Arguments, NotificationMessageOutOfRange_isRefused)
{
    const OpenChannel channel(name);
    const MessageWindow window;
    for (const UINT message : {0u, 1023u, 0x10000u}) {
        EXPECT_EQ(SetNorixHWndMsg(channel, window, message), -1) << message;
        EXPECT_EQ(SCP_get_errno(), KXONLINX_BAD_ARGUMENT) << message;
    }
}

TEST_F(Arguments, NotificationWindowThatIsNone_isRefused)
{
    const OpenChannel channel(name);
    EXPECT_EQ(SetNorixHWndMsg(channel, nullptr, 1036), -1);
    EXPECT_EQ(SCP_get_errno(), KXONLINX_BAD_ARGUMENT);
    EXPECT_EQ(SetNorixHWndMsg(channel, GetDesktopWindow(), 1036), -1);
    EXPECT_EQ(SCP_get_errno(), KXONLINX_BAD_ARGUMENT);
}

TEST(NotificationWindow, BadHandle_isRefused)
{
    const MessageWindow window;
    EXPECT_EQ(SetNorixHWndMsg(-1, window, 1036), -1);
    EXPECT_EQ(SCP_get_errno(), KXONLINX_BAD_HANDLE);
}

TEST_F(Arguments, CheckDevOpen_followsTheServerOfAnOpenChannel)
{
    const OpenChannel channel(name);
    EXPECT_EQ(OnlDll_CheckDevOpen(), 1);
    server.stop();
    EXPECT_EQ(OnlDll_CheckDevOpen(), 0);
    server.start();
    EXPECT_EQ(OnlDll_CheckDevOpen(), 1);
}

}  // namespace
