// What one client channel wants to be told, and what it has not been told yet.
//
// Belongs to Notifications, whose lock guards all of it. Others hold it and hand it back.
#pragma once

#include <windows.h>

#include <cstdint>
#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "base/Owner.h"
#include "base/Results.h"
#include "notifications/HardwareLog.h"
#include "store/Codec.h"

namespace srv {

// A registration for changes of logical devices or logical names.
struct Registration
{
    Family family = Family::Device;
    std::wstring subject;      // the object's name; empty: every object of the family
    std::wstring event;        // the event's name without "Global\"
    std::uint32_t handle = 0;  // of the client's event; 0: the client has none to be set

    // The same, whichever of the forms of the event's name was sent. Handle 0 of `asked` stands for any.
    bool isMeantBy(const Registration& asked) const noexcept;
    bool concerns(Family changed, std::wstring_view name) const noexcept;
};

// One thing that a client is told: see wire/notifications.h.
struct Push
{
    std::uint32_t what = 0;
    std::uint32_t value = 0;
};

class Listener;

class Subscriber
{
 public:
    Subscriber(DWORD process, std::uint64_t channel, std::uint64_t hardwareSeen)
        : process_(process), channel_(channel), hardwareSeen_(hardwareSeen)
    {}
    Subscriber(const Subscriber&) = delete;
    Subscriber& operator=(const Subscriber&) = delete;

 private:
    friend class Notifications;
    friend class Listener;

    static constexpr std::size_t mostRegistrations = 4096;
    static constexpr std::size_t mostClasses = 256;

    struct Entry
    {
        Registration registration;
        Handle named;             // the server's own event of that name
        bool due = false;         // changed since the client was told last
        bool confirmed = true;    // named by the renewal under way
        std::uint64_t order = 0;  // of the change that made it due
    };
    struct ClassEntry
    {
        GUID interfaceClass{};
        std::uint32_t count = 0;
        bool confirmed = true;
        std::uint64_t since = 0;  // changes with a lower order came before the registration
    };

    // Results: 0; 1816 with too many registrations. Adding what is there already changes nothing.
    Result add(Registration registration, bool renewed, std::uint64_t order);
    std::size_t remove(const Registration& asked);
    Result addClass(const GUID& interfaceClass, std::uint64_t order);
    Result renewClass(const GUID& interfaceClass, std::uint32_t count, std::uint64_t order);
    void removeClass(const GUID& interfaceClass);
    void beginRenewal() noexcept;
    void endRenewal(std::uint64_t order);

    void changed(Family family, std::wstring_view name, std::uint64_t order) noexcept;
    bool wants(const HardwareChange& change) const noexcept;
    void makeDue(Entry& entry, std::uint64_t order) noexcept;
    void forget(const Entry& entry) noexcept;
    void wake() noexcept;

    // Fills `out` in the order of the changes; returns how many there are. `lost` counts those that came too early
    // for the log to have them still.
    std::size_t take(const HardwareLog& log, Push* out, std::size_t room, std::uint64_t& lost) noexcept;
    bool nextHardware(const HardwareLog& log, std::uint64_t& lost) noexcept;

    ClassEntry* find(const GUID& interfaceClass) noexcept;

    const DWORD process_;
    const std::uint64_t channel_;
    std::list<Entry> entries_;
    std::vector<Entry*> due_;  // in the order in which they became due; has room for all
    std::vector<ClassEntry> classes_;
    std::uint64_t hardwareSeen_;    // position in the log up to which the client was told
    Listener* listener_ = nullptr;  // the connection that tells the client
    bool interrupted_ = false;      // a connection ended on which something may have been lost
};

}  // namespace srv
