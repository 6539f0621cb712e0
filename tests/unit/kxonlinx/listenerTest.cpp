// The notifications of a channel: what is posted, and what is renewed with a server that comes back.
#include <algorithm>

#include "channel_fixture.h"
#include "comesTrue.h"

namespace {

constexpr DWORD longest = 20'000;

Bytes number(std::uint32_t value)
{
    return {frames::low(value), frames::high(value), frames::low(value >> 16), frames::high(value >> 16)};
}

Bytes operator+(Bytes left, const Bytes& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Bytes text(const char* characters)
{
    Bytes units;
    for (; *characters; ++characters)
        units = units + Bytes{static_cast<std::uint8_t>(*characters), 0};
    return number(static_cast<std::uint32_t>(units.size())) + units;
}

Bytes null()
{
    return {0xFF, 0xFF, 0, 0};
}

Bytes registration(const char* family, const Bytes& subject, const char* event, std::uint32_t handle)
{
    return text(family) + subject + text(event) + number(handle);
}

Bytes guid(std::uint8_t first)
{
    Bytes bytes(16, 0);
    bytes[0] = first;
    return bytes;
}

// A window that takes its messages when it is asked.
class OwnWindow
{
 public:
    OwnWindow() : window_(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr))
    {}
    ~OwnWindow() { DestroyWindow(window_); }
    OwnWindow(const OwnWindow&) = delete;
    OwnWindow& operator=(const OwnWindow&) = delete;
    operator HWND() const { return window_; }

    // The next message of this number; false when none comes.
    bool await(UINT number, MSG& message) const
    {
        return comesTrue([&] { return PeekMessageW(&message, window_, number, number, PM_REMOVE) != FALSE; });
    }

 private:
    HWND window_;
};

// A server that says yes to everything, and tells what it is given to whoever listens.
class Listener : public ChannelTest
{
 protected:
    Listener()
    {
        server.otherwise([this](PipeServer::Connection& connection, const Bytes& request) {
            const unsigned opcode = frames::opcodeOf(request);
            connection.write(frames::frame(opcode, {4, 0, 0, 0, 0, 0}));
            if (opcode != 497) return;
            for (const Bytes& push : pushes_)
                connection.write(push);
            // Whoever listens asks nothing more.
            connection.await(endListening_.get());
        });
    }
    ~Listener() override { SetEvent(endListening_.get()); }

    static Bytes push(const std::vector<std::pair<std::uint32_t, std::uint32_t>>& items)
    {
        Bytes fields;
        for (const auto& [what, value] : items)
            fields = fields + number(what) + number(value);
        return frames::request(502, fields);
    }
    std::vector<Bytes> received(unsigned opcode) const
    {
        std::vector<Bytes> all = server.received();
        std::erase_if(all, [&](const Bytes& frame) { return frames::opcodeOf(frame) != opcode; });
        return all;
    }
    bool awaitRenewals(std::size_t count) const
    {
        return comesTrue([&] { return received(501).size() >= count; });
    }
    int ask(unsigned opcode, const Bytes& fields) { return call(channel_, frames::request(opcode, fields)).result; }
    void open()
    {
        channel_ = SCP_openW(name.c_str());
        ASSERT_GT(channel_, 0);
        ASSERT_EQ(SetNorixHWndMsg(channel_, window, 1036), 0);
        ASSERT_TRUE(awaitRenewals(1));
    }
    void TearDown() override
    {
        if (channel_ > 0) SCP_close(channel_);
    }
    void restartServer()
    {
        const std::size_t renewals = received(501).size();
        server.stop();
        server.restart();
        ASSERT_TRUE(awaitRenewals(renewals + 1));
    }

