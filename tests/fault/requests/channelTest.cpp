// Damaged frames from outside, over the channel's pipe and through its shared memory: each is answered with a frame or
// its connection ends, and other clients notice nothing.
#include <gtest/gtest.h>

#include "MemoryClient.h"
#include "RunningServer.h"
#include "soundRequests.h"
#include "wire/frame.h"
#include "wire/opcodes.h"

using namespace bytes;

namespace {

struct DamagedFrames : RunningServer
{
    fuzzing::Random random{fuzzing::seed()};
    bool mayListen = false;

    // Mostly a sound frame around a damaged request; else the frame is damaged too.
    Bytes damagedFrame()
    {
        const SoundRequest& sound = random.of(soundRequests());
        const Bytes payload = damaged(sound, random);
        if (!mayListen && sound.opcode == wire::opcode::NotifyListen) return damagedFrame();
        Bytes message = frame(
            payload, static_cast<std::uint16_t>(payload.size() < 2 ? random.next() : payload[0] | payload[1] << 8));
        if (random.oneIn(3)) fuzzing::damage(message, random, 20'000);
        if (!message.empty() && random.oneIn(8))
            message[random.below(message.size())] = static_cast<std::uint8_t>(random.next());
        return message;
    }
    static bool isFrame(const Bytes& answer)
    {
        return answer.size() >= wire::frameHeaderLength + 6 && answer.size() <= wire::replyFrameCapacity &&
               Bytes(answer.begin() + 16, answer.begin() + 18) ==
                   u16(static_cast<std::uint16_t>(answer.size() - wire::frameHeaderLength));
    }
    template <typename Client>
    static void expectInOrder(Client& client)
    {
        const Bytes request = u16(wire::opcode::LogDeviceExists) + str(u"nowhere at all") + u32(0);
        ASSERT_EQ(client.ask(frame(request)), frame(reply(8012), wire::opcode::LogDeviceExists));
    }
};

TEST_F(DamagedFrames, OnThePipe_areAnsweredAndTheConnectionSurvives)
{
    constexpr std::uint32_t between = 32;
    const std::uint32_t rounds = fuzzing::rounds(500);
    fuzzing::tellCrashes(rounds);
    PipeClient bystander(places.channelPipe);
    PipeClient client(places.channelPipe);  // one that listens would be told things that are no answers
    std::uint64_t bytes = 0;
    for (std::uint32_t round = 0; round < rounds; ++round) {
        fuzzing::under("the channel's pipe", round);
        SCOPED_TRACE(fuzzing::whereabouts());
        const Bytes message = damagedFrame();
        if (message.empty()) continue;
        bytes += message.size();
        ASSERT_TRUE(isFrame(client.ask(message)));
        if (round % between != 0) continue;
        ASSERT_NO_FATAL_FAILURE(expectInOrder(client));
        ASSERT_NO_FATAL_FAILURE(expectInOrder(bystander));
    }
    fuzzing::figure("frames", rounds, bytes);
}

// Overwrites what the memory's rules leave to the server, and what is the client's own but for the request's number.
void scribble(wire::MemoryBlock& block, fuzzing::Random& random)
{
    const std::uint32_t number = fuzzing::awkwardNumber(random);
    switch (random.below(6)) {
        case 0:
            block.replyLength = number;
            break;
        case 1:
            block.takenNumber = number;
            break;
        case 2:
            block.nonce = random.next();
            break;
        case 3:
            block.requestEvent = block.replyEvent = block.serverProcess = random.next();
            break;
        case 4:
            block.clientSleeps = number;
            break;
        default:
            std::fill(std::begin(block.reply), std::end(block.reply), static_cast<std::uint8_t>(number));
    }
}

TEST_F(DamagedFrames, InSharedMemory_areAnsweredOrEndTheConnection)
{
    constexpr std::uint32_t between = 32;
    const std::uint32_t rounds = fuzzing::rounds(1000);
    fuzzing::tellCrashes(rounds);
    mayListen = true;
    MemoryClient bystander(places.channelPipe);
    ASSERT_TRUE(bystander.connected());
    std::unique_ptr<MemoryClient> client;
    std::uint64_t bytes = 0;
    for (std::uint32_t round = 0; round < rounds; ++round) {
        fuzzing::under("the channel's memory", round);
        SCOPED_TRACE(fuzzing::whereabouts());
        if (!client) client = std::make_unique<MemoryClient>(places.channelPipe);
        ASSERT_TRUE(client->connected());
        const Bytes message = damagedFrame();
        bytes += message.size();
        if (random.oneIn(4)) scribble(client->block(), random);
        const std::size_t told = random.oneIn(8) ? fuzzing::awkwardNumber(random) : message.size();
        const Bytes answer = client->ask(message, told);
        ASSERT_TRUE(isFrame(answer) || (answer.empty() && client->block().closed));
        if (answer.empty() || random.oneIn(16)) client.reset();
        if (round % between != 0) continue;
        ASSERT_NO_FATAL_FAILURE(expectInOrder(bystander));
    }
    fuzzing::figure("frames", rounds, bytes);
}

}  // namespace
