#include "buffers/sendData.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <memory>
#include <new>

#include "buffers/clear.h"

namespace {

// In 64 bits, so that no count can wrap around the end of the buffer.
bool fits(std::uint32_t cursor, std::uint64_t count) noexcept
{
    return cursor + count <= wire::maxPayload;
}

}  // namespace

void sendData::Reset() noexcept
{
    clear<sizeof data_>(data_);
    cursor_ = 0;
}

std::uint32_t sendData::PutU16(std::uint16_t value) noexcept
{
    return PutBytes(&value, sizeof value);
}

std::uint32_t sendData::PutU32(std::uint32_t value) noexcept
{
    return PutBytes(&value, sizeof value);
}

std::uint32_t sendData::PutU32Ptr(const std::uint32_t* value) noexcept
{
    return PutU32(value ? *value : 0);
}

std::uint32_t sendData::PutBytes(const void* bytes, std::uint32_t count) noexcept
{
    if (!fits(cursor_, count)) return ERROR_BUFFER_OVERFLOW;
    if (count) std::memcpy(data_ + cursor_, bytes, count);
    cursor_ += count;
    return ERROR_SUCCESS;
}

std::uint32_t sendData::PutString(const char* text) noexcept
{
    if (!text) return PutWideString(nullptr);

    const std::size_t units = std::strlen(text) + 1;
    const std::unique_ptr<wchar_t[]> wide(new (std::nothrow) wchar_t[units]());
    if (!wide) return ERROR_NOT_ENOUGH_MEMORY;
    if (MultiByteToWideChar(CP_ACP, 0, text, -1, wide.get(), static_cast<int>(units)) == 0) return GetLastError();
    return PutWideString(wide.get());
}

std::uint32_t sendData::PutWideString(const wchar_t* text) noexcept
{
    if (!text) return PutU32(wire::nullString);

    const auto length = static_cast<std::uint32_t>(2 * std::wcslen(text));
    const std::uint32_t status = PutU32(length);
    if (cursor_ < sizeof data_) {
        std::memcpy(data_ + cursor_, text, std::min<std::size_t>(length, sizeof data_ - cursor_));
    }
    cursor_ += length;
    if (status != ERROR_SUCCESS) return status;
    // The server's own limit counts a text twice; a request that only fits when it is counted once is refused here.
    return fits(cursor_, length) ? ERROR_SUCCESS : ERROR_BUFFER_OVERFLOW;
}
