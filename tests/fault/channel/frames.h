// Frames written down byte by byte, independently of the code under test.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace frames {

using Bytes = std::vector<std::uint8_t>;

inline constexpr std::size_t header = 80;
inline constexpr std::size_t largest = 8272;

inline std::uint8_t low(std::size_t value)
{
    return static_cast<std::uint8_t>(value & 0xFF);
}

inline std::uint8_t high(std::size_t value)
{
    return static_cast<std::uint8_t>(value >> 8 & 0xFF);
}

inline Bytes frame(unsigned opcode, const Bytes& payload)
{
    Bytes bytes{0x00,
                0x00,
                0x00,
                0x00,  // 0
                0x50,  // 4: header length 80
                0x7B,
                0x00,  // 5: 123
                0x02,  // 7
                low(opcode),
                high(opcode),  // 8: operation code
                0x00,          // 10
                0x02,          // 11
                0x00,
                0x00,  // 12
                0xFF,
                0x00,  // 14: 255
                low(payload.size()),
                high(payload.size()),  // 16: payload length
                0x00,                  // 18
                0x00,
                0x20,  // 19: 8192
                0x50,
                0x00};  // 21: 80
    bytes.resize(header, 0);
    bytes.insert(bytes.end(), payload.begin(), payload.end());
    return bytes;
}

// An operation code and what follows it.
inline Bytes request(unsigned opcode, const Bytes& fields = {})
{
    Bytes payload{low(opcode), high(opcode)};
    payload.insert(payload.end(), fields.begin(), fields.end());
    return frame(opcode, payload);
}

inline unsigned opcodeOf(const Bytes& frame)
{
    return frame.at(8) | static_cast<unsigned>(frame.at(9)) << 8;
}

inline Bytes payloadOf(const Bytes& frame)
{
    return frame.size() > header ? Bytes(frame.begin() + header, frame.end()) : Bytes();
}

// The reply to `request` that repeats its payload.
inline Bytes echo(const Bytes& request)
{
    return frame(opcodeOf(request), payloadOf(request));
}

}  // namespace frames
