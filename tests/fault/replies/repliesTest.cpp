// Every exported function against a server that answers with hostile bytes: the library neither crashes nor writes a
// byte beyond what its caller gave, and each call comes back.
#include <gmock/gmock.h>

#include <set>
#include <string>

#include "Function.h"
#include "HostilePipe.h"
#include "hostileReply.h"
#include "registryText.h"
#include "traceCapture.h"
#include "wire/frame.h"

Functions allFunctions()
{
    Functions all;
    for (Functions (*some)() :
         {deviceAndNameFunctions, boardAndProtocolFunctions, registryFunctions, machineFunctions, retiredFunctions}) {
        Functions more = some();
        all.insert(all.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
    }
    return all;
}

namespace {

const std::set<std::string> exported = {
#include "exports.inc"
};

// Arguments, and the server that answers the call that gets them: hostile for a while, then with the same failure for
// good, so that a call that asks until it is refused comes to its end.
class Conversation
{
 public:
    fuzzing::Random random{fuzzing::seed()};
    Arguments arguments{random};

    void begin()
    {
        arguments.beginAnew();
        answered_ = 0;
    }
    std::uint64_t answers() const { return answers_; }
    std::uint64_t bytes() const { return bytes_; }

    FakeChannel::Exchange exchange(std::uint16_t opcode)
    {
        if (mayBeHostile()) return counted(hostileExchange(opcode, arguments.capacities(), random));
        FakeChannel::Exchange end;
        end.frame.resize(wire::frameHeaderLength);
        end.frame.insert(end.frame.end(), std::begin(noMoreItems), std::end(noMoreItems));
        end.length = static_cast<std::uint16_t>(end.frame.size());
        return end;
    }
    Bytes payload(std::uint16_t opcode)
    {
        if (mayBeHostile()) {
            Bytes payload = hostilePayload(opcode, arguments.capacities(), random);
            bytes_ += payload.size();
            return payload;
        }
        return {std::begin(noMoreItems), std::end(noMoreItems)};
    }

 private:
    static constexpr std::uint32_t hostileAnswers = 48;
    static constexpr std::uint32_t endless = 20'000;
    static constexpr std::uint8_t noMoreItems[] = {4, 0, 3, 1, 0, 0};

    FakeChannel::Exchange counted(FakeChannel::Exchange exchange)
    {
        bytes_ += exchange.frame.size();
        return exchange;
    }
    bool mayBeHostile()
    {
        ++answers_;
        ++answered_;
        if (answered_ == endless) fuzzing::giveUp("a call that asks without end");
        return answered_ <= hostileAnswers;
    }

    std::uint32_t answered_ = 0;
    std::uint64_t answers_ = 0;
    std::uint64_t bytes_ = 0;
};

// Chooses functions: those that have been tried and ask the server nothing come up rarely.
class Choice
{
 public:
    explicit Choice(Functions functions) : functions_(std::move(functions)), tried_(functions_.size()) {}

    const Function& next(fuzzing::Random& random)
    {
        do
            at_ = random.below(functions_.size());
        while (tried_[at_].calls >= enough && tried_[at_].answers == 0 && !random.oneIn(32));
        return functions_[at_];
    }
    void called(std::uint64_t answers)
    {
        ++tried_[at_].calls;
        tried_[at_].answers += answers;
    }

 private:
    static constexpr std::uint32_t enough = 24;
    struct Tried
    {
        std::uint32_t calls = 0;
        std::uint64_t answers = 0;
    };

    Functions functions_;
    std::vector<Tried> tried_;
    std::size_t at_ = 0;
};

std::uint16_t opcodeOf(const Bytes& request)
{
    return request.size() < 2 ? std::uint16_t{0} : static_cast<std::uint16_t>(request[0] | request[1] << 8);
}

TEST(HostileReplies, AreTriedOnEveryExportedFunction)
{
    const HMODULE library = GetModuleHandleA("kxovaapi.dll");
    std::set<std::string> tried;
    for (const Function& function : allFunctions()) {
        EXPECT_TRUE(tried.insert(function.name).second) << function.name;
        EXPECT_EQ(function.address, reinterpret_cast<const void*>(GetProcAddress(library, function.name)))
            << function.name;
    }
    EXPECT_THAT(tried, testing::ContainerEq(exported));
}

// Each function several times in turn: enumerations go on from index to index.
void callEverything(const char* figure, std::uint32_t rounds)
{
    fuzzing::tellCrashes(rounds);
    FakeChannel& channel = *fakeChannel();
    channel.reset();
    Conversation conversation;
    channel.exchangeAll([&](const Bytes& request) { return conversation.exchange(opcodeOf(request)); });
    const HostilePipe pipe([&](std::uint16_t opcode) { return conversation.payload(opcode); });
    Choice choice(allFunctions());
    for (std::uint32_t round = 0; round < rounds;) {
        const Function& function = choice.next(conversation.random);
        for (std::uint32_t calls = 1 + conversation.random.below(6); calls > 0; --calls, ++round) {
            const std::uint64_t before = conversation.answers();
            fuzzing::under(function.name, round);
            conversation.begin();
            function.call(conversation.arguments);
            choice.called(conversation.answers() - before);
        }
    }
    channel.reset();
    fuzzing::figure(figure, conversation.answers(), conversation.bytes());
}

TEST(HostileReplies, DoNotHarmTheCaller)
{
    callEverything("replies", fuzzing::rounds(8000));
}

TEST(HostileReplies, DoNotHarmTheTraceThatShowsThem)
{
    const TraceCapture capture;
    // Formatted, then held back: showing a line takes a hundred times as long.
    const RegistryText filter(R"(Software\TAVRONE\NORIX\TrcParams)", "Module", "none");
    callEverything("traced", fuzzing::rounds(800));
}

}  // namespace
