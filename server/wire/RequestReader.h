// Reads the fields of one request.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "wire/frame.h"

namespace srv {

// A text of a request; nothing stands for a NULL string.
using Text = std::optional<std::wstring_view>;

// Every read is bounded by the request. A read that finds less than its whole field returns false, leaves its output
// alone, and every read after it fails too. Texts live as long as the reader. Allocates nothing.
class RequestReader
{
 public:
    explicit RequestReader(std::span<const std::uint8_t> payload) noexcept;
    RequestReader(const RequestReader&) = delete;
    RequestReader& operator=(const RequestReader&) = delete;

    bool u8(std::uint8_t& value) noexcept;
    bool u16(std::uint16_t& value) noexcept;
    bool u32(std::uint32_t& value) noexcept;
    bool bytes(std::span<std::uint8_t> value) noexcept;
    bool text(Text& value) noexcept;

    bool failed() const noexcept { return failed_; }
    std::size_t remaining() const noexcept { return payload_.size() - position_; }

    // Whether everything was read, and nothing in vain.
    bool atEnd() const noexcept { return !failed_ && remaining() == 0; }

    // The rest, unread.
    std::span<const std::uint8_t> rest() const noexcept { return payload_.subspan(position_); }

 private:
    bool take(std::size_t count, const std::uint8_t*& bytes) noexcept;

    std::span<const std::uint8_t> payload_;
    std::size_t position_ = 0;
    bool failed_ = false;

    // Strings are copied here, for a request's bytes have no alignment. All of a request's together fit.
    std::size_t unitsUsed_ = 0;
    std::array<wchar_t, ::wire::maxPayload / sizeof(wchar_t)> units_;
};

}  // namespace srv
