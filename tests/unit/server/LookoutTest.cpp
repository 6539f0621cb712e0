// One thread that looks for the requests of all connections.
#include "listeners/Lookout.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>
#include <utility>

#include "comesTrue.h"

namespace {

// A connection whose client is the test.
struct TestPlace : srv::Lookout::Place
{
    std::atomic<int> requests = 0;
    std::atomic<bool> restless = false;  // its client always asks
    std::atomic<bool> atOnce = true;
    std::function<void()> whenItFallsAsleep;  // once

    std::atomic<int> taken = 0;
    std::atomic<int> answers = 0;
    std::atomic<int> wakings = 0;
    std::atomic<bool> sleeping = true;

    bool asked() const noexcept override { return restless || requests > taken; }
    bool attend() noexcept override
    {
        ++taken;
        if (!atOnce) return false;
        ++answers;
        return true;
    }
    void sleeps(bool now) noexcept override
    {
        sleeping = now;
        if (now && whenItFallsAsleep) std::exchange(whenItFallsAsleep, nullptr)();
    }
    void wake() noexcept override { ++wakings; }
};

constexpr unsigned endless = 0xFFFF'FFFF;

struct LookoutTest : testing::Test
{
    explicit LookoutTest(unsigned longestWatch = endless) : lookout(8, longestWatch) {}

    srv::Lookout lookout;
    std::atomic<bool> stop = false;
    TestPlace mine;
    TestPlace other;
    bool calledIn = false;  // mine, at the end of its looking
    std::atomic<bool> ended = false;
    std::thread looking;

