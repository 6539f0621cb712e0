// One open channel: whose turn it is, when to connect, what may be sent again, and what counts as a reply.
//
// Any thread may call any function. One exchange runs at a time. Registrations for notifications are remembered, so
// that they can be made again with a server that has been restarted; listener.h says who asks for that.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "frame_check.h"
#include "ref.h"
#include "registrations.h"
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

    // Where the server's notifications are to go. The first call starts a thread that listens for them, which holds
    // a reference to this object until the channel is closed or the window is gone.
    kxonlinx_error setNotification(HWND window, UINT message) noexcept;

    // For the listening thread.

    // Posts to the window. Nothing is posted once close() has returned.
    enum class Post { done, queueIsFull, noWindow };
    Post post(WPARAM what, LPARAM value) noexcept;

    // False: there is no window any more.
    bool hasWindow() const noexcept;

    // The same, and when there is none, the thread ends, and setNotification starts another.
    bool stillListening() noexcept;

    // Makes all registrations again.
    kxonlinx_error renew() noexcept;

    std::uint64_t id() const noexcept { return id_; }
    Bounds bounds() const noexcept { return {Deadline::after(timeout_), closing_.get()}; }
    HANDLE renewWanted() const noexcept { return renewWanted_.get(); }
    std::unique_ptr<Transport> sibling() const noexcept { return transport_->sibling(); }

    bool reachable() const noexcept { return transport_->reachable(); }

 private:
    Channel(std::unique_ptr<Transport> transport, platform::KernelObject closing, DWORD timeout) noexcept;

    kxonlinx_error exchange(Bytes request, const Bounds& bounds, std::size_t& replyLength) noexcept;
    kxonlinx_error identify(Bytes request, const Bounds& bounds) noexcept;
    void wantRenewal() noexcept;

    const std::unique_ptr<Transport> transport_;
    const platform::KernelObject closing_;
    const DWORD timeout_;
    const std::uint64_t id_;  // of this channel among all that this process ever has
    Turn turn_;

    mutable SRWLOCK notificationLock_ = SRWLOCK_INIT;
    HWND window_ = nullptr;
    UINT message_ = 0;
    bool listening_ = false;
    platform::KernelObject renewWanted_;  // made with the thread

    // Belong to whose turn it is.
    Registrations registrations_;
    bool identified_ = false;  // the server knows on the present connection which channel this is
    std::uint8_t reply_[wire::replyFrameCapacity];
};

}  // namespace kxonlinx
