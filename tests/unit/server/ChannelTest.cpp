// The channel with clients that behave, and with clients that do not.
#include <gtest/gtest.h>

#include <thread>

#include "channelFrames.h"
#include "comesTrue.h"
#include "handle_count.h"
#include "RunningServer.h"

using namespace bytes;

namespace {

struct Channel : RunningServer
{
    PipeClient connect() { return PipeClient(places.channelPipe); }
};

TEST_F(Channel, Request_isAnsweredWithAFrameOfItsOperation)
{
    PipeClient client = connect();
    ASSERT_TRUE(client.connected());
    EXPECT_EQ(client.ask(existsDev), notThere);
    EXPECT_EQ(client.ask(frame(u16(43) + str(u"Dev") + str(u"NX1611.MPI"))), frame(reply(0), 43));
    EXPECT_EQ(client.ask(frame(u16(33) + str(u"Dev") + str(u"busparam") + u32(260))),
              frame(reply(0, replyStr(u"1")), 33));
}

TEST_F(Channel, UnknownOperation_isAnswered)
{
    EXPECT_EQ(connect().ask(frame(u16(999))), frame(reply(8018), 999));
}

TEST_F(Channel, OperationOfTheServerPipe_isUnknownHere)
{
    EXPECT_EQ(connect().ask(frame(u16(22) + str(u"key") + str(u"value"))), frame(reply(8018), 22));
}

TEST_F(Channel, MalformedFrames_areAnsweredAndTheConnectionSurvives)
{
    const auto with = [](std::size_t at, std::uint8_t value) {
        Bytes message = existsDev;
        message[at] = value;
        return message;
    };
    const Bytes rows[] = {
        with(4, 0),       with(5, 0),     with(7, 0),  with(11, 0), with(14, 0),
        with(16, 0),      with(17, 0xFF), with(19, 1), with(21, 0), {existsDev.begin(), existsDev.end() - 1},
        existsDev + u8(0)};
    PipeClient client = connect();
    for (const Bytes& row : rows) {
        EXPECT_EQ(client.ask(row), refused);
        EXPECT_EQ(client.ask(existsDev), notThere);
    }
    EXPECT_EQ(client.ask(with(8, 43)), frame(reply(87), 43));
    EXPECT_EQ(client.ask(u8(42)), frame(reply(87), 0));
    EXPECT_EQ(client.ask({existsDev.begin(), existsDev.begin() + 79}), frame(reply(87), 0));
    EXPECT_EQ(client.ask(existsDev), notThere);
}

TEST_F(Channel, MessageLongerThanAnyFrame_isDroppedWholeAndAnsweredOnce)
{
    PipeClient client = connect();
    for (const std::size_t length : {std::size_t{8273}, std::size_t{8272 + 4096}, std::size_t{100'000}}) {
        Bytes message = existsDev;
        message.resize(length, 0xAB);
        EXPECT_EQ(client.ask(message), refused) << length;
    }
    EXPECT_EQ(client.ask(existsDev), notThere);
}

TEST_F(Channel, ManyClients_areAllServedAtOnce)
{
    std::vector<std::unique_ptr<PipeClient>> clients;
    for (int i = 0; i < 60; ++i) {
        clients.push_back(std::make_unique<PipeClient>(places.channelPipe));
        ASSERT_TRUE(clients.back()->connected()) << i;
    }
    for (const auto& client : clients)
        ASSERT_TRUE(client->send(existsDev));
    for (const auto& client : clients)
        EXPECT_EQ(client->receive(), notThere);
}

TEST_F(Channel, ClientsWritingAtOnce_loseNothing)
{
    PipeClient(places.channelPipe).ask(frame(u16(43) + str(u"Dev") + str(u"NX1611.MPI")));
    std::atomic<int> done = 0;
    std::vector<std::thread> writers;
    const auto name = [](char16_t writer, char16_t i) { return std::u16string{writer, i}; };
    for (char16_t writer = u'a'; writer < u'e'; ++writer) {
        writers.emplace_back([&, writer] {
            PipeClient client = connect();
            for (char16_t i = u'a'; i < u'k'; ++i)
                if (client.ask(frame(u16(34) + str(u"Dev") + str(name(writer, i)) + str(name(i, i)))) ==
                    frame(reply(0), 34))
                    ++done;
        });
    }
    for (std::thread& writer : writers)
        writer.join();
    EXPECT_EQ(done, 40);
    PipeClient client = connect();
    for (char16_t writer = u'a'; writer < u'e'; ++writer)
        for (char16_t i = u'a'; i < u'k'; ++i)
            EXPECT_EQ(client.ask(frame(u16(33) + str(u"Dev") + str(name(writer, i)) + u32(260))),
                      frame(reply(0, replyStr(name(i, i))), 33));
}

TEST_F(Channel, TemporaryDevices_vanishWithTheirClient)
{
    {
        PipeClient client = connect();
        client.ask(frame(u16(43) + str(u"Dev") + str(u"NX1611.MPI")));
        EXPECT_EQ(client.ask(frame(u16(45) + str(u"Dev") + u32(260))),
                  frame(reply(0, replyStr(u"DCFG_TEMP_LOG_DEVICE____1")), 45));
    }
    EXPECT_EQ(connect().ask(frame(u16(42) + str(u"DCFG_TEMP_LOG_DEVICE____1") + u32(0))), notThere);
}

TEST_F(Channel, Stop_endsConnectionsThatWaitForNothing)
{
    PipeClient client = connect();
    EXPECT_EQ(client.ask(existsDev), notThere);
    EXPECT_TRUE(server->stop(5000));
    EXPECT_TRUE(client.receive().empty());
    EXPECT_FALSE(connect().connected());
}

TEST_F(Channel, StartedAndStoppedServers_leaveNoHandleBehind)
{
    ASSERT_TRUE(server->stop(5000));
    const auto serveOnce = [&] {
        server = make();
        ASSERT_FALSE(server->start().has_value());
        EXPECT_EQ(connect().ask(existsDev), notThere);
        ASSERT_TRUE(server->stop(5000));
        server.reset();
    };
    serveOnce();
    const std::size_t before = handleCount();
    for (int i = 0; i < 5; ++i)
        serveOnce();
    EXPECT_TRUE(comesTrue([&] { return handleCount() <= before; }))
        << before << " before, " << handleCount() << " after";
    server = make();
}

TEST_F(Channel, RestartedServer_servesAgain)
{
    PipeClient(places.channelPipe).ask(frame(u16(43) + str(u"Dev") + str(u"NX1611.MPI")));
    ASSERT_TRUE(server->stop(5000));
    server = make();
    ASSERT_FALSE(server->start().has_value());
    EXPECT_EQ(connect().ask(existsDev), frame(reply(0), 42));
}

TEST_F(Channel, InitialNames_areMadeByTheFirstServerOnly)
{
    const Bytes exists = frame(u16(75) + str(u"NXVISU") + u32(0));
    EXPECT_EQ(connect().ask(exists), frame(reply(0), 75));
    EXPECT_EQ(connect().ask(frame(u16(69) + str(u"NXVISU"))), frame(reply(0), 69));
    ASSERT_TRUE(server->stop(5000));
    server = make();
    ASSERT_FALSE(server->start().has_value());
    EXPECT_EQ(connect().ask(exists), frame(reply(8012), 75));
}

TEST_F(Channel, SecondServer_isRefused)
{
    const std::unique_ptr<srv::Server> second = make();
    const auto failure = second->start();
    ASSERT_TRUE(failure.has_value());
    EXPECT_EQ(failure->kind, srv::StartFailure::Kind::AlreadyRunning);
    EXPECT_EQ(connect().ask(existsDev), notThere);
}

// Answers each message with a long one.
struct Chatterbox : srv::Conversation
{
    using Conversation::Conversation;
    std::size_t longestRequest() const noexcept override { return 16; }
    std::span<const std::uint8_t> answer(std::span<const std::uint8_t>, bool) noexcept override { return much; }
    Bytes much = Bytes(8000);
};

struct Listener : TestServer
{
    srv::PipeOptions options{L"\\\\.\\pipe\\KxovaTestListener" + std::to_wstring(GetCurrentProcessId()), 2, 3, 100};
    srv::PipeListener listener{options,
                               [this](std::uint64_t id, DWORD process) {
                                   return std::make_unique<Chatterbox>(dispatcher, id, srv::Via::Channel, process);
                               },
                               now.log};

    void SetUp() override
    {
        TestServer::SetUp();
        ASSERT_EQ(listener.start(), 0u);
    }
};

TEST_F(Listener, ClientThatDoesNotRead_isGivenUpAndHurtsNobody)
{
    PipeClient stalled(options.name);
    // Sends until the server has had enough of it.
    std::thread sender([&] {
        while (stalled.send(Bytes{1})) {
        }
    });
    PipeClient other(options.name);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(other.ask(Bytes{1}).size(), 8000u);
    sender.join();
    EXPECT_EQ(other.ask(Bytes{1}).size(), 8000u);
    EXPECT_TRUE(comesTrue([&] { return listener.connections() == 1; }));
}

TEST_F(Listener, ClientThatDiesWithAnUnreadReply_isForgotten)
{
    for (int i = 0; i < 10; ++i) {
        PipeClient client(options.name);
        ASSERT_TRUE(client.send(Bytes{1}));
        client.close();
    }
    EXPECT_TRUE(comesTrue([&] { return listener.connections() == 0; }));
}

TEST_F(Listener, Connections_leaveNoHandleBehind)
{
    const auto visit = [&] {
        PipeClient client(options.name);
        EXPECT_EQ(client.ask(Bytes{1}).size(), 8000u);
    };
    const auto idle = [&] { return listener.connections() == 0; };
    for (int i = 0; i < 5; ++i)
        visit();
    ASSERT_TRUE(comesTrue(idle));
    const std::size_t before = handleCount();
    for (int i = 0; i < 100; ++i)
        visit();
    ASSERT_TRUE(comesTrue(idle));
    // The last threads may still be on their way out.
    EXPECT_TRUE(comesTrue([&] { return handleCount() <= before; }))
        << before << " before, " << handleCount() << " after";
}

TEST_F(Listener, ClientsBeyondTheLimit_waitUntilOneGoes)
{
    std::vector<std::unique_ptr<PipeClient>> clients;
    for (int i = 0; i < 3; ++i) {
        clients.push_back(std::make_unique<PipeClient>(options.name));
        EXPECT_EQ(clients.back()->ask(Bytes{1}).size(), 8000u);
    }
    const auto tryOnce = [&] {
        return srv::Handle(
            CreateFileW(options.name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    };
    EXPECT_FALSE(tryOnce());
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PIPE_BUSY));
    clients.pop_back();
    EXPECT_TRUE(comesTrue([&] { return static_cast<bool>(tryOnce()); }));
}

TEST_F(Listener, StopWithAStalledClient_isBounded)
{
    PipeClient stalled(options.name);
    for (int i = 0; i < 2; ++i)
        stalled.send(Bytes{1});
    EXPECT_TRUE(listener.stop(5000));
}

}  // namespace
