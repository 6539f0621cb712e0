// The channel library loaded, used and unloaded again and again in one process.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "frames.h"
#include "handle_count.h"
#include "kxonlinx.h"
#include "server_process.h"
#include "support/win_handle.h"

namespace {

using frames::Bytes;

template <typename Function>
Function* find(const platform::Library& library, const char* name)
{
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library.get(), name)));
}

const std::wstring name = L"kxonlinx-test-load-" + std::to_wstring(GetCurrentProcessId());

// Leaves the channel open if asked to: the library closes it when it goes.
void use(const platform::Library& library, bool closes)
{
    const int handle = find<decltype(SCP_openW)>(library, "SCP_openW")(name.c_str());
    ASSERT_GT(handle, 0);
    Bytes request = frames::request(33);
    Bytes reply(frames::largest);
    unsigned short length = 0;
    ASSERT_EQ(find<decltype(SCP_send_receive)>(library, "SCP_send_receive")(
                  handle, static_cast<unsigned short>(request.size()), request.data(), frames::largest, reply.data(),
                  &length),
              0);
    if (closes) {
        ASSERT_EQ(find<decltype(SCP_close)>(library, "SCP_close")(handle), 0);
    }
}

void expectNoHandleLeft(int cycles, void (*cycle)())
{
    const ServerProcess server(name);
    for (int i = 0; i < 5; ++i)
        cycle();
    const std::size_t before = handleCount();
    for (int i = 0; i < cycles && !testing::Test::HasFatalFailure(); ++i)
        cycle();
    EXPECT_EQ(handleCount(), before);
    EXPECT_EQ(GetModuleHandleW(L"KXONLINX.dll"), nullptr);
}

TEST(LoadCycle, ThousandLoadsUsesAndUnloads_leaveNoHandle)
{
    expectNoHandleLeft(1000, [] { use(platform::Library(LoadLibraryW(L"KXONLINX.dll")), true); });
}

TEST(LoadCycle, UnloadsWithAChannelOpen_leaveNoHandle)
{
    expectNoHandleLeft(200, [] { use(platform::Library(LoadLibraryW(L"KXONLINX.dll")), false); });
}

// The thread that listens leaves the library on its own, behind the program's last call.
bool isUnloadedSoon()
{
    for (const DWORD start = GetTickCount(); GetModuleHandleW(L"KXONLINX.dll"); Sleep(1))
        if (GetTickCount() - start > 20'000) return false;
    return true;
}

TEST(LoadCycle, UnloadsWithANotificationWindow_leaveNoHandleAndNoThread)
{
    const ServerProcess server(name);
    const HWND window = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    const auto cycle = [&] {
        const platform::Library library(LoadLibraryW(L"KXONLINX.dll"));
        const int handle = find<decltype(SCP_openW)>(library, "SCP_openW")(name.c_str());
        ASSERT_EQ(find<decltype(SetNorixHWndMsg)>(library, "SetNorixHWndMsg")(handle, window, 1036), 0);
        ASSERT_EQ(find<decltype(SCP_close)>(library, "SCP_close")(handle), 0);
    };
    for (int i = 0; i < 5; ++i)
        cycle();
    ASSERT_TRUE(isUnloadedSoon());
    const std::size_t before = handleCount();
    for (int i = 0; i < 100 && !testing::Test::HasFatalFailure(); ++i)
        cycle();
    ASSERT_TRUE(isUnloadedSoon());
    const DWORD start = GetTickCount();
    while (handleCount() > before && GetTickCount() - start < 20'000)
        Sleep(1);
    EXPECT_LE(handleCount(), before);
    DestroyWindow(window);
}

}  // namespace
