// The queue before the channel lock: one at a time, nobody forgotten, and no dead thread in the way.

#include "channel/lockQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

// What the queue is for, with the means to see that two were there at once.
struct Place
{
    LockQueue queue;
    std::atomic<int> inside = 0;
    std::atomic<int> most = 0;

    void visit(int turnsOfTheScheduler = 1)
    {
        queue.enter();
        const int now = ++inside;
        if (now > most) most = now;
        for (int i = 0; i < turnsOfTheScheduler; ++i)
            SwitchToThread();
        --inside;
        queue.leave();
    }
};

class ManyThreads : public testing::TestWithParam<int>
{
};

TEST_P(ManyThreads, enterOneAtATimeAndAllGetThrough)
{
    constexpr int visits = 2'000;
    Place place;
    std::atomic<int> done = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < GetParam(); ++i)
        threads.emplace_back([&] {
            for (int k = 0; k < visits; ++k) {
                place.visit();
                ++done;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(place.most, 1);
    EXPECT_EQ(done, GetParam() * visits);
}

INSTANTIATE_TEST_SUITE_P(LockQueue, ManyThreads, testing::Values(1, 2, 3, 8, 12), testing::PrintToStringParamName());

TEST(LockQueue, ThreadsThatNeverPause_letALaterOneIn)
{
    Place place;
    std::atomic<bool> over = false;
    std::vector<std::thread> busy;
    for (int i = 0; i < 4; ++i)
        busy.emplace_back([&] {
            while (!over)
                place.visit(20);
        });
    for (int i = 0; i < 20; ++i)
        place.visit();
    over = true;
    for (std::thread& thread : busy)
        thread.join();
    EXPECT_EQ(place.most, 1) << "let in by turn, not by the end of its patience";
}

// Enters in a thread of its own, and says when it is in.
class Visitor
{
 public:
    explicit Visitor(LockQueue& queue)
        : thread_([this, &queue] {
              started_ = true;
              queue.enter();
              in_ = true;
              queue.leave();
          })
    {
        while (!started_)
            SwitchToThread();
    }
    bool staysOutFor(DWORD milliseconds) const
    {
        const DWORD start = GetTickCount();
        while (!in_ && GetTickCount() - start < milliseconds)
            SwitchToThread();
        return !in_ || GetTickCount() - begun_ >= patience;  // on a machine as slow as that nothing is learnt
    }
    void join() { thread_.join(); }

 private:
    static constexpr DWORD patience = 500;
    const DWORD begun_ = GetTickCount();
    std::atomic<bool> started_ = false;
    std::atomic<bool> in_ = false;
    std::thread thread_;
};

constexpr DWORD aWhile = 50;  // milliseconds; a waiter's patience is longer

TEST(LockQueue, EnteredTwice_isFreeAfterTheSecondLeave)
{
    LockQueue queue;
    queue.enter();
    queue.enter();
    Visitor visitor(queue);
    queue.leave();
    EXPECT_TRUE(visitor.staysOutFor(aWhile));
    queue.leave();
    visitor.join();
}

TEST(LockQueue, LeaveOfAnotherThread_changesNothing)
{
    LockQueue queue;
    queue.enter();
    std::thread([&] { queue.leave(); }).join();
    Visitor visitor(queue);
    EXPECT_TRUE(visitor.staysOutFor(aWhile));
    queue.leave();
    visitor.join();
}

TEST(LockQueue, ThreadThatDiedInItsTurn_isWaitedForOnceUntilTheNextTakesOver)
{
    LockQueue queue;
    std::thread([&] { queue.enter(); }).join();
    queue.enter();
    queue.takeOver();
    Visitor visitor(queue);
    EXPECT_TRUE(visitor.staysOutFor(aWhile)) << "the turn is this thread's";
    queue.leave();
    visitor.join();

    // Free again: ten entries that each waited for the dead one would take five seconds.
    const DWORD start = GetTickCount();
    for (int i = 0; i < 10; ++i) {
        queue.enter();
        queue.leave();
    }
    EXPECT_LT(GetTickCount() - start, 2'500u);
}

}  // namespace
