// What the event window does with the messages it gets, and how it is got rid of when it does not want to go.

#include <gmock/gmock.h>

#include "handle_count.h"
#include "loadedLibrary.h"

namespace {

using testing::Contains;

constexpr char procedure[] = "EventWindow";
constexpr DWORD longest = 20'000;

// The library with its window up.
class WithWindow : public LoadedLibrary
{
 public:
    WithWindow()
    {
        exists("Dummy");
        for (const DWORD start = GetTickCount(); !find() && GetTickCount() - start < longest;)
            Sleep(1);
        window_ = find();
        // The window is found before its thread reads messages; a message that was answered was read.
        send(WM_NULL, 0, 0);
    }
    HWND window() const { return window_; }
    DWORD thread() const { return GetWindowThreadProcessId(window_, nullptr); }
    LRESULT send(UINT message, WPARAM wParam, LPARAM lParam) const
    {
        return SendMessageA(window_, message, wParam, lParam);
    }
    template <typename Function>
    Function* function(const char* name) const
    {
        return LoadedLibrary::find<Function>(name);
    }

 private:
    static HWND find() { return FindWindowA("KXOVAAPIWOW", nullptr); }
    HWND window_ = nullptr;
};

TraceLine line(const std::string& text)
{
    return {"FM", procedure, text};
}

using EventWindow = LifecycleTest;

TEST_F(EventWindow, ResumeWithoutEventBuffer_isTracedAndChangesNothing)
{
    const WithWindow library;
    const TraceCapture capture("0x40");
    EXPECT_EQ(library.send(WM_POWERBROADCAST, PBT_APMRESUMEAUTOMATIC, 0), 0);
    const std::vector<TraceLine> lines = capture.of(procedure);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[1], line("Resumed from sleep mode."));
    EXPECT_EQ(lines[2], line("kxOvascp::s_Buffer == 0"));
    EXPECT_EQ(lines[3].text.substr(0, 31), "EventWindow Leave (OK): hWnd = ");
}

TEST_F(EventWindow, OtherPowerEvents_doNothing)
{
    const WithWindow library;
    const TraceCapture capture("0x40");
    EXPECT_EQ(library.send(WM_POWERBROADCAST, PBT_APMSUSPEND, 0), 0);
    EXPECT_EQ(capture.of(procedure).size(), 2u);
}

TEST_F(EventWindow, EndOfSession_isTracedAndRefused)
{
    const WithWindow library;
    const TraceCapture capture("0x40");
    EXPECT_EQ(library.send(WM_QUERYENDSESSION, 0, 0), 0);
    EXPECT_EQ(library.send(WM_ENDSESSION, TRUE, 0), 0);
    const std::vector<TraceLine> lines = capture.of(procedure);
    ASSERT_EQ(lines.size(), 5u) << "the question is answered without a last line";
    EXPECT_EQ(lines[1], line("WM_QUERYENDSESSION: System will shutting down"));
    EXPECT_EQ(lines[3], line("WM_ENDSESSION: System is shutting down"));
}

TEST_F(EventWindow, EventNotification_setsTheEvent)
{
    const WithWindow library;
    const HANDLE event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    const TraceCapture capture("0x40");
    EXPECT_EQ(library.send(1036, 0x500, reinterpret_cast<LPARAM>(event)), 0);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0);
    EXPECT_THAT(capture.of(procedure),
                Contains(line("Setting event " + std::to_string(reinterpret_cast<LONG_PTR>(event)))));
    CloseHandle(event);
}

TEST_F(EventWindow, EventNotificationOfNothing_setsNothing)
{
    const WithWindow library;
    const TraceCapture capture("0x40");
    EXPECT_EQ(library.send(1036, 0x500, 0), 0);
    EXPECT_EQ(library.send(1036, 0x501, 4), 0);
    EXPECT_EQ(capture.of(procedure).size(), 4u);
}

TEST_F(EventWindow, HardwareChangeWithoutARegisteredWindow_isTraced)
{
    const WithWindow library;
    const TraceCapture capture("0x40");
    library.send(1036, WM_DEVICECHANGE, 77);
    EXPECT_THAT(capture.of(procedure), Contains(line("WM_DEVICECHANGE: event window is null")));
}

