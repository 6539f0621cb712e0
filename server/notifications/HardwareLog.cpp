#include "notifications/HardwareLog.h"

#include "base/Text.h"

namespace srv {

namespace {

// Clients have room for 256 bytes, terminator included.
std::wstring_view shortened(std::wstring_view name)
{
    constexpr std::size_t longest = 255;
    while (ansiLength(name) > longest)
        name.remove_suffix(1);
    return name;
}

}  // namespace

const HardwareChange& HardwareLog::add(std::uint64_t order, std::uint8_t code, const GUID& interfaceClass,
                                       std::wstring_view name)
{
    const std::uint32_t handle = firstHandle_ + static_cast<std::uint32_t>(end());
    changes_.push_back({order, handle, code, interfaceClass, std::wstring(shortened(name))});
    if (changes_.size() > most) {
        changes_.pop_front();
        ++begin_;
    }
    return changes_.back();
}

const HardwareChange* HardwareLog::find(std::uint32_t handle) const noexcept
{
    const std::uint32_t distance = handle - firstHandle_ - static_cast<std::uint32_t>(begin_);
    return distance < changes_.size() ? &changes_[distance] : nullptr;
}

}  // namespace srv
