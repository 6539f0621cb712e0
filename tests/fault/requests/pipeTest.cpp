// Messages that are no requests, from outside over the server pipe: each is answered or its connection ends, and other
// clients notice nothing.
#include <gtest/gtest.h>

#include "RunningServer.h"
#include "soundRequests.h"
#include "wire/opcodes.h"

using namespace bytes;

namespace {

struct DamagedMessages : RunningServer
{
    PipeClient connect() { return PipeClient(places.serverPipe, PipeClient::Reading::Bytes); }

    void expectInOrder(PipeClient& client)
    {
        const Bytes request =
            u16(wire::opcode::RegGetValue) + str(u"SOFTWARE\\WOW6432Node\\TAVRONE\\NORIX") + str(u"nowhere");
        ASSERT_EQ(client.ask(request), reply(ERROR_FILE_NOT_FOUND));
    }
    static std::vector<SoundRequest> requests()
    {
        std::vector<SoundRequest> all = soundRequests();
        std::erase_if(all, [](const SoundRequest& sound) { return sound.via != srv::Via::Pipe; });
        return all;
    }
};

TEST_F(DamagedMessages, AreAnsweredOnAConnectionThatSurvives)
{
    constexpr std::uint32_t between = 32;
    const std::uint32_t rounds = fuzzing::rounds(800);
    fuzzing::tellCrashes(rounds);
    fuzzing::Random random(fuzzing::seed());
    const std::vector<SoundRequest> sound = requests();
    PipeClient bystander = connect();
    PipeClient client = connect();
    std::uint64_t bytes = 0;
    for (std::uint32_t round = 0; round < rounds; ++round) {
        fuzzing::under("the server pipe", round);
        SCOPED_TRACE(fuzzing::whereabouts());
        Bytes message = damaged(random.of(sound), random);
        if (random.oneIn(16)) fuzzing::damage(message, random, 40'000);
        if (message.empty()) continue;
        bytes += message.size();
        const Bytes answer = client.ask(message);
        ASSERT_GE(answer.size(), 6u);
        ASSERT_EQ(Bytes(answer.begin(), answer.begin() + 2), u16(4));
        if (round % between != 0) continue;
        ASSERT_NO_FATAL_FAILURE(expectInOrder(client));
        ASSERT_NO_FATAL_FAILURE(expectInOrder(bystander));
    }
    fuzzing::figure("messages", rounds, bytes);
}

TEST_F(DamagedMessages, OfClientsThatLeaveWithoutReading_disturbNobody)
{
    const std::uint32_t rounds = fuzzing::rounds(60);
    fuzzing::tellCrashes(rounds);
    fuzzing::Random random(fuzzing::seed() + 1);
    const std::vector<SoundRequest> sound = requests();
    PipeClient bystander = connect();
    for (std::uint32_t round = 0; round < rounds; ++round) {
        fuzzing::under("the server pipe, left", round);
        SCOPED_TRACE(fuzzing::whereabouts());
        PipeClient client = connect();
        ASSERT_TRUE(client.connected());
        for (std::uint32_t message = random.below(3); message > 0; --message)
            client.send(damaged(random.of(sound), random));
        client.close();
        ASSERT_NO_FATAL_FAILURE(expectInOrder(bystander));
    }
}

TEST_F(DamagedMessages, WithNothingInThem_areAnsweredOrEndTheConnection)
{
    PipeClient bystander = connect();
    PipeClient client = connect();
    client.send({});
    client.close();
    expectInOrder(bystander);
}

}  // namespace
