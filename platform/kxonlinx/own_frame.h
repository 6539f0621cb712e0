// A request of the channel library's own.
#pragma once

#include <cstdint>
#include <cstring>
#include <span>

#include "frame_check.h"
#include "wire/frame.h"
#include "wire/opcodes.h"

namespace kxonlinx {

// Writes the header of a request whose payload begins with `opcode`, and the code itself.
inline void headFrame(std::span<std::uint8_t> frame, std::uint16_t opcode) noexcept
{
    namespace at = wire::header;
    const auto put = [&](std::size_t offset, std::size_t value) noexcept {
        frame[offset] = static_cast<std::uint8_t>(value);
        frame[offset + 1] = static_cast<std::uint8_t>(value >> 8);
    };
    std::memset(frame.data(), 0, wire::frameHeaderLength);
    frame[at::lengthOffset] = wire::frameHeaderLength;
    put(at::magicOffset, at::magic);
    frame[at::versionOffset] = at::version;
    put(at::opcodeOffset, opcode);
    frame[at::kindOffset] = at::kind;
    put(at::maskOffset, at::mask);
    put(at::payloadLengthOffset, frame.size() - wire::frameHeaderLength);
    put(at::maxPayloadOffset, wire::maxPayload);
    put(at::payloadStartOffset, wire::frameHeaderLength);
    put(wire::frameHeaderLength, opcode);
}

// With fields of so many bytes.
template <std::size_t fields>
class OwnFrame
{
 public:
    explicit OwnFrame(std::uint16_t opcode) noexcept { headFrame(bytes_, opcode); }

    void raw(const void* value, std::size_t count) noexcept
    {
        std::memcpy(bytes_ + position_, value, count);
        position_ += count;
    }
    void u32(std::uint32_t value) noexcept { raw(&value, sizeof value); }
    void u64(std::uint64_t value) noexcept { raw(&value, sizeof value); }

    Bytes bytes() const noexcept { return bytes_; }

 private:
    std::size_t position_ = wire::frameHeaderLength + sizeof(std::uint16_t);
    std::uint8_t bytes_[wire::frameHeaderLength + sizeof(std::uint16_t) + fields];
};

}  // namespace kxonlinx
