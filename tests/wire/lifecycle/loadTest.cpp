// Loading and unloading: what happens when, and what is left behind.

#include <gmock/gmock.h>

#include "holdings.h"
#include "loadedLibrary.h"

namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::SizeIs;

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
void expectNothingLeft(int rounds, const std::function<void()>& use)
{
    // The heap's unevenness; one of the library's buffers left behind in each round would be far above.
    constexpr std::size_t unevenness = 256 * 1024;
    constexpr std::size_t mostBytesARound = 256;
    for (int i = 0; i < 5; ++i)
        use();
    const Holdings before;
    for (int i = 0; i < rounds; ++i)
        use();
    const Holdings after;
    EXPECT_LE(after.handles, before.handles + handlesOfTheRunTime);
    EXPECT_LE(after.threads, before.threads);
    EXPECT_LE(after.privateBytes,
              before.privateBytes + unevenness + static_cast<std::size_t>(rounds) * mostBytesARound);
    EXPECT_EQ(eventWindow(), nullptr);
}

TEST_F(LifecycleTest, ThousandLoads_leaveNothing)
{
    expectNothingLeft(1000, [] { const LoadedLibrary library; });
}

TEST_F(LifecycleTest, ThousandLoadsWithUse_leaveNothing)
{
    expectNothingLeft(1000, [this] {
        channel.reset();
        const LoadedLibrary library;
        ASSERT_EQ(library.deleteDevice("x"), 0);
    });
}

TEST_F(LifecycleTest, HundredLoadsWithEventWindow_leaveNothing)
{
    expectNothingLeft(100, [this] {
        channel.reset();
        const LoadedLibrary library;
        ASSERT_EQ(library.exists("Dummy"), -1);
        ASSERT_NE(awaitEventWindow(), nullptr);
    });
}

}  // namespace
