#include "wire/FrameCodec.h"

#include <algorithm>

#include "wire/frame.h"

namespace srv {

namespace {

namespace at = ::wire::header;
using ::wire::frameHeaderLength;
using ::wire::maxPayload;

std::uint16_t u16(std::span<const std::uint8_t> bytes, std::size_t offset) noexcept
{
    return static_cast<std::uint16_t>(bytes[offset] | bytes[offset + 1] << 8);
}

void put16(std::span<std::uint8_t> bytes, std::size_t offset, std::size_t value) noexcept
{
    bytes[offset] = static_cast<std::uint8_t>(value);
    bytes[offset + 1] = static_cast<std::uint8_t>(value >> 8);
}

const char* faultOf(std::span<const std::uint8_t> message) noexcept
{
    if (message.size() < frameHeaderLength) return "shorter than a header";
    if (message[at::lengthOffset] != frameHeaderLength || u16(message, at::payloadStartOffset) != frameHeaderLength) {
        return "wrong header length";
    }
    if (u16(message, at::magicOffset) != at::magic || message[at::versionOffset] != at::version ||
        message[at::kindOffset] != at::kind || u16(message, at::maskOffset) != at::mask ||
        u16(message, at::maxPayloadOffset) != maxPayload) {
        return "wrong fixed header fields";
    }
    if (u16(message, at::payloadLengthOffset) > maxPayload) return "payload too long";
    if (u16(message, at::payloadLengthOffset) != message.size() - frameHeaderLength) {
        return "payload length does not match the message";
    }
    if (message.size() < frameHeaderLength + 2) return "no operation code";
    if (u16(message, at::opcodeOffset) != u16(message, frameHeaderLength)) {
        return "header and payload name different operations";
    }
    return nullptr;
}

}  // namespace

RequestFrame parseFrame(std::span<const std::uint8_t> message) noexcept
{
    RequestFrame frame;
    if (message.size() >= frameHeaderLength) frame.opcode = u16(message, at::opcodeOffset);
    frame.fault = faultOf(message);
    if (!frame.fault) frame.payload = message.subspan(frameHeaderLength);
    return frame;
}

void writeReplyHeader(std::span<std::uint8_t> frame, std::uint16_t opcode, std::size_t payloadLength) noexcept
{
    std::fill_n(frame.begin(), frameHeaderLength, std::uint8_t{0});
    frame[at::lengthOffset] = frameHeaderLength;
    put16(frame, at::magicOffset, at::magic);
    frame[at::versionOffset] = at::version;
    put16(frame, at::opcodeOffset, opcode);
    frame[at::kindOffset] = at::kind;
    put16(frame, at::maskOffset, at::mask);
    put16(frame, at::payloadLengthOffset, payloadLength);
    put16(frame, at::maxPayloadOffset, maxPayload);
    put16(frame, at::payloadStartOffset, frameHeaderLength);
}

}  // namespace srv
