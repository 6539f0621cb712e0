#include "buffers/receivedData.h"

#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "buffers/clear.h"
#include "Kxotrc.h"

namespace {

constexpr std::size_t scratchUnits = 8160;
constexpr std::uint32_t userStringCapacity = 260;

// Copies one zero-terminated text of at most `limit` units from unaligned bytes; returns its length.
std::size_t copyText(wchar_t* text, const std::uint8_t* bytes, std::size_t limit) noexcept
{
    std::size_t units = 0;
    for (; units < limit; ++units) {
        std::memcpy(text + units, bytes + units * sizeof *text, sizeof *text);
        if (!text[units]) break;
    }
    text[units] = 0;
    return units;
}

constexpr char tooShort[] = "<< return Error DCFG_ERR_BUFFER_TOO_SHORT ";

}  // namespace

receivedData::receivedData() noexcept : data_(static_cast<std::uint8_t*>(std::malloc(wire::maxPayload)))
{
    if (data_) clear<wire::maxPayload>(data_);
}

receivedData::receivedData(receivedData&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)),
      length_(std::exchange(other.length_, 0)),
      cursor_(std::exchange(other.cursor_, 0))
{}

void receivedData::Release() noexcept
{
    cursor_ = 0;
    std::free(std::exchange(data_, nullptr));
    length_ = 0;
}

void receivedData::Fill(const std::uint8_t* block, std::uint32_t length) noexcept
{
    if (!data_) return;
    std::memcpy(data_, block, wire::maxPayload);
    length_ = std::min<std::uint32_t>(length, wire::maxPayload);
}

bool receivedData::available(std::uint64_t count) const noexcept
{
    return data_ && cursor_ + count <= length_;
}

void receivedData::skipTrailer() noexcept
{
    if (available(wire::stringTrailerLength)) cursor_ += wire::stringTrailerLength;
}

std::uint32_t receivedData::ReadU8(std::uint8_t* out) noexcept
{
    const std::uint32_t count = sizeof *out;
    return out ? ReadBytes(out, &count) : ERROR_BUFFER_OVERFLOW;
}

std::uint32_t receivedData::ReadU16(std::uint16_t* out) noexcept
{
    const std::uint32_t count = sizeof *out;
    return ReadBytes(out, &count);
}

std::uint32_t receivedData::ReadU32(std::uint32_t* out) noexcept
{
    const std::uint32_t count = sizeof *out;
    return out ? ReadBytes(out, &count) : ERROR_BUFFER_OVERFLOW;
}

std::uint32_t receivedData::ReadBytes(void* out, const std::uint32_t* count) noexcept
{
    if (!count || !available(*count)) return ERROR_BUFFER_OVERFLOW;
    if (*count) std::memcpy(out, data_ + cursor_, *count);
    cursor_ += *count;
    return ERROR_SUCCESS;
}

std::uint32_t receivedData::ReadString(char* buffer, std::uint32_t* size) noexcept
{
    constexpr char function[] = "ReadString() ";

    std::uint32_t length = 0;
    if (const std::uint32_t status = ReadU32(&length); status != ERROR_SUCCESS) return status;
    if (length == 0) {
        if (buffer && size && *size >= 1) buffer[0] = 0;
        if (size) *size = 0;
        skipTrailer();
        return ERROR_SUCCESS;
    }
    if (!available(length)) return ERROR_BUFFER_OVERFLOW;

    // Not zeroed as a whole, which would take longer than all the rest of the reply.
    wchar_t wide[scratchUnits];
    char text[scratchUnits];
    wide[length / sizeof *wide] = 0;  // of an odd length, the upper half of the last unit
    std::memcpy(wide, data_ + cursor_, length);
    wide[(length + 1) / sizeof *wide] = 0;
    const auto needed =
        static_cast<std::uint32_t>(WideCharToMultiByte(CP_ACP, 0, wide, -1, text, sizeof text, nullptr, nullptr));
    if (needed == 0) {
        // What a failed conversion left behind is no text.
        text[0] = 0;
        KXTRACE(function, TRC_RESULT, "<< error on WideCharToMultiByte");
    }

    if (!buffer || !size) {
        if (size) *size = needed;
        KXTRACE(function, TRC_RESULT, "%s", tooShort);
        return ERROR_MORE_DATA;
    }
    cursor_ += length;
    if (*size < needed) {
        // The trailer stays unread here, unlike above where the text does: callers depend on both.
        *size = needed;
        KXTRACE(function, TRC_RESULT, "%s", tooShort);
        return ERROR_MORE_DATA;
    }
    const auto characters = static_cast<std::uint32_t>(std::strlen(text));
    std::memcpy(buffer, text, needed);
    if (*size >= characters + 1) buffer[characters] = 0;
    skipTrailer();
    *size = characters;
    return ERROR_SUCCESS;
}

