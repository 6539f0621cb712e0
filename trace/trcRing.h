// The shared-memory ring: its layout, and how a line is put into it. Pure arithmetic on memory that the caller maps.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace trc {

inline constexpr std::uint32_t ringLayout = 1;
inline constexpr std::uint32_t ringOverhead = 68;  // bytes of the section beyond its capacity, the header among them

// The beginning of the section, shared with every process of the machine; numbers are little-endian, data follow.
struct RingHeader
{
    volatile std::uint32_t writePosition;  // next byte to write, 0..capacity
    volatile std::uint32_t capacity;       // bytes of data
    volatile std::uint32_t wrapCount;      // stops at 0xFFFFFFFF
    volatile std::uint32_t enabled;        // writers write only while it is not 0
    volatile std::uint32_t users;          // attached processes
    volatile std::uint32_t layout;
    volatile std::uint32_t reserved[10];
};
static_assert(sizeof(RingHeader) == 64);

// Fills the header of a new ring, which has one user.
void initialiseRing(RingHeader& header, std::uint32_t capacity) noexcept;

// Puts the text at the write position, going on at the beginning of the data where it reaches the end. `capacity` is
// what the caller has mapped: the number in the header is anybody's to change, and is not trusted here. False when
// nothing was written: the ring is disabled, or smaller than the text.
bool writeRing(RingHeader& header, char* data, std::uint32_t capacity, std::string_view text) noexcept;

}  // namespace trc
