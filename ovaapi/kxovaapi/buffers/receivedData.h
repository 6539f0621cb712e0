// receivedData: one reply of the configuration server while it is being read.
//
// A text is a u32 byte length, that many bytes of UTF-16LE without terminator, and a 4-byte trailer that is skipped.
// A list of texts is a u32 byte length, that many bytes of zero-terminated UTF-16LE texts, and the trailer; an empty
// list has no trailer. One thread uses an object at a time.
#pragma once

#include <cstdint>

#include "wire/frame.h"

class receivedData
{
 public:
    receivedData() noexcept;  // a zeroed block of 8192 bytes, nothing received yet
    ~receivedData() { Release(); }
    receivedData(receivedData&& other) noexcept;
    receivedData& operator=(receivedData&&) = delete;
    receivedData(const receivedData&) = delete;
    receivedData& operator=(const receivedData&) = delete;

    void Release() noexcept;

    // Takes over a received payload: the whole block is copied from `block` (8192 bytes), `length` bytes of it are
    // valid. A length beyond the block counts as the block's.
    void Fill(const std::uint8_t* block, std::uint32_t length) noexcept;

    // Each read returns 0 and moves behind the field, or 111 when the field is not wholly there.
    std::uint32_t ReadU8(std::uint8_t* out) noexcept;
    std::uint32_t ReadU16(std::uint16_t* out) noexcept;
    std::uint32_t ReadU32(std::uint32_t* out) noexcept;
    std::uint32_t ReadBytes(void* out, const std::uint32_t* count) noexcept;

    // One text into a buffer of *size bytes; *size becomes its length. 234 when it does not fit with its terminator:
    // *size is then the room it needs. A NULL buffer or size asks for that room and leaves the text unread.
    std::uint32_t ReadString(char* buffer, std::uint32_t* size) noexcept;

    // One text of at most 259 characters into the buffer of an API caller; *size becomes its length. A buffer that
    // is exactly as long as the text gets it without a terminator. 234 when it is shorter: *size is then the text's
    // length. Any other failure empties the buffer.
    std::uint32_t ReadStringAndCopyToUserBuffer(char* buffer, std::uint32_t* size) noexcept;

    // A list of texts, each with its terminating zero; *size becomes the number of bytes written. Texts behind the
    // one that fills the buffer exactly are dropped; one that does not fit gives the conversion's error (122).
    std::uint32_t ReadMultiString(char* buffer, std::uint32_t* size) noexcept;

    std::uint32_t length() const noexcept { return length_; }
    std::uint32_t cursor() const noexcept { return cursor_; }

 private:
    bool available(std::uint64_t count) const noexcept;
    void skipTrailer() noexcept;

    std::uint8_t* data_;
    std::uint32_t length_ = 0;
    std::uint32_t cursor_ = 0;
};
