// The event window: a hidden window on a thread of its own that receives the channel's notifications and the
// system's power and end-of-session messages. Started once per process life of the channel client.
#pragma once

#include <windows.h>

#include <cstdint>
#include <list>
#include <memory>

namespace eventWindow {

// The message by which the channel library notifies. wParam WM_DEVICECHANGE: a hardware change, lParam its handle;
// wParam eventNotification: lParam is an event handle of this process that is to be set.
inline constexpr UINT notificationMessage = WM_USER + 12;
inline constexpr WPARAM eventNotification = 0x0500;

// Events that are all set once after the machine resumes from sleep; absent until somebody makes the list. Guarded by
// the channel lock.
using EventBuffer = std::unique_ptr<std::list<HANDLE>>;
EventBuffer& buffer() noexcept;

// True once the window was asked for, whether or not it is up yet.
bool everStarted() noexcept;

// Starts the thread, or waits for one that is starting. 1 when the window is up. Call it under the channel lock.
int CreateMsgThread() noexcept;

HWND handle() noexcept;  // NULL while there is no window

// The steps of the channel client's end, in the order in which it takes them; `function` is its trace name.
void releaseBuffer(const char* function) noexcept;
void close(
    const char* function) noexcept;  // returns within 0.6 s, and no code of this library runs on the thread then
void closeEvents() noexcept;

}  // namespace eventWindow
