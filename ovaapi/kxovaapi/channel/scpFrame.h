// The two fixed blocks of one exchange over the channel; their layout is in wire/frame.h.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "buffers/clear.h"
#include "buffers/sendData.h"
#include "wire/frame.h"

class requestFrame
{
 public:
    explicit requestFrame(const sendData& request) noexcept
        : payloadLength_(static_cast<std::uint16_t>(std::min<std::size_t>(request.cursor(), wire::maxPayload)))
    {
        clear<sizeof frame_>(frame_);
        namespace at = wire::header;
        put8(at::lengthOffset, static_cast<std::uint8_t>(wire::frameHeaderLength));
        put16(at::magicOffset, at::magic);
        put8(at::versionOffset, at::version);
        std::memcpy(frame_ + at::opcodeOffset, request.data(), sizeof(std::uint16_t));
        put8(at::kindOffset, at::kind);
        put16(at::maskOffset, at::mask);
        put16(at::payloadLengthOffset, payloadLength_);
        put16(at::maxPayloadOffset, static_cast<std::uint16_t>(wire::maxPayload));
        put16(at::payloadStartOffset, static_cast<std::uint16_t>(wire::frameHeaderLength));
        std::memcpy(frame_ + wire::frameHeaderLength, request.data(), payloadLength_);
    }

    void* bytes() noexcept { return frame_; }
    std::uint16_t length() const noexcept
    {
        return static_cast<std::uint16_t>(wire::frameHeaderLength + payloadLength_);
    }

 private:
    void put8(std::size_t offset, std::uint8_t value) noexcept { frame_[offset] = value; }
    void put16(std::size_t offset, std::uint16_t value) noexcept
    {
        frame_[offset] = static_cast<std::uint8_t>(value & 0xFF);
        frame_[offset + 1] = static_cast<std::uint8_t>(value >> 8);
    }

    std::uint8_t frame_[wire::requestFrameCapacity];
    std::uint16_t payloadLength_;
};

class replyFrame
{
 public:
    replyFrame() noexcept { clear<sizeof frame_>(frame_); }

    void* bytes() noexcept { return frame_; }
    static constexpr std::uint16_t capacity() noexcept { return wire::replyFrameCapacity; }
    const std::uint8_t* payload() const noexcept { return frame_ + wire::frameHeaderLength; }

    // The payload of a reply of `received` bytes; one that is shorter than the header has none.
    static std::uint32_t payloadLength(std::uint16_t received) noexcept
    {
        return received > wire::frameHeaderLength ? received - std::uint32_t{wire::frameHeaderLength} : 0;
    }

 private:
    std::uint8_t frame_[wire::replyFrameCapacity];
};
