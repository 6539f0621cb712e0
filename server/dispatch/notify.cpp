#include "dispatch/notify.h"

#include <cstdio>
#include <cstring>
#include <optional>

#include "notifications/Notifications.h"

namespace srv {

Fields read(RequestReader& reader, InterfaceClass& field, std::string* shown)
{
    std::uint8_t bytes[sizeof field.guid];
    if (!reader.bytes(bytes)) return Fields::Malformed;
    std::memcpy(&field.guid, bytes, sizeof bytes);
    if (shown) {
        char text[16];
        std::snprintf(text, sizeof text, "%s{%08lX-...}", shown->empty() ? "" : ", ", field.guid.Data1);
        *shown += text;
    }
    return Fields::Good;
}

namespace notify {

namespace {

std::optional<Family> familyOf(std::wstring_view name) noexcept
{
    for (const Family family : {Family::Device, Family::Name})
        if (name == familyKey(family)) return family;
    return std::nullopt;
}

// The client's subscriber; a client that did not say which of its channels it is has one for this connection.
Subscriber& subscriberOf(const Call& call)
{
    std::shared_ptr<Subscriber>& own = call.session.subscriber;
    if (!own) own = call.server.notifications->subscriber(call.session.clientProcess());
    return *own;
}

std::uint64_t number(std::uint32_t low, std::uint32_t high) noexcept
{
    return static_cast<std::uint64_t>(high) << 32 | low;
}

Registration registration(Family family, const Text& subject, std::wstring_view event, std::uint32_t handle)
{
    return {family, std::wstring(subject.value_or(L"")), std::wstring(event), handle};
}

Result add(const Call& call, std::wstring_view family, const Text& subject, std::wstring_view event,
           std::uint32_t handle, bool renewed)
{
    const std::optional<Family> known = familyOf(family);
    if (!known) return result::invalidParameter;
    if (!call.server.notifications) return result::notSupported;
    return call.server.notifications->add(subscriberOf(call), registration(*known, subject, event, handle), renewed);
}

}  // namespace

Result add(const Call& call, Required family, Text subject, Required event, std::uint32_t handle)
{
    return add(call, family, subject, event, handle, false);
}

Result renew(const Call& call, Required family, Text subject, Required event, std::uint32_t handle)
{
    return add(call, family, subject, event, handle, true);
}

Result remove(const Call& call, Required family, Text subject, Required event, std::uint32_t handle)
{
    const std::optional<Family> known = familyOf(family);
    if (!known) return result::invalidParameter;
    if (!call.server.notifications) return result::notSupported;
    return call.server.notifications->remove(subscriberOf(call), registration(*known, subject, event, handle));
}

Result addClass(const Call& call, InterfaceClass interfaceClass)
{
    if (!call.server.notifications) return result::notSupported;
    return call.server.notifications->addClass(subscriberOf(call), interfaceClass.guid);
}

Result removeClass(const Call& call, InterfaceClass interfaceClass)
{
    if (!call.server.notifications) return result::notSupported;
    call.server.notifications->removeClass(subscriberOf(call), interfaceClass.guid);
    return result::ok;
}

Outcome hardwareChange(const Call& call, RequestReader& reader, std::string* shown)
{
    call.reply.leadWith(0);
    call.reply.keepFields();
    std::uint32_t handle = 0;
    Outcome outcome;
    outcome.fields = read(reader, handle, shown);
    if (!reader.atEnd()) outcome.fields = Fields::Malformed;
    std::optional<HardwareChange> change;
    if (outcome.fields != Fields::Good) {
        outcome.result = result::invalidParameter;
    } else {
        if (call.server.notifications) change = call.server.notifications->hardwareChange(handle);
        if (!change) outcome.result = result::notFound;
    }
    const HardwareChange& answered = change ? *change : HardwareChange{};
    std::uint8_t interfaceClass[sizeof(GUID)];
    std::memcpy(interfaceClass, &answered.interfaceClass, sizeof interfaceClass);
    call.reply.u8(answered.code);
    call.reply.text(answered.name);
    call.reply.bytes(interfaceClass);
    return outcome;
}

Result channel(const Call& call, std::uint32_t low, std::uint32_t high)
{
    Notifications* const notifications = call.server.notifications;
    if (!notifications) return result::notSupported;
    call.session.subscriber = notifications->subscriber(call.session.clientProcess(), number(low, high));
    return result::ok;
}

Result listen(const Call& call, std::uint32_t low, std::uint32_t high)
{
    Notifications* const notifications = call.server.notifications;
    if (!notifications) return result::notSupported;
    call.session.pushes.reset();
    call.session.pushes =
        notifications->listen(notifications->subscriber(call.session.clientProcess(), number(low, high)));
    return result::ok;
}

Result beginRenewal(const Call& call)
{
    if (!call.server.notifications) return result::notSupported;
    call.server.notifications->beginRenewal(subscriberOf(call));
    return result::ok;
}

Result renewClass(const Call& call, InterfaceClass interfaceClass, std::uint32_t count)
{
    if (count == 0) return result::invalidParameter;
    if (!call.server.notifications) return result::notSupported;
    return call.server.notifications->renewClass(subscriberOf(call), interfaceClass.guid, count);
}

Result endRenewal(const Call& call)
{
    if (!call.server.notifications) return result::notSupported;
    call.server.notifications->endRenewal(subscriberOf(call));
    return result::ok;
}

}  // namespace notify

}  // namespace srv
