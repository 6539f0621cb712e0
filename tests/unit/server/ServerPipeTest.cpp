// The pipe for registry requests: payloads without frames, read in bytes.
#include <gtest/gtest.h>

#include "RunningServer.h"

using namespace bytes;

namespace {

struct ServerPipe : RunningServer
{
    PipeClient connect() { return PipeClient(places.serverPipe, PipeClient::Reading::Bytes); }
};

TEST_F(ServerPipe, UnknownOperation_isAnsweredWithoutAFrame)
{
    PipeClient client = connect();
    ASSERT_TRUE(client.connected());
    EXPECT_EQ(client.ask(u16(999)), reply(8018));
    EXPECT_EQ(client.ask(u16(999)), reply(8018));
}

TEST_F(ServerPipe, OperationOfTheChannel_isUnknownHere)
{
    EXPECT_EQ(connect().ask(u16(42) + str(u"Dev") + u32(0)), reply(8018));
}

TEST_F(ServerPipe, MessagesThatAreNoRequests_areAnsweredAndTheConnectionSurvives)
{
    PipeClient client = connect();
    EXPECT_EQ(client.ask(u8(1)), reply(87));
    EXPECT_EQ(client.ask(Bytes(8193, 1)), reply(87));
    EXPECT_EQ(client.ask(Bytes(50'000, 1)), reply(87));
    EXPECT_EQ(client.ask(u16(999)), reply(8018));
}

TEST_F(ServerPipe, ClientsThatComeTogether_areAllLetInAtTheFirstTry)
{
    std::vector<srv::Handle> clients;
    for (int i = 0; i < 8; ++i)
        EXPECT_TRUE(clients.emplace_back(CreateFileW(places.serverPipe.c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                                                     nullptr, OPEN_EXISTING, 0, nullptr)))
            << i;
}

}  // namespace
