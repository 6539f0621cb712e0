#include "turn.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

using kxonlinx::Deadline;
using kxonlinx::Turn;
using kxonlinx::TurnHolder;

constexpr DWORD longTime = 60'000;

TEST(Turn, Free_isTakenEvenWithoutTimeLeft)
{
    Turn turn;
    EXPECT_EQ(turn.take(Deadline::after(0)), Turn::Result::taken);
}

TEST(Turn, Taken_timesOut)
{
    Turn turn;
    const TurnHolder holder(turn, Deadline::after(longTime));
    EXPECT_EQ(turn.take(Deadline::after(20)), Turn::Result::timedOut);
}

TEST(Turn, GivenBack_isTakenAgain)
{
    Turn turn;
    {
        const TurnHolder holder(turn, Deadline::after(longTime));
    }
    EXPECT_EQ(turn.take(Deadline::after(0)), Turn::Result::taken);
}

TEST(Turn, Closed_isNotTaken)
{
    Turn turn;
    turn.close();
    EXPECT_EQ(turn.take(Deadline::after(longTime)), Turn::Result::closed);
}

TEST(Turn, ClosedWhileOthersWait_tellsThemAll)
{
    Turn turn;
    TurnHolder holder(turn, Deadline::after(longTime));
    std::vector<Turn::Result> results(4, Turn::Result::taken);
    std::vector<std::thread> threads;
    for (Turn::Result& result : results) {
        threads.emplace_back([&] { result = turn.take(Deadline::after(longTime)); });
    }
    turn.close();
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(results, std::vector<Turn::Result>(4, Turn::Result::closed));
}

TEST(Turn, EightThreads_haveItOneAtATime)
{
    Turn turn;
    int counter = 0;  // not atomic: only the turn guards it
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < 1000; ++i) {
                const TurnHolder holder(turn, Deadline::after(longTime));
                const int seen = counter;
                if (i % 100 == 0) std::this_thread::yield();
                counter = seen + 1;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(counter, 8000);
}

}  // namespace
