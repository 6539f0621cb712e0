// The channel through shared memory, with clients that behave, and with clients that do not.
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include "channelFrames.h"
#include "comesTrue.h"
#include "handle_count.h"
#include "MemoryClient.h"
#include "RunningServer.h"

using namespace bytes;

namespace {

struct SharedMemory : RunningServer
{
    std::unique_ptr<MemoryClient> connect()
    {
        auto client = std::make_unique<MemoryClient>(places.channelPipe);
        EXPECT_TRUE(client->connected());
        return client;
    }
};

TEST_F(SharedMemory, Request_isAnsweredAsOnThePipe)
{
    const auto client = connect();
    EXPECT_EQ(client->ask(existsDev), notThere);
    EXPECT_EQ(client->ask(frame(u16(43) + str(u"Dev") + str(u"NX1611.MPI"))), frame(reply(0), 43));
    EXPECT_EQ(PipeClient(places.channelPipe).ask(existsDev), frame(reply(0), 42));
    EXPECT_EQ(client->ask(frame(u16(33) + str(u"Dev") + str(u"busparam") + u32(260))),
              frame(reply(0, replyStr(u"1")), 33));
}

TEST_F(SharedMemory, Offer_namesMemoryWithItsNonce)
{
    const auto client = connect();
    EXPECT_EQ(client->offer.magic, 0x4D58'4B31u);
    EXPECT_EQ(client->offer.layout, 1u);
    EXPECT_EQ(client->block().nonce, client->offer.nonce);
    EXPECT_NE(connect()->offer.nonce, client->offer.nonce);
}

TEST_F(SharedMemory, SleepingServer_isWokenByTheRequest)
{
    const auto client = connect();
    ASSERT_TRUE(comesTrue([&] { return client->block().serverSleeps == 1; }));
    EXPECT_EQ(client->ask(existsDev), notThere);
}

TEST_F(SharedMemory, Request_isTakenBeforeItIsAnswered)
{
    const auto client = connect();
    EXPECT_EQ(client->block().takenNumber, 0u);
    client->ask(existsDev);
    EXPECT_EQ(client->block().takenNumber, client->block().requestNumber);
}

TEST_F(SharedMemory, MalformedFrames_areAnsweredAndTheConnectionSurvives)
{
    const auto client = connect();
    for (const std::size_t at : {4, 5, 7, 11, 14, 16, 19, 21}) {
        Bytes message = existsDev;
        message[at] ^= 0x55;
        EXPECT_EQ(client->ask(message), refused) << at;
    }
    EXPECT_EQ(client->ask(existsDev), notThere);
}

TEST_F(SharedMemory, LengthThatLies_isAnsweredAndTheConnectionSurvives)
{
    const auto client = connect();
    EXPECT_EQ(client->ask(existsDev, existsDev.size() - 1), refused);
    EXPECT_EQ(client->ask(existsDev, 0), frame(reply(87), 0));
    for (const std::size_t length : {std::size_t{8272}, std::size_t{8273}, std::size_t{16'832},
                                     std::size_t{0x7FFF'FFFF}, std::size_t{0xFFFF'FFFF}})
        EXPECT_EQ(client->ask(existsDev, length), refused) << length;
    EXPECT_EQ(client->ask(existsDev), notThere);
}

TEST_F(SharedMemory, NumberThatJumps_isARequestLikeAnother)
{
    const auto client = connect();
    client->block().requestNumber = 0xFFFF'FFFE;
    EXPECT_EQ(client->ask(existsDev), notThere);  // 0xFFFFFFFF
    EXPECT_EQ(client->ask(existsDev), notThere);  // 0
    EXPECT_EQ(client->ask(existsDev), notThere);  // 1
}

TEST_F(SharedMemory, TemporaryDevices_vanishWithTheirClient)
{
    {
        const auto client = connect();
        client->ask(frame(u16(43) + str(u"Dev") + str(u"NX1611.MPI")));
        EXPECT_EQ(client->ask(frame(u16(45) + str(u"Dev") + u32(260))),
                  frame(reply(0, replyStr(u"DCFG_TEMP_LOG_DEVICE____1")), 45));
    }
    EXPECT_EQ(connect()->ask(frame(u16(42) + str(u"DCFG_TEMP_LOG_DEVICE____1") + u32(0))), notThere);
}

TEST_F(SharedMemory, WishToListenHere_endsTheConnection)
{
    const auto client = connect();
    EXPECT_EQ(client->ask(frame(u16(497) + u32(1) + u32(0))), frame(reply(0), 497));
    EXPECT_TRUE(client->awaitClosed());
    EXPECT_EQ(connect()->ask(existsDev), notThere);
}

TEST_F(SharedMemory, ManyClients_areAllServed)
{
    std::vector<std::unique_ptr<MemoryClient>> clients;
    for (int i = 0; i < 60; ++i)
        clients.push_back(connect());
    for (const auto& client : clients)
        EXPECT_EQ(client->ask(existsDev), notThere);
}

TEST_F(SharedMemory, ClientsAtTheSameTime_readAndChangeWithoutMixingUp)
{
    constexpr int clients = 6;
    constexpr int rounds = 60;
    std::atomic<int> wrong = 0;
    std::vector<std::thread> all;
    for (int i = 0; i < clients; ++i)
        all.emplace_back([&, own = std::u16string(u"Dev") + static_cast<char16_t>(u'0' + i)] {
            const auto client = connect();
            if (client->ask(frame(u16(43) + str(own) + str(u"NX1611.MPI"))) != frame(reply(0), 43)) ++wrong;
            for (int round = 0; round < rounds; ++round) {
                const std::u16string text = own + static_cast<char16_t>(u'A' + round % 26);
                if (client->ask(frame(u16(34) + str(own) + str(u"text") + str(text))) != frame(reply(0), 34)) ++wrong;
                for (int read = 0; read < 5; ++read)
                    if (client->ask(frame(u16(33) + str(own) + str(u"text") + u32(260))) !=
                        frame(reply(0, replyStr(text)), 33))
                        ++wrong;
            }
        });
    for (std::thread& one : all)
        one.join();
    EXPECT_EQ(wrong, 0);
}

TEST_F(SharedMemory, Stop_endsConnectionsAndTellsTheirClients)
{
    const auto idle = connect();
    const auto used = connect();
    EXPECT_EQ(used->ask(existsDev), notThere);
    EXPECT_TRUE(server->stop(5'000));
    EXPECT_EQ(idle->block().closed, 1u);
    EXPECT_EQ(used->block().closed, 1u);
    EXPECT_FALSE(MemoryClient(places.channelPipe).connected());
}

TEST_F(SharedMemory, Connections_leaveNoHandleBehind)
{
    const auto visit = [&] { EXPECT_EQ(connect()->ask(existsDev), notThere); };
    for (int i = 0; i < 5; ++i)
        visit();
    std::size_t before = 0;
    // The last threads may still be on their way out.
    ASSERT_TRUE(comesTrue([&, last = std::size_t{0}]() mutable {
        before = handleCount();
        return std::exchange(last, before) == before;
    }));
    for (int i = 0; i < 100; ++i)
        visit();
    EXPECT_TRUE(comesTrue([&] { return handleCount() <= before + handlesOfTheRunTime; }))
        << before << " before, " << handleCount() << " after";
}

}  // namespace
