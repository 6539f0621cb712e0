// Damaged requests of every operation: always a well-formed reply, nothing written elsewhere, and a server that still
// works.
#include <algorithm>

#include "FuzzedServer.h"
#include "soundRequests.h"

using namespace bytes;

namespace {

struct DamagedRequests : FuzzedServer
{
    std::uint64_t bytes = 0;

    void askDamaged(const SoundRequest& sound, fuzzing::Random& random, std::uint32_t round)
    {
        const auto operation = std::ranges::find(srv::allOperations(), sound.opcode, &srv::Operation::opcode);
        fuzzing::under(operation->name, round);
        const Bytes request = damaged(sound, random);
        bytes += request.size();
        const srv::Via via = random.oneIn(32) ? srv::Via::Pipe : sound.via;
        SCOPED_TRACE(fuzzing::whereabouts());
        expectWellFormed(request, ask(session(via), request));
    }
};

TEST_F(DamagedRequests, EveryOperationHasASoundRequestToDamage)
{
    for (const srv::Operation& operation : srv::allOperations())
        EXPECT_TRUE(std::ranges::any_of(soundRequests(), [&](const SoundRequest& sound) {
            return sound.opcode == operation.opcode && sound.via == operation.via;
        })) << operation.name;
}

TEST_F(DamagedRequests, WhatIsDamagedWasSound)
{
    for (const SoundRequest& sound : soundRequests()) {
        beginAnew();
        EXPECT_NE(ask(session(sound.via), payloadOf(sound)), reply(87)) << "operation " << sound.opcode;
    }
    expectNothingWrittenElsewhere();
}

TEST_F(DamagedRequests, CutAtEveryByte_areRefused)
{
    fuzzing::tellCrashes(1);
    for (const SoundRequest& sound : soundRequests()) {
        const Bytes whole = payloadOf(sound);
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            fuzzing::under(("operation " + std::to_string(sound.opcode) + " cut").c_str(),
                           static_cast<std::uint32_t>(length));
            SCOPED_TRACE(fuzzing::whereabouts());
            ASSERT_NO_FATAL_FAILURE(expectWellFormed(cut, ask(session(sound.via), cut)));
        }
    }
    expectNothingWrittenElsewhere();
}

TEST_F(DamagedRequests, AreAnsweredAndTheServerStaysInOrder)
{
    constexpr std::uint32_t between = 64;
    const std::uint32_t rounds = fuzzing::rounds(2500);
    fuzzing::tellCrashes(rounds);
    fuzzing::Random random(fuzzing::seed());
    for (std::uint32_t round = 0; round < rounds; ++round) {
        ASSERT_NO_FATAL_FAILURE(askDamaged(soundRequests()[round % soundRequests().size()], random, round));
        if (round % between != 0) continue;
        SCOPED_TRACE(fuzzing::whereabouts());
        ASSERT_NO_FATAL_FAILURE(expectInOrder(round));
        beginAnew();
    }
    expectNothingWrittenElsewhere();
    fuzzing::figure("requests", rounds, bytes);
}

}  // namespace
