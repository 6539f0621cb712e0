// One open channel: whose turn it is, when to connect, what may be sent again, and what counts as a reply.
//
// Any thread may call any function. One exchange runs at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "frame_check.h"
#include "ref.h"
#include "support/win_handle.h"
#include "transport.h"
#include "turn.h"
#include "wire/frame.h"

namespace kxonlinx {

class Channel final : public RefCounted
{
 public:
    // `transport` is not connected yet; `timeout` in milliseconds bounds each call. None when memory or events are
    // exhausted.
    static Ref<Channel> create(std::unique_ptr<Transport> transport, DWORD timeout) noexcept;

    // Connects, so that a missing server shows when the channel is opened.
    kxonlinx_error open() noexcept;

    // Sends `request` and puts the reply into `reply`, its length into `replyLength`; both stay untouched after a
    // failure. A call connects at most once, and sends its request twice only when the first connection turned out
    // to be broken before anything was sent on it. Any failure but a reply that does not fit ends the connection.
    kxonlinx_error sendReceive(Bytes request, std::span<std::uint8_t> reply, std::uint16_t& replyLength) noexcept;

    // Makes the exchange under way, and every later one, end with NOT_OPEN.
    void close() noexcept;

    // Where the server's notifications are to go; no window: nowhere.
    void setNotification(HWND window, UINT message) noexcept;

    bool reachable() const noexcept { return transport_->reachable(); }

 private:
    Channel(std::unique_ptr<Transport> transport, platform::KernelObject closing, DWORD timeout) noexcept;

    kxonlinx_error exchange(Bytes request, const Bounds& bounds, std::size_t& replyLength) noexcept;

    struct Notification
    {
        HWND window = nullptr;
        UINT message = 0;
    };

    const std::unique_ptr<Transport> transport_;
    const platform::KernelObject closing_;
    const DWORD timeout_;
    Turn turn_;
    SRWLOCK notificationLock_ = SRWLOCK_INIT;
    Notification notification_;
    std::uint8_t reply_[wire::replyFrameCapacity];  // belongs to whose turn it is
};

}  // namespace kxonlinx