    OwnWindow window;
    int channel_ = -1;
    std::vector<Bytes> pushes_;
    platform::KernelObject endListening_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
};

TEST_F(Listener, WhatTheServerTells_isPostedInOrder)
{
    pushes_ = {push({{0x500, 0x1234}, {0x219, 0x80000001}}), push({{0x219, 3}})};
    open();
    MSG message;
    ASSERT_TRUE(window.await(1036, message));
    EXPECT_EQ(message.wParam, 0x500u);
    EXPECT_EQ(message.lParam, 0x1234);
    ASSERT_TRUE(window.await(1036, message));
    EXPECT_EQ(message.wParam, 0x219u);
    EXPECT_EQ(static_cast<std::uint32_t>(message.lParam), 0x80000001u);
    ASSERT_TRUE(window.await(1036, message));
    EXPECT_EQ(message.lParam, 3);
}

TEST_F(Listener, WindowThatIsSetLater_getsWhatComesThen)
{
    open();
    const OwnWindow other;
    ASSERT_EQ(SetNorixHWndMsg(channel_, other, 2000), 0);
    pushes_ = {push({{0x500, 7}})};
    restartServer();
    MSG message;
    ASSERT_TRUE(other.await(2000, message));
    EXPECT_EQ(message.lParam, 7);
}

TEST_F(Listener, ListeningConnection_saysWhichChannelItIs)
{
    open();
    ASSERT_EQ(ask(256, guid(1)), 0);
    const std::vector<Bytes> listens = received(497);
    const std::vector<Bytes> channels = received(496);
    ASSERT_EQ(listens.size(), 1u);
    ASSERT_EQ(channels.size(), 1u);
    const auto idOf = [](const Bytes& frame) { return Bytes(frame.begin() + 82, frame.end()); };
    EXPECT_EQ(idOf(listens[0]), idOf(channels[0]));
    EXPECT_EQ(idOf(listens[0]).size(), 8u);
}

TEST_F(Listener, RequestsThatRegisterNothing_areSentAlone)
{
    const OpenChannel channel(name);
    ASSERT_EQ(call(channel, frames::request(33)).result, 0);
    EXPECT_EQ(server.received().size(), 1u);
}

TEST_F(Listener, RestartedServer_getsTheRegistrationsAgain)
{
    open();
    const Bytes devices = registration("LogDevices", null(), "Global\\a", 4);
    const Bytes names = registration("LogNames", text("N"), "b", 8);
    ASSERT_EQ(ask(26, devices), 0);
    ASSERT_EQ(ask(26, names), 0);
    ASSERT_EQ(ask(256, guid(1)), 0);
    ASSERT_EQ(ask(256, guid(1)), 0);
    restartServer();
    EXPECT_EQ(received(499), (std::vector<Bytes>{frames::request(499, devices), frames::request(499, names)}));
    EXPECT_EQ(received(500), (std::vector<Bytes>{frames::request(500, guid(1) + number(2))}));
}

TEST_F(Listener, WhatWasUnregistered_isNotRenewed)
{
    open();
    ASSERT_EQ(ask(26, registration("LogDevices", null(), "Global\\a", 4)), 0);
    ASSERT_EQ(ask(26, registration("LogNames", text("Name"), "b", 8)), 0);
    ASSERT_EQ(ask(26, registration("LogNames", text("Name"), "b", 12)), 0);
    ASSERT_EQ(ask(256, guid(1)), 0);
    ASSERT_EQ(ask(256, guid(2)), 0);
    ASSERT_EQ(ask(256, guid(2)), 0);
    ASSERT_EQ(ask(27, registration("LogDevices", text(""), "Global\\a", 0)), 0);
    ASSERT_EQ(ask(27, registration("LogNames", text("NAME"), "Global\\b", 8)), 0);
    ASSERT_EQ(ask(257, guid(1)), 0);
    ASSERT_EQ(ask(257, guid(2)), 0);
    restartServer();
    EXPECT_EQ(received(499),
              (std::vector<Bytes>{frames::request(499, registration("LogNames", text("Name"), "b", 12))}));
    EXPECT_EQ(received(500), (std::vector<Bytes>{frames::request(500, guid(2) + number(1))}));
}

TEST_F(Listener, WhatTheServerRefused_isNotRenewed)
{
    open();
    ASSERT_EQ(ask(256, guid(1)), 0);
    server.thenReply([](const Bytes& request) {
        return frames::frame(frames::opcodeOf(request), {4, 0, 87, 0, 0, 0});
    });
    ASSERT_EQ(ask(256, guid(2)), 0);
    restartServer();
    EXPECT_EQ(received(500), (std::vector<Bytes>{frames::request(500, guid(1) + number(1))}));
}

TEST_F(Listener, RegistrationWithoutAnAnswer_isStraightenedOutAtOnce)
{
    open();
    ASSERT_EQ(ask(256, guid(1)), 0);
    server.then([](PipeServer::Connection& connection, const Bytes&) { connection.close(); });
    ASSERT_EQ(ask(256, guid(2)), -1);
    ASSERT_TRUE(awaitRenewals(2));
    EXPECT_EQ(received(500), (std::vector<Bytes>{frames::request(500, guid(1) + number(1))}));
}

TEST_F(Listener, ServerThatSaysNonsense_isLeftAndAskedAnew)
{
    pushes_ = {Bytes(100, 0xAB)};
    channel_ = SCP_openW(name.c_str());
    ASSERT_EQ(SetNorixHWndMsg(channel_, window, 1036), 0);
    EXPECT_TRUE(comesTrue([&] { return received(497).size() >= 2; }));
}

}  // namespace
