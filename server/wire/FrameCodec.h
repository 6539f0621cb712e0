// The frame of the channel (wire/frame.h): checking what came in, and heading what goes out.
#pragma once

#include <cstdint>
#include <span>

namespace srv {

struct RequestFrame
{
    std::span<const std::uint8_t> payload;  // empty if there is a fault
    std::uint16_t opcode = 0;               // as far as it can be read: what an error reply is headed with
    const char* fault = nullptr;            // what is wrong, for the log; nullptr: nothing
};

// Takes a message apart. Header bytes without a meaning are not looked at, so that they can get one.
RequestFrame parseFrame(std::span<const std::uint8_t> message) noexcept;

// Writes a reply's header into the first 80 bytes of `frame`.
void writeReplyHeader(std::span<std::uint8_t> frame, std::uint16_t opcode, std::size_t payloadLength) noexcept;

}  // namespace srv
