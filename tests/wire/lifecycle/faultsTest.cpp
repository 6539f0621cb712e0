// What others do to a process that uses the library: they end its window, unload the library under its threads' feet, or
// end the process while its threads are calling.

#include <gmock/gmock.h>

#include <atomic>
#include <thread>
#include <vector>

#include "handle_count.h"
#include "loadedLibrary.h"

namespace {

constexpr int threadCount = 8;

TEST_F(LifecycleTest, WindowClosedByOthers_callsGoOnAndTheUnloadingTakesTheRestAway)
{
    LoadedLibrary library;
    ASSERT_EQ(library.exists("Dummy"), -1);
    const HWND window = awaitEventWindow();
    ASSERT_NE(window, nullptr);
    SendMessageA(window, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(window));

    channel.answerAll([](const Bytes&) { return Bytes{4, 0, 0, 0, 0, 0}; });
    EXPECT_EQ(library.deleteDevice("x"), 0);
    EXPECT_EQ(library.exists("Dummy"), -1);
    library.unload();
    WNDCLASSA windowClass;
    EXPECT_FALSE(GetClassInfoA(GetModuleHandleA(nullptr), "KXOVAAPIWOW", &windowClass));
}

// Each thread has a reference of its own to the library, so that the last one to let go of it unloads it while the
// others come and go.
TEST_F(LifecycleTest, EightThreadsThatLoadCallAndUnload_eachGetTheirAnswersAndLeaveNoHandle)
{
    channel.answerAll([](const Bytes&) { return Bytes{4, 0, 0, 0, 0, 0}; });
    std::atomic<int> wrong = 0;
    const auto round = [&](int times) {
        std::vector<std::thread> threads;
        for (int i = 0; i < threadCount; ++i)
            threads.emplace_back([&, times] {
                for (int k = 0; k < times; ++k) {
                    const LoadedLibrary library;
                    wrong += library.deleteDevice("x") != 0;
                }
            });
        for (std::thread& thread : threads)
            thread.join();
    };
    round(2);
    const std::size_t before = handleCount();
    round(40);
    EXPECT_EQ(wrong, 0);
    EXPECT_LE(handleCount(), before + handlesOfTheRunTime);
}

[[noreturn]] void exitWhileThreadsCall()
{
    FakeChannel& channel = *fakeChannel();
    channel.reset();
    channel.answerAll([](const Bytes&) { return Bytes{4, 0, 0, 0, 0, 0}; });
    const LoadedLibrary library;
    std::atomic<int> calls = 0;
    for (int i = 0; i < threadCount; ++i)
        std::thread([&] {
            for (;;) {
                library.deleteDevice("x");
                ++calls;
            }
        }).detach();
    while (calls < 100)
        SwitchToThread();
    ExitProcess(7);
}

TEST(LifecycleDeathTest, ProcessThatEndsWhileEightThreadsCall_endsWithItsOwnStatus)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(exitWhileThreadsCall(), testing::ExitedWithCode(7), "");
}

}  // namespace
