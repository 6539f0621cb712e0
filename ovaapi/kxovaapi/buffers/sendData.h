// sendData: one request to the configuration server while it is being built.
//
// Little-endian fields follow one another without gaps. A text is a u32 byte length and that many bytes of UTF-16LE
// without terminator; a NULL text is the length 0xFFFF and no bytes. One thread uses an object at a time.
#pragma once

#include <cstddef>
#include <cstdint>

#include "wire/frame.h"

class sendData
{
 public:
    sendData() noexcept { Reset(); }

    // Back to an empty request.
    void Reset() noexcept;

    // Each put returns 0, or 111 when the field does not fit; a field that does not fit is not written.
    std::uint32_t PutU16(std::uint16_t value) noexcept;
    std::uint32_t PutU32(std::uint32_t value) noexcept;
    std::uint32_t PutU32Ptr(const std::uint32_t* value) noexcept;  // NULL puts 0
    std::uint32_t PutBytes(const void* bytes, std::uint32_t count) noexcept;

    // Texts are refused with 111 when start + 4 + 2 * bytes exceeds 8192, although they might still fit; what was
    // written of a refused text is meaningless. PutString also returns the error of a conversion that fails, with
    // nothing written.
    std::uint32_t PutString(const char* text) noexcept;
    std::uint32_t PutWideString(const wchar_t* text) noexcept;

    const std::uint8_t* data() const noexcept { return data_; }
    std::uint32_t cursor() const noexcept { return cursor_; }

 private:
    std::uint8_t data_[wire::maxPayload];
    std::uint32_t cursor_ = 0;
};
