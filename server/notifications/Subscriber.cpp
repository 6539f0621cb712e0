#include "notifications/Subscriber.h"

#include <algorithm>

#include "base/Security.h"
#include "catalogue/LessNoCase.h"
#include "notifications/Listener.h"
#include "wire/notifications.h"

namespace srv {

namespace {

constexpr GUID everyClass{};

DWORD sessionOf(DWORD process) noexcept
{
    DWORD session = 0;
    ProcessIdToSessionId(process, &session);
    return session;
}

// Makes the event that bears a registration's name, so that it can be waited for by its name too. Only names that end
// with the client's own numbers: a client could otherwise have the server set an event of somebody else's.
Handle namedEvent(DWORD process, const std::wstring& sent, std::wstring_view bare)
{
    const std::wstring own = std::to_wstring(process) + std::to_wstring(sessionOf(process));
    if (bare.size() <= own.size() || !bare.ends_with(own)) return {};
    Security everybody(sddl::openToAll);
    return Handle(CreateEventW(everybody.attributes(), FALSE, FALSE, sent.c_str()));
}

}  // namespace

bool Registration::isMeantBy(const Registration& asked) const noexcept
{
    return family == asked.family && catalogue::equalNoCase(subject, asked.subject) && event == asked.event &&
           (asked.handle == 0 || handle == asked.handle);
}

bool Registration::concerns(Family changed, std::wstring_view name) const noexcept
{
    return family == changed && (subject.empty() || catalogue::equalNoCase(subject, name));
}

Result Subscriber::add(Registration registration, bool renewed, std::uint64_t order)
{
    const std::wstring sent = registration.event;
    if (sent.starts_with(::wire::globalPrefix)) registration.event.erase(0, ::wire::globalPrefixLength);
    const auto known = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return entry.registration.handle == registration.handle && entry.registration.isMeantBy(registration);
    });
    if (known != entries_.end()) {
        known->confirmed = true;
        return result::ok;
    }
    if (entries_.size() >= mostRegistrations) return result::quotaExceeded;
    due_.reserve(entries_.size() + 1);
    Handle named = namedEvent(process_, sent, registration.event);
    entries_.push_back({std::move(registration), std::move(named)});
    // Nobody knows what changed while the server did not know of the registration.
    if (renewed) makeDue(entries_.back(), order);
    return result::ok;
}

std::size_t Subscriber::remove(const Registration& asked)
{
    Registration bare = asked;
    if (bare.event.starts_with(::wire::globalPrefix)) bare.event.erase(0, ::wire::globalPrefixLength);
    return std::erase_if(entries_, [&](const Entry& entry) {
        const bool meant = entry.registration.isMeantBy(bare);
        if (meant) forget(entry);
        return meant;
    });
}

void Subscriber::forget(const Entry& entry) noexcept
{
    std::erase(due_, &entry);
}

Subscriber::ClassEntry* Subscriber::find(const GUID& interfaceClass) noexcept
{
    const auto at = std::find_if(classes_.begin(), classes_.end(), [&](const ClassEntry& entry) {
        return IsEqualGUID(entry.interfaceClass, interfaceClass);
    });
    return at == classes_.end() ? nullptr : &*at;
}

Result Subscriber::addClass(const GUID& interfaceClass, std::uint64_t order)
{
    const ClassEntry* const known = find(interfaceClass);
    return renewClass(interfaceClass, known ? known->count + 1 : 1, order);
}

Result Subscriber::renewClass(const GUID& interfaceClass, std::uint32_t count, std::uint64_t order)
{
    if (ClassEntry* const known = find(interfaceClass)) {
        known->count = count;
        known->confirmed = true;
        return result::ok;
    }
    if (classes_.size() >= mostClasses) return result::quotaExceeded;
    classes_.push_back({interfaceClass, count, true, order});
    return result::ok;
}

void Subscriber::removeClass(const GUID& interfaceClass)
{
    ClassEntry* const known = find(interfaceClass);
    if (!known) return;
    if (--known->count == 0) classes_.erase(classes_.begin() + (known - classes_.data()));
}

void Subscriber::beginRenewal() noexcept
{
    for (Entry& entry : entries_)
        entry.confirmed = false;
    for (ClassEntry& entry : classes_)
        entry.confirmed = false;
}

void Subscriber::endRenewal(std::uint64_t order)
{
    std::erase_if(entries_, [this](const Entry& entry) {
        if (!entry.confirmed) forget(entry);
        return !entry.confirmed;
    });
    std::erase_if(classes_, [](const ClassEntry& entry) { return !entry.confirmed; });
    if (interrupted_) {
        for (Entry& entry : entries_)
            makeDue(entry, order);
    }
    interrupted_ = false;
}

void Subscriber::changed(Family family, std::wstring_view name, std::uint64_t order) noexcept
{
    for (Entry& entry : entries_)
        if (entry.registration.concerns(family, name)) makeDue(entry, order);
}

void Subscriber::makeDue(Entry& entry, std::uint64_t order) noexcept
{
    // Without a connection there is nobody who would set it later.
    if (!listener_ && entry.named) SetEvent(entry.named.get());
    if (entry.due) return;
    entry.due = true;
    entry.order = order;
    due_.push_back(&entry);
    wake();
}

bool Subscriber::wants(const HardwareChange& change) const noexcept
{
    return std::any_of(classes_.begin(), classes_.end(), [&](const ClassEntry& entry) {
        return entry.since < change.order && (IsEqualGUID(entry.interfaceClass, change.interfaceClass) ||
                                              IsEqualGUID(entry.interfaceClass, everyClass));
    });
}

void Subscriber::wake() noexcept
{
    if (listener_) SetEvent(listener_->due());
}

// Moves on to the next hardware change that this client is to be told of; false: there is none.
bool Subscriber::nextHardware(const HardwareLog& log, std::uint64_t& lost) noexcept
{
    if (hardwareSeen_ < log.begin()) {
        if (!classes_.empty()) lost += log.begin() - hardwareSeen_;
        hardwareSeen_ = log.begin();
    }
    if (classes_.empty()) hardwareSeen_ = log.end();
    while (hardwareSeen_ < log.end() && !wants(log.at(hardwareSeen_)))
        ++hardwareSeen_;
    return hardwareSeen_ < log.end();
}

std::size_t Subscriber::take(const HardwareLog& log, Push* out, std::size_t room, std::uint64_t& lost) noexcept
{
    std::size_t taken = 0;
    std::size_t told = 0;
    while (taken < room) {
        const bool hardware = nextHardware(log, lost);
        const bool event = told < due_.size();
        if (!hardware && !event) break;
        if (hardware && (!event || log.at(hardwareSeen_).order < due_[told]->order)) {
            out[taken++] = {::wire::hardwarePushed, log.at(hardwareSeen_++).handle};
            continue;
        }
        Entry& entry = *due_[told++];
        entry.due = false;
        if (entry.named) SetEvent(entry.named.get());
        if (entry.registration.handle != 0) out[taken++] = {::wire::eventPushed, entry.registration.handle};
    }
    due_.erase(due_.begin(), due_.begin() + static_cast<std::ptrdiff_t>(told));
    return taken;
}

}  // namespace srv