std::uint32_t receivedData::ReadStringAndCopyToUserBuffer(char* buffer, std::uint32_t* size) noexcept
{
    constexpr char function[] = "ReadStringAndCopyToUserBuffer: ";
    KXTRACE(function, TRC_ENTRY, ">> start");

    char text[userStringCapacity] = {};
    std::uint32_t length = sizeof text;
    if (const std::uint32_t status = ReadString(text, &length); status != ERROR_SUCCESS) {
        if (buffer) buffer[0] = 0;
        KXTRACE(function, TRC_RESULT, "<< result= 0x%x ", status);
        return status;
    }

    std::uint32_t capacity = 0;
    if (size) capacity = std::exchange(*size, length);
    if (capacity > length) {
        if (buffer) std::memcpy(buffer, text, length + 1);
    } else if (length > 0 && capacity != length) {
        KXTRACE(function, TRC_RESULT, "%s", tooShort);
        return ERROR_MORE_DATA;
    } else if (length > 0) {
        if (buffer) std::memcpy(buffer, text, length);
    } else if (buffer) {
        buffer[0] = 0;
    }
    KXTRACE(function, TRC_RESULT, "<< return ok ");
    return ERROR_SUCCESS;
}

std::uint32_t receivedData::ReadMultiString(char* buffer, std::uint32_t* size) noexcept
{
    constexpr char function[] = "receivedData::ReadMultiString";

    std::uint32_t total = 0;
    if (const std::uint32_t status = ReadU32(&total); status != ERROR_SUCCESS) return status;
    if (total == 0) {
        if (buffer) buffer[0] = 0;
        if (size) *size = 0;
        return ERROR_SUCCESS;
    }
    if (!size) return ERROR_SUCCESS;

    // The texts are delimited by their own zeros, not by the list's length; only the block itself bounds them.
    const std::uint64_t end = std::min<std::uint64_t>(std::uint64_t{cursor_} + total, wire::maxPayload);
    std::uint32_t written = 0;
    auto room = static_cast<std::int32_t>(*size);
    std::uint32_t result = ERROR_SUCCESS;
    while (cursor_ < end && room >= 1) {
        wchar_t text[wire::maxPayload / 2 + 1];
        const std::size_t units = copyText(text, data_ + cursor_, (wire::maxPayload - cursor_) / sizeof *text);
        if (WideCharToMultiByte(CP_ACP, 0, text, -1, buffer ? buffer + written : nullptr, room, nullptr, nullptr) ==
            0) {
            result = GetLastError();
            KXTRACE(function, TRC_DETAIL, "Fehler beim Konvertieren: %d", static_cast<int>(result));
            break;
        }
        written += static_cast<std::uint32_t>(std::strlen(buffer + written));
        room = static_cast<std::int32_t>(*size - written);
        if (room > 0) {
            buffer[written++] = 0;
            --room;
        }
        cursor_ += static_cast<std::uint32_t>((units + 1) * sizeof *text);
    }
    skipTrailer();
    *size = written;
    return result;
}
