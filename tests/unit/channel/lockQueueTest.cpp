// The queue before the channel lock: one at a time, nobody forgotten, and no dead thread in the way.

#include "channel/lockQueue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

#include "atOnce.h"

namespace {

// A busy machine has more than one try where a test measures time.
constexpr DWORD patience = 500;  // milliseconds that a thread waits for its turn at most
constexpr DWORD aWhile = 50;     // more than a clock's unevenness, less than a waiter's patience

// What the queue is for, with the means to see that two were there at once.
struct Place
{
    LockQueue queue;
    AtOnce visitors;
    std::atomic<bool> impatient = false;  // on a machine this slow some go in without their turn

    ~Place() { queue.close(); }

    void visit(int turnsOfTheScheduler = 1)
    {
        const DWORD start = GetTickCount();
        queue.enter();
        if (GetTickCount() - start >= patience - aWhile) impatient = true;
        visitors.enter();
        for (int i = 0; i < turnsOfTheScheduler; ++i)
            SwitchToThread();
        visitors.leave();
        queue.leave();
    }
    bool wasOneAtATime() const { return visitors.most() == 1 || impatient; }
};

class ManyThreads : public testing::TestWithParam<int>
{
};

TEST_P(ManyThreads, enterOneAtATimeAndAllGetThrough)
{
    constexpr int visits = 500;
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
    EXPECT_TRUE(place.wasOneAtATime());
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
    const auto visit = [&place] {
        const DWORD start = GetTickCount();
        for (int i = 0; i < 20; ++i)
            place.visit();
        return GetTickCount() - start;
    };
    DWORD shortest = visit();
    for (int i = 0; i < 3 && shortest >= 10 * patience; ++i)
        shortest = std::min(shortest, visit());
    EXPECT_LT(shortest, 10 * patience) << "by turn, not by the end of its patience each time";
    over = true;
    for (std::thread& thread : busy)
        thread.join();
    EXPECT_TRUE(place.wasOneAtATime());
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
        return !in_ || GetTickCount() - begun_ >= patience - aWhile;  // on so slow a machine nothing is learnt
    }
    void join() { thread_.join(); }

 private:
    const DWORD begun_ = GetTickCount();
    std::atomic<bool> started_ = false;
    std::atomic<bool> in_ = false;
    std::thread thread_;
};

TEST(LockQueue, ThreadThatSleeps_isWokenWhenTheTurnEnds)
{
    LockQueue queue;
    const auto wait = [&queue] {
        const DWORD start = GetTickCount();
        queue.enter();
        Visitor visitor(queue);
        EXPECT_TRUE(visitor.staysOutFor(aWhile));
        queue.leave();
        visitor.join();
        return GetTickCount() - start;
    };
    DWORD shortest = wait();
    for (int i = 0; i < 10 && shortest >= patience; ++i)
        shortest = std::min(shortest, wait());
    EXPECT_LT(shortest, patience) << "woken, not out of patience";
    queue.close();
}

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
    queue.close();
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
    queue.close();
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
    EXPECT_LT(GetTickCount() - start, 5 * patience);
    queue.close();
}

std::atomic<bool> aboutToEnter;

DWORD WINAPI enterOnly(void* queue)
{
    aboutToEnter = true;
    static_cast<LockQueue*>(queue)->enter();
    return 0;
}

// The first of them looks out for its turn, the others sleep.
TEST(LockQueue, ThreadsThatAreEndedWhileTheyWait_holdUpNobodyForLong)
{
    LockQueue queue;
    queue.enter();
    for (int i = 0; i < 8; ++i) {
        aboutToEnter = false;
        const HANDLE thread = CreateThread(nullptr, 0, enterOnly, &queue, 0, nullptr);
        ASSERT_NE(thread, nullptr);
        while (!aboutToEnter)
            SwitchToThread();
        WaitForSingleObject(thread, aWhile);
        TerminateThread(thread, 0);
        WaitForSingleObject(thread, INFINITE);
        CloseHandle(thread);
    }
    queue.leave();

    const DWORD start = GetTickCount();
    for (int i = 0; i < 20; ++i) {
        queue.enter();
        queue.takeOver();
        queue.leave();
    }
    EXPECT_LT(GetTickCount() - start, 4 * patience) << "twenty entries, eight dead threads before them";
    queue.close();
}

}  // namespace
