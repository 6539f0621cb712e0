// Requests and replies spelt in bytes, independent of the server's own reader and writer.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bytes {

using Bytes = std::vector<std::uint8_t>;

inline Bytes number(std::uint64_t value, std::size_t width)
{
    Bytes result;
    for (std::size_t i = 0; i < width; ++i)
        result.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    return result;
}

inline Bytes operator+(Bytes left, const Bytes& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

inline Bytes u8(std::uint8_t value)
{
    return number(value, 1);
}
inline Bytes u16(std::uint16_t value)
{
    return number(value, 2);
}
inline Bytes u32(std::uint32_t value)
{
    return number(value, 4);
}

inline Bytes units(std::u16string_view text)
{
    Bytes result;
    for (const char16_t unit : text)
        result = result + u16(unit);
    return result;
}

// A text of a request.
inline Bytes str(std::u16string_view text)
{
    return u32(static_cast<std::uint32_t>(2 * text.size())) + units(text);
}
inline Bytes null()
{
    return u32(0xFFFF);
}

// A text of a reply: with its trailer.
inline Bytes replyStr(std::u16string_view text)
{
    return str(text) + u32(0);
}

// The reply of kind 4 with a result.
inline Bytes reply(std::uint32_t result, const Bytes& fields = {})
{
    return u16(4) + u32(result) + fields;
}

// A list of a reply, from its bytes.
inline Bytes list(const Bytes& strings)
{
    return strings.empty() ? u32(0) : u32(static_cast<std::uint32_t>(strings.size())) + strings + u32(0);
}
inline Bytes item(std::u16string_view text)
{
    return units(text) + u16(0);
}

// A request's frame, or with another opcode a reply's.
inline Bytes frame(const Bytes& payload, std::uint16_t opcode)
{
    Bytes header(80);
    const auto put = [&](std::size_t at, const Bytes& value) {
        std::copy(value.begin(), value.end(), header.begin() + at);
    };
    put(4, u8(80));
    put(5, u16(123));
    put(7, u8(2));
    put(8, u16(opcode));
    put(11, u8(2));
    put(14, u16(255));
    put(16, u16(static_cast<std::uint16_t>(payload.size())));
    put(19, u16(8192));
    put(21, u16(80));
    return header + payload;
}

inline Bytes frame(const Bytes& payload)
{
    return frame(payload, static_cast<std::uint16_t>(payload.at(0) | payload.at(1) << 8));
}

}  // namespace bytes
