// What a connection sends without being asked.
#pragma once

#include <windows.h>

#include <cstdint>
#include <span>

namespace srv {

// Used by one thread.
class PushSource
{
 public:
    virtual ~PushSource() = default;

    // Set while there is something to send.
    virtual HANDLE due() const noexcept = 0;

    // The next whole message, which lives until the next call; empty when there is none.
    virtual std::span<const std::uint8_t> next() noexcept = 0;

    // The last message could not be sent.
    virtual void putBack() noexcept = 0;
};

}  // namespace srv
