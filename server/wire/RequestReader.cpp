#include "wire/RequestReader.h"

#include <cstring>

namespace srv {

static_assert(sizeof(wchar_t) == 2, "text travels as UTF-16");

// The units are scratch: they are written before they are read.
RequestReader::RequestReader(std::span<const std::uint8_t> payload) noexcept
    : payload_(payload), failed_(payload.size() > ::wire::maxPayload)
{}

bool RequestReader::take(std::size_t count, const std::uint8_t*& bytes) noexcept
{
    if (failed_ || count > remaining()) {
        failed_ = true;
        return false;
    }
    bytes = payload_.data() + position_;
    position_ += count;
    return true;
}

bool RequestReader::u8(std::uint8_t& value) noexcept
{
    const std::uint8_t* at = nullptr;
    if (!take(1, at)) return false;
    value = at[0];
    return true;
}

bool RequestReader::u16(std::uint16_t& value) noexcept
{
    const std::uint8_t* at = nullptr;
    if (!take(2, at)) return false;
    value = static_cast<std::uint16_t>(at[0] | at[1] << 8);
    return true;
}

bool RequestReader::u32(std::uint32_t& value) noexcept
{
    const std::uint8_t* at = nullptr;
    if (!take(4, at)) return false;
    value = at[0] | static_cast<std::uint32_t>(at[1]) << 8 | static_cast<std::uint32_t>(at[2]) << 16 |
            static_cast<std::uint32_t>(at[3]) << 24;
    return true;
}

bool RequestReader::bytes(std::span<std::uint8_t> value) noexcept
{
    const std::uint8_t* at = nullptr;
    if (!take(value.size(), at)) return false;
    if (!value.empty()) std::memcpy(value.data(), at, value.size());
    return true;
}

bool RequestReader::text(Text& value) noexcept
{
    std::uint32_t length = 0;
    if (!u32(length)) return false;
    if (length == ::wire::nullString) {
        value.reset();
        return true;
    }
    const std::uint8_t* at = nullptr;
    if (length % sizeof(wchar_t) != 0) failed_ = true;
    if (!take(length, at)) return false;
    wchar_t* const units = units_.data() + unitsUsed_;
    const std::size_t count = length / sizeof(wchar_t);
    if (length > 0) std::memcpy(units, at, length);
    unitsUsed_ += count;
    value.emplace(units, count);
    return true;
}

}  // namespace srv
