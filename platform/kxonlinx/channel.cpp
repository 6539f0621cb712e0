#include "channel.h"

#include <algorithm>
#include <new>

#include "listener.h"
#include "own_frame.h"
#include "support/srw_lock.h"

namespace kxonlinx {

namespace {

kxonlinx_error noTurn(Turn::Result result) noexcept
{
    return result == Turn::Result::closed ? KXONLINX_NOT_OPEN : KXONLINX_CHANNEL_BUSY;
}

// Not that of any other channel of this process, also of one that an earlier load of this library had.
std::uint64_t newId() noexcept
{
    static LONG count;
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    const auto number = static_cast<std::uint64_t>(InterlockedIncrement(&count));
    return number << 48 | (static_cast<std::uint64_t>(now.QuadPart) & 0xFFFF'FFFF'FFFF);
}

}  // namespace

Ref<Channel> Channel::create(std::unique_ptr<Transport> transport, DWORD timeout) noexcept
{
    platform::KernelObject closing(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!transport || !closing) return {};
    return Ref<Channel>::adopt(new (std::nothrow) Channel(std::move(transport), std::move(closing), timeout));
}

Channel::Channel(std::unique_ptr<Transport> transport, platform::KernelObject closing, DWORD timeout) noexcept
    : transport_(std::move(transport)), closing_(std::move(closing)), timeout_(timeout), id_(newId())
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

    // What a registration is remembered in is made before the server can know of it.
    if (!registrations_.prepare(request)) return KXONLINX_OUT_OF_MEMORY;
    std::size_t length = 0;
    if (const kxonlinx_error error = exchange(request, bounds, length)) {
        // What may still come on this connection belongs to a request that has been given up.
        transport_->close();
        registrations_.refused();
        if (Registrations::concern(request)) wantRenewal();  // the server may have carried it out
        return error;
    }
    if (isSuccess(Bytes(reply_).first(length))) {
        registrations_.accepted(request);
    } else {
        registrations_.refused();
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
            identified_ = false;
            if (const kxonlinx_error error = transport_->connect(bounds)) return error;
        }
        ExchangeResult result{identify(request, bounds), 0, false};
        if (result.error == KXONLINX_OK) result = transport_->exchange(request, reply_, bounds);
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

// Registrations belong to the channel and not to its connection, which may be another one next time. So the server is
// told which channel it is before the first of them.
kxonlinx_error Channel::identify(Bytes request, const Bounds& bounds) noexcept
{
    if (identified_ || !Registrations::concern(request)) return KXONLINX_OK;
    OwnFrame<2 * sizeof(std::uint32_t)> frame(wire::opcode::NotifyChannel);
    frame.u64(id_);
    const ExchangeResult result = transport_->exchange(frame.bytes(), reply_, bounds);
    if (result.error != KXONLINX_OK) return result.error;
    // A server that does not know the question has no use for the answer.
    identified_ = true;
    return isReplyTo(frame.bytes(), Bytes(reply_).first(result.replyLength)) ? KXONLINX_OK : KXONLINX_BAD_REPLY;
}

kxonlinx_error Channel::renew() noexcept
{
    const Bounds bounds = this->bounds();
    const TurnHolder turn(turn_, bounds.deadline);
    if (turn.result() != Turn::Result::taken) return noTurn(turn.result());
    const kxonlinx_error error = registrations_.renew([&](Bytes request) noexcept {
        std::size_t length = 0;
        return exchange(request, bounds, length);
    });
    if (error != KXONLINX_OK) transport_->close();
    return error;
}

void Channel::wantRenewal() noexcept
{
    const platform::SrwGuard guard(notificationLock_);
    if (renewWanted_) SetEvent(renewWanted_.get());
}

void Channel::close() noexcept
{
    turn_.close();
    const platform::SrwGuard guard(notificationLock_);
    SetEvent(closing_.get());
    window_ = nullptr;
}

kxonlinx_error Channel::setNotification(HWND window, UINT message) noexcept
{
    const platform::SrwGuard guard(notificationLock_);
    if (WaitForSingleObject(closing_.get(), 0) == WAIT_OBJECT_0) return KXONLINX_NOT_OPEN;
    window_ = window;
    message_ = message;
    if (listening_) return KXONLINX_OK;
    if (!renewWanted_) renewWanted_.reset(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    if (!renewWanted_ || !startListener(Ref<Channel>::share(this))) return KXONLINX_OUT_OF_MEMORY;
    listening_ = true;
    return KXONLINX_OK;
}

Channel::Post Channel::post(WPARAM what, LPARAM value) noexcept
{
    const platform::SrwGuard guard(notificationLock_);
    // Without a window the message would go to the thread.
    if (!window_) return Post::noWindow;
    if (PostMessageA(window_, message_, what, value)) return Post::done;
    return IsWindow(window_) ? Post::queueIsFull : Post::noWindow;
}

bool Channel::hasWindow() const noexcept
{
    const platform::SrwGuard guard(notificationLock_);
    return IsWindow(window_);
}

bool Channel::stillListening() noexcept
{
    const platform::SrwGuard guard(notificationLock_);
    listening_ = IsWindow(window_);
    return listening_;
}

}  // namespace kxonlinx
