// Who is told of which changes.
//
// Nothing here waits for a client. A change of a logical device or logical name marks the registrations that it
// concerns, and a registration that is marked already stays so: however many changes come before a client takes its
// notification, it gets one. Hardware changes are told one by one, in order; a client that is slow only stays behind
// in the log of all of them. A thread of the client's connection does the sending.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <utility>

#include "base/Lock.h"
#include "log/Log.h"
#include "notifications/Changes.h"
#include "notifications/Listener.h"
#include "notifications/Subscriber.h"

namespace srv {

// Safe to use from any thread. Outlives everything that it hands out.
class Notifications : public ChangeObserver
{
 public:
    explicit Notifications(Log& log);

    // To be called by whoever learns that hardware came or went: `code` is ::wire::hardwareArrived or
    // hardwareRemoved, the class of communication boards is ::wire::boardInterfaceClass.
    void hardwareChanged(std::uint8_t code, const GUID& interfaceClass, std::wstring_view name);
    void boardChanged(std::uint8_t code, std::wstring_view name);

    void changed(const Change& change) noexcept override;

    // The client channel of this number, with what it has registered; kept while somebody holds it. A channel that
    // has no number gets a subscriber of its own.
    std::shared_ptr<Subscriber> subscriber(DWORD process, std::uint64_t channel);
    std::shared_ptr<Subscriber> subscriber(DWORD process);

    Result add(Subscriber& subscriber, Registration registration, bool renewed);
    Result remove(Subscriber& subscriber, const Registration& registration);  // 8012: there is none
    Result addClass(Subscriber& subscriber, const GUID& interfaceClass);
    Result renewClass(Subscriber& subscriber, const GUID& interfaceClass, std::uint32_t count);
    void removeClass(Subscriber& subscriber, const GUID& interfaceClass);
    void beginRenewal(Subscriber& subscriber);
    void endRenewal(Subscriber& subscriber);

    // From now on this one tells the subscriber's client; an earlier one gets nothing any more.
    std::unique_ptr<Listener> listen(std::shared_ptr<Subscriber> subscriber);

    // The change behind a handle; nothing when there is none, or not any more.
    std::optional<HardwareChange> hardwareChange(std::uint32_t handle) const;

    std::size_t subscribers() const;

 private:
    friend class Listener;
    using Key = std::pair<DWORD, std::uint64_t>;

    std::size_t take(Listener& listener, std::span<Push> items) noexcept;
    void putBack(Listener& listener) noexcept;
    void leave(Listener& listener) noexcept;
    std::shared_ptr<Subscriber> make(DWORD process, std::uint64_t channel);
    void drop(Subscriber* subscriber) noexcept;

    Log& log_;
    mutable Lock lock_;
    std::uint64_t order_ = 0;
    HardwareLog hardware_;
    std::set<Subscriber*> all_;
    std::map<Key, std::weak_ptr<Subscriber>> byChannel_;
};

}  // namespace srv