    // The thread of `mine` looks and goes on doing so, for its client always asks.
    void keepLooking()
    {
        mine.restless = true;
        looking = std::thread([this] {
            calledIn = lookout.look(mine, stop);
            ended = true;
        });
        ASSERT_TRUE(comesTrue([this] { return mine.answers > 0; }));
    }
    void endLooking()
    {
        stop = true;
        if (looking.joinable()) looking.join();
    }
    // As the client of `other` does.
    void ask()
    {
        ++other.requests;
        EXPECT_FALSE(other.sleeping && lookout.look(other, stop));
    }
    // While `mine` looks, `other` asks for what is left to its own thread, which has been woken for it.
    void callOther()
    {
        keepLooking();
        other.atOnce = false;
        other.requests = 1;
        EXPECT_FALSE(lookout.look(other, stop));
        ASSERT_TRUE(comesTrue([this] { return other.wakings == 1; }));
    }
    // Until `mine` has been looked at often since.
    bool goesOn()
    {
        return comesTrue([this, from = mine.taken.load()] { return mine.taken > from + 100; });
    }
    void TearDown() override { endLooking(); }
};

TEST_F(LookoutTest, OwnRequest_isAnsweredAndThenNothingIsLookedForAnyMore)
{
    mine.requests = 1;
    EXPECT_FALSE(lookout.look(mine, stop));
    EXPECT_EQ(mine.answers, 1);
    EXPECT_TRUE(mine.sleeping);
    EXPECT_EQ(mine.wakings, 0);
}

TEST_F(LookoutTest, RequestThatComesWhileItFallsAsleep_isSeen)
{
    mine.whenItFallsAsleep = [this] { mine.requests = 1; };
    EXPECT_FALSE(lookout.look(mine, stop));
    EXPECT_EQ(mine.answers, 1);
    EXPECT_TRUE(mine.sleeping);
}

TEST_F(LookoutTest, RequestOfAnother_isAnsweredWhileItsThreadSleeps)
{
    keepLooking();
    EXPECT_FALSE(lookout.look(other, stop));
    ask();
    EXPECT_TRUE(comesTrue([this] { return other.answers == 1; }));
    EXPECT_EQ(other.wakings, 0);
}

TEST_F(LookoutTest, PlaceWhereNothingIsAsked_fallsAsleepBesideABusyOne)
{
    keepLooking();
    EXPECT_FALSE(lookout.look(other, stop));
    EXPECT_TRUE(comesTrue([this] { return other.sleeping.load(); }));
}

TEST_F(LookoutTest, RequestThatTakesLonger_isLeftToItsThreadAndHoldsNobodyUp)
{
    callOther();
    EXPECT_TRUE(lookout.look(other, stop));
    EXPECT_TRUE(goesOn());
    EXPECT_EQ(other.answers, 0);
    EXPECT_EQ(other.taken, 1);

    lookout.finish(other);
    other.atOnce = true;
    ++other.requests;
    EXPECT_FALSE(lookout.look(other, stop));
    EXPECT_TRUE(comesTrue([this] { return other.answers == 1; }));
}

TEST_F(LookoutTest, RequestDuringOneThatTakesLonger_waitsForIt)
{
    keepLooking();
    other.atOnce = false;
    other.requests = 2;
    EXPECT_FALSE(lookout.look(other, stop));
    EXPECT_TRUE(comesTrue([this] { return other.taken == 1; }));
    EXPECT_TRUE(goesOn());
    EXPECT_EQ(other.taken, 1);
}

TEST_F(LookoutTest, OwnRequestThatTakesLonger_endsTheLookingAndWakesThoseWhoAsk)
{
    keepLooking();
    other.restless = true;
    EXPECT_FALSE(lookout.look(other, stop));
    ASSERT_TRUE(comesTrue([this] { return other.answers > 0; }));
    mine.atOnce = false;
    looking.join();
    EXPECT_TRUE(calledIn);
    EXPECT_EQ(other.wakings, 1);
    EXPECT_TRUE(other.sleeping);

    // Meanwhile the other one's thread looks.
    other.restless = false;
    EXPECT_FALSE(lookout.look(other, stop));
    EXPECT_FALSE(other.asked());
}

TEST_F(LookoutTest, ThreadWithNothingToLookFor_doesNotWaitForAnotherAtWork)
{
    callOther();
    mine.restless = false;
    EXPECT_TRUE(comesTrue([this] { return ended.load(); }));
    EXPECT_FALSE(calledIn);
    EXPECT_FALSE(other.sleeping);  // its thread comes back by itself

    EXPECT_TRUE(lookout.look(other, stop));
    lookout.finish(other);
    other.atOnce = true;
    other.requests = 2;
    EXPECT_FALSE(lookout.look(other, stop));
    EXPECT_EQ(other.answers, 1);
}

TEST_F(LookoutTest, ThreadThatLeavesWithARequestTaken_isTold)
{
    callOther();
    EXPECT_TRUE(lookout.leave(other));
    TestPlace third;
    EXPECT_FALSE(lookout.leave(third));
}

struct ShortWatch : LookoutTest
{
    static constexpr unsigned longest = 1'000;
    ShortWatch() : LookoutTest(longest) {}
};

TEST_F(ShortWatch, End_passesTheWatchToAnother)
{
    keepLooking();
    other.restless = true;
    EXPECT_FALSE(lookout.look(other, stop));
    ASSERT_TRUE(comesTrue([this] { return ended.load(); }));
    EXPECT_FALSE(calledIn);
    EXPECT_TRUE(mine.sleeping);
    EXPECT_EQ(mine.wakings, 1);
    EXPECT_EQ(other.wakings, 1);
}

TEST_F(ShortWatch, End_comesAlsoWhenOnlyTheOtherStillAsks)
{
    keepLooking();
    other.restless = true;
    EXPECT_FALSE(lookout.look(other, stop));
    mine.restless = false;
    ASSERT_TRUE(comesTrue([this] { return ended.load(); }));
    EXPECT_TRUE(mine.sleeping);
    EXPECT_EQ(other.wakings, 1);
}

TEST_F(ShortWatch, End_doesNotComeWhereThereIsNobodyElse)
{
    keepLooking();
    EXPECT_TRUE(comesTrue([this] { return mine.answers > 3 * static_cast<int>(longest); }));
    EXPECT_FALSE(ended);
    endLooking();
    EXPECT_FALSE(calledIn);
    EXPECT_TRUE(mine.sleeping);
}

TEST_F(LookoutTest, PlaceThatHasLeft_isNotLookedAt)
{
    keepLooking();
    EXPECT_FALSE(lookout.look(other, stop));
    EXPECT_FALSE(lookout.leave(other));
    other.requests = 1;
    EXPECT_TRUE(goesOn());
    EXPECT_EQ(other.taken, 0);
}

}  // namespace
