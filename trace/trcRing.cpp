#include "trcRing.h"

#include <algorithm>
#include <cstring>

namespace trc {

void initialiseRing(RingHeader& header, std::uint32_t capacity) noexcept
{
    for (volatile std::uint32_t& word : header.reserved)
        word = 0;
    header.writePosition = 0;
    header.capacity = capacity;
    header.wrapCount = 0;
    header.users = 1;
    header.layout = ringLayout;
    header.enabled = 1;
}

bool writeRing(RingHeader& header, char* data, std::uint32_t capacity, std::string_view text) noexcept
{
    if (header.enabled == 0 || text.size() > capacity) return false;
    const auto count = static_cast<std::uint32_t>(text.size());
    std::uint32_t position = header.writePosition;
    if (position > capacity) position = 0;  // left by a writer that does not keep to the layout

    const std::uint32_t untilEnd = std::min(count, capacity - position);
    std::memcpy(data + position, text.data(), untilEnd);
    std::memcpy(data, text.data() + untilEnd, count - untilEnd);

    // A text that ends exactly at the end leaves the position there: the ring wraps with the next one.
    const bool wraps = untilEnd != count;
    header.writePosition = wraps ? count - untilEnd : position + count;
    const std::uint32_t wrapCount = header.wrapCount;
    if (wraps && wrapCount != 0xFFFFFFFF) header.wrapCount = wrapCount + 1;
    return true;
}

}  // namespace trc
