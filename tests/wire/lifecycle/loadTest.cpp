// Loading and unloading: what happens when, and what is left behind.

#include <gmock/gmock.h>

#include "handle_count.h"
#include "loadedLibrary.h"

namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::SizeIs;

HWND eventWindow()
{
    return FindWindowA("KXOVAAPIWOW", nullptr);
}

// The call that asks for the window waits only a moment for it; on a busy machine it comes up later.
HWND awaitEventWindow()
{
    constexpr DWORD bound = 20000;
    for (const DWORD start = GetTickCount(); !eventWindow() && GetTickCount() - start < bound;)
        Sleep(1);
    return eventWindow();
}

TEST_F(LifecycleTest, Load_contactsNobodyAndStartsNoWindow)
{
    const LoadedLibrary library;
    EXPECT_THAT(channel.opened(), IsEmpty());
    EXPECT_EQ(eventWindow(), nullptr);
}

TEST_F(LifecycleTest, Load_tracesItsStart)
{
    const TraceCapture capture("0x8");
    const LoadedLibrary library;
    EXPECT_EQ(capture.of("InitInstance:"), (std::vector<TraceLine>{{"FA", "InitInstance:", ">> start"}}));
}

TEST_F(LifecycleTest, Unload_closesTheChannelAndTracesItsEnd)
{
    const TraceCapture capture;
    LoadedLibrary library;
    library.deleteDevice("x");
    const int handle = channel.closed().empty() ? 0 : channel.closed().back();
    capture.clear();
    library.unload();
    EXPECT_EQ(handle, 0);
    EXPECT_THAT(channel.closed(), SizeIs(1));
    EXPECT_THAT(capture.lines(), Contains(TraceLine{"FA", "ExitInstance:", "==> Ende des CFP-API"}));
    EXPECT_THAT(capture.lines(), Contains(TraceLine{"FM", "kxOvascp::destroy()", "start deleting Ova SCP"}));
    EXPECT_THAT(capture.lines(), Contains(TraceLine{"FR", "kxOvascp::~kxOvascp(void)", "Destructor end ..."}));
}

TEST_F(LifecycleTest, Dummy_makesTheEventWindowAndUnloadTakesItAway)
{
    LoadedLibrary library;
    EXPECT_EQ(library.exists("Dummy"), -1);
    const HWND window = awaitEventWindow();
    ASSERT_NE(window, nullptr);
    char title[64] = {};
    GetWindowTextA(window, title, sizeof title);
    EXPECT_STREQ(title, "KxOvaApi [workerWindow]");
    EXPECT_FALSE(IsWindowVisible(window));
    library.unload();
    EXPECT_FALSE(IsWindow(window));
    WNDCLASSA windowClass;
    EXPECT_FALSE(GetClassInfoA(GetModuleHandleA(nullptr), "KXOVAAPIWOW", &windowClass));
}

TEST_F(LifecycleTest, Dummy_twiceMakesOneWindow)
{
    const LoadedLibrary library;
    EXPECT_EQ(library.exists("Dummy"), -1);
    const HWND window = awaitEventWindow();
    EXPECT_EQ(library.exists("Dummy"), -1);
    EXPECT_EQ(eventWindow(), window);
    EXPECT_EQ(FindWindowExA(nullptr, window, "KXOVAAPIWOW", nullptr), nullptr);
}

TEST_F(LifecycleTest, ReloadedLibrary_opensTheChannelAnew)
{
    for (int round = 0; round < 3; ++round) {
        const LoadedLibrary library;
        EXPECT_EQ(library.deleteDevice("x"), 0);
    }
    EXPECT_THAT(channel.opened(), SizeIs(3));
    EXPECT_THAT(channel.closed(), SizeIs(3));
}

// The first rounds make what stays for the life of the process.
void expectNoHandleLeft(int rounds, const std::function<void()>& use)
{
    for (int i = 0; i < 5; ++i)
        use();
    const std::size_t before = handleCount();
    for (int i = 0; i < rounds; ++i)
        use();
    EXPECT_LE(handleCount(), before + handlesOfTheRunTime);
}

TEST_F(LifecycleTest, ThousandLoads_leaveNoHandle)
{
    expectNoHandleLeft(1000, [] { const LoadedLibrary library; });
}

TEST_F(LifecycleTest, ThousandLoadsWithUse_leaveNoHandle)
{
    expectNoHandleLeft(1000, [this] {
        channel.reset();
        const LoadedLibrary library;
        ASSERT_EQ(library.deleteDevice("x"), 0);
    });
}

TEST_F(LifecycleTest, HundredLoadsWithEventWindow_leaveNoHandle)
{
    expectNoHandleLeft(100, [this] {
        channel.reset();
        const LoadedLibrary library;
        ASSERT_EQ(library.exists("Dummy"), -1);
        ASSERT_NE(awaitEventWindow(), nullptr);
    });
}

}  // namespace
