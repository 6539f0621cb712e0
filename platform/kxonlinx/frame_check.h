// Whether a block of bytes is a frame; the layout is in wire/frame.h. Bytes that the layout leaves at 0 are not
// looked at, so that they can get a meaning later.
#pragma once

#include <cstdint>
#include <span>

namespace kxonlinx {

using Bytes = std::span<const std::uint8_t>;

// A whole header with its fixed fields, and as much payload behind it as it says, but no more than 8192 bytes; the
// payload begins with the operation code that the header repeats.
bool isRequest(Bytes frame) noexcept;

// The same for a reply to `request`, whose operation code it repeats. The payload may be empty.
bool isReplyTo(Bytes request, Bytes frame) noexcept;

// Whether a reply says that the request was carried out: kind 4, result 0.
bool isSuccess(Bytes reply) noexcept;

// The same as isRequest for a frame that the server sends unasked.
bool isPush(Bytes frame) noexcept;

}  // namespace kxonlinx
