#include "notifications/Listener.h"

#include "notifications/Notifications.h"
#include "wire/FrameCodec.h"
#include "wire/notifications.h"
#include "wire/opcodes.h"

namespace srv {

namespace {

void put(std::uint8_t* at, std::uint32_t value, std::size_t width) noexcept
{
    for (std::size_t i = 0; i < width; ++i)
        at[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

}  // namespace

Listener::Listener(Notifications& notifications, std::shared_ptr<Subscriber> subscriber)
    : notifications_(notifications),
      subscriber_(std::move(subscriber)),
      items_(::wire::mostPushedItems),
      frame_(::wire::replyFrameCapacity)
{}

Listener::~Listener()
{
    notifications_.leave(*this);
}

std::span<const std::uint8_t> Listener::next() noexcept
{
    const std::size_t count = notifications_.take(*this, items_);
    if (count == 0) return {};
    const std::size_t payloadLength = sizeof(std::uint16_t) + count * ::wire::pushedItemLength;
    writeReplyHeader(frame_, ::wire::opcode::NotifyPush, payloadLength);
    std::uint8_t* at = frame_.data() + ::wire::frameHeaderLength;
    put(at, ::wire::opcode::NotifyPush, sizeof(std::uint16_t));
    at += sizeof(std::uint16_t);
    for (std::size_t i = 0; i < count; ++i, at += ::wire::pushedItemLength) {
        put(at, items_[i].what, 4);
        put(at + 4, items_[i].value, 4);
    }
    return std::span(frame_).first(::wire::frameHeaderLength + payloadLength);
}

void Listener::putBack() noexcept
{
    notifications_.putBack(*this);
}

}  // namespace srv
