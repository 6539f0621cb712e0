// The last changes of the hardware, for clients that ask what was behind a notification.
#pragma once

#include <windows.h>

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

namespace srv {

struct HardwareChange
{
    std::uint64_t order = 0;   // among all changes that clients are told of
    std::uint32_t handle = 0;  // what clients are given
    std::uint8_t code = 0;     // ::wire::hardwareArrived or hardwareRemoved
    GUID interfaceClass{};
    std::wstring name;  // at most 255 bytes in the ANSI code page
};

// Positions count all changes since the start; the oldest are dropped when there are too many.
class HardwareLog
{
 public:
    static constexpr std::size_t most = 16'384;

    // Handles of one server's life should not be those of the next: clients may still hold them.
    explicit HardwareLog(std::uint32_t firstHandle) : firstHandle_(firstHandle) {}

    const HardwareChange& add(std::uint64_t order, std::uint8_t code, const GUID& interfaceClass,
                              std::wstring_view name);

    std::uint64_t begin() const noexcept { return begin_; }
    std::uint64_t end() const noexcept { return begin_ + changes_.size(); }
    const HardwareChange& at(std::uint64_t position) const noexcept { return changes_[position - begin_]; }

    // nullptr: none, or not any more.
    const HardwareChange* find(std::uint32_t handle) const noexcept;

 private:
    std::uint32_t firstHandle_;
    std::uint64_t begin_ = 0;
    std::deque<HardwareChange> changes_;
};

}  // namespace srv
