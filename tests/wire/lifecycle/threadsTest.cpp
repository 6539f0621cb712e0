// Several threads in one process: one exchange at a time, one channel.

#include <gmock/gmock.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "atOnce.h"
#include "loadedLibrary.h"

namespace {

using testing::Contains;
using testing::SizeIs;

// A point that threads leave together. This compiler's std::barrier at times forgets to wake a thread where the system
// has no futex.
class MeetingPoint
{
 public:
    explicit MeetingPoint(int expected) : missing_(expected) {}
    void arriveAndWait()
    {
        std::unique_lock lock(mutex_);
        if (--missing_ == 0) allArrived_.notify_all();
        allArrived_.wait(lock, [this] { return missing_ <= 0; });
    }

 private:
    std::mutex mutex_;
    std::condition_variable allArrived_;
    int missing_;
};

TEST_F(LifecycleTest, TwoThreadsThatOpenAtOnce_keepOneChannel)
{
    const TraceCapture capture("0x40");
    const LoadedLibrary library;
    MeetingPoint bothOpened(2);
    channel.onOpen([&] { bothOpened.arriveAndWait(); });

    long results[2] = {-1, -1};
    std::thread first([&] { results[0] = library.deleteDevice("x"); });
    std::thread second([&] { results[1] = library.deleteDevice("y"); });
    first.join();
    second.join();

    EXPECT_EQ(results[0], 0);
    EXPECT_EQ(results[1], 0);
    EXPECT_THAT(channel.opened(), SizeIs(2));
    ASSERT_THAT(channel.closed(), SizeIs(1));
    EXPECT_THAT(capture.lines(),
                Contains(TraceLine{"FM", "kxOvascp::Init()",
                                   "Closing unneccesary scp handle " + std::to_string(channel.closed()[0])}));
}

TEST_F(LifecycleTest, EightThreads_exchangeOneAtATime)
{
    const LoadedLibrary library;
    AtOnce exchanges;
    channel.answerAll([&](const Bytes&) {
        exchanges.enter();
        SwitchToThread();
        exchanges.leave();
        return Bytes{4, 0, 0, 0, 0, 0};
    });

    constexpr int perThread = 200;
    std::atomic<int> failed = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            for (int k = 0; k < perThread; ++k)
                failed += library.deleteDevice("x") != 0;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(failed, 0);
    EXPECT_EQ(exchanges.most(), 1);
    EXPECT_THAT(channel.requests(), SizeIs(8 * perThread));
}

DWORD WINAPI callAndDie(void* library)
{
    return static_cast<DWORD>(static_cast<const LoadedLibrary*>(library)->deleteDevice("d"));
}

TEST_F(LifecycleTest, AbandonedLock_isAFailureOnceAndUsableAgain)
{
    // A thread dies inside an exchange, with the channel lock in its hands.
    const TraceCapture capture("0x40");
    const LoadedLibrary library;
    channel.answerAll([](const Bytes& request) -> Bytes {
        if (request[6] == 'd') ExitThread(0);
        return {4, 0, 0, 0, 0, 0};
    });
    const HANDLE thread = CreateThread(nullptr, 0, callAndDie, const_cast<LoadedLibrary*>(&library), 0, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);

    EXPECT_EQ(library.deleteDevice("x"), 30);
    EXPECT_THAT(capture.lines(), Contains(TraceLine{"FM", "kxOvascp::sendReceive", "error: OvaScpLock failed!"}));
    EXPECT_EQ(library.deleteDevice("x"), 0);
}

}  // namespace
