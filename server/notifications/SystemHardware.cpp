#include "notifications/SystemHardware.h"

#include <dbt.h>

#include <exception>

#include "base/Text.h"
#include "wire/notifications.h"

namespace srv {

namespace {

constexpr wchar_t className[] = L"kxovasrvx hardware";

}  // namespace

bool SystemHardware::start()
{
    if (!thread_.start([this] { run(); })) return false;
    WaitForSingleObject(ready_.get(), INFINITE);
    return window_ != nullptr;
}

void SystemHardware::stop() noexcept
{
    if (window_) PostMessageW(window_, WM_CLOSE, 0, 0);
    thread_.join();
    window_ = nullptr;
}

void SystemHardware::run() noexcept
{
    const bool opened = open();
    SetEvent(ready_.get());
    if (!opened) return;
    askForReports();  // which may take the system some time
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
}

bool SystemHardware::open() noexcept
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = className;
    RegisterClassW(&windowClass);
    const HWND window =
        CreateWindowExW(0, className, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, windowClass.hInstance, nullptr);
    if (!window) {
        log_.warning("hardware changes are not heard of: %s", systemMessage(GetLastError()).c_str());
        return false;
    }
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    window_ = window;
    return true;
}

void SystemHardware::askForReports() noexcept
{
    DEV_BROADCAST_DEVICEINTERFACE_W every{};
    every.dbcc_size = sizeof every;
    every.dbcc_devicetype = DBT_DEVTYP_DEVICEINTERFACE;
    // Ends with the window.
    if (!RegisterDeviceNotificationW(window_, &every,
                                     DEVICE_NOTIFY_WINDOW_HANDLE | DEVICE_NOTIFY_ALL_INTERFACE_CLASSES)) {
        log_.warning("the system does not report hardware changes: %s", systemMessage(GetLastError()).c_str());
    }
}

LRESULT CALLBACK SystemHardware::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* const self = reinterpret_cast<SystemHardware*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    switch (message) {
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
        case WM_DEVICECHANGE:
            if (self && lParam) {
                try {
                    self->reported(wParam, lParam);
                } catch (const std::exception& error) {
                    self->log_.error("a hardware change is not told: %s", error.what());
                }
            }
            return TRUE;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

void SystemHardware::reported(WPARAM what, LPARAM device)
{
    if (what != DBT_DEVICEARRIVAL && what != DBT_DEVICEREMOVECOMPLETE) return;
    if (reinterpret_cast<const DEV_BROADCAST_HDR*>(device)->dbch_devicetype != DBT_DEVTYP_DEVICEINTERFACE) return;
    const auto& changed = *reinterpret_cast<const DEV_BROADCAST_DEVICEINTERFACE_W*>(device);
    notifications_.hardwareChanged(what == DBT_DEVICEARRIVAL ? ::wire::hardwareArrived : ::wire::hardwareRemoved,
                                   changed.dbcc_classguid, changed.dbcc_name);
}

}  // namespace srv
