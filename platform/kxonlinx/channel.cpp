#include "channel.h"

#include <algorithm>
#include <new>

#include "support/srw_lock.h"

namespace kxonlinx {

namespace {

kxonlinx_error noTurn(Turn::Result result) noexcept
{
    return result == Turn::Result::closed ? KXONLINX_NOT_OPEN : KXONLINX_CHANNEL_BUSY;
}

}  // namespace

Ref<Channel> Channel::create(std::unique_ptr<Transport> transport, DWORD timeout) noexcept
{
    platform::KernelObject closing(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!transport || !closing) return {};
    return Ref<Channel>::adopt(new (std::nothrow) Channel(std::move(transport), std::move(closing), timeout));
}

Channel::Channel(std::unique_ptr<Transport> transport, platform::KernelObject closing, DWORD timeout) noexcept
    : transport_(std::move(transport)), closing_(std::move(closing)), timeout_(timeout)
{}

kxonlinx_error Channel::open() noexcept
{
    const Bounds bounds{Deadline::after(timeout_), closing_.get()};
    const TurnHolder turn(turn_, bounds.deadline);
    if (turn.result() != Turn::Result::taken) return noTurn(turn.result());
    return transport_->connected() ? KXONLINX_OK : transport_->connect(bounds);
}

kxonlinx_error Channel::sendReceive(Bytes request, std::span<std::uint8_t> reply, std::uint16_t& replyLength) noexcept
{
    if (!isRequest(request)) return KXONLINX_BAD_FRAME;

    const Bounds bounds{Deadline::after(timeout_), closing_.get()};
    const TurnHolder turn(turn_, bounds.deadline);
    if (turn.result() != Turn::Result::taken) return noTurn(turn.result());

    std::size_t length = 0;
    if (const kxonlinx_error error = exchange(request, bounds, length)) {
        // What may still come on this connection belongs to a request that has been given up.
        transport_->close();
        return error;
    }
    if (length > reply.size()) return KXONLINX_REPLY_TOO_LONG;
    std::copy_n(reply_, length, reply.data());
    replyLength = static_cast<std::uint16_t>(length);
    return KXONLINX_OK;
}

kxonlinx_error Channel::exchange(Bytes request, const Bounds& bounds, std::size_t& replyLength) noexcept
{
    bool standing = transport_->connected();
    for (;;) {
        if (!transport_->connected()) {
            if (const kxonlinx_error error = transport_->connect(bounds)) return error;
        }
        const ExchangeResult result = transport_->exchange(request, reply_, bounds);
        if (result.error == KXONLINX_OK) {
            replyLength = result.replyLength;
            return isReplyTo(request, Bytes(reply_).first(replyLength)) ? KXONLINX_OK : KXONLINX_BAD_REPLY;
        }
        // A connection of an earlier call, of a server that has been restarted since, say: this request has not been
        // on it yet.
        const bool retry = standing && !result.maybeSent && result.error == KXONLINX_CONNECTION_LOST;
        if (!retry) return result.error;
        standing = false;
        transport_->close();
    }
}

void Channel::close() noexcept
{
    turn_.close();
    SetEvent(closing_.get());
    setNotification(nullptr, 0);
}

void Channel::setNotification(HWND window, UINT message) noexcept
{
    const platform::SrwGuard guard(notificationLock_);
    notification_ = {window, message};
}

}  // namespace kxonlinx