// A window of the calling thread, as an application registers it.
class OwnWindow
{
 public:
    OwnWindow() : window_(CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {}
    ~OwnWindow() { DestroyWindow(window_); }
    operator HWND() const { return window_; }
    bool has(MSG& message, UINT number) const { return PeekMessageA(&message, window_, number, number, PM_REMOVE); }

 private:
    HWND window_;
};

TEST_F(EventWindow, HardwareChange_isPostedToTheRegisteredWindowUnderItsMessageType)
{
    const WithWindow library;
    const OwnWindow own;
    const GUID guid = {1, 2, 3, {4}};
    MSG message;
    ASSERT_EQ(library.function<decltype(OvaRegisterHardwareChanges)>("OvaRegisterHardwareChanges")(own, &guid), 0u);
    library.send(1036, WM_DEVICECHANGE, 77);
    ASSERT_TRUE(own.has(message, 1024)) << "the number that is not set is 1024";
    EXPECT_EQ(message.wParam, 0x219u);
    EXPECT_EQ(message.lParam, 77);

    const auto setType =
        library.function<decltype(OvaSetMessageTypeForHardwareChanges)>("OvaSetMessageTypeForHardwareChanges");
    ASSERT_EQ(setType(own, 32767), 0u);
    library.send(1036, WM_DEVICECHANGE, 78);
    EXPECT_FALSE(own.has(message, 1024));
    ASSERT_TRUE(own.has(message, 32767));
    EXPECT_EQ(message.lParam, 78);
}

TEST_F(EventWindow, HardwareChangeForAWindowThatIsGone_isTracedWithTheError)
{
    const WithWindow library;
    const GUID guid = {1, 2, 3, {4}};
    {
        const OwnWindow own;
        library.function<decltype(OvaRegisterHardwareChanges)>("OvaRegisterHardwareChanges")(own, &guid);
    }
    const TraceCapture capture("0x40");
    library.send(1036, WM_DEVICECHANGE, 77);
    EXPECT_THAT(capture.of(procedure), Contains(line("WM_DEVICECHANGE: error on PostMessage: 0x578")));
}

// Windows that are busy while the library is unloaded. The unloading waits 200 ms for the window, and 30 ms after it;
// the rest is the margin of a machine that has other things to do.
constexpr DWORD bound = 200 + 30 + 1'500;

DWORD unloadTime(LoadedLibrary& library)
{
    const DWORD start = GetTickCount();
    library.unload();
    return GetTickCount() - start;
}

HANDLE busy;
HANDLE goOn;

LRESULT CALLBACK busyProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    SetEvent(busy);
    WaitForSingleObject(goOn, INFINITE);
    return DefWindowProcA(window, message, wParam, lParam);
}

class BusyWindow : public LifecycleTest
{
 protected:
    BusyWindow()
    {
        busy = CreateEventA(nullptr, TRUE, FALSE, nullptr);
        goOn = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    }
    ~BusyWindow() override
    {
        CloseHandle(busy);
        CloseHandle(goOn);
    }
    // The window's thread in the middle of somebody else's procedure.
    static void makeBusy(const WithWindow& library)
    {
        SetWindowLongPtrA(library.window(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(busyProcedure));
        PostMessageA(library.window(), WM_USER, 0, 0);
        ASSERT_EQ(WaitForSingleObject(busy, longest), WAIT_OBJECT_0);
    }
};

TEST_F(BusyWindow, Unload_returnsInTimeAndTheThreadNeverComesBack)
{
    WithWindow library;
    makeBusy(library);
    const HANDLE thread = OpenThread(SYNCHRONIZE, FALSE, library.thread());
    ASSERT_NE(thread, nullptr);
    const TraceCapture capture("0x10");
    EXPECT_LT(unloadTime(library), bound);
    EXPECT_THAT(capture.of("kxOvascp::~kxOvascp(void)"),
                Contains(TraceLine{"FR", "kxOvascp::~kxOvascp(void)", "Timeout destroying message thread ..."}));
    EXPECT_EQ(GetModuleHandleA("kxovaapi.dll"), nullptr);
    SetEvent(goOn);
    EXPECT_EQ(WaitForSingleObject(thread, longest), WAIT_OBJECT_0);
    CloseHandle(thread);
}

TEST_F(BusyWindow, NextLoad_hasAWindowAgain)
{
    {
        WithWindow library;
        makeBusy(library);
    }
    SetEvent(goOn);
    const WithWindow next;
    EXPECT_TRUE(IsWindow(next.window()));
    EXPECT_EQ(next.send(1036, 0x500, 0), 0);
}

TEST_F(BusyWindow, ResumeAtTheSameTime_doesNotHoldTheUnloadingUp)
{
    for (int i = 0; i < 10; ++i) {
        WithWindow library;
        const HWND window = library.window();
        PostMessageA(window, WM_POWERBROADCAST, PBT_APMRESUMEAUTOMATIC, 0);
        EXPECT_LT(unloadTime(library), bound);
        EXPECT_FALSE(IsWindow(window));
    }
}

TEST_F(BusyWindow, UnloadRightAfterTheStart_takesTheWindowAway)
{
    for (int i = 0; i < 10; ++i) {
        LoadedLibrary library;
        library.exists("Dummy");
        EXPECT_LT(unloadTime(library), 2 * bound);
        EXPECT_EQ(FindWindowA("KXOVAAPIWOW", nullptr), nullptr);
    }
}

}  // namespace
