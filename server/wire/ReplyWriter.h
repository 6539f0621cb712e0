// Writes the payload of one ordinary reply: kind, result, fields.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "base/Results.h"

namespace srv {

// Writes into space that the caller gives, at most 8192 bytes of it. What does not fit is not written, and the reply
// then ends with result 234 and no fields: never with half of them. Allocates nothing.
class ReplyWriter
{
 public:
    static constexpr std::size_t smallestSpace = 6;  // kind and result

    // Requires room for kind and result.
    explicit ReplyWriter(std::span<std::uint8_t> space) noexcept;
    ReplyWriter(const ReplyWriter&) = delete;
    ReplyWriter& operator=(const ReplyWriter&) = delete;

    void u8(std::uint8_t value) noexcept;
    void u16(std::uint16_t value) noexcept;
    void u32(std::uint32_t value) noexcept;
    void bytes(std::span<const std::uint8_t> value) noexcept;
    void text(std::wstring_view value) noexcept;

    // The same for a client that has room for `capacity` bytes of the ANSI code page, terminator included.
    // Returns 0, or 234 with nothing written.
    Result text(std::wstring_view value, std::uint32_t capacity) noexcept;

    bool overflowed() const noexcept { return overflowed_; }

    // For replies that are not headed by their kind: a number in front of it. Before any field.
    void leadWith(std::uint32_t value) noexcept;

    // For replies whose fields are read whatever the result is.
    void keepFields() noexcept { keepsFields_ = true; }

    // Ends the reply and returns its payload. A result other than 0 takes the fields back.
    std::span<const std::uint8_t> finish(Result result) noexcept;

 private:
    friend class ListWriter;

    std::uint8_t* take(std::size_t count) noexcept;
    void units(std::wstring_view value) noexcept;

    std::span<std::uint8_t> space_;
    std::size_t start_ = 0;  // of kind and result
    std::size_t length_ = smallestSpace;
    bool overflowed_ = false;
    bool keepsFields_ = false;
};

// Writes one list of strings into a reply.
class ListWriter
{
 public:
    // The capacity is the client's, in bytes of the ANSI code page with the strings' terminators.
    ListWriter(ReplyWriter& reply, std::uint32_t capacity) noexcept;

    // False when the list does not fit any more, neither the client's capacity nor the reply.
    bool add(std::wstring_view item) noexcept;

    // Returns 0, or 234 when something did not fit.
    Result finish() noexcept;

 private:
    bool terminate(std::size_t ansiBytes) noexcept;

    ReplyWriter& reply_;
    std::size_t capacity_;
    std::size_t start_;
    std::size_t used_ = 0;
    bool lastWasEmpty_ = false;
    bool fits_ = true;
};

}  // namespace srv
