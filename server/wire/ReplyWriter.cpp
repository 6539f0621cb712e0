#include "wire/ReplyWriter.h"

#include <algorithm>
#include <cstring>

#include "base/Text.h"
#include "wire/frame.h"

namespace srv {

namespace {

constexpr std::size_t resultOffset = 2;
constexpr std::size_t lengthField = 4;
constexpr std::size_t terminator = sizeof(wchar_t);

void store(std::uint8_t* at, std::uint32_t value, std::size_t width) noexcept
{
    for (std::size_t i = 0; i < width; ++i)
        at[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

}  // namespace

ReplyWriter::ReplyWriter(std::span<std::uint8_t> space) noexcept
    : space_(space.first(std::min(space.size(), ::wire::maxPayload)))
{}

// Room for `count` more bytes, or nullptr, from when on nothing is written any more.
std::uint8_t* ReplyWriter::take(std::size_t count) noexcept
{
    if (overflowed_ || count > space_.size() - length_) {
        overflowed_ = true;
        return nullptr;
    }
    std::uint8_t* const at = space_.data() + length_;
    length_ += count;
    return at;
}

void ReplyWriter::u8(std::uint8_t value) noexcept
{
    if (std::uint8_t* const at = take(1)) *at = value;
}

void ReplyWriter::u16(std::uint16_t value) noexcept
{
    if (std::uint8_t* const at = take(2)) store(at, value, 2);
}

void ReplyWriter::u32(std::uint32_t value) noexcept
{
    if (std::uint8_t* const at = take(4)) store(at, value, 4);
}

void ReplyWriter::bytes(std::span<const std::uint8_t> value) noexcept
{
    if (value.empty()) return;
    if (std::uint8_t* const at = take(value.size())) std::memcpy(at, value.data(), value.size());
}

void ReplyWriter::units(std::wstring_view value) noexcept
{
    if (value.empty()) return;
    const std::size_t length = value.size() * sizeof(wchar_t);
    if (std::uint8_t* const at = take(length)) std::memcpy(at, value.data(), length);
}

void ReplyWriter::text(std::wstring_view value) noexcept
{
    u32(static_cast<std::uint32_t>(value.size() * sizeof(wchar_t)));
    units(value);
    if (std::uint8_t* const at = take(::wire::stringTrailerLength)) store(at, 0, ::wire::stringTrailerLength);
}

Result ReplyWriter::text(std::wstring_view value, std::uint32_t capacity) noexcept
{
    if (ansiLength(value) >= capacity) return result::moreData;
    text(value);
    return overflowed_ ? result::moreData : result::ok;
}

void ReplyWriter::leadWith(std::uint32_t value) noexcept
{
    store(space_.data(), value, sizeof value);
    start_ = sizeof value;
    length_ = start_ + smallestSpace;
}

std::span<const std::uint8_t> ReplyWriter::finish(Result result) noexcept
{
    if (result == result::ok && overflowed_) result = result::moreData;
    if (result != result::ok && (overflowed_ || !keepsFields_)) length_ = start_ + smallestSpace;
    store(space_.data() + start_, ::wire::resultReply, 2);
    store(space_.data() + start_ + resultOffset, result, 4);
    return space_.first(length_);
}

ListWriter::ListWriter(ReplyWriter& reply, std::uint32_t capacity) noexcept
    : reply_(reply), capacity_(capacity), start_(reply.length_)
{
    reply_.u32(0);
}

bool ListWriter::terminate(std::size_t ansiBytes) noexcept
{
    if (!fits_ || ansiBytes + 1 > capacity_ - used_) return fits_ = false;
    used_ += ansiBytes + 1;
    if (std::uint8_t* const at = reply_.take(terminator)) store(at, 0, terminator);
    return fits_ = !reply_.overflowed();
}

bool ListWriter::add(std::wstring_view item) noexcept
{
    reply_.units(item);
    lastWasEmpty_ = item.empty();
    return terminate(ansiLength(item));
}

Result ListWriter::finish() noexcept
{
    // A reader that takes a zero at the very end for the end of the list would lose an empty last string: one more
    // terminator keeps it.
    if (lastWasEmpty_) terminate(0);
    const std::size_t length = reply_.length_ - start_ - lengthField;
    if (fits_ && length > 0) reply_.u32(0);  // the trailer; an empty list has none
    if (!fits_ || reply_.overflowed()) return result::moreData;
    store(reply_.space_.data() + start_, static_cast<std::uint32_t>(length), lengthField);
    return result::ok;
}

}  // namespace srv
