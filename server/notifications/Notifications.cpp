#include "notifications/Notifications.h"

#include <cstring>
#include <mutex>

#include "base/Text.h"
#include "wire/notifications.h"

namespace srv {

namespace {

// Later servers begin higher: a new range every second.
std::uint32_t firstHandle() noexcept
{
    FILETIME time;
    GetSystemTimeAsFileTime(&time);
    const std::uint64_t now = static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
    return static_cast<std::uint32_t>(now / 10'000'000) << 16 | 1;
}

}  // namespace

Notifications::Notifications(Log& log) : log_(log), hardware_(firstHandle()) {}

void Notifications::hardwareChanged(std::uint8_t code, const GUID& interfaceClass, std::wstring_view name)
{
    {
        const std::lock_guard guard(lock_);
        const HardwareChange& change = hardware_.add(++order_, code, interfaceClass, name);
        for (Subscriber* const subscriber : all_)
            if (subscriber->wants(change)) subscriber->wake();
    }
    log_.debug("hardware %s: %s", code == ::wire::hardwareArrived ? "arrived" : "was removed",
               inQuotes(name).c_str());
}

void Notifications::boardChanged(std::uint8_t code, std::wstring_view name)
{
    GUID boards;
    std::memcpy(&boards, ::wire::boardInterfaceClass, sizeof boards);
    hardwareChanged(code, boards, name);
}

void Notifications::changed(const Change& change) noexcept
{
    const std::lock_guard guard(lock_);
    ++order_;
    for (Subscriber* const subscriber : all_)
        subscriber->changed(change.family, change.name, order_);
}

std::shared_ptr<Subscriber> Notifications::make(DWORD process, std::uint64_t channel)
{
    auto made = std::make_unique<Subscriber>(process, channel, hardware_.end());
    all_.insert(made.get());
    return {made.release(), [this](Subscriber* subscriber) { drop(subscriber); }};
}

void Notifications::drop(Subscriber* subscriber) noexcept
{
    {
        const std::lock_guard guard(lock_);
        all_.erase(subscriber);
        // The place may be that of a successor already.
        const auto at = byChannel_.find({subscriber->process_, subscriber->channel_});
        if (at != byChannel_.end() && at->second.expired()) byChannel_.erase(at);
    }
    delete subscriber;
}

std::shared_ptr<Subscriber> Notifications::subscriber(DWORD process, std::uint64_t channel)
{
    const std::lock_guard guard(lock_);
    std::weak_ptr<Subscriber>& place = byChannel_[{process, channel}];
    std::shared_ptr<Subscriber> found = place.lock();
    if (!found) place = found = make(process, channel);
    return found;
}

std::shared_ptr<Subscriber> Notifications::subscriber(DWORD process)
{
    const std::lock_guard guard(lock_);
    return make(process, 0);
}

Result Notifications::add(Subscriber& subscriber, Registration registration, bool renewed)
{
    const std::lock_guard guard(lock_);
    return subscriber.add(std::move(registration), renewed, order_);
}

Result Notifications::remove(Subscriber& subscriber, const Registration& registration)
{
    const std::lock_guard guard(lock_);
    return subscriber.remove(registration) > 0 ? result::ok : result::notFound;
}

Result Notifications::addClass(Subscriber& subscriber, const GUID& interfaceClass)
{
    const std::lock_guard guard(lock_);
    return subscriber.addClass(interfaceClass, order_);
}

Result Notifications::renewClass(Subscriber& subscriber, const GUID& interfaceClass, std::uint32_t count)
{
    const std::lock_guard guard(lock_);
    return subscriber.renewClass(interfaceClass, count, order_);
}

void Notifications::removeClass(Subscriber& subscriber, const GUID& interfaceClass)
{
    const std::lock_guard guard(lock_);
    subscriber.removeClass(interfaceClass);
}

void Notifications::beginRenewal(Subscriber& subscriber)
{
    const std::lock_guard guard(lock_);
    subscriber.beginRenewal();
}

void Notifications::endRenewal(Subscriber& subscriber)
{
    const std::lock_guard guard(lock_);
    subscriber.endRenewal(order_);
}

std::unique_ptr<Listener> Notifications::listen(std::shared_ptr<Subscriber> subscriber)
{
    auto listener = std::make_unique<Listener>(*this, subscriber);
    const std::lock_guard guard(lock_);
    if (subscriber->listener_) subscriber->interrupted_ = true;
    subscriber->listener_ = listener.get();
    listener->hardwareBefore_ = subscriber->hardwareSeen_;
    SetEvent(listener->due());  // something may be due already
    return listener;
}

void Notifications::leave(Listener& listener) noexcept
{
    const std::lock_guard guard(lock_);
    Subscriber& subscriber = *listener.subscriber_;
    if (subscriber.listener_ != &listener) return;
    subscriber.listener_ = nullptr;
    subscriber.interrupted_ = true;
}

std::size_t Notifications::take(Listener& listener, std::span<Push> items) noexcept
{
    const std::lock_guard guard(lock_);
    Subscriber& subscriber = *listener.subscriber_;
    std::uint64_t lost = 0;
    std::size_t taken = 0;
    if (subscriber.listener_ == &listener) {
        listener.hardwareBefore_ = subscriber.hardwareSeen_;
        taken = subscriber.take(hardware_, items.data(), items.size(), lost);
    }
    if (taken < items.size()) ResetEvent(listener.due());
    if (lost > 0) {
        log_.warning("client %lu: so slow that it is not told of %llu hardware changes", subscriber.process_,
                     static_cast<unsigned long long>(lost));
    }
    return taken;
}

void Notifications::putBack(Listener& listener) noexcept
{
    const std::lock_guard guard(lock_);
    Subscriber& subscriber = *listener.subscriber_;
    if (subscriber.listener_ == &listener) subscriber.hardwareSeen_ = listener.hardwareBefore_;
}

std::optional<HardwareChange> Notifications::hardwareChange(std::uint32_t handle) const
{
    const std::lock_guard guard(lock_);
    const HardwareChange* const change = hardware_.find(handle);
    return change ? std::optional(*change) : std::nullopt;
}

std::size_t Notifications::subscribers() const
{
    const std::lock_guard guard(lock_);
    return all_.size();
}

}  // namespace srv
