#include "registrations.h"

#include <windows.h>

#include <algorithm>
#include <new>
#include <string_view>

#include "wire/notifications.h"
#include "wire/opcodes.h"

namespace kxonlinx {

namespace {

namespace op = wire::opcode;

constexpr std::size_t opcodeLength = sizeof(std::uint16_t);

std::uint16_t opcodeOf(Bytes payload) noexcept
{
    return static_cast<std::uint16_t>(payload[0] | payload[1] << 8);
}

Bytes payloadOf(Bytes frame) noexcept
{
    return frame.subspan(wire::frameHeaderLength);
}

// The fields of a registration for changes of logical devices or names.
struct Fields
{
    std::wstring_view family;
    std::wstring_view subject;
    std::wstring_view event;  // without "Global\"
    std::uint32_t handle = 0;
    bool whole = false;

    explicit Fields(Bytes payload) noexcept : rest_(payload.subspan(opcodeLength))
    {
        whole = text(family) && text(subject) && text(event) && number(handle) && rest_.empty();
        if (event.starts_with(wire::globalPrefix)) event.remove_prefix(wire::globalPrefixLength);
    }

 private:
    bool number(std::uint32_t& value) noexcept
    {
        if (rest_.size() < sizeof value) return false;
        std::memcpy(&value, rest_.data(), sizeof value);
        rest_ = rest_.subspan(sizeof value);
        return true;
    }
    bool text(std::wstring_view& value) noexcept
    {
        std::uint32_t length = 0;
        if (!number(length)) return false;
        if (length == wire::nullString) return true;
        if (length > rest_.size() || length % sizeof(wchar_t) != 0) return false;
        // Texts lie at even places, as everything in front of them is even.
        value = {reinterpret_cast<const wchar_t*>(rest_.data()), length / sizeof(wchar_t)};
        rest_ = rest_.subspan(length);
        return true;
    }

    Bytes rest_;
};

bool equalNoCase(std::wstring_view left, std::wstring_view right) noexcept
{
    if (left.size() != right.size()) return false;
    return left.empty() || CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                                static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

}  // namespace

Registrations::~Registrations()
{
    refused();
    while (first_) {
        Entry* const entry = first_;
        first_ = entry->next;
        free(entry);
    }
}

bool Registrations::concern(Bytes request) noexcept
{
    switch (opcodeOf(payloadOf(request))) {
        case op::NotifyRegister:
        case op::NotifyUnregister:
        case op::HardwareChangeRegister:
        case op::HardwareChangeUnregister:
        case op::NotifyRenewBegin:
        case op::NotifyRenew:
        case op::HardwareChangeRenew:
        case op::NotifyRenewEnd:
            return true;
        default:
            return false;
    }
}

Registrations::Entry* Registrations::make(Bytes payload) noexcept
{
    void* const memory = ::operator new(sizeof(Entry) + payload.size(), std::nothrow);
    if (!memory) return nullptr;
    Entry* const entry = new (memory) Entry{nullptr, 1, static_cast<std::uint32_t>(payload.size())};
    std::copy(payload.begin(), payload.end(), entry->payload());
    return entry;
}

void Registrations::free(Entry* entry) noexcept
{
    ::operator delete(entry);
}

// The place of the registration that this very payload made; the place behind the last if there is none.
Registrations::Entry** Registrations::find(Bytes payload) noexcept
{
    Entry** place = &first_;
    while (*place && !std::equal(payload.begin(), payload.end(), (*place)->bytes().begin(), (*place)->bytes().end()))
        place = &(*place)->next;
    return place;
}

bool Registrations::prepare(Bytes request) noexcept
{
    refused();
    const Bytes payload = payloadOf(request);
    const std::uint16_t opcode = opcodeOf(payload);
    if (opcode != op::NotifyRegister && opcode != op::HardwareChangeRegister) return true;
    prepared_ = make(payload);
    return prepared_ != nullptr;
}

void Registrations::refused() noexcept
{
    if (prepared_) free(prepared_);
    prepared_ = nullptr;
}

// Whether a request takes a registration back.
bool Registrations::ends(Bytes request, Bytes registration) noexcept
{
    if (opcodeOf(request) == op::HardwareChangeUnregister) {
        return opcodeOf(registration) == op::HardwareChangeRegister &&
               std::equal(request.begin() + opcodeLength, request.end(), registration.begin() + opcodeLength,
                          registration.end());
    }
    if (opcodeOf(registration) != op::NotifyRegister) return false;
    const Fields asked(request);
    const Fields made(registration);
    return asked.whole && made.whole && asked.family == made.family && equalNoCase(asked.subject, made.subject) &&
           asked.event == made.event && (asked.handle == 0 || asked.handle == made.handle);
}

void Registrations::accepted(Bytes request) noexcept
{
    const Bytes payload = payloadOf(request);
    const std::uint16_t opcode = opcodeOf(payload);
    if (prepared_) {
        Entry** const place = find(payload);
        if (*place) {
            ++(*place)->count;
            refused();
        } else {
            *place = prepared_;
            prepared_ = nullptr;
        }
        return;
    }
    if (opcode != op::NotifyUnregister && opcode != op::HardwareChangeUnregister) return;
    for (Entry** place = &first_; *place;) {
        Entry* const entry = *place;
        const bool ended = ends(payload, entry->bytes());
        // Classes are taken back as often as they were registered, everything else at once.
        if (!ended || (opcode == op::HardwareChangeUnregister && --entry->count > 0)) {
            place = &entry->next;
            continue;
        }
        *place = entry->next;
        free(entry);
    }
}

Bytes Registrations::renewal(const Entry& entry) noexcept
{
    const Bytes made = entry.bytes();
    const bool hardware = opcodeOf(made) == op::HardwareChangeRegister;
    const std::size_t length = made.size() + (hardware ? sizeof entry.count : 0);
    const std::span<std::uint8_t> frame = std::span(frame_).first(wire::frameHeaderLength + length);
    headFrame(frame, hardware ? op::HardwareChangeRenew : op::NotifyRenew);
    std::copy(made.begin() + opcodeLength, made.end(), frame.begin() + wire::frameHeaderLength + opcodeLength);
    if (hardware) std::memcpy(frame.data() + frame.size() - sizeof entry.count, &entry.count, sizeof entry.count);
    return frame;
}

}  // namespace kxonlinx
