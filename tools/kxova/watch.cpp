#include "watch.h"

#include <windows.h>

#include <iterator>

#include "kxovaapi.h"
#include "results.h"
#include "snapshot.h"
#include "text.h"
#include "wire/notifications.h"

namespace {

constexpr DWORD startBound = 10'000;  // for the library's own window to come up
constexpr DWORD retryPause = 1'000;   // when the server could not be read

HANDLE stopped = nullptr;

BOOL WINAPI onControl(DWORD event)
{
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) return FALSE;
    SetEvent(stopped);
    return TRUE;
}

void tell(const std::string& text, const Json& json)
{
    print((jsonOutput ? json.dump() : text) + "\n");
}

void note(const std::string& text)
{
    printError("kxova: " + text + "\n");
}

// A family of objects: its event, and what was read last.
class Family
{
 public:
    using Notify = decltype(LogDeviceNotifyChange);
    using Unregister = decltype(LogDeviceUnregisterNotifyChange);

    Family(const char* kind, Objects (*read)(), Notify* notify, Unregister* unregister)
        : kind_(kind),
          eventName_(std::string("kxova watch ") + kind + ' ' + std::to_string(GetCurrentProcessId()) + ' '),
          read_(read),
          notify_(notify),
          unregister_(unregister)
    {}
    ~Family()
    {
        if (registered_) unregister_(nullptr, eventName_.c_str(), &event_);
        if (event_) CloseHandle(event_);
    }
    Family(const Family&) = delete;
    Family& operator=(const Family&) = delete;

    void begin()
    {
        for (const DWORD start = GetTickCount();; Sleep(10)) {
            HANDLE event = nullptr;
            const auto result = static_cast<long>(notify_(nullptr, 0, 0, eventName_.c_str(), &event, &event));
            if (event_) CloseHandle(event_);
            event_ = event;
            if (result == -1 && GetTickCount() - start < startBound) continue;  // the window is not up yet
            require(result, "watch for changes");
            break;
        }
        registered_ = true;
        objects_ = read_();
    }
    void tellDifferences()
    {
        Objects now = read_();
        for (const Difference& difference : differences(kind_, objects_, now))
            tell(difference.text, difference.json);
        objects_ = std::move(now);
    }
    HANDLE event() const { return event_; }

 private:
    const char* kind_;
    std::string eventName_;
    Objects (*read_)();
    Notify* notify_;
    Unregister* unregister_;
    HANDLE event_ = nullptr;
    bool registered_ = false;
    Objects objects_;
};

std::string textOf(const GUID& guid)
{
    char text[40];
    std::snprintf(text, sizeof text, "{%08lX-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", guid.Data1, guid.Data2,
                  guid.Data3, guid.Data4[0], guid.Data4[1], guid.Data4[2], guid.Data4[3], guid.Data4[4],
                  guid.Data4[5], guid.Data4[6], guid.Data4[7]);
    return text;
}

// A window of this thread that hears of hardware of every class.
class Hardware
{
 public:
    Hardware() : window_(CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {}
    ~Hardware()
    {
        if (registered_) OvaUnregisterHardwareChanges(&everyClass);
        DestroyWindow(window_);
    }
    Hardware(const Hardware&) = delete;
    Hardware& operator=(const Hardware&) = delete;

    void begin()
    {
        require(static_cast<long>(OvaRegisterHardwareChanges(window_, &everyClass)), "watch for hardware changes");
        registered_ = true;
    }
    void tellMessages()
    {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.hwnd == window_ && message.message == WM_USER && message.wParam == WM_DEVICECHANGE) {
                tellChange(static_cast<unsigned long>(message.lParam));
            } else {
                DispatchMessageA(&message);
            }
        }
    }

 private:
    static void tellChange(unsigned long handle)
    {
        OvaHardwareChange change{};
        if (OvaGetHardwareChanges(handle, &change) != 0) return;  // of a server that is gone
        const bool arrived = change.change == wire::hardwareArrived;
        const std::string name = toUtf8(change.name);
        tell("hardware \"" + name + (arrived ? "\" arrived" : "\" was removed"),
             {{"change", arrived ? "arrived" : "removed"},
              {"kind", "hardware"},
              {"name", name},
              {"class", textOf(change.interfaceClass)}});
    }

    static constexpr GUID everyClass{};
    HWND window_;
    bool registered_ = false;
};

void watch()
{
    stopped = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    SetConsoleCtrlHandler(nullptr, FALSE);
    SetConsoleCtrlHandler(onControl, TRUE);

    Family devices("device", readDevices, LogDeviceNotifyChange, LogDeviceUnregisterNotifyChange);
    Family names("name", readNames, LogNameNotifyChange, LogNameUnregisterNotifyChange);
    Hardware hardware;
    readNames();  // so that a missing server is called that
    devices.begin();
    names.begin();
    hardware.begin();
    note("watching for changes; Ctrl-C ends");

    const HANDLE events[] = {stopped, devices.event(), names.event()};
    bool devicesDue = false;
    bool namesDue = false;
    bool lost = false;
    for (;;) {
        const DWORD ended = MsgWaitForMultipleObjects(static_cast<DWORD>(std::size(events)), events, FALSE,
                                                      devicesDue || namesDue ? retryPause : INFINITE, QS_ALLINPUT);
        if (ended == WAIT_OBJECT_0 || ended == WAIT_FAILED) return;
        devicesDue = devicesDue || ended == WAIT_OBJECT_0 + 1;
        namesDue = namesDue || ended == WAIT_OBJECT_0 + 2;
        try {
            if (devicesDue) devices.tellDifferences();
            devicesDue = false;
            if (namesDue) names.tellDifferences();
            namesDue = false;
            if (lost) note("the configuration server is back");
            lost = false;
        } catch (const Failure& failure) {
            if (!lost) note(std::string(failure.what()) + "; waiting for it");
            lost = true;
        }
        hardware.tellMessages();
    }
}

}  // namespace

void addWatchCommand(CLI::App& app)
{
    app.add_subcommand("watch",
                       "print changes of devices, names and hardware as they come, until Ctrl-C (--json: one object "
                       "a line)")
        ->callback(watch);
}
