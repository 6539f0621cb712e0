#include "channel/eventWindow.h"

#include <process.h>

#include <cstdio>
#include <list>
#include <memory>

#include "channel/kxOvascp.h"
#include "channel/ovaScpLock.h"
#include "channel/traceValues.h"
#include "kxframework.h"
#include "Kxotrc.h"
#include "platform/support/win_handle.h"

namespace eventWindow {
namespace {

constexpr char className[] = "KXOVAAPIWOW";
constexpr char windowTitle[] = "KxOvaApi [workerWindow]";
constexpr int windowWidth = 350;
constexpr DWORD startWait = 50;    // milliseconds, for a thread just started
constexpr DWORD restartWait = 10;  // milliseconds, for one started before
constexpr DWORD closeWait = 200;   // milliseconds
constexpr DWORD stopWait = 100;    // milliseconds, for a thread that is stopped from outside
constexpr char procedureName[] = "EventWindow";

// Written under the channel lock or by the message thread.
platform::KernelObject s_ready;
platform::KernelObject s_closed;
HWND s_window = nullptr;
std::uintptr_t s_thread = 0;  // only tells that a thread was started; the handle behind it is closed at once
unsigned s_threadId = 0;
platform::KernelObject s_leaving;  // set when the thread is to end: it waits for nothing any more
platform::KernelObject s_gone;     // set with the thread's last step, whether or not it had a window
EventBuffer s_buffer;

void wakeAfterSleep() noexcept
{
    KXTRACE(procedureName, TRC_DETAIL, "Resumed from sleep mode.");
    // Whoever unloads the library has the lock and waits for this thread.
    const OvaScpLockGuard lock(s_leaving.get());
    if (!lock) {
        KXTRACE(procedureName, TRC_DETAIL, "Error getting list mutex!!! %d", dec(lock.result()));
        return;
    }
    if (!s_buffer) {
        KXTRACE(procedureName, TRC_DETAIL, "kxOvascp::s_Buffer == 0");
        return;
    }
    for (const HANDLE event : *s_buffer) {
        KXTRACE(procedureName, TRC_DETAIL, "Set event after sleep mode");
        SetEvent(event);
    }
    s_buffer->clear();
}

void forwardHardwareChange(LPARAM change) noexcept
{
    kxOvascp* const client = kxOvascp::current();
    const HWND window = client ? client->registeredWindow() : nullptr;
    if (!window) {
        KXTRACE(procedureName, TRC_DETAIL, "WM_DEVICECHANGE: event window is null");
        return;
    }
    if (!PostMessageA(window, client->messageType(window), WM_DEVICECHANGE, change)) {
        const DWORD error = GetLastError();
        KXTRACE(procedureName, TRC_DETAIL, "WM_DEVICECHANGE: error on PostMessage: 0x%x", hex(error));
    }
}

void notified(WPARAM what, LPARAM value) noexcept
{
    if (what == WM_DEVICECHANGE) {
        forwardHardwareChange(value);
    } else if (what == eventNotification && value != 0) {
        KXTRACE(procedureName, TRC_DETAIL, "Setting event %d", static_cast<int>(value));
        SetEvent(reinterpret_cast<HANDLE>(value));
    }
}

void closeWindow(HWND window, UINT message) noexcept
{
    KXTRACE(procedureName, TRC_DETAIL, "Close EventWindow: eventWindow = 0x%x ", hex(s_window));
    const BOOL destroyed = DestroyWindow(s_window);
    KXTRACE(procedureName, TRC_DETAIL, "Destroy Window: bret = %d, eventWindow = 0x%x ", destroyed, hex(s_window));
    const BOOL unregistered = UnregisterClassA(className, nullptr);
    KXTRACE(procedureName, TRC_DETAIL, "Unregister Class: bret = %d", unregistered);
    KXTRACE(procedureName, TRC_DETAIL, "EventWindow Leave (WM_CLOSE): hWnd = 0x%x  Msg = 0x%x", hex(window), message);
}

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto w = static_cast<unsigned int>(wParam);
    const auto l = static_cast<unsigned int>(lParam);
    KXTRACE(procedureName, TRC_DETAIL, "EventWindow Entered: hWnd = 0x%x  Msg = 0x%x  wParam = 0x%x  lParam = 0x%x",
            hex(window), message, w, l);
    switch (message) {
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
        case WM_CLOSE:
            closeWindow(window, message);
            return 0;
        case WM_QUERYENDSESSION:
            KXTRACE(procedureName, TRC_DETAIL, "WM_QUERYENDSESSION: System will shutting down");
            return 0;
        case WM_ENDSESSION:
            KXTRACE(procedureName, TRC_DETAIL, "WM_ENDSESSION: System is shutting down");
            break;
        case WM_POWERBROADCAST:
            if (wParam == PBT_APMRESUMEAUTOMATIC) wakeAfterSleep();
            break;
        case notificationMessage:
            notified(wParam, lParam);
            break;
        default:
            KXTRACE(procedureName, TRC_DETAIL,
                    "EventWindow Leave (DefWindowProc): hWnd = 0x%x  Msg = 0x%x  wParam = 0x%x", hex(window), message,
                    w);
            return DefWindowProcA(window, message, wParam, lParam);
    }
    KXTRACE(procedureName, TRC_DETAIL, "EventWindow Leave (OK): hWnd = 0x%x  Msg = 0x%x", hex(window), message);
    return 0;
}

HWND createWindow(const char* function) noexcept
{
    WNDCLASSA windowClass = {};
    windowClass.style = CS_OWNDC;
    windowClass.lpfnWndProc = procedure;
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    windowClass.lpszClassName = className;
    KXTRACE(function, TRC_DETAIL, "Calling RegisterClass ... ");
    RegisterClassA(&windowClass);

    KXTRACE(function, TRC_DETAIL, "Calling CreateWindow ... ");
    return CreateWindowExA(0, className, windowTitle, WS_SYSMENU | WS_MINIMIZEBOX, 0, 0, windowWidth, 0, nullptr,
                           nullptr, nullptr, nullptr);
}

void runWindow() noexcept
{
    constexpr char function[] = "kxOvascp::msgWindow";
    s_window = createWindow(function);
    if (!s_window) {
        const DWORD error = GetLastError();
        KXTRACE(function, TRC_DETAIL, "eventWindow = NULL!! error = %d", dec(error));
        return;
    }
    ValidateRect(s_window, nullptr);
    // A look at the queue makes it exist before anybody posts to it.
    MSG message;
    PeekMessageA(&message, s_window, notificationMessage, notificationMessage, PM_NOREMOVE);
    KXTRACE(function, TRC_DETAIL, "created eventWindow 0x%x", hex(s_window));
    SetEvent(s_ready.get());

    while (GetMessageA(&message, nullptr, 0, 0) > 0)
        DispatchMessageA(&message);

    s_window = nullptr;
    if (s_closed) SetEvent(s_closed.get());
}

unsigned __stdcall messageThread(void*)
{
    runWindow();
    SetEvent(s_gone.get());
    return 0;
}

bool isSetWithin(const platform::KernelObject& event, DWORD milliseconds) noexcept
{
    return WaitForSingleObject(event.get(), milliseconds) == WAIT_OBJECT_0;
}

// The last resort against a thread that does not end in time: it would go on in code that is not there any more. It
// is stuck in somebody else's code, a hook or a debugger, for on its own it waits for nothing when it is to leave.
void stopThread() noexcept
{
    const platform::KernelObject thread(OpenThread(THREAD_TERMINATE | SYNCHRONIZE, FALSE, s_threadId));
    if (!thread || isSetWithin(s_gone, 0)) return;
    TerminateThread(thread.get(), 0);
    isSetWithin(thread, stopWait);
    s_window = nullptr;
    // The class would outlive its procedure.
    UnregisterClassA(className, nullptr);
}

// Event names are unique per process, window station and session.
platform::KernelObject createNamedEvent(const char* format, DWORD process, const char* station,
                                        DWORD session) noexcept
{
    char name[400];
    std::snprintf(name, sizeof name, format, dec(process), station, dec(session));
    return platform::KernelObject(CreateEventA(nullptr, TRUE, FALSE, name));
}

void createEvents(const char* function) noexcept
{
    const DWORD process = GetCurrentProcessId();
    char station[262] = {};
    GetUserObjectInformationA(GetProcessWindowStation(), UOI_NAME, station, 261, nullptr);
    DWORD session = 0;
    if (!ProcessIdToSessionId(process, &session)) {
        session = 0;
        KXTRACE(function, TRC_RESOURCE, "Can't read session id");
    }
    s_ready = createNamedEvent("kxovaapi_evtWnd%d%s%d", process, station, session);
    if (!s_ready) KXTRACE(function, TRC_DETAIL, "Create eventWindowInitEvent failed");
    s_closed = createNamedEvent("kxovaapi_evtWndClose%d%s%d", process, station, session);
    if (!s_closed) KXTRACE(function, TRC_DETAIL, "Create eventWindowCloseEvent failed");
    ResetEvent(s_ready.get());
    ResetEvent(s_closed.get());
    s_leaving.reset(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    s_gone.reset(CreateEventA(nullptr, TRUE, FALSE, nullptr));
}

}  // namespace

bool everStarted() noexcept
{
    return s_ready && WaitForSingleObject(s_ready.get(), 0) != WAIT_FAILED;
}

EventBuffer& buffer() noexcept
{
    return s_buffer;
}

HWND handle() noexcept
{
    return s_window;
}

int CreateMsgThread() noexcept
{
    constexpr char function[] = "kxOvascp::CreateMsgThread()";
    if (s_thread) {
        if (WaitForSingleObject(s_ready.get(), restartWait) == WAIT_OBJECT_0) {
            KXTRACE(function, TRC_DETAIL, "message thread already running");
            return 1;
        }
        KXTRACE(function, TRC_DETAIL, "waiting for message thread to be started ...");
        return 0;
    }

    createEvents(function);
    KXTRACE(function, TRC_DETAIL, "before begin message thread");
    s_thread = _beginthreadex(nullptr, 0, messageThread, nullptr, 0, &s_threadId);
    if (!s_thread) {
        const DWORD error = GetLastError();
        KXTRACE(function, TRC_DETAIL, "_beginthreadex failed! %d", dec(error));
        return 0;
    }
    for (int i = 0; i < 4; ++i)
        Sleep(0);
    const bool up = WaitForSingleObject(s_ready.get(), startWait) == WAIT_OBJECT_0;
    CloseHandle(reinterpret_cast<HANDLE>(s_thread));
    return up ? 1 : 0;
}

void releaseBuffer(const char* function) noexcept
{
    const OvaScpLockGuard lock;
    if (!lock) {
        KXTRACE(function, TRC_RESOURCE, "Can't get lock -> can't delete event buffer!!! OvaScpLock returned %d",
                dec(lock.result()));
        return;
    }
    if (s_buffer && s_buffer->empty()) {
        KXTRACE(function, TRC_RESOURCE, "deleting event buffer");
        s_buffer.reset();
    }
}

void close(const char* function) noexcept
{
    // When the process ends, the message thread is gone and nobody would answer.
    if (!s_thread || ProcessIsEnding()) return;
    SetEvent(s_leaving.get());
    // A thread that was started this moment may still be making its window, or have failed to.
    const HANDLE made[] = {s_ready.get(), s_gone.get()};
    if (!s_window) WaitForMultipleObjects(2, made, FALSE, closeWait);
    if (s_window) {
        PostMessageA(s_window, WM_CLOSE, 0, 0);
        if (WaitForSingleObject(s_closed.get(), closeWait) == WAIT_TIMEOUT) {
            KXTRACE(function, TRC_RESOURCE, "Timeout destroying message thread ...");
        }
    }
    s_thread = 0;
    // The thread still has to leave this library's code, which may be unloaded right after.
    for (int i = 0; i < 3; ++i)
        Sleep(10);
    if (!isSetWithin(s_gone, 0)) stopThread();
}

void closeEvents() noexcept
{
    s_ready.reset();
    s_closed.reset();
    s_leaving.reset();
    s_gone.reset();
}

}  // namespace eventWindow
