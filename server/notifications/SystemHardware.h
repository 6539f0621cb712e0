// Hears of hardware changes from the system: devices of any interface class that come and go.
#pragma once

#include "base/Owner.h"
#include "base/Thread.h"
#include "log/Log.h"
#include "notifications/Notifications.h"

namespace srv {

// The system posts them to a window, so there is a thread with one.
class SystemHardware
{
 public:
    SystemHardware(Notifications& notifications, Log& log) : notifications_(notifications), log_(log) {}
    ~SystemHardware() { stop(); }
    SystemHardware(const SystemHardware&) = delete;
    SystemHardware& operator=(const SystemHardware&) = delete;

    // Returns when the window is there, or false if the system does not report any.
    bool start();
    void stop() noexcept;

    HWND window() const noexcept { return window_; }

 private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void run() noexcept;
    bool open() noexcept;
    void askForReports() noexcept;
    void reported(WPARAM what, LPARAM device);

    Notifications& notifications_;
    Log& log_;
    Handle ready_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    HWND window_ = nullptr;
    Thread thread_;
};

}  // namespace srv
